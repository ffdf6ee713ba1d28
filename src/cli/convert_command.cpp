#include "cli/convert_command.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>

#include "cli/library_files.h"
#include "cli/line_difference.h"
#include "cli/mending.h"
#include "cli/output.h"
#include "cli/source_files.h"
#include "cli/source_projects.h"
#include "cli/target_option.h"

#include "facts/known_facts.h"
#include "library/file_io.h"
#include "target/places.h"
#include "target/rewrite.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

using nlohmann::ordered_json;

struct ConvertOptions {
  std::vector<std::string> sources;
  vb::Audience target = vb::Audience::kVba7;
  std::vector<std::string> against;
  std::string out;  // a folder
  bool in_place = false;
  bool difference = false;
  bool force = false;
  bool declare_wide = false;
};

// A module with what becomes of it.
struct Converted {
  const SourceModule* module;
  std::string file_below;  // the name below the folder of -o
  Rewriting rewriting;
  std::vector<PlaceToLookAt> places;
};

class Converter {
 public:
  Converter(const ConvertOptions& options, const Session& session)
      : options_(options),
        session_(session),
        knowledge_(FactsBeside(LibrariesOf(options, session)),
                   options.declare_wide ? TextEntries::kWide : TextEntries::kAnsi) {}

  ExitStatus Run() {
    sources_ = ReadSources(options_.sources, session_);
    for (const auto& project : sources_) {
      SayErrors(session_, project);
      has_all_files_ = has_all_files_ && project.has_all_files;
      Convert(project);
    }
    if (!has_all_files_ && IsWriting()) return ExitStatus::kFileFailed;
    if (IsWriting()) Write();
    Print();
    if (!has_all_files_) return ExitStatus::kFileFailed;
    const bool differs = std::ranges::any_of(
        converted_, [](const auto& module) { return !module.rewriting.replacements.empty(); });
    return options_.difference && differs ? ExitStatus::kNothingFound : ExitStatus::kDone;
  }

 private:
  static std::vector<std::filesystem::path> LibrariesOf(const ConvertOptions& options,
                                                        const Session& session) {
    if (options.against.empty()) return BundledLibraries(session.streams.program);
    std::vector<std::filesystem::path> libraries;
    for (const auto& file : options.against) {
      static_cast<void>(OpenExcerpt(file));  // it has to be a library
      libraries.push_back(PathOf(file));
    }
    return libraries;
  }

  void Convert(const SourceProject& project) {
    std::vector<ModuleWithForms> modules;
    for (const auto& module : project.modules) {
      const auto& forms = forms_.emplace_back(knowledge_.FormsOf(module.parsed));
      modules.push_back({module.text, &module.parsed, forms});
    }
    const bool is_twin_basic = options_.target == vb::Audience::kTwinBasic;
    Places places(modules, is_twin_basic ? vb::Target::kTwinBasic : vb::Target::kVba7x64,
                  project.project.constants);
    for (std::size_t i = 0; i < modules.size(); ++i) {
      const auto& module = project.modules[i];
      converted_.push_back(
          {&module, NameBelow(project, module),
           RewriteDeclarations(module.text, module.parsed, options_.target, modules[i].forms),
           places.In(i)});
    }
  }

  [[nodiscard]] bool IsWriting() const { return options_.in_place || !options_.out.empty(); }

  // The module's path from the folder of its project, or its file name.
  static std::string NameBelow(const SourceProject& project, const SourceModule& module) {
    const auto path = PathOf(module.name);
    auto base = PathOf(project.name);
    if (!std::filesystem::is_directory(base)) base = base.parent_path();
    const auto below = path.lexically_relative(base.empty() ? "." : base);
    const bool is_inside = !project.name.empty() && !below.empty() && *below.begin() != "..";
    return PathText(is_inside ? below : path.filename());
  }

  // Everything is encoded before the first file is written.
  void Write() {
    std::vector<std::pair<std::string, std::string>> files;
    std::set<std::string> targets;
    for (const auto& [module, below, rewriting, places] : converted_) {
      if (options_.in_place && rewriting.replacements.empty()) continue;
      if (module->name == SourceName("-"))
        throw CommandFailed(ExitStatus::kWrongUse, "standard input has no file to write to");
      const auto bytes = BytesWith(module->name, module->text, rewriting.text);
      const auto target =
          options_.in_place ? module->name : PathText(PathOf(options_.out) / PathOf(below));
      if (!targets.insert(target).second)
        throw CommandFailed(ExitStatus::kWrongUse, target + ": two modules would be written there");
      CheckNew(target, bytes);
      files.emplace_back(target, bytes);
    }
    for (const auto& [file, bytes] : files) {
      if (!options_.in_place) {
        std::error_code ignored;  // writing tells
        std::filesystem::create_directories(PathOf(file).parent_path(), ignored);
      }
      WriteBytes(session_, bytes, file);
    }
  }

  void CheckNew(const std::string& file, const std::string& bytes) const {
    if (options_.in_place || options_.force) return;
    const auto old = ReadWholeFile(PathOf(file));
    if (old && *old != bytes)
      throw CommandFailed(ExitStatus::kFileFailed, file + ": exists already; --force replaces it");
  }

  void Print() const {
    if (session_.IsJson()) {
      auto header = JsonHeader("convert");
      header["target"] = vb::AudienceName(options_.target);
      PrintJson(session_, header);
    }
    for (const auto& converted : converted_) {
      if (options_.difference && !session_.IsJson()) {
        session_.streams.out << UnifiedDifference(converted.module->name, converted.module->text,
                                                  converted.rewriting.replacements);
        continue;
      }
      for (const auto& change : converted.rewriting.changes) PrintChange(*converted.module, change);
      for (const auto& place : converted.places) PrintPlace(*converted.module, place);
    }
  }

  void PrintChange(const SourceModule& module, const DeclarationChange& change) const {
    const char* kind = change.is_record ? "type" : "declare";
    if (session_.IsJson()) {
      PrintJson(session_, {{"source", module.name},
                           {"line", change.line},
                           {"name", ToUtf8(change.name)},
                           {"change", kind},
                           {"reason", change.reason},
                           {"before", ToUtf8(change.before)},
                           {"after", ToUtf8(change.after)},
                           {"guess", change.is_guess}});
      return;
    }
    session_.streams.out << module.name << ':' << change.line << ": " << kind << ' '
                         << OneLine(change.name) << ": " << (change.after.empty() ? "left: " : "")
                         << change.reason << '\n';
  }

  void PrintPlace(const SourceModule& module, const PlaceToLookAt& place) const {
    if (session_.IsJson()) {
      PrintJson(session_, {{"source", module.name},
                           {"line", place.place.line},
                           {"name", ToUtf8(place.name)},
                           {"change", "call"},
                           {"reason", place.reason},
                           {"before", ToUtf8(place.statement)},
                           {"after", ""},
                           {"guess", false}});
      return;
    }
    session_.streams.out << module.name << ':' << place.place.line << ": look at "
                         << OneLine(place.name) << ": " << OneLine(FromUtf8(place.reason)) << '\n';
  }

  const ConvertOptions& options_;
  const Session& session_;
  KnowledgeOf64 knowledge_;
  std::deque<SourceProject> sources_;
  std::vector<Converted> converted_;
  std::deque<std::vector<FormFor64>> forms_;  // what the places refer into
  bool has_all_files_ = true;
};

ExitStatus RunConvert(const ConvertOptions& options, const Session& session) {
  const int places =
      (options.out.empty() ? 0 : 1) + (options.in_place ? 1 : 0) + (options.difference ? 1 : 0);
  if (places > 1)
    throw CommandFailed(ExitStatus::kWrongUse, "-o, --in-place and --diff exclude each other");
  if (options.declare_wide && options.target != vb::Audience::kTwinBasic)
    throw CommandFailed(ExitStatus::kWrongUse, "--declare-wide is for --target twinbasic");
  return Converter(options, session).Run();
}

}  // namespace

void AddConvertCommand(const CommandSet& set) {
  AddCommand<ConvertOptions>(
      set,
      {"convert", "Rewrite the declarations of modules and projects for 64 bits",
       "declarium-cli convert Project1.vbp --target vba7 --diff",
       "Only declarations change: PtrSafe, LongPtr, LongLong under #If Win64, for vba7 with the "
       "old\n"
       "form under #Else. What the libraries' facts know is certain; the rest is read by its "
       "names\n"
       "and marked with a comment. A line of the report is a declaration that changes, or a place\n"
       "to look at, which stays: code that puts an address into a Long, or measures a record "
       "whose\n"
       "layout changes. Without -o, --in-place or --diff nothing is written but the report.\n\n"},
      [](CLI::App& command, ConvertOptions& options) {
        DefineSources(command, options.sources);
        DefineTarget(command, options.target)->required();
        command
            .add_option(
                "--against", options.against,
                "Libraries whose facts are used; those that come with the program when left "
                "out")
            ->type_name("LIBRARY");
        command.add_option("-o,--output", options.out, "Write all modules into this folder")
            ->type_name("DIR");
        command.add_flag("--in-place", options.in_place, "Change the modules themselves");
        command.add_flag("--diff", options.difference,
                         "Print the changes as a patch; the exit status is 1 when there are some");
        command.add_flag("--declare-wide", options.declare_wide,
                         "For twinbasic: call the entries of wide text by DeclareWide, where only "
                         "texts differ");
        DefineForce(command, options.force, "Replace files in the folder of -o");
      },
      RunConvert);
}

}  // namespace declarium::cli
