// Reads the part of a Declare behind "Lib": library, alias, parameters and result.
#pragma once

#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace declarium::vb {

enum class Passing { kByValue, kByReference };

struct ProcedureParameter {
  Passing passing = Passing::kByReference;
  std::string name;
  std::string type_name;
};

struct Procedure {
  std::string library;
  std::string alias;  // empty when there is no Alias clause
  std::vector<ProcedureParameter> parameters;
  std::string result_type;  // empty for a Sub

  // Bytes on the stack: 8 for a Currency, Double or Date by value, 4 for everything else.
  [[nodiscard]] long ArgumentBytes() const;
};

// The reason in words when the text is not of the form
//   "library" [Alias "entry"] ([[ByVal|ByRef] name As Type[, ...]]) [As Type]
// or a name in it is not legal.
[[nodiscard]] std::expected<Procedure, std::string> ParseProcedure(std::string_view text);

}  // namespace declarium::vb
