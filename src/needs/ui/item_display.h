// Showing an item: its colored source text and its shared items.
#pragma once

#include "library/library.h"
#include "library/ui/kind_selector.h"
#include "source/ui/code_display.h"
#include "toolkit/list_view.h"

namespace declarium {

class ItemDisplay {
 public:
  // Everything must outlive the display.
  ItemDisplay(CodeDisplay& code, ListView& lstShare) : code_(code), lstShare_(lstShare) {}

  // Lists the item's shared items and shows its source text.
  void Show(const ItemView& item);
  // Shows the source text alone; the shared items stay.
  void ShowCode(const ItemView& item);

 private:
  CodeDisplay& code_;
  ListView& lstShare_;
};

// The click on, and the focus coming to, a kind's list: shows the selected row's item.
void ShowSelectedItem(Kind kind, const KindSelector& selector, ItemDisplay& display);

}  // namespace declarium
