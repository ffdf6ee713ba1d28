#include "host/code_reading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/fake_host.h"

namespace declarium {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CodeReadingTest : public testing::Test {
 protected:
  HostResult<ReadCode> ReadSelected() { return ReadModule(host_.Module(host_.selected)); }

  // Reads the project whole; the error that ended the reading.
  HostResult<> ReadAll(ProjectReading& reading) {
    if (auto begun = reading.Begin(); !begun) return begun;
    while (!reading.IsAtEnd()) {
      if (auto read = reading.ReadNext(); !read) return read;
    }
    return {};
  }
  std::unique_ptr<HostProject> Project() {
    return std::make_unique<FakeProject>(host_.project, host_.record);
  }
  static std::vector<std::u16string> NamesOf(ProjectReading& reading) {
    std::vector<std::u16string> names;
    for (const auto& module : reading.Modules()) names.push_back(module.name);
    return names;
  }

  FakeHostState host_;
};

TEST_F(CodeReadingTest, ReadsAModuleInOnePieceWithFiveCalls) {
  host_.selected = ModuleOf(u"Modul č", u"Option Explicit\r\n\r\nSub X()\r\nEnd Sub");
  host_.selected->kind = vb::ModuleKind::kForm;
  const auto code = ReadSelected();
  ASSERT_TRUE(code);
  EXPECT_EQ(code->name, u"Modul č");
  EXPECT_EQ(code->kind, vb::ModuleKind::kForm);
  EXPECT_EQ(code->text, u"Option Explicit\r\n\r\nSub X()\r\nEnd Sub");
  EXPECT_THAT(host_.record.entries, ElementsAre("Parent", "Name", "Type", "CountOfLines", "Lines"));
}

TEST_F(CodeReadingTest, AnEmptyModuleIsAnEmptyText) {
  host_.selected = ModuleOf(u"M", u"");
  EXPECT_EQ(ReadSelected().value().text, u"");
  EXPECT_EQ(host_.record.Count("Lines"), 0);
}

TEST_F(CodeReadingTest, CountsThatLieAreNotBelieved) {
  for (const int count : {-1, kMostLinesOfModule + 1, 2'000'000'000, 1}) {
    host_.selected = ModuleOf(u"M", u"A\r\nB");
    host_.selected->lines = count;
    const auto code = ReadSelected();
    // One line of two is what the host says it has.
    EXPECT_EQ(code.has_value(), count == 1) << count;
  }
}

TEST_F(CodeReadingTest, AModuleThatShrinksWhileItIsReadFails) {
  host_.selected = ModuleOf(u"M", u"A\r\nB");
  host_.record.on_enter = [&](const std::string& entry) {
    if (entry == "Lines") host_.selected->code.Set(u"A");
  };
  EXPECT_FALSE(ReadSelected());
}

TEST_F(CodeReadingTest, EachFailingCallFailsTheModule) {
  for (int call = 0; call < 5; ++call) {
    host_.selected = ModuleOf(u"M", u"A");
    host_.record.until_failure = call;
    EXPECT_FALSE(ReadSelected()) << call;
  }
}

TEST_F(CodeReadingTest, ReadsAProjectWithSixCallsAModule) {
  host_.OpenProject({ModuleOf(u"A", u"1"), ModuleOf(u"B", u"2"), ModuleOf(u"C", u"")});
  ProjectReading reading(Project());
  ASSERT_TRUE(ReadAll(reading));
  EXPECT_EQ(reading.ProjectName(), u"Project1");
  EXPECT_THAT(NamesOf(reading), ElementsAre(u"A", u"B", u"C"));
  EXPECT_EQ(reading.Modules()[1].text, u"2");
  EXPECT_LE(host_.record.entries.size(), 2u + 3 * 6);
}

TEST_F(CodeReadingTest, TheModuleThatWasReadIsNotReadAgain) {
  host_.OpenProject({ModuleOf(u"A", u"1"), ModuleOf(u"B", u"2")});
  const auto active = ReadSelected();
  ASSERT_TRUE(active);
  ProjectReading reading(Project(), &*active);
  ASSERT_TRUE(ReadAll(reading));
  EXPECT_THAT(NamesOf(reading), ElementsAre(u"B"));
  // Six for each module, and the two that the project takes.
  EXPECT_LE(host_.record.entries.size(), 2u + 2 * 6);
}

TEST_F(CodeReadingTest, WhatHoldsNoCodeIsPassedOver) {
  auto resource = ModuleOf(u"Res", u"");
  resource->kind = std::nullopt;
  auto designer = ModuleOf(u"Designer1", u"");
  designer->has_code = false;
  host_.OpenProject({resource, designer, ModuleOf(u"B", u"2")});
  ProjectReading reading(Project());
  ASSERT_TRUE(ReadAll(reading));
  EXPECT_THAT(NamesOf(reading), ElementsAre(u"B"));
  EXPECT_THAT(reading.Unread(), IsEmpty());
}

TEST_F(CodeReadingTest, AComponentThatFailsIsNamedAndTheOthersAreRead) {
  host_.OpenProject({ModuleOf(u"A", u"1"), ModuleOf(u"B", u"2"), ModuleOf(u"C", u"3")});
  for (int call = 0; call < 6; ++call) {
    host_.record.until_failure = 2 + 6 + call;  // the second module's
    ProjectReading reading(Project());
    ASSERT_TRUE(ReadAll(reading)) << call;
    EXPECT_THAT(NamesOf(reading), ElementsAre(u"A", u"C")) << call;
    EXPECT_THAT(reading.Unread(), ElementsAre(call < 2 ? u"#2" : u"B")) << call;
  }
}

TEST_F(CodeReadingTest, AHostThatDiesEndsTheReading) {
  for (int call = 0; call < 2 + 4 * 6; ++call) {
    std::vector<std::shared_ptr<FakeModule>> modules;
    for (int i = 0; i < 2000; ++i) modules.push_back(ModuleOf(u"M", u"1"));
    host_.OpenProject(std::move(modules));
    host_.record = {};
    host_.record.until_failure = call;
    host_.record.dies = true;
    ProjectReading reading(Project());
    EXPECT_FALSE(ReadAll(reading)) << call;
    EXPECT_LE(host_.record.entries.size(), static_cast<std::size_t>(call) + 4) << call;
  }
}

TEST_F(CodeReadingTest, ABusyHostIsWaitedForOnce) {
  for (const auto code : {0x80010001u, 0x8001010Au}) {
    host_.OpenProject({ModuleOf(u"A", u"1"), ModuleOf(u"B", u"2")});
    host_.record = {};
    host_.record.failure = HostError{static_cast<std::int32_t>(code)};
    host_.record.until_failure = 2;
    ProjectReading reading(Project());
    EXPECT_FALSE(ReadAll(reading));
    EXPECT_EQ(host_.record.Count("Item"), 1);
  }
}

TEST_F(CodeReadingTest, ANumberOfComponentsThatLiesIsBounded) {
  host_.OpenProject({ModuleOf(u"A", u"1")});
  for (const int count : {-1, kMostComponents + 1, 2'000'000'000}) {
    host_.project->count = count;
    ProjectReading reading(Project());
    EXPECT_FALSE(ReadAll(reading)) << count;
  }
  // The first components behind the real ones fail, which ends it.
  host_.project->count = kMostComponents;
  host_.record = {};
  ProjectReading reading(Project());
  EXPECT_FALSE(ReadAll(reading));
  EXPECT_EQ(host_.record.Count("Item"), 4);
  EXPECT_THAT(NamesOf(reading), ElementsAre(u"A"));
}

TEST_F(CodeReadingTest, WithoutAProjectThereIsNothingToRead) {
  ProjectReading reading(nullptr);
  ASSERT_TRUE(ReadAll(reading));
  EXPECT_EQ(reading.Count(), 0);
}

}  // namespace
}  // namespace declarium
