#include "window/job.h"

#include <exception>
#include <iostream>
#include <windows.h>
#include <shellapi.h>

#include "window/driven_main_window.h"

namespace declarium::window_driver {

int RunJob(const std::string& name, const std::string& usage,
           const std::function<void(const std::filesystem::path& program,
                                    const std::u16string& operand)>& job) {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count != 3) {
    std::cerr << "usage: " << name << ' ' << usage << '\n';
    return 2;
  }
  try {
    const SettingsPutAway settings;
    const std::wstring operand = words[2];
    job(words[1], {operand.begin(), operand.end()});
  } catch (const std::exception& failure) {
    std::cerr << name << ": " << failure.what() << std::endl;
    return 1;
  }
  return 0;
}

}  // namespace declarium::window_driver
