// Stands in for the browser: leaves beside the page that it is asked to show a file of the page's
// name with ".shown" behind it.
#include <filesystem>
#include <fstream>
#include <windows.h>

#include "win32/program.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  const auto words = declarium::win32::ProgramArguments();
  if (words.size() != 1) return 2;
  std::ofstream(std::filesystem::path(words[0]).concat(".shown")) << "shown";
  return 0;
}
