#include "database/database.h"

#include "basic/texts.h"
#include "database/find_item_index.h"

namespace declarium {

std::optional<ItemView> FindItem(const Database& database, Kind kind, std::u16string_view name) {
  const auto& lists = database[kind];
  const auto position = FindItemIndex(name, lists.names);
  if (position < 0) return std::nullopt;
  const auto index = static_cast<std::size_t>(position);
  return ItemView{kind, lists.names[index], lists.ItemAt(index)};
}

void RemoveItem(Database& database, Kind kind, std::size_t position) {
  auto& lists = database[kind];
  RemoveListItem(lists.names, position);
  if (position < lists.items.size()) RemoveListItem(lists.items, position);
}

std::u16string CaptionOf(std::u16string_view title) {
  return std::u16string(title).append(texts::kCaptionTail);
}

}  // namespace declarium
