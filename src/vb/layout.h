// Where the language puts the members of a record.
//
//   Byte 1, Boolean 2, Integer 2, Long 4, Single 4, Double 8, Currency 8, Date 8, LongLong 8,
//   Variant 16 (24 in 64 bits), String, Object, LongPtr and a dynamic array an address (4 or 8),
//   String * N N characters, a record its own size
//
// A member stands at a multiple of its alignment: its size, at most 4, in 64 bits at most 8; that
// of a character for a fixed string; a record's is the largest of its members. An array is aligned
// as its elements are. The record's size is rounded up to the largest alignment.
//
// A record that is passed to a procedure outside has characters of one byte, one in memory of two.
#pragma once

#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vb/declaration.h"
#include "vb/target.h"

namespace declarium::vb {

struct Extent {
  long size = 0;
  long alignment = 1;
};

struct MemberPlace {
  long offset = 0;
  long size = 0;                     // of the whole member, all elements
  std::optional<long> count;         // elements, 1 for no array; nothing for a dynamic one
  std::optional<long> fixed_length;  // of String * N
};

struct RecordLayout {
  Extent extent;                    // as it is passed
  std::vector<MemberPlace> places;  // the same; one for each member, in order
  Extent in_memory;                 // what LenB says
  long written = 0;                 // what Len says: one byte a character, nothing between members
};

// The value of an expression that gives a length or a bound.
using LengthLookup = std::function<std::optional<long>(std::u16string_view expression)>;
// The layout of another record; nothing when the type is not known.
using RecordLookup = std::function<std::optional<RecordLayout>(std::u16string_view name)>;

// Size and alignment of the language's own types, nothing for any other name.
[[nodiscard]] std::optional<Extent> BuiltInExtent(std::u16string_view type_name, Target target);

// All members in a row. The reason in words when a type, a length or a bound is not known.
[[nodiscard]] std::expected<RecordLayout, std::string> LayOut(const Record& record, Target target,
                                                              const LengthLookup& lengths,
                                                              const RecordLookup& records);

// The bytes that a parameter takes on the stack, in 64 bits always a register's 8. A type that is
// not the language's own counts as a Long by value: it can only be an enumeration.
[[nodiscard]] long ArgumentBytes(const Parameter& parameter, Target target);

}  // namespace declarium::vb
