#include "library/library.h"

#include "library/find_item_index.h"
#include "text/user_texts.h"

namespace declarium {

std::optional<ItemView> FindItem(const Library& library, Kind kind, std::u16string_view name) {
  const auto& lists = library[kind];
  const auto position = FindItemIndex(name, lists.names);
  if (position < 0 || !library.whole) return std::nullopt;
  const auto index = static_cast<std::size_t>(position);
  return ItemView{kind, lists.names[index], lists.ItemAt(index)};
}

void RemoveItem(Library& library, Kind kind, std::size_t position) {
  auto& lists = library[kind];
  RemoveListItem(lists.names, position);
  if (position < lists.items.size()) RemoveListItem(lists.items, position);
}

std::u16string CaptionOf(std::u16string_view title) {
  return std::u16string(title).append(texts::kCaptionTail);
}

}  // namespace declarium
