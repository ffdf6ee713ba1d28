// Findings in SARIF 2.1.0, which build servers show beside the source.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>

#include "check/finding.h"

namespace declarium::cli {

// A finding with what its source is called, and the lines as they should be.
struct SourceFinding {
  std::string source;
  std::u16string mended;  // empty where nothing mends it
  check::Finding finding;
  bool is_mended = false;  // in its file by now
};

// One run of the tool `version`, with all rules.
[[nodiscard]] nlohmann::ordered_json SarifLog(std::span<const SourceFinding> findings,
                                              const std::string& version);

}  // namespace declarium::cli
