// Merging parsed items into a library.
#pragma once

#include "import/parser.h"
#include "library/library.h"

namespace declarium {

enum class Existing { kKeep, kReplace };

// Replaces the lists of all three kinds by the parsed items, with those of the library behind them
// when they are kept, sorted by lower-cased name. Items without a name are dropped first. Of items
// whose names are exactly equal the one survives whose position in the combined list, written as a
// decimal number, comes last as text ("10" stands before "2"); names that differ in case are all
// kept, next to each other. Does not touch the changed flag. Views into the library's lists are
// invalid afterwards.
void MergeItems(Library& library, const ParsedItems& parsed, Existing existing);

}  // namespace declarium
