#include <memory>
#include <windows.h>

#include "cli/arguments.h"

#include <shellapi.h>

#include "text/text.h"

namespace declarium::cli {

// The arguments of main are in the system's code page, so the command line is taken apart anew.
std::vector<std::string> CommandLineArguments(int, char**) {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> all(
      ::CommandLineToArgvW(::GetCommandLineW(), &count), ::LocalFree);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) {
    const std::wstring_view argument = all.get()[i];
    arguments.push_back(ToUtf8(std::u16string(argument.begin(), argument.end())));
  }
  return arguments;
}

}  // namespace declarium::cli
