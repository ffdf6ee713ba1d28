// The pointer and the keyboard themselves, for what a window asks the system about them: which keys
// are held, where the pointer is. What is in front gets them, so they are for one program at a
// time.
#pragma once

#include <initializer_list>
#include <windows.h>

namespace declarium::window_driver {

// Brings a window to the front and waits until it is there.
void BringToFront(HWND window);

// Presses the keys in turn and releases them backwards: {VK_CONTROL, 'S'}.
void PressTogether(std::initializer_list<int> keys);

// Places in a window's inner area, in physical pixels.
void MovePointer(HWND window, POINT at);
void HoldLeftButton();
// Waits until a press has made the window receive the pointer wherever it goes.
void WaitForCapture(HWND window);
void ReleaseLeftButton();
// Presses at one place and releases at another, which may be in another window.
void Drag(HWND from, POINT start, HWND to, POINT end);

}  // namespace declarium::window_driver
