#include "host/doctor.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "host/vba_registration.h"
#include "text/text.h"
#include "vb/number.h"

namespace declarium {
namespace {

// A bit of LoadBehavior; 2, that the host has it loaded, says nothing of its next start.
constexpr std::uint32_t kLoadOnCommandLine = 4;

std::u16string_view RootName(RegistryRoot root) {
  switch (root) {
    case RegistryRoot::kCurrentUser:
      return u"HKEY_CURRENT_USER\\";
    case RegistryRoot::kLocalMachine:
      return u"HKEY_LOCAL_MACHINE\\";
    case RegistryRoot::kUsers:
      break;
  }
  return u"HKEY_USERS\\";
}

std::u16string_view ViewName(RegistryView view) {
  return view == RegistryView::k32Bit ? u" (32-bit view)" : u" (64-bit view)";
}

std::u16string_view FileNameOf(std::u16string_view path) {
  return path.substr(path.find_last_of(u"\\/") + 1);
}

const FindingText& TextOf(FindingKind kind) {
  return FindingTexts()[static_cast<std::size_t>(kind)];
}

// Where COM looks for a class, in this order; it takes the first entry that it finds.
constexpr std::array<RegistryRoot, 2> kClassesInOrder = {RegistryRoot::kCurrentUser,
                                                         RegistryRoot::kLocalMachine};

// Findings as they are made.
class FindingList {
 public:
  // `subject`, which may be empty, stands between the place and what is found of it.
  void Add(FindingKind kind, std::u16string_view place, std::u16string_view subject = {}) {
    Add(kind, TextOf(kind).level, place, subject);
  }

  void Add(FindingKind kind, FindingLevel level, std::u16string_view place,
           std::u16string_view subject) {
    const auto& said = TextOf(kind);
    std::u16string text(place);
    if (!place.empty()) text.append(u": ");
    text.append(subject);
    if (!subject.empty()) text.append(u": ");
    text.append(said.what);
    if (!said.mend.empty()) text.append(u"; ").append(said.mend);
    findings_.push_back({kind, level, std::move(text)});
  }

  [[nodiscard]] std::vector<Finding> Take() { return std::move(findings_); }

 private:
  std::vector<Finding> findings_;
};

// A text as COM reads it.
std::optional<std::u16string> ReadText(const Registry& registry, RegistryRoot root,
                                       std::u16string_view key, std::u16string_view name,
                                       RegistryView view) {
  const auto value = registry.Read(root, key, name, view);
  if (!value) return std::nullopt;
  if (value->type == kRegistryText) return declarium::TextOf(*value);
  if (value->type == kRegistryExpandableText) return registry.Expand(declarium::TextOf(*value));
  return std::nullopt;
}

class Examination {
 public:
  Examination(const Registry& registry, const ServerIdentity& server, const DoctorFacts& facts)
      : registry_(registry), server_(server), facts_(facts) {}

  std::vector<Finding> Run() {
    ExamineAddInList();
    for (const auto root : kClassesInOrder) ExamineClassId(root);
    // A 32-bit program gets the 32-bit server where there is one.
    for (const auto root : kClassesInOrder) ExamineServer(root, RegistryView::k32Bit);
    const bool narrow = server_found_;
    for (const auto root : kClassesInOrder) ExamineServer(root, RegistryView::k64Bit);
    Judge(narrow);
    return findings_.Take();
  }

 private:
  template <class... Arguments>
  void Add(FindingKind kind, const Arguments&... arguments) {
    findings_.Add(kind, arguments...);
  }

  // A broken entry does no harm behind the one that is taken.
  void AddEntry(bool& found, FindingKind kind, std::u16string_view place,
                std::u16string_view subject) {
    const auto worst = std::exchange(found, true) ? FindingLevel::kWarning : FindingLevel::kWrong;
    Add(kind, std::min(TextOf(kind).level, worst), place, subject);
  }

  std::optional<std::u16string> Text(RegistryRoot root, std::u16string_view key,
                                     std::u16string_view name, RegistryView view) const {
    return ReadText(registry_, root, key, name, view);
  }

  void ExamineAddInList() {
    const auto root = RegistryRoot::kCurrentUser;
    const auto key = AddInKey(server_);
    const std::u16string where = std::u16string(RootName(root)) + key;
    const auto load = registry_.Read(root, key, u"LoadBehavior", RegistryView::kOwn);
    if (!load) {
      Add(FindingKind::kNotListed, where);
      return ExamineOtherUsers(key);
    }
    const auto behavior = NumberOf(*load);
    if (!behavior) return Add(FindingKind::kLoadBehaviorUnreadable, where);
    Add(LoadingBy(*behavior), where, u"LoadBehavior " + NumberText(*behavior));
  }

  static FindingKind LoadingBy(std::uint32_t behavior) {
    if (behavior & kLoadAtStartup) return FindingKind::kLoadsAtStart;
    if (behavior & kLoadOnCommandLine) return FindingKind::kLoadsOnCommandLine;
    return FindingKind::kLoadsByHand;
  }

  void ExamineOtherUsers(std::u16string_view key) {
    for (const auto& user : registry_.SubKeys(RegistryRoot::kUsers, u"")) {
      const std::u16string theirs = user + u"\\" + std::u16string(key);
      if (!registry_.Read(RegistryRoot::kUsers, theirs, u"LoadBehavior", RegistryView::kOwn)) {
        continue;
      }
      Add(FindingKind::kListedForOtherUser,
          std::u16string(RootName(RegistryRoot::kUsers)) + theirs);
    }
  }

  void ExamineClassId(RegistryRoot root) {
    const auto key = ProgIdKey(server_) + u"\\CLSID";
    const std::u16string where = std::u16string(RootName(root)) + key;
    const auto class_id = Text(root, key, u"", RegistryView::kOwn);
    if (!class_id) return Add(FindingKind::kNoClassId, where);
    if (!EqualIgnoringCase(*class_id, server_.class_id)) {
      return AddEntry(class_id_found_, FindingKind::kForeignClassId, where, *class_id);
    }
    class_id_found_ = true;
    Add(FindingKind::kClassId, where, *class_id);
    if (root == RegistryRoot::kLocalMachine) machine_class_id_ = true;
  }

  void ExamineServer(RegistryRoot root, RegistryView view) {
    const auto key = LocalServerKey(server_);
    const std::u16string where =
        std::u16string(RootName(root)) + key + std::u16string(ViewName(view));
    const auto command = Text(root, key, u"", view);
    if (!command) return Add(FindingKind::kNoServer, where);
    // Some versions of Windows start the one and some the other: both have to be right.
    const auto executable = Text(root, key, u"ServerExecutable", view);
    auto program = ProgramOf(*command);
    auto kind = KindOf(program);
    if (executable && TextOf(KindOf(*executable)).level > TextOf(kind).level) {
      program = *executable;
      kind = KindOf(program);
    }
    AddEntry(server_found_, kind, where, program);
    if (!executable) Add(FindingKind::kNoServerExecutable, where);
    if (root == RegistryRoot::kLocalMachine && TextOf(kind).level != FindingLevel::kWrong) {
      machine_server_ = true;
    }
  }

  FindingKind KindOf(std::u16string_view program) const {
    switch (facts_.kind_of(program)) {
      case FileKind::kMissing:
        return FindingKind::kServerIsMissing;
      case FileKind::kFolder:
        return FindingKind::kServerIsFolder;
      case FileKind::kFile:
        break;
    }
    if (EqualIgnoringCase(program, facts_.program)) return FindingKind::kServer;
    const bool same_name = EqualIgnoringCase(FileNameOf(program), FileNameOf(facts_.program));
    return same_name ? FindingKind::kServerIsOtherCopy : FindingKind::kServerIsOtherProgram;
  }

  // The program of a LocalServer32 value. Without quotes Windows takes the shortest beginning that
  // ends before a blank and is a program; the whole value when there is none.
  std::u16string ProgramOf(std::u16string_view command) const {
    if (command.starts_with(u'"')) {
      return std::u16string(command.substr(1, command.find(u'"', 1) - 1));
    }
    for (auto blank = command.find(u' '); blank != std::u16string_view::npos;
         blank = command.find(u' ', blank + 1)) {
      for (const auto* ending : {u"", u".exe"}) {
        auto beginning = std::u16string(command.substr(0, blank)) + ending;
        if (facts_.kind_of(beginning) == FileKind::kFile) return beginning;
      }
    }
    return std::u16string(command);
  }

  void Judge(bool narrow_server) {
    if (!class_id_found_ || !server_found_) {
      Add(FindingKind::kCannotStart, u"");
    } else if (!narrow_server) {
      Add(FindingKind::kOnlyWideServer, u"");
    } else if (!machine_class_id_ || !machine_server_) {
      Add(FindingKind::kUserOnly, u"");
    }
  }

  const Registry& registry_;
  const ServerIdentity& server_;
  const DoctorFacts& facts_;
  bool class_id_found_ = false;
  bool server_found_ = false;
  bool machine_class_id_ = false;
  bool machine_server_ = false;
  FindingList findings_;
};

// What there is of the add-in for the VBA editors of one bitness.
void ExamineVbaEditors(FindingList& findings, const Registry& registry,
                       const ServerIdentity& add_in, const DoctorFacts& facts,
                       const VbaEditors& editors) {
  const auto root = RegistryRoot::kCurrentUser;
  const auto listed = VbaAddInKey(editors, add_in);
  const std::u16string list = std::u16string(RootName(root)) + listed;
  const auto load = registry.Read(root, listed, u"LoadBehavior", RegistryView::kOwn);
  if (!load) return findings.Add(FindingKind::kEditorsNotRegistered, list);
  const auto behavior = NumberOf(*load).value_or(0);
  findings.Add(behavior == kLoadInEditors ? FindingKind::kEditorsLoad : FindingKind::kEditorsGaveUp,
               list, u"LoadBehavior " + NumberText(behavior));
  const auto key = InprocServerKey(add_in);
  const std::u16string where =
      std::u16string(RootName(root)) + key + std::u16string(ViewName(editors.view));
  const auto dll = ReadText(registry, root, key, u"", editors.view);
  if (!dll) return findings.Add(FindingKind::kNoDll, where);
  const auto file_name = FileNameOf(facts.program).size();
  const auto own =
      facts.program.substr(0, facts.program.size() - file_name) + std::u16string(editors.file);
  auto kind = EqualIgnoringCase(*dll, own) ? FindingKind::kDll : FindingKind::kDllIsOtherCopy;
  if (facts.kind_of(*dll) != FileKind::kFile) kind = FindingKind::kDllIsMissing;
  findings.Add(kind, where, *dll);
}

std::u16string_view LevelName(FindingLevel level) {
  switch (level) {
    case FindingLevel::kFine:
      return u"ok       ";
    case FindingLevel::kWarning:
      return u"warning  ";
    case FindingLevel::kWrong:
      break;
  }
  return u"WRONG    ";
}

bool Has(std::span<const Finding> findings, FindingKind kind) {
  return std::ranges::find(findings, kind, &Finding::kind) != findings.end();
}

std::u16string_view Verdict(std::span<const Finding> findings) {
  if (!CanBeLoaded(findings)) return u"The IDE cannot load the add-in.";
  if (Has(findings, FindingKind::kLoadsByHand)) {
    return u"The IDE can load the add-in, by hand.";
  }
  if (Has(findings, FindingKind::kLoadsOnCommandLine)) {
    return u"The IDE can load the add-in, by hand or on the command line.";
  }
  return u"The IDE can load the add-in.";
}

}  // namespace

std::vector<Finding> ExamineRegistration(const Registry& registry, const ServerIdentity& server,
                                         const DoctorFacts& facts) {
  return Examination(registry, server, facts).Run();
}

std::vector<Finding> ExamineVbaRegistration(const Registry& registry, const ServerIdentity& add_in,
                                            const DoctorFacts& facts) {
  FindingList findings;
  for (const auto& editors : kVbaEditors) {
    ExamineVbaEditors(findings, registry, add_in, facts, editors);
  }
  return findings.Take();
}

bool CanBeLoaded(std::span<const Finding> findings) {
  return std::ranges::find(findings, FindingLevel::kWrong, &Finding::level) == findings.end();
}

std::u16string DoctorReport(std::span<const Finding> findings, std::span<const Finding> of_vba) {
  std::u16string report;
  for (const auto& part : {findings, of_vba}) {
    for (const auto& finding : part) {
      report.append(LevelName(finding.level)).append(finding.text).append(kCrLf);
    }
  }
  report.append(Verdict(findings)).append(kCrLf);
  const bool registered = std::ranges::any_of(of_vba, [](const Finding& finding) {
    return finding.kind != FindingKind::kEditorsNotRegistered;
  });
  if (registered) {
    report.append(CanBeLoaded(of_vba) ? u"The VBA editors can load the add-in."
                                      : u"The VBA editors cannot load the add-in.");
    report.append(kCrLf);
  }
  return report;
}

}  // namespace declarium
