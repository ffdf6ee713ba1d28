// The ids of the host's object model that the add-in uses.
#pragma once

#include "host/com/host_calls.h"

namespace declarium::com::vb {

// VBE
inline constexpr HostMember kVBProjects{107, L"VBProjects"};
inline constexpr HostMember kCommandBars{108, L"CommandBars"};
inline constexpr HostMember kEvents{111, L"Events"};
inline constexpr HostMember kActiveVBProject{201, L"ActiveVBProject"};
inline constexpr HostMember kSelectedVBComponent{202, L"SelectedVBComponent"};
inline constexpr HostMember kMainWindow{204, L"MainWindow"};
inline constexpr HostMember kActiveCodePane{206, L"ActiveCodePane"};

// Window; hidden in the type library
inline constexpr HostMember kHWnd{120, L"HWnd"};

// Events
inline constexpr HostMember kVBProjectsEvents{200, L"VBProjectsEvents"};
inline constexpr HostMember kVBComponentsEvents{201, L"VBComponentsEvents"};
inline constexpr HostMember kCommandBarEvents{205, L"CommandBarEvents"};

// Collections
inline constexpr HostMember kItem{0, L"Item"};
inline constexpr HostMember kCount{10, L"Count"};  // of VBProjects and VBComponents
inline constexpr HostMember kProjectOfComponents{2, L"Parent"};

// VBProject
inline constexpr HostMember kProjectName{0, L"Name"};
inline constexpr HostMember kVBComponents{135, L"VBComponents"};

// VBComponent
inline constexpr HostMember kComponentName{48, L"Name"};
inline constexpr HostMember kCodeModule{50, L"CodeModule"};
inline constexpr HostMember kComponentType{51, L"Type"};
inline constexpr std::int32_t kStandardModule = 1;
inline constexpr std::int32_t kMSForm = 3;
inline constexpr std::int32_t kResourceFile = 4;
inline constexpr std::int32_t kVBForm = 5;
inline constexpr std::int32_t kVBMDIForm = 6;
inline constexpr std::int32_t kPropertyPage = 7;
inline constexpr std::int32_t kUserControl = 8;
inline constexpr std::int32_t kDocObject = 9;
inline constexpr std::int32_t kRelatedDocument = 10;
inline constexpr HostMember kCollection{54, L"Collection"};

// CodeModule
inline constexpr HostMember kParent{0x60020000, L"Parent"};
inline constexpr HostMember kLines{0x60020006, L"Lines"};
inline constexpr HostMember kCountOfLines{0x60020007, L"CountOfLines"};
inline constexpr HostMember kInsertLines{0x60020008, L"InsertLines"};
inline constexpr HostMember kDeleteLines{0x60020009, L"DeleteLines"};
inline constexpr HostMember kReplaceLine{0x6002000A, L"ReplaceLine"};
inline constexpr HostMember kCountOfDeclarationLines{0x6002000F, L"CountOfDeclarationLines"};

// CodePane
inline constexpr HostMember kGetSelection{0x60020003, L"GetSelection"};
inline constexpr HostMember kTopLine{0x60020005, L"TopLine"};
inline constexpr HostMember kCountOfVisibleLines{0x60020007, L"CountOfVisibleLines"};
inline constexpr HostMember kPaneCodeModule{0x60020008, L"CodeModule"};

// CommandBar, CommandBarControls, CommandBarControl, CommandBarButton
inline constexpr HostMember kControls{0x60040003, L"Controls"};
inline constexpr HostMember kAdd{0x60030000, L"Add"};  // Type, Id, Parameter, Before, Temporary
inline constexpr HostMember kCaption{0x60040003, L"Caption"};
inline constexpr HostMember kDelete{0x60040007, L"Delete"};
inline constexpr HostMember kTooltipText{0x60040025, L"TooltipText"};
inline constexpr HostMember kPasteFace{0x60050005, L"PasteFace"};
inline constexpr std::int32_t kControlButton = 1;

// Event sets and their events
inline constexpr IID kCommandBarClicks = {0x0002E198, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr DISPID kClick = 1;

inline constexpr IID kProjectsEventSet = {0x0002E190, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr DISPID kProjectAdded = 1;
inline constexpr DISPID kProjectRemoved = 2;
inline constexpr DISPID kProjectActivated = 4;

inline constexpr IID kComponentsEventSet = {0x0002E193, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr DISPID kComponentRemoved = 2;
inline constexpr DISPID kComponentSelected = 4;
inline constexpr DISPID kComponentActivated = 5;
inline constexpr DISPID kComponentReloaded = 6;

}  // namespace declarium::com::vb
