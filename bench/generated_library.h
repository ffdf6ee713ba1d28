// Libraries and source text made up for the benchmarks: the same for the same size on every
// machine, with names, lengths and a mix of kinds like those of libraries in use.
#pragma once

#include <cstddef>
#include <string>

#include "library/library.h"

namespace declarium::bench {

// A word that stands in about one declaration of fifty, for the searches.
inline constexpr const char* kSoughtWord = "clipboard";

// Declarations of `items` items of different names: of ten, six constants, three procedures and one
// record. Nothing but declarations and some comments.
[[nodiscard]] std::u16string GenerateDeclarations(std::size_t items);

// A source module of at least `lines` lines in the code page: declarations, about one for four
// lines, some of them continued, between procedures, comments, enumerations and empty lines.
[[nodiscard]] std::string GenerateModule(std::size_t lines);

// A module of a program, of at least `lines` lines in the code page: about twenty declarations of
// `library`, others for each `number`, then procedures that use what they declare. Its names are
// not those of another number.
[[nodiscard]] std::string GenerateProgramModule(const Library& library, std::size_t number,
                                                std::size_t lines);

// The library of GenerateDeclarations(items).
[[nodiscard]] Library GenerateLibrary(std::size_t items);

}  // namespace declarium::bench
