#include "cli/generate_command.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <utility>

#include "cli/library_files.h"
#include "cli/line_comparison.h"
#include "cli/line_difference.h"
#include "cli/names.h"
#include "cli/output.h"
#include "cli/target_option.h"

#include "basket/list_file.h"
#include "basket/list_selection.h"
#include "basket/listed_libraries.h"
#include "basket/module_from_basket.h"
#include "facts/known_facts.h"
#include "library/file_io.h"
#include "library/file_name.h"
#include "source/module_text.h"
#include "source/source_check.h"
#include "text/code_page.h"
#include "text/encoding.h"
#include "text/text.h"
#include "vb/name.h"

namespace declarium::cli {
namespace {

namespace fs = std::filesystem;

// The longest name that the host takes for a module.
constexpr std::size_t kLongestModuleName = 31;

struct GenerateOptions {
  std::string list;
  std::string module;
  std::vector<std::string> libraries;
  std::optional<vb::Audience> target;
  bool check = false;
  bool force = false;
};

// A module as it should be, with its file.
struct WantedModule {
  std::string file;
  std::u16string text;
};

std::string SyntaxReason(const ListFault& fault) {
  auto word = OneLine(fault.word);
  switch (fault.kind) {
    case ListFaultKind::kUnknownDirective:
      return word + " is none of #library, #target and #module; a comment has a blank behind #";
    case ListFaultKind::kValueMissing:
      return "nothing stands behind " + word;
    case ListFaultKind::kUnknownTarget:
      return word + " is none of vb6, vba7, vba7-only and twinbasic";
    case ListFaultKind::kSaidTwice:
      return word + " stands twice";
    case ListFaultKind::kBrokenPattern:
      return word + " is no pattern: its [ ] is not closed, or has a range from high to low";
  }
  return word;
}

class Generator {
 public:
  Generator(const GenerateOptions& options, const Session& session)
      : options_(options), session_(session), list_(Read()) {}

  ExitStatus Run() {
    const auto module = ModulePath();
    CheckName(module);
    LoadLibraries();
    const auto selection = SelectItems(list_, library_views_);
    if (!selection.faults.empty()) throw NotFound(selection.faults);
    for (const auto& need : AddWithNeeds(basket_, selection.items, library_views_))
      session_.Say("not in the library: " + QualifiedName(need.kind, need.name) + ", used by " +
                   OneLine(need.user));
    if (basket_.Empty()) throw Failed("names no item");
    MakeModules(module);
    const bool differs = options_.check ? Compare() : Write();
    Print(differs);
    return differs ? ExitStatus::kNothingFound : ExitStatus::kDone;
  }

 private:
  [[nodiscard]] CommandFailed Failed(const std::string& reason,
                                     ExitStatus status = ExitStatus::kNothingFound) const {
    return {status, options_.list + ": " + reason};
  }

  [[nodiscard]] std::string At(std::uint32_t line) const {
    return options_.list + ":" + std::to_string(line) + ": ";
  }

  [[nodiscard]] ListFile Read() const {
    const auto bytes = ReadWholeFile(PathOf(options_.list));
    if (!bytes) throw FileFailed(bytes.error());
    auto list = ReadListFile(DecodeText(*bytes, RecognizeEncoding(*bytes, kLibraryEncoding)));
    if (list) return *std::move(list);
    std::string faults;
    for (const auto& fault : list.error())
      faults += (faults.empty() ? "" : "\n") + At(fault.line) + SyntaxReason(fault);
    throw CommandFailed(ExitStatus::kNothingFound, faults);
  }

  [[nodiscard]] fs::path FromList(std::u16string_view written) const {
    return PathFromList(PathOf(options_.list), written);
  }

  [[nodiscard]] fs::path ModulePath() const {
    if (!options_.module.empty()) return PathOf(options_.module);
    if (!list_.module.empty()) return FromList(list_.module);
    throw Failed("names no module by #module; -o does", ExitStatus::kWrongUse);
  }

  static void CheckName(const fs::path& module) {
    if (!EqualIgnoringCase(NameOfPath(module.extension()), u".bas"))
      throw CommandFailed(ExitStatus::kWrongUse,
                          PathText(module) + ": only a standard module, .bas, can be made");
    const auto name = PathText(module.stem());
    if (!vb::IsLegalName(name) || name.size() > kLongestModuleName)
      throw CommandFailed(ExitStatus::kWrongUse,
                          PathText(module) + ": " + name +
                              " is no name for a module: a letter, then letters, digits and _, "
                              "at most 31");
  }

  void LoadLibraries() {
    auto files = options_.libraries;
    if (files.empty()) {
      for (const auto& library : list_.libraries) files.push_back(PathText(FromList(library)));
    }
    if (files.empty())
      throw Failed("names no library by #library; --library does", ExitStatus::kWrongUse);
    for (const auto& file : files) {
      libraries_.push_back(LoadLibrary(file));
      library_paths_.push_back(PathOf(file));
    }
    for (const auto& library : libraries_) library_views_.push_back(&library);
  }

  [[nodiscard]] CommandFailed NotFound(const std::vector<LineFault>& faults) const {
    std::string text;
    for (const auto& fault : faults)
      text += (text.empty() ? "" : "\n") + At(fault.line->line) + ReasonOf(fault);
    return {ExitStatus::kNothingFound, text};
  }

  [[nodiscard]] std::string ReasonOf(const LineFault& fault) const {
    const auto& line = *fault.line;
    const auto word = ToUtf8(line.word);
    switch (fault.kind) {
      case LineFault::Kind::kTakesNothing:
        return "nothing above gives " + OneLine(line.word) + " to take away";
      case LineFault::Kind::kSeveralSpellings:
        return SeveralSpellings(*fault.library, FindSought(*fault.library, line.sought), word);
      case LineFault::Kind::kUnknown:
        break;
    }
    return line.is_pattern ? "no item fits " + OneLine(line.word) : Unknown(line.sought, word);
  }

  // With the names of the first library that has some that are near.
  [[nodiscard]] std::string Unknown(const SoughtName& sought, const std::string& word) const {
    for (const auto& library : libraries_) {
      auto text = UnknownName(library, sought, word);
      if (text.ends_with('?') || &library == &libraries_.back()) return text;
    }
    return word;
  }

  void MakeModules(const fs::path& module) {
    ModuleOrigin origin{NameOfPath(PathOf(options_.list).filename()), {}, vb::Audience::kVb6};
    for (std::size_t i = 0; i < libraries_.size(); ++i) {
      const auto& stamp = libraries_[i].stamp;
      origin.libraries.push_back({NameOfPath(library_paths_[i].filename()), libraries_[i].Title(),
                                  stamp ? stamp->hash : 0});
    }
    origin.target = options_.target.value_or(list_.target.value_or(vb::Audience::kVb6));
    const KnowledgeOf64 knowledge(FactsBeside(library_paths_));
    for (auto& made : ModulesFromBasket(basket_, NameOfPath(module.stem()), origin, knowledge)) {
      const auto file =
          module.parent_path() / PathOfName(made.name + NameOfPath(module.extension()));
      wanted_.push_back({PathText(file), std::move(made.text)});
    }
  }

  // Every module is encoded and every file looked at before the first is written. Nothing differs
  // then.
  bool Write() const {
    for (const auto& [file, text] : wanted_) CheckMayReplace(file);
    for (const auto& [file, text] : wanted_) {
      const auto old = ReadWholeFile(PathOf(file));
      const auto bytes = EncodeCodePage(text);
      // A file that is right keeps its time, and whatever builds from it need not.
      if (!old || *old != bytes) WriteBytes(session_, bytes, file);
    }
    SayLeftOver();
    return false;
  }

  void CheckMayReplace(const std::string& file) const {
    std::error_code ignored;
    if (options_.force || !fs::exists(PathOf(file), ignored)) return;
    const auto bytes = ReadWholeFile(PathOf(file));
    if (!bytes) throw FileFailed(bytes.error());
    const auto text = DecodeText(*bytes, RecognizeEncoding(*bytes, kLibraryEncoding));
    if (!IsModuleFromBasket(text)) CheckReplaceable(file, Force::kNo);
  }

  // Whether some module is not what the list gives; the differences are printed.
  bool Compare() const {
    bool differs = SayLeftOver();
    for (const auto& [file, text] : wanted_) {
      const auto bytes = ReadWholeFile(PathOf(file));
      std::error_code ignored;
      if (!bytes && fs::exists(PathOf(file), ignored)) throw FileFailed(bytes.error());
      if (bytes && *bytes == EncodeCodePage(text)) continue;
      differs = true;
      PrintDifference(file, bytes ? DecodeText(*bytes, kLibraryEncoding) : std::u16string(), text);
    }
    return differs;
  }

  void PrintDifference(const std::string& file, const std::u16string& is,
                       const std::u16string& wanted) const {
    if (Replace(is, kCrLf, u"\n") == Replace(wanted, kCrLf, u"\n")) {
      session_.Say(file + ": only the line ends differ; those of Visual Basic are CR LF");
    } else if (!session_.IsJson()) {
      session_.streams.out << UnifiedDifference(file, is, ReplacementsBetween(is, wanted));
    }
  }

  // Tells of the next numbered module that an earlier, longer list has left. Whether there is one.
  bool SayLeftOver() const {
    const auto first = PathOf(wanted_.front().file);
    const auto number = std::to_string(wanted_.size() + 1);
    const auto next =
        first.parent_path() / PathOf(PathText(first.stem()) + number + PathText(first.extension()));
    const auto bytes = ReadWholeFile(next);
    const auto list = NameOfPath(PathOf(options_.list).filename());
    if (!bytes || !IsModuleFromBasket(DecodeText(*bytes, kLibraryEncoding), list)) return false;
    session_.Say(PathText(next) + ": is left of an earlier list; remove it");
    return true;
  }

  void Print(bool differs) const {
    if (session_.IsJson()) {
      auto header = JsonHeader("generate");
      for (const auto& wanted : wanted_) header["modules"].push_back(wanted.file);
      if (options_.check) header["differs"] = differs;
      PrintJson(session_, header);
      for (const auto& [name, icon] : basket_.Entries())
        PrintItem(session_, *KindOfIcon(icon), name);
    } else if (!options_.check) {
      for (const auto& wanted : wanted_) session_.streams.out << wanted.file << '\n';
    }
  }

  const GenerateOptions& options_;
  const Session& session_;
  ListFile list_;
  std::deque<Library> libraries_;
  std::vector<const Library*> library_views_;
  std::vector<fs::path> library_paths_;
  Basket basket_;
  std::vector<WantedModule> wanted_;
};

ExitStatus RunGenerate(const GenerateOptions& options, const Session& session) {
  return Generator(options, session).Run();
}

}  // namespace

void AddGenerateCommand(const CommandSet& set) {
  AddCommand<GenerateOptions>(
      set,
      {"generate", "Make a module from a list file", "declarium-cli generate Api.list -o Api.bas",
       "A list file has one name a line: an item (type:RECT names the kind), a pattern (SWP_*) "
       "or,\n"
       "with - in front, what is taken away again. ' and # with a blank begin comments; #library,\n"
       "#target and #module say what the options say, with paths from the list's folder. The "
       "module\n"
       "has what the names need, too, and a header that tells what it was made from, without a "
       "time:\n"
       "the same list and library give the same bytes. More than 65,534 lines or 1,500 Declares\n"
       "become several modules, with 2, 3 ... behind the name.\n"
       "Exit status: 1 for an unknown name or, with --check, a module that differs.\n\n"},
      [](CLI::App& command, GenerateOptions& options) {
        command.add_option("LIST", options.list, "The list file")->required()->type_name("");
        command
            .add_option("-o,--output", options.module,
                        "The standard module; that of #module when left out")
            ->type_name("MODULE");
        command
            .add_option("--library", options.libraries,
                        "Where names are looked up instead of in those of #library; several times "
                        "for several")
            ->take_all()
            ->allow_extra_args(false)
            ->type_name("LIBRARY");
        DefineTarget(command, options.target);
        command.add_flag("--check", options.check,
                         "Write nothing; print how the module differs from what the list gives");
        DefineForce(command, options.force, "Replace a module that was not made from a list");
      },
      RunGenerate);
}

}  // namespace declarium::cli
