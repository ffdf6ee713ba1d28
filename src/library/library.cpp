#include "library/library.h"

#include <utility>

#include "library/find_item_index.h"
#include "text/user_texts.h"

namespace declarium {

std::optional<ItemView> FindItem(const Library& library, Kind kind, std::u16string_view name) {
  const auto& lists = library[kind];
  const auto position = FindItemIndex(name, lists.names);
  if (position < 0 || !library.IsWhole()) return std::nullopt;
  const auto index = static_cast<std::size_t>(position);
  return ItemView{kind, lists.names[index], lists.ItemAt(index)};
}

void Library::SetTitle(std::u16string_view title) {
  title_ = title;
  revision_.Increase();
}

void Library::SetItems(Kind kind, KindLists lists) noexcept {
  lists_[Index(kind)] = std::move(lists);
  revision_.Increase();
}

void Library::RemoveItem(Kind kind, std::size_t position) {
  auto& lists = lists_[Index(kind)];
  RemoveListItem(lists.names, position);
  if (position < lists.items.size()) RemoveListItem(lists.items, position);
  revision_.Increase();
}

void Library::TakeNames(ListOfEachKind names) noexcept {
  for (const auto kind : kKinds) lists_[Index(kind)].names = std::move(names[Index(kind)]);
  is_whole_ = false;
  revision_.Increase();
}

void Library::TakeItems(ListOfEachKind items) noexcept {
  for (const auto kind : kKinds) lists_[Index(kind)].items = std::move(items[Index(kind)]);
  is_whole_ = true;
  revision_.Increase();
}

std::u16string CaptionOf(std::u16string_view title) {
  return std::u16string(title).append(texts::kCaptionTail);
}

}  // namespace declarium
