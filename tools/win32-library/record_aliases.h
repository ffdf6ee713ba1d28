// The names that programs know a record by besides its first one.
#pragma once

#include "header_model.h"

namespace declarium::win32_library {

// Gives the records of one unit their plain names and aliases:
//
//   plain name  X for the ANSI record XA (or X_A) beside the wide XW, where no record is X itself,
//               and X for a record that has only the tag tagX
//   aliases     further typedefs of the record itself (SIZEL, CLSID), and macros that stand for one
//               of its names (TOOLINFO, LV_ITEM); not the A names of a record that has a plain one
void NameRecords(Headers& headers);

}  // namespace declarium::win32_library
