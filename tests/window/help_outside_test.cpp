// F1 and the help menu in the program's windows, with a program in the browser's place.
#include "text/text.h"
#include "window/outside_fixture.h"

namespace declarium {
namespace {

using namespace window_driver;
namespace fs = std::filesystem;

constexpr const wchar_t* kPageKind = L"Software\\Classes\\.html";
constexpr const wchar_t* kPageClass = L"Software\\Classes\\DeclariumTestPage";

std::wstring Value(const std::wstring& key) {
  wchar_t text[MAX_PATH] = {};
  DWORD size = sizeof text;
  RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size);
  return text;
}

void SetValue(const std::wstring& key, const std::wstring& text) {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, REG_SZ, text.c_str(),
                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

// For as long as it lives pages are shown by the recorder. Wine looks kinds of files up for the
// machine only.
class PageRecorder {
 public:
  PageRecorder() : former_(Value(kPageKind)) {
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    const auto recorder = fs::path(self).parent_path() / "page_recorder.exe";
    SetValue(kPageKind, L"DeclariumTestPage");
    SetValue(std::wstring(kPageClass) + L"\\shell\\open\\command",
             L"\"" + recorder.wstring() + L"\" \"%1\"");
  }
  PageRecorder(const PageRecorder&) = delete;
  PageRecorder& operator=(const PageRecorder&) = delete;
  ~PageRecorder() {
    SetValue(kPageKind, former_);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kPageClass);
  }

 private:
  std::wstring former_;
};

class HelpOutside : public OutsideTest {
 protected:
  HelpOutside() {
    Put("win.api", WinLibrary());
    fs::create_directories(FileAt("guide/sk"));
    for (const auto* page : {"index", "main-window", "search"}) {
      Put("guide/sk/" + std::string(page) + ".html", "<p>");
    }
    StartAndShow(L"win.api");
  }

  [[nodiscard]] bool IsShown(const std::string& page) const {
    return Eventually([&] { return fs::exists(FileAt("guide/sk/" + page + ".html.shown")); });
  }

 private:
  PageRecorder recorder_;
};

TEST_F(HelpOutside, F1InTheMainWindowShowsItsPage) {
  PressKey(Control("txtInput"), VK_F1);
  EXPECT_TRUE(IsShown("main-window"));
}

TEST_F(HelpOutside, F1InTheSearchDialogShowsTheSearchPage) {
  ClickToolbar("find");
  const HWND dialog = Program().Form("frmFind");
  PressKey(FindControl(dialog, "Text1"), VK_F1);
  EXPECT_TRUE(IsShown("search"));
}

TEST_F(HelpOutside, TheHelpMenuShowsTheFirstPage) {
  ChooseMenu("mnuGuide");
  EXPECT_TRUE(IsShown("index"));
}

TEST_F(HelpOutside, AMissingPageIsToldWithItsPath) {
  fs::remove(FileAt("guide/sk/index.html"));
  ChooseMenu("mnuGuide");
  const HWND message = Program().Dialog();
  const auto text = MessageOf(message);
  EXPECT_TRUE(text.ends_with(FileAt("guide\\sk\\index.html").u16string())) << ToUtf8(text);
  PressInDialog(message, IDOK);
}

TEST_F(HelpOutside, TheHelpMenuTellsTheVersion) {
  ChooseMenu("mnuAbout");
  const HWND message = Program().Dialog();
  EXPECT_TRUE(MessageOf(message).ends_with(u"Verzia 3.0.0"));
  PressInDialog(message, IDOK);
}

}  // namespace
}  // namespace declarium
