// The system's headers, in the one order that they compile in.
#pragma once

// clang-format off
#include <windows.h>
#include <windowsx.h>
#include <commctrl.h>
#include <commdlg.h>
#include <richedit.h>
#include <ole2.h>
#include <oleacc.h>
// clang-format on
