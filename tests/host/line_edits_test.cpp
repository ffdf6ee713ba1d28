#include "host/line_edits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/fake_host.h"

namespace declarium {
namespace {

using testing::ElementsAre;
using Outcome = EditReport::Outcome;

const std::u16string kRead = u"Option Explicit\r\nConst A = 1\r\n\r\nSub X()\r\nEnd Sub";

class LineEditsTest : public testing::Test {
 protected:
  EditReport Apply(const std::vector<LineEdit>& edits, std::u16string_view read = kRead) {
    return ApplyEdits(*host_.Module(module_), read, edits);
  }
  [[nodiscard]] std::u16string Text() const { return module_->code.text(); }
  void Reset() {
    host_.record = {};
    module_->code.Set(kRead);
    module_->half_inserted = 0;
  }

  FakeHostState host_;
  std::shared_ptr<FakeModule> module_ = ModuleOf(u"M", kRead);
  const std::vector<LineEdit> edits_ = {
      {.line = 2, .text = u"' one\r\n' two"},
      {.line = 3, .text = u"Const B = 2"},
      {.line = 4, .removed = 2, .text = u"Sub Y()\r\n\r\nEnd Sub"},
  };
  const std::u16string edited_ =
      u"Option Explicit\r\n' one\r\n' two\r\nConst A = 1\r\nConst B = 2\r\n\r\nSub Y()\r\n\r\n"
      u"End Sub";
};

TEST_F(LineEditsTest, EditsFromTheBottomUpWithOneInsertionForEachPlace) {
  EXPECT_EQ(Apply(edits_).outcome, Outcome::kDone);
  EXPECT_EQ(Text(), edited_);
  ASSERT_EQ(module_->insertions.size(), 3u);
  EXPECT_EQ(module_->insertions[0].first, 4);
  EXPECT_EQ(module_->insertions[1].first, 3);
  EXPECT_EQ(module_->insertions[2].first, 2);
}

TEST_F(LineEditsTest, OneLineForAnotherIsReplaced) {
  EXPECT_EQ(Apply({{.line = 2, .removed = 1, .text = u"Const A = 2"}}).outcome, Outcome::kDone);
  EXPECT_EQ(host_.record.Count("ReplaceLine"), 1);
  EXPECT_EQ(host_.record.Count("InsertLines"), 0);
  EXPECT_EQ(Text(), u"Option Explicit\r\nConst A = 2\r\n\r\nSub X()\r\nEnd Sub");
}

TEST_F(LineEditsTest, LinesGoWithoutAnythingInTheirPlace) {
  EXPECT_EQ(Apply({{.line = 2, .removed = 2}}).outcome, Outcome::kDone);
  EXPECT_EQ(Text(), u"Option Explicit\r\nSub X()\r\nEnd Sub");
}

TEST_F(LineEditsTest, InsertsIntoAnEmptyModule) {
  module_->code.Set(u"");
  EXPECT_EQ(Apply({{.line = 1, .text = u"Const A = 1\r\n"}}, u"").outcome, Outcome::kDone);
  EXPECT_EQ(Text(), u"Const A = 1\r\n") << "a blank line behind it";
}

TEST_F(LineEditsTest, AModuleThatChangedIsLeftAlone) {
  for (const auto* text : {u"", u"Option Explicit",
                           u"option explicit\r\nConst A = 1\r\n\r\nSub "
                           u"X()\r\nEnd Sub"}) {
    module_->code.Set(text);
    EXPECT_EQ(Apply(edits_).outcome, Outcome::kChanged);
    EXPECT_EQ(Text(), text);
  }
  EXPECT_TRUE(module_->insertions.empty());
}

TEST_F(LineEditsTest, EachFailingCallLeavesTheModuleAsItWasOrEdited) {
  Reset();
  ASSERT_EQ(Apply(edits_).outcome, Outcome::kDone);
  const auto calls = static_cast<int>(host_.record.entries.size());
  ASSERT_EQ(calls, 2 + 4);
  for (int call = 0; call < calls; ++call) {
    for (int half = 0; half < 3; ++half) {
      Reset();
      module_->half_inserted = half;
      host_.record.until_failure = call;
      const auto report = Apply(edits_);
      EXPECT_EQ(report.error.code, -1);
      // More lines than were to be inserted are not the edit's own.
      const bool is_strange = half == 2 && call == 4;
      EXPECT_EQ(report.outcome, is_strange ? Outcome::kUnknown : Outcome::kRefused)
          << "call " << call << " half " << half;
      EXPECT_EQ(Text() == kRead, !is_strange) << "call " << call << " half " << half;
    }
  }
}

TEST_F(LineEditsTest, AHostThatDiesInBetweenLeavesItUnknown) {
  for (int call = 2; call < 6; ++call) {
    Reset();
    host_.record.until_failure = call;
    host_.record.dies = true;
    EXPECT_EQ(Apply(edits_).outcome, Outcome::kUnknown) << call;
  }
}

TEST_F(LineEditsTest, WhatCannotBeTakenBackIsNamed) {
  host_.record.on_enter = [&](const std::string& entry) {
    // The last insertion fails, and so does the first attempt to take something back.
    if (entry == "InsertLines" && host_.record.Count("InsertLines") == 3) {
      host_.record.failing = "InsertLines";
    }
    if (entry == "DeleteLines" && host_.record.Count("DeleteLines") == 2) {
      host_.record.failing = "DeleteLines";
    }
  };
  const auto report = Apply(edits_);
  EXPECT_EQ(report.outcome, Outcome::kPartly);
  EXPECT_THAT(report.standing, ElementsAre(false, true, true));
}

TEST_F(LineEditsTest, NothingIsTakenBackFromAModuleThatSomebodyElseChanges) {
  host_.record.on_enter = [&](const std::string& entry) {
    if (entry != "InsertLines" || host_.record.Count("InsertLines") != 2) return;
    host_.record.failing = "InsertLines";
    (void)module_->code.InsertLines(1, u"' somebody's");
  };
  EXPECT_EQ(Apply(edits_).outcome, Outcome::kUnknown);
  EXPECT_EQ(host_.record.Count("DeleteLines"), 1) << "the edit's own";
  EXPECT_TRUE(Text().starts_with(u"' somebody's"));
}

TEST_F(LineEditsTest, NamesThatTheHostWritesAnewDoNotKeepItFromTakingBack) {
  host_.record.on_enter = [&](const std::string& entry) {
    if (entry != "InsertLines" || host_.record.Count("InsertLines") != 3) return;
    host_.record.until_failure = 0;
    (void)module_->code.DeleteLines(2, 1);
    (void)module_->code.InsertLines(2, u"Const a = 1");
  };
  EXPECT_EQ(Apply(edits_).outcome, Outcome::kRefused);
  EXPECT_EQ(Text(), u"Option Explicit\r\nConst a = 1\r\n\r\nSub X()\r\nEnd Sub");
}

}  // namespace
}  // namespace declarium
