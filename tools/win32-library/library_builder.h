// Makes the library's rows from all units of headers.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "constant_translator.h"
#include "declare_translator.h"
#include "forms64.h"
#include "header_model.h"
#include "knowledge.h"
#include "rows.h"

namespace declarium::win32_library {

// What the rows' 64-bit forms are made of: the same headers and metadata, read for x64.
struct Sources64 {
  const std::vector<Headers>& units;
  const Knowledge& knowledge;
  const Exports64& exports;
  const Successors& successors;
};

// Every row that can be made, from the first of the units that has it: the additions and the
// headers, the metadata as the last. Names are unique within a kind without regard to case. No
// constant has the name of a procedure, since a module of VB could not hold both, nor of a record;
// a record may have a procedure's (CHOOSECOLOR, ChooseColor), as the language looks for them in
// different places.
// The 64-bit forms of the rows are made from `sources64` with the constants of 32 bits.
[[nodiscard]] Library BuildLibrary(const std::vector<Headers>& units, const Knowledge& knowledge,
                                   const Sources64& sources64);

}  // namespace declarium::win32_library
