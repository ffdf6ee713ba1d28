// One row's line of a facts file, taken apart (docs/facts-format.md). All views refer into the
// line; text is UTF-8. A field that a line lacks is empty.
#pragma once

#include <string_view>
#include <vector>

namespace declarium {

// A parameter or member.
struct ValueFacts {
  std::string_view name;
  std::string_view c_type;
  std::string_view set;  // the name of the set of constants that belong to it
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
  std::vector<ValueFacts> values;  // in order
};

// The constants that belong to a parameter or member.
struct ConstantSetFacts {
  bool is_flags = false;                    // combined with Or
  std::vector<std::string_view> constants;  // by an enumeration
  std::vector<std::string_view> by_prefix;  // by the beginning of their names alone
};

// `line` is a Declare's, a Type's or a Const's, without its end.
[[nodiscard]] RowFacts ReadRowFacts(std::string_view line);
// `line` is a set's.
[[nodiscard]] ConstantSetFacts ReadConstantSetFacts(std::string_view line);

}  // namespace declarium
