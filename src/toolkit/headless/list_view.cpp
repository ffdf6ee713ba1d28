#include "toolkit/headless/list_view.h"

namespace declarium::headless {

int HeadlessListView::HitTest(Point at) const {
  if (at.x < 0 || at.y < 0 || at.y >= Count() * kEntryHeight) return -1;
  return at.y / kEntryHeight + 1;
}

void HeadlessListView::SwitchCheck(int position) {
  if (entries_.SwitchCheck(position)) on_item_check.Raise(position);
}

Point HeadlessListView::PointOf(int position) {
  return {kEntryHeight, (position - 1) * kEntryHeight + kEntryHeight / 2};
}

}  // namespace declarium::headless
