// The guide's first library, done as the page says: from the declarations that it gives to the
// text that it promises.
#include <regex>

#include "app/window_fixture.h"
#include "support/temporary_folder.h"
#include "text/text.h"

namespace declarium {
namespace {

// The page's blocks of Visual Basic, with the line ends of Windows.
std::vector<std::u16string> BlocksOf(std::string_view language) {
  const auto page = ContentOf(std::string(DECLARIUM_SOURCE_DIR "/docs/guide/") +
                              std::string(language) + "/first-library.md");
  static const std::regex fence("```vb\n([^`]*)```");
  std::vector<std::u16string> blocks;
  for (std::sregex_iterator block(page.begin(), page.end(), fence), end; block != end; ++block) {
    blocks.push_back(FromUtf8(std::regex_replace((*block)[1].str(), std::regex("\n"), "\r\n")));
  }
  return blocks;
}

class FirstLibrary : public WindowTest, public testing::WithParamInterface<std::string_view> {
 protected:
  void MakeLibrary(const std::u16string& declarations) {
    Script().AnswerText(u"Moje API");
    Script().AnswerFile(FileAt("moje.api").u16string());
    User().ChooseMenu(*Form().frmMain, "mnuNew");
    Script().InForm("frmAdd", [&](declarium::Form& frmAdd) {
      frmAdd.Get<TextBox>("Text1").SetText(declarations);
      User().Click(frmAdd.Get<CommandButton>("Command1"));
    });
    User().PressKey(Form().lstDeclare, 'D', {.control = true});
  }
};

TEST_P(FirstLibrary, GivesTheTextThatThePageShows) {
  const auto blocks = BlocksOf(GetParam());
  ASSERT_GE(blocks.size(), 2U);
  Open();
  EXPECT_EQ(Form().cmbDatabase.RowCount(), 0);
  MakeLibrary(blocks[0]);
  EXPECT_EQ(RowsOf(Form().cmbDatabase), std::vector<std::u16string>{u"Moje API"});
  User().ChooseRow(Form().cmbSelector, 1);
  User().Type(Form().txtInput, u"getc");
  EXPECT_EQ(EntriesOf(Form().lstShare), std::vector<std::u16string>{u"3 POINTAPI"});
  User().PressKey(key::kEnter);
  User().DoubleClickEntry(Form().lstShare, 1);
  User().ClickToolbar(Form().Toolbar1, "copy");
  EXPECT_EQ(toolkit().ClipboardText(), blocks[1]);
  User().PressKey(Form().txtInput, 'S', {.control = true});
  EXPECT_FALSE(Opened().dirty);
}

INSTANTIATE_TEST_SUITE_P(Guide, FirstLibrary, testing::Values("sk", "en"));

}  // namespace
}  // namespace declarium
