#include "host/registration.h"

#include <gtest/gtest.h>

#include "host/doctor.h"
#include "host/fake_registry.h"
#include "host/server_switches.h"
#include "support/temporary_folder.h"
#include "text/text.h"

namespace declarium {
namespace {

const std::u16string kProgram = u"C:\\Program Files\\Declarium\\Declarium.exe";
const std::u16string kMissingProgram = u"D:\\Old\\Declarium.exe";
const std::u16string kClassId(kDeclariumServer.class_id);

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
    const DoctorFacts facts{
        kProgram, [=](std::u16string_view path) { return file_exists && path != kMissingProgram; }};
    return DoctorReport(ExamineRegistration(registry_, kDeclariumServer, facts));
  }
  void Register(RegistrationScope scope) {
    ASSERT_TRUE(RegisterServer(registry_, kDeclariumServer, kProgram, scope));
  }
  static bool Has(const std::u16string& report, std::u16string_view part) {
    return report.find(part) != std::u16string::npos;
  }

  FakeRegistry registry_;
};

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
    EXPECT_TRUE(Has(report, kMissingProgram + u" does not exist"));
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

TEST_F(DoctorTest, AddInDisabledInTheIdeIsWrong) {
  Register(RegistrationScope::kUser);
  registry_.values
      [u"HKCU\\Software\\Microsoft\\Visual Basic\\6.0\\Addins\\Declarium.Connect"
       u"|LoadBehavior"] = NumberValue(0);
  EXPECT_TRUE(Has(Report(), u"LoadBehavior 0: disabled"));
}

TEST_F(DoctorTest, TheProgramsPathMayNameEnvironmentVariables) {
  Register(RegistrationScope::kUser);
  auto path = TextValue(u"\"%PROGRAMS%\\Declarium\\Declarium.exe\"");
  path.type = kRegistryExpandableText;
  registry_.values[u"HKCU\\Software\\Classes\\CLSID\\" + kClassId + u"\\LocalServer32|"] = path;
  EXPECT_TRUE(Has(Report(), u": " + kProgram + u"\r\n"));
}

TEST_F(DoctorTest, RegistrationOfAnotherUserIsNamed) {
  registry_.values
      [u"HKU\\S-1-5-21\\Software\\Microsoft\\Visual Basic\\6.0\\Addins"
       u"\\Declarium.Connect|LoadBehavior"] = NumberValue(1);
  EXPECT_TRUE(Has(Report(), u"warning  HKEY_USERS\\S-1-5-21\\"));
}

TEST_F(DoctorTest, ProgramInTheWideViewOnlyIsAWarning) {
  Register(RegistrationScope::kUser);
  registry_.hidden_view = RegistryView::k32Bit;
  EXPECT_TRUE(Has(Report(), u"warning  Only the 64-bit view has the program"));
}

TEST_F(DoctorTest, AnotherCopyAndAnotherClassAreNamed) {
  Register(RegistrationScope::kUser);
  const std::u16string classes = u"HKCU\\Software\\Classes\\";
  registry_.values[classes + u"CLSID\\" + kClassId + u"\\LocalServer32|"] =
      TextValue(u"\"D:\\a.exe\" /x");
  EXPECT_TRUE(Has(Report(), u"D:\\a.exe is another copy"));
  registry_.values[classes + u"Declarium.Connect\\CLSID|"] = TextValue(u"{0}");
  EXPECT_TRUE(Has(Report(), u"{0} is not this program's class"));
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
      {u"/Doctor", ServerTask::kDoctor, RegistrationScope::kUser},
  };
  for (const auto& c : cases) {
    const auto switches = ParseServerSwitches(std::vector{c.argument});
    EXPECT_EQ(switches.task, c.task);
    EXPECT_EQ(switches.scope, c.scope);
    EXPECT_TRUE(switches.rest.empty());
  }
}

TEST(ServerSwitches, LeaveOtherArgumentsAlone) {
  const std::vector<std::u16string> arguments = {u"C:\\a.api", u"/other", u"-", u"", u"RegServer"};
  const auto switches = ParseServerSwitches(arguments);
  EXPECT_EQ(switches.task, ServerTask::kNone);
  EXPECT_EQ(switches.rest, arguments);
}

}  // namespace
}  // namespace declarium
