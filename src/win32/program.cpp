#include "win32/program.h"

#include <windows.h>
#include <shellapi.h>

#include "win32/unique_handle.h"
#include "win32/wide.h"

namespace declarium::win32 {

std::u16string ProgramPath() {
  std::u16string path(MAX_PATH, u'\0');
  for (;;) {
    const auto room = static_cast<DWORD>(path.size());
    const DWORD length = GetModuleFileNameW(nullptr, WideBuffer(path), room);
    if (length < room) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

std::vector<std::u16string> ProgramArguments() {
  int count = 0;
  const UniqueHandle<wchar_t**, LocalFree> words(CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::u16string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(FromWide(words.Get()[i]));
  return arguments;
}

}  // namespace declarium::win32
