// Every file call of a save, a save as, an export and a new library fails in turn, alone and with
// all that come after it: the user is told, the libraries are whole, and his work can be saved
// again.
#include <algorithm>

#include "app/window_fixture.h"
#include "library/file_format.h"
#include "support/faulty_files.h"
#include "support/kept_versions.h"
#include "support/temporary_folder.h"

namespace declarium {
namespace {

constexpr std::u16string_view kChangesKept =
    u"Čo sa nedalo zapísať, je uložené v histórii. Otvoríte to cez Databáza, Obnoviť staršiu "
    u"verziu.";

// The window over a library with an unsaved title, with files that fail.
class Session : public WindowTest {
 public:
  Session() {
    options_.history = folder_ / "history";
    options_.files = &files_;
    WriteWinLibrary("a.api", u"Win");
    WriteFile("out.bas", "Const OLD = 1");
    WriteFile("out.list", "OLD");
    Open();
    User().ChooseRow(Form().cmbDatabase, 0);
    User().ChooseRow(Form().cmbSelector, 0);
    User().ChooseRow(Form().lstConst, 0);
    Script().AnswerText(u"Mine");
    User().ChooseMenu(*Form().frmMain, "mnuRename");
    User().ClickToolbar(Form().Toolbar1, "add");
  }
  void TestBody() override {}

  // Chooses a command with this file in its dialog; says what was told, beside the question whether
  // to save before.
  std::vector<std::u16string> Do(const char* menu, const char* file) {
    (void)Messages();
    Script() = {};
    if (std::string_view(menu) == "mnuNew") {
      Script().AnswerMessage(Answer::kNo);
      Script().AnswerText(u"New");
    }
    if (file) Script().AnswerFile(FileAt(file).u16string());
    for (int message = 0; message < 4; ++message) Script().AnswerMessage(Answer::kOk);
    User().ChooseMenu(*Form().frmMain, menu);
    auto told = Messages();
    std::erase_if(told, [](const auto& text) { return text.starts_with(u"Uložiť zmeny"); });
    return told;
  }
  [[nodiscard]] std::string Content(const char* file) const {
    return std::filesystem::exists(FileAt(file)) ? ReadFile(file) : std::string();
  }
  [[nodiscard]] bool IsKept(const char* file, const std::string& content) const {
    return declarium::IsKept(folder_ / "history", FileAt(file), content);
  }

  FaultyFiles files_;
};

struct Command {
  const char* menu;
  const char* file;    // for its file dialog
  const char* target;  // what it writes
};

constexpr Command kCommands[] = {
    {"mnuSave", nullptr, "a.api"},
    {"mnuSaveAs", "b.api", "b.api"},
    {"mnuNew", "c.api", "c.api"},
    {"mnuExport", "out.bas", "out.bas"},
    {"mnuSaveList", "out.list", "out.list"},
};

class WindowFileFaults : public testing::TestWithParam<std::size_t> {};

TEST_P(WindowFileFaults, AreToldAndLoseNothing) {
  const auto& [menu, file, target] = kCommands[GetParam()];
  Session whole;
  const auto before = whole.Content(target);
  ASSERT_TRUE(whole.Do(menu, file).empty());
  const auto after = whole.Content(target);
  ASSERT_NE(after, before);
  for (const auto fault : {FaultyFiles::Fault::kOnce, FaultyFiles::Fault::kFromThenOn}) {
    bool reached = true;
    for (int call = 0; reached && !HasFailure(); ++call) {
      SCOPED_TRACE(std::string(menu) + ", call " + std::to_string(call));
      Session session;
      session.files_.FailAt(call, fault);
      const auto told = session.Do(menu, file);
      reached = session.files_.Calls() > call;
      session.files_.FailNever();
      const auto content = session.Content(target);
      const bool failed = std::ranges::count(told, kWriteError) > 0;
      EXPECT_EQ(content, failed ? before : after);
      EXPECT_TRUE(failed || before.empty() || !told.empty() || session.IsKept(target, before));
      EXPECT_EQ(std::ranges::count(told, kChangesKept) > 0,
                failed && session.IsKept(target, after));
      if (std::string_view(menu) == "mnuNew") continue;
      session.Do(menu, file);
      EXPECT_EQ(session.Content(target), after) << "the second try";
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Commands, WindowFileFaults,
                         testing::Range<std::size_t>(0, std::size(kCommands)),
                         [](const auto& command) { return kCommands[command.param].menu; });

}  // namespace
}  // namespace declarium
