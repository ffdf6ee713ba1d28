// Searching and lower-casing long texts several units at a time.
#pragma once

#include <cstddef>
#include <string_view>

namespace declarium {

// The first position at or behind `from` that holds `unit`; npos when there is none. `from` may be
// at most text.size().
[[nodiscard]] std::size_t FindUnit(std::u16string_view text, char16_t unit,
                                   std::size_t from = 0) noexcept;
[[nodiscard]] std::size_t FindUnit(std::string_view bytes, char byte,
                                   std::size_t from = 0) noexcept;

// Whether any unit is at most `limit`.
[[nodiscard]] bool HasUnitUpTo(std::u16string_view text, char16_t limit) noexcept;

// Where `sought` first stands in the lower-case form of `text`, which is not made; npos when
// nowhere. `sought` is compared as it is, so it should be in lower case.
[[nodiscard]] std::size_t FindIgnoringCase(std::u16string_view text,
                                           std::u16string_view sought) noexcept;

// Writes the lower-case form of `text` into storage of at least text.size() units.
void LowerCaseInto(std::u16string_view text, char16_t* out) noexcept;

// A prefetch hint: the memory at the address is read soon. Any pointer is allowed.
inline void Prefetch(const void* address) noexcept {
  __builtin_prefetch(address);
}

}  // namespace declarium
