// What the object model of a VBA editor has in the place of the IDE's, or beside it.
#pragma once

#include <memory>
#include <string>

#include "vbhost/ide.h"

namespace declarium::vbhost {

// The bars of the editor: its menu of add-ins hangs in the menu bar and is not found by name.
void AddVbaBars(Ide& ide);

// A project's name, mode and protection.
void AddVbaProjectMembers(ModelObject& object, const std::shared_ptr<Project>& project);

// Fails as the editor does when the components of a locked project are asked for.
[[nodiscard]] HRESULT CheckVbaUnlocked(const Project& project);

// A button's picture and mask, and its own click event.
void AddVbaButtonMembers(ModelObject& object, const std::shared_ptr<Control>& control);

// Before a change of a module. In a project that does not stand in design mode the editor asks
// whether to end the program; here the answer is no.
[[nodiscard]] HRESULT CheckVbaChange(Ide& ide, const Component& component);

// As the editor keeps it: lines that are too long are cut.
[[nodiscard]] std::u16string CutAsVba(const std::u16string& text);

// The click event of the button itself.
HRESULT FireVbaClick(const std::shared_ptr<Control>& control, const ComPtr<IDispatch>& object);

}  // namespace declarium::vbhost
