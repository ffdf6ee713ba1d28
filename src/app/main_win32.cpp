// Declarium.exe: a window of its own when a user starts it, the add-in when the host does.
#include <filesystem>
#include <memory>
#include <string>
#include <vector>
#include <windows.h>

#include "app/main_window.h"
#include "app/program_windows.h"
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
#include "shell/ui/splash.h"
#include "text/user_texts.h"
#include "toolkit/win32/toolkit.h"
#include "win32/program.h"
#include "win32/system_registry.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

constexpr CLSID kConnectClass = {
    0xE935511A, 0x4C2D, 0x4094, {0x9A, 0x51, 0xD7, 0xCF, 0x13, 0x73, 0xCE, 0x55}};

fs::path ProgramFolder() {
  return fs::path(win32::ProgramPath()).parent_path();
}

// The library named on the command line, where a name with blanks may stand without quotes; seen
// from the folder in which the program was started.
fs::path LibraryToOpen(const std::vector<std::u16string>& words) {
  std::u16string name;
  for (const auto& word : words) name += (name.empty() ? u"" : u" ") + word;
  return name.empty() ? fs::path() : fs::absolute(name);
}

int RunStandalone(const fs::path& library) {
  const com::ComApartment apartment;
  win32::Win32Toolkit toolkit;
  toolkit.SetApplicationTitle(texts::kProgram);
  win32::SystemRegistry registry;
  RegistryStore store(registry);
  Splash splash(toolkit);
  splash.Show();
  MainWindow window(
      toolkit, store,
      {.folder = ProgramFolder(), .command_line = library, .host = {}, .history = HistoryFolder()});
  window.ShowMainWindow();
  return toolkit.Run();
}

int Serve() {
  const com::ComApartment apartment;
  const com::BusyHostFilter filter;
  win32::Win32Toolkit toolkit;
  toolkit.SetApplicationTitle(texts::kProgram);
  win32::SystemRegistry registry;
  RegistryStore store(registry);
  com::PostedCalls posted_calls;
  com::ServerProcess process([&toolkit] { toolkit.Quit(0); });
  ProgramWindows windows(
      toolkit, store, ProgramFolder(),
      [&process] { return std::make_shared<com::ServerHold>(process); }, HistoryFolder());
  com::WindowsFaceClipboard clipboard(posted_calls.window());
  HostSessions sessions(clipboard, windows, [&posted_calls](std::function<void()> call) {
    posted_calls.Post(std::move(call));
  });
  com::ConnectContext context{sessions, posted_calls, process};
  const auto factory = com::MakeConnectFactory(context);
  if (FAILED(process.Offer(kConnectClass, *factory))) return 1;
  const com::StartLimit start_limit(posted_calls.window(), process);
  return toolkit.Run();
}

int Run() {
  const auto switches = ParseServerSwitches(win32::ProgramArguments());
  const auto library = LibraryToOpen(switches.rest);
  std::error_code ignored;
  fs::current_path(ProgramFolder(), ignored);
  switch (switches.task) {
    case ServerTask::kNone:
      return RunStandalone(library);
    case ServerTask::kServe:
      return Serve();
    case ServerTask::kRegister:
    case ServerTask::kUnregister:
    case ServerTask::kDoctor:
      break;
  }
  return com::RunServerTask(switches, kDeclariumServer);
}

}  // namespace
}  // namespace declarium

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  return declarium::Run();
}
