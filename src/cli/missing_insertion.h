// insert --missing: what a module lacks of the items, and of all that they need.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cli/planned_insertion.h"
#include "cli/session.h"

#include "library/library.h"
#include "plan/insertion_plan.h"

namespace declarium::cli {

struct MissingInsertion {
  std::string module;                // the file
  std::string project;               // the project that it belongs to; empty for none
  std::vector<std::string> others;   // "NAME=NEW": insert under another name
  std::vector<std::string> without;  // names that are left out
  plan::PlanOptions plan;
  Writing writing = Writing::kFile;
  Encoding encoding = kLibraryEncoding;  // of the module where its bytes do not tell
};

// Says what no library has. kFileFailed, with nothing changed, when the module's header has no End.
// Throws CommandFailed, with nothing changed.
ExitStatus InsertMissing(const MissingInsertion& insertion, const Library& library,
                         std::span<const ItemView> items, const Session& session);

}  // namespace declarium::cli
