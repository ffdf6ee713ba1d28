#include "check/ui/check_dialog.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "check/ui/check_form.h"
#include "facts/known_facts.h"
#include "library/ui/file_messages.h"
#include "source/ui/code_display.h"
#include "text/text.h"
#include "text/user_texts.h"
#include "toolkit/held_flag.h"
#include "toolkit/progress_bar.h"

namespace declarium {
namespace {

using check::Level;
using check::LibraryFinding;

constexpr int kScrollBarWidth = 24;

std::u16string_view LevelName(Level level) {
  switch (level) {
    case Level::kNote:
      return texts::kCheckNote;
    case Level::kWarning:
      return texts::kCheckWarning;
    case Level::kError:
      break;
  }
  return texts::kCheckError;
}

// "D302   chyba   Sleep (dwMilliseconds): Chýba ByVal".
std::u16string RowText(const LibraryFinding& finding) {
  const auto& rule = check::RuleOf(finding.rule);
  auto text = FromUtf8(rule.number) + u"   ";
  text.append(LevelName(finding.level)).append(u"   ").append(finding.name);
  if (!finding.part.empty()) text += u" (" + finding.part + u")";
  return text.append(u": ").append(rule.window.title);
}

// The findings as the list shows them.
class Rows : public ListEntries {
 public:
  explicit Rows(const std::vector<LibraryFinding>& findings) {
    for (const auto& finding : findings) rows_.push_back({RowText(finding), IconOf(finding.kind)});
  }
  [[nodiscard]] int Count() const override { return static_cast<int>(rows_.size()); }
  [[nodiscard]] ListEntry At(int position) const override {
    const auto& [text, icon] = rows_[static_cast<std::size_t>(position - 1)];
    return {text, icon};
  }

 private:
  struct Row {
    std::u16string text;
    int icon;
  };
  std::vector<Row> rows_;
};

// "Nálezov: 5 (chyby: 1, varovania: 0, poznámky: 4)".
std::u16string CountsText(const std::vector<LibraryFinding>& findings) {
  const auto count = [&](Level level) {
    return CountText(
        static_cast<std::size_t>(std::ranges::count(findings, level, &LibraryFinding::level)));
  };
  std::u16string text(texts::kCheckFound);
  text += CountText(findings.size());
  text.append(texts::kCheckErrors).append(count(Level::kError));
  text.append(texts::kCheckWarnings).append(count(Level::kWarning));
  return text.append(texts::kCheckNotes).append(count(Level::kNote)).append(u")");
}

// The item's text and below it what is right, where that is known.
std::u16string CodeOf(const LibraryFinding& finding) {
  const bool is_certain = !finding.mended.empty();
  auto code = finding.source;
  if (!is_certain && finding.known.empty()) return code;
  code.append(u"\r\n").append(is_certain ? texts::kCheckBetter : texts::kCheckKnown);
  return code.append(u"\r\n").append(is_certain ? finding.mended : finding.known);
}

// What a label shows as it stands.
std::u16string Literally(std::u16string_view text) {
  return Replace(text, u"&", u"&&");
}

std::size_t CountItems(const Library& library) {
  std::size_t count = 0;
  for (const auto& lists : library.Lists()) count += lists.names.size();
  return count;
}

}  // namespace

CheckDialog::CheckDialog(Toolkit& toolkit, CheckLinks links)
    : toolkit_(toolkit), links_(std::move(links)) {}

void CheckDialog::MakeForm() {
  form_ = toolkit_.CreateForm(CheckFormDefinition());
  form_->on_resize = [this] { frmCheck_Resize(); };
  form_->Get<CommandButton>("Command1").on_click = [this] { Command1_Click(); };
  form_->Get<CommandButton>("Command2").on_click = [this] { form_->Unload(); };
  form_->Get<CommandButton>("Command3").on_click = [this] { RunCheck(); };
  auto& LV1 = form_->Get<ListView>("LV1");
  LV1.on_item_click = [this](int position) { LV1_ItemClick(position); };
  LV1.on_mouse_down = [this, &LV1](const MouseEvent& press) {
    last_press_on_row_ = LV1.HitTest(press.at) != -1;
  };
  LV1.on_double_click = [this] {
    if (last_press_on_row_) Command1_Click();
  };
}

void CheckDialog::Show(Form* owner) {
  if (!links_.library().IsWhole()) {
    toolkit_.ShowMessage(
        {std::u16string(texts::kReadError), MessageButtons::kOk, MessageIcon::kCritical});
    return;
  }
  if (!IsOpen()) {
    // Closed in an event that is still running, and asked for again in the same.
    if (is_in_event_) return;
    MakeForm();
  }
  form_->Show(ShowMode::kModeless, owner);
  RunCheck();
}

void CheckDialog::Close() {
  if (form_) form_->Unload();
}

void CheckDialog::frmCheck_Resize() {
  for (const auto& [name, bounds] : CheckFormLayout({form_->ScaleWidth(), form_->ScaleHeight()}))
    form_->Get<Control>(name).SetBounds(bounds);
  auto& LV1 = form_->Get<ListView>("LV1");
  LV1.SetColumnWidth(LV1.Bounds().width - kScrollBarWidth);
}

void CheckDialog::RunCheck() {
  if (is_in_event_) return;
  const HeldFlag in_event(is_in_event_);
  findings_.clear();
  form_->Get<ListView>("LV1").Clear();
  form_->Get<Label>("labCount").SetCaption(texts::kCheckRunning);
  LV1_ItemClick(0);
  form_->Get<CommandButton>("Command1").SetEnabled(false);
  const HourglassPointer hourglass(toolkit_);
  // The events that are processed may change the library or open another. Lists share their texts.
  const Library library = links_.library();
  const auto against = BundledLibraries(links_.folder);
  auto found = check::CheckLibrary(library, against,
                                   [this](int done, int all) { return ShowProgress(done, all); });
  if (!found || !IsOpen()) return;
  findings_ = *std::move(found);
  ShowFindings(CountItems(library), !against.empty());
}

bool CheckDialog::ShowProgress(int done, int all) {
  auto& PB = form_->Get<ProgressBar>("PB");
  PB.SetMaximum(all);
  PB.SetValue(done);
  toolkit_.ProcessPendingEvents();
  return IsOpen();
}

void CheckDialog::ShowFindings(std::size_t checked, bool has_reference) {
  auto text = findings_.empty() ? std::u16string(texts::kCheckNothing) + CountText(checked)
                                : CountsText(findings_);
  if (!has_reference) text.append(texts::kCheckLanguageOnly);
  form_->Get<Label>("labCount").SetCaption(text);
  form_->Get<ProgressBar>("PB").SetValue(0);
  form_->Get<CommandButton>("Command1").SetEnabled(!findings_.empty());
  if (findings_.empty()) return;
  auto& LV1 = form_->Get<ListView>("LV1");
  LV1.ShowEntries(std::make_unique<Rows>(findings_));
  LV1.Select(1);
  LV1_ItemClick(1);
}

// What happens at run time, and the item's text with the lines as they should be; position 0
// empties that.
void CheckDialog::LV1_ItemClick(int position) {
  std::u16string consequence;
  std::u16string code;
  if (position > 0) {
    const auto& finding = findings_[static_cast<std::size_t>(position - 1)];
    consequence = Literally(check::RuleOf(finding.rule).window.consequence);
    code = CodeOf(finding);
  }
  form_->Get<Label>("labDetail").SetCaption(consequence);
  CodeDisplay(form_->Get<RichText>("RTB"), links_.colors).PrintFormatText(code);
}

void CheckDialog::Command1_Click() {
  const auto selected = form_->Get<ListView>("LV1").Selected();
  if (selected < 1 || is_in_event_) return;
  const HeldFlag in_event(is_in_event_);
  const auto& finding = findings_[static_cast<std::size_t>(selected - 1)];
  const auto kind = finding.kind;
  const auto name = finding.name;
  if (links_.go_to(kind, name)) return;
  toolkit_.ShowMessage(
      {std::u16string(texts::kCheckGone), MessageButtons::kOk, MessageIcon::kInformation});
}

}  // namespace declarium
