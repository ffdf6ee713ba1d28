// Showing an item: its colored source text and its shared items.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "library/library.h"
#include "library/ui/kind_selector.h"
#include "source/ui/code_display.h"
#include "toolkit/list_view.h"

namespace declarium {

class ItemDisplay {
 public:
  // `as_inserted` makes of an item's source text what would be inserted. Everything must outlive
  // the display.
  ItemDisplay(CodeDisplay& code, ListView& lstShare,
              std::function<std::u16string(std::u16string)> as_inserted)
      : code_(code), lstShare_(lstShare), as_inserted_(std::move(as_inserted)) {}

  // Lists the item's shared items and shows its source text.
  void Show(const ItemView& item);
  // Shows the source text alone; the shared items stay.
  void ShowCode(const ItemView& item);
  // Shows the source text again, as it would be inserted now. Nothing happens to an empty display.
  void ShowCodeAgain();

 private:
  CodeDisplay& code_;
  ListView& lstShare_;
  std::function<std::u16string(std::u16string)> as_inserted_;
  std::u16string shown_;  // as the library has it
};

// The click on, and the focus coming to, a kind's list: shows the selected row's item.
void ShowSelectedItem(Kind kind, const KindSelector& selector, ItemDisplay& display);

}  // namespace declarium
