#include "search/ui/search_form.h"

#include <algorithm>

#include "text/user_texts.h"

namespace declarium {
namespace {

constexpr int kWidth = 612;
constexpr int kHeight = 436;
constexpr int kSmallestHeight = 350;

constexpr int kFirstRow = 78;
constexpr int kRowHeight = 26;

// The parts of a criterion's row.
constexpr Rect LabelAt(int row) {
  return {18, kFirstRow + row * kRowHeight + 3, 150, 17};
}
constexpr Rect TextAt(int row) {
  return {170, kFirstRow + row * kRowHeight, 176, 21};
}
constexpr Rect CheckAt(int row) {
  return {354, kFirstRow + row * kRowHeight + 2, 120, 17};
}
constexpr Rect SecondCheckAt(int row) {
  return {478, kFirstRow + row * kRowHeight + 2, 118, 17};
}

constexpr ControlDefinition RowLabel(std::string_view name, std::u16string_view caption, int row) {
  return {.kind = ControlKind::kLabel, .name = name, .caption = caption, .bounds = LabelAt(row)};
}
constexpr ControlDefinition Text(std::string_view name, int row) {
  return {.kind = ControlKind::kTextBox, .name = name, .bounds = TextAt(row)};
}
constexpr ControlDefinition Check(std::string_view name, std::u16string_view caption,
                                  const Rect& bounds) {
  return {.kind = ControlKind::kCheckBox, .name = name, .caption = caption, .bounds = bounds};
}
constexpr ControlDefinition Frame(std::string_view name, std::u16string_view caption,
                                  const Rect& bounds) {
  return {.kind = ControlKind::kFrame, .name = name, .caption = caption, .bounds = bounds};
}

constexpr ControlDefinition kControls[] = {
    Frame("Frame1", texts::kSearchKinds, {8, 8, kWidth - 16, 44}),
    Check("Check1", texts::kSearchConstants, {18, 27, 120, 17}),
    Check("Check2", texts::kSearchDeclares, {144, 27, 120, 17}),
    Check("Check3", texts::kSearchTypes, {270, 27, 120, 17}),

    Frame("Frame2", texts::kSearchCriteria, {8, 58, kWidth - 16, 182}),
    RowLabel("Label1", texts::kSearchName, 0),
    Text("Text1", 0),
    Check("Check4", texts::kWholeNames, CheckAt(0)),
    RowLabel("Label2", texts::kSearchType, 1),
    Text("Text2", 1),
    Check("Check5", texts::kWholeNames, CheckAt(1)),
    RowLabel("Label3", texts::kSearchConst, 2),
    Text("Text3", 2),
    Check("Check6", texts::kWholeNames, CheckAt(2)),
    RowLabel("Label4", texts::kSearchValue, 3),
    Text("Text4", 3),
    Check("Check7", texts::kWholeValues, CheckAt(3)),
    {.kind = ControlKind::kCheckBox,
     .name = "Check9",
     .caption = texts::kAsNumber,
     .bounds = SecondCheckAt(3),
     .tooltip = texts::kAsNumberTip},
    RowLabel("Label6", texts::kSearchArgument, 4),
    Text("Text6", 4),
    Check("Check10", texts::kWholeNames, CheckAt(4)),
    RowLabel("Label5", texts::kSearchFullText, 5),
    Text("Text5", 5),
    Check("Check8", texts::kWholeWords, CheckAt(5)),

    {.kind = ControlKind::kCommandButton,
     .name = "Command2",
     .caption = texts::kSearchStart,
     .bounds = {8, 248, 88, 26},
     .role = ButtonRole::kDefault},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = texts::kCancel,
     .bounds = {102, 248, 88, 26},
     .role = ButtonRole::kCancel},
    {.kind = ControlKind::kProgressBar,
     .name = "PB",
     .bounds = {202, 253, 272, 16},
     .accessible_name = texts::kSearchCaption},
    {.kind = ControlKind::kLabel,
     .name = "labCount",
     .caption = texts::kFoundCount,
     .bounds = {484, 253, 120, 17}},
    {.kind = ControlKind::kListView,
     .name = "LV1",
     .bounds = {8, 282, kWidth - 16, kHeight - 290},
     .accessible_name = texts::kNameResults,
     .takes_enter = true},
};

constexpr FormDefinition kDefinition = {.name = "frmFind",
                                        .caption = texts::kSearchCaption,
                                        .size = {kWidth, kHeight},
                                        .minimum_size = {kWidth, kSmallestHeight},
                                        .help_topic = "search",
                                        .border = BorderStyle::kSizable,
                                        .start = StartPosition::kCentreOwner,
                                        .controls = kControls};

// What a control does with the width that is added to the form.
enum class Stretch { kNone, kMoves, kGrows };

constexpr Stretch StretchOf(const ControlDefinition& control) {
  switch (control.kind) {
    case ControlKind::kFrame:
    case ControlKind::kTextBox:
    case ControlKind::kProgressBar:
    case ControlKind::kListView:
      return Stretch::kGrows;
    case ControlKind::kCheckBox:  // those of the criteria stand to the right of the text boxes
      return control.bounds.top > kFirstRow ? Stretch::kMoves : Stretch::kNone;
    case ControlKind::kLabel:
      return control.name == "labCount" ? Stretch::kMoves : Stretch::kNone;
    default:
      return Stretch::kNone;
  }
}

}  // namespace

const FormDefinition& SearchFormDefinition() {
  return kDefinition;
}

std::vector<PlacedControl> SearchFormLayout(Size inner) {
  const int more_width = std::max(inner.width, kDefinition.minimum_size.width) - kWidth;
  const int more_height = std::max(inner.height, kDefinition.minimum_size.height) - kHeight;
  std::vector<PlacedControl> placed;
  for (const auto& control : kControls) {
    const auto stretch = StretchOf(control);
    if (stretch == Stretch::kNone) continue;
    auto bounds = control.bounds;
    (stretch == Stretch::kMoves ? bounds.left : bounds.width) += more_width;
    if (control.kind == ControlKind::kListView) bounds.height += more_height;
    placed.push_back({control.name, bounds});
  }
  return placed;
}

}  // namespace declarium
