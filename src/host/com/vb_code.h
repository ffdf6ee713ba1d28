// The code that the host holds, over its real object model: projects, components, modules, panes.
#pragma once

#include <memory>
#include <optional>

#include "host/com/host_calls.h"
#include "host/host_object_model.h"

namespace declarium::com {

// The identity of an object: proxies of one object compare equal by it.
[[nodiscard]] IUnknown* IdentityOf(const HostObject& object);

// What the host says as a component's type; none for what holds no code.
[[nodiscard]] std::optional<declarium::vb::ModuleKind> KindOfComponent(int type) noexcept;

// Each is null for Nothing.
[[nodiscard]] std::unique_ptr<CodeModule> MakeCodeModule(HostObject module);
[[nodiscard]] std::unique_ptr<CodePane> MakeCodePane(HostObject pane);
[[nodiscard]] std::unique_ptr<HostProject> MakeProject(HostObject project);

// The code of `component`; null for a component without code and for Nothing.
[[nodiscard]] std::unique_ptr<CodeModule> ModuleOf(const HostObject& component);

}  // namespace declarium::com
