#include "check/ui/check_form.h"

#include <algorithm>

#include "text/user_texts.h"

namespace declarium {
namespace {

constexpr Size kSize = {660, 440};
constexpr Size kSmallest = {560, 330};
constexpr int kInnerWidth = kSize.width - 16;

constexpr ControlDefinition Button(std::string_view name, std::u16string_view caption, int left,
                                   int width, ButtonRole role) {
  return {.kind = ControlKind::kCommandButton,
          .name = name,
          .caption = caption,
          .bounds = {left, kSize.height - 34, width, 26},
          .role = role};
}

constexpr ControlDefinition kControls[] = {
    {.kind = ControlKind::kLabel,
     .name = "labCount",
     .caption = texts::kCheckRunning,
     .bounds = {8, 8, kInnerWidth, 17}},
    {.kind = ControlKind::kListView, .name = "LV1", .bounds = {8, 28, kInnerWidth, 242}},
    {.kind = ControlKind::kLabel, .name = "labDetail", .bounds = {8, 278, kInnerWidth, 34}},
    {.kind = ControlKind::kRichText,
     .name = "RTB",
     .bounds = {8, 316, kInnerWidth, 82},
     .accessible_name = texts::kNameCode,
     .font = FontRole::kCode},
    Button("Command1", texts::kCheckGo, 8, 132, ButtonRole::kDefault),
    Button("Command3", texts::kCheckAgain, 146, 132, ButtonRole::kPlain),
    Button("Command2", texts::kCancel, 284, 88, ButtonRole::kCancel),
    {.kind = ControlKind::kProgressBar,
     .name = "PB",
     .bounds = {384, kSize.height - 29, kSize.width - 392, 16},
     .accessible_name = texts::kCheckCaption},
};

constexpr FormDefinition kDefinition = {.name = "frmCheck",
                                        .caption = texts::kCheckCaption,
                                        .size = kSize,
                                        .minimum_size = kSmallest,
                                        .help_topic = "checks",
                                        .border = BorderStyle::kSizable,
                                        .start = StartPosition::kCentreOwner,
                                        .controls = kControls};

}  // namespace

const FormDefinition& CheckFormDefinition() {
  return kDefinition;
}

std::vector<CheckFormPlace> CheckFormLayout(Size inner) {
  const int more_width = std::max(inner.width, kSmallest.width) - kSize.width;
  const int more_height = std::max(inner.height, kSmallest.height) - kSize.height;
  std::vector<CheckFormPlace> places;
  for (const auto& control : kControls) {
    auto bounds = control.bounds;
    if (control.kind != ControlKind::kCommandButton) bounds.width += more_width;
    if (control.kind == ControlKind::kListView) {
      bounds.height += more_height;
    } else if (control.name != "labCount") {
      bounds.top += more_height;
    }
    places.push_back({control.name, bounds});
  }
  return places;
}

}  // namespace declarium
