// Storage for many texts that live and die together. Texts never move, so views into an arena stay
// valid as long as the arena does.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace declarium {

class TextArena {
 public:
  TextArena() = default;
  TextArena(const TextArena&) = delete;
  TextArena& operator=(const TextArena&) = delete;

  // Uninitialized room for `length` units.
  [[nodiscard]] std::span<char16_t> Allocate(std::size_t length);

  // Gives back the end of the newest allocation, of which only `used` units are kept.
  void Trim(std::span<char16_t> newest, std::size_t used) noexcept;

  // A copy of `text`.
  [[nodiscard]] std::u16string_view Store(std::u16string_view text);

  // How many units it takes of memory, in use or not.
  [[nodiscard]] std::size_t Capacity() const noexcept { return capacity_; }

 private:
  std::vector<std::unique_ptr<char16_t[]>> blocks_;
  char16_t* next_ = nullptr;
  std::size_t left_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace declarium
