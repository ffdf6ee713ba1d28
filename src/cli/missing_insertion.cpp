#include "cli/missing_insertion.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/library_files.h"
#include "cli/names.h"
#include "cli/output.h"
#include "cli/source_files.h"

#include "text/text.h"

namespace declarium::cli {
namespace {

// A project's module: which project it is, and where the module stands in it.
using ModulePlace = std::pair<SourceProject*, std::size_t>;

ModulePlace FindModule(std::deque<SourceProject>& projects, const MissingInsertion& insertion) {
  std::error_code ignored;
  for (auto& project : projects)
    for (std::size_t i = 0; i < project.modules.size(); ++i)
      if (std::filesystem::equivalent(PathOf(project.modules[i].name), PathOf(insertion.module),
                                      ignored))
        return {&project, i};
  throw CommandFailed(ExitStatus::kWrongUse,
                      insertion.module + ": is no module of " +
                          (insertion.project.empty() ? insertion.module : insertion.project));
}

// The entry that NAME or kind:NAME means.
std::size_t EntryOf(const plan::InsertionPlan& plan, const std::string& argument) {
  const auto& entries = plan.Entries();
  const auto name = FromUtf8(argument);
  const auto found = std::ranges::find_if(entries, [&](const plan::PlannedEntry& entry) {
    return EqualIgnoringCase(entry.name, name) ||
           EqualIgnoringCase(FromUtf8(QualifiedName(entry.kind, entry.name)), name);
  });
  if (found != entries.end()) return static_cast<std::size_t>(found - entries.begin());
  throw CommandFailed(ExitStatus::kNothingFound, argument + " is not among what is inserted");
}

void TakeChoices(plan::InsertionPlan& plan, const MissingInsertion& insertion) {
  for (const auto& name : insertion.without) plan.LeaveOut(EntryOf(plan, name), true);
  for (const auto& argument : insertion.others) {
    const auto equals = argument.find('=');
    if (equals == argument.npos)
      throw CommandFailed(ExitStatus::kWrongUse, "--as needs NAME=NEW, not " + argument);
    const auto new_name = argument.substr(equals + 1);
    const auto taken = plan.InsertAs(EntryOf(plan, argument.substr(0, equals)), FromUtf8(new_name));
    if (taken) continue;
    const bool is_legal = taken.error() == plan::NameRefusal::kTaken;
    throw CommandFailed(
        ExitStatus::kWrongUse,
        new_name + (is_legal ? " is taken" : " is no name that Visual Basic takes"));
  }
}

void SayUnknown(const Session& session, const plan::WantedItems& wanted) {
  for (const auto& need : wanted.unknown)
    session.Say("not in the library: " + QualifiedName(need.kind, need.name) + ", used by " +
                OneLine(need.via));
}

}  // namespace

ExitStatus InsertMissing(const MissingInsertion& insertion, const Library& library,
                         std::span<const ItemView> items, const Session& session) {
  auto projects =
      ReadSources({insertion.project.empty() ? insertion.module : insertion.project}, session);
  const auto [project, position] = FindModule(projects, insertion);
  SayErrors(session, *project);
  auto& module = project->modules[position];
  if (module.parsed.is_header_open) return ExitStatus::kFileFailed;
  const auto view = ViewSource(insertion.module, session);
  module.text = DecodeText(view.bytes, RecognizeEncoding(view.bytes, insertion.encoding));
  module.parsed = vb::ReadModule(module.text, module.parsed.kind);

  const Library* const libraries[] = {&library};
  auto wanted = plan::WithNeeds(items, libraries);
  ProjectForPlans for_plans(*project);
  // What the project declares need not be in the library.
  std::erase_if(wanted.unknown, [&](const plan::UnknownNeed& need) {
    const auto& names = for_plans.Modules().Names();
    return !(need.kind == Kind::kType ? names.FindType(position, need.name)
                                      : names.FindValue(position, need.name))
                .empty();
  });
  plan::InsertionPlan plan(for_plans.Modules(), position, wanted.items, insertion.plan);
  TakeChoices(plan, insertion);
  CarryOut(session, module, plan.Insertions(), insertion.writing, insertion.encoding);
  SayUnknown(session, wanted);
  if (session.IsJson()) {
    auto header = JsonHeader("insert");
    header["module"] = insertion.module;
    PrintJson(session, header);
  }
  if (insertion.writing != Writing::kDifference || session.IsJson()) PrintPlan(session, plan);
  return ExitStatus::kDone;
}

}  // namespace declarium::cli
