// This process's program: where it stands and how it was called.
#pragma once

#include <string>
#include <vector>

namespace declarium::win32 {

// The full path of the program's file.
[[nodiscard]] std::u16string ProgramPath();

// The words of the command line, without the program's own name. The arguments of `main` have lost
// what the system's code page lacks.
[[nodiscard]] std::vector<std::u16string> ProgramArguments();

}  // namespace declarium::win32
