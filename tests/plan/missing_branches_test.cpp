#include "plan/missing_branches.h"

#include <gtest/gtest.h>

#include "text/text.h"
#include "vb/module.h"

namespace declarium::plan {
namespace {

// For a module whose lines "Const A = 1" declare it.
std::string Around(std::u16string_view text) {
  const auto module = vb::ReadModule(text);
  std::vector<const vb::Condition*> declared;
  for (const auto& declaration : module.declarations)
    declared.push_back(&module.conditions[declaration.condition]);
  const MissingBranches branches(declared);
  return branches.AreNone() ? "none" : ToUtf8(branches.Around(u"D"));
}

TEST(MissingBranches, AreThoseOfTheOtherCases) {
  EXPECT_EQ(Around(u"#If X Then\nConst A = 1\n#End If\n"), "#If X Then\r\n#Else\r\nD\r\n#End If");
  EXPECT_EQ(Around(u"#If X Then\n#Else\nConst A = 1\n#End If\n"), "#If X Then\r\nD\r\n#End If");
  EXPECT_EQ(Around(u"#If X Then\n#If Y Then\nConst A = 1\n#End If\n#End If\n"),
            "#If X Then\r\n#If Y Then\r\n#Else\r\nD\r\n#End If\r\n#Else\r\nD\r\n#End If");
  EXPECT_EQ(Around(u"#If X Then\nConst A = 1\n#Else\nConst A = 1\n#End If\n"), "none");
  EXPECT_EQ(Around(u"#If X Then\nConst A = 1\n#ElseIf Y Then\nConst A = 1\n#Else\nConst A = 1\n"
                   u"#End If\n"),
            "none");
  EXPECT_EQ(Around(u"Const A = 1\n"), "none");
}

// Every set of branches of three expressions: after what is missing has come, nothing is.
TEST(MissingBranches, AreNoneOnceTheyAreFilled) {
  for (unsigned branches = 1; branches < 256; ++branches) {
    std::u16string text;
    for (unsigned values = 0; values < 8; ++values) {
      if (((branches >> values) & 1U) == 0) continue;
      std::u16string inside = u"Const A = 1\n";
      for (unsigned bit = 0; bit < 3; ++bit) {
        const std::u16string open = u"#If X" + std::u16string(1, static_cast<char16_t>(u'0' + bit));
        inside = open + u" Then\n" + (((values >> bit) & 1U) != 0 ? inside : u"#Else\n" + inside) +
                 u"#End If\n";
      }
      text += inside;
    }
    const auto around = Around(text);
    if (around == "none") continue;
    const auto filled = Replace(FromUtf8(around), u"D", u"Const A = 1") + u"\r\n";
    EXPECT_EQ(Around(text + filled), "none") << ToUtf8(text) << around;
    EXPECT_TRUE(vb::ReadModule(filled).errors.empty());
  }
}

TEST(MissingBranches, OfTooManyExpressionsAreNone) {
  std::u16string text;
  for (char16_t letter = u'a'; letter < u'j'; ++letter)
    text += u"#If " + std::u16string(1, letter) + u" Then\nConst A = 1\n#End If\n";
  EXPECT_EQ(Around(text), "none");
}

}  // namespace
}  // namespace declarium::plan
