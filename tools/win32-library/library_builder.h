// Makes the library's rows from all units of headers.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "constant_translator.h"
#include "declare_translator.h"
#include "header_model.h"
#include "knowledge.h"
#include "rows.h"

namespace declarium::win32_library {

// Every row that can be made, from the first of the units that has it: the additions and the
// headers, the metadata as the last. Names are unique within a kind without regard to case. No
// constant has the name of a procedure, since a module of VB could not hold both, nor of a record;
// a record may have a procedure's (CHOOSECOLOR, ChooseColor), as the language looks for them in
// different places.
[[nodiscard]] Library BuildLibrary(const std::vector<Headers>& units, const Knowledge& knowledge);

}  // namespace declarium::win32_library
