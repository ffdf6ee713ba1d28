// frmFind as data: its controls, and where they stand in a window of any size.
#pragma once

#include <string_view>
#include <vector>

#include "toolkit/form_definition.h"
#include "toolkit/geometry.h"

namespace declarium {

[[nodiscard]] const FormDefinition& SearchFormDefinition();

struct PlacedControl {
  std::string_view name;
  Rect bounds;
};

// The controls that move or grow with the form's inner area: what is added in height goes to the
// result list alone, what is added in width to it, the frames, the text boxes and the progress bar.
// Below the form's smallest size they stay as they are there.
[[nodiscard]] std::vector<PlacedControl> SearchFormLayout(Size inner);

}  // namespace declarium
