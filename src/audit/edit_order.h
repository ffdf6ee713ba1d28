// The order in which modules are changed, so that whatever stops on the way leaves a project that
// compiles: what is to stand for others comes before those go, and who uses something goes before
// that does.
#pragma once

#include <cstddef>
#include <vector>

#include "audit/audit.h"

namespace declarium::audit {

// The modules that have edits, each once. Where modules wait for each other the first comes first.
[[nodiscard]] std::vector<std::size_t> ModulesInOrder(const Audit& audit);

}  // namespace declarium::audit
