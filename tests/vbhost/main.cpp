// A stand-in for the Visual Basic 6.0 IDE, driven by lines on standard input.
#include <cstdio>
#include <deque>
#include <iostream>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <windows.h>
#include <objbase.h>

#include "host/com/com_object.h"
#include "vbhost/commands.h"
#include "vbhost/ide_window.h"
#include "vbhost/kept_interfaces.h"
#include "vbhost/vba_face.h"

namespace declarium::vbhost {
namespace {

// Answers incoming calls as the call policy says. Outgoing calls are not retried.
class HostFilter final : public com::ComObject<IMessageFilter> {
 public:
  explicit HostFilter(CallPolicy& policy) : policy_(policy) {}
  STDMETHODIMP_(DWORD) HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override {
    return policy_.AnswerToIncomingCall();
  }
  STDMETHODIMP_(DWORD) RetryRejectedCall(HTASK, DWORD, DWORD) override {
    return static_cast<DWORD>(-1);
  }
  STDMETHODIMP_(DWORD) MessagePending(HTASK, DWORD, DWORD) override {
    return PENDINGMSG_WAITDEFPROCESS;
  }

 private:
  [[nodiscard]] void* Find(REFIID iid) noexcept override {
    const bool has = iid == IID_IUnknown || iid == IID_IMessageFilter;
    return has ? static_cast<IMessageFilter*>(this) : nullptr;
  }

  CallPolicy& policy_;
};

// Lines from the reading thread, run one after the other by the window's thread.
class LineQueue {
 public:
  void Push(std::string line) {
    const std::lock_guard lock(mutex_);
    lines_.push_back(std::move(line));
  }
  bool Pop(std::string& line) {
    const std::lock_guard lock(mutex_);
    if (lines_.empty()) return false;
    line = std::move(lines_.front());
    lines_.pop_front();
    return true;
  }

 private:
  std::mutex mutex_;
  std::deque<std::string> lines_;
};

// A command calls the add-in and waits; a line that arrives meanwhile runs afterwards.
class LineRunner {
 public:
  LineRunner(LineQueue& queue, Commands*& commands) : queue_(queue), commands_(commands) {}
  void RunAll() {
    if (running_) return;
    running_ = true;
    std::string line;
    while (queue_.Pop(line)) {
      const std::string answer = commands_->Run(line) + "\n";
      std::fputs(answer.c_str(), stdout);
      std::fflush(stdout);
    }
    running_ = false;
  }

 private:
  LineQueue& queue_;
  Commands*& commands_;
  bool running_ = false;
};

void AddIdeBars(Ide& ide) {
  for (const char16_t* name : {u"Standard", u"Add-Ins"}) {
    ide.bars.push_back(std::make_shared<Bar>());
    ide.bars.back()->name = name;
  }
}

void ReadLines(LineQueue& queue, HWND window) {
  std::string line;
  while (std::getline(std::cin, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    // Obeyed at once, also in the middle of a call.
    if (line == "die") TerminateProcess(GetCurrentProcess(), 3);
    queue.Push(line);
    PostMessageW(window, WM_APP, 0, 0);
  }
  // The driver is gone.
  TerminateProcess(GetCurrentProcess(), 4);
}

int Run(Face face) {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  KeepInterfacesInUse();
  Ide ide;
  ide.face = face;
  if (face == Face::kVbaEditor) {
    AddVbaBars(ide);
  } else {
    AddIdeBars(ide);
  }
  {
    ObjectModel model(ide);
    AddInLoader loader(model);
    LineQueue queue;
    Commands* commands_in_use = nullptr;
    LineRunner runner(queue, commands_in_use);
    IdeWindow window(
        ide, [&](const std::shared_ptr<Control>& control) { model.FireClick(control); },
        [&] { runner.RunAll(); });
    Commands commands(ide, model, loader, [] { PostQuitMessage(0); });
    commands_in_use = &commands;
    const auto filter = win32::ComPtr<IMessageFilter>::Attach(new HostFilter(ide.policy));
    CoRegisterMessageFilter(filter.Get(), nullptr);
    ShowWindow(window.handle(), SW_SHOWNOACTIVATE);
    std::thread(ReadLines, std::ref(queue), window.handle()).detach();
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    CoRegisterMessageFilter(nullptr, nullptr);
  }
  // The reading thread may still wait for a line.
  TerminateProcess(GetCurrentProcess(), 0);
  return 0;
}

}  // namespace
}  // namespace declarium::vbhost

// With the argument "vba" it has the face of a VBA editor.
int main(int count, char** arguments) {
  using declarium::vbhost::Face;
  const bool vba = count > 1 && std::string_view(arguments[1]) == "vba";
  return declarium::vbhost::Run(vba ? Face::kVbaEditor : Face::kIde);
}
