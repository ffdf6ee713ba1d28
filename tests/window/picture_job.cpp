#include "window/picture_job.h"

#include <iostream>

namespace declarium::window_driver {

void Say(const std::string& line) {
  std::cout << line << std::endl;
}

void TakePicture(const std::string& name, const std::string& title) {
  Say("screenshot " + name + " " + title);
  std::string answer;
  std::getline(std::cin, answer);
}

}  // namespace declarium::window_driver
