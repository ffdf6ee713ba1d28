// Measures Declarium.exe's window from outside and prints the table of its bars.
//
//     window_bars.exe FOLDER [ROUNDS [start|lists|search|growth]]
//
// Its files go into FOLDER. The exit status is 1 when a bar fails.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

#include "bench/window/measures.h"
#include "window/driven_main_window.h"

int main(int argc, char** argv) {
  using namespace declarium::bench;
  if (argc < 2) return 2;
  const auto folder = std::filesystem::absolute(argv[1]);
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 9;
  const std::string only = argc > 3 ? argv[3] : "";
  const auto wanted = [&](const char* name) { return only.empty() || only == name; };
  BarsTable table;
  try {
    const declarium::window_driver::SettingsPutAway settings;
    if (wanted("start")) MeasureStart(folder, rounds, table);
    if (wanted("lists")) MeasureLists(folder, rounds, table);
    if (wanted("search")) MeasureSearch(folder, rounds, table);
    if (wanted("growth")) MeasureGrowth(folder, table);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    (void)table.Print();
    return 1;
  }
  return table.Print() ? 0 : 1;
}
