// What a check has found.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "check/rule.h"
#include "text/edit.h"
#include "vb/token.h"

namespace declarium::check {

struct Finding {
  RuleId rule;
  Level level;
  std::size_t module = 0;  // its position in the subject
  vb::Place place;
  std::string name;                  // of the declaration or variable, UTF-8
  std::string message;               // UTF-8
  std::uint32_t statement_line = 1;  // where the statement or block begins that it stands in
  std::uint32_t statement_end = 1;   // where that ends
  std::vector<Edit> edits = {};      // what mends it, in order; none where a person must decide
};

// The physical lines of `text` that the edits change, as they are then; empty without edits.
[[nodiscard]] std::u16string MendedLines(std::u16string_view text, const std::vector<Edit>& edits);

}  // namespace declarium::check
