#include "host/registration.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <set>

#include "host/doctor.h"
#include "host/fake_registry.h"
#include "host/server_switches.h"
#include "host/vba_registration.h"
#include "support/temporary_folder.h"
#include "text/text.h"

namespace declarium {
namespace {

const std::u16string kProgram = u"C:\\Program Files\\Declarium\\Declarium.exe";
const std::u16string kMissingProgram = u"D:\\Old\\Declarium.exe";
const std::u16string kOtherProgram = u"D:\\a.exe";
const std::u16string kOtherCopy = u"D:\\Declarium.exe";
const std::u16string kFolder = u"D:\\Folder";
const std::u16string kClassId(kDeclariumServer.class_id);
const VbaDlls kDlls = {u"C:\\Program Files\\Declarium\\DeclariumVba32.dll",
                       u"C:\\Program Files\\Declarium\\DeclariumVba64.dll"};
const std::u16string kOtherDll = u"D:\\DeclariumVba64.dll";

TEST(Registration, WritesTheClassAndTheIdesList) {
  FakeRegistry registry;
  ASSERT_TRUE(RegisterServer(registry, kDeclariumServer, kProgram, RegistrationScope::kUser));
  const std::u16string classes = u"HKCU\\Software\\Classes\\";
  const std::u16string add_in =
      u"HKCU\\Software\\Microsoft\\Visual Basic\\6.0\\Addins\\Declarium.Connect|";
  EXPECT_EQ(registry.Text(classes + u"Declarium.Connect\\CLSID|"), kClassId);
  EXPECT_EQ(registry.Text(classes + u"CLSID\\" + kClassId + u"\\ProgID|"), u"Declarium.Connect");
  EXPECT_EQ(registry.Text(classes + u"CLSID\\" + kClassId + u"\\LocalServer32|"),
            u"\"" + kProgram + u"\"");
  EXPECT_EQ(registry.Text(classes + u"CLSID\\" + kClassId + u"\\LocalServer32|ServerExecutable"),
            kProgram);
  EXPECT_EQ(registry.Text(add_in + u"FriendlyName"), u"Declarium");
  EXPECT_FALSE(registry.Text(add_in + u"Description").empty());
  EXPECT_EQ(registry.Number(add_in + u"LoadBehavior"), 1u);
  EXPECT_EQ(registry.Number(add_in + u"CommandLineSafe"), 0u);
}

TEST(Registration, MachineScopeWritesTheClassForEveryoneAndTheListForTheUser) {
  FakeRegistry registry;
  ASSERT_TRUE(RegisterServer(registry, kDeclariumServer, kProgram, RegistrationScope::kMachine));
  for (const auto& [name, data] : registry.values) {
    const bool is_class = name.find(u"\\Classes\\") != std::u16string::npos;
    EXPECT_TRUE(name.starts_with(is_class ? u"HKLM\\" : u"HKCU\\"));
  }
}

TEST(Registration, UnregisteringLeavesNothing) {
  for (const auto scope : {RegistrationScope::kUser, RegistrationScope::kMachine}) {
    FakeRegistry registry;
    ASSERT_TRUE(RegisterServer(registry, kDeclariumServer, kProgram, scope));
    ASSERT_TRUE(UnregisterServer(registry, kDeclariumServer, scope));
    EXPECT_TRUE(registry.values.empty());
    EXPECT_EQ(registry.emptied.size(), 4u);
  }
}

TEST(Registration, UnregisteringLeavesOthersAlone) {
  FakeRegistry registry;
  registry.values[u"HKCU\\Software\\Microsoft\\Visual Basic\\6.0\\Addins\\Other.Connect|X"] =
      NumberValue(1);
  registry.values[u"HKCU\\Software\\Classes\\Declarium.Connect2|"] = TextValue(u"another class");
  registry.values[u"HKCU\\Software\\Classes\\CLSID\\{0}|"] = TextValue(u"another class");
  const auto before = registry.values;
  ASSERT_TRUE(RegisterServer(registry, kDeclariumServer, kProgram, RegistrationScope::kUser));
  ASSERT_TRUE(UnregisterServer(registry, kDeclariumServer, RegistrationScope::kUser));
  EXPECT_EQ(registry.values, before);
  EXPECT_TRUE(registry.emptied.empty());
}

TEST(Registration, RegisteringAgainKeepsWhatTheUserChose) {
  const std::u16string add_in =
      u"HKCU\\Software\\Microsoft\\Visual Basic\\6.0\\Addins\\Declarium.Connect|";
  for (const std::uint32_t chosen : {0U, 2U, 3U, 4U, 5U}) {
    FakeRegistry registry;
    registry.values[add_in + u"LoadBehavior"] = NumberValue(chosen);
    registry.values[add_in + u"CommandLineSafe"] = NumberValue(1);
    ASSERT_TRUE(RegisterServer(registry, kDeclariumServer, kProgram, RegistrationScope::kUser));
    EXPECT_EQ(registry.Number(add_in + u"LoadBehavior"), chosen);
    EXPECT_EQ(registry.Number(add_in + u"CommandLineSafe"), 1u);
  }
}

TEST(Registration, RegisteringAgainMendsWhatIsNoNumber) {
  const std::u16string load_behavior =
      u"HKCU\\Software\\Microsoft\\Visual Basic\\6.0\\Addins\\Declarium.Connect|LoadBehavior";
  FakeRegistry registry;
  registry.values[load_behavior] = TextValue(u"1");
  ASSERT_TRUE(RegisterServer(registry, kDeclariumServer, kProgram, RegistrationScope::kUser));
  EXPECT_EQ(registry.Number(load_behavior), 1u);
}

TEST(Registration, RefusedWriteIsReported) {
  FakeRegistry registry;
  registry.read_only_root = RegistryRoot::kLocalMachine;
  const auto result =
      RegisterServer(registry, kDeclariumServer, kProgram, RegistrationScope::kMachine);
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().code, 5u);
  EXPECT_EQ(result.error().root, RegistryRoot::kLocalMachine);
}

class DoctorTest : public testing::Test {
 protected:
  std::u16string Report(bool file_exists = true) {
    const DoctorFacts facts{kProgram, [=](std::u16string_view path) {
                              if (path == kFolder) return FileKind::kFolder;
                              const bool there = path == kProgram || path == kOtherProgram ||
                                                 path == kOtherCopy || path == kDlls.wide ||
                                                 path == kOtherDll;
                              return file_exists && there ? FileKind::kFile : FileKind::kMissing;
                            }};
    findings_ = ExamineRegistration(registry_, kDeclariumServer, facts);
    const auto of_vba = ExamineVbaRegistration(registry_, kVbaAddIn, facts);
    const auto report = DoctorReport(findings_, of_vba);
    findings_.insert(findings_.end(), of_vba.begin(), of_vba.end());
    return report;
  }
  void Register(RegistrationScope scope) {
    ASSERT_TRUE(RegisterServer(registry_, kDeclariumServer, kProgram, scope));
  }
  static bool Has(const std::u16string& report, std::u16string_view part) {
    return report.find(part) != std::u16string::npos;
  }

  static std::u16string ServerName(std::u16string_view name, const char16_t* root = u"HKCU") {
    return std::u16string(root)
        .append(u"\\Software\\Classes\\CLSID\\" + kClassId + u"\\LocalServer32|")
        .append(name);
  }
  void SetServer(std::u16string_view command) {
    registry_.values[ServerName(u"")] = TextValue(command);
  }
  void SetExecutable(std::u16string_view path) {
    registry_.values[ServerName(u"ServerExecutable")] = TextValue(path);
  }
  void SetLoadBehavior(const RegistryValue& value) {
    registry_.values[kAddIn + u"|LoadBehavior"] = value;
  }

  void RegisterWideVba() { ASSERT_TRUE(RegisterVba(registry_, kVbaAddIn, {.wide = kDlls.wide})); }
  std::u16string VbaVerdict() {
    const auto report = Report();
    return report.substr(report.rfind(u"\r\n", report.size() - 3) + 2);
  }

  inline static const std::u16string kWideVbaList =
      u"HKCU\\Software\\Microsoft\\VBA\\VBE\\6.0\\Addins64\\Declarium.Vba|LoadBehavior";
  inline static const std::u16string kWideDll = u"HKCU\\" + InprocServerKey(kVbaAddIn) + u"|";
  inline static const std::u16string kAddIn =
      u"HKCU\\Software\\Microsoft\\Visual Basic\\6.0\\Addins\\Declarium.Connect";
  FakeRegistry registry_;
  std::vector<Finding> findings_;  // of the last report
};

TEST_F(DoctorTest, EveryFindingIsMadeWithItsMendAndItsVerdict) {
  const struct {
    FindingKind kind;
    bool loadable;
    std::function<void()> set_up;  // from a full registration of the user
  } cases[] = {
      {FindingKind::kLoadsAtStart, true, [] {}},
      {FindingKind::kLoadsByHand, true, [this] { SetLoadBehavior(NumberValue(0)); }},
      {FindingKind::kLoadsByHand, true, [this] { SetLoadBehavior(NumberValue(2)); }},
      {FindingKind::kLoadsOnCommandLine, true, [this] { SetLoadBehavior(NumberValue(4)); }},
      {FindingKind::kLoadsOnCommandLine, true, [this] { SetLoadBehavior(NumberValue(6)); }},
      {FindingKind::kLoadsAtStart, true, [this] { SetLoadBehavior(NumberValue(7)); }},
      {FindingKind::kNotListed, false,
       [this] { registry_.values.erase(kAddIn + u"|LoadBehavior"); }},
      {FindingKind::kLoadBehaviorUnreadable, false, [this] { SetLoadBehavior(TextValue(u"1")); }},
      {FindingKind::kListedForOtherUser, false,
       [this] {
         registry_.values.erase(kAddIn + u"|LoadBehavior");
         registry_.values[u"HKU\\S-1-5-21" + kAddIn.substr(4) + u"|LoadBehavior"] = NumberValue(1);
       }},
      {FindingKind::kNoClassId, true, [] {}},
      {FindingKind::kClassId, true, [] {}},
      {FindingKind::kForeignClassId, false,
       [this] {
         registry_.values[u"HKCU\\Software\\Classes\\Declarium.Connect\\CLSID|"] =
             TextValue(u"{0}");
       }},
      {FindingKind::kNoServer, true, [] {}},
      {FindingKind::kServer, true, [] {}},
      {FindingKind::kServer, true, [this] { SetServer(kProgram + u" /Automation"); }},
      {FindingKind::kServerIsMissing, false,
       [this] { SetServer(u"\"" + kMissingProgram + u"\""); }},
      {FindingKind::kServerIsMissing, false, [this] { SetExecutable(kMissingProgram); }},
      {FindingKind::kServerIsMissing, false,
       [this] {
         SetServer(u"\"" + kMissingProgram + u"\"");
         SetExecutable(kOtherCopy);
       }},
      {FindingKind::kServerIsFolder, false, [this] { SetServer(u"\"" + kFolder + u"\""); }},
      {FindingKind::kServerIsFolder, false, [this] { SetExecutable(kFolder); }},
      {FindingKind::kServerIsOtherProgram, false, [this] { SetServer(kOtherProgram + u" /x"); }},
      {FindingKind::kServerIsOtherProgram, false, [this] { SetExecutable(kOtherProgram); }},
      {FindingKind::kServerIsOtherCopy, true,
       [this] {
         SetServer(kOtherCopy);
         SetExecutable(kOtherCopy);
       }},
      {FindingKind::kNoServerExecutable, true,
       [this] { registry_.values.erase(ServerName(u"ServerExecutable")); }},
      {FindingKind::kOnlyWideServer, false,
       [this] { registry_.hidden_view = RegistryView::k32Bit; }},
      {FindingKind::kCannotStart, false, [this] { registry_.values.erase(ServerName(u"")); }},
      {FindingKind::kUserOnly, true, [] {}},
      {FindingKind::kEditorsNotRegistered, true, [] {}},
      {FindingKind::kEditorsLoad, true, [this] { RegisterWideVba(); }},
      {FindingKind::kEditorsGaveUp, false,
       [this] {
         RegisterWideVba();
         registry_.values[kWideVbaList] = NumberValue(0);
       }},
      {FindingKind::kNoDll, false,
       [this] {
         RegisterWideVba();
         registry_.wide_values.erase(kWideDll);
       }},
      {FindingKind::kDll, true, [this] { RegisterWideVba(); }},
      {FindingKind::kDllIsMissing, false,
       [this] {
         RegisterWideVba();
         registry_.wide_values[kWideDll] = TextValue(u"D:\\gone.dll");
       }},
      {FindingKind::kDllIsOtherCopy, true,
       [this] {
         RegisterWideVba();
         registry_.wide_values[kWideDll] = TextValue(kOtherDll);
       }},
  };
  std::set<FindingKind> seen;
  for (const auto& c : cases) {
    registry_ = {};
    Register(RegistrationScope::kUser);
    c.set_up();
    const auto report = Report();
    const auto& said = FindingTexts()[static_cast<std::size_t>(c.kind)];
    const auto found = std::ranges::find(findings_, c.kind, &Finding::kind);
    ASSERT_NE(found, findings_.end()) << ToUtf8(said.what) << "\n" << ToUtf8(report);
    EXPECT_EQ(found->level, said.level);
    std::u16string ending(said.what);
    if (!said.mend.empty()) ending.append(u"; ").append(said.mend);
    EXPECT_TRUE(found->text.ends_with(ending)) << ToUtf8(found->text);
    EXPECT_EQ(said.mend.empty(), said.level == FindingLevel::kFine);
    EXPECT_EQ(CanBeLoaded(findings_), c.loadable) << ToUtf8(report);
    const bool of_vba = c.kind >= FindingKind::kEditorsNotRegistered;
    EXPECT_EQ(Has(report, u"The IDE can load the add-in"), c.loadable || of_vba);
    seen.insert(c.kind);
  }
  EXPECT_EQ(seen.size(), FindingTexts().size()) << "a finding that no case makes";
}

TEST_F(DoctorTest, VerdictSaysWhenTheIdeDoesNotLoadTheAddInByItself) {
  const struct {
    std::uint32_t behavior;
    std::u16string_view verdict;
  } cases[] = {
      {0, u"The IDE can load the add-in, by hand.\r\n"},
      {1, u"The IDE can load the add-in.\r\n"},
      {2, u"The IDE can load the add-in, by hand.\r\n"},
      {3, u"The IDE can load the add-in.\r\n"},
      {4, u"The IDE can load the add-in, by hand or on the command line.\r\n"},
      {5, u"The IDE can load the add-in.\r\n"},
  };
  Register(RegistrationScope::kUser);
  for (const auto& c : cases) {
    SetLoadBehavior(NumberValue(c.behavior));
    EXPECT_TRUE(Report().ends_with(c.verdict)) << c.behavior;
  }
}

TEST_F(DoctorTest, TheGuideShowsEveryFindingThatNeedsAMend) {
  for (const std::string language : {"sk", "en"}) {
    const auto page = ContentOf(DECLARIUM_SOURCE_DIR "/docs/guide/" + language + "/ide.md");
    for (const auto& said : FindingTexts()) {
      if (said.mend.empty()) continue;
      const std::string level = said.level == FindingLevel::kWrong ? "WRONG" : "warning";
      const std::string row =
          "| `" + level + "` | `" + ToUtf8(said.what) + "` | `" + ToUtf8(said.mend) + "` |";
      EXPECT_NE(page.find(row), std::string::npos) << language << ' ' << row;
    }
  }
}

TEST_F(DoctorTest, FullRegistrationIsFine) {
  Register(RegistrationScope::kUser);
  Register(RegistrationScope::kMachine);
  const auto report = Report();
  EXPECT_FALSE(Has(report, u"WRONG"));
  EXPECT_FALSE(Has(report, u"warning"));
  EXPECT_TRUE(report.ends_with(u"The IDE can load the add-in.\r\n"));
}

TEST_F(DoctorTest, MissingRegistrationIsWrong) {
  const auto report = Report();
  EXPECT_TRUE(Has(report, u"WRONG    HKEY_CURRENT_USER\\Software\\Microsoft\\Visual Basic"));
  EXPECT_TRUE(Has(report, u"WRONG    The class cannot be started"));
  EXPECT_TRUE(report.ends_with(u"The IDE cannot load the add-in.\r\n"));
}

TEST_F(DoctorTest, TheGuideShowsTheReportBeforeARegistration) {
  auto report = ToUtf8(Report());
  std::erase(report, '\r');
  for (const std::string language : {"sk", "en"}) {
    const auto page = ContentOf(DECLARIUM_SOURCE_DIR "/docs/guide/" + language + "/ide.md");
    EXPECT_NE(page.find("```\n" + report + "```\n"), std::string::npos) << language << report;
  }
}

TEST_F(DoctorTest, ClassOfOneUserIsNotSeenByAnElevatedIde) {
  Register(RegistrationScope::kUser);
  EXPECT_TRUE(Has(Report(), u"warning  The class is registered for this user only"));
}

TEST_F(DoctorTest, MissingProgramIsWrong) {
  Register(RegistrationScope::kUser);
  const auto report = Report(false);
  EXPECT_TRUE(Has(report, u"does not exist"));
  EXPECT_TRUE(report.ends_with(u"The IDE cannot load the add-in.\r\n"));
}

// The IDE gets the user's entry before the machine's and the 32-bit one before the other.
TEST_F(DoctorTest, MissingProgramIsWrongOnlyInTheEntryThatTheIdeGets) {
  const auto server = [](const char16_t* root) {
    return std::u16string(root) + u"\\Software\\Classes\\CLSID\\" + kClassId + u"\\LocalServer32|";
  };
  const auto missing = TextValue(u"\"" + kMissingProgram + u"\"");
  const auto program = TextValue(u"\"" + kProgram + u"\"");
  const auto verdict = [&](const char16_t* root, RegistryView view) {
    registry_ = {};
    Register(RegistrationScope::kUser);
    Register(RegistrationScope::kMachine);
    (view == RegistryView::k64Bit ? registry_.wide_values : registry_.values)[server(root)] =
        missing;
    if (view == RegistryView::k32Bit) registry_.wide_values[server(root)] = program;
    const auto report = Report();
    EXPECT_TRUE(Has(report, kMissingProgram + u": does not exist"));
    return report.ends_with(u"The IDE can load the add-in.\r\n");
  };
  EXPECT_FALSE(verdict(u"HKCU", RegistryView::k32Bit));
  EXPECT_TRUE(verdict(u"HKLM", RegistryView::k32Bit));
  EXPECT_TRUE(verdict(u"HKCU", RegistryView::k64Bit));
  EXPECT_TRUE(verdict(u"HKLM", RegistryView::k64Bit));
}

TEST_F(DoctorTest, ForeignClassBehindTheOneThatTheIdeGetsIsAWarning) {
  Register(RegistrationScope::kUser);
  Register(RegistrationScope::kMachine);
  registry_.values[u"HKLM\\Software\\Classes\\Declarium.Connect\\CLSID|"] = TextValue(u"{0}");
  const auto report = Report();
  EXPECT_TRUE(Has(report, u"warning  HKEY_LOCAL_MACHINE"));
  EXPECT_TRUE(report.ends_with(u"The IDE can load the add-in.\r\n"));
}

TEST_F(DoctorTest, TheProgramsPathMayNameEnvironmentVariables) {
  Register(RegistrationScope::kUser);
  auto path = TextValue(u"\"%PROGRAMS%\\Declarium\\Declarium.exe\"");
  path.type = kRegistryExpandableText;
  registry_.values[u"HKCU\\Software\\Classes\\CLSID\\" + kClassId + u"\\LocalServer32|"] = path;
  EXPECT_TRUE(Has(Report(), u": " + kProgram + u": this program\r\n"));
}

TEST_F(DoctorTest, VbaEditorsHaveAVerdictOfTheirOwnOnceTheyAreRegistered) {
  Register(RegistrationScope::kUser);
  EXPECT_EQ(VbaVerdict(), u"The IDE can load the add-in.\r\n");
  RegisterWideVba();
  EXPECT_EQ(VbaVerdict(), u"The VBA editors can load the add-in.\r\n");
  registry_.values[kWideVbaList] = NumberValue(2);
  EXPECT_EQ(VbaVerdict(), u"The VBA editors cannot load the add-in.\r\n");
}

TEST(VbaRegistration, WritesBothListsAndTheDllOfEachBitnessToItsOwnView) {
  FakeRegistry registry;
  ASSERT_TRUE(RegisterVba(registry, kVbaAddIn, kDlls));
  for (const auto* bits : {u"", u"64"}) {
    const auto list = std::u16string(u"HKCU\\Software\\Microsoft\\VBA\\VBE\\6.0\\Addins") + bits +
                      u"\\Declarium.Vba|";
    EXPECT_EQ(registry.Text(list + u"FriendlyName"), u"Declarium");
    EXPECT_FALSE(registry.Text(list + u"Description").empty());
    EXPECT_EQ(registry.Number(list + u"LoadBehavior"), 3u);
    EXPECT_EQ(registry.Number(list + u"CommandLineSafe"), 0u);
  }
  EXPECT_EQ(registry.Text(u"HKCU\\Software\\Classes\\Declarium.Vba\\CLSID|"), kVbaAddIn.class_id);
  const auto server = u"HKCU\\" + InprocServerKey(kVbaAddIn) + u"|";
  EXPECT_EQ(registry.Text(server), kDlls.narrow);
  EXPECT_EQ(registry.Text(server + u"ThreadingModel"), u"Apartment");
  EXPECT_EQ(TextOf(registry.wide_values.at(server)), kDlls.wide);
  EXPECT_EQ(TextOf(registry.wide_values.at(server + u"ThreadingModel")), u"Apartment");
}

TEST(VbaRegistration, EditorsOfABitnessWithoutADllAreLeftAlone) {
  FakeRegistry registry;
  ASSERT_TRUE(RegisterVba(registry, kVbaAddIn, {.narrow = kDlls.narrow}));
  EXPECT_TRUE(registry.wide_values.empty());
  for (const auto& [name, data] : registry.values) {
    EXPECT_EQ(name.find(u"Addins64"), std::u16string::npos) << ToUtf8(name);
  }
}

TEST(VbaRegistration, HasAnEditorThatGaveUpLoadTheAddInAgain) {
  FakeRegistry registry;
  const std::u16string load =
      u"HKCU\\Software\\Microsoft\\VBA\\VBE\\6.0\\Addins\\Declarium.Vba|LoadBehavior";
  for (const std::uint32_t before : {0U, 1U, 2U}) {
    registry.values[load] = NumberValue(before);
    ASSERT_TRUE(RegisterVba(registry, kVbaAddIn, kDlls));
    EXPECT_EQ(registry.Number(load), 3u);
  }
}

TEST(VbaRegistration, UnregisteringLeavesNothingOfItsOwnAndAllOfOthers) {
  FakeRegistry registry;
  registry.values[u"HKCU\\Software\\Microsoft\\VBA\\VBE\\6.0\\Addins\\Other.Vba|X"] =
      NumberValue(1);
  const auto before = registry.values;
  ASSERT_TRUE(RegisterVba(registry, kVbaAddIn, kDlls));
  ASSERT_TRUE(UnregisterVba(registry, kVbaAddIn));
  EXPECT_EQ(registry.values, before);
  EXPECT_TRUE(registry.wide_values.empty());
}

TEST(VbaRegistration, RefusedWriteIsReported) {
  FakeRegistry registry;
  registry.read_only_root = RegistryRoot::kCurrentUser;
  const auto result = RegisterVba(registry, kVbaAddIn, kDlls);
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().code, 5u);
}

TEST(VbaRegistration, TheClassOfTheServerComesWithoutTheIdesList) {
  FakeRegistry registry;
  ASSERT_TRUE(RegisterServerClass(registry, kDeclariumServer, kProgram));
  for (const auto& [name, data] : registry.values) {
    EXPECT_TRUE(name.starts_with(u"HKCU\\Software\\Classes\\")) << ToUtf8(name);
  }
  EXPECT_EQ(registry.Text(u"HKCU\\" + LocalServerKey(kDeclariumServer) + u"|ServerExecutable"),
            kProgram);
}

TEST(ServerSwitches, AreFoundWithEitherMarkAndAnyCase) {
  const struct {
    std::u16string argument;
    ServerTask task;
    RegistrationScope scope;
  } cases[] = {
      {u"-Embedding", ServerTask::kServe, RegistrationScope::kUser},
      {u"/embedding", ServerTask::kServe, RegistrationScope::kUser},
      {u"-Automation", ServerTask::kServe, RegistrationScope::kUser},
      {u"/RegServer", ServerTask::kRegister, RegistrationScope::kUser},
      {u"-REGSERVER:machine", ServerTask::kRegister, RegistrationScope::kMachine},
      {u"/UnregServer", ServerTask::kUnregister, RegistrationScope::kUser},
      {u"-unregserver:Machine", ServerTask::kUnregister, RegistrationScope::kMachine},
      {u"/RegServer:VBA", ServerTask::kRegisterVba, RegistrationScope::kUser},
      {u"/Doctor", ServerTask::kDoctor, RegistrationScope::kUser},
      {u"/?", ServerTask::kHelp, RegistrationScope::kUser},
      {u"-?", ServerTask::kHelp, RegistrationScope::kUser},
  };
  for (const auto& c : cases) {
    const auto switches = ParseServerSwitches(std::vector{c.argument});
    EXPECT_EQ(switches.task, c.task);
    EXPECT_EQ(switches.scope, c.scope);
    EXPECT_TRUE(switches.rest.empty());
  }
}

TEST(ServerSwitches, QuietAndLogGoWithATask) {
  const auto switches =
      ParseServerSwitches(std::vector<std::u16string>{u"/quiet", u"/RegServer", u"-LOG"});
  EXPECT_EQ(switches.task, ServerTask::kRegister);
  EXPECT_TRUE(switches.quiet);
  EXPECT_TRUE(switches.log);
  const auto none = ParseServerSwitches(std::vector<std::u16string>{u"/RegServer"});
  EXPECT_FALSE(none.quiet);
  EXPECT_FALSE(none.log);
}

TEST(ServerSwitches, TheHelpAndTheGuideHaveThemAll) {
  const auto help = SwitchHelp();
  for (const auto& one : AllServerSwitches()) {
    const std::u16string line = u"/" + std::u16string(one.name) + u" ";
    EXPECT_NE(help.find(line), std::u16string::npos) << ToUtf8(line);
    EXPECT_NE(help.find(std::u16string(one.purpose) + u"\r\n"), std::u16string::npos);
  }
  auto shown = ToUtf8(help);
  std::erase(shown, '\r');
  for (const std::string language : {"sk", "en"}) {
    const auto page = ContentOf(DECLARIUM_SOURCE_DIR "/docs/guide/" + language + "/ide.md");
    EXPECT_NE(page.find("```\n" + shown + "```\n"), std::string::npos) << language << shown;
  }
}

TEST(Registration, LogIsASwitchOfTheServerThatTheNextRegistrationTakesBack) {
  FakeRegistry registry;
  const std::u16string server =
      u"HKCU\\Software\\Classes\\CLSID\\" + kClassId + u"\\LocalServer32|";
  ASSERT_TRUE(RegisterServer(registry, kDeclariumServer, kProgram, RegistrationScope::kUser,
                             ServerLog::kOn));
  EXPECT_EQ(registry.Text(server), u"\"" + kProgram + u"\" /Log");
  EXPECT_EQ(registry.Text(server + u"ServerExecutable"), kProgram);
  ASSERT_TRUE(RegisterServer(registry, kDeclariumServer, kProgram, RegistrationScope::kUser));
  EXPECT_EQ(registry.Text(server), u"\"" + kProgram + u"\"");
}

TEST(ServerSwitches, LeaveOtherArgumentsAlone) {
  const std::vector<std::u16string> arguments = {u"C:\\a.api", u"/other", u"-", u"", u"RegServer"};
  const auto switches = ParseServerSwitches(arguments);
  EXPECT_EQ(switches.task, ServerTask::kNone);
  EXPECT_EQ(switches.rest, arguments);
}

}  // namespace
}  // namespace declarium
