#include "window/picture_job.h"

#include <iostream>

#include "text/text.h"
#include "window/window_driver.h"

namespace declarium::window_driver {

void Say(const std::string& line) {
  std::cout << line << std::endl;
}

void TakePicture(const std::string& name, const std::string& title) {
  Say("screenshot " + name + " " + title);
  std::string answer;
  std::getline(std::cin, answer);
}

void TakePicture(const std::string& name, HWND window) {
  TakePicture(name, ToUtf8(TextOf(window)));
}

}  // namespace declarium::window_driver
