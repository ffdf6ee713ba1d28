#include "check/row_table.h"

#include <utility>

#include "text/text.h"

namespace declarium::check {

std::uint32_t RowTable::HashOf(std::u16string_view name) {
  std::uint32_t hash = 2166136261;
  for (const char16_t unit : name) {
    const bool is_capital = unit >= u'A' && unit <= u'Z';
    const auto lowered =
        unit < 0x80 ? static_cast<char16_t>(unit | (is_capital ? 0x20 : 0)) : LowerCase(unit);
    hash = (hash ^ lowered) * 16777619;
  }
  return hash ^ (hash >> 15);  // the lower bits find the slot
}

void RowTable::Add(std::u16string_view name, std::uint32_t row) {
  if (count_ * 2 >= slots_.size()) Grow();
  Put({HashOf(name), row});
  ++count_;
}

void RowTable::Put(Slot slot) {
  auto at = slot.hash & Mask();
  while (slots_[at].row != kFree) at = (at + 1) & Mask();
  slots_[at] = slot;
}

// Rows of one name must keep their order, so each run of taken slots is put over from its start.
void RowTable::Grow() {
  constexpr std::size_t kFirst = 1024;
  const auto old = std::exchange(slots_, {});
  slots_.resize(old.empty() ? kFirst : old.size() * 2);
  std::size_t start = 0;
  while (start < old.size() && old[start].row != kFree) ++start;
  for (std::size_t i = 0; i < old.size(); ++i) {
    const auto& slot = old[(start + i) % old.size()];
    if (slot.row != kFree) Put(slot);
  }
}

}  // namespace declarium::check
