#include "plan/meaning.h"

#include <gtest/gtest.h>

#include "text/text.h"

namespace declarium::plan {
namespace {

bool MeanTheSameText(std::u16string_view a, std::u16string_view b) {
  const auto a_module = vb::ReadModule(a);
  const auto b_module = vb::ReadModule(b);
  vb::Definitions a_definitions(vb::Target::kVb6);
  vb::Definitions b_definitions(vb::Target::kVb6);
  a_definitions.Add(a_module);
  b_definitions.Add(b_module);
  return MeanTheSame({&a_module.declarations.at(0), &a_definitions},
                     {&b_module.declarations.at(0), &b_definitions});
}

struct Pair {
  std::u16string_view a;
  std::u16string_view b;
};

TEST(Meaning, OfWhatDiffersInItsWritingIsTheSame) {
  const Pair kPairs[] = {
      {u"Const A = 16", u"private const a as Long=&H10 ' hex"},
      {u"Const A = 16", u"Const A& = 8 + 8"},
      {u"Const A = B : Const B = 3", u"Const A = 3"},
      {u"Const A = \"x\"", u"Const A As String = \"x\""},
      {u"Const A = Lost + 1", u"Const a = lost  +  1"},
      {u"Const A = 1", u"Const A = 1#"},
      {u"Declare Sub S Lib \"k.dll\" (x As Long)", u"Private Declare Sub S Lib \"K\" (ByRef y&)"},
      {u"Declare Sub S Lib \"k\" Alias \"S\" ()", u"Declare Sub S Lib \"k\" ()"},
      {u"Declare Function F% Lib \"k\" ()", u"Declare Function F Lib \"k\" () As Integer"},
      {u"Declare Sub S Lib \"k\" (x)", u"Declare Sub S Lib \"k\" (x As Variant)"},
      {u"Type T\na As Long\nEnd Type", u"Public Type t\n\n A As  long ' c\nEnd Type"},
      {u"Type T\na(3) As Long\nEnd Type", u"Type T\na(0 To 2 + 1) As Long\nEnd Type"},
      {u"Type T\na As String * N\nEnd Type\nConst N = 5", u"Type T\na As String * 5\nEnd Type"},
  };
  for (const auto& [a, b] : kPairs) {
    EXPECT_TRUE(MeanTheSameText(a, b)) << ToUtf8(a) << " / " << ToUtf8(b);
    EXPECT_TRUE(MeanTheSameText(b, a)) << ToUtf8(a) << " / " << ToUtf8(b);
  }
}

TEST(Meaning, OfWhatSaysSomethingElseDiffers) {
  const Pair kPairs[] = {
      {u"Const A = 16", u"Const A = 17"},
      {u"Const A = &HFFFF", u"Const A = &HFFFF&"},
      {u"Const A = \"x\"", u"Const A = \"X\""},
      {u"Const A = 1", u"Const A = \"1\""},
      {u"Const A = Lost", u"Const A = 1"},
      {u"Declare Sub S Lib \"k\" ()", u"Declare Sub S Lib \"k\" Alias \"s\" ()"},
      {u"Declare Sub S Lib \"k\" ()", u"Declare Sub S Lib \"l\" ()"},
      {u"Declare Sub S Lib \"k\" ()", u"Declare Function S Lib \"k\" ()"},
      {u"Declare Sub S Lib \"k\" ()", u"Declare PtrSafe Sub S Lib \"k\" ()"},
      {u"Declare Sub S Lib \"k\" ()", u"Declare Sub S Lib \"k\" (x As Long)"},
      {u"Declare Sub S Lib \"k\" (x As Long)", u"Declare Sub S Lib \"k\" (ByVal x As Long)"},
      {u"Declare Sub S Lib \"k\" (x As Long)", u"Declare Sub S Lib \"k\" (x As Any)"},
      {u"Declare Sub S Lib \"k\" (x As Long)", u"Declare Sub S Lib \"k\" (x() As Long)"},
      {u"Declare Function F Lib \"k\" () As Long", u"Declare Function F Lib \"k\" ()"},
      {u"Type T\na As Long\nEnd Type", u"Type T\nb As Long\nEnd Type"},
      {u"Type T\na As Long\nEnd Type", u"Type T\na As Integer\nEnd Type"},
      {u"Type T\na As Long\nEnd Type", u"Type T\na As Long\nb As Long\nEnd Type"},
      {u"Type T\na(3) As Long\nEnd Type", u"Type T\na(1 To 3) As Long\nEnd Type"},
      {u"Type T\na(3) As Long\nEnd Type", u"Type T\na() As Long\nEnd Type"},
      {u"Type T\na As String * 5\nEnd Type", u"Type T\na As String\nEnd Type"},
      {u"Const A = 1", u"Type A\na As Long\nEnd Type"},
      {u"Enum A\nb\nEnd Enum", u"Enum A\nb\nEnd Enum"},
  };
  for (const auto& [a, b] : kPairs) {
    EXPECT_FALSE(MeanTheSameText(a, b)) << ToUtf8(a) << " / " << ToUtf8(b);
    EXPECT_FALSE(MeanTheSameText(b, a)) << ToUtf8(a) << " / " << ToUtf8(b);
  }
}

}  // namespace
}  // namespace declarium::plan
