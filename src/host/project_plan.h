// What is to be done about the declarations of a project that the host has open: the audit of what
// was read, the user's choices, and the doing, module by module.
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "audit/audit.h"
#include "check/known_libraries.h"
#include "host/code_reading.h"
#include "host/line_edits.h"

namespace declarium {

// A project as it was read.
struct ReadProject {
  std::u16string name;
  std::vector<ReadCode> codes;
  std::vector<std::u16string> unread;  // the names of components that could not be read
};

class ProjectPlan {
 public:
  // `libraries` tell what is right, the first before the others. With components that could not be
  // read less is certain.
  ProjectPlan(ReadProject project, std::unique_ptr<check::KnownLibraries> libraries);
  ProjectPlan(const ProjectPlan&) = delete;
  ProjectPlan& operator=(const ProjectPlan&) = delete;

  [[nodiscard]] const ReadProject& Project() const { return project_; }
  [[nodiscard]] const std::vector<audit::AuditedRow>& Rows() const { return Audit().rows; }
  [[nodiscard]] std::u16string_view ModuleName(std::size_t module) const {
    return project_.codes[module].name;
  }

  // Whether something can be done about the row, as long as nothing else is left out.
  [[nodiscard]] bool IsOffered(std::size_t row) const { return offered_[row].does != kStays; }
  // Leaves the row as it is, and whatever that asks for.
  void LeaveOut(std::size_t row);
  // Takes the row back in, with those that can only be changed together with it. Something else
  // that is left out may still keep it.
  void TakeIn(std::size_t row);
  void LeaveOutModule(std::size_t module);
  // What the user chose, to come back to it.
  [[nodiscard]] const std::vector<bool>& Choices() const { return left_out_; }
  void Choose(std::vector<bool> left_out);

  // The modules that the plan changes, in the order in which that is safe.
  [[nodiscard]] std::vector<std::size_t> ChangedModules() const;
  [[nodiscard]] std::vector<LineEdit> EditsOf(std::size_t module) const;

  // The names of the modules that are not in `now` as they were read, in both; empty when the
  // project is as it was.
  [[nodiscard]] std::vector<std::u16string> Differences(const ReadProject& now) const;

  // Changes the module in the host. The plan stays as it is; when all is done, the module's rows
  // remember what.
  [[nodiscard]] EditReport CarryOut(std::size_t module);
  // What was done about the row; kStays for nothing.
  [[nodiscard]] const audit::Fate& Done(std::size_t row) const { return done_[row]; }

 private:
  static constexpr auto kStays = audit::Fate::Does::kStays;

  [[nodiscard]] const audit::Audit& Audit() const { return audit_->Result(); }
  void PlanAgain() { audit_->LeaveOut(left_out_); }

  ReadProject project_;
  std::unique_ptr<check::KnownLibraries> libraries_;
  std::deque<vb::Module> parsed_;
  std::vector<plan::ModuleText> modules_;
  audit::Subject subject_;
  std::optional<audit::ProjectAudit> audit_;
  std::vector<audit::Fate> offered_;  // by row, what the plan is with nothing left out
  std::vector<bool> left_out_;        // by row
  std::vector<audit::Fate> done_;     // by row
};

}  // namespace declarium
