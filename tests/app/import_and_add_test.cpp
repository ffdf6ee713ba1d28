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
  EXPECT_TRUE(window_->OpenDatabase().dirty);
  EXPECT_EQ(toolkit_->Pointer(), MousePointer::kDefault);
}

TEST_F(ImportAndAdd, YesKeepsTheOldItems) {
  Import("m.bas", Answer::kYes);
  EXPECT_EQ(Script().LastMessage(), (Message{u"Ponechať pôvodné položky?", MessageButtons::kYesNo,
                                             MessageIcon::kExclamation}));
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH", u"NEW_ONE"}));
  EXPECT_EQ(window_->OpenDatabase()[Kind::kType].names.size(), 2U);
}

TEST_F(ImportAndAdd, NoLeavesTheImportedItemsAlone) {
  Import("m.bas", Answer::kNo);
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"NEW_ONE"}));
  EXPECT_TRUE(window_->OpenDatabase()[Kind::kType].names.empty());
}

TEST_F(ImportAndAdd, NoWithAFileWithoutDeclarationsEmptiesTheLibrary) {
  WriteFile("none.txt", "");
  Import("none.txt", Answer::kNo);
  EXPECT_FALSE(window_->OpenDatabase().HasItems());
  EXPECT_EQ(Form().lstConst.RowCount(), 0);
  EXPECT_TRUE(window_->OpenDatabase().dirty);
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
  EXPECT_FALSE(window_->OpenDatabase().dirty);
  const auto& asked = std::get<headless::OpenQuestion>(Script().AskedSoFar().back());
  EXPECT_EQ(asked.dialog.filter, u"Visual Basic Code Module|*.bas|Text files|*.txt");
}

TEST_F(ImportAndAdd, AddKeepsTheExistingItemsAndAsksNothing) {
  Add(u"Const Z = 1\r\nDeclare Sub S Lib \"l\" ()\r\n", "Command1");
  EXPECT_TRUE(Messages().empty());
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH", u"Z"}));
  EXPECT_EQ(window_->OpenDatabase()[Kind::kDeclare].names.size(), 4U);
  EXPECT_TRUE(window_->OpenDatabase().dirty);
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
  EXPECT_EQ(window_->OpenDatabase()[Kind::kType].items[0], u"\u000Ca As Long");
  EXPECT_TRUE(window_->OpenDatabase().dirty);
}

TEST_F(UnevenSource, NoTakesItLiterally) {
  ImportAnswering(Answer::kNo);
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"Y"}));
  EXPECT_TRUE(window_->OpenDatabase()[Kind::kType].items[0].contains(u"End Type"));
}

TEST_F(UnevenSource, CancelChangesNothing) {
  ImportAnswering(Answer::kCancel);
  EXPECT_FALSE(window_->OpenDatabase().HasItems());
  EXPECT_FALSE(window_->OpenDatabase().dirty);
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
  EXPECT_EQ(window_->OpenDatabase()[Kind::kConst].items[0], u"\u000E1");
}

TEST_F(ImportAndAdd, AddOfAnEmptyTextAndCancelChangeNothing) {
  Add(u"", "Command1");
  Add(u"Const Z = 1", "Command2");
  EXPECT_EQ(RowsOf(Form().lstConst), (Rows{u"A", u"B", u"MAX_PATH"}));
  EXPECT_FALSE(window_->OpenDatabase().dirty);
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
  EXPECT_TRUE(window_->OpenDatabase().dirty);
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
