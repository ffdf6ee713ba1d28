// One row's line of a facts file, taken apart (docs/facts-format.md). All views refer into the
// line; text is UTF-8. A field that a line lacks is empty.
#pragma once

#include <string_view>
#include <vector>

namespace declarium {

// A parameter, result or member.
struct ValueFacts {
  std::string_view name;
  std::string_view c_type;
  std::string_view set;  // the name of the set of constants that belong to it
  // The type in 64 bits, where it is another one than in the row; "*" behind it, or alone, for a
  // parameter whose row passes an address.
  std::string_view type64;
  bool is_in = false;
  bool is_out = false;  // neither: not known
  bool is_optional = false;
  bool is_reserved = false;
};

struct RelatedRow {
  std::string_view how;  // "wide", "ansi", "close"
  std::string_view name;
};

struct RowFacts {
  std::string_view header;        // or the area of the documentation
  std::string_view library;       // of a Declare: the DLL that documents it
  std::string_view entry;         // of a Declare, empty where it is the row's name
  std::string_view since;         // the first version of Windows: "5.1.2600", "Server2008"
  std::string_view since_source;  // who says so
  bool sets_last_error = false;
  std::vector<RelatedRow> related;
  ValueFacts result;               // of a Declare; without a C type where none is known
  std::vector<ValueFacts> values;  // in order
};

// What a row is in 64 bits where more than types differ, or is not at all.
struct Form64 {
  std::string_view text;    // of a Declare, or the members of a Type with "|" between
  std::string_view reason;  // why there is none; empty when there is one
};

// The constants that belong to a parameter or member.
struct ConstantSetFacts {
  bool is_flags = false;                    // combined with Or
  std::vector<std::string_view> constants;  // by an enumeration
  std::vector<std::string_view> by_prefix;  // by the beginning of their names alone
};

// `line` is a Declare's, a Type's or a Const's, without its end.
[[nodiscard]] RowFacts ReadRowFacts(std::string_view line);
// `line` is that of a form in 64 bits.
[[nodiscard]] Form64 ReadForm64(std::string_view line);
// `line` is a set's.
[[nodiscard]] ConstantSetFacts ReadConstantSetFacts(std::string_view line);

}  // namespace declarium
