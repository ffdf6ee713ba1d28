#include "vbhost/module_text.h"

#include <gtest/gtest.h>

namespace declarium::vbhost {
namespace {

ModuleText Module(std::u16string_view text) {
  ModuleText module;
  module.Set(text);
  return module;
}

TEST(ModuleText, EmptyModuleHasNoLines) {
  EXPECT_EQ(Module(u"").CountOfLines(), 0);
  EXPECT_EQ(Module(u"").CountOfDeclarationLines(), 0);
}

TEST(ModuleText, DeclarationsEndBeforeTheFirstProcedure) {
  const struct {
    std::u16string_view text;
    int lines;
  } cases[] = {
      {u"Option Explicit", 1},
      {u"Option Explicit\r\n", 2},
      {u"Option Explicit\r\nSub Main()\r\nEnd Sub", 1},
      {u"Option Explicit\r\n\r\n' about Main\r\nSub Main()\r\nEnd Sub", 1},
      {u"Sub Main()\r\nEnd Sub", 0},
      {u"\r\nPrivate Static Function F()\r\nEnd Function", 0},
      {u"Dim Subject\r\nDim Functional\r\nPublic Property Get P()\r\nEnd Property", 2},
      {u"Declare Sub Beep Lib \"k\" ()\r\nsub lower()\r\nend sub", 1},
      {u"A\r\nB\r\nC\r\nD\r\nE\r\nFriend Sub X()\r\nEnd Sub", 5},
  };
  for (const auto& c : cases) EXPECT_EQ(Module(c.text).CountOfDeclarationLines(), c.lines);
}

TEST(ModuleText, InsertedLinesMoveTheOthersDown) {
  auto module = Module(u"one\r\ntwo");
  EXPECT_TRUE(module.InsertLines(2, u"a\r\nb"));
  EXPECT_EQ(module.text(), u"one\r\na\r\nb\r\ntwo");
  EXPECT_TRUE(module.InsertLines(99, u"last"));
  EXPECT_EQ(module.text(), u"one\r\na\r\nb\r\ntwo\r\nlast");
  EXPECT_FALSE(module.InsertLines(0, u"x"));
}

TEST(ModuleText, LinesOutsideTheModuleAreRefused) {
  auto module = Module(u"one\r\ntwo");
  std::u16string text;
  EXPECT_TRUE(module.Lines(1, 2, text));
  EXPECT_EQ(text, u"one\r\ntwo");
  EXPECT_FALSE(module.Lines(2, 2, text));
  EXPECT_FALSE(module.Lines(0, 1, text));
  EXPECT_FALSE(module.DeleteLines(3, 1));
  EXPECT_TRUE(module.DeleteLines(1, 1));
  EXPECT_EQ(module.text(), u"two");
}

}  // namespace
}  // namespace declarium::vbhost
