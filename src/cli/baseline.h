// Findings that are known already: what `check --json` printed once.
#pragma once

#include <map>
#include <string>
#include <tuple>

#include "cli/sarif.h"

namespace declarium::cli {

class Baseline {
 public:
  Baseline() = default;
  // Throws CommandFailed for a file that cannot be read or is no output of check.
  explicit Baseline(const std::string& file);

  // Whether the finding is among them; each counts once. Lines do not matter: code moves.
  [[nodiscard]] bool Take(const SourceFinding& found);

 private:
  using Key = std::tuple<std::string, std::string, std::string>;  // source, rule, name

  std::map<Key, int> known_;
};

}  // namespace declarium::cli
