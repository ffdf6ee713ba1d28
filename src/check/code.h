// What the rules need from the code of a module: how often names stand in it, and the assignments
// of sizes and addresses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "vb/statement.h"

namespace declarium::check {

// How often each declared name stands somewhere else than in its declarations.
class NameCounts {
 public:
  // The name is declared in the module; names that are not are not counted. Modules come in order.
  void Declare(std::u16string_view name, std::size_t module);

  void BeginModule(std::size_t module) { module_ = module; }
  void Count(std::u16string_view name);
  [[nodiscard]] bool IsUsed(std::u16string_view name) const;
  // `module` must declare the name.
  [[nodiscard]] bool IsUsedIn(std::size_t module, std::u16string_view name) const;

 private:
  // Uses less declarations. A declaration counts as a use when its module is read.
  struct Counts {
    std::ptrdiff_t all = 0;
    std::vector<std::pair<std::size_t, std::ptrdiff_t>> by_module;  // those that declare it
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const {
      return std::hash<std::u16string_view>()(text);
    }
  };

  static constexpr std::size_t kFilterBits = 1 << 20;

  [[nodiscard]] static std::size_t FilterBit(std::u16string_view name);

  std::unordered_map<std::u16string, Counts, Hash, std::equal_to<>> counts_;  // by lower case
  // Most names in code are not declared by it: they are not looked up where no bit says so.
  std::vector<bool> filter_ = std::vector<bool>(kFilterBits);
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

// Counts the names in `text`, what stands in comments and texts left out. Whether ReadCode may find
// something in it.
[[nodiscard]] bool CountNames(std::u16string_view text, NameCounts& counts);

[[nodiscard]] Code ReadCode(std::u16string_view text);

}  // namespace declarium::check
