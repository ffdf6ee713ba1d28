// The declarations of the host's project, from the menu to the changed modules.
#include "host/ui/project_commands.h"

#include <algorithm>
#include <gmock/gmock.h>

#include "app/host_window_fixture.h"
#include "host/ui/project_form.h"
#include "text/user_texts.h"
#include "toolkit/headless/form.h"
#include "toolkit/progress_bar.h"
#include "toolkit/rich_text.h"

namespace declarium {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Two modules that declare MAX_PATH alike, one thing that nobody uses, and one that the library has
// otherwise.
constexpr std::u16string_view kMain =
    u"Option Explicit\r\nPrivate Const MAX_PATH = 260\r\nPrivate Const OLD = 1\r\n\r\nSub "
    u"Main()\r\n  Debug.Print MAX_PATH\r\nEnd Sub";
constexpr std::u16string_view kOther =
    u"Private Const MAX_PATH = 260\r\nPrivate Const A = 7\r\n\r\nSub Walk()\r\n  Debug.Print "
    u"MAX_PATH, A\r\nEnd Sub";
constexpr std::u16string_view kMainAfter =
    u"Option Explicit\r\nPublic Const MAX_PATH = 260\r\n\r\nSub Main()\r\n  Debug.Print "
    u"MAX_PATH\r\nEnd Sub";
constexpr std::u16string_view kOtherAfter =
    u"Private Const A = 1\r\n\r\nSub Walk()\r\n  Debug.Print MAX_PATH, A\r\nEnd Sub";

constexpr std::u16string_view kAskMain =
    u"Zmeniť modul 'Main'?\r\n\r\nOdstránené deklarácie: 1\r\nZmenené deklarácie: 1";
constexpr std::u16string_view kAskOther =
    u"Zmeniť modul 'Other'?\r\n\r\nOdstránené deklarácie: 1\r\nZmenené deklarácie: 1";

class ProjectCommandsTest : public HostWindowTest {
 protected:
  void StartTwo() { Start({ModuleOf(u"Main", kMain), ModuleOf(u"Other", kOther)}); }
  void Choose() { User().ChooseMenu(*Form().frmMain, "mnuProject"); }
  // Runs the command and does this in the project's form.
  void InProject(const std::function<void(declarium::Form&)>& action) {
    Script().InForm("frmProject", [&](declarium::Form& form) {
      action(form);
      if (form.IsLoaded()) User().PressKey(form.Get<ListView>("LV1"), key::kEscape);
    });
    Choose();
  }
  static void ExpectEnd(const std::u16string& row, std::u16string_view end) {
    EXPECT_TRUE(row.ends_with(end)) << ToUtf8(row);
  }
  void CarryOut(declarium::Form& form, const std::vector<Answer>& answers) {
    for (const auto answer : answers) Script().AnswerMessage(answer);
    User().Click(form.Get<CommandButton>("Command1"));
  }
  static std::u16string Count(declarium::Form& form) {
    return form.Get<Label>("labCount").Caption();
  }
  void ExpectNothingDone() const {
    EXPECT_EQ(Code(0), kMain);
    EXPECT_EQ(Code(1), kOther);
  }
};

TEST_F(ProjectCommandsTest, ShowsEveryDeclarationWithWhatIsToBeDone) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    EXPECT_EQ(form.Caption(), u"Projekt 'Project1'");
    EXPECT_THAT(
        Rows(form),
        ElementsAre(
            u"[x] MAX_PATH – Main, riadok 2 – bude Public pre všetky moduly – používa: Main",
            u"[x] OLD – Main, riadok 3 – odstráni sa – nepoužíva sa",
            u"[x] MAX_PATH – Other, riadok 1 – odstráni sa, stačí v Main – používa: Other",
            u"[x] A – Other, riadok 2 – nahradí sa tým, čo má databáza – používa: Other – "
            u"Konštanta má inú hodnotu než v databázach"));
    EXPECT_EQ(Count(form), u"Deklarácie: 4, nálezy: 3, zmeny: 4");
    ExpectNothingDone();
  });
  ExpectNothingDone();
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(ProjectCommandsTest, ShowsWhatStandsThereAndWhatComes) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    const auto look = [&](int position) {
      User().ClickEntry(form.Get<ListView>("LV1"), position);
      return std::vector<std::u16string>{form.Get<Label>("labBefore").Caption(),
                                         std::u16string(form.Get<RichText>("rtbBefore").Text()),
                                         form.Get<Label>("labAfter").Caption(),
                                         std::u16string(form.Get<RichText>("rtbAfter").Text())};
    };
    EXPECT_THAT(look(1), ElementsAre(u"V module Main, riadok 2", u"Private Const MAX_PATH = 260",
                                     u"Zmení sa na", u"Public Const MAX_PATH = 260"));
    EXPECT_THAT(look(2), ElementsAre(u"V module Main, riadok 3", u"Private Const OLD = 1",
                                     u"Odstráni sa", u""));
    EXPECT_THAT(look(3), ElementsAre(u"V module Other, riadok 1", u"Private Const MAX_PATH = 260",
                                     u"Stačí Main, riadok 2", u"Public Const MAX_PATH = 260"));
    EXPECT_THAT(look(4), ElementsAre(u"V module Other, riadok 2", u"Private Const A = 7",
                                     u"Zmení sa na", u"Private Const A = 1"));
    User().ClickCheckBox(form.Get<ListView>("LV1"), 4);
    EXPECT_THAT(look(4), ElementsAre(u"V module Other, riadok 2", u"Private Const A = 7",
                                     u"V databáze", u"Private Const A = 1"));
  });
}

TEST_F(ProjectCommandsTest, DoesEachModuleAfterYesAndSaysWhatWasDone) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    CarryOut(form, {Answer::kYes, Answer::kYes});
    EXPECT_THAT(Messages(), ElementsAre(kAskMain, kAskOther));
    EXPECT_EQ(Code(0), kMainAfter);
    EXPECT_EQ(Code(1), kOtherAfter);
    ExpectEnd(Rows(form)[0], u"– hotovo: Public pre všetky moduly – používa: Main");
    ExpectEnd(Rows(form)[1], u"– hotovo: odstránené – nepoužíva sa");
    ExpectEnd(Rows(form)[2], u"– hotovo: odstránené, stačí v Main – používa: Other");
    ExpectEnd(Rows(form)[3],
              u"– hotovo: nahradené z databázy – používa: Other – Konštanta má inú hodnotu než v "
              u"databázach");
    EXPECT_TRUE(Rows(form)[0].starts_with(u"    "));
    EXPECT_EQ(Count(form), u"Hotovo. Zmenené moduly: 2");
    EXPECT_FALSE(form.Get<CommandButton>("Command1").Enabled());
    User().PressKey(form.Get<ListView>("LV1"), key::kEscape);
  });
  // The second time there is nothing to do.
  InProject([&](declarium::Form& form) {
    EXPECT_FALSE(form.Get<CommandButton>("Command1").Enabled());
    EXPECT_EQ(Count(form), u"Deklarácie: 2, nálezy: 0, zmeny: 0");
  });
}

TEST_F(ProjectCommandsTest, NoLeavesTheModuleAndWhatDependsOnIt) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    // Without a Public one in Main the module Other keeps its own.
    CarryOut(form, {Answer::kNo, Answer::kYes});
    EXPECT_EQ(Code(0), kMain);
    EXPECT_EQ(Code(1),
              u"Private Const MAX_PATH = 260\r\nPrivate Const A = 1\r\n\r\nSub Walk()\r\n  "
              u"Debug.Print MAX_PATH, A\r\nEnd Sub");
    ExpectEnd(Rows(form)[0], u"– zostane: je vynechaná – používa: Main");
    EXPECT_EQ(Count(form), u"Hotovo. Zmenené moduly: 1");
  });
}

TEST_F(ProjectCommandsTest, CancelDoesNothingInAnyModule) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    CarryOut(form, {Answer::kYes, Answer::kCancel});
    ExpectNothingDone();
    EXPECT_EQ(Count(form), u"Deklarácie: 4, nálezy: 3, zmeny: 4");
    // A No before is forgotten: the plan is as it was.
    CarryOut(form, {Answer::kNo, Answer::kCancel});
    EXPECT_EQ(Count(form), u"Deklarácie: 4, nálezy: 3, zmeny: 4");
    EXPECT_TRUE(form.Get<CommandButton>("Command1").Enabled());
  });
  ExpectNothingDone();
}

TEST_F(ProjectCommandsTest, BoxesLeaveActionsOutAndBringThemBack) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    auto& list = form.Get<ListView>("LV1");
    User().ClickCheckBox(list, 3);
    // One for all is no longer wanted.
    ExpectEnd(Rows(form)[0],
              u"[ ] MAX_PATH – Main, riadok 2 – zostane: je vynechaná – používa: Main");
    EXPECT_EQ(Count(form), u"Deklarácie: 4, nálezy: 3, zmeny: 2");
    User().ClickCheckBox(list, 1);
    EXPECT_EQ(Count(form), u"Deklarácie: 4, nálezy: 3, zmeny: 4");
    for (const int position : {1, 2, 4}) User().ClickCheckBox(list, position);
    EXPECT_FALSE(form.Get<CommandButton>("Command1").Enabled());
    User().ClickCheckBox(list, 2);
    CarryOut(form, {Answer::kYes});
    EXPECT_EQ(Code(0),
              u"Option Explicit\r\nPrivate Const MAX_PATH = 260\r\n\r\nSub Main()\r\n  Debug.Print "
              u"MAX_PATH\r\nEnd Sub");
    EXPECT_EQ(Code(1), kOther);
  });
}

TEST_F(ProjectCommandsTest, TheDetailNamesAllUsersAndTheOtherPlace) {
  std::vector<std::shared_ptr<FakeModule>> modules = {
      ModuleOf(u"M0",
               u"Private Const N = 1\r\nPublic Const ALL = 1\r\n"
               u"Sub X()\r\n  Debug.Print N, ALL\r\nEnd Sub")};
  for (const auto* name : {u"M1", u"M2", u"M3", u"M4"})
    modules.push_back(ModuleOf(name, u"Sub X()\r\n  Debug.Print ALL, ALL\r\nEnd Sub"));
  modules.push_back(
      ModuleOf(u"M5", u"Private Const N = 1 ' nocheck\r\nSub X()\r\n  Debug.Print N\r\nEnd Sub"));
  modules.push_back(
      ModuleOf(u"M6", u"Private Const N = 1\r\nSub X()\r\n  Debug.Print N\r\nEnd Sub"));
  Start(std::move(modules));
  InProject([&](declarium::Form& form) {
    ExpectEnd(Rows(form)[1], u"– používa: M0, M1 2, M2 2, M3 2, ďalšie moduly: 1");
    User().ClickEntry(form.Get<ListView>("LV1"), 2);
    EXPECT_EQ(form.Get<Label>("labDetail").Caption(), u"používa: M0, M1 2, M2 2, M3 2, M4 2");
    ExpectEnd(Rows(form)[3],
              u"– zostane: drží ju poznámka – používa: M6 – rovnako v M0, riadok 1, stačila by raz "
              u"ako Public");
    User().ClickEntry(form.Get<ListView>("LV1"), 4);
    EXPECT_EQ(form.Get<Label>("labAfter").Caption(), u"V module M0, riadok 1");
    EXPECT_EQ(form.Get<RichText>("rtbAfter").Text(), u"Private Const N = 1");
  });
}

TEST_F(ProjectCommandsTest, WhatStaysSaysWhy) {
  Start({ModuleOf(
      u"Main",
      u"#If A Then\r\nPrivate Const OLD = 1\r\n#End If\r\nPrivate Declare Function Beep Lib "
      u"\"kernel32\" (ByVal f As Long) As Long\r\nSub Main()\r\n  Beep 1\r\nEnd Sub")});
  InProject([&](declarium::Form& form) {
    ExpectEnd(Rows(form)[0], u"zostane: je vnútri #If – nepoužíva sa");
    ExpectEnd(Rows(form)[1],
              u"zostane: volania v kóde by nesedeli – používa: Main – inak v databáze");
    EXPECT_TRUE(Rows(form)[1].starts_with(u"    ")) << "no box for what cannot be done";
    EXPECT_FALSE(form.Get<CommandButton>("Command1").Enabled());
  });
}

TEST_F(ProjectCommandsTest, OnlyFindingsHidesWhatIsInOrder) {
  Start({ModuleOf(u"Main",
                  u"Private Const FINE = 1\r\nPrivate Const OLD = 1\r\nSub Main()\r\n  Debug.Print "
                  u"FINE\r\nEnd Sub")});
  InProject([&](declarium::Form& form) {
    EXPECT_EQ(Rows(form).size(), 2U);
    User().Click(form.Get<CheckBox>("Check1"));
    EXPECT_THAT(Rows(form), ElementsAre(u"[x] OLD – Main, riadok 2 – odstráni sa – nepoužíva sa"));
    EXPECT_EQ(form.Get<RichText>("rtbBefore").Text(), u"Private Const OLD = 1");
    User().Click(form.Get<CheckBox>("Check1"));
    EXPECT_EQ(Rows(form).size(), 2U);
  });
}

TEST_F(ProjectCommandsTest, AModuleThatChangedSinceIsNamedAndNothingIsDone) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    // What is not used in the plan is used by now.
    host_.project->modules[1]->code.Set(std::u16string(kOther) + u"\r\n' OLD");
    CarryOut(form, {Answer::kYes, Answer::kYes, Answer::kOk});
    EXPECT_EQ(Messages().back(), std::u16string(texts::kProjectHasChanged) + u"Other");
    EXPECT_EQ(Code(0), kMain);
    EXPECT_TRUE(form.Get<CommandButton>("Command1").Enabled());
  });
  EXPECT_EQ(host_.record.Count("DeleteLines") + host_.record.Count("ReplaceLine"), 0);
}

TEST_F(ProjectCommandsTest, AModuleAddedSinceStopsItToo) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    host_.project->modules.push_back(ModuleOf(u"New", u"' OLD"));
    CarryOut(form, {Answer::kYes, Answer::kYes, Answer::kOk});
    EXPECT_EQ(Messages().back(), std::u16string(texts::kProjectHasChanged) + u"New");
  });
  ExpectNothingDone();
}

TEST_F(ProjectCommandsTest, AModuleThatCannotBeReadAgainStopsIt) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    host_.project->modules[1]->lines = -1;
    CarryOut(form, {Answer::kYes, Answer::kYes, Answer::kOk});
    EXPECT_EQ(Messages().back(), texts::kHostDoesNotAnswer);
  });
  ExpectNothingDone();
}

TEST_F(ProjectCommandsTest, ARefusedModuleIsTakenBackAndWhatNeedsItStays) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    // The first line is gone already when the second edit of the module fails.
    host_.record.failing = "ReplaceLine";
    CarryOut(form, {Answer::kYes, Answer::kYes, Answer::kOk, Answer::kOk});
    host_.record.failing = {};
    EXPECT_THAT(Messages(),
                ElementsAre(kAskMain, kAskOther,
                            u"Modul 'Main': " + std::u16string(texts::kProjectEditRefused),
                            u"Modul 'Other': " + std::u16string(texts::kProjectEditRefused)));
    ExpectNothingDone();
    EXPECT_EQ(Count(form), u"Hotovo. Zmenené moduly: 0");
  });
}

TEST_F(ProjectCommandsTest, WhenTheModuleForAllIsRefusedTheOthersKeepTheirs) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    // Main alone is refused.
    host_.record.on_enter = [this](const std::string& entry) {
      if (entry == "ReplaceLine") host_.record.failing = Code(0) == kMain ? "" : "ReplaceLine";
      if (entry == "InsertLines") host_.record.failing = {};
    };
    CarryOut(form, {Answer::kYes, Answer::kYes, Answer::kOk});
    host_.record.on_enter = nullptr;
    EXPECT_EQ(Code(0), kMain);
    EXPECT_EQ(Code(1).find(u"Private Const MAX_PATH = 260"), 0U) << ToUtf8(Code(1));
    EXPECT_NE(Code(1).find(u"Private Const A = 1"), Code(1).npos);
  });
}

TEST_F(ProjectCommandsTest, EachCallThatFailsWhileReadingSaysSoAndChangesNothing) {
  StartTwo();
  InProject([&](declarium::Form& form) { User().Close(form); });
  // From the first component on, one that fails is only left out.
  const auto calls = std::ranges::find(host_.record.entries, "Item") - host_.record.entries.begin();
  ASSERT_EQ(calls, 3);
  for (int call = 0; call < calls; ++call) {
    host_.record = {};
    host_.record.until_failure = call;
    host_.record.dies = true;
    Script().AnswerMessage(Answer::kOk);
    Choose();
    EXPECT_THAT(Messages(), ElementsAre(texts::kHostDoesNotAnswer)) << call;
    ExpectNothingDone();
  }
}

TEST_F(ProjectCommandsTest, EachCallThatFailsWhileDoingLeavesWholeModules) {
  // Each call from the questions on fails once, and then for good.
  for (const bool dies : {false, true}) {
    for (int call = 0;; ++call) {
      StartTwo();
      bool reached = false;
      InProject([&](declarium::Form& form) {
        host_.record = {};
        host_.record.until_failure = call;
        host_.record.dies = dies;
        for (int i = 0; i < 6; ++i) Script().AnswerMessage(i < 2 ? Answer::kYes : Answer::kOk);
        User().Click(form.Get<CommandButton>("Command1"));
        reached = !host_.record.until_failure || *host_.record.until_failure < 0;
        host_.record = {};
        while (Script().Remaining() > 0) (void)toolkit_->ShowMessage({.text = u"not asked"});
      });
      if (!dies) {
        EXPECT_TRUE(Code(0) == kMain || Code(0) == kMainAfter) << call << ToUtf8(Code(0));
        // Other never lacks what Main does not have for it.
        const bool has_own = Code(1).find(u"Const MAX_PATH") != Code(1).npos;
        EXPECT_TRUE(has_own || Code(0) == kMainAfter) << call << ToUtf8(Code(1));
      }
      (void)Messages();
      (void)window_->Unload();
      window_.reset();
      connection_->Abandon();
      if (!reached) break;
      ASSERT_LT(call, 100);
    }
  }
}

TEST_F(ProjectCommandsTest, AModuleThatCannotBeReadIsNamedAndLessIsCertain) {
  auto lost = ModuleOf(u"Lost", u"' x");
  lost->lines = -1;
  Start({ModuleOf(u"Main", u"Public Const OLD = 1\r\nPrivate Const OWN = 1"), lost});
  InProject([&](declarium::Form& form) {
    EXPECT_THAT(Rows(form), ElementsAre(u"    OLD – Main, riadok 1 – nepoužíva sa",
                                        u"[x] OWN – Main, riadok 2 – odstráni sa – nepoužíva sa",
                                        u"    Lost – modul sa nedá prečítať"));
  });
}

TEST_F(ProjectCommandsTest, AHostThatDisconnectsMeanwhileIsLeftAlone) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    connection_->Disconnect();
    host_.record = {};
    CarryOut(form, {Answer::kYes, Answer::kYes, Answer::kOk});
    EXPECT_EQ(Messages().back(), texts::kHostDoesNotAnswer);
  });
  EXPECT_TRUE(host_.record.entries.empty());
  ExpectNothingDone();
}

TEST_F(ProjectCommandsTest, WithoutAProjectItSaysSo) {
  StartTwo();
  host_.project = nullptr;
  Script().AnswerMessage(Answer::kOk);
  Choose();
  EXPECT_THAT(Messages(), ElementsAre(texts::kNoProjectToRead));
}

TEST_F(ProjectCommandsTest, ManyModulesAreReadBehindAWindowThatCancels) {
  std::vector<std::shared_ptr<FakeModule>> modules;
  for (int i = 0; i < 2000; ++i)
    modules.push_back(ModuleOf(u"M" + CountText(static_cast<std::uint64_t>(i)),
                               u"Private Const N = 1\r\nSub X()\r\n  Debug.Print N\r\nEnd Sub"));
  Start(std::move(modules));
  Script().InForm("frmReading", [&](declarium::Form& reading) {
    EXPECT_EQ(reading.Get<ProgressBar>("PB").Maximum(), 2000);
    User().PressKey(key::kEscape);
  });
  Choose();
  EXPECT_EQ(Script().Remaining(), 0U);
  EXPECT_THAT(Messages(), IsEmpty());
  Script().InForm("frmReading", [&](declarium::Form& reading) {
    for (int i = 0; i < 100 && reading.IsLoaded(); ++i) toolkit_->Advance(20);
  });
  InProject([&](declarium::Form& form) {
    EXPECT_EQ(form.Get<ListView>("LV1").Count(), 2000);
    EXPECT_EQ(Count(form), u"Deklarácie: 2000, nálezy: 1999, zmeny: 2000");
  });
}

TEST_F(ProjectCommandsTest, IsEnabledLikeTheOthers) {
  StartTwo();
  EXPECT_TRUE(Form().mnuProject.Enabled());
  connection_->Disconnect();
  window_->CodeModuleChanged();
  EXPECT_FALSE(Form().mnuProject.Enabled());
}

TEST_F(ProjectCommandsTest, TheWindowGrowsWithItsList) {
  StartTwo();
  InProject([&](declarium::Form& form) {
    const auto before = form.Get<ListView>("LV1").Bounds();
    User().Resize(form, {form.OuterWidth() + 100, form.OuterHeight() + 50});
    const auto after = form.Get<ListView>("LV1").Bounds();
    EXPECT_EQ(after.width, before.width + 100);
    EXPECT_EQ(after.height, before.height + 50);
    const auto left = form.Get<RichText>("rtbBefore").Bounds();
    const auto right = form.Get<RichText>("rtbAfter").Bounds();
    EXPECT_LT(left.left + left.width, right.left);
    EXPECT_EQ(right.left + right.width, after.left + after.width);
  });
}

}  // namespace
}  // namespace declarium
