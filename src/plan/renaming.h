// Declarations under other names than their library has for them.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace declarium::plan {

// New names by the old ones in lower case.
struct NewNames {
  std::unordered_map<std::u16string, std::u16string> values;  // constants and procedures
  std::unordered_map<std::u16string, std::u16string> records;

  [[nodiscard]] bool IsEmpty() const { return values.empty() && records.empty(); }
};

// The declarations of `text` under their new names, and with them what they use. A Declare keeps
// its entry point by an Alias.
[[nodiscard]] std::u16string Renamed(std::u16string_view text, const NewNames& names);

}  // namespace declarium::plan
