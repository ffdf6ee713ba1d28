// Starts of the program and of the program with the list box.
//
// A start asks Wine's server about 4 400 times (5 400 before windows were made in place and
// tooltips late), the bare program 2 000 times, and each waits for the answer. Where the server
// runs on another core, which sleeps, waking that core takes several times as long as the answer:
// the same start takes 95 ms on one core and 246 to 279 ms on two. Of what the start asks beyond
// the bare program, a fifth is for the three combo boxes, whose lists are windows of the X server,
// a sixth for the two list views, and a seventh each for the borders that the controls paint when
// the window is shown and for the splash window.
#include <optional>
#include <stdexcept>
#include <string>

#include "bench/benchmark_files.h"
#include "bench/generated_library.h"
#include "bench/window/bare_program.h"
#include "bench/window/driven_declarium.h"
#include "bench/window/measures.h"
#include "library/file_format.h"
#include "library/file_saver.h"
#include "library/library_file.h"

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

// The file of a library that holds nothing but 30 000 constants, so that all of it is shown.
std::filesystem::path ConstantsAlone(const std::filesystem::path& folder) {
  const auto path = folder / "constants-30000.api";
  if (exists(path)) return path;
  const auto mixed = GenerateLibrary(2 * kItems);  // of which six in ten are constants
  Library library;
  library.SetTitle(u"Constants");
  KindLists constants;
  for (std::size_t i = 0; i < kItems; ++i) {
    constants.names.Add(mixed[Kind::kConst].names[i]);
    constants.items.Add(mixed[Kind::kConst].items[i]);
  }
  library.SetItems(Kind::kConst, std::move(constants));
  if (const auto saved = WriteWholeFile(path, LibraryBytes(library)); !saved) {
    throw std::runtime_error(saved.error().Message());
  }
  return path;
}

void Measure(const std::filesystem::path& folder, const std::filesystem::path& library, int rounds,
             BarsTable& table) {
  const auto program = folder / "start" / "Declarium.exe";
  const auto names = LoadLibraryFile(library).value()[Kind::kConst].names;
  WriteNames(folder / "constants.txt", names);
  Times figure, floor;
  for (int round = 0; round <= rounds; ++round) {
    const double with_library = DeclariumStart(program, library);
    const double bare = BareStart(folder / "constants.txt");
    if (round == 0) continue;  // the first start reads the programs from disk
    figure.push_back(with_library);
    floor.push_back(bare);
  }
  table.Ratio("process start to window shown, 30 000 items of which " +
                  std::to_string(names.size()) + " are listed / bare list box of the same names",
              figure, floor, 2);
}

}  // namespace

void MeasureStart(const std::filesystem::path& folder, int rounds, BarsTable& table) {
  (void)PutProgramInto(folder / "start");
  SetStartingKind(Kind::kConst);
  Measure(folder, BenchmarkFiles(folder).Library(kItems), rounds, table);
  Measure(folder, ConstantsAlone(folder), rounds, table);
}

}  // namespace declarium::bench
