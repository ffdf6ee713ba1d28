// The add-in of a VBA editor, from the click to the module.
#include "vba/vba_fixture.h"
#include "win32/system_registry.h"

namespace declarium {
namespace {

const std::string kCaption = "Brindlework Declarium 3.0";

TEST_F(VbaTest, ConnectingPlacesAButtonAndAnEntryWithPicturesAndStartsNothing) {
  VbaEditor editor;
  Connect(editor);
  const std::string controls = editor.Tell("controls");
  EXPECT_TRUE(controls.starts_with("ok Standard|" + kCaption + "|" + kCaption + "|")) << controls;
  EXPECT_NE(controls.find("\\tAdd-Ins|Declar&ium||"), std::string::npos) << controls;
  EXPECT_EQ(controls.find("none"), std::string::npos) << controls;
  EXPECT_EQ(editor.Ask("stored-controls"), 0);
  EXPECT_TRUE(IsGone());
  EXPECT_EQ(editor.Tell("listed"), "ok Declarium.Vba");
  // The editors' own source of click events is said to crash them.
  EXPECT_EQ(editor.Tell("call-names").find("VBE.Events"), std::string::npos);
  EXPECT_EQ(editor.Tell(kVbaDisconnect), "ok");
}

TEST_F(VbaTest, DisconnectingLeavesNothingInTheEditor) {
  for (const char* mode : {" 0", " 1"}) {
    VbaEditor editor;
    OpenModule(editor, "Option Explicit");
    Connect(editor);
    Open(editor);
    EXPECT_EQ(editor.Ask("sinks"), 2);
    ASSERT_EQ(editor.Tell(kVbaDisconnect + mode), "ok");
    EXPECT_EQ(editor.Tell("controls"), "ok ");
    EXPECT_EQ(editor.Ask("sinks"), 0);
    EXPECT_TRUE(Eventually([&] { return editor.Ask("objects") == 0; })) << editor.Tell("objects");
    EXPECT_TRUE(Ends());
  }
}

TEST_F(VbaTest, ConnectingAgainAndAfterACrashLeavesOneButtonAndOneEntry) {
  VbaEditor editor;
  Connect(editor);
  const std::string first = editor.Tell("controls");
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
  ASSERT_EQ(editor.Tell("leftover Standard Declarium.Vba.Button"), "ok");
  Connect(editor);
  EXPECT_EQ(editor.Tell("controls"), first);
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
  EXPECT_EQ(editor.Tell("controls"), "ok ");
}

TEST_F(VbaTest, ButtonAndEntryShowOneWindow) {
  VbaEditor editor;
  Connect(editor);
  Open(editor);
  const HWND window = Main();
  EXPECT_TRUE(CaptionBecomes(u"Win - Declarium 3.0"));
  ASSERT_EQ(editor.Tell("click Add-Ins"), "ok");
  AwaitMain();
  EXPECT_EQ(Main(), window);
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
  EXPECT_TRUE(Ends());
}

TEST_F(VbaTest, InsertsTheBasketWithoutALineBehindIt) {
  VbaEditor editor;
  OpenModule(editor, "Option Explicit\\nSub X()\\nEnd Sub");
  Connect(editor);
  Open(editor);
  AddConstant();
  Insert(IDYES);
  EXPECT_TRUE(ModuleBecomes(editor, "Option Explicit\\nPrivate Const A = 1\\nSub X()\\nEnd Sub"));
  EXPECT_EQ(editor.Tell("call-names").find("AddFromString"), std::string::npos);
  // Declarations are written for VBA 7 there.
  ChooseKind(1);
  ClickItem("lstDeclare", 1, u"#If VBA7 Then");
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
}

TEST_F(VbaTest, TheInsertButtonFollowsTheSelectionOfTheEditor) {
  VbaEditor editor;
  OpenModule(editor, "Option Explicit");
  ASSERT_EQ(editor.Tell("unselect"), "ok");
  Connect(editor);
  Open(editor);
  AddConstant();
  EXPECT_FALSE(ToolbarEnabled("insert"));
  ASSERT_EQ(editor.Tell("select Module1"), "ok");
  EXPECT_TRUE(Eventually([this] { return ToolbarEnabled("insert"); }));
  ASSERT_EQ(editor.Tell("unselect"), "ok");
  EXPECT_TRUE(Eventually([this] { return !ToolbarEnabled("insert"); }));
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
}

TEST_F(VbaTest, InsertsWhatIsMissingOfTheProject) {
  VbaEditor editor;
  OpenModule(editor, "Option Explicit");
  ASSERT_EQ(editor.Tell("component Project1 Sheet1 100"), "ok");
  ASSERT_EQ(editor.Tell("component Project1 Module2 1"), "ok");
  ASSERT_EQ(editor.Tell("text Module2 Public Const A = 1"), "ok");
  Connect(editor);
  Open(editor);
  ChooseKind(0);
  ClickItem("lstConst", 1, u"Const B");
  ClickToolbar("add");
  ASSERT_TRUE(EntriesBecome("lstAdd", {u"1 B"}));
  ChooseMenu("mnuInsertMissing");
  const HWND plan = Program().Form("frmPlan");
  // What B needs is in Module2 already.
  window_driver::PressButton(window_driver::FindControl(plan, "Command1"));
  EXPECT_TRUE(ModuleBecomes(editor, "Option Explicit\\n\\nPrivate Const B As Long = A + 1"))
      << editor.Tell("lines Module1");
  ASSERT_EQ(editor.Tell(kVbaDisconnect), "ok");
}

TEST_F(VbaTest, UnregisteringLeavesNoTrace) {
  const win32::SystemRegistry registry;
  const auto is_registered = [&] {
    bool found = false;
    for (const auto* key : {u"Software\\Classes\\Declarium.Vba\\CLSID",
                            u"Software\\Classes\\CLSID\\{2021681C-F335-4390-B8E0-53F2A23E0CCB}"}) {
      found = found || registry.Read(RegistryRoot::kCurrentUser, key, u"").has_value();
    }
    return found ||
           !registry.SubKeys(RegistryRoot::kCurrentUser, u"Software\\Microsoft\\VBA").empty();
  };
  EXPECT_TRUE(is_registered());
  ASSERT_EQ(RunTask(FileAt("Declarium.exe"), L"/UnregServer"), 0);
  EXPECT_FALSE(is_registered());
}

}  // namespace
}  // namespace declarium
