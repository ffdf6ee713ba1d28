// Which records hold addresses of texts that a program can declare As String.
//
// The language puts a String into a record as an address, converts the text before the call and
// takes it back afterwards. That is right for a record that a program fills and hands to an ANSI
// procedure, and fatal for one that a procedure fills with addresses of its own.
#pragma once

#include <set>

#include "header_model.h"

namespace declarium::win32_library {

// The indexes of the ANSI records (XA beside XW) that procedures take by address, and none of them
// under a name that says that it gives something back: Get..., Enum..., Query... . The dialogs for
// opening and saving a file are named Get... but take the record.
[[nodiscard]] std::set<int> TextRecords(const Headers& headers);

}  // namespace declarium::win32_library
