// Takes a record of the headers apart into the pieces that become member lines.
#pragma once

#include <string>
#include <vector>

#include "header_model.h"

namespace declarium::win32_library {

// One piece of a record, at its place: a field, a union, or the storage of neighbouring bit fields.
// A union has the type of its largest alternative; where that is a record without a name, its
// fields are the pieces and the first of them says what else lies there.
struct Piece {
  enum class Kind { kField, kUnion, kBits };
  Kind kind = Kind::kField;
  std::string name;                // wanted in the library, not yet made legal or unique
  std::vector<std::string> paths;  // as C reaches it: "u.x"; all alternatives, or all bit fields
  long offset = 0;                 // bytes
  long size = 0;
  HeaderType type;
  std::string count_constant;
  std::vector<std::string> overlaid;  // paths of what else begins at the place of this piece
};

// The pieces in order of their places. Records without a name of their own are opened: their fields
// stand among the pieces. `alternative` is the path of one that its union is to have the form of,
// instead of the largest.
[[nodiscard]] std::vector<Piece> PiecesOf(const Headers& headers, const Record& record,
                                          const std::string& alternative = "");

// An alternative of a union that is a record with a name, but not the one whose form the union has.
struct Alternative {
  std::string path;
  int record = -1;  // index into Headers::records
};

// The alternatives of all unions in the record.
[[nodiscard]] std::vector<Alternative> AlternativesOf(const Headers& headers, const Record& record);

}  // namespace declarium::win32_library
