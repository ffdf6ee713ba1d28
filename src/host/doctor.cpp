#include "host/doctor.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "text/text.h"
#include "vb/number.h"

namespace declarium {
namespace {

constexpr std::uint32_t kLoadAtStartup = 1;

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

// The program of a LocalServer32 value: without the quotes and what follows them.
std::u16string ProgramOf(std::u16string_view command) {
  if (!command.starts_with(u'"')) return std::u16string(command);
  return std::u16string(command.substr(1, command.find(u'"', 1) - 1));
}

// Where COM looks for a class, in this order; it takes the first entry that it finds.
constexpr std::array<RegistryRoot, 2> kClassesInOrder = {RegistryRoot::kCurrentUser,
                                                         RegistryRoot::kLocalMachine};

class Examination {
 public:
  Examination(const Registry& registry, const ServerIdentity& server, const DoctorFacts& facts)
      : registry_(registry), server_(server), facts_(facts) {}

  std::vector<Finding> Run() {
    ExamineAddInList();
    for (const auto root : kClassesInOrder) ExamineClassId(root);
    // A 32-bit program gets the 32-bit server where there is one.
    for (const auto root : kClassesInOrder) ExamineProgram(root, RegistryView::k32Bit);
    const bool narrow = program_found_;
    for (const auto root : kClassesInOrder) ExamineProgram(root, RegistryView::k64Bit);
    if (!narrow && program_found_) {
      Add(FindingLevel::kWarning,
          u"Only the 64-bit view has the program, the IDE is a 32-bit "
          u"program; register the 32-bit Declarium.exe");
    }
    Judge();
    return std::move(findings_);
  }

 private:
  void Add(FindingLevel level, std::u16string text) {
    findings_.push_back({level, std::move(text)});
  }

  // A broken entry does no harm behind the one that is taken.
  void AddBroken(bool& found, std::u16string text) {
    const bool behind = std::exchange(found, true);
    Add(behind ? FindingLevel::kWarning : FindingLevel::kWrong, std::move(text));
  }

  // As COM reads it.
  std::optional<std::u16string> Text(RegistryRoot root, std::u16string_view key,
                                     std::u16string_view name, RegistryView view) const {
    const auto value = registry_.Read(root, key, name, view);
    if (!value) return std::nullopt;
    if (value->type == kRegistryText) return TextOf(*value);
    if (value->type == kRegistryExpandableText) return registry_.Expand(TextOf(*value));
    return std::nullopt;
  }

  void ExamineAddInList() {
    const auto root = RegistryRoot::kCurrentUser;
    const auto key = AddInKey(server_);
    const std::u16string where = std::u16string(RootName(root)) + key;
    const auto load = registry_.Read(root, key, u"LoadBehavior", RegistryView::kOwn);
    if (!load) {
      Add(FindingLevel::kWrong, where +
                                    u": missing, the IDE does not list the add-in for this "
                                    u"user; run /RegServer");
      ExamineOtherUsers(key);
      return;
    }
    const auto behavior = NumberOf(*load);
    if (!behavior) {
      Add(FindingLevel::kWrong, where + u": LoadBehavior is no number");
      return;
    }
    const std::u16string value = u": LoadBehavior " + NumberText(*behavior);
    if (*behavior & kLoadAtStartup) {
      Add(FindingLevel::kFine, where + value);
    } else {
      Add(FindingLevel::kWrong, where + value +
                                    u": disabled in the IDE's Add-In Manager; check "
                                    u"Load on Startup there");
    }
  }

  void ExamineOtherUsers(std::u16string_view key) {
    for (const auto& user : registry_.SubKeys(RegistryRoot::kUsers, u"")) {
      const std::u16string theirs = user + u"\\" + std::u16string(key);
      if (!registry_.Read(RegistryRoot::kUsers, theirs, u"LoadBehavior", RegistryView::kOwn)) {
        continue;
      }
      Add(FindingLevel::kWarning, std::u16string(RootName(RegistryRoot::kUsers)) + theirs +
                                      u": the add-in is registered for another user");
    }
  }

  void ExamineClassId(RegistryRoot root) {
    const auto key = ProgIdKey(server_) + u"\\CLSID";
    const std::u16string where = std::u16string(RootName(root)) + key;
    const auto class_id = Text(root, key, u"", RegistryView::kOwn);
    if (!class_id) {
      Add(FindingLevel::kFine, where + u": not registered");
    } else if (!EqualIgnoringCase(*class_id, server_.class_id)) {
      AddBroken(class_id_found_, where + u": " + *class_id + u" is not this program's class");
    } else {
      class_id_found_ = true;
      Add(FindingLevel::kFine, where + u": " + *class_id);
      if (root == RegistryRoot::kLocalMachine) machine_class_id_ = true;
    }
  }

  void ExamineProgram(RegistryRoot root, RegistryView view) {
    const auto key = LocalServerKey(server_);
    const std::u16string where =
        std::u16string(RootName(root)) + key + std::u16string(ViewName(view));
    const auto command = Text(root, key, u"", view);
    if (!command) return Add(FindingLevel::kFine, where + u": nothing");
    const auto program = ProgramOf(*command);
    if (!facts_.file_exists(program)) {
      AddBroken(program_found_, where + u": " + program + u" does not exist; run /RegServer");
      return;
    }
    program_found_ = true;
    if (root == RegistryRoot::kLocalMachine) machine_program_ = true;
    if (!EqualIgnoringCase(program, facts_.program)) {
      Add(FindingLevel::kWarning, where + u": " + program + u" is another copy of the program");
    } else {
      Add(FindingLevel::kFine, where + u": " + program);
    }
  }

  void Judge() {
    if (!class_id_found_ || !program_found_) {
      Add(FindingLevel::kWrong, u"The class cannot be started; run /RegServer");
    } else if (!machine_class_id_ || !machine_program_) {
      Add(FindingLevel::kWarning,
          u"The class is registered for this user only: an IDE that runs as "
          u"administrator does not see it; run /RegServer:machine as "
          u"administrator if yours does");
    }
  }

  const Registry& registry_;
  const ServerIdentity& server_;
  const DoctorFacts& facts_;
  bool class_id_found_ = false;
  bool program_found_ = false;
  bool machine_class_id_ = false;
  bool machine_program_ = false;
  std::vector<Finding> findings_;
};

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

}  // namespace

std::vector<Finding> ExamineRegistration(const Registry& registry, const ServerIdentity& server,
                                         const DoctorFacts& facts) {
  return Examination(registry, server, facts).Run();
}

std::u16string DoctorReport(const std::vector<Finding>& findings) {
  std::u16string report;
  for (const auto& finding : findings) {
    report.append(LevelName(finding.level)).append(finding.text).append(kCrLf);
  }
  const bool wrong = std::ranges::any_of(
      findings, [](const auto& finding) { return finding.level == FindingLevel::kWrong; });
  report.append(wrong ? u"The IDE cannot load the add-in." : u"The IDE can load the add-in.");
  return report.append(kCrLf);
}

}  // namespace declarium
