// The types of the variables that a module and its procedures declare.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "vb/token.h"

namespace declarium::vb {

struct Variable {
  std::u16string_view type;  // of an array's element; empty where it is not told by one plain name
  bool is_array = false;
};

// Whether the word may stand in front of a variable's or parameter's name: ByVal and its like.
[[nodiscard]] bool StandsBeforeVariable(const Token& token);

// The variables of one scope.
class Variables {
 public:
  void Clear() { by_name_.clear(); }
  // A name of several types has none.
  void Add(std::u16string_view name, Variable variable);
  // Takes in "a As Long, b&, c(5) As RECT", with ByVal and its like in front of a name. Ends at a
  // closing bracket that the list does not open.
  void AddList(std::span<const Token> tokens);
  // `lowered` is the name in lower case; null for none.
  [[nodiscard]] const Variable* Find(const std::u16string& lowered) const;
  // In lower case, in any order.
  [[nodiscard]] std::vector<std::u16string> NamesOfType(std::u16string_view type) const;

 private:
  std::unordered_map<std::u16string, Variable> by_name_;
};

// What "As" and what follows say, or the type character at the front.
[[nodiscard]] Variable VariableOf(std::span<const Token> behind_name);

}  // namespace declarium::vb
