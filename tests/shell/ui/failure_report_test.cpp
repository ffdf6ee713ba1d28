#include "shell/ui/failure_report.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>
#include <vector>

#include "text/user_texts.h"
#include "toolkit/headless/toolkit.h"

namespace declarium {
namespace {

using Texts = std::vector<std::u16string>;

class FailureReportTest : public testing::Test {
 protected:
  void Fail(const char* reason = "the reason") {
    EXPECT_FALSE(toolkit_.boundary.Run([reason] { throw std::runtime_error(reason); }));
  }
  Texts Told() {
    auto texts = toolkit_.Script().MessageTexts();
    toolkit_.Script().ForgetAsked();
    return texts;
  }

  headless::HeadlessToolkit toolkit_;
  int asked_to_keep_ = 0;
  std::function<bool()> keep_ = [] { return false; };
  FailureReport report_{toolkit_, [this] {
                          ++asked_to_keep_;
                          return keep_();
                        }};
};

TEST_F(FailureReportTest, TellsWhatFailedAndThatTheProgramGoesOn) {
  toolkit_.Script().AnswerMessage(Answer::kOk);
  Fail();
  EXPECT_EQ(toolkit_.Script().LastMessage(),
            (Message{u"Vyskytla sa neočakávaná chyba:\r\nthe reason\r\n\r\n"
                     u"Program pokračuje v práci.",
                     MessageButtons::kOk, MessageIcon::kCritical}));
  EXPECT_EQ(asked_to_keep_, 1);
}

TEST_F(FailureReportTest, NamesMemoryThatHasRunOutAndWhatHasNoName) {
  toolkit_.Script().AnswerMessage(Answer::kOk);
  EXPECT_FALSE(toolkit_.boundary.Run([] { throw std::bad_alloc(); }));
  EXPECT_NE(Told().at(0).find(texts::kNoMemory), std::u16string::npos);
  toolkit_.Script().AnswerMessage(Answer::kOk);
  EXPECT_FALSE(toolkit_.boundary.Run([] { throw 1; }));
  EXPECT_NE(Told().at(0).find(texts::kUnknownFailure), std::u16string::npos);
}

TEST_F(FailureReportTest, TellsThatUnsavedChangesAreKept) {
  keep_ = [] { return true; };
  toolkit_.Script().AnswerMessage(Answer::kOk);
  Fail();
  EXPECT_NE(Told().at(0).find(texts::kUnsavedKept), std::u16string::npos);
}

TEST_F(FailureReportTest, TellsTheFirstFailureWhenKeepingFailsToo) {
  keep_ = []() -> bool { throw std::runtime_error("another"); };
  toolkit_.Script().AnswerMessage(Answer::kOk);
  Fail();
  const auto told = Told();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_NE(told[0].find(u"the reason"), std::u16string::npos);
}

TEST_F(FailureReportTest, ShowsNoSecondBoxAboveTheFirstButKeepsAgain) {
  toolkit_.Script().AnswerMessage(Answer::kOk, [this] { Fail("while the box is open"); });
  Fail();
  EXPECT_EQ(Told().size(), 1U);
  EXPECT_EQ(asked_to_keep_, 2);
}

TEST_F(FailureReportTest, DoesNotRepeatTheSameReasonAtOnce) {
  toolkit_.Script().AnswerMessage(Answer::kOk);
  Fail();
  Fail();
  EXPECT_EQ(Told().size(), 1U);
  toolkit_.Script().AnswerMessage(Answer::kOk);
  Fail("another reason");
  EXPECT_EQ(Told().size(), 1U);
  toolkit_.Advance(10'000);
  toolkit_.Script().AnswerMessage(Answer::kOk);
  Fail("another reason");
  EXPECT_EQ(Told().size(), 1U);
}

TEST_F(FailureReportTest, AFailureToTellGoesNowhere) {
  Fail();  // the script has no answer for the box, which throws
  EXPECT_EQ(asked_to_keep_, 1);
}

TEST(Boundary, SaysWhetherTheActionSucceededAlsoWithoutAReport) {
  Boundary boundary;
  EXPECT_TRUE(boundary.Run([] {}));
  EXPECT_FALSE(boundary.Run([] { throw std::runtime_error("nobody is told"); }));
}

}  // namespace
}  // namespace declarium
