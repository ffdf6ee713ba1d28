// What the bare list box and what measures it agree on (bare_list_box.cpp).
#pragma once

#include <windows.h>

namespace declarium::bench {

inline constexpr const wchar_t* kBareListBoxName = L"BareListBox";  // the property "Name"
inline constexpr UINT kEmpty = WM_APP;
inline constexpr UINT kFill = WM_APP + 1;  // answers how many names the list holds

}  // namespace declarium::bench
