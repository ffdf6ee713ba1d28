// Plans for the modules of source projects: what they say as results, and the lines that they put
// into files.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "cli/command_set.h"
#include "cli/session.h"
#include "cli/source_projects.h"

#include "plan/insertion_plan.h"
#include "text/edit.h"
#include "text/encoding.h"

namespace declarium::cli {

// The modules of a project as plans see them. Those without VB_Name have the names of their files.
// The project must outlive it and stay as it is.
class ProjectForPlans {
 public:
  explicit ProjectForPlans(const SourceProject& project);

  plan::ProjectModules& Modules() { return modules_; }

 private:
  [[nodiscard]] std::vector<plan::ModuleText> TextsOf(const SourceProject& project);

  std::deque<std::u16string> names_;
  plan::ProjectModules modules_;
};

// What --dry-run and --diff mean.
inline constexpr const char* kDryRunText = "Only tell what would be inserted";
inline constexpr const char* kDifferenceText =
    "Only print what would be inserted, as patch reads it";

// --scope; left out, `scope` stays.
void DefineScope(CLI::App& command, std::string& scope);

enum class Writing { kFile, kDryRun, kDifference };
// As the two options were given.
[[nodiscard]] Writing WritingOf(bool is_dry_run, bool is_difference);

// Prints a line or an object for each entry that is needed, and below what differs or clashes both
// texts.
void PrintPlan(const Session& session, const plan::InsertionPlan& plan);

// Puts the lines into the module's file, with its own line ends and encoding, which is `otherwise`
// where the bytes do not tell, or prints the difference. Throws CommandFailed, with nothing
// changed.
void CarryOut(const Session& session, const SourceModule& module,
              const std::vector<plan::LineInsertion>& insertions, Writing writing,
              const Encoding& otherwise = kLibraryEncoding);

// What the insertions change in the module's text, in its own line ends.
[[nodiscard]] std::vector<Edit> EditsOf(std::u16string_view text,
                                        const std::vector<plan::LineInsertion>& insertions);

}  // namespace declarium::cli
