#include "host/doctor.h"

#include <algorithm>
#include <optional>

#include "basic/number.h"
#include "basic/text.h"

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

class Examination {
 public:
  Examination(const Registry& registry, const ServerIdentity& server, const DoctorFacts& facts)
      : registry_(registry), server_(server), facts_(facts) {}

  std::vector<Finding> Run() {
    ExamineAddInList();
    const bool user = ExamineClass(RegistrationScope::kUser);
    const bool machine = ExamineClass(RegistrationScope::kMachine);
    JudgeScopes(user, machine);
    return std::move(findings_);
  }

 private:
  void Add(FindingLevel level, std::u16string text) {
    findings_.push_back({level, std::move(text)});
  }

  std::optional<std::u16string> Text(RegistryRoot root, std::u16string_view key,
                                     std::u16string_view name, RegistryView view) const {
    const auto data = registry_.Read(root, key, name, view);
    if (!data || !std::holds_alternative<std::u16string>(*data)) return std::nullopt;
    return std::get<std::u16string>(*data);
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
    if (!std::holds_alternative<std::uint32_t>(*load)) {
      Add(FindingLevel::kWrong, where + u": LoadBehavior is no number");
      return;
    }
    const auto behavior = std::get<std::uint32_t>(*load);
    const std::u16string value = u": LoadBehavior " + NumberText(behavior);
    if (behavior & kLoadAtStartup) {
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

  // Whether the class can be started by the 32-bit IDE.
  bool ExamineClass(RegistrationScope scope) {
    const auto root = ClassesRoot(scope);
    const auto key = ProgIdKey(server_) + u"\\CLSID";
    const std::u16string where = std::u16string(RootName(root)) + key;
    const auto class_id = Text(root, key, u"", RegistryView::kOwn);
    if (!class_id) {
      Add(FindingLevel::kFine, where + u": not registered");
      return false;
    }
    if (!EqualIgnoringCase(*class_id, server_.class_id)) {
      Add(FindingLevel::kWrong, where + u": " + *class_id + u" is not this program's class");
      return false;
    }
    Add(FindingLevel::kFine, where + u": " + *class_id);
    const bool narrow = ExamineProgram(root, RegistryView::k32Bit);
    const bool wide = ExamineProgram(root, RegistryView::k64Bit);
    if (!narrow && wide) {
      Add(FindingLevel::kWarning,
          u"Only the 64-bit view has the program, the IDE is a 32-bit "
          u"program; register the 32-bit Declarium.exe");
    }
    return narrow || wide;
  }

  bool ExamineProgram(RegistryRoot root, RegistryView view) {
    const auto key = LocalServerKey(server_);
    const std::u16string where =
        std::u16string(RootName(root)) + key + std::u16string(ViewName(view));
    const auto command = Text(root, key, u"", view);
    if (!command) {
      Add(FindingLevel::kFine, where + u": nothing");
      return false;
    }
    const auto program = ProgramOf(*command);
    if (!facts_.file_exists(program)) {
      Add(FindingLevel::kWrong, where + u": " + program + u" does not exist; run /RegServer");
      return false;
    }
    if (!EqualIgnoringCase(program, facts_.program)) {
      Add(FindingLevel::kWarning, where + u": " + program + u" is another copy of the program");
    } else {
      Add(FindingLevel::kFine, where + u": " + program);
    }
    return true;
  }

  void JudgeScopes(bool user, bool machine) {
    if (!user && !machine) {
      Add(FindingLevel::kWrong, u"The class cannot be started; run /RegServer");
    } else if (user && !machine) {
      Add(FindingLevel::kWarning,
          u"The class is registered for this user only: an IDE that runs as "
          u"administrator does not see it; run /RegServer:machine as "
          u"administrator if yours does");
    }
  }

  const Registry& registry_;
  const ServerIdentity& server_;
  const DoctorFacts& facts_;
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
