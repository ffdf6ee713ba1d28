#include "addin/addin_fixture.h"

#include "shell/settings.h"

namespace declarium {
namespace {

BOOL CALLBACK FindMainWindow(HWND window, LPARAM found) {
  if (window_driver::NameOf(window) != "frmMain") return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// The process with a main window, shown or not; 0 without one.
DWORD ProcessWithMainWindow() {
  HWND window = nullptr;
  EnumWindows(FindMainWindow, reinterpret_cast<LPARAM>(&window));
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  return process;
}

}  // namespace

int RunTask(const std::filesystem::path& program, const wchar_t* task) {
  std::string output;
  return RunProgram(L"\"" + program.wstring() + L"\" " + task, output);
}

void AddInTest::PutLibrary() {
  Put("win.api", WinLibrary());
  WriteSetting(store_, setting::kLastDatabaseIndex, 0);
  WriteSetting(store_, setting::kLastDatabaseName, u"Win");
}

void AddInTest::SetUp() {
  PutLibrary();
  // Wine looks classes up for the machine only.
  ASSERT_EQ(RunTask(FileAt("Declarium.exe"), L"/RegServer:machine"), 0);
  ASSERT_EQ(IdeProcess().Tell("interfaces on"), "ok");
}

void AddInTest::TearDown() {
  EXPECT_TRUE(IsGone()) << "the process stays";
  IdeProcess().Tell("interfaces off");
  EXPECT_EQ(RunTask(FileAt("Declarium.exe"), L"/UnregServer:machine"), 0);
}

void AddInTest::OpenModule(IdeProcess& ide, const std::string& text, int type) {
  ASSERT_EQ(ide.Tell("project Project1"), "ok");
  ASSERT_EQ(ide.Tell("component Project1 Module1 " + std::to_string(type)), "ok");
  ASSERT_EQ(ide.Tell("text Module1 " + text), "ok");
  ASSERT_EQ(ide.Tell("select Module1"), "ok");
}

void AddInTest::Connect(IdeProcess& ide) {
  ASSERT_EQ(ide.Tell("connect " + kAddIn), "ok");
  AttachToAddIn();
}

void AddInTest::ConnectAlso(IdeProcess& ide) {
  ASSERT_EQ(ide.Tell("connect " + kAddIn), "ok");
}

void AddInTest::AttachToAddIn() {
  DWORD process = 0;
  window_driver::WaitFor("the main window to be loaded",
                         [&] { return (process = ProcessWithMainWindow()) != 0; });
  Attach(process);
}

void AddInTest::Disconnect(IdeProcess& ide) {
  ASSERT_EQ(ide.Tell("disconnect " + kAddIn), "ok");
}

void AddInTest::ClickButton(IdeProcess& ide) {
  ASSERT_EQ(ide.Tell("click Standard"), "ok");
  AwaitMain();
}

void AddInTest::AddConstant() {
  ChooseKind(0);
  ClickItem("lstConst", 0, u"Const A");
  ClickToolbar("add");
  ASSERT_TRUE(EntriesBecome("lstAdd", {u"1 A"}));
}

void AddInTest::ClickInsert() {
  ASSERT_TRUE(Eventually([this] { return ToolbarEnabled("insert"); }));
  ClickToolbar("insert");
}

HWND AddInTest::AskToInsert() {
  ClickInsert();
  return Program().Dialog();
}

void AddInTest::Insert(int answer, std::u16string_view module) {
  ClickInsert();
  AnswerMessage(u"Vložiť do '" + std::u16string(module) + u"' ?", answer);
}

bool AddInTest::ModuleBecomes(IdeProcess& ide, const std::string& text) {
  return Eventually([&] { return ide.Tell("lines Module1") == "ok " + text; });
}

bool AddInTest::IsGone() {
  return Eventually([] { return ProcessWithMainWindow() == 0; });
}

bool AddInTest::Ends() {
  return Eventually([this] { return !Program().Runs(); });
}

}  // namespace declarium
