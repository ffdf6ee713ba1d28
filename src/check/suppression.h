// Comments that keep findings quiet: ' nocheck, or ' nocheck D203, D301. One behind a statement is
// for its lines, one on a line of its own for the statement below it too.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "check/finding.h"

namespace declarium::check {

class Suppressions {
 public:
  explicit Suppressions(std::u16string_view text);

  [[nodiscard]] bool Cover(const Finding& finding) const;

 private:
  struct Mark {
    std::vector<RuleId> rules;  // empty for all
    bool is_alone = false;      // on its line
  };

  [[nodiscard]] bool Covers(std::uint32_t line, RuleId rule) const;
  [[nodiscard]] bool CoversFromAbove(std::uint32_t line, RuleId rule) const;

  std::map<std::uint32_t, Mark> marks_;  // by line
};

}  // namespace declarium::check
