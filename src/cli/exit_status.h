// What the program's exit status says.
#pragma once

namespace declarium::cli {

enum class ExitStatus : int {
  kDone = 0,
  kNothingFound = 1,  // nothing matches, or a name that the library does not have
  kWrongUse = 2,      // the command line makes no sense
  kFileFailed = 3,    // a file cannot be read, is no library, or cannot be written
};

}  // namespace declarium::cli
