// The end of a server that was started for a host and then met none.
#pragma once

#include <chrono>
#include <windows.h>

#include "host/com/server_process.h"

namespace declarium::com {

// A host that starts the program asks for an object at once; one that died meanwhile never does.
inline constexpr std::chrono::milliseconds kStartLimit{60000};

class StartLimit {
 public:
  // Ends `process` after `limit` unless something holds it then. `window` belongs to the calling
  // thread, which must handle messages; both outlive the limit.
  StartLimit(HWND window, ServerProcess& process, std::chrono::milliseconds limit = kStartLimit);
  StartLimit(const StartLimit&) = delete;
  StartLimit& operator=(const StartLimit&) = delete;
  ~StartLimit();

 private:
  static void CALLBACK Passed(HWND window, UINT message, UINT_PTR self, DWORD time) noexcept;

  HWND window_;
  ServerProcess& process_;
};

}  // namespace declarium::com
