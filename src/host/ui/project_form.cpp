#include "host/ui/project_form.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "host/ui/edit_outcome.h"
#include "host/ui/project_rows.h"
#include "library/ui/file_messages.h"
#include "source/ui/code_display.h"
#include "text/text.h"
#include "text/user_texts.h"
#include "toolkit/captioned.h"
#include "toolkit/held_flag.h"
#include "toolkit/list_view.h"
#include "toolkit/rich_text.h"

namespace declarium {
namespace {

constexpr Size kProjectSize = {800, 520};
constexpr int kEdge = 8;
constexpr int kCodeHeight = 130;
constexpr int kCodeTop = kProjectSize.height - 2 * kEdge - 26 - kCodeHeight;
constexpr int kCodeWidth = (kProjectSize.width - 3 * kEdge) / 2;
constexpr int kFullWidth = kProjectSize.width - 2 * kEdge;
constexpr int kCodeLabelTop = kCodeTop - 20;
constexpr int kDetailTop = kCodeLabelTop - kEdge - 34;
constexpr int kButtonTop = kProjectSize.height - kEdge - 26;
constexpr int kRightHalf = 2 * kEdge + kCodeWidth;

constexpr ControlDefinition kProjectControls[] = {
    {.kind = ControlKind::kLabel,
     .name = "Label1",
     .caption = texts::kProjectLabel,
     .bounds = {kEdge, kEdge, kFullWidth, 17}},
    {.kind = ControlKind::kListView,
     .name = "LV1",
     .bounds = {kEdge, 28, kFullWidth, kDetailTop - kEdge - 28},
     .check_boxes = true},
    {.kind = ControlKind::kLabel,
     .name = "labDetail",
     .bounds = {kEdge, kDetailTop, kFullWidth, 34}},
    {.kind = ControlKind::kLabel,
     .name = "labBefore",
     .bounds = {kEdge, kCodeLabelTop, kCodeWidth, 17}},
    {.kind = ControlKind::kRichText,
     .name = "rtbBefore",
     .bounds = {kEdge, kCodeTop, kCodeWidth, kCodeHeight},
     .accessible_name = texts::kProjectBefore,
     .font = FontRole::kCode},
    {.kind = ControlKind::kLabel,
     .name = "labAfter",
     .bounds = {kRightHalf, kCodeLabelTop, kCodeWidth, 17}},
    {.kind = ControlKind::kRichText,
     .name = "rtbAfter",
     .bounds = {kRightHalf, kCodeTop, kCodeWidth, kCodeHeight},
     .accessible_name = texts::kProjectAfter,
     .font = FontRole::kCode},
    {.kind = ControlKind::kCheckBox,
     .name = "Check1",
     .caption = texts::kProjectOnlyFindings,
     .bounds = {kEdge, kButtonTop + 4, 120, 18}},
    {.kind = ControlKind::kLabel,
     .name = "labCount",
     .bounds = {kEdge + 128, kButtonTop + 5, kFullWidth - 128 - 2 * 104, 17}},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = texts::kProjectCarryOut,
     .bounds = {kProjectSize.width - kEdge - 200, kButtonTop, 96, 26},
     .role = ButtonRole::kDefault},
    {.kind = ControlKind::kCommandButton,
     .name = "Command2",
     .caption = texts::kProjectClose,
     .bounds = {kProjectSize.width - kEdge - 96, kButtonTop, 96, 26},
     .role = ButtonRole::kCancel},
};

constexpr FormDefinition kProjectForm = {.name = "frmProject",
                                         .size = kProjectSize,
                                         .minimum_size = {560, 360},
                                         .help_topic = "audit",
                                         .border = BorderStyle::kSizable,
                                         .controls = kProjectControls};

constexpr EditOutcomeTexts kChangeTexts = {.changed = texts::kProjectModuleChanged,
                                           .refused = texts::kProjectEditRefused,
                                           .partly = texts::kProjectEditPartly,
                                           .unknown = texts::kProjectEditUnknown};

using RowDoes = audit::Fate::Does;

class ProjectForm {
 public:
  ProjectForm(Toolkit& toolkit, const DisplayColors& colors, ProjectPlan& plan,
              const ProjectFormLinks& links)
      : toolkit_(toolkit),
        plan_(plan),
        links_(links),
        form_(toolkit.CreateForm(kProjectForm)),
        list_(form_->Get<ListView>("LV1")),
        only_findings_(form_->Get<CheckBox>("Check1")),
        before_(form_->Get<RichText>("rtbBefore"), colors),
        after_(form_->Get<RichText>("rtbAfter"), colors) {
    form_->SetCaption(std::u16string(texts::kProjectCaptionBefore)
                          .append(plan.Project().name)
                          .append(texts::kProjectCaptionBehind));
    Fill();
    Wire();
    ShowState();
  }

  void Run(Form& owner) { form_->Show(ShowMode::kModal, &owner); }

 private:
  void Wire() {
    list_.on_item_click = [this](int position) { ShowDetail(position); };
    list_.on_item_check = [this](int position) { LV1_ItemCheck(position); };
    only_findings_.on_click = [this] { Fill(); };
    form_->Get<CommandButton>("Command1").on_click = [this] { Command1_Click(); };
    form_->Get<CommandButton>("Command2").on_click = [this] { form_->Unload(); };
    form_->on_resize = [this] { Form_Resize(); };
  }

  // The rows that the check box asks for, and what could not be read.
  void Fill() {
    const UpdateLock lock(*form_);
    list_.Clear();
    shown_.clear();
    const auto count = plan_.Rows().size();
    for (std::size_t row = 0; row < count; ++row) {
      if (only_findings_.Value() == 1 && !IsProjectFinding(plan_, row)) continue;
      shown_.push_back(row);
      list_.Append({ProjectRow(plan_, row), ProjectRowIcon(plan_, row), Mark(row)});
    }
    for (const auto& module : plan_.Project().unread)
      list_.Append({module + u" – " + std::u16string(texts::kPlanUnread)});
    if (list_.Count() > 0) list_.Select(1);
    ShowDetail(1);
  }

  // When all is done no box is left.
  [[nodiscard]] CheckMark Mark(std::size_t row) const {
    return is_done_ ? CheckMark::kNone : ProjectRowMark(plan_, row);
  }

  // Null for what could not be read.
  [[nodiscard]] const std::size_t* RowAt(int position) const {
    const auto index = static_cast<std::size_t>(position - 1);
    return position >= 1 && index < shown_.size() ? &shown_[index] : nullptr;
  }

  void ShowDetail(int position) {
    const auto* row = RowAt(position);
    const auto detail = row ? DetailOf(plan_, *row) : ProjectRowDetail();
    before_.PrintFormatText(detail.before);
    after_.PrintFormatText(detail.after);
    form_->Get<Label>("labDetail").SetCaption(Replace(detail.about, u"&", u"&&"));
    form_->Get<Label>("labBefore").SetCaption(Replace(detail.before_caption, u"&", u"&&"));
    form_->Get<Label>("labAfter").SetCaption(Replace(detail.after_caption, u"&", u"&&"));
  }

  void LV1_ItemCheck(int position) {
    const auto* row = RowAt(position);
    if (row == nullptr) return;
    if (list_.Entry(position).check == CheckMark::kChecked) {
      plan_.TakeIn(*row);
    } else {
      plan_.LeaveOut(*row);
    }
    Renew();
  }

  // A choice may change other rows. Every text is compared: which rows a plan leaves as they were
  // is not told.
  void Renew() {
    const UpdateLock lock(*form_);
    const int selected = list_.Selected();
    for (std::size_t i = 0; i < shown_.size(); ++i) {
      const auto row = shown_[i];
      const int position = static_cast<int>(i) + 1;
      const auto text = ProjectRow(plan_, row);
      const auto entry = list_.Entry(position);
      if (entry.text != text ||
          (entry.check == CheckMark::kNone) != (Mark(row) == CheckMark::kNone)) {
        list_.Remove(position);
        list_.Insert(position, {text, ProjectRowIcon(plan_, row), Mark(row)});
      } else if (entry.check != Mark(row)) {
        list_.SetCheck(position, Mark(row));
      }
    }
    list_.Select(selected);
    ShowDetail(selected);
    ShowState();
  }

  void ShowState() {
    const auto& rows = plan_.Rows();
    std::size_t findings = 0;
    for (const auto& row : rows) findings += row.findings.empty() ? 0 : 1;
    const auto changes =
        rows.size() - static_cast<std::size_t>(std::ranges::count(
                          rows, RowDoes::kStays, [](const auto& row) { return row.fate.does; }));
    std::u16string text(texts::kProjectDeclarations);
    text.append(CountText(rows.size())).append(texts::kProjectFindings).append(CountText(findings));
    text.append(texts::kProjectChanges).append(CountText(changes));
    form_->Get<Label>("labCount").SetCaption(text);
    form_->Get<CommandButton>("Command1").SetEnabled(changes > 0);
  }

  void Command1_Click() {
    // Reading lets events in.
    if (is_running_) return;
    const HeldFlag running(is_running_);
    const auto choices = plan_.Choices();
    if (AskForModules() && IsStillAsRead()) return CarryOut();
    if (!form_->IsLoaded()) return;
    plan_.Choose(choices);
    Renew();
  }

  // False when the user cancels. Whatever was declined is left out of the plan.
  [[nodiscard]] bool AskForModules() {
    for (const auto module : plan_.ChangedModules()) {
      // Leaving one out may leave nothing to do in another.
      if (plan_.EditsOf(module).empty()) continue;
      const auto answer = toolkit_.ShowMessage(
          {Question(module), MessageButtons::kYesNoCancel, MessageIcon::kQuestion});
      if (answer == Answer::kNo) plan_.LeaveOutModule(module);
      if (answer == Answer::kCancel) return false;
    }
    return !plan_.ChangedModules().empty();
  }

  [[nodiscard]] std::u16string Question(std::size_t module) const {
    std::size_t removed = 0;
    std::size_t changed = 0;
    for (const auto& row : plan_.Rows()) {
      if (row.row.module != module || row.fate.does == RowDoes::kStays) continue;
      ++(row.lines.empty() ? removed : changed);
    }
    std::u16string text(texts::kProjectAskBefore);
    text.append(plan_.ModuleName(module)).append(texts::kProjectAskBehind).append(kCrLf);
    const auto add = [&text](std::u16string_view what, std::size_t count) {
      if (count > 0) text.append(kCrLf).append(what).append(CountText(count));
    };
    add(texts::kProjectAskRemoved, removed);
    add(texts::kProjectAskChanged, changed);
    return text;
  }

  // What a plan removes may be used in a module by now that it leaves alone: all are compared.
  [[nodiscard]] bool IsStillAsRead() {
    if (!links_.is_connected()) {
      Say(std::u16string(texts::kHostDoesNotAnswer));
      return false;
    }
    const auto now = links_.read(*form_);
    if (!now || !form_->IsLoaded()) return false;
    if (now->unread != plan_.Project().unread) {
      Say(std::u16string(texts::kHostDoesNotAnswer));
      return false;
    }
    const auto differences = plan_.Differences(*now);
    if (differences.empty()) return true;
    std::u16string text(texts::kProjectHasChanged);
    for (const auto& name : differences) {
      if (&name != &differences.front()) text += u", ";
      text += name;
    }
    Say(text);
    return false;
  }

  // A module that the host refuses is left out, with what needs it to change.
  void CarryOut() {
    std::size_t done = 0;
    std::vector<std::u16string> failures;
    {
      const HourglassPointer hourglass(toolkit_);
      for (const auto module : plan_.ChangedModules()) {
        const auto edits = plan_.EditsOf(module);
        if (edits.empty()) continue;
        if (!links_.is_connected()) {
          failures.push_back(Failure(module, texts::kHostIsGone));
          break;
        }
        const auto report = plan_.CarryOut(module);
        if (report.outcome == EditReport::Outcome::kDone) {
          ++done;
          continue;
        }
        failures.push_back(Failure(module, OutcomeText(kChangeTexts, edits, report)));
        plan_.LeaveOutModule(module);
      }
    }
    for (const auto& failure : failures) Say(failure);
    if (form_->IsLoaded()) ShowDone(done);
  }

  [[nodiscard]] std::u16string Failure(std::size_t module, std::u16string_view text) const {
    return std::u16string(texts::kProjectModuleBefore)
        .append(plan_.ModuleName(module))
        .append(texts::kProjectModuleBehind)
        .append(text);
  }

  // The plan is over: what stands in the modules is not what was read.
  void ShowDone(std::size_t modules) {
    is_done_ = true;
    Renew();
    form_->Get<Label>("labCount")
        .SetCaption(std::u16string(texts::kProjectDone) + CountText(modules));
    form_->Get<CommandButton>("Command1").SetEnabled(false);
  }

  void Say(const std::u16string& text) {
    toolkit_.ShowMessage({text, MessageButtons::kOk, MessageIcon::kExclamation});
  }

  void Form_Resize();

  Toolkit& toolkit_;
  ProjectPlan& plan_;
  const ProjectFormLinks& links_;
  std::unique_ptr<Form> form_;
  ListView& list_;
  CheckBox& only_findings_;
  CodeDisplay before_;
  CodeDisplay after_;
  std::vector<std::size_t> shown_;  // the rows, by their positions in the list
  bool is_running_ = false;
  bool is_done_ = false;
};

// The list takes what is added in height, and all but the buttons what is added in width.
void ProjectForm::Form_Resize() {
  const int more_width = form_->ScaleWidth() - kProjectSize.width;
  const int more_height = form_->ScaleHeight() - kProjectSize.height;
  const UpdateLock lock(*form_);
  for (const auto& control : kProjectControls) {
    auto bounds = control.bounds;
    const bool is_half = bounds.width == kCodeWidth;
    const bool is_button = control.kind == ControlKind::kCommandButton;
    if (is_button) bounds.left += more_width;
    if (is_half && bounds.left > kEdge) bounds.left += more_width / 2;
    if (!is_button && control.kind != ControlKind::kCheckBox)
      bounds.width += is_half ? more_width / 2 : more_width;
    if (control.kind == ControlKind::kListView) {
      bounds.height += more_height;
    } else if (control.name != "Label1") {
      bounds.top += more_height;
    }
    form_->Get<Control>(control.name).SetBounds(bounds);
  }
  list_.SetColumnWidth(list_.Bounds().width - 24);
}

}  // namespace

void ShowProject(Toolkit& toolkit, Form& owner, const DisplayColors& colors, ProjectPlan& plan,
                 const ProjectFormLinks& links) {
  ProjectForm(toolkit, colors, plan, links).Run(owner);
}

const FormDefinition& ProjectFormDefinition() {
  return kProjectForm;
}

}  // namespace declarium
