#include "window/job.h"

#include <exception>
#include <iostream>

#include "win32/program.h"
#include "window/driven_main_window.h"

namespace declarium::window_driver {

int RunJob(const std::string& name, const std::string& usage,
           const std::function<void(const std::filesystem::path& program,
                                    const std::u16string& operand)>& job) {
  const auto operands = win32::ProgramArguments();
  if (operands.size() != 2) {
    std::cerr << "usage: " << name << ' ' << usage << '\n';
    return 2;
  }
  try {
    const SettingsPutAway settings;
    job(operands[0], operands[1]);
  } catch (const std::exception& failure) {
    std::cerr << name << ": " << failure.what() << std::endl;
    return 1;
  }
  return 0;
}

}  // namespace declarium::window_driver
