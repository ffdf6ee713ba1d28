// F1 and the help menu in the program's windows, with a program in the browser's place.
#include "text/text.h"
#include "win32/program.h"
#include "win32/system_registry.h"
#include "window/outside_fixture.h"

namespace declarium {
namespace {

using namespace window_driver;
namespace fs = std::filesystem;

constexpr std::u16string_view kPageKind = u"Software\\Classes\\.html";
constexpr std::u16string_view kPageClass = u"Software\\Classes\\DeclariumTestPage";
constexpr auto kMachine = RegistryRoot::kLocalMachine;

// For as long as it lives pages are shown by the recorder. Wine looks kinds of files up for the
// machine only.
class PageRecorder {
 public:
  PageRecorder() : former_(registry_.Read(kMachine, kPageKind, u"").value_or(TextValue(u""))) {
    const auto recorder = fs::path(win32::ProgramPath()).parent_path() / "page_recorder.exe";
    SetValue(kPageKind, TextValue(u"DeclariumTestPage"));
    SetValue(std::u16string(kPageClass) + u"\\shell\\open\\command",
             TextValue(u"\"" + recorder.u16string() + u"\" \"%1\""));
  }
  PageRecorder(const PageRecorder&) = delete;
  PageRecorder& operator=(const PageRecorder&) = delete;
  ~PageRecorder() {
    SetValue(kPageKind, former_);
    EXPECT_TRUE(registry_.DeleteTree(kMachine, kPageClass));
  }

 private:
  void SetValue(std::u16string_view key, const RegistryValue& value) {
    EXPECT_TRUE(registry_.Write(kMachine, key, u"", value));
  }

  win32::SystemRegistry registry_;
  RegistryValue former_;
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

TEST_F(HelpOutside, AMissingPageIsReportedWithItsPath) {
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
