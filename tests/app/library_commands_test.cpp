#include <algorithm>

#include "app/window_fixture.h"
#include "shell/settings.h"

namespace declarium {
namespace {

using Rows = std::vector<std::u16string>;
using DatabaseCommandsTest = WindowTest;

constexpr std::u16string_view kAskSaveWin = u"Uložiť zmeny prevedené v databáze 'Win' ?";

TEST_F(DatabaseCommandsTest, StartSelectsTheRememberedRowOnlyWhenItHasTheRememberedTitle) {
  WriteWinLibrary("a.api", u"First");
  WriteWinLibrary("b.api", u"Second");
  WriteSetting(*store_, setting::kLastDatabaseIndex, 1);
  WriteSetting(*store_, setting::kLastDatabaseName, u"Second");
  Open();
  EXPECT_EQ(Opened().path, FileAt("b.api"));

  WriteSetting(*store_, setting::kLastDatabaseIndex, 0);
  WriteSetting(*store_, setting::kLastDatabaseName, u"first");
  window_.reset();
  Open();
  EXPECT_TRUE(Opened().path.empty()) << "the row has another title";
  EXPECT_EQ(RowsOf(Form().cmbDatabase), (Rows{u"First", u"Second"}));
  EXPECT_EQ(Form().cmbDatabase.ListIndex(), -1);
}

TEST_F(DatabaseCommandsTest, StartSelectsTheFirstRowWhenNoneWasSelectedAtTheLastClosing) {
  WriteWinLibrary("a.api", u"First");
  WriteSetting(*store_, setting::kLastDatabaseIndex, -1);
  Open();
  EXPECT_EQ(Opened().path, FileAt("a.api"));
}

TEST_F(DatabaseCommandsTest, CommandLineFileIsOpenedInsteadOfTheRememberedRow) {
  WriteWinLibrary("a.api", u"First");
  WriteWinLibrary("elsewhere.lib", u"Elsewhere");
  options_.command_line = FileAt("elsewhere.lib");
  Open();
  EXPECT_EQ(Form().frmMain->Caption(), u"Elsewhere - Declarium 3.0");
  EXPECT_EQ(Form().cmbDatabase.ListIndex(), -1);
}

TEST_F(DatabaseCommandsTest, MissingCommandLineFileFallsBackToTheRememberedRow) {
  WriteWinLibrary();
  Open();
  User().ChooseRow(Form().cmbDatabase, 0);
  options_.command_line = FileAt("missing.api");
  Reopen();
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
}

TEST_F(DatabaseCommandsTest, AFolderOnTheCommandLineFallsBackToTheRememberedRow) {
  WriteWinLibrary();
  Open();
  User().ChooseRow(Form().cmbDatabase, 0);
  options_.command_line = folder_ / "program";
  Reopen();
  EXPECT_TRUE(Messages().empty());
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
}

class WithTwoLibraries : public WindowTest {
 protected:
  WithTwoLibraries() {
    WriteWinLibrary("a.api", u"Win");
    WriteFile("b.api", LibraryContent(u"Other", {{u"C", u"/3"}, {u"D", u"/4"}}, {}, {}));
    Open();
    User().ChooseRow(Form().cmbDatabase, 0);
    User().ChooseRow(Form().cmbSelector, 0);
  }
  void MakeDirty() {
    Script().AnswerText(u"");
    User().ChooseMenu(*Form().frmMain, "mnuRename");
    ASSERT_TRUE(Opened().dirty);
  }
  // Whether the pointer has been the hourglass since this was last asked, and is none now.
  bool HourglassCameAndWent() {
    const auto& all = toolkit_->Pointers();
    const auto since = all.begin() + static_cast<std::ptrdiff_t>(pointers_seen_);
    const bool came = std::find(since, all.end(), MousePointer::kHourglass) != all.end();
    pointers_seen_ = all.size();
    return came && all.back() == MousePointer::kDefault;
  }

 private:
  std::size_t pointers_seen_ = 0;
};

TEST_F(WithTwoLibraries, ChoosingARowLoadsItsLibraryAndShowsItsItems) {
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH"}));
  User().ChooseRow(Form().cmbDatabase, 1);
  EXPECT_EQ(Form().frmMain->Caption(), u"Other - Declarium 3.0");
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"C", u"D"}));
  EXPECT_TRUE(Messages().empty());
}

// Filling the list handles pending events: here one that opens the other library.
TEST_F(WithTwoLibraries, ALibraryOpenedWhileAnotherIsBeingOpenedStaysOpenAndWhole) {
  toolkit_->Post([&] {
    Script().AnswerFile(FileAt("a.api").u16string());
    User().ChooseMenu(*Form().frmMain, "mnuOpen");
  });
  User().ChooseRow(Form().cmbDatabase, 1);
  const Library& library = Opened();
  EXPECT_EQ(library.path, FileAt("a.api"));
  EXPECT_EQ(library.Title(), u"Win");
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH"}));
  const auto before = ReadFile("a.api");
  User().ChooseMenu(*Form().frmMain, "mnuSave");
  EXPECT_EQ(ReadFile("a.api"), before);
}

TEST_F(WithTwoLibraries, ALibraryOpenedWhileAFaultyOneIsRefusedStaysOpenAndWhole) {
  WriteFile("faulty.api", "Faulty\x02X\x01\x01");
  const auto other = ReadFile("b.api");
  toolkit_->Post([&] { User().ChooseRow(Form().cmbDatabase, 1); });
  Script().AnswerFile(FileAt("faulty.api").u16string());
  Script().AnswerMessage(Answer::kOk);
  User().ChooseMenu(*Form().frmMain, "mnuOpen");
  EXPECT_EQ(Messages(), (Rows{u"Neplatný formát databázy."}));
  EXPECT_EQ(Opened().path, FileAt("b.api"));
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"C", u"D"}));
  User().ChooseMenu(*Form().frmMain, "mnuSave");
  EXPECT_EQ(ReadFile("b.api"), other);
  EXPECT_EQ(ReadFile("a.api").substr(0, 3), "Win");
}

TEST_F(WithTwoLibraries, SavingWhileALibraryIsBeingOpenedWritesItWhole) {
  const auto other = ReadFile("b.api");
  toolkit_->Post([&] { User().ChooseMenu(*Form().frmMain, "mnuSave"); });
  User().ChooseRow(Form().cmbDatabase, 1);
  EXPECT_EQ(ReadFile("b.api"), other);
  EXPECT_TRUE(Messages().empty());
}

TEST_F(WithTwoLibraries, ChoosingTheLoadedRowDoesNothing) {
  MakeDirty();
  User().ChooseRow(Form().cmbDatabase, 0);
  EXPECT_TRUE(Messages().empty());
}

TEST_F(WithTwoLibraries, CancelKeepsTheComboBoxOnThePreviousRow) {
  MakeDirty();
  Script().AnswerMessage(Answer::kCancel);
  User().ChooseRow(Form().cmbDatabase, 1);
  EXPECT_EQ(Messages(), (Rows{std::u16string(kAskSaveWin)}));
  EXPECT_EQ(Form().cmbDatabase.ListIndex(), 0);
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
  EXPECT_TRUE(Opened().dirty);
}

TEST_F(WithTwoLibraries, SaveQuestionHasYesNoCancelAndTheExclamationIcon) {
  MakeDirty();
  Script().AnswerMessage(Answer::kCancel);
  User().ChooseRow(Form().cmbDatabase, 1);
  EXPECT_EQ(Script().LastMessage(),
            (Message{std::u16string(kAskSaveWin), MessageButtons::kYesNoCancel,
                     MessageIcon::kExclamation}));
}

TEST_F(WithTwoLibraries, NoLeavesTheChangedFlagSoTheNextSwitchAsksAboutTheNewLibrary) {
  MakeDirty();
  Script().AnswerMessage(Answer::kNo);
  User().ChooseRow(Form().cmbDatabase, 1);
  EXPECT_TRUE(Opened().dirty);
  Script().AnswerMessage(Answer::kNo);
  User().ChooseRow(Form().cmbDatabase, 0);
  EXPECT_EQ(Messages(),
            (Rows{std::u16string(kAskSaveWin), u"Uložiť zmeny prevedené v databáze 'Other' ?"}));
}

TEST_F(WithTwoLibraries, YesSavesBeforeSwitching) {
  User().ChooseRow(Form().lstConst, 0);
  Script().AnswerMessage(Answer::kYes);
  User().ChooseMenu(*Form().frmMain, "mnuDeleteDbItem");
  Script().AnswerMessage(Answer::kYes);
  User().ChooseRow(Form().cmbDatabase, 1);
  EXPECT_FALSE(Opened().dirty);
  User().ChooseRow(Form().cmbDatabase, 0);
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"B", u"MAX_PATH"}));
}

TEST_F(WithTwoLibraries, CancelledRenameStillCountsAsAChange) {
  MakeDirty();
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
}

TEST_F(WithTwoLibraries, RenameOffersTheTitleAndChangesTheCaptionButNotTheCatalogue) {
  Script().AnswerText(u"Renamed");
  User().ChooseMenu(*Form().frmMain, "mnuRename");
  const auto& asked = std::get<headless::TextQuestion>(Script().AskedSoFar().back());
  EXPECT_EQ(asked.prompt, u"Zadajte nový názov databázy.");
  EXPECT_EQ(asked.initial_text, u"Win");
  EXPECT_EQ(Form().frmMain->Caption(), u"Renamed - Declarium 3.0");
  EXPECT_EQ(Form().cmbDatabase.Row(0), u"Win");
}

TEST_F(WithTwoLibraries, SavingARenamedLibraryShowsItsTitleAndLoadsItAgainFromItsFile) {
  User().ChooseRow(Form().lstConst, 1);
  Script().AnswerText(u"Renamed");
  User().ChooseMenu(*Form().frmMain, "mnuRename");
  User().PressKey('S', {.control = true});
  EXPECT_EQ(RowsOf(Form().cmbDatabase), (Rows{u"Renamed", u"Other"}));
  EXPECT_FALSE(Opened().dirty);
  EXPECT_TRUE(ReadFile("a.api").starts_with("Renamed\x02"));
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH"}));
  EXPECT_EQ(Form().lstConst.ListIndex(), -1) << "the list was filled again";
}

TEST_F(WithTwoLibraries, SavingWritesTheSameBytesAgain) {
  const auto before = ReadFile("a.api");
  EXPECT_FALSE(HourglassCameAndWent());
  User().ClickToolbar(Form().Toolbar1, "save");
  EXPECT_EQ(ReadFile("a.api"), before);
  EXPECT_TRUE(HourglassCameAndWent());
}

TEST_F(WithTwoLibraries, AFailedSaveIsShownAndStillClearsTheChangedFlag) {
  MakeDirty();
  std::filesystem::remove_all(FileAt(""));
  Script().AnswerMessage(Answer::kOk);
  User().ChooseMenu(*Form().frmMain, "mnuSave");
  EXPECT_EQ(Script().LastMessage(),
            (Message{u"Chyba pri zápise do súboru.", MessageButtons::kOk, MessageIcon::kCritical}));
  EXPECT_FALSE(Opened().dirty);
}

TEST_F(WithTwoLibraries, SaveAsOffersTheLibrarysFileAndSwitchesToTheNewOne) {
  MakeDirty();
  Script().AnswerFile(FileAt("c.api").u16string());
  User().ChooseMenu(*Form().frmMain, "mnuSaveAs");
  const auto& asked = std::get<headless::SaveQuestion>(Script().AskedSoFar().back());
  EXPECT_EQ(asked.dialog.file_name, FileAt("a.api").u16string());
  EXPECT_EQ(asked.dialog.filter, u"Api Database|*.api");
  EXPECT_TRUE(HourglassCameAndWent());
  EXPECT_EQ(Opened().path, FileAt("c.api"));
  EXPECT_FALSE(Opened().dirty);
  EXPECT_EQ(RowsOf(Form().cmbDatabase), (Rows{u"Win", u"Other", u"Win"}));
}

TEST_F(WithTwoLibraries, AFailedSaveAsIsShownAndStillSwitchesToTheNewFile) {
  MakeDirty();
  const auto missing = folder_ / "missing" / "x.api";
  Script().AnswerFile(missing.u16string());
  Script().AnswerMessage(Answer::kOk);
  User().ChooseMenu(*Form().frmMain, "mnuSaveAs");
  EXPECT_EQ(Messages(), (Rows{u"Chyba pri zápise do súboru."}));
  EXPECT_FALSE(Opened().dirty);
  EXPECT_EQ(Opened().path, missing);
}

TEST_F(WithTwoLibraries, AfterASaveAsTheRestoredRowCanDenoteAnotherLibraryWhichIsLoaded) {
  User().ChooseRow(Form().cmbDatabase, 1);
  Script().AnswerFile(FileAt("aa.api").u16string());
  User().ChooseMenu(*Form().frmMain, "mnuSaveAs");
  EXPECT_EQ(RowsOf(Form().cmbDatabase), (Rows{u"Win", u"Other", u"Other"}));
  EXPECT_EQ(Form().cmbDatabase.ListIndex(), 1);

  Script().AnswerFile(FileAt("0.api").u16string());
  User().ChooseMenu(*Form().frmMain, "mnuSaveAs");
  EXPECT_EQ(RowsOf(Form().cmbDatabase), (Rows{u"Other", u"Win", u"Other", u"Other"}));
  EXPECT_EQ(Form().cmbDatabase.ListIndex(), 1);
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
}

TEST_F(WithTwoLibraries, CancelledSaveAsChangesNothing) {
  MakeDirty();
  Script().AnswerFile(std::nullopt);
  User().ChooseMenu(*Form().frmMain, "mnuSaveAs");
  EXPECT_TRUE(Opened().dirty);
  EXPECT_EQ(Opened().path, FileAt("a.api"));
}

TEST_F(WithTwoLibraries, NewAsksForTheTitleThenForTheFileAndOpensTheEmptyLibrary) {
  Script().AnswerText(u"Čerstvá");
  Script().AnswerFile(FileAt("new.api").u16string());
  User().ClickToolbar(Form().Toolbar1, "new");
  const auto& title = std::get<headless::TextQuestion>(Script().AskedSoFar()[0]);
  EXPECT_EQ(title, (headless::TextQuestion{u"Zadajte názov databázy", u""}));
  const auto& file = std::get<headless::SaveQuestion>(Script().AskedSoFar()[1]);
  EXPECT_EQ(file.dialog.initial_folder, (folder_ / "program").u16string());
  EXPECT_EQ(Form().frmMain->Caption(), u"Čerstvá - Declarium 3.0");
  EXPECT_EQ(ReadFile("new.api"),
            "\xC8"
            "erstv\xE1\x02\x02");
  EXPECT_EQ(Form().cmbDatabase.ListIndex(), 2);
  EXPECT_EQ(Form().lstConst.RowCount(), 0);
}

TEST_F(WithTwoLibraries, ATitleThatNoFileCanHoldIsRefused) {
  // A refused rename counts as a change like a cancelled one, and New asks about changes first.
  for (const char* command : {"mnuNew", "mnuRename"}) {
    for (const char16_t code : {0, 1, 2}) {
      Script().AnswerText(std::u16string{u'T', code, u'x'});
      Script().AnswerMessage(Answer::kOk);
      User().ChooseMenu(*Form().frmMain, command);
      EXPECT_EQ(Messages(), (Rows{std::u16string(u"Názov databázy nemôže obsahovať znak s kódom ") +
                                  static_cast<char16_t>(u'0' + code) + u"."}));
      EXPECT_EQ(Opened().Title(), u"Win");
    }
  }
  EXPECT_EQ(RowsOf(Form().cmbDatabase), (Rows{u"Win", u"Other"}));
}

TEST_F(WithTwoLibraries, ATitleWithACharacterOutsideTheCodePageIsRefused) {
  const std::pair<std::u16string_view, std::u16string_view> kCharacters[] = {
      {u"\u2192", u"znak \u2192 (U+2192)"}, {u"\U0001F600", u"znak \U0001F600 (U+1F600)"}};
  for (const char* command : {"mnuNew", "mnuRename"}) {
    for (const auto& [character, name] : kCharacters) {
      Script().AnswerText(std::u16string(u"\u010D").append(character));
      Script().AnswerMessage(Answer::kOk);
      User().ChooseMenu(*Form().frmMain, command);
      EXPECT_EQ(Messages(),
                (Rows{std::u16string(u"Názov databázy nemôže obsahovať ").append(name) + u"."}));
      EXPECT_EQ(Opened().Title(), u"Win");
    }
  }
}

TEST_F(WithTwoLibraries, NewStopsAtAnEmptyTitleOrACancelledDialog) {
  Script().AnswerText(u"");
  User().ChooseMenu(*Form().frmMain, "mnuNew");
  Script().AnswerText(u"T");
  Script().AnswerFile(std::nullopt);
  User().ChooseMenu(*Form().frmMain, "mnuNew");
  EXPECT_EQ(RowsOf(Form().cmbDatabase), (Rows{u"Win", u"Other"}));
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
}

TEST_F(WithTwoLibraries, NewAndOpenStopWhenTheSaveQuestionIsCancelled) {
  MakeDirty();
  for (const char* command : {"mnuNew", "mnuOpen"}) {
    Script().AnswerMessage(Answer::kCancel);
    User().ChooseMenu(*Form().frmMain, command);
    EXPECT_EQ(Messages(), (Rows{std::u16string(kAskSaveWin)})) << command;
  }
  EXPECT_TRUE(Opened().dirty);
}

TEST_F(WithTwoLibraries, ANewLibraryThatCannotBeWrittenIsReportedAndNotOpened) {
  Script().AnswerText(u"T");
  Script().AnswerFile((folder_ / "missing" / "t.api").u16string());
  for (int i = 0; i < 3; ++i) Script().AnswerMessage(Answer::kOk);
  User().ChooseMenu(*Form().frmMain, "mnuNew");
  EXPECT_EQ(Messages(), (Rows{u"Chyba pri zápise do súboru.", u"Chyba pri čítaní zo súboru.",
                              u"Neplatný formát databázy."}));
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
}

TEST_F(WithTwoLibraries, CancelledOpenChangesNothing) {
  Script().AnswerFile(std::nullopt);
  User().ChooseMenu(*Form().frmMain, "mnuOpen");
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
  EXPECT_EQ(Form().cmbDatabase.ListIndex(), 0);
}

TEST_F(WithTwoLibraries, AFileWhoseTitleChangedMeanwhileSelectsTheRowOfItsPath) {
  WriteFile("b.api", LibraryContent(u"Changed", {{u"C", u"/3"}}, {}, {}));
  Script().AnswerFile(FileAt("b.api").u16string());
  User().ChooseMenu(*Form().frmMain, "mnuOpen");
  EXPECT_EQ(Form().frmMain->Caption(), u"Changed - Declarium 3.0");
  EXPECT_EQ(Form().cmbDatabase.Text(), u"Other");
}

TEST_F(WithTwoLibraries, OpenLoadsAFileOutsideTheFolderAndShowsNoRow) {
  const auto outside = folder_ / "outside.api";
  std::filesystem::copy_file(FileAt("b.api"), outside);
  Script().AnswerFile(outside.u16string());
  User().ClickToolbar(Form().Toolbar1, "open");
  EXPECT_EQ(Form().frmMain->Caption(), u"Other - Declarium 3.0");
  EXPECT_EQ(Form().cmbDatabase.ListIndex(), -1);
}

TEST_F(WithTwoLibraries, TwoFilesWithOneTitleShowTwoRowsAndEitherLoadsTheFirst) {
  std::filesystem::copy_file(FileAt("a.api"), FileAt("z.api"));
  User().ChooseMenu(*Form().frmMain, "mnuSave");
  ASSERT_EQ(RowsOf(Form().cmbDatabase), (Rows{u"Win", u"Other", u"Win"}));
  User().ChooseRow(Form().cmbDatabase, 1);
  User().ChooseRow(Form().cmbDatabase, 2);
  EXPECT_EQ(Opened().path, FileAt("a.api"));
}

TEST_F(WithTwoLibraries, DeleteAsksWithNoAsTheDefaultAndNoKeepsTheItem) {
  User().ChooseRow(Form().lstConst, 1);
  Script().AnswerMessage(Answer::kNo);
  User().ChooseMenu(*Form().frmMain, "mnuDeleteDbItem");
  EXPECT_EQ(Script().LastMessage(),
            (Message{u"Naozaj chcete natrvalo odtrániť položku 'B' z databázy?",
                     MessageButtons::kYesNo, MessageIcon::kExclamation, DefaultButton::kSecond}));
  EXPECT_EQ(Form().lstConst.RowCount(), 3);
  EXPECT_FALSE(Opened().dirty);
}

TEST_F(WithTwoLibraries, DeleteRemovesTheItemAndRefillsTheList) {
  User().ChooseRow(Form().lstConst, 1);
  Script().AnswerMessage(Answer::kYes);
  User().ChooseMenu(*Form().frmMain, "mnuDeleteDbItem");
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"MAX_PATH"}));
  EXPECT_EQ(Opened()[Kind::kConst].items.size(), 2U);
  EXPECT_TRUE(Opened().dirty);
}

TEST_F(WithTwoLibraries, DeletingTheLastItemsLeavesTheKindEmpty) {
  User().ChooseRow(Form().cmbSelector, 2);
  for (int i = 0; i < 2; ++i) {
    User().ChooseRow(Form().lstType, 0);
    Script().AnswerMessage(Answer::kYes);
    User().ChooseMenu(*Form().frmMain, "mnuDeleteDbItem");
  }
  EXPECT_EQ(Form().lstType.RowCount(), 0);
  EXPECT_TRUE(Opened()[Kind::kType].names.empty());
}

TEST_F(WithTwoLibraries, DeletingWithNothingSelectedAsksNothing) {
  User().PressKey(Form().lstConst, key::kDelete, {.control = true});
  Form().mnuDeleteDbItem.on_click.Raise();
  EXPECT_TRUE(Messages().empty());
  EXPECT_FALSE(Opened().dirty);
}

TEST_F(WithTwoLibraries, ControlDeleteInATextBoxDeletesAWordAndNoItem) {
  User().ChooseRow(Form().lstConst, 1);
  Form().txtFind.SetText(u"Get Window");
  User().PressKey(Form().txtFind, key::kDelete, {.control = true});
  EXPECT_EQ(Form().txtFind.Text(), u"Window");
  EXPECT_TRUE(Messages().empty());
  EXPECT_EQ(Form().lstConst.RowCount(), 3);
}

TEST_F(WithTwoLibraries, DeleteIsOfferedOnlyWhileARowIsSelected) {
  Form().mnuDatabase.on_click.Raise();
  EXPECT_FALSE(Form().mnuDeleteDbItem.Enabled());
  User().ChooseRow(Form().lstConst, 0);
  Form().mnuDatabase.on_click.Raise();
  EXPECT_TRUE(Form().mnuDeleteDbItem.Enabled());
}

TEST_F(WithTwoLibraries, AFileWithoutSectionsIsReportedAndTheFirstRowIsLoaded) {
  WriteFile("c.api", std::string("Broken\x02"
                                 "X\x01\x01",
                                 10));
  User().ChooseMenu(*Form().frmMain, "mnuSave");
  User().ChooseRow(Form().cmbDatabase, 1);
  Script().AnswerMessage(Answer::kOk);
  User().ChooseRow(Form().cmbDatabase, 2);
  EXPECT_EQ(Messages(), (Rows{u"Neplatný formát databázy."}));
  EXPECT_EQ(Form().cmbDatabase.ListIndex(), 0);
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
  EXPECT_TRUE(Form().mnuSave.Enabled());
}

TEST_F(WithTwoLibraries, AFaultyFileLeavesItsNamesButTheOldTitleAndPath) {
  WriteFile("a.api", std::string("Broken\x02"
                                 "X\x01\x01",
                                 10));
  Script().AnswerFile(FileAt("a.api").u16string());
  Script().AnswerMessage(Answer::kOk);
  User().ChooseMenu(*Form().frmMain, "mnuOpen");
  EXPECT_EQ(Messages(), (Rows{u"Neplatný formát databázy."}));
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
  EXPECT_EQ(Opened().path, FileAt("a.api"));
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"X"}));
  for (const MenuItem* entry :
       {&Form().mnuSave, &Form().mnuSaveAs, &Form().mnuImport, &Form().mnuExport, &Form().mnuAdd,
        &Form().mnuRename, &Form().mnuCheck}) {
    EXPECT_FALSE(entry->Enabled()) << entry->Name();
  }
  EXPECT_FALSE(Form().Toolbar1.ButtonEnabled("save"));
}

TEST_F(WithTwoLibraries, AFileThatCannotBeReadGivesTwoMessages) {
  Script().AnswerFile((folder_ / "missing.api").u16string());
  Script().AnswerMessage(Answer::kOk);
  Script().AnswerMessage(Answer::kOk);
  User().ChooseMenu(*Form().frmMain, "mnuOpen");
  EXPECT_EQ(Messages(), (Rows{u"Chyba pri čítaní zo súboru.", u"Neplatný formát databázy."}));
}

TEST_F(DatabaseCommandsTest, ABrokenFirstLibraryIsReportedOnceMoreAndNotForEver) {
  WriteFile("a.api", "First\x02names");
  WriteFile("b.api", "Second\x02names");
  Open();
  ASSERT_EQ(RowsOf(Form().cmbDatabase), (Rows{u"First", u"Second"}));
  Script().AnswerMessage(Answer::kOk);
  Script().AnswerMessage(Answer::kOk);
  User().ChooseRow(Form().cmbDatabase, 1);
  EXPECT_EQ(Messages(), (Rows{u"Neplatný formát databázy.", u"Neplatný formát databázy."}));
  EXPECT_EQ(Form().cmbDatabase.ListIndex(), 0);
}

TEST_F(WithTwoLibraries, LoadingClearsTheHitsAndTheSharedItems) {
  User().ChooseRow(Form().lstConst, 1);
  ASSERT_EQ(Form().lstShare.Count(), 1);
  User().Type(Form().txtFind, u"a");
  User().PressKey(Form().txtFind, key::kEnter);
  ASSERT_GT(Form().lstFind.RowCount(), 0);
  User().ChooseRow(Form().cmbDatabase, 1);
  EXPECT_EQ(Form().lstShare.Count(), 0);
  EXPECT_EQ(Form().lstFind.RowCount(), 0);
}

TEST_F(WithTwoLibraries, CommandsThatNeedALibraryAreDisabledBeforeTheFirstLoad) {
  EXPECT_TRUE(Form().mnuSave.Enabled());
  window_.reset();
  store_.emplace(folder_ / "none");
  Open();
  for (const MenuItem* entry :
       {&Form().mnuSave, &Form().mnuSaveAs, &Form().mnuImport, &Form().mnuExport, &Form().mnuAdd,
        &Form().mnuRename, &Form().mnuCheck}) {
    EXPECT_FALSE(entry->Enabled()) << entry->Name();
  }
  EXPECT_FALSE(Form().Toolbar1.ButtonEnabled("save"));
}

TEST_F(WithTwoLibraries, SwitchingKindsEmptiesTheBoxesAndFillsAListOnlyOnce) {
  User().Type(Form().txtInput, u"b");
  ASSERT_EQ(Form().lstConst.ListIndex(), 1);
  User().ChooseRow(Form().cmbSelector, 1);
  EXPECT_EQ(Form().txtInput.Text(), u"");
  EXPECT_EQ(Form().RTB.Text(), u"");
  EXPECT_FALSE(Form().lstConst.Visible());
  EXPECT_TRUE(Form().lstDeclare.Visible());
  EXPECT_TRUE(Form().lstDeclare.HasFocus());
  Form().lstConst.Clear();
  Form().lstConst.AddRow(u"kept");
  User().ChooseRow(Form().cmbSelector, 0);
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"kept"}));
}

}  // namespace
}  // namespace declarium
