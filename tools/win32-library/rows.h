// What the translators make: the library's rows as source text, and what was left out and why.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace declarium::win32_library {

struct ConstRow {
  std::string name;
  std::string type;   // Long, Double or String
  std::string value;  // the text behind "="
  std::string header;
};

// A parameter, result or member, as C declares it.
struct RowValue {
  std::string name = {};    // in the row
  std::string c_name = {};  // of the member; empty for filler
  std::string c_type = {};  // empty for filler
  int parameter = -1;       // 0-based, of the C function: a record by value becomes several
  bool is_input = false;    // of a parameter: by its C type the procedure cannot write to it
  std::string type64 = {};  // in 64 bits, as the facts have it
};

struct DeclareRow {
  std::string name;
  std::string line;  // the whole declaration
  std::string header;
  std::string function = {};              // the name in C; empty when that declares none
  std::vector<RowValue> parameters = {};  // of that function
  RowValue result = {};
  // In 64 bits, where more than types is different: the declaration; or "!" and the reason why
  // there is none.
  std::string form64 = {};
};

struct TypeRow {
  std::string name;
  std::vector<std::string> members;  // without indentation; comment lines begin with an apostrophe
  std::string header;
  std::vector<std::string> c_names;  // typedefs and tag
  std::vector<RowValue> values;      // the members that are no comments
  std::string form64 = {};           // as of a DeclareRow: the members with "|" between
};

// How many candidates of one kind were left out, by reason.
using LeftOut = std::map<std::string, int>;

struct Library {
  std::vector<ConstRow> constants;
  std::vector<DeclareRow> declares;
  std::vector<TypeRow> types;
  LeftOut constants_left_out;
  LeftOut declares_left_out;
  LeftOut types_left_out;
};

}  // namespace declarium::win32_library
