// Starting and closing the program: what it opens, what it asks, what comes back.
#include <limits>

#include "shell/settings.h"
#include "window/outside_fixture.h"

namespace declarium {
namespace {

using namespace window_driver;

constexpr std::u16string_view kAskSave = u"Uložiť zmeny prevedené v databáze 'Okná' ?";

using StartOutside = OutsideTest;

TEST_F(StartOutside, TheSplashWindowComesAndGoesByItself) {
  Start();
  const HWND splash = Program().Form("frmSplash");
  EXPECT_NE(Program().Form("frmMain"), nullptr);
  EXPECT_TRUE(
      Eventually([&] { return (GetWindowLongW(splash, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; }));
  EXPECT_TRUE(Eventually([this] { return Program().FindForm("frmSplash") == nullptr; }));
}

TEST_F(StartOutside, ALibraryOnTheCommandLineIsOpenedInsteadOfTheRememberedOne) {
  Put("win.api", WinLibrary());
  Put("my library.lib", OtherLibrary());
  StartAndShow(L"my library.lib");
  EXPECT_EQ(Caption(), u"Other - Declarium 3.0");
  EXPECT_EQ(ChosenRow(Control("cmbDatabase")), -1) << "not among the folder's libraries";
}

TEST_F(StartOutside, ALibraryOnTheCommandLineIsLookedForWhereTheCallerIsThenBesideTheProgram) {
  const TemporaryFolder caller;
  caller.Put("mine.api", WinLibrary("Caller"));
  Put("mine.api", WinLibrary("Program"));
  Put("other.api", OtherLibrary());
  StartIn(caller.path(), L"mine.api");
  EXPECT_TRUE(CaptionBecomes(u"Caller - Declarium 3.0"));
  Close();
  ASSERT_EQ(Program().WaitForEnd(), 0);
  StartIn(caller.path(), L"other.api");
  EXPECT_TRUE(CaptionBecomes(u"Other - Declarium 3.0"));
}

TEST_F(StartOutside, AFileNamedByNoValidTextAmongTheLibrariesHindersNothing) {
  Put("win.api", WinLibrary());
  const std::wstring strange = FileAt("a").wstring() + L"\xD800.api";
  const HANDLE file =
      CreateFileW(strange.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) GTEST_SKIP() << "the system takes no such name";
  CloseHandle(file);
  StartAndShow();
  EXPECT_EQ(ComboRows(Control("cmbDatabase")), (Rows{u"", u"Win"}));
  EXPECT_EQ(Program().FindDialog() != nullptr, true) << "the first library is none";
}

TEST_F(StartOutside, AWindowStateThatIsNoneIsTakenForTheNormalOne) {
  Put("win.api", WinLibrary());
  for (const std::int32_t state : {12, 99, std::numeric_limits<std::int32_t>::min()}) {
    WriteWindowSettings(store_, {.edges = {140, 120, 960, 730}, .show_command = state});
    StartAndShow();
    EXPECT_FALSE(IsIconic(Main()) || IsZoomed(Main())) << state;
    Close();
    ASSERT_EQ(Program().WaitForEnd(), 0);
  }
}

TEST_F(StartOutside, AFalseSystemLibraryBesideTheProgramIsNotLoaded) {
  Put("riched20.dll", "not a library");
  Put("win.api", WinLibrary());
  StartAndShow(L"win.api");
  ChooseKind(0);
  ClickItem("lstConst", 0, u"Const A = 1");
}

TEST_F(StartOutside, ABrokenLibraryAmongGoodOnesIsReportedOnce) {
  Put("a.api", WinLibrary());
  Put("b.api", std::string_view("Broken\x02"
                                "X"));
  Put("c.api", OtherLibrary());
  StartAndShow();
  ASSERT_TRUE(CaptionBecomes(u"Declarium 3.0"));
  ASSERT_EQ(ComboRows(Control("cmbDatabase")), (Rows{u"Win", u"Broken", u"Other"}));
  ChooseRow(Control("cmbDatabase"), 2);
  ASSERT_TRUE(CaptionBecomes(u"Other - Declarium 3.0"));
  ChooseRow(Control("cmbDatabase"), 1);
  AnswerMessage(u"Neplatný formát databázy.", IDOK);
  EXPECT_TRUE(CaptionBecomes(u"Win - Declarium 3.0")) << "the first library takes its place";
  EXPECT_EQ(ChosenRow(Control("cmbDatabase")), 0);
  EXPECT_EQ(Program().FindDialog(), nullptr);
}

TEST_F(StartOutside, ReopeningReturnsToTheSamePlaceLibraryAndChoices) {
  Put("a.api", OtherLibrary());
  Put("b.api", WinLibrary());
  StartAndShow();
  ChooseRow(Control("cmbDatabase"), 1);
  ASSERT_TRUE(CaptionBecomes(u"Win - Declarium 3.0"));
  ChooseKind(2);
  ASSERT_TRUE(ListBecomes("lstType", {u"POINTAPI", u"RECT"}));
  ChooseRow(Control("cmbRange"), 1);
  SetWindowPos(Main(), nullptr, 140, 120, 820, 610, SWP_NOZORDER | SWP_NOACTIVATE);
  RECT before{};
  ASSERT_TRUE(Eventually([&] {
    GetWindowRect(Main(), &before);
    return before.right - before.left == 820 && before.left == 140;
  }));
  Close();
  ASSERT_EQ(Program().WaitForEnd(), 0);

  StartAndShow();
  RECT after{};
  EXPECT_TRUE(Eventually([&] {
    GetWindowRect(Main(), &after);
    return EqualRect(&before, &after) != FALSE;
  })) << after.left
      << "," << after.top << "," << after.right << "," << after.bottom;
  EXPECT_EQ(Caption(), u"Win - Declarium 3.0");
  EXPECT_EQ(ChosenRow(Control("cmbSelector")), 2);
  EXPECT_EQ(ChosenRow(Control("cmbRange")), 1);
  EXPECT_TRUE(IsWindowVisible(Control("lstType")));
}

TEST_F(StartOutside, ReopeningAMaximizedWindowReturnsToThatAndToItsRestoredPlace) {
  // The system tells a window's restored place only to its own process, so the window is restored.
  static constexpr RECT kRestored{140, 120, 960, 730};
  const auto stands_there = [this] {
    RECT now{};
    GetWindowRect(Main(), &now);
    return EqualRect(&now, &kRestored) != FALSE;
  };
  const auto is_maximized = [this] { return IsZoomed(Main()) != FALSE; };
  StartAndShow();
  SetWindowPos(Main(), nullptr, 140, 120, 820, 610, SWP_NOZORDER | SWP_NOACTIVATE);
  ASSERT_TRUE(Eventually(stands_there));
  ShowWindow(Main(), SW_MAXIMIZE);
  ASSERT_TRUE(Eventually(is_maximized));
  Close();
  ASSERT_EQ(Program().WaitForEnd(), 0);

  StartAndShow();
  EXPECT_TRUE(Eventually(is_maximized));
  ShowWindow(Main(), SW_RESTORE);
  EXPECT_TRUE(Eventually(stands_there));
}

class CloseOutside : public OutsideTest {
 protected:
  // Leaves a changed library open.
  CloseOutside() {
    Put("win.api", WinLibrary());
    StartAndShow(L"win.api");
    ChooseMenu("mnuRename");
    AnswerText(u"Okná");
    EXPECT_TRUE(CaptionBecomes(u"Okná - Declarium 3.0"));
  }
};

TEST_F(CloseOutside, YesSavesAndEnds) {
  Close();
  AnswerMessage(kAskSave, IDYES);
  EXPECT_EQ(Program().WaitForEnd(), 0);
  EXPECT_EQ(BytesOf("win.api"), WinLibrary("Okn\xe1"));
}

TEST_F(CloseOutside, NoEndsWithoutSaving) {
  Close();
  AnswerMessage(kAskSave, IDNO);
  EXPECT_EQ(Program().WaitForEnd(), 0);
  EXPECT_EQ(BytesOf("win.api"), WinLibrary());
}

TEST_F(CloseOutside, CancelKeepsTheWindowAndTheChanges) {
  Close();
  AnswerMessage(kAskSave, IDCANCEL);
  EXPECT_EQ(Caption(), u"Okná - Declarium 3.0");
  EXPECT_TRUE(Program().Runs());
  Close();
  AnswerMessage(kAskSave, IDNO);
  EXPECT_EQ(Program().WaitForEnd(), 0) << "asked again at the next closing";
}

TEST_F(CloseOutside, ADialogIsNotClosedWithTheWindowBehindIt) {
  ChooseKind(0);
  ChooseMenu("mnuAdd");
  const HWND dialog = Program().Form("frmAdd");
  const HWND text = FindControl(dialog, "Text1");
  SetText(text, u"Const TYPED = 1");
  Close();
  Ask(Main(), WM_NULL);
  EXPECT_TRUE(IsWindowVisible(dialog));
  EXPECT_EQ(TextOf(text), u"Const TYPED = 1");
  EXPECT_EQ(Program().FindDialog(), nullptr) << "nothing is asked";
  PressButton(FindControl(dialog, "Command1"));
  EXPECT_TRUE(ListBecomes("lstConst", {u"A", u"B", u"MAX_PATH", u"TYPED"}));
}

TEST_F(CloseOutside, SwitchingTheLibraryAsksTooAndCancelStays) {
  Put("z.api", OtherLibrary());
  ChooseMenu("mnuOpen");
  AnswerMessage(kAskSave, IDCANCEL);
  EXPECT_EQ(Caption(), u"Okná - Declarium 3.0");
  EXPECT_EQ(Program().FindDialog(), nullptr);
}

}  // namespace
}  // namespace declarium
