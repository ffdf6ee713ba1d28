// The 32-bit import libraries: which procedure a dynamic library exports, under which name, and how
// many bytes of arguments it takes off the stack.
#pragma once

#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace declarium::win32_library {

struct ImportEntry {
  std::string library;   // as a Declare names it: lower case, without ".dll"
  std::string exported;  // the name to ask the library for; "#17" for an entry known by number
  long argument_bytes = 0;

  static constexpr long kUnknown = -1;  // argument bytes that no import library tells
};

class ImportLibraries {
 public:
  // Reads an archive. Entries without a number of argument bytes (data, and procedures whose caller
  // cleans the stack) are noted too. The reason in words when the file is no archive.
  [[nodiscard]] std::expected<void, std::string> Add(const std::string& path);

  // The entry of a procedure by its name in the headers: that of `library`, or the first of all
  // where that library has none; nullptr when there is none at all.
  [[nodiscard]] const ImportEntry* Find(std::string_view name, std::string_view library = "") const;

  // Whether an entry of the name exists without its argument bytes.
  [[nodiscard]] bool IsUndecorated(std::string_view name) const;

 private:
  std::map<std::string, std::vector<ImportEntry>, std::less<>> entries_;
  std::map<std::string, bool, std::less<>> undecorated_;
};

}  // namespace declarium::win32_library
