// Finds rows by their names: a hash table that keeps numbers alone, since the names stand in the
// libraries. Making it takes a part of the time that a map of strings would.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace declarium::check {

class RowTable {
 public:
  // `row` is what the caller calls the row of this name.
  void Add(std::u16string_view name, std::uint32_t row);

  // The first added row that `is_it` takes, of those whose names may be this one in any case; -1
  // for none.
  template <class IsIt>
  [[nodiscard]] std::int64_t Find(std::u16string_view name, const IsIt& is_it) const {
    if (slots_.empty()) return -1;
    const auto hash = HashOf(name);
    for (auto at = hash & Mask(); slots_[at].row != kFree; at = (at + 1) & Mask()) {
      if (slots_[at].hash == hash && is_it(slots_[at].row)) return slots_[at].row;
    }
    return -1;
  }

 private:
  static constexpr std::uint32_t kFree = UINT32_MAX;

  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t row = kFree;
  };

  // The same for upper and lower case.
  [[nodiscard]] static std::uint32_t HashOf(std::u16string_view name);
  [[nodiscard]] std::uint32_t Mask() const { return static_cast<std::uint32_t>(slots_.size()) - 1; }
  void Grow();
  void Put(Slot slot);

  std::vector<Slot> slots_;  // a power of two, at most half of them taken
  std::size_t count_ = 0;
};

}  // namespace declarium::check
