#include "cli/missing_command.h"

#include <deque>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>

#include "cli/library_files.h"
#include "cli/output.h"
#include "cli/planned_insertion.h"
#include "cli/target_option.h"

#include "facts/known_facts.h"
#include "library/file_name.h"
#include "plan/missing_names.h"
#include "source/item_text.h"
#include "text/edit.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

struct MissingOptions {
  std::vector<std::string> sources;
  std::vector<std::string> libraries;
  std::string scope = "Private";
  vb::Audience target = vb::Audience::kVb6;
  bool insert = false;
  bool dry_run = false;
  bool difference = false;
};

// Whether the project refers to it as every project does.
bool IsKnownLibrary(const vb::Reference& reference) {
  const auto path = LowerCase(reference.path);
  return path.contains(u"stdole") || path.contains(u"msvbvm60") || path.contains(u"vb6.olb");
}

class Seeker {
 public:
  Seeker(const MissingOptions& options, const Session& session)
      : options_(options), session_(session) {
    auto paths = BundledLibraries(session.streams.program);
    if (!options.libraries.empty()) paths.clear();
    for (const auto& file : options.libraries) paths.push_back(PathOf(file));
    for (const auto& path : paths) {
      libraries_.push_back(&kept_.emplace_back(LoadLibrary(PathText(path))));
      names_.push_back(PathText(path.filename()));
    }
    if (libraries_.empty())
      throw CommandFailed(ExitStatus::kWrongUse,
                          "no library comes with the program; name one "
                          "with --library");
    if (options.target != vb::Audience::kVb6)
      knowledge_.emplace(FactsFor(paths.front(), session.streams.program));
    plan_.scope = options.scope == "Public" ? vb::Scope::kPublic : vb::Scope::kPrivate;
    plan_.target = options.target;
    plan_.knowledge = knowledge_ ? &*knowledge_ : nullptr;
  }

  ExitStatus Run() {
    if (session_.IsJson()) PrintJson(session_, JsonHeader("missing"));
    for (auto& project : ReadSources(options_.sources, session_)) SeekIn(project);
    if (!has_all_files_) return ExitStatus::kFileFailed;
    return has_found_ ? ExitStatus::kDone : ExitStatus::kNothingFound;
  }

 private:
  void SeekIn(SourceProject& project) {
    SayErrors(session_, project);
    has_all_files_ = has_all_files_ && project.has_all_files;
    SayUnknownLibraries(project);
    auto for_plans = std::make_unique<ProjectForPlans>(project);
    for (std::size_t i = 0; i < project.modules.size(); ++i) {
      const auto missing = plan::FindMissing(for_plans->Modules(), i, libraries_, options_.target);
      has_found_ = has_found_ || !missing.empty();
      if (!IsDifference())
        for (const auto& name : missing) Print(project.modules[i], name);
      if (!IsInserting() || missing.empty() || project.modules[i].parsed.is_header_open) continue;
      const auto wanted = plan::WithNeeds(plan::CertainItems(missing), libraries_);
      const plan::InsertionPlan plan(for_plans->Modules(), i, wanted.items, plan_);
      const auto insertions = plan.Insertions();
      CarryOut(session_, project.modules[i], insertions,
               WritingOf(options_.dry_run, options_.difference));
      if (!IsDifference()) PrintPlan(session_, plan);
      if (plan.Scope() != vb::Scope::kPublic || insertions.empty()) continue;
      // The modules that follow see what this one declares now.
      auto& module = project.modules[i];
      module.text = Edited(module.text, EditsOf(module.text, insertions));
      module.parsed = vb::ReadModule(module.text, module.parsed.kind);
      for_plans = std::make_unique<ProjectForPlans>(project);
    }
  }

  [[nodiscard]] bool IsDifference() const { return options_.difference && !session_.IsJson(); }
  [[nodiscard]] bool IsInserting() const {
    return options_.insert || options_.dry_run || options_.difference;
  }

  void SayUnknownLibraries(const SourceProject& project) const {
    for (const auto& reference : project.project.references) {
      if (IsKnownLibrary(reference)) continue;
      const auto& name = reference.description.empty() ? reference.path : reference.description;
      session_.Say(project.name + ": what " + OneLine(name) +
                   " declares is not known; names of its can be among those that are missing");
    }
  }

  void Print(const SourceModule& module, const plan::MissingName& missing) const {
    if (session_.IsJson()) return PrintAsJson(module, missing);
    auto& out = session_.streams.out;
    out << OneLine(FromUtf8(module.name)) << ':' << missing.place.line << ':'
        << missing.place.column << '\t' << OneLine(missing.name);
    if (missing.IsAmbiguous()) out << "\tambiguous";
    for (const auto& candidate : missing.candidates)
      out << '\t' << QualifiedName(candidate.item.kind, candidate.item.name) << '\t'
          << names_[candidate.library];
    out << '\n';
  }

  void PrintAsJson(const SourceModule& module, const plan::MissingName& missing) const {
    nlohmann::ordered_json object = {{"name", ToUtf8(missing.name)}};
    if (!missing.IsAmbiguous()) {
      object["kind"] = KindWord(missing.candidates.front().item.kind);
      object["library"] = names_[missing.candidates.front().library];
    } else {
      for (const auto& [library, item] : missing.candidates)
        object["candidates"].push_back(
            {{"kind", KindWord(item.kind)},
             {"library", names_[library]},
             {"text", ToUtf8(ItemText(item.kind, item.name, item.item))}});
    }
    object["source"] = module.name;
    object["line"] = missing.place.line;
    object["column"] = missing.place.column;
    PrintJson(session_, object);
  }

  const MissingOptions& options_;
  const Session& session_;
  std::deque<Library> kept_;
  std::vector<const Library*> libraries_;
  std::vector<std::string> names_;  // of their files
  std::optional<KnowledgeOf64> knowledge_;
  plan::PlanOptions plan_;
  bool has_found_ = false;
  bool has_all_files_ = true;
};

ExitStatus RunMissing(const MissingOptions& options, const Session& session) {
  return Seeker(options, session).Run();
}

}  // namespace

void AddMissingCommand(const CommandSet& set) {
  AddCommand<MissingOptions>(
      set,
      {"missing", "Find what modules use and nothing declares",
       "declarium-cli missing Project1.vbp --library Win32.api --diff",
       "One line a name: where it is used first, and the item that a library has for it. Names of\n"
       "Visual Basic, of the project's other modules, of forms and their controls, and variables\n"
       "are not among them. A name that means several things is shown with all of them and not\n"
       "inserted. --insert, --dry-run and --diff insert as insert --missing does.\n"
       "Exit status: 1 when nothing is missing.\n\n"},
      [](CLI::App& command, MissingOptions& options) {
        DefineSources(command, options.sources);
        command
            .add_option("--library", options.libraries,
                        "A library to look in; several times for several; those that come with "
                        "the program when left out")
            ->take_all()
            ->allow_extra_args(false)
            ->type_name("LIBRARY");
        DefineScope(command, options.scope);
        DefineTarget(command, options.target);
        command.add_flag("--insert", options.insert, "Insert what is missing into the modules");
        command.add_flag("--dry-run", options.dry_run, kDryRunText);
        command.add_flag("--diff", options.difference, kDifferenceText);
      },
      RunMissing);
}

}  // namespace declarium::cli
