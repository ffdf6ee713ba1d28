// The ids of the VBA editors' object model beyond those that they share with the IDE
// (host/com/vb_members.h).
#pragma once

#include "host/com/host_calls.h"

namespace declarium::vba {

using com::HostMember;

// VBProject; its name has another id than in the IDE
inline constexpr HostMember kProjectName{121, L"Name"};
inline constexpr HostMember kMode{119, L"Mode"};
inline constexpr std::int32_t kDesignMode = 2;  // 0 runs, 1 is interrupted
inline constexpr HostMember kProtection{131, L"Protection"};
inline constexpr std::int32_t kNotProtected = 0;

// CommandBars, CommandBar, CommandBarControls, CommandBarPopup, CommandBarButton
inline constexpr HostMember kFindControl{0x60030008, L"FindControl"};  // Type, Id, Tag, Visible
inline constexpr HostMember kBarName{0x6004000E, L"Name"};             // the same in every language
inline constexpr HostMember kCountOfControls{0x60030001, L"Count"};
inline constexpr HostMember kControlType{0x60040028, L"Type"};
inline constexpr std::int32_t kControlPopup = 10;
inline constexpr HostMember kPopupBar{0x60050000, L"CommandBar"};
inline constexpr HostMember kTag{0x60040023, L"Tag"};
inline constexpr HostMember kPicture{0x6005000E, L"Picture"};
inline constexpr HostMember kMask{0x60050010, L"Mask"};

// The events of a button itself
inline constexpr IID kButtonEventSet = {0x000C0351, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

}  // namespace declarium::vba
