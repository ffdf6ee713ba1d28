#include <filesystem>
#include <set>

#include "app/window_fixture.h"
#include "toolkit/captioned.h"
#include "toolkit/headless/form.h"

namespace declarium {
namespace {

using Rows = std::vector<std::u16string>;

class ImportAndAdd : public WindowTest {
 protected:
  ImportAndAdd() {
    WriteWinLibrary();
    WriteFile("empty.api", "Empty\x02\x02");
    WriteFile("m.bas",
              "Attribute VB_Name = \"M\"\r\nPublic Const NEW_ONE = _\r\n 5\r\n"
              "Private Const A As Long = 9\r\n");
    Open();
    OpenLibrary("win.api");
    User().ChooseRow(Form().cmbSelector, 0);
  }
  void OpenLibrary(std::string_view name) {
    Script().AnswerFile(FileAt(name).u16string());
    User().ChooseMenu(*Form().frmMain, "mnuOpen");
  }
  void Import(std::string_view name, std::optional<Answer> keep = std::nullopt) {
    Script().AnswerFile(FileAt(name).u16string());
    if (keep) Script().AnswerMessage(*keep);
    User().ChooseMenu(*Form().frmMain, "mnuImport");
  }
  // Types `text` into the Add dialog and presses a button.
  void Add(std::u16string text, const char* button) {
    Script().InForm("frmAdd", [this, text, button](class Form& form) {
      form.Get<TextBox>("Text1").SetText(text);
      User().Click(form.Get<CommandButton>(button));
    });
    User().ChooseMenu(*Form().frmMain, "mnuAdd");
  }
};

TEST_F(ImportAndAdd, ImportIntoAnEmptyLibraryAsksNothing) {
  OpenLibrary("empty.api");
  Import("m.bas");
  EXPECT_TRUE(Messages().empty());
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"NEW_ONE"}));
  EXPECT_TRUE(Opened().dirty);
  EXPECT_EQ(toolkit_->Pointer(), MousePointer::kDefault);
}

TEST_F(ImportAndAdd, YesKeepsTheOldItems) {
  Import("m.bas", Answer::kYes);
  EXPECT_EQ(Script().LastMessage(), (Message{u"Ponechať pôvodné položky?", MessageButtons::kYesNo,
                                             MessageIcon::kExclamation}));
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH", u"NEW_ONE"}));
  EXPECT_EQ(Opened()[Kind::kType].names.size(), 2U);
}

TEST_F(ImportAndAdd, NoLeavesTheImportedItemsAlone) {
  Import("m.bas", Answer::kNo);
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"NEW_ONE"}));
  EXPECT_TRUE(Opened()[Kind::kType].names.empty());
}

TEST_F(ImportAndAdd, NoWithAFileWithoutDeclarationsEmptiesTheLibrary) {
  WriteFile("none.txt", "");
  Import("none.txt", Answer::kNo);
  EXPECT_FALSE(Opened().HasItems());
  EXPECT_EQ(Form().lstConst.RowCount(), 0);
  EXPECT_TRUE(Opened().dirty);
}

TEST_F(ImportAndAdd, AFileThatCannotBeReadIsReportedBeforeTheQuestion) {
  Script().AnswerFile(FileAt("missing.bas").u16string());
  Script().AnswerMessage(Answer::kOk);
  Script().AnswerMessage(Answer::kYes);
  User().ChooseMenu(*Form().frmMain, "mnuImport");
  EXPECT_EQ(Messages(), (Rows{u"Chyba pri čítaní zo súboru.", u"Ponechať pôvodné položky?"}));
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH"}));
}

TEST_F(ImportAndAdd, CancelledDialogChangesNothing) {
  Script().AnswerFile(std::nullopt);
  User().ChooseMenu(*Form().frmMain, "mnuImport");
  EXPECT_FALSE(Opened().dirty);
  const auto& asked = std::get<headless::OpenQuestion>(Script().AskedSoFar().back());
  EXPECT_EQ(asked.dialog.filter, u"Visual Basic Code Module|*.bas|Text files|*.txt");
}

TEST_F(ImportAndAdd, AddKeepsTheExistingItemsAndAsksNothing) {
  Add(u"Const Z = 1\r\nDeclare Sub S Lib \"l\" ()\r\n", "Command1");
  EXPECT_TRUE(Messages().empty());
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH", u"Z"}));
  EXPECT_EQ(Opened()[Kind::kDeclare].names.size(), 4U);
  EXPECT_TRUE(Opened().dirty);
}

class UnevenSource : public ImportAndAdd {
 protected:
  UnevenSource() {
    WriteFile("uneven.bas",
              "Const  X = 1\r\nType P\r\n  a As Long\r\n  End Type\r\n"
              "Const Y =2, Z = 3\r\n");
    OpenLibrary("empty.api");
    User().ChooseRow(Form().cmbSelector, 0);
  }
  void ImportAnswering(Answer answer) {
    Script().AnswerFile(FileAt("uneven.bas").u16string());
    Script().AnswerMessage(answer);
    User().ChooseMenu(*Form().frmMain, "mnuImport");
  }
};

TEST_F(UnevenSource, IsAskedAboutOnceWithThreeExamples) {
  ImportAnswering(Answer::kYes);
  EXPECT_EQ(Script().LastMessage(),
            (Message{u"Deklarácie, ktoré Visual Basic číta inak, než by sa doslovne uložili: 4"
                     u"\r\n\r\nConst X\r\nType P\r\nConst Y\r\n...\r\n\r\n"
                     u"Prevziať ich tak, ako ich číta Visual Basic?",
                     MessageButtons::kYesNoCancel, MessageIcon::kExclamation}));
  EXPECT_EQ(Messages().size(), 1U);
}

TEST_F(UnevenSource, YesTakesItAsVisualBasicReadsIt) {
  ImportAnswering(Answer::kYes);
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"X", u"Y", u"Z"}));
  EXPECT_EQ(Opened()[Kind::kType].items[0], u"\u000Ca As Long");
  EXPECT_TRUE(Opened().dirty);
}

TEST_F(UnevenSource, NoTakesItLiterally) {
  ImportAnswering(Answer::kNo);
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"Y"}));
  EXPECT_TRUE(Opened()[Kind::kType].items[0].contains(u"End Type"));
}

TEST_F(UnevenSource, CancelChangesNothing) {
  ImportAnswering(Answer::kCancel);
  EXPECT_FALSE(Opened().HasItems());
  EXPECT_FALSE(Opened().dirty);
  EXPECT_EQ(toolkit_->Pointer(), MousePointer::kDefault);
}

TEST_F(UnevenSource, InTheAddDialogIsAskedAboutToo) {
  Script().InForm("frmAdd", [this](class Form& form) {
    Script().AnswerMessage(Answer::kYes);
    form.Get<TextBox>("Text1").SetText(u"Const W =1");
    User().Click(form.Get<CommandButton>("Command1"));
  });
  User().ChooseMenu(*Form().frmMain, "mnuAdd");
  EXPECT_EQ(Messages().size(), 1U);
  EXPECT_EQ(Opened()[Kind::kConst].items[0], u"\u000E1");
}

TEST_F(ImportAndAdd, AddOfAnEmptyTextAndCancelChangeNothing) {
  Add(u"", "Command1");
  Add(u"Const Z = 1", "Command2");
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH"}));
  EXPECT_FALSE(Opened().dirty);
}

// Showing what was added handles pending events: here the dialog's end and another opening of it.
TEST_F(ImportAndAdd, ADialogOpenedWhileAnotherAddsIsAnother) {
  Script().InForm("frmAdd", [this](class Form& first) {
    first.Get<TextBox>("Text1").SetText(u"Const Y = 1");
    toolkit_->Post([this, &first] {
      first.Unload();
      Add(u"Const Z = 2", "Command1");
    });
    User().Click(first.Get<CommandButton>("Command1"));
  });
  User().ChooseMenu(*Form().frmMain, "mnuAdd");
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH", u"Y", u"Z"}));
}

TEST_F(ImportAndAdd, AddOfTextWithoutDeclarationsStillCountsAsAChange) {
  Add(u"nothing here", "Command1");
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH"}));
  EXPECT_TRUE(Opened().dirty);
}

TEST_F(ImportAndAdd, AddDialogStartsEmptyEachTimeWithItsTexts) {
  Add(u"Const Z = 1", "Command2");
  Script().InForm("frmAdd", [](class Form& form) {
    EXPECT_EQ(form.Caption(), u"Pridať položku");
    EXPECT_EQ(form.Get<Label>("Label1").Caption(), u"Zdajte deklaráciu");
    EXPECT_EQ(form.Get<CommandButton>("Command1").Caption(), u"&OK");
    EXPECT_EQ(form.Get<CommandButton>("Command2").Caption(), u"&Zrušiť");
    EXPECT_EQ(form.Get<TextBox>("Text1").Text(), u"");
    form.Unload();
  });
  User().ChooseMenu(*Form().frmMain, "mnuAdd");
}

TEST_F(ImportAndAdd, ImportRecognizesTheEncoding) {
  using std::string_literals::operator""s;
  const std::string files[] = {"Const NEW_8 = \"\xC4\x8D\"\r\n"s,
                               "\xEF\xBB\xBF"
                               "Const NEW_8 = \"\xC4\x8D\""s,
                               "Const NEW_8 = \"\xE8\"\r\n"s,
                               "\xFF\xFE"
                               "C\0o\0n\0s\0t\0 \0N\0 \0=\0 \0\"\0\x0D\x01\"\0"s,
                               "\xFE\xFF"
                               "\0C\0o\0n\0s\0t\0 \0N\0 \0=\0 \0\"\x01\x0D\0\""s};
  for (const auto& bytes : files) {
    WriteFile("encoded.bas", bytes);
    Import("encoded.bas", Answer::kNo);
    EXPECT_EQ(Opened()[Kind::kConst].items.At(0), u"\x0E\"\u010D\"") << bytes;
  }
}

TEST_F(ImportAndAdd, TheReadingQuestionIsAskedAboutTheDecodedText) {
  WriteFile("utf8.bas", "Const  \xC4\x8D = 1\n");
  OpenLibrary("empty.api");
  Import("utf8.bas", Answer::kYes);
  EXPECT_TRUE(Script().LastMessage().text.contains(u"\r\nConst \u010D\r\n"));
  EXPECT_EQ(Opened()[Kind::kConst].names.At(0), u"\u010D");
}

TEST_F(ImportAndAdd, ImportTellsWhatTheLibraryCannotKeep) {
  using std::string_literals::operator""s;
  WriteFile("m.bas",
            "Const ONE = 1 ' \xE2\x86\x92\r\nConst TWO = 2\0\r\n"
            "Const THREE = \"\xE2\x86\x92\"\r\nConst FOUR = 4\r\n"s);
  OpenLibrary("empty.api");
  Script().AnswerFile(FileAt("m.bas").u16string());
  Script().AnswerMessage(Answer::kOk,
                         [this] { EXPECT_EQ(toolkit_->Pointer(), MousePointer::kDefault); });
  User().ChooseMenu(*Form().frmMain, "mnuImport");
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"FOUR", u"ONE"}));
  EXPECT_EQ(Script().LastMessage(),
            (Message{u"Databáza nedokáže uchovať všetko, čo ste jej pridali.\r\n"
                     u"Vynechané deklarácie: 2\r\n"
                     u"Znaky v komentároch nahradené otáznikom: 1\r\n\r\n"
                     u"riadok 2, stĺpec 14: znak s kódom 0\r\n"
                     u"riadok 3, stĺpec 16: znak \u2192 (U+2192)\r\n"
                     u"riadok 1, stĺpec 17: znak \u2192 (U+2192)",
                     MessageButtons::kOk, MessageIcon::kExclamation}));
}

TEST_F(ImportAndAdd, ImportTellsOfTheReadingThatWasTaken) {
  WriteFile("m.bas", "Const  ONE = \"\xE2\x86\x92\"\r\nConst  TWO = 2\r\n");
  for (const auto answer : {Answer::kYes, Answer::kNo}) {
    const bool as_visual_basic = answer == Answer::kYes;
    Script().AnswerFile(FileAt("m.bas").u16string());
    Script().AnswerMessage(Answer::kNo);  // to keeping the items
    Script().AnswerMessage(answer);
    if (as_visual_basic) Script().AnswerMessage(Answer::kOk);
    User().ChooseMenu(*Form().frmMain, "mnuImport");
    EXPECT_EQ(Messages().size(), as_visual_basic ? 3U : 2U);
    EXPECT_EQ(RowsOf(Form().lstConst), as_visual_basic ? Rows{u"TWO"} : Rows{});
  }
}

TEST_F(ImportAndAdd, AMemberOfAnEnumThatIsLeftOutIsToldWithoutAQuestion) {
  WriteFile("m.bas", "Enum E\r\n\xE2\x86\x92 = 1\r\nEnd Enum\r\n");
  OpenLibrary("empty.api");
  Import("m.bas", Answer::kOk);
  EXPECT_TRUE(Script().LastMessage().text.ends_with(u"riadok 2, stĺpec 1: znak \u2192 (U+2192)"));
}

TEST_F(ImportAndAdd, AddTellsTheFirstPlacesAlone) {
  std::u16string text = u"Const Z = 1\r\n";
  for (int i = 0; i < 7; ++i) text += u"Const \u2192 = 1\r\n";
  Script().InForm("frmAdd", [this, text](class Form& form) {
    form.Get<TextBox>("Text1").SetText(text);
    Script().AnswerMessage(Answer::kOk);
    User().Click(form.Get<CommandButton>("Command1"));
  });
  User().ChooseMenu(*Form().frmMain, "mnuAdd");
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH", u"Z"}));
  const auto message = Script().LastMessage().text;
  EXPECT_TRUE(message.contains(u"Vynechané deklarácie: 7\r\n"));
  EXPECT_FALSE(message.contains(u"otáznikom"));
  EXPECT_TRUE(message.ends_with(u"riadok 6, stĺpec 7: znak \u2192 (U+2192)\r\n..."));
}

TEST_F(ImportAndAdd, AddLeavesOutACharacterThatPartsTheFile) {
  for (const char16_t code : {0, 1, 2}) {
    Script().InForm("frmAdd", [this, code](class Form& form) {
      form.Get<TextBox>("Text1").SetText(u"Const Y = \"" + std::u16string(1, code) +
                                         u"\"\r\nConst Z = 1");
      Script().AnswerMessage(Answer::kOk);
      User().Click(form.Get<CommandButton>("Command1"));
    });
    User().ChooseMenu(*Form().frmMain, "mnuAdd");
    EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH", u"Z"}));
    EXPECT_TRUE(Script().LastMessage().text.ends_with(std::u16string(u"znak s kódom ") +
                                                      static_cast<char16_t>(u'0' + code)));
  }
}

TEST_F(ImportAndAdd, ExportWritesEveryItemWithoutALineEndAtTheEnd) {
  Script().AnswerFile(FileAt("out.bas").u16string());
  User().ChooseMenu(*Form().frmMain, "mnuExport");
  EXPECT_EQ(ReadFile("out.bas"),
            "Const A = 1\r\nConst B As Long = A + 1\r\nConst MAX_PATH = 260\r\n"
            "Declare Sub Beep Lib \"kernel32\" (ByVal f As Long)\r\n"
            "Declare Function GetTickCount Lib \"kernel32\" () As Long\r\n"
            "Declare Function GetWindow Lib \"user32\" (r As RECT, p As POINTAPI) As Long\r\n"
            "Type POINTAPI\r\n\tx As Long\r\n\ty As Long\r\nEnd Type\r\n"
            "Type RECT\r\n\ta As POINTAPI\r\n\ts As String * MAX_PATH\r\nEnd Type");
}

TEST_F(ImportAndAdd, CancelledExportWritesNothing) {
  const auto files = [this] {
    std::set<std::filesystem::path> all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
      all.insert(entry.path());
    }
    return all;
  };
  const auto before = files();
  Script().AnswerFile(std::nullopt);
  User().ChooseMenu(*Form().frmMain, "mnuExport");
  EXPECT_EQ(files(), before);
}

TEST_F(ImportAndAdd, AnExportThatCannotBeWrittenIsReported) {
  Script().AnswerFile((folder_ / "missing" / "out.bas").u16string());
  Script().AnswerMessage(Answer::kOk);
  User().ChooseMenu(*Form().frmMain, "mnuExport");
  EXPECT_EQ(Messages(), (std::vector<std::u16string>{u"Chyba pri zápise do súboru."}));
}

}  // namespace
}  // namespace declarium
