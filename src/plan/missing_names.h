// The names that a module's code uses, that nothing declares and that a library has.
//
// Not among them: what the project declares, in whatever branch of #If; names of the runtime and of
// OLE automation (vb/runtime_names.h); members of the form or control that the code belongs to;
// what is assigned to or loops count with, which must be a variable; names behind a dot and names
// with a qualifier in front; what stands in a branch of #If that the target leaves out.
//
// A use says what it can be: behind As a record, with arguments or as a statement a procedure,
// otherwise a constant or a procedure without arguments.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "library/library.h"
#include "plan/project_modules.h"
#include "vb/audience.h"

namespace declarium::plan {

// An item of a library that a name can mean.
struct Candidate {
  std::size_t library = 0;  // its position
  ItemView item;            // refers into the library
};

struct MissingName {
  std::u16string name;                // as the code has it first
  vb::Place place;                    // of its first use
  std::vector<Candidate> candidates;  // each says something else; one unless it is ambiguous

  [[nodiscard]] bool IsAmbiguous() const { return candidates.size() > 1; }
};

// In the order of their first uses. Items of several libraries that mean the same count once, for
// the first of these libraries.
[[nodiscard]] std::vector<MissingName> FindMissing(ProjectModules& project, std::size_t module,
                                                   std::span<const Library* const> libraries,
                                                   vb::Audience target = vb::Audience::kVb6);

// The constants, records and procedures of the missing names that are not ambiguous.
[[nodiscard]] std::vector<ItemView> CertainItems(std::span<const MissingName> missing);

}  // namespace declarium::plan
