#include "host/com/start_limit.h"

namespace declarium::com {

StartLimit::StartLimit(HWND window, ServerProcess& process, std::chrono::milliseconds limit)
    : window_(window), process_(process) {
  // The timer's number is the object, for its procedure.
  SetTimer(window_, reinterpret_cast<UINT_PTR>(this), static_cast<UINT>(limit.count()), Passed);
}

StartLimit::~StartLimit() {
  KillTimer(window_, reinterpret_cast<UINT_PTR>(this));
}

void CALLBACK StartLimit::Passed(HWND window, UINT, UINT_PTR self, DWORD) noexcept {
  KillTimer(window, self);
  // The last hold ends the process, so one that is taken and given back ends an unused one.
  const ServerHold hold(reinterpret_cast<StartLimit*>(self)->process_);
}

}  // namespace declarium::com
