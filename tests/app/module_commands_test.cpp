// Inserting into the host's module what it lacks, from the button to the lines.
#include "host/ui/module_commands.h"

#include <algorithm>
#include <gmock/gmock.h>

#include "app/host_window_fixture.h"
#include "host/ui/plan_form.h"
#include "text/user_texts.h"
#include "toolkit/headless/form.h"
#include "toolkit/progress_bar.h"
#include "toolkit/rich_text.h"

namespace declarium {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::u16string_view kBefore = u"Option Explicit\r\n\r\nSub X()\r\nEnd Sub";

class ModuleCommandsTest : public HostWindowTest {
 protected:
  // The same with the constants A and B in the basket.
  void Start(std::vector<std::shared_ptr<FakeModule>> modules) {
    HostWindowTest::Start(std::move(modules));
    Put(0, u"A");
    Put(0, u"B");
    host_.record = {};
  }
  void Put(int kind, std::u16string_view name) {
    User().ChooseRow(Form().cmbSelector, kind);
    auto& list = kind == 0 ? Form().lstConst : kind == 1 ? Form().lstDeclare : Form().lstType;
    for (int row = 0; row < list.RowCount(); ++row) {
      if (list.Row(row) == name) User().ChooseRow(list, row);
    }
    User().ClickToolbar(Form().Toolbar1, "add");
  }
  void Press() { User().ClickToolbar(Form().Toolbar1, "insert-missing"); }
  // Runs the command and does this in the plan's form.
  void InPlan(std::function<void(declarium::Form&)> action) {
    Script().InForm("frmPlan", std::move(action));
    Press();
  }
  void Agree(declarium::Form& plan) { User().Click(plan.Get<CommandButton>("Command1")); }
  void Cancel(declarium::Form& plan) { User().Click(plan.Get<CommandButton>("Command2")); }
};

TEST_F(ModuleCommandsTest, ShowsThePlanAndInsertsWhatIsMissing) {
  Start({ModuleOf(u"Module1", kBefore)});
  InPlan([&](declarium::Form& plan) {
    EXPECT_EQ(plan.Caption(), u"Vložiť čo chýba do 'Module1'");
    EXPECT_THAT(Rows(plan), ElementsAre(u"[x] A – vloží sa", u"[x] B – vloží sa"));
    EXPECT_EQ(plan.Get<RichText>("rtbNew").Text(), u"Private Const A = 1");
    EXPECT_EQ(Code(), kBefore) << "nothing changes before OK";
    Agree(plan);
  });
  EXPECT_EQ(Code().find(u"Option Explicit\r\n"), 0u);
  EXPECT_NE(Code().find(u"Private Const A = 1\r\nPrivate Const B As Long = A + 1"), Code().npos)
      << ToUtf8(Code());
  EXPECT_EQ(host_.record.Count("InsertLines"), 1);
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(ModuleCommandsTest, TheSecondTimeThereIsNothingToInsert) {
  Start({ModuleOf(u"Module1", kBefore)});
  InPlan([&](declarium::Form& plan) { Agree(plan); });
  const auto after = Code();
  InPlan([&](declarium::Form& plan) {
    EXPECT_THAT(Rows(plan), ElementsAre(u"    A – už je: Module1, riadok 3",
                                        u"    B – už je: Module1, riadok 4"));
    EXPECT_FALSE(plan.Get<CommandButton>("Command1").Enabled());
    EXPECT_EQ(plan.Get<Label>("labCount").Caption(), texts::kPlanNothing);
    Cancel(plan);
  });
  EXPECT_EQ(Code(), after);
}

TEST_F(ModuleCommandsTest, CancellingOrClosingChangesNothing) {
  Start({ModuleOf(u"Module1", kBefore)});
  InPlan([&](declarium::Form& plan) { Cancel(plan); });
  InPlan([&](declarium::Form& plan) { User().PressKey(plan.Get<ListView>("LV1"), key::kEscape); });
  InPlan([&](declarium::Form& plan) { User().Close(plan); });
  EXPECT_EQ(Code(), kBefore);
}

TEST_F(ModuleCommandsTest, AModuleWhoseHeaderHasNoEndIsToldOfAndStays) {
  constexpr std::u16string_view kOpen = u"VERSION 5.00\r\nBegin VB.Form F\r\n  x = 1";
  Start({ModuleOf(u"Module1", kOpen)});
  Script().AnswerMessage(Answer::kOk);
  Press();
  EXPECT_THAT(Messages(), ElementsAre(texts::kModuleHeaderOpen));
  EXPECT_EQ(Code(), kOpen);
}

TEST_F(ModuleCommandsTest, NeedsComeWithWhatNeedsThem) {
  Start({ModuleOf(u"Module1", kBefore)});
  Put(2, u"RECT");
  InPlan([&](declarium::Form& plan) {
    EXPECT_THAT(Rows(plan),
                ElementsAre(u"[x] A – vloží sa", u"[x] B – vloží sa", u"[x] RECT – vloží sa",
                            u"[x] POINTAPI – vloží sa; potrebuje to RECT",
                            u"[x] MAX_PATH – vloží sa; potrebuje to RECT"));
    Agree(plan);
  });
  EXPECT_LT(Code().find(u"MAX_PATH = 260"), Code().find(u"Type RECT"));
  EXPECT_LT(Code().find(u"Type POINTAPI"), Code().find(u"Type RECT"));
}

TEST_F(ModuleCommandsTest, ThePublicDeclarationsOfOtherModulesCount) {
  Start({ModuleOf(u"Module1", kBefore),
         ModuleOf(u"Module2", u"Public Const A = 1\r\nPrivate Const B As Long = 2")});
  InPlan([&](declarium::Form& plan) {
    EXPECT_THAT(Rows(plan), ElementsAre(u"    A – už je: Module2, riadok 1", u"[x] B – vloží sa"));
    Agree(plan);
  });
  EXPECT_EQ(Code().find(u"Const A"), Code().npos);
  EXPECT_EQ(Code(1), u"Public Const A = 1\r\nPrivate Const B As Long = 2");
}

TEST_F(ModuleCommandsTest, AnEntryIsLeftOutWithTheSpaceBar) {
  Start({ModuleOf(u"Module1", kBefore)});
  InPlan([&](declarium::Form& plan) {
    auto& list = plan.Get<ListView>("LV1");
    EXPECT_EQ(toolkit_->FocusedControl(), &list);
    User().PressKey(key::kDown);
    User().PressKey(key::kSpace);
    EXPECT_THAT(Rows(plan), ElementsAre(u"[x] A – vloží sa", u"[ ] B – vynechá sa"));
    EXPECT_EQ(plan.Get<Label>("labCount").Caption(), u"Vloží sa položiek: 1");
    User().PressKey(key::kEnter);
  });
  EXPECT_NE(Code().find(u"Const A"), Code().npos);
  EXPECT_EQ(Code().find(u"Const B"), Code().npos);
}

TEST_F(ModuleCommandsTest, WhatDiffersIsShownBesideItAndKept) {
  Start({ModuleOf(u"Module1", u"Private Const A = 7\r\nSub X()\r\nEnd Sub")});
  InPlan([&](declarium::Form& plan) {
    EXPECT_THAT(Rows(plan), ElementsAre(u"[ ] A – je inak, ponechá sa: Module1, riadok 1",
                                        u"[x] B – vloží sa"));
    EXPECT_EQ(plan.Get<RichText>("rtbNew").Text(), u"Private Const A = 1");
    EXPECT_EQ(plan.Get<RichText>("rtbFound").Text(), u"Private Const A = 7");
    EXPECT_EQ(plan.Get<Label>("labNew").Caption(), texts::kPlanSourceLibrary);
    EXPECT_EQ(plan.Get<Label>("labFound").Caption(), u"V module Module1, riadok 1");
    Agree(plan);
  });
  EXPECT_TRUE(Code().starts_with(u"Private Const A = 7"));
  EXPECT_EQ(Code().find(u"Const A = 1"), Code().npos);
}

TEST_F(ModuleCommandsTest, WhatDiffersIsInsertedUnderAnotherName) {
  Start({ModuleOf(u"Module1", u"Private Const A = 7\r\nSub X()\r\nEnd Sub")});
  InPlan([&](declarium::Form& plan) {
    Script().AnswerText(u"1A");
    Script().AnswerMessage(Answer::kOk);
    Script().AnswerText(u"X");
    Script().AnswerMessage(Answer::kOk);
    Script().AnswerText(u"A_LIB");
    User().ClickCheckBox(plan.Get<ListView>("LV1"), 1);
    EXPECT_THAT(Rows(plan), ElementsAre(u"[x] A – vloží sa ako A_LIB", u"[x] B – vloží sa"));
    EXPECT_THAT(Messages(), ElementsAre(texts::kPlanNameNotLegal, texts::kPlanNameTaken));
    Agree(plan);
  });
  EXPECT_NE(Code().find(u"Private Const A_LIB = 1"), Code().npos);
  EXPECT_NE(Code().find(u"Const B As Long = A_LIB + 1"), Code().npos);
}

TEST_F(ModuleCommandsTest, NoOtherNameLeavesItAndTakingTheMarkAwayKeepsIt) {
  Start({ModuleOf(u"Module1", u"Private Const A = 7")});
  InPlan([&](declarium::Form& plan) {
    auto& list = plan.Get<ListView>("LV1");
    Script().AnswerText(u"");
    User().ClickCheckBox(list, 1);
    EXPECT_EQ(list.Entry(1).check, CheckMark::kClear);
    Script().AnswerText(u"A_LIB");
    User().Click(plan.Get<CommandButton>("Command3"));
    EXPECT_EQ(list.Entry(1).check, CheckMark::kChecked);
    User().ClickCheckBox(list, 1);
    EXPECT_EQ(Rows(plan)[0], u"[ ] A – je inak, ponechá sa: Module1, riadok 1");
    Cancel(plan);
  });
}

TEST_F(ModuleCommandsTest, ATakenNameSaysByWhat) {
  Start({ModuleOf(u"Module1", u"Sub A()\r\nEnd Sub")});
  InPlan([&](declarium::Form& plan) {
    EXPECT_EQ(Rows(plan)[0], u"[ ] A – názov je obsadený: procedúra, Module1, riadok 1");
    Cancel(plan);
  });
}

TEST_F(ModuleCommandsTest, AFormGetsPrivateDeclarations) {
  auto form = ModuleOf(u"Form1", kBefore);
  form->kind = vb::ModuleKind::kForm;
  Start({form});
  User().ChooseRow(Form().cmbRange, 1);
  InPlan([&](declarium::Form& plan) { Agree(plan); });
  EXPECT_NE(Code().find(u"Private Const A = 1"), Code().npos);
}

TEST_F(ModuleCommandsTest, AModuleGetsThePublicOnesThatWereChosen) {
  Start({ModuleOf(u"Module1", kBefore)});
  User().ChooseRow(Form().cmbRange, 1);
  InPlan([&](declarium::Form& plan) { Agree(plan); });
  EXPECT_NE(Code().find(u"Public Const A = 1"), Code().npos);
}

TEST_F(ModuleCommandsTest, AModuleThatChangesMeanwhileIsLeftAlone) {
  Start({ModuleOf(u"Module1", kBefore)});
  InPlan([&](declarium::Form& plan) {
    host_.selected->code.Set(u"' changed");
    Script().AnswerMessage(Answer::kOk);
    Agree(plan);
  });
  EXPECT_EQ(Code(), u"' changed");
  EXPECT_THAT(Messages(), ElementsAre(texts::kModuleChanged));
}

TEST_F(ModuleCommandsTest, AnotherModuleBecomingActiveDoesNotMoveTheInsertion) {
  Start({ModuleOf(u"Module1", kBefore), ModuleOf(u"Module2", u"")});
  InPlan([&](declarium::Form& plan) {
    host_.selected = host_.project->modules[1];
    host_.events.lock()->ComponentSelected(host_.Module(host_.selected));
    Agree(plan);
  });
  EXPECT_NE(Code(0).find(u"Const A"), Code(0).npos);
  EXPECT_EQ(Code(1), u"");
}

TEST_F(ModuleCommandsTest, EachFailingCallSaysSoAndLeavesTheModule) {
  Start({ModuleOf(u"Module1", kBefore), ModuleOf(u"Module2", u"")});
  InPlan([&](declarium::Form& plan) { Cancel(plan); });
  // From the first component on, one that fails is only left out.
  const auto calls = std::ranges::find(host_.record.entries, "Item") - host_.record.entries.begin();
  ASSERT_EQ(calls, 8);
  for (int call = 0; call < calls; ++call) {
    host_.record = {};
    host_.record.until_failure = call;
    host_.record.dies = true;
    Script().AnswerMessage(Answer::kOk);
    Press();
    EXPECT_THAT(Messages(), ElementsAre(texts::kHostDoesNotAnswer)) << call;
    EXPECT_EQ(Code(), kBefore);
  }
}

TEST_F(ModuleCommandsTest, AHostThatRefusesTheLinesKeepsItsModule) {
  Start({ModuleOf(u"Module1", kBefore)});
  host_.record.failing = "InsertLines";
  InPlan([&](declarium::Form& plan) {
    Script().AnswerMessage(Answer::kOk);
    Agree(plan);
  });
  EXPECT_EQ(Code(), kBefore);
  EXPECT_THAT(Messages(), ElementsAre(texts::kEditRefused));
}

TEST_F(ModuleCommandsTest, AModuleThatCannotBeReadIsNamed) {
  auto lost = ModuleOf(u"Module2", u"Public Const A = 1");
  lost->lines = -1;
  Start({ModuleOf(u"Module1", kBefore), lost});
  InPlan([&](declarium::Form& plan) {
    EXPECT_EQ(Rows(plan).back(), u"    Module2 – modul sa nedá prečítať");
    Cancel(plan);
  });
}

TEST_F(ModuleCommandsTest, AHostThatDisconnectsMeanwhileIsLeftAlone) {
  Start({ModuleOf(u"Module1", kBefore)});
  InPlan([&](declarium::Form& plan) {
    connection_->Disconnect();
    host_.record = {};
    Script().AnswerMessage(Answer::kOk);
    Agree(plan);
  });
  EXPECT_EQ(Code(), kBefore);
  EXPECT_TRUE(host_.record.entries.empty());
  EXPECT_THAT(Messages(), ElementsAre(texts::kHostDoesNotAnswer));
}

TEST_F(ModuleCommandsTest, ManyModulesAreReadBehindAWindowThatCancels) {
  std::vector<std::shared_ptr<FakeModule>> modules;
  for (int i = 0; i < 2000; ++i) modules.push_back(ModuleOf(u"M" + CountText(i), u"' x"));
  Start(std::move(modules));
  Script().InForm("frmReading", [&](declarium::Form& reading) {
    auto& bar = reading.Get<ProgressBar>("PB");
    EXPECT_EQ(bar.Maximum(), 2000);
    const int before = bar.Value();
    toolkit_->Advance(20);
    EXPECT_GT(bar.Value(), before);
    EXPECT_LT(bar.Value(), 2000);
    User().PressKey(key::kEscape);
  });
  Press();
  EXPECT_EQ(Script().Remaining(), 0u);
  EXPECT_THAT(Messages(), IsEmpty());
  Script().InForm("frmReading", [&](declarium::Form& reading) {
    for (int i = 0; i < 100 && reading.IsLoaded(); ++i) toolkit_->Advance(20);
    EXPECT_FALSE(reading.IsLoaded());
  });
  InPlan([&](declarium::Form& plan) { Agree(plan); });
  EXPECT_NE(Code().find(u"Const A"), Code().npos);
}

TEST_F(ModuleCommandsTest, CompletesTheModuleByWhatItsCodeUses) {
  Start({ModuleOf(u"Module1",
                  u"Option Explicit\r\nSub X()\r\n  Dim r As RECT\r\n  Beep MAX_PATH\r\nEnd Sub")});
  Script().InForm("frmPlan", [&](declarium::Form& plan) {
    EXPECT_EQ(plan.Caption(), u"Doplniť modul 'Module1'");
    EXPECT_THAT(Rows(plan), ElementsAre(u"[x] RECT – vloží sa", u"[x] MAX_PATH – vloží sa",
                                        u"[x] POINTAPI – vloží sa; potrebuje to RECT"));
    Agree(plan);
  });
  User().PressKey(Form().txtInput, 'M', {.control = true});
  EXPECT_NE(Code().find(u"Private Type RECT"), Code().npos);
  EXPECT_NE(Code().find(u"Private Const MAX_PATH = 260"), Code().npos);
  EXPECT_EQ(Code().find(u"Const A"), Code().npos) << "the basket is not asked";
}

TEST_F(ModuleCommandsTest, AModuleThatLacksNothingSaysSo) {
  Start({ModuleOf(u"Module1", kBefore)});
  Script().InForm("frmPlan", [&](declarium::Form& plan) {
    EXPECT_THAT(Rows(plan), IsEmpty());
    EXPECT_EQ(plan.Get<Label>("labCount").Caption(), texts::kPlanNothing);
    EXPECT_FALSE(plan.Get<CommandButton>("Command1").Enabled());
    User().PressKey(plan.Get<ListView>("LV1"), key::kEscape);
  });
  User().ChooseMenu(*Form().frmMain, "mnuCompleteModule");
  EXPECT_EQ(Code(), kBefore);
}

TEST_F(ModuleCommandsTest, CtrlEnterRunsIt) {
  Start({ModuleOf(u"Module1", kBefore)});
  Script().InForm("frmPlan", [&](declarium::Form& plan) { Agree(plan); });
  User().PressKey(Form().txtInput, key::kEnter, {.control = true});
  EXPECT_NE(Code().find(u"Const A"), Code().npos);
}

TEST_F(ModuleCommandsTest, IsEnabledLikeInsert) {
  Start({ModuleOf(u"Module1", kBefore)});
  auto& toolbar = Form().Toolbar1;
  EXPECT_TRUE(toolbar.ButtonEnabled("insert-missing"));
  EXPECT_TRUE(Form().mnuInsertMissing.Enabled());
  connection_->Disconnect();
  window_->CodeModuleChanged();
  EXPECT_FALSE(toolbar.ButtonEnabled("insert-missing"));
  EXPECT_FALSE(Form().mnuInsertMissing.Enabled());
  EXPECT_FALSE(Form().mnuCompleteModule.Enabled());
}

TEST_F(ModuleCommandsTest, WithoutAHostItIsDisabled) {
  Open();
  User().ChooseRow(Form().cmbDatabase, 0);
  Put(0, u"A");
  EXPECT_FALSE(Form().Toolbar1.ButtonEnabled("insert-missing"));
  EXPECT_FALSE(Form().mnuInsertMissing.Enabled());
}

}  // namespace
}  // namespace declarium
