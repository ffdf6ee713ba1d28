#include "basket/basket.h"

#include <algorithm>

#include "basket/insertion_text.h"
#include "basket/recorded_items.h"
#include "text/text.h"

namespace declarium {
std::optional<std::int32_t> Basket::Add(Kind kind, std::u16string_view name,
                                        std::u16string_view item) {
  // The groups stand in the order of their icons and each in that of its names, so the place need
  // not be searched for entry by entry.
  const auto group = std::ranges::equal_range(entries_, IconOf(kind), {}, &GroupedEntry::icon);
  const auto place = std::ranges::partition_point(group, [name](const GroupedEntry& entry) {
    return CompareIgnoringCase(entry.text, name) < 0;
  });
  if (place != group.end() && EqualIgnoringCase(place->text, name)) return std::nullopt;
  auto element = ItemKey(KindCode(kind), name);
  element += kFieldSeparator;
  record_.push_back(element.append(item));
  const auto position = static_cast<std::int32_t>(place - entries_.begin()) + 1;
  InsertEntry(entries_, position, {std::u16string(name), IconOf(kind)});
  return position;
}

std::optional<std::int32_t> Basket::Remove(std::int32_t position) {
  entries_.erase(entries_.begin() + (position - 1));
  if (entries_.empty()) return std::nullopt;
  return std::min(position, static_cast<std::int32_t>(entries_.size()));
}

void Basket::RemoveGroup(std::int32_t icon) {
  std::erase_if(entries_, [icon](const GroupedEntry& entry) { return entry.icon == icon; });
}

void Basket::RemoveAll() {
  entries_.clear();
  record_.clear();
}

std::vector<ItemView> Basket::Items() const {
  const RecordedItems recorded(record_);
  std::vector<ItemView> items;
  for (const auto& entry : entries_) {
    if (const auto item = recorded.Find(entry)) items.push_back(*item);
  }
  return items;
}

std::u16string Basket::Text(std::u16string_view scope) const {
  return CreateSelect(entries_, record_, scope);
}

}  // namespace declarium
