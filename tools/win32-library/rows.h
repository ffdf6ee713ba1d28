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

struct DeclareRow {
  std::string name;
  std::string line;  // the whole declaration
  std::string header;
};

struct TypeRow {
  std::string name;
  std::vector<std::string> members;  // without indentation; comment lines begin with an apostrophe
  std::string header;
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
