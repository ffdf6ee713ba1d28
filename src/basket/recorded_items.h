// The basket's record: an element for every item that entered the basket, in the order in which
// they did.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "library/grouped_entry.h"
#include "library/library.h"

namespace declarium {

// Between the fields of a key and of an element.
inline constexpr char16_t kFieldSeparator = 0;

// Item key: kind digit, separator, name. A record element is a key, another separator and the item
// string.
[[nodiscard]] std::u16string ItemKey(int kind_code, std::u16string_view name);

// A record ready to be looked into. It must not change meanwhile.
class RecordedItems {
 public:
  explicit RecordedItems(std::span<const std::u16string> record);

  // What the record holds for an entry: the first element with exactly its key. When there is none,
  // the first that begins with the key, so a longer name then answers for a shorter one. Nothing
  // when there is none either, and for an entry without a kind's icon. The views refer into the
  // record.
  [[nodiscard]] std::optional<ItemView> Find(const GroupedEntry& entry) const;

 private:
  [[nodiscard]] const std::u16string* FindElement(std::u16string_view key) const;

  std::span<const std::u16string> record_;
  std::unordered_map<std::u16string_view, std::size_t> first_with_key_;
};

}  // namespace declarium
