// What the program and its add-in in a VBA editor say to each other, across two processes whose
// bitness may differ. Both have objects that are called by Invoke with texts and numbers: that
// crosses without a type library, and pictures and events, which do not cross, stay in the editor.
//
// Projects and components are numbers from 1 on, 0 for none; one component has one number for as
// long as somebody has a share of it. Each call that gives a number gives a share, which GiveBack
// ends.
#pragma once

#include "host/com/host_calls.h"

namespace declarium::com::editor {

// Of the program's class, beside the entries of an add-in; OnDisconnection ends what begins here.
inline constexpr HostMember kConnectEditor{100, L"ConnectEditor"};  // the editor's object
// Returns before the window is shown.
inline constexpr HostMember kShowWindow{101, L"ShowWindow"};

// Of the editor's object.
inline constexpr HostMember kWindow{1, L"Window"};  // the handle of the editor's main window
// Another number whenever another component is the selected one; gives no share.
inline constexpr HostMember kSelection{2, L"Selection"};
inline constexpr HostMember kActiveComponent{3, L"ActiveComponent"};
inline constexpr HostMember kActiveProject{4, L"ActiveProject"};
inline constexpr HostMember kGiveBack{5, L"GiveBack"};  // number
inline constexpr HostMember kCountOfProjects{6, L"CountOfProjects"};

inline constexpr HostMember kProjectName{10, L"ProjectName"};              // project
inline constexpr HostMember kCountOfComponents{11, L"CountOfComponents"};  // project
inline constexpr HostMember kComponentAt{12, L"ComponentAt"};  // project, position from 1 on

inline constexpr HostMember kComponentName{20, L"ComponentName"};        // component
inline constexpr HostMember kComponentType{21, L"ComponentType"};        // component
inline constexpr HostMember kComponentProject{22, L"ComponentProject"};  // component
inline constexpr HostMember kHasCode{23, L"HasCode"};                    // component; 0 or 1

// Of a component's code; line numbers are 1-based. A locked project refuses all of them with
// kProjectIsLocked, and one that does not stand in design mode the last three with kProgramRuns.
inline constexpr HostMember kCountOfDeclarationLines{30, L"CountOfDeclarationLines"};  // component
inline constexpr HostMember kCountOfLines{31, L"CountOfLines"};                        // component
inline constexpr HostMember kLines{32, L"Lines"};              // component, first, count
inline constexpr HostMember kInsertLines{33, L"InsertLines"};  // component, line, text
inline constexpr HostMember kDeleteLines{34, L"DeleteLines"};  // component, first, count
inline constexpr HostMember kReplaceLine{35, L"ReplaceLine"};  // component, line, text

}  // namespace declarium::com::editor
