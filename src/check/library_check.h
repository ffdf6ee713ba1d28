// Checks a library in memory against libraries in files, and says of what was found all that a
// person wants to see.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "check/rule.h"
#include "library/library.h"

namespace declarium::check {

struct LibraryFinding {
  RuleId rule;
  Level level;
  Kind kind;
  std::u16string name;    // of the item
  std::u16string part;    // the parameter or member that is wrong; empty for the item itself
  std::u16string source;  // the item's text
  std::u16string mended;  // the lines of it that change, as they should be; empty when not certain
  std::u16string known;   // the text of the item of that name in the files, where it is another
};

// Hears how many steps of all are done; false stops the work.
using Progress = std::function<bool(int done, int all)>;

// The findings, errors before warnings before notes and otherwise in the library's order; nullopt
// when `progress` stopped the work. Files that are no libraries are passed over. `library` must not
// change meanwhile: whose `progress` processes events hands over a copy.
[[nodiscard]] std::optional<std::vector<LibraryFinding>> CheckLibrary(
    const Library& library, const std::vector<std::filesystem::path>& against,
    const Progress& progress);

}  // namespace declarium::check
