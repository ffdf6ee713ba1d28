// What the user is told when a library could not keep everything of a source.
#pragma once

#include "import/parser.h"
#include "toolkit/toolkit.h"

namespace declarium {

// Shows one message box: how many declarations were left out because no library can keep a
// character of theirs, how many characters of comments became "?", and the first five of these
// characters with their places. Shows nothing when there are none; lines that were skipped for
// other reasons do not count.
void TellLosses(Toolkit& toolkit, const ParsedItems& parsed);

}  // namespace declarium
