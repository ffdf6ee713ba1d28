#include "vba/vba_fixture.h"

#include <filesystem>
#include <windows.h>

#include "win32/unique_handle.h"

namespace declarium {
namespace {

constexpr const wchar_t* kDll = sizeof(void*) == 8 ? L"DeclariumVba64.dll" : L"DeclariumVba32.dll";

using UniqueService = win32::UniqueHandle<SC_HANDLE, CloseServiceHandle>;

// Wine 8 offers the classes of a process that was killed until the service that lists them ends; it
// is started again when it is needed. Windows notices the end of the process.
void ForgetDeadClasses() {
  const UniqueService services(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
  const UniqueService list(
      OpenServiceW(services.Get(), L"RpcSs", SERVICE_STOP | SERVICE_QUERY_STATUS));
  SERVICE_STATUS status{};
  if (!list || !ControlService(list.Get(), SERVICE_CONTROL_STOP, &status)) return;
  EXPECT_TRUE(Eventually([&] {
    return !QueryServiceStatus(list.Get(), &status) || status.dwCurrentState == SERVICE_STOPPED;
  }));
}

}  // namespace

void VbaTest::SetUp() {
  std::filesystem::copy_file(Beside(std::filesystem::path("../../src/vba") / kDll),
                             FileAt("Declarium.exe").parent_path() / kDll);
  PutLibrary();
  // Wine looks the program's class up for the machine only.
  ASSERT_EQ(RunTask(FileAt("Declarium.exe"), L"/RegServer:machine"), 0);
  ASSERT_EQ(RunTask(FileAt("Declarium.exe"), L"/RegServer:vba"), 0);
}

void VbaTest::TearDown() {
  EXPECT_TRUE(IsGone()) << "the process stays";
  EXPECT_EQ(RunTask(FileAt("Declarium.exe"), L"/UnregServer"), 0);
  EXPECT_EQ(RunTask(FileAt("Declarium.exe"), L"/UnregServer:machine"), 0);
}

void VbaTest::Connect(VbaEditor& editor) {
  ASSERT_EQ(editor.Tell(kVbaConnect), "ok");
}

void VbaTest::Open(VbaEditor& editor) {
  ASSERT_EQ(editor.Tell("click Standard"), "ok");
  AttachToAddIn();
  AwaitMain();
}

void VbaTest::KillProgram() {
  Kill();
  EXPECT_TRUE(IsGone());
  ForgetDeadClasses();
}

std::u16string VbaTest::AnswerBoxOf(const window_driver::DrivenProgram& process) {
  const HWND box = process.Dialog();
  auto text = window_driver::MessageOf(box);
  window_driver::PressInDialog(box, IDOK);
  return text;
}

}  // namespace declarium
