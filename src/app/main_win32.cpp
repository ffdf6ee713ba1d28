// Declarium.exe: a window of its own when a user starts it, the add-in when the host does.
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <windows.h>

#include "app/main_window.h"
#include "app/named_library.h"
#include "app/program_windows.h"
#include "host/call_log.h"
#include "host/com/connect.h"
#include "host/com/host_calls.h"
#include "host/com/posted_calls.h"
#include "host/com/server_process.h"
#include "host/com/server_tasks.h"
#include "host/com/start_limit.h"
#include "host/com/windows_face_clipboard.h"
#include "host/host_sessions.h"
#include "host/server_switches.h"
#include "library/history_folder.h"
#include "shell/registry_store.h"
#include "shell/ui/failure_report.h"
#include "shell/ui/splash.h"
#include "text/user_texts.h"
#include "toolkit/win32/toolkit.h"
#include "win32/program.h"
#include "win32/system_registry.h"
#include "win32/wide.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

constexpr CLSID kConnectClass = {
    0xE935511A, 0x4C2D, 0x4094, {0x9A, 0x51, 0xD7, 0xCF, 0x13, 0x73, 0xCE, 0x55}};

fs::path ProgramFolder() {
  return fs::path(win32::ProgramPath()).parent_path();
}

int RunStandalone(const fs::path& library) {
  const com::ComApartment apartment;
  win32::Win32Toolkit toolkit;
  toolkit.SetApplicationTitle(texts::kProgram);
  win32::SystemRegistry registry;
  RegistryStore store(registry);
  Splash splash(toolkit);
  splash.Show();
  std::optional<MainWindow> window;
  const FailureReport failures(toolkit, [&window] { return window && window->KeepUnsaved(); });
  window.emplace(toolkit, store,
                 MainWindowOptions{.folder = ProgramFolder(),
                                   .command_line = library,
                                   .host = {},
                                   .history = HistoryFolder()});
  // A window whose loading failed half-way is shown with what it has.
  const auto show = [&window] { window->ShowMainWindow(); };
  if (!toolkit.boundary.Run(show)) toolkit.boundary.Run(show);
  return toolkit.Run();
}

// The log of a server that is to write one.
std::optional<LogFile> OpenLog(bool wanted) {
  const char16_t* const kFolder = u"%LOCALAPPDATA%\\Declarium\\Log";
  std::optional<LogFile> log;
  if (wanted) {
    log.emplace(win32::SystemRegistry().Expand(kFolder), LogName(GetCurrentProcessId()));
  }
  return log;
}

int Serve(bool with_log) {
  auto log = OpenLog(with_log);
  const com::CallLogUse log_use(log ? &*log : nullptr);
  const com::ComApartment apartment;
  const com::BusyHostFilter filter;
  win32::Win32Toolkit toolkit;
  toolkit.SetApplicationTitle(texts::kProgram);
  win32::SystemRegistry registry;
  RegistryStore store(registry);
  com::PostedCalls posted_calls(toolkit.boundary);
  com::ServerProcess process([&toolkit] { toolkit.Quit(0); });
  ProgramWindows windows(
      toolkit, store, ProgramFolder(),
      [&process] { return std::make_shared<com::ServerHold>(process); }, HistoryFolder());
  const FailureReport failures(toolkit, [&windows] {
    com::WriteToCallLog("an unexpected failure");
    return windows.KeepUnsaved();
  });
  com::WindowsFaceClipboard clipboard(posted_calls.Window());
  HostSessions sessions(clipboard, windows, [&posted_calls](std::function<void()> call) {
    posted_calls.Post(std::move(call));
  });
  com::ConnectContext context{sessions, posted_calls, process};
  const auto factory = com::MakeConnectFactory(context);
  if (FAILED(process.Offer(kConnectClass, *factory))) return 1;
  const com::StartLimit start_limit(posted_calls.Window(), process);
  return toolkit.Run();
}

int Run() {
  const auto switches = ParseServerSwitches(win32::ProgramArguments());
  std::error_code ignored;
  const auto library = FindNamedLibrary(switches.rest, fs::current_path(ignored), ProgramFolder());
  fs::current_path(ProgramFolder(), ignored);
  switch (switches.task) {
    case ServerTask::kNone:
      return RunStandalone(library);
    case ServerTask::kServe:
      return Serve(switches.log);
    case ServerTask::kRegister:
    case ServerTask::kRegisterVba:
    case ServerTask::kUnregister:
    case ServerTask::kDoctor:
    case ServerTask::kHelp:
      break;
  }
  return com::RunServerTask(switches, kDeclariumServer, &kVbaAddIn);
}

}  // namespace
}  // namespace declarium

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  try {
    return declarium::Run();
  } catch (...) {
    const std::u16string text(declarium::texts::kNotStarted);
    const std::u16string title(declarium::texts::kProgram);
    MessageBoxW(nullptr, declarium::win32::Wide(text), declarium::win32::Wide(title), MB_ICONERROR);
    return 1;
  }
}
