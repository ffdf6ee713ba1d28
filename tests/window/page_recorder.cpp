// Stands in for the browser: leaves beside the page that it is asked to show a file of the page's
// name with ".shown" behind it.
#include <filesystem>
#include <fstream>
#include <windows.h>
#include <shellapi.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count != 2) return 2;
  std::ofstream(std::filesystem::path(words[1]).concat(".shown")) << "shown";
  return 0;
}
