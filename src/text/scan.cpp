#include "text/scan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "text/text.h"

namespace declarium {
namespace {

// Eight units side by side; compilers turn operations on them into vector instructions.
using Units [[gnu::vector_size(16)]] = std::uint16_t;
constexpr std::size_t kUnits = 8;

Units Load(const char16_t* text) {
  Units units;
  std::memcpy(&units, text, sizeof units);
  return units;
}

Units AllEqualTo(std::uint16_t unit) {
  return Units{} + unit;
}

template <typename Vector>
bool AnyBit(Vector units) {
  const auto halves = std::bit_cast<std::array<std::uint64_t, 2>>(units);
  return (halves[0] | halves[1]) != 0;
}

bool IsAscii(Units units) {
  return !AnyBit(units & AllEqualTo(0xFF80));
}

// Lower case of units that are all ASCII.
Units LowerAscii(Units units) {
  const auto is_capital = units - AllEqualTo(u'A') <= AllEqualTo(u'Z' - u'A');
  return units | (std::bit_cast<Units>(is_capital) & AllEqualTo(0x20));
}

bool IsLowerCaseOf(const char16_t* text, std::u16string_view lowered) {
  for (std::size_t i = 0; i < lowered.size(); ++i) {
    if (LowerCase(text[i]) != lowered[i]) return false;
  }
  return true;
}

// Whether one of the eight positions from `text` on may begin `sought`, judged by its first and
// last unit. Only a block that is all ASCII is ruled out.
bool MayBegin(const char16_t* text, std::u16string_view sought) {
  const auto first = Load(text);
  const auto last = Load(text + sought.size() - 1);
  if (!IsAscii(first | last)) return true;
  return AnyBit((LowerAscii(first) == AllEqualTo(sought.front())) &
                (LowerAscii(last) == AllEqualTo(sought.back())));
}

}  // namespace

std::size_t FindUnit(std::u16string_view text, char16_t unit, std::size_t from) noexcept {
  const auto sought = AllEqualTo(unit);
  while (text.size() - from >= 4 * kUnits) {
    const auto* block = text.data() + from;
    if (AnyBit((Load(block) == sought) | (Load(block + kUnits) == sought) |
               (Load(block + 2 * kUnits) == sought) | (Load(block + 3 * kUnits) == sought))) {
      break;
    }
    from += 4 * kUnits;
  }
  while (text.size() - from >= kUnits && !AnyBit(Load(text.data() + from) == sought)) {
    from += kUnits;
  }
  for (; from < text.size(); ++from) {
    if (text[from] == unit) return from;
  }
  return text.npos;
}

std::size_t FindUnit(std::string_view bytes, char byte, std::size_t from) noexcept {
  return bytes.find(byte, from);
}

bool HasUnitUpTo(std::u16string_view text, char16_t limit) noexcept {
  const auto most = AllEqualTo(limit);
  while (text.size() >= kUnits) {
    if (AnyBit(Load(text.data()) <= most)) return true;
    text.remove_prefix(kUnits);
  }
  return std::ranges::any_of(text, [limit](char16_t unit) { return unit <= limit; });
}

std::size_t FindIgnoringCase(std::u16string_view text, std::u16string_view sought) noexcept {
  if (sought.empty()) return 0;
  if (sought.size() > text.size()) return text.npos;
  const auto positions = text.size() - sought.size() + 1;
  for (std::size_t start = 0; start < positions; start += kUnits) {
    // The last block overlaps the one before it, which costs less than single steps.
    if (positions - start < kUnits && positions >= kUnits) start = positions - kUnits;
    const bool whole_block = positions - start >= kUnits;
    if (whole_block && !MayBegin(text.data() + start, sought)) continue;
    const auto end = whole_block ? start + kUnits : positions;
    for (auto i = start; i < end; ++i) {
      if (IsLowerCaseOf(text.data() + i, sought)) return i;
    }
  }
  return text.npos;
}

void LowerCaseInto(std::u16string_view text, char16_t* out) noexcept {
  std::size_t i = 0;
  for (; text.size() - i >= kUnits; i += kUnits) {
    const auto units = Load(text.data() + i);
    if (IsAscii(units)) {
      const auto lowered = LowerAscii(units);
      std::memcpy(out + i, &lowered, sizeof lowered);
    } else {
      for (std::size_t k = i; k < i + kUnits; ++k) out[k] = LowerCase(text[k]);
    }
  }
  for (; i < text.size(); ++i) out[i] = LowerCase(text[i]);
}

}  // namespace declarium
