// What only real windows have: the mouse's capture, tooltips, lists that drop down, what native
// controls know when, the clipboard's memory, the user's color scheme, systems of other versions.
#include <algorithm>
#include <array>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "toolkit/contract.h"
#include "toolkit/list_view.h"
#include "toolkit/progress_bar.h"
#include "toolkit/rich_text.h"
#include "toolkit/win32/dpi.h"
#include "toolkit/win32/form.h"
#include "toolkit/win32/scale.h"
#include "toolkit/win32/toolkit.h"
#include "toolkit/win32/widget.h"
#include "win32/system.h"

namespace declarium {
namespace {

using namespace win32;

HWND WindowOf(const Control& control) {
  return dynamic_cast<const Widget&>(control).Handle();
}

class Win32Window : public ShownContract {
 protected:
  [[nodiscard]] HWND FormWindow() { return dynamic_cast<Win32Form&>(form()).Window(); }
};

// The left button is down for the system as long as it lives.
class HeldLeftButton {
 public:
  HeldLeftButton() { Hold(0x80); }
  ~HeldLeftButton() { Hold(0); }
  HeldLeftButton(const HeldLeftButton&) = delete;
  HeldLeftButton& operator=(const HeldLeftButton&) = delete;

 private:
  static void Hold(BYTE state) {
    std::array<BYTE, 256> keys{};
    GetKeyboardState(keys.data());
    keys[VK_LBUTTON] = state;
    SetKeyboardState(keys.data());
  }
};

TEST_F(Win32Window, APressOfTheHeldButtonKeepsTheMouseUntilTheRelease) {
  auto& bar = Get<PictureBox>("Bar1");
  {
    const HeldLeftButton held;
    SendMessageW(WindowOf(bar), WM_LBUTTONDOWN, MK_LBUTTON, 0);
  }
  EXPECT_EQ(GetCapture(), WindowOf(bar));
  SendMessageW(WindowOf(bar), WM_LBUTTONUP, 0, 0);
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(Win32Window, APostedPressWithoutAHeldButtonKeepsNothing) {
  auto& picture = Get<PictureBox>("Picture1");
  picture.on_mouse_down = Log("down");
  picture.PostMouseDown();
  toolkit().ProcessPendingEvents();
  EXPECT_THAT(TakeLog(), ElementsAre("down"));
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(Win32Window, AFormThatUnloadsWhenItIsPressedLetsGoOfTheMouse) {
  auto& picture = Get<PictureBox>("Picture1");
  picture.on_mouse_down = [this](const MouseEvent&) { form().Unload(); };
  const HeldLeftButton held;
  SendMessageW(WindowOf(picture), WM_LBUTTONDOWN, MK_LBUTTON, 0);
  EXPECT_FALSE(form().IsLoaded());
  EXPECT_EQ(GetCapture(), nullptr);
}

using Failures = std::vector<std::string>;

// What the boundary stopped, by its text.
class BoundaryOfWin32 : public Win32Window {
 protected:
  BoundaryOfWin32() {
    toolkit().boundary.SetReport([this](const std::exception_ptr& failure) {
      try {
        std::rethrow_exception(failure);
      } catch (const std::exception& exception) {
        failures_.emplace_back(exception.what());
      }
    });
  }
  static auto Throw(std::string text) {
    return [text = std::move(text)](auto&&...) { throw std::runtime_error(text); };
  }
  Failures failures_;
};

TEST_F(BoundaryOfWin32, StopsWhatEventsThrow) {
  Get<CommandButton>("Command1").on_click = Throw("click");
  Get<ListBox>("List1").on_key_down = Throw("key");
  Get<PictureBox>("Picture1").on_mouse_down = Throw("mouse");
  Get<MenuItem>("mnuNew").on_click = Throw("menu");
  Get<MenuItem>("mnuEnd").on_click = Throw("shortcut");
  form().on_resize = Throw("resize");
  user().Click(Get<CommandButton>("Command1"));
  Get<ListBox>("List1").SetFocus();
  user().PressKey(key::kHome);
  user().MouseDown(Get<PictureBox>("Picture1"), {.button = MouseButton::kLeft});
  user().ChooseMenu(form(), "mnuNew");
  user().PressKey('N', {.control = true});
  user().Resize(form(), {700, 500});
  EXPECT_EQ(failures_, (Failures{"click", "key", "mouse", "menu", "menu", "resize"}));
}

TEST_F(BoundaryOfWin32, StopsWhatATimerThrowsAndTheTimerGoesOn) {
  auto& timer = Get<Timer>("Timer1");
  timer.on_timer = Throw("timer");
  timer.SetEnabled(true);
  EXPECT_TRUE(user().WaitUntil([this] { return failures_.size() >= 2; }));
  timer.SetEnabled(false);
}

TEST_F(BoundaryOfWin32, APictureThatCannotBePaintedIsNotPaintedForEver) {
  auto& picture = Get<PictureBox>("Picture1");
  picture.on_paint = Throw("paint");
  picture.Invalidate();
  toolkit().ProcessPendingEvents();
  EXPECT_EQ(failures_, (Failures{"paint"}));
}

TEST_F(BoundaryOfWin32, AFailedQuestionLeavesTheFormOpen) {
  form().on_query_unload = Throw("query");
  user().Close(form());
  EXPECT_TRUE(form().Visible());
  EXPECT_EQ(SendMessageW(FormWindow(), WM_QUERYENDSESSION, 0, 0), FALSE);
  EXPECT_EQ(failures_, (Failures{"query", "query"}));
}

TEST_F(Win32Window, TheEndOfTheSessionAsksFirstAndUnloadsWhenItComes) {
  form().on_query_unload = Log("query");
  form().on_unload = Log("unload");
  EXPECT_EQ(SendMessageW(FormWindow(), WM_QUERYENDSESSION, 0, 0), TRUE);
  EXPECT_THAT(TakeLog(), ElementsAre("query"));
  SendMessageW(FormWindow(), WM_ENDSESSION, FALSE, 0);
  EXPECT_TRUE(form().IsLoaded());
  EXPECT_EQ(SendMessageW(FormWindow(), WM_QUERYENDSESSION, 0, 0), TRUE);
  SendMessageW(FormWindow(), WM_ENDSESSION, TRUE, 0);
  EXPECT_FALSE(form().IsLoaded());
  EXPECT_THAT(TakeLog(), ElementsAre("query", "unload"));
}

TEST_F(Win32Window, AFormBehindADialogDropsInputThatIsSentToItsWindows) {
  form().on_query_unload = Log("query");
  Get<CommandButton>("Command1").on_click = Log("button");
  Get<ListBox>("List1").on_key_down = Log("key");
  Get<ListView>("View1").on_mouse_down = Log("mouse");
  Get<MenuItem>("mnuNew").on_click = Log("menu");
  const auto dialog = toolkit().CreateForm(demo::kDialog);
  user().InNextModalForm("frmDialog", [this](Form& shown) {
    const auto& native = dynamic_cast<const Win32Form&>(form());
    SendMessageW(WindowOf(Get<CommandButton>("Command1")), BM_CLICK, 0, 0);
    SendMessageW(WindowOf(Get<ListBox>("List1")), WM_KEYDOWN, 'A', 1);
    SendMessageW(WindowOf(Get<ListView>("View1")), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    SendMessageW(FormWindow(), WM_COMMAND, native.Menus().IdOf(form().Get<Win32MenuItem>("mnuNew")),
                 0);
    SendMessageW(FormWindow(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(shown.Visible());
    shown.Hide();
  });
  dialog->Show(ShowMode::kModal, &form());
  EXPECT_THAT(TakeLog(), IsEmpty());
  EXPECT_TRUE(form().IsLoaded());
}

// Looks, when the window is given a font, whether the one that it had still exists.
class FontWatch {
 public:
  explicit FontWatch(HWND window) : window_(window) {
    watched_ = this;
    before_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
  }
  ~FontWatch() {
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before_));
    watched_ = nullptr;
  }
  FontWatch(const FontWatch&) = delete;
  FontWatch& operator=(const FontWatch&) = delete;

  [[nodiscard]] int Changes() const { return changes_; }
  [[nodiscard]] bool HadOneAlways() const { return had_one_always_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_SETFONT) {
      const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0));
      ++watched_->changes_;
      if (GetObjectType(font) != OBJ_FONT) watched_->had_one_always_ = false;
    }
    return CallWindowProcW(watched_->before_, window, message, wparam, lparam);
  }

  static inline FontWatch* watched_ = nullptr;
  HWND window_;
  WNDPROC before_;
  int changes_ = 0;
  bool had_one_always_ = true;
};

TEST_F(Win32Window, AControlHasAFontWhileTheResolutionChanges) {
  RECT place{};
  GetWindowRect(FormWindow(), &place);
  const FontWatch watch(WindowOf(Get<TextBox>("Text1")));
  SendMessageW(FormWindow(), WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&place));
  EXPECT_EQ(watch.Changes(), 1);
  EXPECT_TRUE(watch.HadOneAlways());
}

TEST(OleUse, ThatFailedEndsNoOtherUse) {
  std::thread([] {
    // An apartment of the other kind, which OLE refuses.
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    {
      const OleUse refused;
    }
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE) << "still entered";
    CoUninitialize();
    CoUninitialize();
  }).join();
}

struct TipSearch {
  TTTOOLINFOW tool;
  std::u16string text;
};

BOOL CALLBACK ReadTip(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<TipSearch*>(parameter);
  std::array<wchar_t, 32> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  std::array<char16_t, 256> text{};
  search.tool.lpszText = reinterpret_cast<wchar_t*>(text.data());
  const auto tool = reinterpret_cast<LPARAM>(&search.tool);
  if (std::wstring_view(name.data()) != TOOLTIPS_CLASSW) return TRUE;
  if (!SendMessageW(window, TTM_GETTOOLINFOW, 0, tool)) return TRUE;
  SendMessageW(window, TTM_GETTEXTW, text.size(), tool);
  search.text = text.data();
  return FALSE;
}

// What the system would show when the pointer rests on the control; empty when nothing.
std::u16string ShownTip(HWND form, const Control& control) {
  TipSearch search{};
  search.tool.cbSize = sizeof search.tool;
  search.tool.hwnd = form;
  search.tool.uId = reinterpret_cast<UINT_PTR>(WindowOf(control));
  EnumThreadWindows(GetCurrentThreadId(), ReadTip, reinterpret_cast<LPARAM>(&search));
  return search.text;
}

TEST_F(Win32Window, AControlShowsItsTooltipFromTheMomentThePointerIsOverTheForm) {
  const auto& list = Get<ListBox>("List1");
  auto& text = Get<TextBox>("Text1");
  SendMessageW(WindowOf(list), WM_SETCURSOR, reinterpret_cast<WPARAM>(WindowOf(list)),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  EXPECT_EQ(ShownTip(FormWindow(), text), u"Začiatok názvu");
  EXPECT_EQ(ShownTip(FormWindow(), list), u"");
  text.SetToolTip(u"Názov");
  EXPECT_EQ(ShownTip(FormWindow(), text), u"Názov");
  text.SetToolTip(u"");
  EXPECT_EQ(ShownTip(FormWindow(), text), u"");
}

TEST_F(Win32Window, ATooltipChangedBeforeThePointerIsThereIsTheOneShown) {
  const auto other = toolkit().CreateForm(demo::kForm);
  auto& text = other->Get<TextBox>("Text1");
  text.SetToolTip(u"Názov");
  const HWND window = WindowOf(text);
  EXPECT_EQ(ShownTip(GetParent(window), text), u"");
  other->Load();
  SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  EXPECT_EQ(ShownTip(GetParent(window), text), u"Názov");
}

TEST_F(Win32Window, ADroppedListShowsFifteenRowsWithoutScrolling) {
  constexpr int kRows = 15;
  auto& combo = Get<ComboBox>("Combo1");
  while (combo.RowCount() < kRows) combo.AddRow(u"Windows");
  const HWND window = WindowOf(combo);
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  ASSERT_TRUE(GetComboBoxInfo(window, &info));
  SendMessageW(window, CB_SHOWDROPDOWN, TRUE, 0);
  RECT opened{}, last{};
  GetClientRect(info.hwndList, &opened);
  SendMessageW(info.hwndList, LB_GETITEMRECT, kRows - 1, reinterpret_cast<LPARAM>(&last));
  SendMessageW(window, CB_SHOWDROPDOWN, FALSE, 0);
  EXPECT_GT(last.bottom, last.top);
  EXPECT_LE(last.bottom, opened.bottom);
}

// Counts the texts that a window is given.
LRESULT CALLBACK CountTexts(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                            DWORD_PTR count) {
  if (message == WM_SETTEXT) ++*reinterpret_cast<int*>(count);
  return DefSubclassProc(window, message, wparam, lparam);
}

TEST_F(Win32Window, ALabelIsGivenACaptionOnlyWhenItHasAnother) {
  auto& label = Get<Label>("Label1");
  int given = 0;
  SetWindowSubclass(WindowOf(label), CountTexts, 1, reinterpret_cast<DWORD_PTR>(&given));
  label.SetCaption(u"Found: 1");
  label.SetCaption(u"Found: 1");
  label.Refresh();
  EXPECT_EQ(given, 1);
  EXPECT_FALSE(GetUpdateRect(WindowOf(label), nullptr, FALSE));
  label.SetCaption(u"Found: 2");
  EXPECT_EQ(given, 2);
  EXPECT_EQ(label.Caption(), u"Found: 2");
  RemoveWindowSubclass(WindowOf(label), CountTexts, 1);
}

TEST_F(Win32Window, AProgressBarShowsItsLastValueWhenEventsAreHandled) {
  auto& bar = Get<ProgressBar>("PB");
  const auto shown = [&] {
    toolkit().ProcessPendingEvents();
    return SendMessageW(WindowOf(bar), PBM_GETPOS, 0, 0);
  };
  for (int value = 0; value <= 40; ++value) bar.SetValue(value);
  EXPECT_EQ(shown(), 40);
  bar.SetValue(60);
  bar.SetValue(40);
  EXPECT_EQ(shown(), 40);
  bar.SetMaximum(30);
  EXPECT_EQ(shown(), 30);
  bar.SetMaximum(100);
  bar.SetValue(31);
  EXPECT_EQ(shown(), 31);
  bar.SetValue(0);
  EXPECT_EQ(shown(), 0);
}

class TwoEntries : public ListEntries {
 public:
  [[nodiscard]] int Count() const override { return 2; }
  [[nodiscard]] ListEntry At(int position) const override { return {u"Entry", position}; }
};

TEST_F(Win32Window, AListKnowsItsEntriesWhenEventsAreHandledAndThoseKeptElsewhereAtOnce) {
  auto& view = Get<ListView>("View1");
  const auto known = [&] { return SendMessageW(WindowOf(view), LVM_GETITEMCOUNT, 0, 0); };
  view.Clear();
  view.ShowEntries(std::make_unique<TwoEntries>());
  EXPECT_EQ(known(), 2);
  view.Clear();
  view.Append({u"Entry", 1});
  toolkit().ProcessPendingEvents();
  EXPECT_EQ(known(), 1);
}

TEST_F(Win32Window, TheClipboardsTextHasAnOwnerInThisProgram) {
  toolkit().SetClipboardText(u"Const A = 1");
  const HWND owner = GetClipboardOwner();
  ASSERT_NE(owner, nullptr);
  EXPECT_EQ(GetWindowThreadProcessId(owner, nullptr), GetCurrentThreadId());
}

// Black windows with white text as long as it lives.
class BlackScheme {
 public:
  explicit BlackScheme(HWND form) : form_(form) { Set({RGB(0, 0, 0), RGB(255, 255, 255)}); }
  ~BlackScheme() { Set(before_); }
  BlackScheme(const BlackScheme&) = delete;
  BlackScheme& operator=(const BlackScheme&) = delete;

 private:
  void Set(const std::array<COLORREF, 2>& colors) const {
    constexpr std::array<int, 2> kWhich = {COLOR_WINDOW, COLOR_WINDOWTEXT};
    SetSysColors(2, kWhich.data(), colors.data());
    SendMessageW(form_, WM_SYSCOLORCHANGE, 0, 0);
  }

  HWND form_;
  std::array<COLORREF, 2> before_ = {GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT)};
};

TEST_F(Win32Window, TheDisplayStaysReadableWhenTheColorSchemeBecomesBlack) {
  auto& rich = Get<RichText>("RTB");
  const auto insert = [&rich] {
    rich.Clear();
    rich.SetInsertionColor(0xFF0000);
    rich.Insert(u"Const");
    rich.SetInsertionColor(kBlack);
    rich.Insert(u" A = 1 ");
    rich.SetInsertionColor(0x008000);
    rich.Insert(u"' one");
    rich.SetCaretToStart();
  };
  const auto usual = ElementsAre(ColoredRun{0xFF0000, u"Const"}, ColoredRun{kBlack, u" A = 1 "},
                                 ColoredRun{0x008000, u"' one"});
  const auto on_black =
      ElementsAre(ColoredRun{kWhite, u"Const A = 1 "}, ColoredRun{0x008000, u"' one"});
  ASSERT_EQ(GetSysColor(COLOR_WINDOW), kWhite);
  insert();
  EXPECT_THAT(rich.Runs(), usual);
  {
    const BlackScheme black(FormWindow());
    EXPECT_EQ(SendMessageW(WindowOf(rich), EM_SETBKGNDCOLOR, FALSE, 0), 0) << "was black already";
    EXPECT_THAT(rich.Runs(), on_black) << "what was shown already";
    insert();
    EXPECT_THAT(rich.Runs(), on_black);
  }
  EXPECT_THAT(rich.Runs(), usual);
}

TEST_F(Win32Window, OldSystemsGiveTheSameSizesOnTheScreenTheyStartedOn) {
  const ScreenFunctions old(nullptr);
  const int dpi = Screens().SystemDpi();
  EXPECT_EQ(old.SystemDpi(), dpi);
  EXPECT_EQ(old.WindowDpi(FormWindow()), dpi);
  EXPECT_EQ(old.MessageFont(dpi).lfHeight, Screens().MessageFont(dpi).lfHeight);
  RECT now{0, 0, 620, 420}, before = now;
  Screens().AddBorders(now, WS_OVERLAPPEDWINDOW, 0, true, dpi);
  old.AddBorders(before, WS_OVERLAPPEDWINDOW, 0, true, dpi);
  EXPECT_TRUE(EqualRect(&now, &before));
  EXPECT_LT(now.left, 0);
}

TEST_F(Win32Window, AFontForAnotherResolutionIsScaledOnOldSystems) {
  const ScreenFunctions old(nullptr);
  const int dpi = old.SystemDpi();
  EXPECT_EQ(old.MessageFont(2 * dpi).lfHeight, 2 * old.MessageFont(dpi).lfHeight);
}

}  // namespace
}  // namespace declarium
