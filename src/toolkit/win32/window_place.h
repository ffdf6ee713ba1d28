// Where a window stands, how large it is and how it is shown. All numbers are physical pixels of
// the screen.
#pragma once

#include "toolkit/form.h"
#include "toolkit/form_definition.h"
#include "win32/system.h"

namespace declarium::win32 {

[[nodiscard]] RECT WindowRect(HWND window);
[[nodiscard]] Size InnerSize(HWND window);
void SetOuterSize(HWND window, int width, int height);

// Moves a window that is to appear first: to the middle of `owner` or of its screen, as `start`
// says, and onto the screen in any case. `owner` is nullptr when there is none to be seen.
void ChoosePlace(HWND window, StartPosition start, HWND owner);

// How the window is shown now, visible or not.
[[nodiscard]] ShowCommand ShowCommandOf(HWND window);
// The place of the window when it is neither minimized nor maximized.
[[nodiscard]] RECT NormalPlace(HWND window);
// Sets it, on a screen that exists, and shows the window by `command` of ShowWindow.
void SetNormalPlace(HWND window, const Placement& placement, UINT command);

void SetTopmost(HWND window);
// In front of the windows of other programs, without staying there.
void BringToTop(HWND window);

}  // namespace declarium::win32
