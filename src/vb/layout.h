// Where the host language puts the members of a record when it passes one to a procedure outside.
//
//   Byte 1, Boolean 2, Integer 2, Long 4, Single 4, Double 8, Currency 8, Date 8, String 4 (its
//   address), String * N N characters of one byte each, a record its own size
//
// A member stands at a multiple of its alignment: its size, at most 4; 1 for a fixed string; a
// record's is the largest of its members. An array is aligned as its elements are. The record's
// size is rounded up to the largest alignment.
#pragma once

#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace declarium::vb {

struct Extent {
  long size = 0;
  long alignment = 1;
};

// One member line of a record.
struct Member {
  std::string name;
  std::string type_name;
  long count = 1;                    // elements, 1 where there are no bounds
  std::optional<long> fixed_length;  // of String * N
};

struct MemberPlace {
  long offset = 0;
  long size = 0;  // of the whole member, all elements
};

struct RecordLayout {
  Extent extent;
  std::vector<MemberPlace> places;  // one for each member, in order
};

// The value of a constant that gives a length or a bound.
using LengthLookup = std::function<std::optional<long>(std::string_view name)>;
// The extent of another record.
using RecordLookup = std::function<std::optional<Extent>(std::string_view name)>;

// Size and alignment of the language's own types, nothing for any other name.
[[nodiscard]] std::optional<Extent> BuiltInExtent(std::string_view type_name);

// Reads "name As Type", "name(3) As Type", "name(1 To 4) As Type" or "name As String * 8". An upper
// bound alone counts from 0. The reason in words when the line is none of these.
[[nodiscard]] std::expected<Member, std::string> ParseMember(std::string_view line,
                                                             const LengthLookup& lengths);

[[nodiscard]] std::expected<RecordLayout, std::string> LayOut(const std::vector<Member>& members,
                                                              const RecordLookup& records);

}  // namespace declarium::vb
