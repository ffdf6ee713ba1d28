// Where the headers and the metadata disagree: which of them a row of the library follows, and why.
#pragma once

#include <expected>
#include <map>
#include <string>

namespace declarium::win32_library {

enum class Side {
  kHeaders,
  kMetadata,
  kNeither,  // both are wrong, or the name does not exist: the row is left out
};

struct Override {
  Side side;
  std::string reason;  // with its source
};

// By kind and name with a tab between them. A procedure has its exported name, a constant or record
// the one in the library.
using Overrides = std::map<std::string, Override, std::less<>>;

// Reads a list of lines "KIND NAME SIDE REASON" with tabs between them; "#" begins a comment. The
// reason in words when a line is not of this form, or one name is there twice.
[[nodiscard]] std::expected<Overrides, std::string> ReadOverrides(const std::string& path);

// The decision for the name, nullptr when there is none.
[[nodiscard]] const Override* FindOverride(const Overrides& overrides, const std::string& kind,
                                           const std::string& name);

}  // namespace declarium::win32_library
