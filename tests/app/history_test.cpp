// What the main window does so that no library is lost: the history, libraries that others changed,
// loads and saves that fail.
#include "library/history.h"

#include <gmock/gmock.h>

#include "app/window_fixture.h"
#include "library/temporary_file.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::u16string_view kAskReplace =
    u"Súbor medzitým zmenil niekto iný. Nahradiť ho? Jeho obsah zostane v histórii.";

MATCHER_P(BeginsWith, text, "") {
  return std::u16string_view(arg).starts_with(text);
}

class WithHistory : public WindowTest {
 protected:
  WithHistory() {
    options_.history = folder_ / "history";
    WriteWinLibrary("a.api", u"Win");
    before_ = ReadFile("a.api");
    Open();
    User().ChooseRow(Form().cmbDatabase, 0);
    User().ChooseRow(Form().cmbSelector, 0);
  }

  // What the history holds of a file, the newest first, as "reason content".
  [[nodiscard]] std::vector<std::string> Kept(std::string_view name) const {
    const History history(SystemFiles(), folder_ / "history");
    std::vector<std::string> kept;
    for (const auto& version : history.Versions(FileAt(name))) {
      kept.push_back(std::string(ReasonWord(version.reason)) + " " +
                     history.Read(version).value_or("?"));
    }
    return kept;
  }
  void Rename(std::u16string_view title) {
    Script().AnswerText(std::u16string(title));
    User().ChooseMenu(*Form().frmMain, "mnuRename");
  }
  // Answers so many messages that only inform.
  void Confirm(int messages) {
    for (int i = 0; i < messages; ++i) Script().AnswerMessage(Answer::kOk);
  }
  void Save() { User().ChooseMenu(*Form().frmMain, "mnuSave"); }
  // What another program does; with another size, so that no clock matters.
  void ChangeOutside() {
    fs::remove(FileAt("a.api"));
    WriteFile("a.api", LibraryContent(u"Somebody else's", {{u"X", u"/1"}}, {}, {}));
  }

  std::string before_;
};

TEST_F(WithHistory, SavingKeepsWhatTheFileHeld) {
  Rename(u"New title");
  Save();
  EXPECT_THAT(Kept("a.api"), ElementsAre("replaced " + before_));
  EXPECT_TRUE(Messages().empty());
}

TEST_F(WithHistory, ALibraryThatSomebodyElseChangedIsReplacedOnlyAfterAYes) {
  Rename(u"Mine");
  ChangeOutside();
  const auto theirs = ReadFile("a.api");
  Script().AnswerMessage(Answer::kNo);
  Save();
  EXPECT_THAT(Messages(), ElementsAre(kAskReplace));
  EXPECT_EQ(ReadFile("a.api"), theirs);
  EXPECT_TRUE(Opened().dirty);
  Script().AnswerMessage(Answer::kYes);
  Save();
  EXPECT_THAT(Kept("a.api"), ElementsAre("replaced " + theirs));
  EXPECT_THAT(ReadFile("a.api"), StartsWith("Mine"));
}

TEST_F(WithHistory, ANoToReplacingKeepsTheLibraryOpenWhenAnotherWasToBeOpened) {
  WriteFile("b.api", LibraryContent(u"Other", {{u"C", u"/3"}}, {}, {}));
  window_.reset();
  Open();
  User().ChooseRow(Form().cmbDatabase, 0);
  Rename(u"Mine");
  ChangeOutside();
  Script().AnswerMessage(Answer::kYes);  // save
  Script().AnswerMessage(Answer::kNo);   // but not over the other's
  User().ChooseRow(Form().cmbDatabase, 1);
  EXPECT_EQ(Opened().Title(), u"Mine");
  EXPECT_TRUE(Opened().dirty);
}

TEST_F(WithHistory, ItsOwnSaveIsNotTakenForSomebodyElses) {
  for (const char16_t* title : {u"One", u"Two"}) {
    Rename(title);
    Save();
  }
  EXPECT_TRUE(Messages().empty());
}

TEST_F(WithHistory, AnOlderVersionOpensAsALibraryWithUnsavedChanges) {
  Rename(u"New title");
  Save();
  const auto saved = ReadFile("a.api");
  bool shown = false;
  Script().InForm("frmHistory", [&](declarium::Form& form) {
    shown = true;
    auto& list = form.Get<ListBox>("lstVersions");
    ASSERT_EQ(list.RowCount(), 1);
    EXPECT_TRUE(list.Row(0).ends_with(u"nahradená   rovnaká")) << "only the title differs";
    User().Click(form.Get<CommandButton>("Command1"));
  });
  User().ChooseMenu(*Form().frmMain, "mnuRestore");
  EXPECT_TRUE(shown);
  EXPECT_EQ(Opened().Title(), u"Win");
  EXPECT_EQ(Opened().path, FileAt("a.api"));
  EXPECT_TRUE(Opened().dirty);
  EXPECT_EQ(ReadFile("a.api"), saved);
  Save();
  EXPECT_EQ(ReadFile("a.api"), before_);
}

TEST_F(WithHistory, AFileWithoutVersionsIsTold) {
  Confirm(1);
  User().ChooseMenu(*Form().frmMain, "mnuRestore");
  EXPECT_THAT(Messages(), ElementsAre(u"Tento súbor nemá staršie verzie."));
}

TEST_F(WithHistory, WhatCouldNotBeWrittenIsKeptToldAndOfferedAtTheNextStart) {
  Rename(u"Unwritten");
  fs::remove(FileAt("a.api"));
  fs::create_directory(FileAt("a.api"));
  Confirm(2);
  Save();
  EXPECT_THAT(Messages(),
              ElementsAre(kWriteError, BeginsWith(u"Čo sa nedalo zapísať, je uložené v histórii")));
  fs::remove(FileAt("a.api"));
  WriteFile("a.api", before_);
  window_.reset();
  Script().AnswerMessage(Answer::kYes);
  Open();
  EXPECT_THAT(Messages(), ElementsAre(BeginsWith(u"Tieto zmeny sa minule nedali zapísať.")));
  EXPECT_EQ(Opened().Title(), u"Unwritten");
  EXPECT_TRUE(Opened().dirty);
  window_.reset();
  Open();
  EXPECT_TRUE(Messages().empty()) << "told once";
}

TEST_F(WithHistory, UnsavedChangesCanBeKeptWithoutAsking) {
  EXPECT_FALSE(window_->KeepUnsaved()) << "nothing is unsaved yet";
  Rename(u"Unsaved");
  EXPECT_TRUE(window_->KeepUnsaved());
  ASSERT_EQ(Kept("a.api").size(), 1U);
  EXPECT_THAT(Kept("a.api")[0], StartsWith("unwritten Unsaved"));
}

TEST_F(WithHistory, TheSameUnsavedChangesAreKeptOnce) {
  Rename(u"Unsaved");
  EXPECT_TRUE(window_->KeepUnsaved());
  EXPECT_TRUE(window_->KeepUnsaved());
  EXPECT_EQ(Kept("a.api").size(), 1U);
  Rename(u"Unsaved again");
  EXPECT_TRUE(window_->KeepUnsaved());
  EXPECT_EQ(Kept("a.api").size(), 2U);
}

TEST_F(WithHistory, ALoadThatFailedHalfWayIsWrittenToNoFile) {
  const auto broken = std::string(
      "Broken\x02"
      "Q\x01\x01",
      10);
  WriteFile("b.txt", broken);
  Rename(u"Changed");
  Script().AnswerMessage(Answer::kNo);
  Script().AnswerFile(FileAt("b.txt").u16string());
  Confirm(1);
  // The first row of the catalogue is loaded next; an empty catalogue leaves the lists as they are.
  fs::remove(FileAt("a.api"));
  const auto path = FileAt("a.api");
  Form().cmbDatabase.Clear();
  User().ChooseMenu(*Form().frmMain, "mnuOpen");
  EXPECT_EQ(Messages().back(), u"Neplatný formát databázy.");
  EXPECT_FALSE(Opened().IsWhole());
  Script().AnswerMessage(Answer::kYes);
  Confirm(1);
  User().Close(*Form().frmMain);
  EXPECT_THAT(Messages(), testing::Contains(kWriteError));
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(WithHistory, ALibraryThatWouldNotLoadAgainEqualIsNotWritten) {
  // What is left of the kind is an item without a name, which no file can tell from no item.
  WriteFile("a.api", LibraryContent(u"Win", {{u"", u"/1"}, {u"X", u"/2"}}, {}, {}));
  const auto kept = ReadFile("a.api");
  window_.reset();
  Open();
  User().ChooseRow(Form().cmbDatabase, 0);
  User().ChooseRow(Form().cmbSelector, 0);
  User().ChooseRow(Form().lstConst, 1);
  Script().AnswerMessage(Answer::kYes);
  User().ChooseMenu(*Form().frmMain, "mnuDeleteDbItem");
  ASSERT_EQ(Messages().size(), 1U);
  Confirm(2);
  Save();
  EXPECT_THAT(Messages(), ElementsAre(kWriteError,
                                      u"Tu je znak, ktorý sa v súbore databázy nedá "
                                      u"uchovať:\r\n\r\nConst "));
  EXPECT_EQ(ReadFile("a.api"), kept);
}

TEST_F(WithHistory, AFileThatAKilledSaverLeftWithoutItsNameIsPutBackAndTold) {
  const auto content = LibraryContent(u"Left", {{u"L", u"/1"}}, {}, {});
  const auto left = TemporaryFileFor(FileAt("left.api"), 4711, HashOf(content));
  WriteFile(left.filename().string(), content);
  fs::last_write_time(left, fs::file_time_type::clock::now() - std::chrono::minutes(2));
  window_.reset();
  Confirm(1);
  Open();
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_EQ(ReadFile("left.api"), content);
  EXPECT_EQ(Form().cmbDatabase.RowCount(), 2);
}

}  // namespace
}  // namespace declarium
