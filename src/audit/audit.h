// The audit of a project: where each declaration is used, what is wrong with it, what is to be done
// about it, and the lines that do what is certain.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "audit/clean_up.h"
#include "audit/line_edits.h"
#include "audit/table.h"
#include "check/finding.h"
#include "check/known_libraries.h"

namespace declarium::audit {

struct UsePlace {
  std::size_t module;
  std::uint32_t line;
};

// Something about a row.
struct RowFinding {
  check::Finding finding;  // without edits
  // What the library has for it, as source without a line end; empty for any other finding.
  std::u16string library_form;
};

struct AuditedRow {
  Row row;
  std::vector<UsePlace> uses;  // in the order of modules and places
  std::vector<RowFinding> findings;
  Fate fate;
};

struct Audit {
  std::vector<AuditedRow> rows;  // in the order of modules and places
  std::vector<LineEdit> edits;   // what does all fates, in the order of modules and lines

  [[nodiscard]] std::size_t FindingCount() const;
};

// What the libraries say of the declarations, which may be none, is a matter of the rules of
// check/. What is returned refers into the subject. A comment "' nocheck" keeps a declaration as it
// is, and quiet.
[[nodiscard]] Audit AuditProject(const Subject& subject, check::KnownLibraries& libraries);

// What is to be done about the row, for people: "remove it", "left: it stands inside #If"; empty
// for nothing.
[[nodiscard]] std::string ActionText(const Audit& audit, std::size_t row, const Subject& subject);

// "Module1", or the module's file where it has no name.
[[nodiscard]] std::string ModuleNameText(const Subject& subject, std::size_t module);

}  // namespace declarium::audit
