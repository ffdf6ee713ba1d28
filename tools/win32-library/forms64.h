// What the rows are in 64 bits: found by comparing them with the rows that the same headers give
// for x64.
#pragma once

#include <expected>
#include <map>
#include <set>
#include <string>

#include "metadata.h"
#include "rows.h"

namespace declarium::win32_library {

// The procedures that the 64-bit import libraries know.
class Exports64 {
 public:
  // Reads an archive. The reason in words when the file is none.
  [[nodiscard]] std::expected<void, std::string> Add(const std::string& path);
  [[nodiscard]] bool Has(const std::string& name) const { return names_.contains(name); }

 private:
  std::set<std::string> names_;
};

// Procedures that another one stands for in 64 bits: SetWindowLongPtrA for SetWindowLongA.
using Successors = std::map<std::string, std::string>;

// Reads lines of two names; "#" begins a comment. The reason in words on failure.
[[nodiscard]] std::expected<Successors, std::string> ReadSuccessors(const std::string& path);

// Says of each row of `library` what it is in 64 bits. `wide` has the rows of x64, `metadata` what
// there is there. A procedure that neither it nor a 64-bit import library has exists in 32 bits
// only.
void AddForms64(Library& library, const Library& wide, const Exports64& exports,
                const Metadata& metadata, const Successors& successors);

}  // namespace declarium::win32_library
