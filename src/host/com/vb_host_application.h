// The host's real object model behind the interfaces of host_object_model.h.
#pragma once

#include <memory>
#include <windows.h>
#include <oaidl.h>

#include "host/com/automation.h"
#include "host/host_object_model.h"
#include "toolkit/boundary.h"

namespace declarium::com {

// `application` is the object that the host passes to OnConnection.
[[nodiscard]] std::unique_ptr<HostApplication> MakeHostApplication(ComPtr<IDispatch> application,
                                                                   Boundary& boundary);

[[nodiscard]] HostResult<HWND> HostMainWindow(const ComPtr<IDispatch>& application);

}  // namespace declarium::com
