#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "bench/benchmark_files.h"
#include "bench/window/driven_declarium.h"
#include "bench/window/measures.h"
#include "library/file_format.h"
#include "library/file_saver.h"
#include "library/library_file.h"
#include "window/driven_lists.h"
#include "window/process_holdings.h"

namespace declarium::bench {
namespace {

using namespace window_driver;

constexpr std::size_t kItems = 3'000;
constexpr int kClicks = 1'000;
constexpr int kSwitches = 100;
constexpr int kDialogs = 100;
constexpr long long kNoise = 64;  // KB by which the heap's blocks differ from round to round

std::filesystem::path PutProgram(const std::filesystem::path& folder) {
  const auto program = PutProgramInto(folder / "growth");
  auto library = LoadLibraryFile(BenchmarkFiles(folder).Library(kItems)).value();
  for (const auto* title : {u"A", u"B"}) {
    library.SetTitle(title);
    const auto file = folder / "growth" / (std::u16string(title) + u".api");
    if (const auto saved = WriteWholeFile(file, LibraryBytes(library)); !saved) {
      throw std::runtime_error(saved.error().Message());
    }
  }
  return program;
}

void ClickItems(const DrivenDeclarium& program) {
  const HWND list = program.ListOf(Kind::kDeclare);
  const int rows = static_cast<int>(Ask(list, LB_GETCOUNT));
  if (rows == 0) throw std::runtime_error("no library is open");
  for (int click = 0; click < kClicks; ++click) {
    const int row = (click * 7) % rows;
    ClickRow(list, row);
    WaitTightly("the clicked row", [&] { return SelectedRow(list) == row; });
  }
}

void SwitchLibraries(const DrivenDeclarium& program) {
  for (int change = 0; change < kSwitches; ++change) program.ChooseLibrary((change + 1) % 2);
}

void OpenDialogs(const DrivenDeclarium& program) {
  for (int dialog = 0; dialog < kDialogs; ++dialog) {
    const auto* const form = dialog % 3 == 0   ? "frmFind"
                             : dialog % 3 == 1 ? "frmOptions"
                                               : "frmAdd";
    if (dialog % 3 == 2) {
      (void)program.OpenByMenu("mnuAdd", form);
    } else {
      (void)program.OpenByToolbar(dialog % 3 == 0 ? "find" : "settings", form);
    }
    program.CloseForm(form);
  }
}

// A count that an open dialog does not raise counts nothing.
void CheckThatGrowthIsSeen(const DrivenDeclarium& program, DWORD id) {
  const auto before = HoldingsOf(id);
  (void)program.OpenByToolbar("find", "frmFind");
  const auto open = HoldingsOf(id);
  program.CloseForm("frmFind");
  if (open.gdi_objects <= before.gdi_objects || open.user_handles <= before.user_handles) {
    throw std::runtime_error("handles are not counted on this system");
  }
}

}  // namespace

void MeasureGrowth(const std::filesystem::path& folder, BarsTable& table) {
  const auto path = PutProgram(folder);
  DrivenDeclarium program(path, Kind::kDeclare);
  DWORD id = 0;
  GetWindowThreadProcessId(program.Main(), &id);
  CheckThatGrowthIsSeen(program, id);
  const struct {
    const char* what;
    void (*use)(const DrivenDeclarium&);
  } uses[] = {{"1 000 item clicks", ClickItems},
              {"100 library switches", SwitchLibraries},
              {"100 dialogs opened and closed", OpenDialogs}};
  for (const auto& [what, use] : uses) {
    use(program);  // warms up
    const auto before = HoldingsOf(id);
    use(program);
    const auto after = HoldingsOf(id);
    table.Growth(
        std::string(what) + ": GDI objects (" + std::to_string(after.gdi_objects) + " in use)", "",
        after.gdi_objects - before.gdi_objects, 0);
    table.Growth(std::string(what) + ": user handles", "", after.user_handles - before.user_handles,
                 0);
    table.Growth(std::string(what) + ": memory (" + std::to_string(after.memory) + " KB in use)",
                 "KB", after.memory - before.memory, kNoise);
  }
}

}  // namespace declarium::bench
