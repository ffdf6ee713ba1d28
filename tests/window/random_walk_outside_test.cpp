// A user who does anything at any time: clicks, keys, menus, dialogs within dialogs, messages to
// windows that take no input, sizes, closing. The program stays alive, and the libraries stay
// whole.
//
// A walk is repeated by its seed and length, which a failure names:
//   DECLARIUM_WALK_SEED=7 DECLARIUM_WALK_ACTIONS=250 random_walk_outside_test.exe
// Without a seed DECLARIUM_WALK_ACTIONS are divided over eight walks.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <deque>
#include <functional>
#include <iterator>
#include <random>

#include "support/whole_library.h"
#include "window/outside_fixture.h"

namespace declarium {
namespace {

using namespace window_driver;

constexpr int kWalks = 8;
constexpr int kActions = 2000;
constexpr UINT kAnswerLimit = 20000;  // milliseconds
constexpr std::size_t kRemembered = 30;
constexpr int kFileFilter = 0x470;  // a file dialog's list of filters
constexpr const wchar_t* kDialogClass = L"#32770";

int NumberFrom(const char* variable, int otherwise) {
  const char* const text = std::getenv(variable);
  return text != nullptr ? std::atoi(text) : otherwise;
}

class RandomWalk : public OutsideTest {
 protected:
  void Walk(unsigned seed, int actions) {
    random_.seed(seed);
    Put("win.api", WinLibrary());
    Put("other.api", OtherLibrary());
    Put("source.bas",
        "Attribute VB_Name = \"Source\"\r\nConst FROM_FILE = 7\r\n"
        "Declare Sub Sleep Lib \"kernel32\" (ByVal ms As Long)\r\n"
        "Type SIZE\r\n  cx As Long\r\nEnd Type\r\n");
    StartAndShow();
    for (int i = 0; i < actions && !HasFailure(); ++i) Step(i);
    End();
    CheckLibraries();
    if (HasFailure()) ADD_FAILURE() << "walk " << seed << " of " << actions << ":" << Story();
  }

 private:
  struct Choice {
    int weight;
    const char* name;
    void (RandomWalk::*act)();
  };
  static const Choice kChoices[];

  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
  bool OneIn(int number) { return Below(number) == 0; }
  template <class List>
  auto OneOf(const List& list) {
    return list[static_cast<std::size_t>(Below(static_cast<int>(std::size(list))))];
  }

  void Step(int number) {
    if (!Program().Runs()) Restart();
    Remember(std::to_string(number));
    Choose();
    ExpectAnswer();
  }

  void Choose();

  void Restart() {
    ASSERT_EQ(Program().WaitForEnd(), 0) << "the program died";
    CheckLibraries();
    StartAndShow();
  }

  // Whatever is open, the program's thread handles messages.
  void ExpectAnswer() {
    DWORD_PTR ignored = 0;
    if (SendMessageTimeoutW(Main(), WM_NULL, 0, 0, SMTO_NORMAL, kAnswerLimit, &ignored)) return;
    EXPECT_TRUE(Eventually([this] { return !Program().Runs() || !IsWindow(Main()); }))
        << "the program hangs";
  }

  void CheckLibraries() {
    for (const auto& file : std::filesystem::directory_iterator(FileAt("."))) {
      if (file.path().extension() != ".api") continue;
      const std::string bytes = ContentOf(file.path());
      EXPECT_TRUE(IsWholeContent(bytes)) << file.path() << ": " << testing::PrintToString(bytes);
    }
  }

  // Closes everything, saving nothing.
  void End() {
    const bool ended = Eventually([this] {
      if (!Program().Runs()) return true;
      CloseFront();
      return false;
    });
    ASSERT_TRUE(ended) << "the program cannot be closed";
    EXPECT_EQ(Program().WaitForEnd(), 0) << "the program died";
  }

  // A dialog is answered again only when it has not taken the last answer: Wine 8's file dialog
  // frees what it shows with each answer that arrives.
  HWND DialogToAnswer() {
    constexpr ULONGLONG kTaken = 1000;  // milliseconds
    const HWND dialog = Program().FindDialog();
    if (!dialog || !IsWindowEnabled(dialog)) return nullptr;
    const ULONGLONG now = GetTickCount64();
    if (dialog == answered_ && now - answered_at_ < kTaken) return nullptr;
    answered_at_ = now;
    return answered_ = dialog;
  }

  void CloseFront() {
    if (const HWND dialog = DialogToAnswer()) {
      PostMessageW(dialog, WM_COMMAND, GetDlgItem(dialog, IDNO) ? IDNO : IDCANCEL, 0);
      return;
    }
    for (const HWND window : Windows()) {
      PostMessageW(window, WM_CANCELMODE, 0, 0);
      PostMessageW(window, WM_CLOSE, 0, 0);
    }
  }

  // The forms and system dialogs of the program that are shown.
  std::vector<HWND> Windows() const {
    std::vector<HWND> windows;
    static_cast<void>(Program().FindWindow([&](HWND window) {
      if (!NameOf(window).empty() || IsDialog(window)) windows.push_back(window);
      return false;
    }));
    return windows;
  }

  static bool IsDialog(HWND window) {
    std::array<wchar_t, 16> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return std::wstring_view(name.data()) == kDialogClass;
  }

  // A form, taking input or not; null when there is none.
  HWND SomeForm() {
    std::vector<HWND> forms = Windows();
    std::erase_if(forms, IsDialog);
    return forms.empty() ? nullptr : OneOf(forms);
  }

  static BOOL CALLBACK AddVisible(HWND window, LPARAM list) {
    if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
  }

  // A control of a form, or the form.
  HWND SomeWindow() {
    const HWND form = SomeForm();
    if (!form) return nullptr;
    std::vector<HWND> windows{form};
    EnumChildWindows(form, AddVisible, reinterpret_cast<LPARAM>(&windows));
    return OneOf(windows);
  }

  POINT SomePlace(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    return {Below(std::max<int>(area.right, 1)), Below(std::max<int>(area.bottom, 1))};
  }

  void ClickSomewhere() {
    OnWindow([this](HWND window) { Click(window, SomePlace(window)); });
  }
  void DoubleClickSomewhere() {
    OnWindow([this](HWND window) { DoubleClick(window, SomePlace(window)); });
  }
  void RightClickSomewhere() {
    OnWindow([this](HWND window) { RightClick(window, SomePlace(window)); });
  }
  void PressSomeKey() {
    static constexpr std::array kKeys = {
        VK_RETURN, VK_RETURN, VK_ESCAPE, VK_TAB,  VK_UP,     VK_DOWN, VK_DOWN,
        VK_LEFT,   VK_RIGHT,  VK_HOME,   VK_END,  VK_PRIOR,  VK_NEXT, VK_F1,
        VK_F2,     VK_F4,     VK_SPACE,  VK_BACK, VK_DELETE, VK_APPS, VK_INSERT};
    OnWindow([this](HWND window) { PressKey(window, OneOf(kKeys)); });
  }
  void TypeSomething() {
    static constexpr std::array<std::u16string_view, 9> kTexts = {
        u"get", u"p", u"MAX*", u"[", u"10", u"Const NEW_ONE = 1", u"Žltý kôň", u"\x01\x02", u"*"};
    OnWindow([this](HWND window) { Type(window, OneOf(kTexts)); });
  }
  void PasteSomething() {
    static constexpr std::array<std::u16string_view, 6> kTexts = {
        u"Const PASTED = 1\r\nConst B As Long = 3",
        u"Declare Function Beep Lib \"kernel32\" (ByVal f As Long) As Long",
        u"Type RECT\r\n  a As Long\r\nEnd Type",
        u"Const TORN = 1 ' \x01 and \x02",
        u"Long",
        u"titulok"};
    OnWindow([this](HWND window) {
      if (NameOf(window).starts_with("Text")) SetText(window, OneOf(kTexts));
    });
  }
  void ChooseSomeMenu() {
    static constexpr std::array kMenus = {
        "mnuNew", "mnuOpen", "mnuSave", "mnuSaveAs", "mnuRename",       "mnuImport", "mnuExport",
        "mnuAdd", "mnuAdd",  "mnuAdd",  "mnuRename", "mnuDeleteDbItem", "mnuAbout",  "mnuHelpHere"};
    ChooseMenu(OneOf(kMenus));
  }
  void ClickSomeButton() {
    static constexpr std::array kButtons = {"new",    "open",   "save",   "add",  "add",     "copy",
                                            "delete", "export", "insert", "find", "settings"};
    ClickToolbar(OneOf(kButtons));
  }
  void ChooseSomeRow() {
    static constexpr std::array kCombos = {"cmbDatabase", "cmbSelector", "cmbRange"};
    ChooseRow(Control(OneOf(kCombos)), Below(4) - 1);
  }
  void SizeSomething() {
    OnForm([this](HWND form) {
      SetWindowPos(form, nullptr, Below(900) - 200, Below(700) - 200, Below(1600), Below(1200),
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
    });
  }
  void ShowSomehow() {
    static constexpr std::array kCommands = {SW_MAXIMIZE, SW_MINIMIZE, SW_RESTORE, SW_RESTORE,
                                             SW_SHOWNORMAL};
    OnForm([this](HWND form) { ShowWindowAsync(form, OneOf(kCommands)); });
  }
  void CloseSomething() {
    OnForm([this](HWND form) {
      if (form == Main() && !OneIn(4)) return;
      PostMessageW(form, WM_CLOSE, 0, 0);
    });
  }
  void TellSomething() {
    static constexpr std::array kTold = {WM_SYSCOLORCHANGE, WM_SETTINGCHANGE, WM_CANCELMODE,
                                         WM_CONTEXTMENU,    WM_ENDSESSION,    WM_QUERYENDSESSION};
    OnWindow([this](HWND window) {
      const UINT message = static_cast<UINT>(OneOf(kTold));
      PostMessageW(window, message, 0, message == WM_CONTEXTMENU ? -1 : 0);
    });
  }
  // The system's own dialogs are only answered: with keys and clicks in its list of files anything
  // could be deleted.
  void AnswerSomeDialog() {
    const HWND dialog = DialogToAnswer();
    if (!dialog) return;
    if (const HWND filter = GetDlgItem(dialog, kFileFilter))
      return AnswerFileDialog(dialog, filter);
    static constexpr std::array kButtons = {IDOK, IDCANCEL, IDYES, IDNO};
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(OneOf(kButtons)), 0);
  }
  void AnswerFileDialog(HWND dialog, HWND filter) {
    static constexpr std::array kLibraries = {"win.api", "other.api", "third.api"};
    static constexpr std::array kSources = {"source.bas", "out.bas", "out.txt"};
    if (OneIn(3)) {
      PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
      return;
    }
    const bool library = TextOf(filter).starts_with(u"Api");
    const auto file = FileAt(library ? OneOf(kLibraries) : OneOf(kSources));
    for (const int id : {0x480, 0x47C}) {
      if (const HWND name = GetDlgItem(dialog, id)) SetText(name, file.u16string());
    }
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  }

  void OnWindow(const std::function<void(HWND)>& act) {
    if (const HWND window = SomeWindow()) {
      Remember(NameOf(window));
      act(window);
    }
  }
  void OnForm(const std::function<void(HWND)>& act) {
    if (const HWND form = SomeForm()) {
      Remember(NameOf(form));
      act(form);
    }
  }

  void Remember(const std::string& word) {
    story_.push_back(word);
    if (story_.size() > 3 * kRemembered) story_.pop_front();
  }
  [[nodiscard]] std::string Story() const {
    std::string story;
    for (const auto& word : story_) story += " " + word;
    return story;
  }

  std::mt19937 random_;
  HWND answered_ = nullptr;
  ULONGLONG answered_at_ = 0;
  std::deque<std::string> story_;  // the last actions: number, action, window
};

const RandomWalk::Choice RandomWalk::kChoices[] = {
    {20, "click", &RandomWalk::ClickSomewhere},
    {6, "double-click", &RandomWalk::DoubleClickSomewhere},
    {4, "right-click", &RandomWalk::RightClickSomewhere},
    {16, "key", &RandomWalk::PressSomeKey},
    {8, "type", &RandomWalk::TypeSomething},
    {6, "paste", &RandomWalk::PasteSomething},
    {12, "menu", &RandomWalk::ChooseSomeMenu},
    {8, "toolbar", &RandomWalk::ClickSomeButton},
    {6, "row", &RandomWalk::ChooseSomeRow},
    {5, "size", &RandomWalk::SizeSomething},
    {2, "show", &RandomWalk::ShowSomehow},
    {4, "close", &RandomWalk::CloseSomething},
    {3, "tell", &RandomWalk::TellSomething},
    {20, "dialog", &RandomWalk::AnswerSomeDialog},
};

void RandomWalk::Choose() {
  int weights = 0;
  for (const Choice& choice : kChoices) weights += choice.weight;
  int left = Below(weights);
  const Choice* choice = kChoices;
  while (left >= choice->weight) left -= (choice++)->weight;
  Remember(choice->name);
  try {
    (this->*choice->act)();
  } catch (const std::exception&) {
    // What the action was meant for has gone meanwhile.
  }
}

class RandomWalks : public RandomWalk, public testing::WithParamInterface<int> {};

TEST_P(RandomWalks, LeaveTheProgramAliveAndTheLibrariesWhole) {
  const int actions = NumberFrom("DECLARIUM_WALK_ACTIONS", kActions);
  const int seed = NumberFrom("DECLARIUM_WALK_SEED", 0);
  if (seed == 0) {
    Walk(static_cast<unsigned>(GetParam()), actions / kWalks);
  } else if (GetParam() == 1) {
    Walk(static_cast<unsigned>(seed), actions);
  }
}

INSTANTIATE_TEST_SUITE_P(Eight, RandomWalks, testing::Range(1, kWalks + 1));

}  // namespace
}  // namespace declarium
