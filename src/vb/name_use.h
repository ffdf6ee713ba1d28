// The names that the code of a module uses. One reading for all that asks who uses what: what a
// module lacks, which declarations of a project are used, the report of names.
//
//   not among them   words of the language, members (obj.Name, rs!Name, .Name), named arguments,
//                    labels, what the enclosing procedure declares (parameters, Dim, Static,
//                    Const), the names where they are declared, #If and #Const, Attribute lines,
//                    a designer's header, texts and comments
//   Module1.Name     is a use of Module1, and one of Name with the qualifier Module1
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "vb/module.h"

namespace declarium::vb {

enum class UseKind : unsigned char {
  kValue,     // in an expression, without arguments
  kCall,      // with arguments, as a statement, or behind AddressOf; an array too
  kAssigned,  // what a statement sets: a variable, a property, the result of a function
  kType,      // behind As, New, Implements or TypeOf ... Is
  kMeasured,  // alone in Len() or LenB()
};

inline constexpr std::size_t kNoProcedure = static_cast<std::size_t>(-1);

struct NameUse {
  std::u16string_view name;       // without brackets and a type character
  std::u16string_view qualifier;  // "Module1", "Project1.Module1"; empty without one
  Place place;                    // of the name
  UseKind kind = UseKind::kValue;
  std::uint32_t condition = 0;           // of Module::conditions
  std::size_t procedure = kNoProcedure;  // the position of the one around it
};

// All uses in the order of the source. `module` is what ReadModule made of `text`.
[[nodiscard]] std::vector<NameUse> ReadNameUses(std::u16string_view text, const Module& module);

// The name without the brackets of "[a name]".
[[nodiscard]] std::u16string_view WithoutBrackets(std::u16string_view name) noexcept;

}  // namespace declarium::vb
