// Where declarations go in a module.
//
// Correctness first: a constant stands behind the constants and in front of the constants and
// records that use or need it, a record behind those that it holds. Then neighbors: behind the last
// declaration of the same kind. Otherwise behind the other declarations, in front of the first
// procedure and the comments directly above it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "library/kind.h"
#include "plan/project_modules.h"

namespace declarium::plan {

// Lines that come in front of what is line `line` now, 1-based; one more than the text has lines
// for its end.
struct LineInsertion {
  std::uint32_t line = 1;
  std::u16string text;  // with CR LF between lines and none behind the last, which may be empty
};

// One declaration to be placed.
struct Piece {
  Kind kind = Kind::kConst;
  std::u16string_view name;
  std::u16string_view text;            // of the declaration, in its final form or not
  const vb::Module* parsed = nullptr;  // the text as ReadModule read it
  bool is_block = false;               // in #If lines of its own
};

// Pieces that go to one place, as their positions among what was handed over, in their order.
struct PlacedPieces {
  std::uint32_t line = 1;  // as in LineInsertion
  std::vector<std::size_t> pieces;
  bool has_blank_before = false;  // an empty line goes in front of them, and behind them
  bool has_blank_behind = false;
};

// From the top of the module down.
[[nodiscard]] std::vector<PlacedPieces> Place(const ModuleText& module,
                                              std::span<const Piece> pieces);

// Whether an empty line parts two pieces that follow each other.
[[nodiscard]] bool ArePartedByBlank(const Piece& above, const Piece& below);

}  // namespace declarium::plan
