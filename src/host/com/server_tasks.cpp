#include "host/com/server_tasks.h"

#include <algorithm>
#include <windows.h>

#include "host/com/automation.h"
#include "host/com/registry_win32.h"
#include "host/doctor.h"
#include "text/text.h"
#include "vb/number.h"

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
    const std::wstring wide = Wide(text);
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
  const DoctorFacts facts{ProgramPath(), [](std::u16string_view path) {
                            return GetFileAttributesW(Wide(path).c_str()) !=
                                   INVALID_FILE_ATTRIBUTES;
                          }};
  const auto findings = ExamineRegistration(registry, server, facts);
  Print(DoctorReport(findings));
  return std::ranges::any_of(
      findings, [](const auto& finding) { return finding.level == FindingLevel::kWrong; });
}

}  // namespace

std::u16string ProgramPath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return Narrow16(path.substr(0, length));
    path.resize(path.size() * 2);
  }
}

int RunServerTask(const ServerSwitches& switches, const ServerIdentity& server) {
  const auto registry = SystemRegistry();
  switch (switches.task) {
    case ServerTask::kRegister:
      return Report(u"registered",
                    RegisterServer(*registry, server, ProgramPath(), switches.scope));
    case ServerTask::kUnregister:
      return Report(u"unregistered", UnregisterServer(*registry, server, switches.scope));
    case ServerTask::kDoctor:
      return Diagnose(*registry, server);
    case ServerTask::kNone:
    case ServerTask::kServe:
      break;
  }
  return 1;
}

}  // namespace declarium::com
