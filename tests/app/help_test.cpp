// Which page of the guide each window asks for, and that the guide has it.
#include <filesystem>

#include "app/window_fixture.h"
#include "check/ui/check_form.h"
#include "host/ui/plan_form.h"
#include "host/ui/project_form.h"
#include "host/ui/reading_window.h"
#include "import/ui/add_dialog.h"
#include "library/ui/history_dialog.h"
#include "search/ui/search_form.h"
#include "shell/ui/options_dialog.h"
#include "text/user_texts.h"
#include "toolkit/headless/form.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

using PageNames = std::vector<std::string>;

class HelpTest : public WindowTest {
 protected:
  HelpTest() {
    WriteWinLibrary();
    fs::create_directories(FileAt("guide/sk"));
    for (const auto* page : {"index", "main-window", "search", "add-and-import", "options"}) {
      WriteFile("guide/sk/" + std::string(page) + ".html", "<p>");
    }
    Open();
    User().ChooseRow(Form().cmbDatabase, 0);
  }

  // The pages opened since this was last asked.
  [[nodiscard]] PageNames Pages() {
    PageNames pages;
    const auto& opened = toolkit_->OpenedDocuments();
    for (; taken_ < opened.size(); ++taken_)
      pages.push_back(fs::path(opened[taken_]).stem().string());
    return pages;
  }

 private:
  std::size_t taken_ = 0;
};

TEST_F(HelpTest, F1InTheMainWindowShowsItsPageWhereverTheFocusIs) {
  User().PressKey(Form().txtInput, key::kF1);
  EXPECT_EQ(Pages(), PageNames{"main-window"});
  User().PressKey(Form().lstDeclare, key::kF1);
  EXPECT_EQ(Pages(), PageNames{"main-window"});
}

TEST_F(HelpTest, TheHelpMenuShowsTheFirstPageOrThatOfTheWindow) {
  User().ChooseMenu(*Form().frmMain, "mnuGuide");
  User().ChooseMenu(*Form().frmMain, "mnuHelpHere");
  EXPECT_EQ(Pages(), (PageNames{"index", "main-window"}));
}

TEST_F(HelpTest, TheHelpMenuTellsWhatTheProgramIs) {
  Script().AnswerMessage(Answer::kOk);
  User().ChooseMenu(*Form().frmMain, "mnuAbout");
  EXPECT_EQ(Script().LastMessage().icon, MessageIcon::kInformation);
}

TEST_F(HelpTest, F1InTheSearchDialogShowsTheSearchPage) {
  User().ClickToolbar(Form().Toolbar1, "find");
  User().PressKey(toolkit_->ActiveForm()->Get<TextBox>("Text5"), key::kF1);
  EXPECT_EQ(Pages(), PageNames{"search"});
}

TEST_F(HelpTest, F1InTheAddDialogShowsThePageOfAddingAndImporting) {
  Script().InForm("frmAdd", [this](declarium::Form& frmAdd) {
    User().PressKey(frmAdd.Get<TextBox>("Text1"), key::kF1);
    User().Click(frmAdd.Get<CommandButton>("Command2"));
  });
  User().ChooseMenu(*Form().frmMain, "mnuAdd");
  EXPECT_EQ(Pages(), PageNames{"add-and-import"});
}

TEST_F(HelpTest, F1InTheSettingsShowsTheirPage) {
  Script().InForm("frmOptions", [this](declarium::Form& frmOptions) {
    User().PressKey(frmOptions.Get<PictureBox>("picColor1"), key::kF1);
    User().Click(frmOptions.Get<CommandButton>("Command1"));
  });
  User().ClickToolbar(Form().Toolbar1, "settings");
  EXPECT_EQ(Pages(), PageNames{"options"});
}

TEST_F(HelpTest, AMissingGuideIsReportedWithThePathOfThePage) {
  fs::remove_all(FileAt("guide"));
  Script().AnswerMessage(Answer::kOk);
  User().PressKey(Form().txtInput, key::kF1);
  const auto page = FileAt("guide") / "sk" / "main-window.html";
  EXPECT_EQ(Script().LastMessage().text,
            std::u16string(texts::kGuideMissing) + u"\r\n" + page.u16string());
}

TEST(GuidePages, AreThereInBothLanguagesForEveryFormThatAsks) {
  const FormDefinition* const forms[] = {
      &MainFormDefinition(),    &AddDialogDefinition(),   &HistoryFormDefinition(),
      &OptionsFormDefinition(), &CheckFormDefinition(),   &PlanFormDefinition(),
      &ProjectFormDefinition(), &ReadingFormDefinition(), &SearchFormDefinition()};
  for (const auto* form : forms) {
    ASSERT_FALSE(form->help_topic.empty()) << form->name;
    for (const auto* language : {"sk", "en"}) {
      const auto page = fs::path(DECLARIUM_SOURCE_DIR) / "docs/guide" / language /
                        (std::string(form->help_topic) + ".md");
      EXPECT_TRUE(fs::exists(page)) << page;
    }
  }
}

}  // namespace
}  // namespace declarium
