// Reads source as Visual Basic does and tells where the literal rules would store something else
// than the source says: an End Type that is indented, several constants on a line, blanks in a row,
// "As" inside a name, Global and PtrSafe, members of enumerations, declarations behind ":".
//
// Where both agree the item is the literal one, to the character. Of declarations of one name in
// different branches of #If the one that VB6 compiles is kept (VBA7 and Win64 are false, Win32 and
// VBA6 true, what only a project defines is unknown); a name that stands only in a branch that VB6
// leaves out is kept too, so that nothing is lost. A constant inside a procedure gives way to one
// of the module. A declaration that no library can keep is left out all the same: no other of its
// name takes its place.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "import/parser.h"
#include "library/kind.h"

namespace declarium {

enum class Reading { kVisualBasic, kLiteral };

// What a difference changes beyond the spelling.
enum class Change {
  kNone,
  kPtrSafeDropped,  // the item lacks the word, which VB6 does not know
  kEnumMember,      // a member of an Enum became a constant
};

// For people: "PtrSafe is dropped"; empty for kNone.
[[nodiscard]] std::string_view ChangeText(Change change);

// A declaration that the literal rules would store differently, or that is only theirs.
struct Difference {
  Kind kind;
  std::u16string name;
  std::uint32_t line;    // 1-based, where the declaration begins
  std::uint32_t column;  // 1-based, in UTF-16 units
  Change change = Change::kNone;
};

struct SourceReading {
  ParsedItems items;                    // in source order
  std::vector<Difference> differences;  // in source order
};

// `source` is the text of a module, `literal` what the literal rules made of it. A declaration that
// the language would refuse is taken as the literal rules read it. What is left out or replaced
// because no library can keep it stands in the items' `skipped` and `replaced` and is no
// difference.
[[nodiscard]] SourceReading ReadAsVisualBasic(std::u16string_view source,
                                              const ParsedItems& literal);

}  // namespace declarium
