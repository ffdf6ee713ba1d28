#include "host/com/process_watch.h"

#include <utility>

namespace declarium::com {

ProcessWatch::ProcessWatch(HWND window, std::function<void()> ended) : ended_(std::move(ended)) {
  DWORD id = 0;
  if (!window || !GetWindowThreadProcessId(window, &id)) return;
  process_.Reset(OpenProcess(SYNCHRONIZE, FALSE, id));
  if (!process_) return;
  RegisterWaitForSingleObject(&wait_, process_.Get(), Signalled, this, INFINITE,
                              WT_EXECUTEONLYONCE);
}

ProcessWatch::~ProcessWatch() {
  if (wait_) UnregisterWaitEx(wait_, INVALID_HANDLE_VALUE);
}

void CALLBACK ProcessWatch::Signalled(void* self, BOOLEAN) {
  static_cast<ProcessWatch*>(self)->ended_();
}

}  // namespace declarium::com
