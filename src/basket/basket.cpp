#include "basket/basket.h"

#include <algorithm>

#include "basket/create_select.h"

namespace declarium {
namespace {

constexpr char16_t kFieldSeparator = 0;

}  // namespace

Basket::Range Basket::GroupOf(Kind kind) const {
  const auto count = static_cast<std::int32_t>(entries_.size());
  const auto first_of = [&](Kind sought, std::int32_t otherwise) {
    const auto position = FindItemByIcon(IconOf(sought), entries_);
    return position == -1 ? otherwise : position;
  };
  const auto first_type = first_of(Kind::kType, count + 1);
  const auto first_declare = first_of(Kind::kDeclare, first_type);
  switch (kind) {
    case Kind::kConst:
      return {1, first_declare - 1};
    case Kind::kDeclare:
      return {first_declare, first_type - 1};
    case Kind::kType:
      break;
  }
  return {first_type, count};
}

std::optional<std::int32_t> Basket::Add(Kind kind, std::u16string_view name,
                                        std::u16string_view item) {
  const auto [first, last] = GroupOf(kind);
  const auto position = GetAlphabeticInsertion(first, last, name, entries_);
  if (position == -1) return std::nullopt;
  auto element = ItemKey(KindCode(kind), name);
  element += kFieldSeparator;
  record_.push_back(element.append(item));
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

std::u16string Basket::Text(std::u16string_view scope) const {
  return CreateSelect(entries_, record_, scope);
}

}  // namespace declarium
