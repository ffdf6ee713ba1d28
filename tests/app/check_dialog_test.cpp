#include "check/ui/check_dialog.h"

#include "app/window_fixture.h"
#include "check/ui/check_form.h"
#include "text/user_texts.h"
#include "toolkit/captioned.h"
#include "toolkit/headless/form.h"
#include "toolkit/progress_bar.h"

namespace declarium {
namespace {

using Rows = std::vector<std::u16string>;

class Checking : public WindowTest {
 protected:
  Checking() {
    WriteFile("faulty.api", LibraryContent(u"Faulty", {{u"GOOD", u"/1"}, {u"MASK", u"Long/&HFFFF"}},
                                           {{u"Other", u"-\"mine\" (ByVal n As Long)"},
                                            {u"Sleep", u"-\"kernel32\" (dwMilliseconds As Long)"}},
                                           {{u"R", u"!n As Long"}}));
    WriteFile("Win32.api",
              LibraryContent(u"Win32", {},
                             {{u"Sleep", u"-\"kernel32\" (ByVal dwMilliseconds As Long)"}}, {}));
    WriteFile("Win32.facts",
              "Declarium facts 1\n"
              "d\tsleep\tsynchapi.h\tkernel32\t\t\t\t\t\tdwMilliseconds|i|DWORD||\n");
  }

  void OpenLibrary(std::u16string_view title = u"Faulty") {
    Open();
    ASSERT_TRUE(Form().cmbDatabase.SetText(title));
  }
  // The dialog after its check.
  declarium::Form& Check() {
    User().ChooseMenu(*Form().frmMain, "mnuCheck");
    auto& form = *toolkit_->Forms().back();
    EXPECT_EQ(form.Name(), "frmCheck");
    return form;
  }
  static ListView& ListOf(declarium::Form& form) { return form.Get<ListView>("LV1"); }
  static std::u16string CountOf(declarium::Form& form) {
    return form.Get<Label>("labCount").Caption();
  }
};

TEST_F(Checking, ListsErrorsBeforeWarningsWithRuleItemAndSentence) {
  OpenLibrary();
  auto& form = Check();
  EXPECT_TRUE(FindDefinitionFaults(CheckFormDefinition()).empty());
  EXPECT_FALSE(toolkit_->IsModalOpen());
  EXPECT_EQ(EntriesOf(ListOf(form)),
            (Rows{u"2 D302   chyba   Sleep (dwMilliseconds): Chýba ByVal",
                  u"1 D402   varovanie   MASK: Hexadecimálne číslo je záporné"}));
  EXPECT_EQ(CountOf(form), u"Nálezov: 2 (chyby: 1, varovania: 1, poznámky: 0)");
  EXPECT_EQ(form.Get<ProgressBar>("PB").Value(), 0);
}

TEST_F(Checking, TheSelectedFindingTellsWhatHappensAndHowItShouldBe) {
  OpenLibrary();
  auto& form = Check();
  EXPECT_EQ(ListOf(form).Selected(), 1);
  EXPECT_TRUE(ListOf(form).HasFocus());
  EXPECT_EQ(form.Get<Label>("labDetail").Caption(),
            u"Procedúra dostane adresu premennej namiesto jej hodnoty.");
  EXPECT_EQ(form.Get<RichText>("RTB").Text(),
            u"Declare Sub Sleep Lib \"kernel32\" (dwMilliseconds As Long)\r\n' Správne:\r\n"
            u"Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)");
  User().ClickEntry(ListOf(form), 2);
  // "&&" is what a label shows as "&".
  EXPECT_EQ(form.Get<Label>("labDetail").Caption(),
            u"&&H8000 až &&HFFFF bez && na konci sú 16-bitové čísla: &&HFFFF je -1, nie 65535.");
}

TEST_F(Checking, WhereNothingIsCertainTheItemOfTheProgramsLibraryIsShown) {
  WriteFile("faulty.api", LibraryContent(u"Faulty", {}, {{u"Sleep", u"-\"kernel32\" ()"}}, {}));
  OpenLibrary();
  auto& form = Check();
  EXPECT_EQ(EntriesOf(ListOf(form)),
            (Rows{u"2 D301   chyba   Sleep: Argumenty nie sú také dlhé, ako ich procedúra berie"}));
  EXPECT_EQ(form.Get<RichText>("RTB").Text(),
            u"Declare Sub Sleep Lib \"kernel32\" ()\r\n' V databáze programu:\r\n"
            u"Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)");
}

TEST_F(Checking, ADoubleClickAndEnterGoToTheItem) {
  OpenLibrary();
  User().ChooseRow(Form().cmbSelector, 2);
  auto& form = Check();
  User().DoubleClickEntry(ListOf(form), 1);
  EXPECT_EQ(Form().cmbSelector.ListIndex(), 1);
  EXPECT_EQ(Form().lstDeclare.Text(), u"Sleep");
  EXPECT_TRUE(Form().lstDeclare.Visible());
  EXPECT_TRUE(Form().RTB.Text().starts_with(u"Declare Sub Sleep"));
  User().ClickEntry(ListOf(form), 2);
  User().PressKey(ListOf(form), key::kEnter);
  EXPECT_EQ(Form().cmbSelector.ListIndex(), 0);
  EXPECT_EQ(Form().lstConst.Text(), u"MASK");
  EXPECT_TRUE(Form().RTB.Text().starts_with(u"Const MASK"));
}

TEST_F(Checking, GoingToTheItemThatIsSelectedShowsItAgain) {
  OpenLibrary();
  auto& form = Check();
  User().DoubleClickEntry(ListOf(form), 1);
  User().ChooseRow(Form().cmbSelector, 1);
  Form().RTB.Clear();
  User().Click(form.Get<CommandButton>("Command1"));
  EXPECT_TRUE(Form().RTB.Text().starts_with(u"Declare Sub Sleep"));
}

TEST_F(Checking, ADoubleClickOnEmptySpaceDoesNothing) {
  OpenLibrary();
  User().ChooseRow(Form().cmbSelector, 2);
  auto& form = Check();
  User().DoubleClickEmptySpace(ListOf(form));
  EXPECT_EQ(Form().cmbSelector.ListIndex(), 2);
}

TEST_F(Checking, AnItemThatWasDeletedMeanwhileIsReported) {
  OpenLibrary();
  auto& form = Check();
  User().DoubleClickEntry(ListOf(form), 1);
  Script().AnswerMessage(Answer::kYes);
  User().ChooseMenu(*Form().frmMain, "mnuDeleteDbItem");
  Script().AnswerMessage(Answer::kOk);
  User().DoubleClickEntry(ListOf(form), 1);
  EXPECT_EQ(Script().LastMessage().text, texts::kCheckGone);
  EXPECT_EQ(ListOf(form).Count(), 2);
}

TEST_F(Checking, ChecksWhatIsInMemoryAndAgainWhenAsked) {
  OpenLibrary();
  auto& form = Check();
  User().DoubleClickEntry(ListOf(form), 1);
  Script().AnswerMessage(Answer::kYes);
  User().ChooseMenu(*Form().frmMain, "mnuDeleteDbItem");
  User().Click(form.Get<CommandButton>("Command3"));
  EXPECT_EQ(EntriesOf(ListOf(form)),
            (Rows{u"1 D402   varovanie   MASK: Hexadecimálne číslo je záporné"}));
  EXPECT_TRUE(Opened().dirty);
}

TEST_F(Checking, TheMenuChecksAgainInTheOpenDialog) {
  OpenLibrary();
  auto& form = Check();
  const auto forms = toolkit_->Forms().size();
  ASSERT_TRUE(Form().cmbDatabase.SetText(u"Win32"));
  EXPECT_EQ(&Check(), &form);
  EXPECT_EQ(toolkit_->Forms().size(), forms);
  EXPECT_EQ(CountOf(form), u"Nenašlo sa nič. Skontrolovaných položiek: 1");
  EXPECT_EQ(ListOf(form).Count(), 0);
  EXPECT_FALSE(form.Get<CommandButton>("Command1").Enabled());
  EXPECT_EQ(form.Get<Label>("labDetail").Caption(), u"");
}

TEST_F(Checking, AnotherOpenLibraryWithoutTheItemIsReported) {
  OpenLibrary();
  auto& form = Check();
  ASSERT_TRUE(Form().cmbDatabase.SetText(u"Win32"));
  User().ClickEntry(ListOf(form), 2);
  Script().AnswerMessage(Answer::kOk);
  User().Click(form.Get<CommandButton>("Command1"));
  EXPECT_EQ(Messages(), Rows{std::u16string(texts::kCheckGone)});
}

TEST_F(Checking, WithoutTheProgramsLibrariesTheLanguageIsChecked) {
  std::filesystem::remove(FileAt("Win32.facts"));
  OpenLibrary();
  auto& form = Check();
  EXPECT_EQ(CountOf(form), u"Nálezov: 1 (chyby: 0, varovania: 1, poznámky: 0)" +
                               std::u16string(texts::kCheckLanguageOnly));
}

TEST_F(Checking, EscapeClosesAndTheNextOneIsNew) {
  OpenLibrary();
  auto& form = Check();
  User().PressKey(key::kEscape);
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_EQ(ListOf(Check()).Count(), 2);
}

TEST_F(Checking, ClosingTheMainWindowClosesIt) {
  OpenLibrary();
  auto& form = Check();
  User().Close(*Form().frmMain);
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(Checking, IsThereForAnOpenLibraryOnly) {
  WriteFile("win.api", "no library");
  Open();
  EXPECT_FALSE(Form().frmMain->Get<MenuItem>("mnuCheck").Enabled());
}

TEST_F(Checking, CancelEndsARunningCheck) {
  OpenLibrary();
  User().ChooseMenu(*Form().frmMain, "mnuCheck");
  auto& form = *toolkit_->Forms().back();
  bool is_cancelled = false;
  toolkit_->Post([&] {
    is_cancelled = true;
    EXPECT_FALSE(form.Get<CommandButton>("Command1").Enabled());
    EXPECT_EQ(CountOf(form), u"Kontroluje sa...");
    User().PressKey(key::kEscape);
  });
  User().Click(form.Get<CommandButton>("Command3"));
  EXPECT_TRUE(is_cancelled);
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(Checking, ARunningCheckIsNotBegunAgain) {
  OpenLibrary();
  User().ChooseMenu(*Form().frmMain, "mnuCheck");
  auto& form = *toolkit_->Forms().back();
  int begun = 0;
  toolkit_->Post([&] {
    ++begun;
    User().Click(form.Get<CommandButton>("Command3"));
    User().ChooseMenu(*Form().frmMain, "mnuCheck");
    EXPECT_EQ(CountOf(form), u"Kontroluje sa...");
  });
  User().Click(form.Get<CommandButton>("Command3"));
  EXPECT_EQ(begun, 1);
  EXPECT_EQ(ListOf(form).Count(), 2);
}

TEST_F(Checking, ALibraryOpenedMeanwhileLeavesTheFindingsOfTheFirst) {
  OpenLibrary();
  User().ChooseMenu(*Form().frmMain, "mnuCheck");
  auto& form = *toolkit_->Forms().back();
  toolkit_->Post([&] { ASSERT_TRUE(Form().cmbDatabase.SetText(u"Win32")); });
  User().Click(form.Get<CommandButton>("Command3"));
  EXPECT_EQ(Opened().Title(), u"Win32");
  EXPECT_EQ(ListOf(form).Count(), 2);
}

TEST(CheckForm, TheListGrowsWithTheWindow) {
  const auto at_first = CheckFormLayout(CheckFormDefinition().size);
  for (const auto& [name, bounds] : at_first) {
    for (const auto& control : CheckFormDefinition().controls) {
      if (control.name == name) {
        EXPECT_EQ(bounds, control.bounds) << name;
      }
    }
  }
  const auto larger = CheckFormLayout(
      {CheckFormDefinition().size.width + 100, CheckFormDefinition().size.height + 50});
  for (std::size_t i = 0; i < larger.size(); ++i) {
    const auto& [name, bounds] = larger[i];
    const auto& before = at_first[i].bounds;
    const bool is_list = name == "LV1";
    EXPECT_EQ(bounds.height - before.height, is_list ? 50 : 0) << name;
    EXPECT_EQ(bounds.top - before.top, is_list || name == "labCount" ? 0 : 50) << name;
    EXPECT_EQ(bounds.width - before.width, name.starts_with("Command") ? 0 : 100) << name;
  }
}

}  // namespace
}  // namespace declarium
