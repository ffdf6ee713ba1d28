// What a VBA editor, its user and the system may do to the add-in.
#include "text/text.h"
#include "text/user_texts.h"
#include "vba/vba_fixture.h"
#include "win32/system_registry.h"

namespace declarium {
namespace {

bool Has(std::u16string_view text, std::u16string_view part) {
  return text.find(part) != std::u16string_view::npos;
}

class VbaFaultTest : public VbaTest {
 protected:
  // An editor with Module1 selected, the program open and the constant in the basket.
  void Prepare(VbaEditor& editor) {
    OpenModule(editor, "Option Explicit");
    Connect(editor);
    Open(editor);
    AddConstant();
  }
  // Inserts, agrees, and answers the box that says why nothing was inserted.
  std::u16string RefusalOfInsertion() {
    Insert(IDYES);
    return AnswerBoxOf(Program());
  }
  static void ExpectUntouched(VbaEditor& editor) {
    EXPECT_EQ(editor.Tell("lines Module1"), "ok Option Explicit");
    EXPECT_EQ(editor.Ask("reset-questions"), 0);
  }
};

TEST_F(VbaFaultTest, ALockedProjectIsRefusedWithItsReason) {
  VbaEditor editor;
  Prepare(editor);
  ASSERT_EQ(editor.Tell("protection Project1 1"), "ok");
  EXPECT_TRUE(Has(RefusalOfInsertion(), texts::kProjectIsLocked));
  ExpectUntouched(editor);
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
}

TEST_F(VbaFaultTest, AProgramThatRunsOrIsInterruptedIsRefusedAndNeverReset) {
  VbaEditor editor;
  Prepare(editor);
  for (const char* mode : {"0", "1"}) {
    ASSERT_EQ(editor.Tell(std::string("mode Project1 ") + mode), "ok");
    EXPECT_TRUE(Has(RefusalOfInsertion(), texts::kProgramRuns));
    ExpectUntouched(editor);
  }
  ASSERT_EQ(editor.Tell("mode Project1 2"), "ok");
  Insert(IDYES);
  EXPECT_TRUE(ModuleBecomes(editor, "Option Explicit\\nPrivate Const A = 1"));
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
}

TEST_F(VbaFaultTest, AnEditorThatDoesNotSayItsModeIsNotWrittenTo) {
  VbaEditor editor;
  Prepare(editor);
  for (const char* member : {"Mode", "Protection", "InsertLines", "CountOfDeclarationLines"}) {
    ASSERT_EQ(editor.Tell(std::string("fail-member ") + member + " 80004005"), "ok");
    EXPECT_TRUE(Has(RefusalOfInsertion(), u"80004005")) << member;
    ASSERT_EQ(editor.Tell("well"), "ok");
    ExpectUntouched(editor);
  }
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
}

TEST_F(VbaFaultTest, AProgramThatDiedIsStartedAgainByAClick) {
  VbaEditor editor;
  Prepare(editor);
  KillProgram();
  Open(editor);
  AddConstant();
  Insert(IDYES);
  EXPECT_TRUE(ModuleBecomes(editor, "Option Explicit\\nPrivate Const A = 1"));
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
  EXPECT_EQ(editor.Tell("controls"), "ok ");
  EXPECT_TRUE(Ends());
}

TEST_F(VbaFaultTest, AProgramThatDiedDoesNotKeepTheEditorFromDisconnecting) {
  VbaEditor editor;
  Prepare(editor);
  KillProgram();
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
  EXPECT_EQ(editor.Tell("controls"), "ok ");
  EXPECT_EQ(editor.Ask("sinks"), 0);
}

TEST_F(VbaFaultTest, AProgramThatIsNotInstalledIsToldByTheButton) {
  VbaEditor editor;
  OpenModule(editor, "Option Explicit");
  Connect(editor);
  const auto program = FileAt("Declarium.exe");
  auto away = program;
  std::filesystem::rename(program, away += ".away");
  const window_driver::DrivenProgram process(static_cast<DWORD>(editor.Ask("process")));
  for (const char* bar : {"Standard", "Add-Ins"}) {
    editor.Send(std::string("click ") + bar);
    const auto said = AnswerBoxOf(process);
    EXPECT_TRUE(said.starts_with(texts::kProgramNotShown)) << ToUtf8(said);
    EXPECT_TRUE(Has(said, texts::kProgramNotInstalled)) << ToUtf8(said);
    EXPECT_EQ(editor.Answer(), "ok");
  }
  std::filesystem::rename(away, program);
  ExpectUntouched(editor);
  // It is there again.
  Open(editor);
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
}

// An editor takes an add-in that answers with a failure off its list.
TEST_F(VbaFaultTest, EveryConnectionSucceedsWhateverFailsAndLeavesNothing) {
  VbaEditor editor;
  ASSERT_EQ(editor.Tell("calls reset"), "ok 0");
  Connect(editor);
  const auto calls = editor.Ask("calls");
  ASSERT_GT(calls, 10);
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
  for (long long call = 1; call <= calls; ++call) {
    ASSERT_EQ(editor.Tell("fail " + std::to_string(call) + " 80004005"), "ok");
    ASSERT_EQ(editor.Tell(kVbaConnect), "ok") << call;
    ASSERT_EQ(editor.Tell("well"), "ok");
    ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok") << call;
    EXPECT_EQ(editor.Tell("controls"), "ok ") << call;
    EXPECT_EQ(editor.Ask("sinks"), 0) << call;
    EXPECT_EQ(editor.Ask("objects"), 0) << call;
  }
  EXPECT_EQ(editor.Tell("listed"), "ok Declarium.Vba");
}

TEST_F(VbaFaultTest, EveryFailingCallOfAnInsertionIsToldAndAnotherSucceeds) {
  VbaEditor editor;
  Prepare(editor);
  for (const char* member : {"Name", "Collection", "Parent", "CodeModule"}) {
    ASSERT_EQ(editor.Tell(std::string("fail-member ") + member + " 80004005"), "ok");
    ClickToolbar("insert");
    // The question comes first where the name could be had.
    HWND box = Program().Dialog();
    if (window_driver::MessageOf(box).ends_with(texts::kAskInsertBehind)) {
      window_driver::PressInDialog(box, IDYES);
      box = Program().Dialog(box);
    }
    EXPECT_TRUE(window_driver::MessageOf(box).starts_with(texts::kNotInserted)) << member;
    window_driver::PressInDialog(box, IDOK);
    ASSERT_EQ(editor.Tell("well"), "ok");
    ExpectUntouched(editor);
  }
  Insert(IDYES);
  EXPECT_TRUE(ModuleBecomes(editor, "Option Explicit\\nPrivate Const A = 1"));
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
}

TEST_F(VbaFaultTest, AnEditorThatDiesTakesTheProgramWithIt) {
  {
    VbaEditor editor;
    Prepare(editor);
    Close();
    editor.Kill();
  }
  EXPECT_TRUE(Ends());
}

TEST_F(VbaFaultTest, RegisteringAgainHasAnEditorThatGaveUpLoadTheAddIn) {
  win32::SystemRegistry registry;
  const std::u16string key = std::u16string(u"Software\\Microsoft\\VBA\\VBE\\6.0\\Addins") +
                             (sizeof(void*) == 8 ? u"64" : u"") + u"\\Declarium.Vba";
  ASSERT_TRUE(registry.Write(RegistryRoot::kCurrentUser, key, u"LoadBehavior", NumberValue(0)));
  VbaEditor editor;
  EXPECT_EQ(editor.Tell("listed"), "ok ");
  ASSERT_EQ(RunTask(FileAt("Declarium.exe"), L"/RegServer:vba"), 0);
  EXPECT_EQ(editor.Tell("listed"), "ok Declarium.Vba");
}

}  // namespace
}  // namespace declarium
