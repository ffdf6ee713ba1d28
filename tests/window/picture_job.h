// What a program that does a job for pictures reports to its caller (scripts/picture-job): lines of
// text, and requests for a picture.
#pragma once

#include <string>
#include <windows.h>

namespace declarium::window_driver {

// Prints a line at once.
void Say(const std::string& line);

// Asks for a picture of the window with that title, or of the whole screen for "*", by the line
// "screenshot NAME TITLE", and waits for a line on the input: the picture is taken then. The window
// is to be in front of the others.
void TakePicture(const std::string& name, const std::string& title);
void TakePicture(const std::string& name, HWND window);

}  // namespace declarium::window_driver
