#include "basket/recorded_items.h"

#include <algorithm>

#include "text/text.h"

namespace declarium {
namespace {

// The element up to its second separator; the whole element when it has none.
std::u16string_view KeyOf(std::u16string_view element) {
  const auto name = element.find(kFieldSeparator);
  return name == element.npos ? element
                              : element.substr(0, element.find(kFieldSeparator, name + 1));
}

}  // namespace

std::u16string ItemKey(int kind_code, std::u16string_view name) {
  std::u16string key(1, static_cast<char16_t>(u'0' + kind_code));
  key += kFieldSeparator;
  return key.append(name);
}

RecordedItems::RecordedItems(std::span<const std::u16string> record) : record_(record) {
  first_with_key_.reserve(record.size());
  for (std::size_t i = 0; i < record.size(); ++i) first_with_key_.emplace(KeyOf(record[i]), i);
}

const std::u16string* RecordedItems::FindElement(std::u16string_view key) const {
  if (const auto exact = first_with_key_.find(key); exact != first_with_key_.end()) {
    return &record_[exact->second];
  }
  const auto longer = std::ranges::find_if(
      record_, [&](const std::u16string& element) { return element.starts_with(key); });
  return longer == record_.end() ? nullptr : &*longer;
}

std::optional<ItemView> RecordedItems::Find(const GroupedEntry& entry) const {
  const auto kind = KindOfIcon(entry.icon);
  if (!kind) return std::nullopt;
  const auto* const element = FindElement(ItemKey(KindCode(*kind), entry.text));
  if (element == nullptr) return std::nullopt;
  const auto fields = Split(*element, kFieldSeparator);
  if (fields.size() < 3) return std::nullopt;
  return ItemView{*kind, fields[1], fields[2]};
}

}  // namespace declarium
