// What the rules need from the code of a module, read in one pass: how often names stand in it, and
// the assignments of sizes and addresses.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "vb/statement.h"

namespace declarium::check {

// How often each name of interest stands in a module, and in all.
class NameCounts {
 public:
  // Names that are not added are not counted.
  void Add(std::u16string_view name);
  [[nodiscard]] bool IsEmpty() const { return counts_.empty(); }

  void BeginModule(std::size_t module) { module_ = module; }
  void Count(std::u16string_view name);
  [[nodiscard]] std::size_t InAll(std::u16string_view name) const;
  [[nodiscard]] std::size_t InModule(std::u16string_view name, std::size_t module) const;

 private:
  struct Counts {
    std::size_t all = 0;
    std::vector<std::pair<std::size_t, std::size_t>> by_module;  // module and count, in order
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const {
      return std::hash<std::u16string_view>()(text);
    }
  };
  std::unordered_map<std::u16string, Counts, Hash, std::equal_to<>> counts_;  // by lower case
  std::size_t module_ = 0;
  std::u16string lowered_;  // reused
};

// "x.cbSize = Len(x)" and "x.cbSize = 44".
struct SizeAssignment {
  vb::Place place;             // of the value
  std::u16string_view record;  // the type of the variable
  std::u16string_view member;
  std::u16string_view value;  // Len, or the number
};

// "p = VarPtr(x)" where p is a Long.
struct AddressAssignment {
  vb::Place place;  // of the variable
  std::u16string_view variable;
  std::u16string_view function;
};

// Lines inside #If are left out: another branch may be right.
struct Code {
  std::vector<SizeAssignment> sizes;
  std::vector<AddressAssignment> addresses;
};

// Counts the names of `text` in `counts`.
[[nodiscard]] Code ReadCode(std::u16string_view text, NameCounts& counts);

}  // namespace declarium::check
