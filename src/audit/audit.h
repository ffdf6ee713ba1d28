// The audit of a project: where each declaration is used, what is wrong with it, what is to be done
// about it, and the lines that do what is certain.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
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
  std::u16string library_form = {};
  std::size_t other = kNoRow;  // the declaration of the name that it was compared with
};

struct AuditedRow {
  Row row;
  std::vector<UsePlace> uses;  // in the order of modules and places
  std::vector<RowFinding> findings;
  Fate fate;
  // What comes for its lines when it becomes Public or is replaced; empty otherwise.
  std::u16string lines = {};
  // What a library has of this name where that says something else, as source with the row's scope
  // word; looked for when differing rows are replaced, empty otherwise.
  std::u16string library_form = {};
};

struct Audit {
  std::vector<AuditedRow> rows;  // in the order of modules and places
  std::vector<LineEdit> edits;   // what does all fates, in the order of modules and lines

  [[nodiscard]] std::size_t FindingCount() const;
};

// What becomes of declarations that differ from a library.
enum class Differing : unsigned char {
  kIsTold,
  kIsReplaced,  // by the library's form, where that is safe; no rule needs to say a word about it
};

class Auditor;

// An audit whose plan can be made again. What the libraries say of the declarations, which may be
// none, is a matter of the rules of check/. A comment "' nocheck" keeps a declaration as it is, and
// quiet.
class ProjectAudit {
 public:
  // Both must outlive the audit.
  ProjectAudit(const Subject& subject, check::KnownLibraries& libraries, Differing differing);
  ~ProjectAudit();

  // Refers into the subject.
  [[nodiscard]] const Audit& Result() const;

  // Plans again without changing these rows, by row. Fewer of the others may be changed then; what
  // was found stays.
  void LeaveOut(const std::vector<bool>& rows);

 private:
  std::unique_ptr<Auditor> auditor_;
};

[[nodiscard]] Audit AuditProject(const Subject& subject, check::KnownLibraries& libraries,
                                 Differing differing = Differing::kIsTold);

// What is to be done about the row, for people: "remove it", "left: it stands inside #If"; empty
// for nothing.
[[nodiscard]] std::string ActionText(const Audit& audit, std::size_t row, const Subject& subject);

// "Module1", or the module's file where it has no name.
[[nodiscard]] std::string ModuleNameText(const Subject& subject, std::size_t module);

}  // namespace declarium::audit
