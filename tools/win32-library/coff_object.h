// The little of COFF objects and their archives that import libraries are made of.
//
// An archive is "!<arch>\n", then members: a header of 60 bytes whose bytes 48-57 are the decimal
// size, and the content, padded to an even length. An object is a header of 20 bytes (machine
// 0x14C or 0x8664, number of sections, ..., offset and number of symbols), section headers of 40
// bytes (name,
// ..., size at 16, offset at 20), and symbols of 18 bytes (name or offset into the strings behind
// the symbols, value, section number, type, class, number of auxiliary entries).
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace declarium::win32_library {

struct CoffSymbol {
  std::string name;
  int section = 0;  // 1-based; 0 when the symbol is defined elsewhere
};

struct CoffSection {
  std::string name;
  std::string_view content;
};

struct CoffObject {
  std::vector<CoffSection> sections;
  std::vector<CoffSymbol> symbols;

  // The first section of the name that has content.
  [[nodiscard]] std::string_view Content(std::string_view section) const;
};

// The object in `bytes`, which must outlive it; nothing when it is none for an x86 or x64
// processor.
[[nodiscard]] std::optional<CoffObject> ReadObject(std::string_view bytes);

// Calls `visit` with the content of every member; false when `bytes` is no archive.
[[nodiscard]] bool ForEachMember(std::string_view bytes,
                                 const std::function<void(std::string_view)>& visit);

}  // namespace declarium::win32_library
