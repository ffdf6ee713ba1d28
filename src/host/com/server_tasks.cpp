#include "host/com/server_tasks.h"

#include <algorithm>
#include <windows.h>

#include "host/doctor.h"
#include "text/text.h"
#include "vb/number.h"
#include "win32/program.h"
#include "win32/system_registry.h"
#include "win32/wide.h"

namespace declarium::com {
namespace {

// A window program has no console of its own; its output goes to where it was redirected to, else
// to the console of the shell that started it.
void Print(std::u16string_view text) {
  HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  if (!output || output == INVALID_HANDLE_VALUE) {
    if (!AttachConsole(ATTACH_PARENT_PROCESS)) return;
    output = GetStdHandle(STD_OUTPUT_HANDLE);
  }
  DWORD mode = 0;
  DWORD written = 0;
  if (GetConsoleMode(output, &mode)) {
    const std::wstring wide = win32::WideString(text);
    WriteConsoleW(output, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    return;
  }
  const std::string bytes = ToUtf8(text);
  WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

int Report(std::u16string_view done, const std::expected<void, RegistryError>& result) {
  if (result) {
    Print(std::u16string(done).append(kCrLf));
    return 0;
  }
  const auto& error = result.error();
  std::u16string text =
      error.root == RegistryRoot::kLocalMachine ? u"HKEY_LOCAL_MACHINE\\" : u"HKEY_CURRENT_USER\\";
  text.append(error.key).append(u": error ").append(NumberText(error.code));
  if (error.code == ERROR_ACCESS_DENIED) text.append(u" (run as administrator)");
  Print(text.append(kCrLf));
  return 1;
}

int Diagnose(const Registry& registry, const ServerIdentity& server) {
  const DoctorFacts facts{win32::ProgramPath(), [](std::u16string_view path) {
                            return GetFileAttributesW(win32::WideString(path).c_str()) !=
                                   INVALID_FILE_ATTRIBUTES;
                          }};
  const auto findings = ExamineRegistration(registry, server, facts);
  Print(DoctorReport(findings));
  return std::ranges::any_of(
      findings, [](const auto& finding) { return finding.level == FindingLevel::kWrong; });
}

}  // namespace

int RunServerTask(const ServerSwitches& switches, const ServerIdentity& server) {
  win32::SystemRegistry registry;
  switch (switches.task) {
    case ServerTask::kRegister:
      return Report(u"registered",
                    RegisterServer(registry, server, win32::ProgramPath(), switches.scope));
    case ServerTask::kUnregister:
      return Report(u"unregistered", UnregisterServer(registry, server, switches.scope));
    case ServerTask::kDoctor:
      return Diagnose(registry, server);
    case ServerTask::kNone:
    case ServerTask::kServe:
      break;
  }
  return 1;
}

}  // namespace declarium::com
