#include "needs/ui/item_display.h"

#include "needs/shared_items.h"
#include "source/item_text.h"

namespace declarium {

void ItemDisplay::Show(const ItemView& item) {
  lstShare_.Clear();
  for (const auto& [text, icon] : CreateShared(item.kind, item.item)) {
    lstShare_.Append({text, icon});
  }
  ShowCode(item);
}

void ItemDisplay::ShowCode(const ItemView& item) {
  shown_ = ItemText(item.kind, item.name, item.item);
  code_.PrintFormatText(as_inserted_(shown_));
}

void ItemDisplay::ShowCodeAgain() {
  if (!code_.IsEmpty()) code_.PrintFormatText(as_inserted_(shown_));
}

void ShowSelectedItem(Kind kind, const KindSelector& selector, ItemDisplay& display) {
  if (const auto item = selector.SelectedItem(kind)) display.Show(*item);
}

}  // namespace declarium
