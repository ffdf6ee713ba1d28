#include "import/reading.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "library/item.h"
#include "source/item_text.h"
#include "support/texts.h"
#include "text/text.h"
#include "vb/module.h"

namespace declarium {
namespace {

ParsedItems Literally(std::u16string_view source) {
  auto text = ReadSource(std::u16string(source));
  JoinContinuedLines(text);
  return ParseDeclarations(std::move(text));
}

SourceReading ReadVb(std::u16string_view source) {
  return ReadAsVisualBasic(source, Literally(source));
}

// All items as source text, a line break between them.
std::u16string Rendered(const ParsedItems& items) {
  std::u16string text;
  for (const auto kind : kKinds) {
    for (std::size_t i = 0; i < items[kind].names.size(); ++i) {
      AppendItemText(kind, items[kind].names[i], items[kind].items[i], {}, text);
      text += kCrLf;
    }
  }
  return text;
}

std::string Differences(const SourceReading& reading) {
  std::string text;
  for (const auto& each : reading.differences)
    text += ToUtf8(each.name) + ":" + std::to_string(each.line) + " ";
  return text;
}

struct Case {
  std::u16string_view source;
  std::u16string_view rendered;  // with CR LF as "\n"
  std::string_view differences;
};

class VisualBasicReading : public ::testing::TestWithParam<Case> {};

TEST_P(VisualBasicReading, StoresWhatTheSourceSays) {
  const auto& [source, rendered, differences] = GetParam();
  const auto reading = ReadVb(source);
  EXPECT_EQ(ToUtf8(Replace(Rendered(reading.items), kCrLf, u"\n")), ToUtf8(rendered));
  EXPECT_EQ(Differences(reading), differences) << ToUtf8(source);
}

INSTANTIATE_TEST_SUITE_P(
    Constants, VisualBasicReading,
    ::testing::Values(
        Case{u"Const A = 1", u"Const A = 1\n", ""}, Case{u"Const A =1", u"Const A = 1\n", "A:1 "},
        Case{u"Const  B  =  2 ' two", u"Const B = 2 'two\n", "B:1 "},
        Case{u"Global Const G As Long=&HFF&", u"Const G As Long = &HFF&\n", "G:1 "},
        Case{u"Const A = 1, B$ = \"x, y\", C As Long = A+ 1 '  c",
             u"Const A = 1\nConst B As String = \"x, y\"\nConst C As Long = A + 1 'c\n",
             "A:1 B:1 C:1 "},
        Case{u"Const Assets As Long = 5", u"Const Assets As Long = 5\n", "Assets:1 "},
        Case{u"Const A = \"As\"", u"Const A = \"As\"\n", "A:1 "},
        Case{u"Const A = \"it's  two\"", u"Const A = \"it's  two\"\n", ""},
        Case{u"Const A = \"it'  s\"", u"Const A = \"it'  s\"\n", "A:1 "},
        Case{u"x = 1: Const A = 1", u"Const A = 1\n", "A:1 "},
        Case{u"Const A = -1 Or Not  B", u"Const A = -1 Or Not  B\n", ""},
        Case{u"Const A =-1 Or (Not  B)", u"Const A = -1 Or (Not B)\n", "A:1 "},
        Case{u"Const A% = 1", u"Const A% = 1\n", ""},
        Case{u"Public Const A _\r\n As Integer = _\r\n  3\r\n", u"Const A As Integer =   3\n", ""},
        Case{u"Sub S()\n  Const L = 1\nEnd Sub", u"Const L = 1\n", ""},
        Case{u"Const L = 2\nSub S()\n  Const L = 1\nEnd Sub", u"Const L = 2\n", "L:3 "}));

INSTANTIATE_TEST_SUITE_P(
    Declares, VisualBasicReading,
    ::testing::Values(
        Case{u"Private Declare Sub S Lib \"k\" ()", u"Declare Sub S Lib \"k\" ()\n", ""},
        Case{u"Declare  Sub S Lib \"k\"(ByVal a As Long)",
             u"Declare Sub S Lib \"k\" (ByVal a As Long)\n", "S:1 "},
        Case{u"Declare PtrSafe Function F Lib \"k\" Alias \"#1\" (ByVal  h As LongPtr, b) As Long "
             u"' x",
             u"Declare Function F Lib \"k\" Alias \"#1\" (ByVal h As LongPtr, b) As Long 'x\n",
             "F:1 "},
        Case{u"DefLng A-Z\nDeclare Function F Lib \"k\" (a, b$)",
             u"Declare Function F Lib \"k\" (a As Long, b As String) As Long\n", "F:2 "},
        Case{u"Declare Function F& Lib \"k\" (a%)", u"Declare Function F& Lib \"k\" (a%)\n", ""},
        Case{u"Declare Sub S Libx \"k\" ()", u"Declare Sub S Lib \"k\" ()\n", ""}));

INSTANTIATE_TEST_SUITE_P(
    Types, VisualBasicReading,
    ::testing::Values(
        Case{u"Type P\r\n  x As Long\r\n  y   As Long 'two\r\nEnd Type\r\nConst A = 1",
             u"Const A = 1\nType P\n\tx As Long\n\ty As Long 'two\nEnd Type\n", ""},
        Case{
            u"Type P ' head\r\n  ' alone\r\n  x  As Long\r\n  s As String*MAX ' s\r\n  End Type\r\n"
            u"Const A = 1",
            u"Const A = 1\nType P 'head\n\t\t\t'alone\n\tx As Long\n\ts As String * MAX 's\nEnd "
            u"Type\n",
            "P:1 "},
        Case{u"Type P: x As Long: y(1 To N) As Rec: End Type",
             u"Type P\n\tx As Long\n\ty(1 To N) As Rec\nEnd Type\n", "P:1 P::1 "},
        Case{u"Option Base 1\nType P\nx(3) As Byte\nEnd Type",
             u"Type P\n\tx(1 To 3) As Byte\nEnd Type\n", "P:2 "},
        Case{u"Type P\r\n#If Win64 Then\r\n x As LongPtr\r\n#Else\r\n x As Long\r\n#End If\r\n"
             u" End Type",
             u"Type P\n\t#If Win64 Then\n\tx As LongPtr\n\t#Else\n\tx As Long\n\t#End If\nEnd "
             u"Type\n",
             "P:1 "}));

INSTANTIATE_TEST_SUITE_P(
    Rest, VisualBasicReading,
    ::testing::Values(
        Case{u"Enum E\n A = 1\n B\n [C] = A Or &H10 ' c\n D = E.B\nEnd Enum",
             u"Const A As Long = 1\nConst B As Long = 2\nConst [C] As Long = A Or &H10\n"
             u"Const D As Long = 2\n",
             "A:2 B:3 [C]:4 D:5 "},
        Case{u"#If VBA7 Then\nDeclare PtrSafe Sub S Lib \"k\" ()\nConst N = 7\n#Else\n"
             u"Declare Sub S Lib \"k\" ()\nConst N = 6\n#End If",
             u"Const N = 6\nDeclare Sub S Lib \"k\" ()\n", "N:3 "},
        Case{u"#If VBA7 Then\nConst ONLY = 7\n#End If\n#If Own Then\nConst U = 1\n#End If",
             u"Const ONLY = 7\nConst U = 1\n", ""},
        Case{u"VERSION 5.00\r\nBegin VB.Form F\r\n   Type = 1\r\nEnd\r\nConst A = 1\r\n",
             u"Const A = 1\n", "=:3 "},
        Case{u"", u"", ""}));

TEST(VisualBasicReading, TakesOverTheLinesThatNobodyCanRead) {
  const auto reading = ReadVb(u"Const\r\nConst  X = 1\r\nDeclare Sub");
  ASSERT_EQ(reading.items.skipped.size(), 2u);
  EXPECT_EQ(reading.items.skipped[1].number, 3u);
  EXPECT_EQ(Differences(reading), "X:2 ");
}

// What a module declares, apart from how it is written.
std::vector<std::u16string> MeaningOf(std::u16string_view source) {
  const auto module = vb::ReadModule(source);
  EXPECT_TRUE(module.errors.empty()) << ToUtf8(source);
  const auto plain = [](std::u16string_view text) {
    std::u16string result;
    vb::Tokenizer tokens(text);
    for (auto token = tokens.NextSignificant(); token.kind != vb::TokenKind::kEnd;
         token = tokens.NextSignificant())
      result.append(token.text).append(u" ");
    return LowerCase(result);
  };
  std::vector<std::u16string> meanings;
  for (const auto& declaration : module.declarations) {
    auto meaning = LowerCase(declaration.name) + u"|";
    if (const auto* const constant = declaration.As<vb::Constant>())
      meaning += u"const " + plain(constant->type.name) + u"|" + plain(constant->value);
    if (const auto* const external = declaration.As<vb::External>()) {
      meaning += u"declare " + std::u16string(external->library) + u"|" +
                 std::u16string(external->alias) + u"|" + plain(external->result.name) +
                 (external->is_function ? u"function" : u"sub");
      for (const auto& parameter : external->parameters)
        meaning += u"|" + plain(parameter.name) + plain(parameter.type.name) +
                   plain(parameter.default_value) +
                   (parameter.passing == vb::Passing::kByValue ? u"v" : u"r") +
                   (parameter.is_array ? u"a" : u"") + (parameter.is_optional ? u"o" : u"");
    }
    if (const auto* const record = declaration.As<vb::Record>()) {
      meaning += u"type";
      for (const auto& member : record->members) {
        meaning += u"|" + plain(member.name) + plain(member.type.name) + plain(member.type.length);
        for (const auto& bounds : member.dimensions)
          meaning += u"(" + plain(bounds.lower) + u" to " + plain(bounds.upper);
      }
    }
    meanings.push_back(std::move(meaning));
  }
  std::ranges::sort(meanings);
  return meanings;
}

// Everything that can be written in several ways, in one of them.
std::u16string AnyDeclaration(Random& random, int number) {
  const auto blank = [&] {
    constexpr std::u16string_view kBlanks[] = {u" ", u"  ", u"\t", u" _\r\n", u" "};
    return std::u16string(kBlanks[random.Below(5)]);
  };
  const auto maybe_blank = [&] { return random.Below(2) == 0 ? std::u16string() : blank(); };
  const auto as = [&](std::u16string_view type) {
    return blank() + u"As" + blank() + std::u16string(type);
  };
  constexpr std::u16string_view kScopes[] = {u"", u"Public ", u"Private ", u"Global ",
                                             u"\tpublic\t"};
  constexpr std::u16string_view kValues[] = {u"1",   u"&HFF&",    u"\"a'  b\"", u"-1",
                                             u"A+B", u"(1 Or 2)", u"\"As\"",    u"1.5"};
  constexpr std::u16string_view kTypes[] = {u"Long", u"Rec", u"Assets", u"Byte", u"lib.Rec"};
  constexpr std::u16string_view kEnds[] = {u"\r\n", u" ' it's  so\r\n", u"\t\r\n", u" : ",
                                           u"\r\n\r\n"};
  const auto name = (random.Below(3) == 0 ? u"Asset" : u"N") + FromUtf8(std::to_string(number));
  const auto value = [&] { return std::u16string(kValues[random.Below(8)]); };
  const auto type = [&] { return std::u16string(kTypes[random.Below(5)]); };
  std::u16string text(kScopes[random.Below(5)]);
  switch (random.Below(3)) {
    case 0: {
      text += u"Const" + blank() + name + (random.Below(2) == 0 ? as(u"Long") : u"") +
              maybe_blank() + u"=" + maybe_blank() + value();
      if (random.Below(3) == 0) text += u"," + maybe_blank() + name + u"b=" + value();
      break;
    }
    case 1: {
      const bool function = random.Below(2) == 0;
      if (text == u"Global ") text.clear();
      text += u"Declare" + blank() + (function ? u"Function" : u"Sub") + blank() + name + blank() +
              u"Lib" + blank() + u"\"k\"" + maybe_blank() + u"(" + maybe_blank();
      if (random.Below(2) == 0)
        text += u"ByVal" + blank() + u"a" + as(type()) + maybe_blank() + u"," + maybe_blank() +
                u"b()" + as(u"Byte") + maybe_blank() + u",c$";
      text += u")" + (function ? as(type()) : std::u16string());
      break;
    }
    default: {
      if (text == u"Global ") text.clear();
      text += u"Type" + blank() + name + (random.Below(4) == 0 ? u" ' head" : u"") + u"\r\n";
      for (auto members = 1 + random.Below(3); members > 0; --members) {
        text += maybe_blank() + u"m" + FromUtf8(std::to_string(members)) +
                (random.Below(3) == 0 ? u"( 1 To  N,4)" : u"");
        text += random.Below(3) == 0 ? as(u"String") + maybe_blank() + u"*" + maybe_blank() + u"8"
                                     : as(type());
        text += kEnds[random.Below(5)];
      }
      text += maybe_blank() + u"End" + blank() + u"Type";
      break;
    }
  }
  return text + std::u16string(kEnds[random.Below(5)]);
}

TEST(VisualBasicReading, SaysTheSameWhenItIsReadAgain) {
  Random random(5);
  for (int round = 0; round < 3000; ++round) {
    std::u16string source;
    for (int i = 0; i < 5; ++i) source += AnyDeclaration(random, i);
    source += u"\r\n";
    const auto reading = ReadVb(source);
    ASSERT_EQ(MeaningOf(Rendered(reading.items)), MeaningOf(source)) << ToUtf8(source);
    // What is stored is read again as it is.
    const auto rendered = Rendered(reading.items);
    ASSERT_EQ(ToUtf8(Rendered(ReadVb(rendered).items)), ToUtf8(rendered)) << ToUtf8(source);
  }
}

TEST(VisualBasicReading, TellsADroppedPtrSafeAndMembersThatBecameConstants) {
  const auto reading = ReadVb(
      u"Declare PtrSafe Sub S Lib \"k\" ()\nEnum E\nM\nEnd Enum\nConst A =1\n"
      u"Declare Sub T Lib \"k\" ()");
  ASSERT_EQ(Differences(reading), "S:1 M:3 A:5 ");
  EXPECT_EQ(reading.differences[0].change, Change::kPtrSafeDropped);
  EXPECT_EQ(reading.differences[1].change, Change::kEnumMember);
  EXPECT_EQ(reading.differences[2].change, Change::kNone);
}

}  // namespace
}  // namespace declarium
