// frmCheck as data: its controls, and where they stand in a window of any size.
#pragma once

#include <string_view>
#include <vector>

#include "toolkit/form_definition.h"
#include "toolkit/geometry.h"

namespace declarium {

[[nodiscard]] const FormDefinition& CheckFormDefinition();

struct CheckFormPlace {
  std::string_view name;
  Rect bounds;
};

// The controls that move or grow with the form's inner area: the list takes what is added in
// height, and all but the buttons what is added in width. Below the form's smallest size they stay
// as they are there.
[[nodiscard]] std::vector<CheckFormPlace> CheckFormLayout(Size inner);

}  // namespace declarium
