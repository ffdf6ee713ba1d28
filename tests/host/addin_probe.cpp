// The add-in without its windows: the real connection over a main window that only writes down what
// is asked of it. Serves the tests of the connection.
//
// The log is the file that the environment variable DECLARIUM_PROBE_LOG names, one event per line.
// The text that "insert" inserts, and the answer to its question, come from the files
// LOG.text and LOG.answer ("yes" or "no"); a file LOG.stay makes the main window answer that it may
// stay, LOG.noload that it cannot be loaded. With a file LOG.read the active module and its project
// are read instead, and with LOG.edit that text is inserted in front of the first line and behind
// the last. LOG.process gets the id of the process.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>
#include <windows.h>

#include "host/code_reading.h"
#include "host/com/connect.h"
#include "host/com/host_calls.h"
#include "host/com/server_process.h"
#include "host/com/server_tasks.h"
#include "host/com/windows_face_clipboard.h"
#include "host/host_sessions.h"
#include "host/line_edits.h"
#include "host/server_switches.h"
#include "text/text.h"
#include "win32/program.h"

namespace declarium {
namespace {

// Its own identity, so that the tests leave a registered Declarium alone.
constexpr ServerIdentity kProbe = {u"{7D0E3F60-6F0B-4C0D-8C3C-3A0F5B1F9A52}", u"Declarium.Probe",
                                   u"Declarium probe", u"The add-in's connection under test"};
constexpr CLSID kProbeClass = {
    0x7D0E3F60, 0x6F0B, 0x4C0D, {0x8C, 0x3C, 0x3A, 0x0F, 0x5B, 0x1F, 0x9A, 0x52}};

std::wstring LogPath() {
  wchar_t path[MAX_PATH] = L"";
  GetEnvironmentVariableW(L"DECLARIUM_PROBE_LOG", path, MAX_PATH);
  return path;
}

class Log {
 public:
  void Write(std::string_view line) const {
    std::ofstream(std::filesystem::path(LogPath()), std::ios::app | std::ios::binary)
        << line << "\n";
  }
  void WriteProcess() const {
    std::ofstream(std::filesystem::path(LogPath() + L".process")) << GetCurrentProcessId();
  }
  [[nodiscard]] bool Has(const wchar_t* suffix) const {
    return std::filesystem::exists(LogPath() + suffix);
  }
  [[nodiscard]] std::string Read(const wchar_t* suffix) const {
    std::ifstream file(std::filesystem::path(LogPath() + suffix), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

// The main window: loaded, shown and bound to one host at a time.
class LoggingWindow final : public MainWindowLink {
 public:
  explicit LoggingWindow(com::ServerProcess& process) : process_(process) {}

  bool LoadMainWindow(HostConnection& connection) override {
    if (log_.Has(L".noload")) return false;
    if (!loaded_) log_.Write("load");
    loaded_ = true;
    if (!connection_ || !hold_) connection_ = &connection;
    return true;
  }
  void ShowMainWindow(HostConnection& connection) override {
    connection_ = &connection;
    log_.Write(hold_ ? "front" : "show");
    if (!hold_) hold_ = std::make_unique<com::ServerHold>(process_);
    if (log_.Has(L".read")) {
      Read();
    } else if (log_.Has(L".text")) {
      Insert();
    }
  }
  void ForgetConnection(HostConnection& connection, HostConnection* successor) override {
    if (connection_ == &connection) connection_ = successor;
    log_.Write(successor ? "handover" : "forget");
  }
  bool MayStay() override { return loaded_ && log_.Has(L".stay"); }
  void UnloadAll() override {
    log_.Write("unload");
    loaded_ = false;
    hold_.reset();
  }
  void ActiveCodeModuleChanged(HostConnection& connection) override {
    log_.Write(connection.HasActiveCodeModule() ? "module" : "no module");
  }
  void ShowFailure(HostConnection&, std::u16string_view text) override {
    log_.Write("box " + ToUtf8(text.substr(0, text.find(u'\r'))));
  }
  void CloseBoxes(HostConnection&) override { log_.Write("boxes close"); }

  // The 100 ms timer of the main window.
  void Check() {
    if (connection_) connection_->CheckActiveCodeModule();
  }

 private:
  void Read() {
    const auto module = connection_->ActiveModule();
    if (!module) return log_.Write("no module to read");
    const auto read = ReadModule(module);
    log_.Write(read ? "read " + ToUtf8(read->name) : "not read");
    if (!read) return;
    if (log_.Has(L".edit")) return Edit(*read);
    auto project = read->component->Project();
    if (!project) return log_.Write("no project");
    ProjectReading reading(*std::move(project), &*read);
    auto going_on = reading.Begin();
    while (going_on && !reading.IsAtEnd()) going_on = reading.ReadNext();
    std::string modules;
    for (const auto& code : reading.Modules()) {
      modules += " " + ToUtf8(code.name) + "=" + ToUtf8(code.text);
    }
    log_.Write((going_on ? "whole" : "part") + modules + " without " +
               std::to_string(reading.Unread().size()));
  }

  void Edit(const ReadCode& read) {
    const auto text = FromUtf8(log_.Read(L".edit"));
    const int end = read.module->CountOfLines(BusyHost::kWaitFor).value_or(0) + 1;
    const auto report = ApplyEdits(*read.module, read.text,
                                   {{.line = 1, .text = text}, {.line = end, .text = text}});
    static constexpr const char* kNames[] = {"done", "changed", "refused", "partly", "unknown"};
    log_.Write(std::string("edit ") + kNames[static_cast<int>(report.outcome)]);
  }

  void Insert() {
    const auto outcome = connection_->Insert(
        [this](std::u16string_view question) {
          log_.Write("ask " + ToUtf8(question));
          return log_.Read(L".answer") == "yes";
        },
        [this] { return FromUtf8(log_.Read(L".text")); });
    if (!outcome) {
      log_.Write("insert failed");
    } else {
      static constexpr const char* kNames[] = {"insert without module", "insert declined",
                                               "inserted"};
      log_.Write(kNames[static_cast<int>(*outcome)]);
    }
  }

  Log log_;
  com::ServerProcess& process_;
  HostConnection* connection_ = nullptr;
  bool loaded_ = false;
  std::unique_ptr<com::ServerHold> hold_;
};

int Serve() {
  Log().WriteProcess();
  const com::ComApartment apartment;
  const com::BusyHostFilter filter;
  Boundary boundary;
  com::PostedCalls posted_calls(boundary);
  com::ServerProcess process([] { PostQuitMessage(0); });
  LoggingWindow window(process);
  com::WindowsFaceClipboard clipboard(posted_calls.Window());
  HostSessions sessions(clipboard, window,
                        [&](std::function<void()> call) { posted_calls.Post(std::move(call)); });
  com::ConnectContext context{sessions, posted_calls, process};
  const auto factory = com::MakeConnectFactory(context);
  if (FAILED(process.Offer(kProbeClass, *factory))) return 1;
  SetTimer(posted_calls.Window(), 1, 100, nullptr);
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message == WM_TIMER && message.hwnd == posted_calls.Window()) window.Check();
    DispatchMessageW(&message);
  }
  Log().Write("end");
  return 0;
}

int Run() {
  const auto switches = ParseServerSwitches(win32::ProgramArguments());
  return switches.task == ServerTask::kServe ? Serve() : com::RunServerTask(switches, kProbe);
}

}  // namespace
}  // namespace declarium

int main() {
  return declarium::Run();
}
