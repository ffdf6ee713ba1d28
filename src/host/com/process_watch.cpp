#include "host/com/process_watch.h"

#include <utility>

#include "toolkit/boundary.h"

namespace declarium::com {
namespace {

constexpr int kAttempts = 100;
constexpr DWORD kPause = 50;  // milliseconds

}  // namespace

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

// The pool's thread tells nobody of a failure, which can only be that memory has run out, and the
// signal comes once: so it tries until there is some again.
void CALLBACK ProcessWatch::Signalled(void* self, BOOLEAN) noexcept {
  Boundary boundary;
  const auto& ended = static_cast<ProcessWatch*>(self)->ended_;
  for (int i = 0; i < kAttempts && !boundary.Run(ended); ++i) Sleep(kPause);
}

}  // namespace declarium::com
