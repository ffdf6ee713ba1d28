#include "host/com/server_tasks.h"

#include <utility>
#include <vector>
#include <windows.h>

#include "host/doctor.h"
#include "host/vba_registration.h"
#include "text/text.h"
#include "text/user_texts.h"
#include "vb/number.h"
#include "win32/program.h"
#include "win32/system_registry.h"
#include "win32/wide.h"

namespace declarium::com {
namespace {

// A window program has no console of its own; its output goes to where it was redirected to, else
// to the console of the shell that started it. False when there is neither.
bool Print(std::u16string_view text) {
  HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  if (!output || output == INVALID_HANDLE_VALUE) {
    if (!AttachConsole(ATTACH_PARENT_PROCESS)) return false;
    output = GetStdHandle(STD_OUTPUT_HANDLE);
  }
  DWORD mode = 0;
  DWORD written = 0;
  if (GetConsoleMode(output, &mode)) {
    const std::wstring wide = win32::WideString(text);
    WriteConsoleW(output, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
  } else {
    const std::string bytes = ToUtf8(text);
    WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  }
  return true;
}

// What a task says, and whether it succeeded.
struct Outcome {
  std::u16string text;  // on a console
  std::u16string box;   // where there is none
  bool succeeded;
};

int Tell(const Outcome& outcome, bool quiet) {
  if (!Print(outcome.text) && !quiet) {
    const std::u16string title(texts::kProgram);
    const UINT icon = outcome.succeeded ? MB_ICONINFORMATION : MB_ICONERROR;
    MessageBoxW(nullptr, win32::Wide(outcome.box), win32::Wide(title), icon | MB_SETFOREGROUND);
  }
  return outcome.succeeded ? 0 : 1;
}

Outcome Written(std::u16string_view done, std::u16string_view box,
                const std::expected<void, RegistryError>& result) {
  if (result) return {std::u16string(done).append(kCrLf), std::u16string(box), true};
  const auto& error = result.error();
  std::u16string text =
      error.root == RegistryRoot::kLocalMachine ? u"HKEY_LOCAL_MACHINE\\" : u"HKEY_CURRENT_USER\\";
  text.append(error.key).append(u": error ").append(NumberText(error.code));
  if (error.code == ERROR_ACCESS_DENIED) text.append(u" (run as administrator)");
  std::u16string refused(texts::kRegistryRefused);
  refused.append(kCrLf).append(text);
  return {text.append(kCrLf), std::move(refused), false};
}

FileKind KindOf(std::u16string_view path) {
  const DWORD attributes = GetFileAttributesW(win32::WideString(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return FileKind::kMissing;
  return attributes & FILE_ATTRIBUTE_DIRECTORY ? FileKind::kFolder : FileKind::kFile;
}

Outcome Diagnose(const Registry& registry, const ServerIdentity& server,
                 const ServerIdentity* vba) {
  const DoctorFacts facts{win32::ProgramPath(), KindOf};
  const auto findings = ExamineRegistration(registry, server, facts);
  std::vector<Finding> of_vba;
  if (vba != nullptr) of_vba = ExamineVbaRegistration(registry, *vba, facts);
  const auto report = DoctorReport(findings, of_vba);
  return {report, report, CanBeLoaded(findings) && CanBeLoaded(of_vba)};
}

bool IsWindowsOf64Bits() {
  BOOL emulated = FALSE;
  return sizeof(void*) == 8 || (IsWow64Process(GetCurrentProcess(), &emulated) && emulated);
}

// The DLLs beside the program that an editor here can load.
VbaDlls FindVbaDlls() {
  const auto program = win32::ProgramPath();
  const auto folder = program.substr(0, program.find_last_of(u'\\') + 1);
  VbaDlls dlls;
  for (const auto& editors : kVbaEditors) {
    if (editors.view == RegistryView::k64Bit && !IsWindowsOf64Bits()) continue;
    auto path = folder + std::u16string(editors.file);
    if (KindOf(path) == FileKind::kFile) dlls.*editors.dll = std::move(path);
  }
  return dlls;
}

Outcome RegisterForVba(Registry& registry, const ServerIdentity& server,
                       const ServerIdentity& add_in, ServerLog log) {
  const auto dlls = FindVbaDlls();
  if (dlls.narrow.empty() && dlls.wide.empty()) {
    return {u"DeclariumVba32.dll, DeclariumVba64.dll: not beside Declarium.exe\r\n",
            std::u16string(texts::kNoVbaDlls), false};
  }
  auto written = RegisterServerClass(registry, server, win32::ProgramPath(), log);
  if (written) written = RegisterVba(registry, add_in, dlls);
  return Written(u"registered for VBA editors", texts::kRegisteredForVba, written);
}

std::expected<void, RegistryError> Unregister(Registry& registry, const ServerIdentity& server,
                                              const ServerIdentity* vba, RegistrationScope scope) {
  const auto result = UnregisterServer(registry, server, scope);
  if (vba == nullptr || scope != RegistrationScope::kUser) return result;
  const auto of_vba = UnregisterVba(registry, *vba);
  return result ? of_vba : result;
}

Outcome Run(const ServerSwitches& switches, const ServerIdentity& server,
            const ServerIdentity* vba) {
  win32::SystemRegistry registry;
  const auto log = switches.log ? ServerLog::kOn : ServerLog::kOff;
  switch (switches.task) {
    case ServerTask::kRegister:
      return Written(u"registered", texts::kRegistered,
                     RegisterServer(registry, server, win32::ProgramPath(), switches.scope, log));
    case ServerTask::kRegisterVba:
      if (vba != nullptr) return RegisterForVba(registry, server, *vba, log);
      break;
    case ServerTask::kUnregister:
      return Written(u"unregistered", texts::kUnregistered,
                     Unregister(registry, server, vba, switches.scope));
    case ServerTask::kDoctor:
      return Diagnose(registry, server, vba);
    case ServerTask::kHelp:
    case ServerTask::kNone:
    case ServerTask::kServe:
      break;
  }
  return {SwitchHelp(), SwitchHelp(), true};
}

}  // namespace

int RunServerTask(const ServerSwitches& switches, const ServerIdentity& server,
                  const ServerIdentity* vba) {
  return Tell(Run(switches, server, vba), switches.quiet);
}

}  // namespace declarium::com
