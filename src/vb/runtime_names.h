// The names that every program has without declaring them: those of the runtime, of the library of
// forms and controls, and of OLE automation, which every project refers to.
#pragma once

#include <string_view>

namespace declarium::vb {

// Whether it is a function, a statement, an object or a constant: MsgBox, Timer, App, and every
// vbOKOnly. In any case.
[[nodiscard]] bool IsRuntimeValue(std::u16string_view name);
// Whether it is a type or a class: StdFont, Collection, OLE_COLOR. In any case.
[[nodiscard]] bool IsRuntimeType(std::u16string_view name);
// Whether code of a form, a control, a document, a property page or a class may mean a member of
// its own by it: Caption, Left, Refresh. In any case.
[[nodiscard]] bool IsMemberOfDesigner(std::u16string_view name);

}  // namespace declarium::vb
