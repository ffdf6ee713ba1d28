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

TEST_F(CodeDisplayTest, TheAudienceDecidesWhatAKeywordIs) {
  const auto keywords = [this] {
    std::u16string text;
    for (const auto& [color, run] : RTB_.Runs())
      if (color == colors_.keyword) text += run + u"|";
    return text;
  };
  const auto* text =
      u"#If VBA7 Then\r\nDeclare PtrSafe Sub F Lib \"x\" (ByVal h As LongPtr)\r\n#End If";
  display_.PrintFormatText(text);
  EXPECT_EQ(keywords(), u"Declare|Sub|Lib|ByVal|As|");
  display_.SetAudience(vb::Audience::kVba7);
  display_.PrintFormatText(text);
  EXPECT_EQ(keywords(), u"#If|Then|Declare|PtrSafe|Sub|Lib|ByVal|As|LongPtr|#End|If|");
  EXPECT_FALSE(display_.IsEmpty());
  RTB_.Clear();
  EXPECT_TRUE(display_.IsEmpty());
}

}  // namespace
}  // namespace declarium
