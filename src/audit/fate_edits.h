// The lines that do what becomes of declarations.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "audit/clean_up.h"
#include "audit/line_edits.h"
#include "audit/table.h"

namespace declarium::audit {

// A declaration of a module and what becomes of it.
struct FatedDeclaration {
  const vb::Declaration* declaration;
  Fate::Does does;
  // What comes for its lines when it becomes Public or is replaced.
  std::u16string lines = {};
};

// `declarations` are all of the module outside procedures, in their order; those to which something
// is done have lines of their own.
[[nodiscard]] std::vector<LineEdit> EditsOf(std::size_t module, const ModuleLines& lines,
                                            const std::vector<FatedDeclaration>& declarations);

// The declaration's lines with Public in front.
[[nodiscard]] std::u16string PublicLines(const vb::Declaration& declaration,
                                         const ModuleLines& lines);

}  // namespace declarium::audit
