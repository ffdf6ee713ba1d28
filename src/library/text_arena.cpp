#include "library/text_arena.h"

#include <algorithm>

namespace declarium {
namespace {

// Blocks double up to the largest, so that an arena for one item is small.
constexpr std::size_t kFirstBlockUnits = 512;
constexpr std::size_t kLargestBlockUnits = 32 * 1024;

}  // namespace

std::span<char16_t> TextArena::Allocate(std::size_t length) {
  if (length > left_) {
    const auto block_units =
        std::max(length, std::clamp(capacity_, kFirstBlockUnits, kLargestBlockUnits));
    blocks_.push_back(std::make_unique_for_overwrite<char16_t[]>(block_units));
    capacity_ += block_units;
    // A long text gets a block of its own and leaves the current block in use.
    if (length >= kLargestBlockUnits) return {blocks_.back().get(), length};
    next_ = blocks_.back().get();
    left_ = block_units;
  }
  const std::span<char16_t> room(next_, length);
  next_ += length;
  left_ -= length;
  return room;
}

void TextArena::Trim(std::span<char16_t> newest, std::size_t used) noexcept {
  if (newest.data() + newest.size() != next_) return;
  left_ += newest.size() - used;
  next_ -= newest.size() - used;
}

std::u16string_view TextArena::Store(std::u16string_view text) {
  const auto room = Allocate(text.size());
  std::ranges::copy(text, room.begin());
  return {room.data(), text.size()};
}

}  // namespace declarium
