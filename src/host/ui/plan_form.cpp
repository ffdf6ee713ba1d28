#include "host/ui/plan_form.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "library/kind.h"
#include "source/ui/code_display.h"
#include "text/text.h"
#include "text/user_texts.h"
#include "toolkit/captioned.h"
#include "toolkit/list_view.h"
#include "toolkit/rich_text.h"

namespace declarium {
namespace {

using plan::Does;
using plan::PlannedEntry;

constexpr int kWidth = 640;
constexpr int kHeight = 460;
constexpr int kMargin = 8;
constexpr int kSourceHeight = 130;
constexpr int kButtonRow = 42;  // from the bottom edge to the buttons' upper edge

constexpr ControlDefinition kControls[] = {
    {.kind = ControlKind::kLabel,
     .name = "Label1",
     .caption = texts::kPlanLabel,
     .bounds = {8, 8, 624, 17}},
    {.kind = ControlKind::kListView,
     .name = "LV1",
     .bounds = {8, 28, 624, 216},
     .check_boxes = true},
    {.kind = ControlKind::kLabel,
     .name = "labNew",
     .caption = texts::kPlanSourceNew,
     .bounds = {8, 252, 308, 17}},
    {.kind = ControlKind::kRichText,
     .name = "rtbNew",
     .bounds = {8, 272, 308, kSourceHeight},
     .accessible_name = texts::kPlanSourceNew,
     .font = FontRole::kCode},
    {.kind = ControlKind::kLabel,
     .name = "labFound",
     .caption = texts::kPlanSourceFound,
     .bounds = {324, 252, 308, 17}},
    {.kind = ControlKind::kRichText,
     .name = "rtbFound",
     .bounds = {324, 272, 308, kSourceHeight},
     .accessible_name = texts::kPlanSourceFound,
     .font = FontRole::kCode},
    {.kind = ControlKind::kCommandButton,
     .name = "Command3",
     .caption = texts::kPlanOtherName,
     .bounds = {8, 426, 104, 26},
     .enabled = false},
    {.kind = ControlKind::kLabel, .name = "labCount", .bounds = {124, 431, 320, 17}},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = texts::kOk,
     .bounds = {472, 426, 76, 26},
     .role = ButtonRole::kDefault},
    {.kind = ControlKind::kCommandButton,
     .name = "Command2",
     .caption = texts::kCancel,
     .bounds = {556, 426, 76, 26},
     .role = ButtonRole::kCancel},
};

constexpr FormDefinition kDefinition = {.name = "frmPlan",
                                        .size = {kWidth, kHeight},
                                        .minimum_size = {520, 340},
                                        .help_topic = "insert-missing",
                                        .border = BorderStyle::kSizable,
                                        .controls = kControls};

std::u16string_view HolderName(plan::Holder holder) {
  switch (holder) {
    case plan::Holder::kConst:
      return texts::kHolderConst;
    case plan::Holder::kDeclare:
      return texts::kHolderDeclare;
    case plan::Holder::kType:
      return texts::kHolderType;
    case plan::Holder::kEnum:
      return texts::kHolderEnum;
    case plan::Holder::kEnumMember:
      return texts::kHolderEnumMember;
    case plan::Holder::kVariable:
      return texts::kHolderVariable;
    case plan::Holder::kEvent:
      return texts::kHolderEvent;
    case plan::Holder::kControl:
      return texts::kHolderControl;
    case plan::Holder::kProcedure:
      return texts::kHolderProcedure;
    case plan::Holder::kModule:
      return texts::kHolderModule;
  }
  return {};
}

std::u16string PlaceText(const plan::Found& found) {
  return found.name + std::u16string(texts::kPlanLine) + CountText(found.line);
}

std::u16string DoesText(const PlannedEntry& entry) {
  if (!entry.new_name.empty() && !entry.is_left_out) {
    return std::u16string(texts::kPlanInsertedAs) + entry.new_name;
  }
  const auto where = entry.found ? PlaceText(*entry.found) : std::u16string();
  switch (entry.does) {
    case Does::kInsert:
      return std::u16string(entry.IsInserted() ? texts::kPlanInserted : texts::kPlanLeftOut);
    case Does::kPresent:
      return std::u16string(texts::kPlanPresent) + where;
    case Does::kDiffers:
      return std::u16string(texts::kPlanDiffers) + where;
    case Does::kClash:
      break;
  }
  std::u16string text(texts::kPlanClash);
  if (entry.found) text.append(HolderName(entry.found->holder)).append(u", ");
  return text + where;
}

CheckMark CheckOf(const PlannedEntry& entry) {
  if (entry.does == Does::kPresent) return CheckMark::kNone;
  return entry.IsInserted() ? CheckMark::kChecked : CheckMark::kClear;
}

class PlanForm {
 public:
  PlanForm(Toolkit& toolkit, const DisplayColors& colors, const PlanSubject& subject,
           plan::InsertionPlan& plan)
      : toolkit_(toolkit),
        plan_(plan),
        form_(toolkit.CreateForm(kDefinition)),
        list_(form_->Get<ListView>("LV1")),
        new_(form_->Get<RichText>("rtbNew"), colors),
        found_(form_->Get<RichText>("rtbFound"), colors) {
    form_->SetCaption(std::u16string(subject.purpose == PlanPurpose::kCompleteModule
                                         ? texts::kCompleteCaptionBefore
                                         : texts::kPlanCaptionBefore)
                          .append(subject.module)
                          .append(texts::kPlanCaptionBehind));
    Fill(subject);
    Wire();
    ShowState();
  }

  [[nodiscard]] bool Run(Form& owner) {
    form_->Show(ShowMode::kModal, &owner);
    return agreed_;
  }

 private:
  void Fill(const PlanSubject& subject) {
    for (const auto& entry : plan_.Entries()) {
      list_.Append({PlanRow(entry), IconOf(entry.kind), CheckOf(entry)});
    }
    for (const auto& note : subject.notes) list_.Append({note});
    if (list_.Count() > 0) list_.Select(1);
    Show(1);
  }

  void Wire() {
    list_.on_item_click = [this](int position) { Show(position); };
    list_.on_item_check = [this](int position) { LV1_ItemCheck(position); };
    list_.on_double_click = [this] { LV1_DoubleClick(); };
    form_->Get<CommandButton>("Command1").on_click = [this] { Command1_Click(); };
    form_->Get<CommandButton>("Command2").on_click = [this] { form_->Unload(); };
    form_->Get<CommandButton>("Command3").on_click = [this] { AskName(list_.Selected()); };
    form_->on_resize = [this] { Form_Resize(); };
  }

  // Null for a note.
  [[nodiscard]] const PlannedEntry* EntryAt(int position) const {
    const auto& entries = plan_.Entries();
    const auto index = static_cast<std::size_t>(position - 1);
    return position >= 1 && index < entries.size() ? &entries[index] : nullptr;
  }

  // The sources of the entry side by side; of one side only what there is.
  void Show(int position) {
    const auto* entry = EntryAt(position);
    const auto* found = entry && entry->found ? &*entry->found : nullptr;
    new_.PrintFormatText(entry ? entry->text : std::u16string_view());
    found_.PrintFormatText(found ? found->text : std::u16string_view());
    form_->Get<Label>("labNew").SetCaption(
        entry && entry->IsInserted() ? texts::kPlanSourceNew : texts::kPlanSourceLibrary);
    form_->Get<Label>("labFound")
        .SetCaption(found ? std::u16string(texts::kPlanSourceFound) + u" " + PlaceText(*found)
                          : std::u16string());
    form_->Get<CommandButton>("Command3").SetEnabled(entry && entry->does != Does::kPresent);
  }

  void LV1_ItemCheck(int position) {
    const auto* entry = EntryAt(position);
    if (!entry) return;
    const auto index = static_cast<std::size_t>(position - 1);
    const bool wanted = list_.Entry(position).check == CheckMark::kChecked;
    if (entry->does == Does::kInsert) {
      plan_.LeaveOut(index, !wanted);
    } else if (wanted) {
      return AskName(position);
    } else {
      plan_.Keep(index);
    }
    Renew();
  }

  void LV1_DoubleClick() {
    const auto* entry = EntryAt(list_.Selected());
    if (entry && entry->does != Does::kInsert && entry->does != Does::kPresent) {
      AskName(list_.Selected());
    }
  }

  // An empty answer changes nothing.
  void AskName(int position) {
    const auto* entry = EntryAt(position);
    if (!entry) return;
    const auto index = static_cast<std::size_t>(position - 1);
    const auto prompt = std::u16string(texts::kPlanAskName) + entry->name;
    auto name = entry->new_name.empty() ? plan_.FreeName(index) : entry->new_name;
    for (;;) {
      name = toolkit_.AskText(prompt, name);
      if (name.empty()) break;
      const auto taken = plan_.InsertAs(index, name);
      if (taken) {
        plan_.LeaveOut(index, false);
        break;
      }
      toolkit_.ShowMessage(
          {std::u16string(taken.error() == plan::NameRefusal::kTaken ? texts::kPlanNameTaken
                                                                     : texts::kPlanNameNotLegal),
           MessageButtons::kOk, MessageIcon::kExclamation});
    }
    Renew();
  }

  // A choice may change other entries: those that use a name, and their texts.
  void Renew() {
    const UpdateLock lock(*form_);
    const int selected = list_.Selected();
    const int count = static_cast<int>(plan_.Entries().size());
    for (int position = 1; position <= count; ++position) {
      const auto& entry = *EntryAt(position);
      const auto row = PlanRow(entry);
      const auto shown = list_.Entry(position);
      if (shown.text != row) {
        list_.Remove(position);
        list_.Insert(position, {row, IconOf(entry.kind), CheckOf(entry)});
      } else if (shown.check != CheckOf(entry)) {
        list_.SetCheck(position, CheckOf(entry));
      }
    }
    list_.Select(selected);
    Show(selected);
    ShowState();
  }

  void ShowState() {
    const auto& entries = plan_.Entries();
    const auto inserted = std::ranges::count_if(entries, &PlannedEntry::IsInserted);
    const bool lacks_nothing = std::ranges::all_of(
        entries, [](const auto& entry) { return entry.does == Does::kPresent; });
    form_->Get<Label>("labCount")
        .SetCaption(lacks_nothing ? std::u16string(texts::kPlanNothing)
                                  : std::u16string(texts::kPlanWillInsert) +
                                        CountText(static_cast<std::uint64_t>(inserted)));
    form_->Get<CommandButton>("Command1").SetEnabled(!plan_.IsEmpty());
  }

  void Command1_Click() {
    agreed_ = true;
    form_->Unload();
  }

  void Form_Resize();

  Toolkit& toolkit_;
  plan::InsertionPlan& plan_;
  std::unique_ptr<Form> form_;
  ListView& list_;
  CodeDisplay new_;
  CodeDisplay found_;
  bool agreed_ = false;
};

void PlanForm::Form_Resize() {
  const int width = form_->ScaleWidth();
  const int height = form_->ScaleHeight();
  const int buttons = height - kButtonRow + kMargin;
  const int source = buttons - kMargin - kSourceHeight;
  const int label = source - 20;
  const int half = (width - 3 * kMargin) / 2;
  const auto place = [this](std::string_view name, const Rect& bounds) {
    form_->Get<Control>(name).SetBounds(bounds);
  };
  const UpdateLock lock(*form_);
  place("Label1", {kMargin, kMargin, width - 2 * kMargin, 17});
  place("LV1", {kMargin, 28, width - 2 * kMargin, label - kMargin - 28});
  list_.SetColumnWidth(width - 2 * kMargin - 24);
  place("labNew", {kMargin, label, half, 17});
  place("rtbNew", {kMargin, source, half, kSourceHeight});
  place("labFound", {width - kMargin - half, label, half, 17});
  place("rtbFound", {width - kMargin - half, source, half, kSourceHeight});
  place("Command3", {kMargin, buttons, 104, 26});
  place("labCount", {124, buttons + 5, width - 124 - 2 * 84 - 2 * kMargin, 17});
  place("Command1", {width - kMargin - 160, buttons, 76, 26});
  place("Command2", {width - kMargin - 76, buttons, 76, 26});
}

}  // namespace

std::u16string PlanRow(const PlannedEntry& entry) {
  std::u16string row = entry.name + u" – " + DoesText(entry);
  if (!entry.via.empty()) row.append(texts::kPlanNeededBy).append(entry.via);
  return row;
}

bool AgreeToPlan(Toolkit& toolkit, Form& owner, const DisplayColors& colors,
                 const PlanSubject& subject, plan::InsertionPlan& plan) {
  return PlanForm(toolkit, colors, subject, plan).Run(owner);
}

const FormDefinition& PlanFormDefinition() {
  return kDefinition;
}

}  // namespace declarium
