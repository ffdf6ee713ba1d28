#include "host/insertion.h"

#include <gtest/gtest.h>
#include <limits>

#include "host/fake_host.h"

namespace declarium {
namespace {

class InsertionTest : public testing::Test {
 protected:
  std::expected<Insertion, InsertionFailure> Insert(bool answer) {
    const std::shared_ptr<CodeModule> module = host_.Module(module_);
    return InsertIntoActiveModule([&] { return module; }, naming_,
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
  ModuleNaming naming_ = ModuleNaming::kComponent;
  std::u16string question_;
};

TEST_F(InsertionTest, AsksWithTheComponentsName) {
  ASSERT_EQ(Insert(true).value(), Insertion::kInserted);
  EXPECT_EQ(question_, u"Vložiť do 'Modul č' ?");
}

TEST_F(InsertionTest, AsksWithTheProjectsNameWhereItIsWanted) {
  host_.OpenProject({module_});
  host_.project->name = u"Projekt1";
  naming_ = ModuleNaming::kProjectAndComponent;
  ASSERT_EQ(Insert(false).value(), Insertion::kDeclined);
  EXPECT_EQ(question_, u"Vložiť do 'Projekt1.Modul č' ?");
  host_.record.failing = "InsertLines";
  EXPECT_EQ(Insert(true).error().module, u"Projekt1.Modul č");
}

TEST_F(InsertionTest, ProjectThatDoesNotSayItsNameIsLeftOutOfTheQuestion) {
  naming_ = ModuleNaming::kProjectAndComponent;
  EXPECT_TRUE(Insert(false));
  EXPECT_EQ(question_, u"Vložiť do 'Modul č' ?") << "a component without project";
  host_.OpenProject({module_});
  for (const char* failing : {"Parent", "Collection", "Project.Name"}) {
    host_.record.failing = failing;
    EXPECT_TRUE(Insert(false)) << failing;
    EXPECT_EQ(question_, u"Vložiť do 'Modul č' ?") << failing;
  }
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

TEST_F(InsertionTest, FailingCallEndsItAndIsNamed) {
  module_->gone = true;
  auto outcome = Insert(true);
  ASSERT_FALSE(outcome);
  EXPECT_EQ(outcome.error().step, InsertionStep::kName);
  EXPECT_TRUE(question_.empty());
  module_->gone = false;
  const struct {
    const char* failing;
    InsertionStep step;
  } cases[] = {{"CountOfDeclarationLines", InsertionStep::kDeclarations},
               {"InsertLines", InsertionStep::kText}};
  for (const auto& c : cases) {
    host_.record.failing = c.failing;
    outcome = Insert(true);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().step, c.step);
    EXPECT_EQ(outcome.error().module, u"Modul č");
  }
  EXPECT_TRUE(module_->insertions.empty());
}

TEST_F(InsertionTest, CountOfLinesThatNoModuleHasIsAFailure) {
  constexpr int kMost = std::numeric_limits<int>::max();
  for (const int lines : {-1, kMostModuleLines + 1, kMost, -kMost - 1}) {
    module_->declaration_lines = lines;
    const auto outcome = Insert(true);
    ASSERT_FALSE(outcome) << lines;
    EXPECT_EQ(outcome.error().step, InsertionStep::kDeclarations);
  }
  EXPECT_TRUE(module_->insertions.empty());
  module_->declaration_lines = kMostModuleLines;
  EXPECT_TRUE(Insert(true));
}

TEST(InsertionFailureText, SaysWhatWasNotDoneAndWhy) {
  const auto code = [](std::uint32_t status) { return static_cast<std::int32_t>(status); };
  const struct {
    InsertionFailure failure;
    std::u16string_view text;
  } cases[] = {
      {{InsertionStep::kName, u"", {code(0x800401FD)}},
       u"Výber sa nevložil.\r\nProstredie nepovedalo názov modulu. (Chyba 800401FD.)\r\n\r\n"
       u"Výber zostáva, ako bol."},
      {{InsertionStep::kDeclarations, u"Module1", {kWrongAnswer}},
       u"Výber sa nevložil do 'Module1'.\r\nProstredie nepovedalo, kde sa končia deklarácie "
       u"modulu. (Chyba 80020005.)\r\n\r\nVýber zostáva, ako bol."},
      {{InsertionStep::kText, u"Module1", {code(0x80010001)}},
       u"Výber sa nevložil do 'Module1'.\r\nProstredie neprijalo text. Má otvorené dialógové okno "
       u"alebo v ňom beží program; ukončite ho a skúste to znova.\r\n\r\nVýber zostáva, ako bol."},
      {{InsertionStep::kText, u"Module1", {code(0x8001010A)}},
       u"Výber sa nevložil do 'Module1'.\r\nProstredie neprijalo text. Má otvorené dialógové okno "
       u"alebo v ňom beží program; ukončite ho a skúste to znova.\r\n\r\nVýber zostáva, ako bol."},
      {{InsertionStep::kText, u"Module1", {code(0x80010108)}},
       u"Výber sa nevložil do 'Module1'.\r\nProstredie neprijalo text. Už nebeží.\r\n\r\n"
       u"Výber zostáva, ako bol."},
      {{InsertionStep::kText, u"Module1", {code(0x800A9D00), u"Line too long."}},
       u"Výber sa nevložil do 'Module1'.\r\nProstredie neprijalo text. Line too long. (Chyba "
       u"800A9D00.)\r\n\r\nVýber zostáva, ako bol."},
  };
  for (const auto& c : cases) EXPECT_EQ(InsertionFailureText(c.failure), c.text);
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

TEST_F(InsertionTest, LinesThatCannotBeScrollNoPane) {
  FakeApplication application(host_);
  const auto module = host_.Module(module_);
  constexpr int kMost = std::numeric_limits<int>::max();
  const FakePaneState cases[] = {{module_, 1, 10, kMost},
                                 {module_, kMost, 10, 1},
                                 {module_, 5, kMost, 1},
                                 {module_, 5, 10, -1}};
  for (const auto& pane : cases) {
    host_.pane = std::make_shared<FakePaneState>(pane);
    KeepCaretInView(application, *module);
    EXPECT_EQ(host_.pane->top, pane.top);
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
