#include "toolkit/headless/rows.h"

namespace declarium::headless {

void RowState::Remove(int row) {
  if (row < 0 || row >= static_cast<int>(rows.size())) return;
  rows.erase(rows.begin() + row);
  if (row == selected) {
    selected = -1;
  } else if (row < selected) {
    --selected;
  }
}

void RowState::Clear() {
  rows.clear();
  selected = -1;
}

}  // namespace declarium::headless
