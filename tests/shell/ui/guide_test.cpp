#include "shell/ui/guide.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "text/user_texts.h"
#include "toolkit/headless/toolkit.h"

namespace declarium {
namespace {

using Paths = std::vector<std::u16string>;

class GuideTest : public testing::Test {
 protected:
  GuideTest() { std::filesystem::create_directories(folder_ / "guide/sk"); }

  std::u16string PutPage(std::string_view name) {
    const auto path = (folder_ / "guide" / "sk" / name);
    std::ofstream(path) << "<p>";
    return path.u16string();
  }

  TemporaryFolder folder_;
  headless::HeadlessToolkit toolkit_;
  Guide guide_{toolkit_, folder_.path()};
};

TEST_F(GuideTest, ATopicIsAPageOfTheSlovakGuideBesideTheProgram) {
  const auto page = PutPage("search.html");
  guide_.Open("search");
  EXPECT_EQ(toolkit_.OpenedDocuments(), Paths{page});
  EXPECT_TRUE(toolkit_.Script().AskedSoFar().empty());
}

TEST_F(GuideTest, WithoutATopicTheFirstPageIsShown) {
  const auto page = PutPage("index.html");
  guide_.Open({});
  EXPECT_EQ(toolkit_.OpenedDocuments(), Paths{page});
}

TEST_F(GuideTest, TheToolkitsCallForHelpShowsThePageOfItsTopic) {
  const auto page = PutPage("options.html");
  toolkit_.on_help.Raise("options");
  EXPECT_EQ(toolkit_.OpenedDocuments(), Paths{page});
}

TEST_F(GuideTest, AnEarlierGuideThatEndsTakesNothingFromTheLaterOne) {
  const auto page = PutPage("options.html");
  auto earlier = std::make_unique<Guide>(toolkit_, folder_ / "elsewhere");
  const Guide later(toolkit_, folder_.path());
  earlier.reset();
  toolkit_.on_help.Raise("options");
  EXPECT_EQ(toolkit_.OpenedDocuments(), Paths{page});
}

TEST_F(GuideTest, AfterItsEndTheCallForHelpDoesNothing) {
  std::make_unique<Guide>(toolkit_, folder_.path()).reset();
  toolkit_.on_help.Raise("options");
  EXPECT_TRUE(toolkit_.Script().AskedSoFar().empty());
}

TEST_F(GuideTest, AMissingPageIsReportedWithItsPath) {
  toolkit_.Script().AnswerMessage(Answer::kOk);
  guide_.Open("search");
  EXPECT_TRUE(toolkit_.OpenedDocuments().empty());
  const auto path = (folder_ / "guide" / "sk" / "search.html").u16string();
  EXPECT_EQ(toolkit_.Script().LastMessage(),
            (Message{.text = std::u16string(texts::kGuideMissing) + u"\r\n" + path,
                     .icon = MessageIcon::kExclamation}));
}

TEST_F(GuideTest, APageThatNoProgramShowsIsReportedWithItsPath) {
  const auto page = PutPage("search.html");
  toolkit_.RefuseDocuments();
  toolkit_.Script().AnswerMessage(Answer::kOk);
  guide_.Open("search");
  EXPECT_EQ(toolkit_.Script().LastMessage().text,
            std::u16string(texts::kGuideNotShown) + u"\r\n" + page);
}

TEST(About, TellsTheProgramAndItsVersion) {
  headless::HeadlessToolkit toolkit;
  toolkit.Script().AnswerMessage(Answer::kOk);
  ShowAbout(toolkit);
  EXPECT_EQ(toolkit.Script().LastMessage(),
            (Message{.text = u"Declarium 3.0\r\nKnižnica deklarácií pre Visual Basic 6.0\r\n"
                             u"Verzia 3.0.0",
                     .icon = MessageIcon::kInformation}));
}

}  // namespace
}  // namespace declarium
