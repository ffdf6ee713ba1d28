// The main function of a program that does a job in Declarium.exe from outside.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace declarium::window_driver {

// Does the job with the two operands of the command line, Declarium.exe's path and another, while
// the user's settings are put away. Returns the exit status: 0 when every step did what it should,
// 1 when one threw, which is reported on the error output after `name`, 2 when the operands are not
// two, which `usage` names.
int RunJob(const std::string& name, const std::string& usage,
           const std::function<void(const std::filesystem::path& program,
                                    const std::u16string& operand)>& job);

}  // namespace declarium::window_driver
