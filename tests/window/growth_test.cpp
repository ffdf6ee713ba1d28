// A long day of use leaves nothing behind: no object of the program's own, no block of the
// process's heap, no handle. The main window runs in this process, where all of them can be counted
// one by one, and a second thread uses it with the messages that a user's keys and mouse become.
//
// The system's own dialogs and labels leave something on some systems (Wine 8.0: a block of 24
// bytes for each label that was given a font, a user handle for each file dialog). What they leave
// without the program is counted in the same process and is what they may leave with it.
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>
#include <windows.h>
// after windows.h
#include <commdlg.h>

#include "app/main_window.h"
#include "library/file_format.h"
#include "shell/registry_store.h"
#include "support/growth.h"
#include "support/temporary_folder.h"
#include "toolkit/win32/toolkit.h"
#include "win32/system_registry.h"
#include "window/driven_lists.h"
#include "window/driven_main_window.h"
#include "window/live_objects.h"
#include "window/process_holdings.h"
#include "window/window_driver.h"

namespace declarium {
namespace {

using namespace window_driver;

constexpr int kClicks = 1000;
constexpr int kSwitches = 100;
constexpr int kDialogs = 100;
constexpr int kSystemDialogs = 25;
// Blocks that the system's own tables may grow by; one for each dialog is more.
constexpr long long kFewBlocks = 10;

long long HeapBlocks() {
  long long blocks = 0;
  PROCESS_HEAP_ENTRY entry{};
  HeapLock(GetProcessHeap());
  while (HeapWalk(GetProcessHeap(), &entry)) {
    if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) ++blocks;
  }
  HeapUnlock(GetProcessHeap());
  return blocks;
}

struct Counts {
  long long objects, blocks, gdi_objects, user_handles;

  Counts operator-(const Counts& other) const {
    return {objects - other.objects, blocks - other.blocks, gdi_objects - other.gdi_objects,
            user_handles - other.user_handles};
  }
};

// For a measurement of the system alone.
constexpr long long kMany = 1'000'000;
constexpr Counts kAnything{kMany, kMany, kMany, kMany};

Counts Look() {
  const Holdings holdings = HoldingsOf(GetCurrentProcessId());
  return {LiveObjects(), HeapBlocks(), holdings.gdi_objects, holdings.user_handles};
}

bool IsWithin(const Counts& growth, const Counts& system) {
  return growth.objects <= system.objects && growth.blocks <= system.blocks + kFewBlocks &&
         growth.gdi_objects <= system.gdi_objects && growth.user_handles <= system.user_handles;
}

// Does something so many times.
using Repeated = std::function<void(int times)>;

// The system keeps some GDI objects and user handles from their first use on, and when that comes
// is chance: over 3 000 dialogs one batch in eight added up to ten of them, the others none.
constexpr GrowthPatience kPatience{.batches = 8, .wait = std::chrono::seconds(5)};

// What `times` add, after a fifth as many that warm up.
Counts GrowthByUse(const Repeated& use, int times, const Counts& system) {
  use(times / 5);
  return GrowthBy(
      Look(), Look, [&] { use(times); },
      [&](const Counts& growth) { return IsWithin(growth, system); }, kPatience);
}

std::string LibraryTitled(std::u16string_view title) {
  Library library;
  library.SetTitle(title);
  KindLists constants;
  for (char16_t first = u'A'; first <= u'Z'; ++first) {
    for (char16_t second = u'A'; second <= u'Z'; ++second) {
      constants.names.Add(std::u16string{u'C', first, second});
      constants.items.Add(
          u"Long\x0e"
          u"1");
    }
  }
  library.SetItems(Kind::kConst, std::move(constants));
  return LibraryBytes(library);
}

class Growth : public testing::Test {
 protected:
  Growth() {
    folder_.Put("a.api", LibraryTitled(u"A"));
    folder_.Put("b.api", LibraryTitled(u"B"));
  }

  // Runs `use` in a thread beside the main window's, whose message loop runs in this one meanwhile.
  void Use(const std::function<void()>& use) {
    win32::Win32Toolkit toolkit;
    win32::SystemRegistry registry;
    RegistryStore store(registry);
    MainWindow window(toolkit, store,
                      {.folder = folder_.path(), .command_line = folder_ / "a.api", .host = {}});
    window.ShowMainWindow();
    const DWORD thread = GetCurrentThreadId();
    std::string failed;
    std::thread user([&] {
      try {
        main_ = program_.Form("frmMain");
        use();
      } catch (const std::exception& failure) {
        failed = failure.what();
      }
      PostThreadMessageW(thread, WM_QUIT, 0, 0);
    });
    toolkit.Run();
    user.join();
    EXPECT_EQ(failed, "");
  }
  [[nodiscard]] Counts GrowthInUse(const Repeated& use, int times, const Counts& system) {
    Counts growth{};
    Use([&] { growth = GrowthByUse(use, times, system); });
    return growth;
  }

  // `system` is what the system leaves by itself after as many.
  void ExpectNothingOfOurs(const Repeated& use, int times, const Counts& system) {
    const Counts growth = GrowthInUse(use, times, system);
    std::printf(
        "left: %lld objects, %lld blocks (the system alone %lld), %lld GDI objects, %lld user "
        "handles (the system alone %lld)\n",
        growth.objects, growth.blocks, system.blocks, growth.gdi_objects, growth.user_handles,
        system.user_handles);
    EXPECT_TRUE(IsWithin(growth, system));
  }

  [[nodiscard]] HWND Control(std::string_view name) const { return FindControl(main_, name); }

  void ClickItems(int clicks) const {
    ChooseRow(Control("cmbSelector"), 0);
    const HWND list = Control("lstConst");
    WaitFor("the constants", [&] { return Ask(list, LB_GETCOUNT) > 0; });
    const int rows = static_cast<int>(Ask(list, LB_GETCOUNT));
    for (int click = 0; click < clicks; ++click) {
      const int row = click * 7 % rows;
      ClickRow(list, row);
      WaitFor("the clicked row", [&] { return SelectedRow(list) == row; });
    }
    Ask(main_, WM_NULL);
  }

  // An even number of times, to be back at the first one.
  void SwitchLibraries(int changes) const {
    for (int change = 0; change < changes; ++change) {
      ChooseRow(Control("cmbDatabase"), (change + 1) % 2);
      const std::u16string_view title = change % 2 == 0 ? u"B" : u"A";
      WaitFor("the library", [&] { return TextOf(main_).starts_with(title); });
    }
    Ask(main_, WM_NULL);
  }

  void OpenAndClose(std::string_view form) const {
    const HWND window = program_.Form(form);
    Ask(window, WM_NULL);
    PostMessageW(window, WM_CLOSE, 0, 0);
    WaitFor("the form's end", [&] { return program_.FindForm(form) == nullptr; });
    Ask(main_, WM_NULL);
  }

  void OpenForms(int rounds) const {
    for (int round = 0; round < rounds; ++round) {
      ClickToolbar(main_, "find");
      OpenAndClose("frmFind");
      ClickToolbar(main_, "settings");
      OpenAndClose("frmOptions");
      ChooseMenu(main_, "mnuAdd");
      OpenAndClose("frmAdd");
      ChooseMenu(main_, "mnuRename");
      OpenAndClose("frmInput");
    }
  }

  // Shows the system's dialogs and presses a button in each.
  void AnswerDialogs(int dialogs, const std::function<void()>& show, int button) const {
    for (int dialog = 0; dialog < dialogs; ++dialog) {
      show();
      const HWND window = program_.Dialog();
      Ask(window, WM_NULL);
      PressInDialog(window, button);
    }
    Ask(main_, WM_NULL);
  }

  // The same with dialogs that a thread of its own shows, without the program.
  void AnswerBareDialogs(int dialogs, const std::function<void()>& show, int button) const {
    std::thread thread([&] {
      for (int dialog = 0; dialog < dialogs; ++dialog) show();
    });
    AnswerDialogs(dialogs, [] {}, button);
    thread.join();
  }

  HWND main_ = nullptr;

 private:
  SettingsPutAway settings_;
  TemporaryFolder folder_;
  DrivenProgram program_{GetCurrentProcessId()};
};

// Things left on purpose, given back in the end.
struct Left {
  void LeaveSome() {
    objects.push_back(std::make_unique<int>());
    for (int i = 0; i < 2; ++i) blocks.push_back(HeapAlloc(GetProcessHeap(), 0, 24));
    for (int i = 0; i < 3; ++i) brushes.push_back(CreateSolidBrush(RGB(1, 2, 3)));
    for (int i = 0; i < 4; ++i) menus.push_back(CreateMenu());
  }
  ~Left() {
    for (void* const block : blocks) HeapFree(GetProcessHeap(), 0, block);
    for (const HBRUSH brush : brushes) DeleteObject(brush);
    for (const HMENU menu : menus) DestroyMenu(menu);
  }

  std::vector<std::unique_ptr<int>> objects;
  std::vector<void*> blocks;
  std::vector<HBRUSH> brushes;
  std::vector<HMENU> menus;
};

TEST_F(Growth, IsSeenForEachSortOfThing) {
  Counts growth{};
  Left left;
  left.objects.reserve(8);
  Use([&] { growth = GrowthByUse([&](int) { left.LeaveSome(); }, 1, kAnything); });
  EXPECT_EQ(growth.objects, 1);
  EXPECT_GE(growth.blocks, 2);
  EXPECT_GE(growth.gdi_objects, 3);
  EXPECT_GE(growth.user_handles, 4);
}

TEST_F(Growth, ItemClicksLeaveNothing) {
  ExpectNothingOfOurs([this](int clicks) { ClickItems(clicks); }, kClicks, {});
}

TEST_F(Growth, SwitchingLibrariesLeavesNothing) {
  ExpectNothingOfOurs([this](int changes) { SwitchLibraries(changes); }, kSwitches, {});
}

// As many as the windows of OpenForms have: seven, five, one and one.
void MakeBareLabels(int rounds) {
  for (int label = 0; label < rounds * (7 + 5 + 1 + 1); ++label) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"text", WS_POPUP, 0, 0, 10, 10, nullptr,
                                        nullptr, nullptr, nullptr);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)),
                 FALSE);
    DestroyWindow(window);
  }
}

TEST_F(Growth, TheProgramsDialogsLeaveNothing) {
  constexpr int kRounds = kDialogs / 4;
  const Counts system = GrowthInUse(MakeBareLabels, kRounds, kAnything);
  ExpectNothingOfOurs([this](int rounds) { OpenForms(rounds); }, kRounds, system);
}

void ShowBareMessage() {
  MessageBoxW(nullptr, L"?", L"title", MB_YESNO | MB_ICONWARNING);
}

TEST_F(Growth, MessagesLeaveWhatTheSystemLeavesAlone) {
  const auto bare = [this](int times) { AnswerBareDialogs(times, ShowBareMessage, IDNO); };
  const Counts system = GrowthInUse(bare, kSystemDialogs, kAnything);
  const auto ask = [this] { ChooseMenu(main_, "mnuDeleteDbItem"); };
  const auto ask_and_answer = [&](int times) {
    ClickItems(1);
    AnswerDialogs(times, ask, IDNO);
  };
  ExpectNothingOfOurs(ask_and_answer, kSystemDialogs, system);
}

void ShowBareFileDialog() {
  wchar_t path[MAX_PATH] = L"";
  OPENFILENAMEW request{};
  request.lStructSize = sizeof request;
  request.lpstrFile = path;
  request.nMaxFile = MAX_PATH;
  request.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
  GetOpenFileNameW(&request);
}

TEST_F(Growth, FileDialogsLeaveWhatTheSystemLeavesAlone) {
  const auto bare = [this](int times) { AnswerBareDialogs(times, ShowBareFileDialog, IDCANCEL); };
  const Counts system = GrowthInUse(bare, kSystemDialogs, kAnything);
  const auto open = [this] { ChooseMenu(main_, "mnuOpen"); };
  ExpectNothingOfOurs([&](int times) { AnswerDialogs(times, open, IDCANCEL); }, kSystemDialogs,
                      system);
}

}  // namespace
}  // namespace declarium
