// Whether two declarations mean the same, however they are written.
//
//   constants  by value: 16 is &H10, whatever the type; one that cannot be evaluated by its words
//   Declares   entry point, DLL ("kernel32.dll" is "kernel32"), result, and the parameters' types,
//              passing and number; not their names. A type character is its As
//   records    the members in order: names, types, bounds and lengths by value
//
// Blanks, comments, continuations and upper or lower case make no difference, nor does the scope.
// Names of entry points and the texts of constants are compared to the letter.
#pragma once

#include "vb/definitions.h"

namespace declarium::plan {

// A declaration and what the names in it mean.
struct DefinedDeclaration {
  const vb::Declaration* declaration;
  vb::Definitions* definitions;
};

[[nodiscard]] bool MeanTheSame(const DefinedDeclaration& a, const DefinedDeclaration& b);

// Whether the values are equal, whatever their types.
[[nodiscard]] bool IsSameValue(const vb::Value& a, const vb::Value& b);

}  // namespace declarium::plan
