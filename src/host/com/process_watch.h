// Noticing the end of another process.
#pragma once

#include <functional>
#include <memory>
#include <windows.h>

#include "win32/unique_handle.h"

namespace declarium::com {

class ProcessWatch {
 public:
  // Calls `ended` once, on a thread of the system's pool, when the process that owns `window` ends.
  // Watches nothing when the window or its process cannot be opened.
  ProcessWatch(HWND window, std::function<void()> ended);
  ProcessWatch(const ProcessWatch&) = delete;
  ProcessWatch& operator=(const ProcessWatch&) = delete;
  // Waits for a call of `ended` that is running.
  ~ProcessWatch();

  [[nodiscard]] bool IsWatching() const noexcept { return wait_ != nullptr; }

 private:
  static void CALLBACK Signalled(void* self, BOOLEAN) noexcept;

  std::function<void()> ended_;
  win32::UniqueKernelObject process_;
  HANDLE wait_ = nullptr;
};

}  // namespace declarium::com
