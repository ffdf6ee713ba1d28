// Where something is missing that a module declares in some branches of #If only.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vb/conditions.h"

namespace declarium::plan {

class MissingBranches {
 public:
  // Something is declared where one of `declared` holds. Their expressions are those that nothing
  // decides beforehand; each may be true or false whatever the others are. More than eight of them
  // are taken for everywhere.
  explicit MissingBranches(std::span<const vb::Condition* const> declared);

  // Whether it is declared in every case.
  [[nodiscard]] bool AreNone() const { return !IsMissing(0, 0); }
  // `text` in those branches where it is missing, in #If lines of the same expressions.
  [[nodiscard]] std::u16string Around(std::u16string_view text) const;

 private:
  struct Part {
    std::size_t expression;
    bool is_true;
  };

  // With the first `known` expressions as the bits of `values` say.
  [[nodiscard]] bool IsMissing(std::size_t known, unsigned values) const;
  [[nodiscard]] bool IsDeclared(std::size_t known, unsigned values) const;
  void Write(std::size_t known, unsigned values, std::u16string_view text,
             std::u16string& out) const;

  std::vector<std::u16string> expressions_;
  std::vector<std::vector<Part>> declared_;
};

}  // namespace declarium::plan
