#include "host/insertion.h"

#include <gtest/gtest.h>

#include "host/fake_host.h"

namespace declarium {
namespace {

class InsertionTest : public testing::Test {
 protected:
  HostResult<Insertion> Insert(bool answer) {
    const auto module = host_.Module(module_);
    return InsertIntoActiveModule(
        module.get(),
        [&](std::u16string_view question) {
          question_ = question;
          return answer;
        },
        [this] {
          host_.record.entries.push_back("text");
          return std::u16string(u"Const A = 1");
        });
  }

  FakeHostState host_;
  std::shared_ptr<FakeModule> module_ =
      std::make_shared<FakeModule>(FakeModule{.name = u"Modul č"});
  std::u16string question_;
};

TEST_F(InsertionTest, AsksWithTheComponentsName) {
  ASSERT_EQ(Insert(true).value(), Insertion::kInserted);
  EXPECT_EQ(question_, u"Vložiť do 'Modul č' ?");
}

TEST_F(InsertionTest, InsertsBehindTheDeclarations) {
  for (const int lines : {0, 1, 5}) {
    module_->declaration_lines = lines;
    ASSERT_EQ(Insert(true).value(), Insertion::kInserted);
    EXPECT_EQ(module_->insertions.back(), std::pair(lines + 1, std::u16string(u"Const A = 1")));
  }
}

TEST_F(InsertionTest, ReadsTheDeclarationsBeforeItBuildsTheText) {
  ASSERT_TRUE(Insert(true));
  EXPECT_EQ(host_.record.entries,
            (std::vector<std::string>{"CountOfDeclarationLines", "text", "InsertLines"}));
}

TEST_F(InsertionTest, DeclinedItTouchesNothing) {
  EXPECT_EQ(Insert(false).value(), Insertion::kDeclined);
  EXPECT_TRUE(host_.record.entries.empty());
}

TEST_F(InsertionTest, WithoutModuleItAsksNothing) {
  module_ = nullptr;
  EXPECT_EQ(Insert(true).value(), Insertion::kNoModule);
  EXPECT_TRUE(question_.empty());
}

TEST_F(InsertionTest, FailingCallEndsIt) {
  module_->gone = true;
  EXPECT_FALSE(Insert(true));
  EXPECT_TRUE(question_.empty());
  module_->gone = false;
  for (const char* failing : {"CountOfDeclarationLines", "InsertLines"}) {
    host_.record.failing = failing;
    EXPECT_FALSE(Insert(true));
  }
  EXPECT_TRUE(module_->insertions.empty());
}

TEST(TopLineForCaret, ScrollsJustFarEnough) {
  const struct {
    int top, visible_lines, caret, expected;
  } cases[] = {
      {1, 10, 1, 1}, {1, 10, 10, 1},  {1, 10, 11, 2}, {5, 10, 4, 4},
      {5, 10, 5, 5}, {5, 10, 40, 31}, {3, 0, 9, 9},   {3, 1, 3, 3},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(TopLineForCaret(c.top, c.visible_lines, c.caret), c.expected)
        << c.top << ' ' << c.visible_lines << ' ' << c.caret;
  }
}

TEST_F(InsertionTest, ScrollsOnlyThePaneOfTheModule) {
  FakeApplication application(host_);
  const auto module = host_.Module(module_);
  host_.pane = std::make_shared<FakePaneState>(FakePaneState{module_, 1, 10, 15});
  KeepCaretInView(application, *module);
  EXPECT_EQ(host_.pane->top, 6);
  const auto namesake = std::make_shared<FakeModule>(FakeModule{.name = module_->name});
  *host_.pane = {namesake, 1, 10, 15};
  KeepCaretInView(application, *module);
  EXPECT_EQ(host_.pane->top, 1);
}

}  // namespace
}  // namespace declarium
