#include "source/ui/code_display.h"

#include <gtest/gtest.h>
#include <vector>

#include "toolkit/headless/text.h"
#include "toolkit/headless/toolkit.h"

namespace declarium {
namespace {

constexpr ControlDefinition kControls[] = {{.kind = ControlKind::kRichText, .name = "RTB"}};
constexpr FormDefinition kForm = {.name = "frmTest", .size = {100, 100}, .controls = kControls};

class CodeDisplayTest : public testing::Test {
 protected:
  headless::HeadlessToolkit toolkit_;
  std::unique_ptr<Form> form_ = toolkit_.CreateForm(kForm);
  RichText& RTB_ = form_->Get<RichText>("RTB");
  DisplayColors colors_;
  CodeDisplay display_{RTB_, colors_};
};

TEST_F(CodeDisplayTest, ShowsTheTextInItsColorsWithTheCaretAtTheStart) {
  RTB_.SetVisible(false);
  display_.PrintFormatText(u"Const A = 1 'one");
  EXPECT_TRUE(RTB_.Visible());
  EXPECT_TRUE(dynamic_cast<headless::HeadlessRichText&>(RTB_).CaretAtStart());
  EXPECT_EQ(RTB_.Text(), u"Const A = 1 'one");
  EXPECT_EQ(RTB_.Runs().front(), (ColoredRun{colors_.keyword, u"Const"}));
  EXPECT_EQ(RTB_.Runs().back().color, colors_.comment);
}

TEST_F(CodeDisplayTest, ReplacesWhatWasShownBefore) {
  display_.PrintFormatText(u"Const A = 1");
  display_.PrintFormatText(u"Const B = 2");
  EXPECT_EQ(RTB_.Text(), u"Const B = 2");
}

TEST_F(CodeDisplayTest, AnEmptyTextLeavesTheDisplayHidden) {
  display_.PrintFormatText(u"Const A = 1");
  display_.PrintFormatText(u"");
  EXPECT_FALSE(RTB_.Visible());
  EXPECT_EQ(RTB_.Text(), u"");
}

TEST_F(CodeDisplayTest, ChangedColorsApplyToTheNextText) {
  display_.PrintFormatText(u"Const A = 1");
  colors_.keyword = 0x123456;
  EXPECT_NE(RTB_.Runs().front().color, 0x123456U);
  display_.PrintFormatText(u"Const A = 1");
  EXPECT_EQ(RTB_.Runs().front().color, 0x123456U);
}

}  // namespace
}  // namespace declarium
