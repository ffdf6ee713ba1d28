// A VBA editor, as its add-in shows it by editor_interface.h, behind the interfaces of
// host_object_model.h.
#pragma once

#include <memory>
#include <windows.h>
#include <oaidl.h>

#include "host/com/automation.h"
#include "host/host_object_model.h"
#include "toolkit/boundary.h"

namespace declarium::com {

// `editor` is what the add-in passes to ConnectEditor. The boundary is not needed: no events come.
[[nodiscard]] std::unique_ptr<HostApplication> MakeEditorApplication(ComPtr<IDispatch> editor,
                                                                     Boundary& boundary);

[[nodiscard]] HostResult<HWND> EditorMainWindow(const ComPtr<IDispatch>& editor);

}  // namespace declarium::com
