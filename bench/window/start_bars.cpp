#include <optional>

#include "bench/benchmark_files.h"
#include "bench/window/bare_program.h"
#include "bench/window/driven_declarium.h"
#include "bench/window/measures.h"
#include "database/database_file.h"

namespace declarium::bench {
namespace {

using namespace window_driver;

constexpr std::size_t kItems = 30'000;

// Milliseconds until the program with a library on its command line shows a window that answers.
double DeclariumStart(const std::filesystem::path& program, const std::filesystem::path& library) {
  std::optional<DrivenProgram> started;
  return MillisecondsOf([&] {
    started.emplace(program, L"\"" + library.wstring() + L"\"");
    HWND window = nullptr;
    WaitTightly("frmMain", [&] {
      Sleep(1);
      return (window = started->FindForm("frmMain")) != nullptr;
    });
    Ask(window, WM_NULL);
  });
}

double BareStart(const std::filesystem::path& names) {
  std::optional<BareProgram> started;
  return MillisecondsOf([&] { started.emplace(names); });
}

}  // namespace

void MeasureStart(const std::filesystem::path& folder, int rounds, BarsTable& table) {
  const auto program = PutProgramInto(folder / "start");
  const auto library = BenchmarkFiles(folder).Library(kItems);
  const auto names = folder / "constants.txt";
  WriteNames(names, LoadLibraryFile(library).value()[Kind::kConst].names);
  SetStartingKind(Kind::kConst);

  Times figure, floor;
  for (int round = 0; round <= rounds; ++round) {
    const double with_library = DeclariumStart(program, library);
    const double bare = BareStart(names);
    if (round == 0) continue;  // the first start reads the programs from disk
    figure.push_back(with_library);
    floor.push_back(bare);
  }
  table.Ratio("process start to window shown, 30 000 items / bare list box of the names shown",
              figure, floor, 2);
}

}  // namespace declarium::bench
