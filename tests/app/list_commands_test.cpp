// The basket as a list file: saved, opened again, and what is told of lists that do not fit.
#include "basket/ui/list_commands.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <random>

#include "app/window_fixture.h"
#include "support/faulty_files.h"
#include "support/kept_versions.h"
#include "text/text.h"
#include "text/user_texts.h"
#include "toolkit/headless/form.h"

namespace declarium {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Rows = std::vector<std::u16string>;

MATCHER_P(OpensWith, text, "") {
  return arg.starts_with(text);
}

class ListCommandsTest : public WindowTest {
 protected:
  ListCommandsTest() {
    options_.history = folder_ / "history";
    options_.files = &files_;
    WriteWinLibrary();
    WriteFile("zother.api", LibraryContent(u"Other", {{u"OTHER", u"/9"}}, {}, {}));
    Open();
    User().ChooseRow(Form().cmbDatabase, 0);
  }

  void Add(int kind, int row) {
    User().ChooseRow(Form().cmbSelector, kind);
    ListBox* lists[] = {&Form().lstConst, &Form().lstDeclare, &Form().lstType};
    User().ChooseRow(*lists[kind], row);
    User().ClickToolbar(Form().Toolbar1, "add");
  }
  // Chooses the command, this file in its dialog, and then gives these answers.
  void Choose(const char* entry, std::string_view file,
              std::initializer_list<Answer> answers = {}) {
    Script().AnswerFile(FileAt(file).u16string());
    for (const auto answer : answers) Script().AnswerMessage(answer);
    User().ChooseMenu(*Form().frmMain, entry);
  }
  void Save(std::initializer_list<Answer> answers = {}) {
    Choose("mnuSaveList", "a.list", answers);
  }
  // Opens a list of this content.
  void OpenList(std::string_view bytes, std::initializer_list<Answer> answers = {}) {
    WriteFile("b.list", bytes);
    Choose("mnuOpenList", "b.list", answers);
  }
  void Clear() { User().ChooseMenu(*Form().frmMain, "mnuDelAll"); }
  [[nodiscard]] Rows Basket() { return EntriesOf(Form().lstAdd); }
  [[nodiscard]] std::u16string BasketText() {
    User().ClickToolbar(Form().Toolbar1, "copy");
    return toolkit().ClipboardText();
  }

  FaultyFiles files_;
};

TEST_F(ListCommandsTest, SavingWritesAnEntryALineBelowTheLibrary) {
  Add(2, 1);
  Add(0, 0);
  Add(1, 2);
  Save();
  EXPECT_EQ(ReadFile("a.list"),
            "#library win.api\r\nconst:A\r\ndeclare:GetWindow\r\ntype:RECT\r\n");
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(ListCommandsTest, BothStandInTheBasketsMenuAndAnEmptyBasketCannotBeSaved) {
  EXPECT_FALSE(Form().mnuSaveList.Enabled());
  EXPECT_TRUE(Form().mnuOpenList.Enabled());
  Add(0, 0);
  EXPECT_TRUE(Form().mnuSaveList.Enabled());
  auto& frmMain = dynamic_cast<headless::HeadlessForm&>(*Form().frmMain);
  Script().AnswerFile(FileAt("a.list").u16string());
  frmMain.ChooseInNextPopup("mnuSaveList");
  User().ClickEmptySpace(Form().lstAdd, MouseButton::kRight);
  EXPECT_EQ(ReadFile("a.list"), "#library win.api\r\nconst:A\r\n");
  Clear();
  EXPECT_FALSE(Form().mnuSaveList.Enabled());
}

TEST_F(ListCommandsTest, TheDialogsShowListsAndBeginWithTheLastOne) {
  Add(0, 0);
  Save();
  Script().AnswerFile(std::nullopt);
  User().ChooseMenu(*Form().frmMain, "mnuSaveList");
  Script().AnswerFile(std::nullopt);
  User().ChooseMenu(*Form().frmMain, "mnuOpenList");
  const auto& asked = Script().AskedSoFar();
  ASSERT_EQ(asked.size(), 3u);
  const auto& first = std::get<headless::SaveQuestion>(asked[0]).dialog;
  EXPECT_EQ(first.filter, texts::kListFilter);
  EXPECT_EQ(first.default_extension, u"list");
  EXPECT_EQ(first.file_name, u"");
  EXPECT_EQ(std::get<headless::SaveQuestion>(asked[1]).dialog.file_name,
            FileAt("a.list").u16string());
  EXPECT_EQ(std::get<headless::OpenQuestion>(asked[2]).dialog.filter, texts::kListFilter);
  EXPECT_THAT(Basket(), ElementsAre(u"1 A"));
}

TEST_F(ListCommandsTest, WhatWasSavedOpensAsTheSameBasket) {
  constexpr int kCounts[] = {3, 3, 2};
  std::mt19937 random(11);
  for (int round = 0; round < 40; ++round) {
    Clear();
    for (int i = 0; i < 1 + round % 6; ++i) {
      const auto kind = static_cast<int>(random() % 3);
      Add(kind, static_cast<int>(random() % static_cast<unsigned>(kCounts[kind])));
    }
    const auto before = Basket();
    const auto text = BasketText();
    Save();
    Clear();
    ASSERT_THAT(Basket(), IsEmpty());
    Choose("mnuOpenList", "a.list");
    EXPECT_EQ(Basket(), before);
    EXPECT_EQ(BasketText(), text);
  }
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(ListCommandsTest, OpeningAsksBeforeItTouchesABasket) {
  Add(0, 0);
  OpenList("B\r\nRECT\r\n", {Answer::kCancel});
  EXPECT_THAT(Basket(), ElementsAre(u"1 A"));
  OpenList("B\r\nRECT\r\n", {Answer::kNo});
  EXPECT_THAT(Basket(), ElementsAre(u"1 A", u"1 B", u"3 RECT"));
  OpenList("B\r\nBeep\r\n", {Answer::kYes});
  EXPECT_THAT(Basket(), ElementsAre(u"1 B", u"2 Beep"));
  EXPECT_THAT(Messages(), ElementsAre(texts::kAskReplaceBasket, texts::kAskReplaceBasket,
                                      texts::kAskReplaceBasket));
  EXPECT_TRUE(Form().Toolbar1.ButtonEnabled("copy"));
}

TEST_F(ListCommandsTest, PatternsAndWhatIsTakenAwayMeanWhatTheyDoForGenerate) {
  OpenList("' all\r\n*\r\n-Get*\r\n-type:*\r\n");
  EXPECT_THAT(Basket(), ElementsAre(u"1 A", u"1 B", u"1 MAX_PATH", u"2 Beep"));
}

TEST_F(ListCommandsTest, WhatIsNotFoundIsToldInOneMessageWithItsLines) {
  OpenList("#library gone.api\nA\nGone\n\ntype:Beep\n-RECT\nX*\n", {Answer::kOk});
  EXPECT_THAT(Basket(), ElementsAre(u"1 A"));
  const auto messages = Messages();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(ToUtf8(messages[0]),
            ToUtf8(std::u16string(texts::kListNotFound) + u"\r\n\r\n" +
                   std::u16string(texts::kListUnreadable) + u"gone.api\r\n" + u"riadok 3: " +
                   std::u16string(texts::kListUnknown) + u"Gone\r\n" + u"riadok 5: " +
                   std::u16string(texts::kListUnknown) + u"type:Beep\r\n" + u"riadok 6: " +
                   std::u16string(texts::kListTakesNothing) + u"RECT\r\n" + u"riadok 7: " +
                   std::u16string(texts::kListUnknown) + u"X*"));
}

TEST_F(ListCommandsTest, AListThatNamesNothingThatThereIsLeavesTheBasketAlone) {
  Add(0, 0);
  for (const auto* const bytes : {"", "' a comment\r\n", "Gone\r\n", "A\r\n-A\r\n", "PK\x03\x04"}) {
    OpenList(bytes, {Answer::kOk});
    EXPECT_THAT(Basket(), ElementsAre(u"1 A")) << bytes;
    EXPECT_THAT(Messages(), ElementsAre(OpensWith(texts::kListEmpty))) << bytes;
  }
}

TEST_F(ListCommandsTest, AFileThatIsNoListIsToldWithItsLinesAndLeavesTheBasketAlone) {
  Add(0, 0);
  OpenList("A\r\n#include x\r\n#target vb7\r\n-\r\n[a\r\n#module A.bas\r\n#module B.bas\r\n",
           {Answer::kOk});
  EXPECT_THAT(Basket(), ElementsAre(u"1 A"));
  const auto messages = Messages();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_TRUE(messages[0].starts_with(texts::kListMistakes));
  for (const auto* const line :
       {u"riadok 2: ", u"riadok 3: ", u"riadok 4: ", u"riadok 5: ", u"riadok 7: "})
    EXPECT_TRUE(messages[0].contains(line)) << ToUtf8(line);
}

TEST_F(ListCommandsTest, AFileThatCannotBeReadIsTold) {
  Add(0, 0);
  Choose("mnuOpenList", "gone.list", {Answer::kOk});
  EXPECT_THAT(Messages(), ElementsAre(texts::kReadError));
  EXPECT_THAT(Basket(), ElementsAre(u"1 A"));
}

TEST_F(ListCommandsTest, AHugeListIsReadAndTheMessageStaysShort) {
  std::string bytes;
  for (int i = 0; i < 200000; ++i) bytes += "Name" + std::to_string(i) + "\r\n";
  bytes += std::string(100000, 'x') + "\r\nRECT\r\n";
  OpenList(bytes, {Answer::kOk});
  EXPECT_THAT(Basket(), ElementsAre(u"3 RECT"));
  const auto messages = Messages();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_LT(messages[0].size(), 2000u);
  EXPECT_TRUE(messages[0].ends_with(std::u16string(texts::kListMore) + CountText(199989)))
      << ToUtf8(messages[0]);
}

TEST_F(ListCommandsTest, EntriesOfAnotherLibraryOfTheFolderAreFoundAgain) {
  Add(0, 0);
  User().ChooseRow(Form().cmbDatabase, 1);
  User().ChooseRow(Form().cmbSelector, 0);
  Add(0, 0);
  Save();
  EXPECT_EQ(ReadFile("a.list"),
            "#library zother.api\r\n#library win.api\r\nconst:A\r\nconst:OTHER\r\n");
  Clear();
  Choose("mnuOpenList", "a.list");
  EXPECT_THAT(Basket(), ElementsAre(u"1 A", u"1 OTHER"));
  EXPECT_EQ(BasketText(), u"Private Const A = 1\r\nPrivate Const OTHER = 9\r\n");
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(ListCommandsTest, SavingTellsOfEntriesThatNoLibraryHasAnyMore) {
  Add(0, 0);
  Add(0, 1);
  Script().AnswerMessage(Answer::kYes);
  User().ChooseRow(Form().lstConst, 0);
  User().ChooseMenu(*Form().frmMain, "mnuDeleteDbItem");
  (void)Messages();
  Save({Answer::kOk});
  EXPECT_EQ(ReadFile("a.list"), "#library win.api\r\nconst:A\r\nconst:B\r\n");
  EXPECT_THAT(Messages(), ElementsAre(std::u16string(texts::kListNotInLibraries) + u"\r\n\r\nA"));
}

TEST_F(ListCommandsTest, AFolderThatTakesNoFileIsToldAndTheBasketStays) {
  Add(0, 0);
  WriteFile("a.list", "' mine\r\n");
  files_.FailAt(0, FaultyFiles::Fault::kFromThenOn);
  Save({Answer::kOk, Answer::kOk});
  const auto messages = Messages();
  EXPECT_THAT(messages, testing::Contains(texts::kWriteError));
  EXPECT_EQ(ReadFile("a.list"), "' mine\r\n");
  EXPECT_THAT(Basket(), ElementsAre(u"1 A"));
}

TEST_F(ListCommandsTest, WhatASaveReplacesIsInTheHistory) {
  Add(0, 0);
  WriteFile("a.list", "' mine\r\nRECT\r\n");
  Save();
  EXPECT_TRUE(IsKept(folder_ / "history", FileAt("a.list"), "' mine\r\nRECT\r\n"));
}

TEST_F(ListCommandsTest, TheTargetIsSavedAndOfferedAgain) {
  OpenList("#target vb6\r\nBeep\r\n");
  EXPECT_THAT(Messages(), IsEmpty()) << "declarations are written for it already";
  Clear();
  OpenList("#target vba7-only\r\nBeep\r\n", {Answer::kNo});
  EXPECT_FALSE(BasketText().contains(u"PtrSafe"));
  Clear();
  OpenList("#target vba7-only\r\nBeep\r\n", {Answer::kYes});
  EXPECT_TRUE(BasketText().contains(u"PtrSafe"));
  EXPECT_THAT(Messages(), ElementsAre(OpensWith(texts::kAskListTargetBefore),
                                      OpensWith(texts::kAskListTargetBefore)));
  Save();
  EXPECT_EQ(ReadFile("a.list"), "#library win.api\r\n#target vba7-only\r\ndeclare:Beep\r\n");
  Reopen();
  User().ChooseRow(Form().cmbDatabase, 0);
  OpenList("Beep\r\n");
  EXPECT_TRUE(BasketText().contains(u"PtrSafe")) << "the answer is remembered";
}

}  // namespace
}  // namespace declarium
