// The library as its file holds it, taken apart with the language's own rules and nothing of what
// the generator knows.
#pragma once

#include <expected>
#include <map>
#include <string>
#include <vector>

#include "library/library.h"

namespace declarium::win32_library_test {

struct ConstRow {
  std::string name;
  std::string type;
  std::string value;
};

struct DeclareRow {
  std::string name;
  bool is_function;
  std::string tail;
};

// A member line with the comment line that stood before it, without "'header: ". What else lies
// at its place ("'also here: ") is no claim about the member.
struct MemberRow {
  std::string line;
  std::string remark;

  [[nodiscard]] std::string Name() const { return line.substr(0, line.find_first_of(" (")); }
};

struct TypeRow {
  std::string name;
  std::string header_name;  // how C calls it
  long stated_size = 0;     // what it says of itself where the language rounds it up; else 0
  std::vector<MemberRow> members;
};

struct Rows {
  std::vector<ConstRow> constants;
  std::vector<DeclareRow> declares;
  std::vector<TypeRow> types;
  // By lower-cased name, positions in the lists above.
  std::map<std::string, std::size_t> constant_positions;
  std::map<std::string, std::size_t> type_positions;
};

// A procedure as the language reads its row.
struct DeclareMeaning {
  std::string library;
  std::string entry;
  std::vector<std::string> parameters;
  long argument_bytes = 0;
  bool has_result = false;
};

// The reason when the language would refuse the row.
[[nodiscard]] std::expected<DeclareMeaning, std::string> MeaningOf(const DeclareRow& row);

[[nodiscard]] Rows RowsOf(const Library& library);

// What a check found wrong, one text for each row; empty when every row is right.
using Mismatches = std::vector<std::string>;

}  // namespace declarium::win32_library_test
