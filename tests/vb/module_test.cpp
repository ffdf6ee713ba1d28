#include "vb/module.h"

#include <gtest/gtest.h>
#include <string>

#include "support/texts.h"
#include "text/text.h"

namespace declarium::vb {
namespace {

const Declaration& Only(const Module& module) {
  EXPECT_EQ(module.declarations.size(), 1u);
  EXPECT_TRUE(module.errors.empty());
  return module.declarations.at(0);
}

std::string Names(const Module& module) {
  std::string names;
  for (const auto& declaration : module.declarations) names += ToUtf8(declaration.name) + " ";
  return names;
}

TEST(Constants, SeveralStandOnALine) {
  const auto module = ReadModule(u"Public Const A = 1, B As Long = 2, C$ = \"x, y\"");
  ASSERT_EQ(Names(module), "A B C ");
  EXPECT_EQ(module.declarations[0].As<Constant>()->value, u"1");
  EXPECT_EQ(module.declarations[0].As<Constant>()->type.name, u"");
  EXPECT_EQ(module.declarations[1].As<Constant>()->type.name, u"Long");
  EXPECT_EQ(module.declarations[2].As<Constant>()->type.name, u"String");
  EXPECT_EQ(module.declarations[2].As<Constant>()->type.character, u'$');
  EXPECT_EQ(module.declarations[2].As<Constant>()->value, u"\"x, y\"");
  EXPECT_EQ(module.declarations[2].scope, Scope::kPublic);
}

TEST(Constants, ArePrivateByDefaultAndLocalInProcedures) {
  const auto module = ReadModule(
      u"Const A = 1\nGlobal Const B = 2\nSub S()\n  x = 1: Const C = 3\n10 Const D = 4\nEnd Sub\n"
      u"Const E = 5");
  ASSERT_EQ(Names(module), "A B C D E ");
  EXPECT_EQ(module.declarations[0].scope, Scope::kPrivate);
  EXPECT_EQ(module.declarations[1].scope, Scope::kPublic);
  EXPECT_TRUE(module.declarations[1].is_global);
  EXPECT_EQ(module.declarations[2].scope, Scope::kLocal);
  EXPECT_EQ(module.declarations[3].scope, Scope::kLocal);
  EXPECT_EQ(module.declarations[4].scope, Scope::kPrivate);
}

TEST(Declarations, ArePublicByDefaultInAStandardModuleOnly) {
  const std::u16string_view text =
      u"Declare Sub S Lib \"l\" ()\nType T\nx As Long\nEnd Type\nEnum E\nM\nEnd Enum";
  const auto standard = ReadModule(text);
  const auto form = ReadModule(text, ModuleKind::kForm);
  for (const auto& declaration : standard.declarations)
    EXPECT_EQ(declaration.scope, Scope::kPublic);
  EXPECT_EQ(form.declarations.at(0).scope, Scope::kPrivate);
  EXPECT_EQ(form.declarations.at(1).scope, Scope::kPrivate);
  EXPECT_EQ(form.declarations.at(2).scope, Scope::kPublic);
}

TEST(Declares, AreReadWhole) {
  const auto module = ReadModule(
      u"Private Declare PtrSafe Function Foo Lib \"k\" Alias \"#12\" (ByVal a As Long, b%, _\r\n"
      u"  c() As Byte, Optional ByRef d As Lib.Rec = 1 + (2), ParamArray e()) As Byte()");
  const auto& declaration = Only(module);
  const auto& external = *declaration.As<External>();
  EXPECT_EQ(declaration.name, u"Foo");
  EXPECT_EQ(declaration.place.line, 1u);
  EXPECT_EQ(declaration.end_line, 2u);
  EXPECT_EQ(declaration.name_place.column, 34u);
  EXPECT_TRUE(external.is_function);
  EXPECT_TRUE(external.is_ptr_safe);
  EXPECT_EQ(external.library, u"k");
  EXPECT_EQ(external.EntryOr(u"Foo"), u"#12");
  EXPECT_EQ(external.result.name, u"Byte");
  EXPECT_TRUE(external.result.is_array);
  ASSERT_EQ(external.parameters.size(), 5u);
  EXPECT_EQ(external.parameters[0].passing, Passing::kByValue);
  EXPECT_EQ(external.parameters[1].type.name, u"Integer");
  EXPECT_EQ(external.parameters[1].passing, Passing::kByReference);
  EXPECT_FALSE(external.parameters[1].is_passing_written);
  EXPECT_TRUE(external.parameters[2].is_array);
  EXPECT_TRUE(external.parameters[3].is_optional);
  EXPECT_EQ(external.parameters[3].type.name, u"Lib.Rec");
  EXPECT_EQ(external.parameters[3].default_value, u"1 + (2)");
  EXPECT_TRUE(external.parameters[4].is_param_array);
  EXPECT_EQ(external.parameters[4].type.name, u"Variant");
}

TEST(Declares, TakeTypesFromCharactersAndDefLines) {
  const auto module = ReadModule(
      u"DefInt A-C, X\nDeclare Function F& Lib \"k\" (a, d, x)\n"
      u"Declare Function B Lib \"k\"");
  const auto& first = *module.declarations.at(0).As<External>();
  EXPECT_EQ(first.result.name, u"Long");
  EXPECT_EQ(first.parameters.at(0).type.name, u"Integer");
  EXPECT_EQ(first.parameters.at(1).type.name, u"Variant");
  EXPECT_EQ(first.parameters.at(2).type.name, u"Integer");
  EXPECT_EQ(module.declarations.at(1).As<External>()->result.name, u"Integer");
}

TEST(Types, AreReadWithBoundsLengthsAndComments) {
  const auto module = ReadModule(
      u"Private Type T ' head\r\n\t' alone\r\n  a As Byte ' behind\r\n"
      u"  b(1 To N, 4) As Integer: c As String * (MAX - 1)\r\n  d() As Lib.Rec\r\n"
      u"  Type As Long\r\n   End   Type ' end\r\nConst A = 1");
  ASSERT_EQ(Names(module), "T A ");
  const auto& record = *module.declarations[0].As<Record>();
  ASSERT_EQ(record.members.size(), 5u);
  EXPECT_EQ(record.members[1].dimensions.at(0).lower, u"1");
  EXPECT_EQ(record.members[1].dimensions.at(0).upper, u"N");
  EXPECT_EQ(record.members[1].dimensions.at(1).upper, u"4");
  EXPECT_EQ(record.members[2].type.length, u"(MAX - 1)");
  EXPECT_EQ(record.members[2].type.Text(), u"String * (MAX - 1)");
  EXPECT_TRUE(record.members[3].is_array);
  EXPECT_TRUE(record.members[3].dimensions.empty());
  EXPECT_EQ(record.members[4].name, u"Type");
  ASSERT_EQ(record.comments.size(), 3u);
  EXPECT_EQ(record.comments[1].text, u"' alone");
  EXPECT_TRUE(module.declarations[0].text.starts_with(u"Private Type T ' head"));
  EXPECT_TRUE(module.declarations[0].text.ends_with(u"End   Type"));
}

TEST(Enums, HaveMembersWithAndWithoutValues) {
  const auto module = ReadModule(u"Enum E\n A\n [_B] = 2 + 1 ' x\n C: D\nEnd Enum");
  const auto& members = Only(module).As<Enumeration>()->members;
  ASSERT_EQ(members.size(), 4u);
  EXPECT_EQ(members[1].name, u"[_B]");
  EXPECT_EQ(members[1].value, u"2 + 1");
  EXPECT_EQ(members[3].name, u"D");
}

TEST(Conditions, AreTheChainOfBranches) {
  const auto module = ReadModule(
      u"#If VBA7 Then\nConst A = 1\n#ElseIf Win32 Or Mac Then\nConst B = 1\n#Else\nConst C = 1\n"
      u"#If X Then\nConst D = 1\n#End If\n#End If\nConst E = 1\n#If A Or B Then\n#If C Then\n"
      u"Const F = 1\n#End If\n#End If");
  ASSERT_EQ(Names(module), "A B C D E F ");
  const auto condition = [&](std::size_t i) {
    return ToUtf8(module.conditions[module.declarations[i].condition].text);
  };
  EXPECT_EQ(condition(0), "VBA7");
  EXPECT_EQ(condition(1), "Not VBA7 And (Win32 Or Mac)");
  EXPECT_EQ(condition(2), "Not VBA7 And Not (Win32 Or Mac)");
  EXPECT_EQ(condition(3), "Not VBA7 And Not (Win32 Or Mac) And X");
  EXPECT_EQ(condition(4), "");
  EXPECT_EQ(condition(5), "(A Or B) And C");
}

TEST(Conditions, InsideARecordAreThoseOfItsMembers) {
  const auto module =
      ReadModule(u"Type T\n#If Win64 Then\n p As LongLong\n#Else\n p As Long\n#End If\nEnd Type");
  const auto& members = Only(module).As<Record>()->members;
  ASSERT_EQ(members.size(), 2u);
  EXPECT_EQ(module.conditions[members[1].condition].text, u"Not Win64");
}

TEST(Modules, OfFormsAreReadBehindTheirHeader) {
  const auto module = ReadModule(
      u"VERSION 5.00\r\nObject = \"{F9}#1.0#0\"; \"x.ocx\"\r\nBegin VB.Form Form1 \r\n"
      u"   Caption = \"End\"\r\n   Type = 1  'Pixel\r\n   BeginProperty Font\r\n      Name = "
      u"\"A\"\r\n"
      u"   EndProperty\r\n   Begin VB.Label Const\r\n   End\r\nEnd\r\nAttribute VB_Name = "
      u"\"Form1\"\r\n"
      u"Option Explicit\r\nPrivate Const A = 1\r\n",
      ModuleKind::kForm);
  EXPECT_EQ(module.Name(), u"Form1");
  ASSERT_EQ(module.options.size(), 1u);
  EXPECT_EQ(module.options[0].text, u"Option Explicit");
  EXPECT_EQ(Only(module).place.line, 14u);
  EXPECT_EQ(module.lines, 14u);
}

TEST(Modules, KnowTheHeadsAndBranchesOfTheirProcedures) {
  constexpr std::u16string_view kText =
      u"Friend Sub A(ByVal n _\n  As Long)\nEnd Sub\n#If X Then\nFunction B&()\nEnd "
      u"Function\n#End If\n";
  const auto module = ReadModule(kText);
  ASSERT_EQ(module.procedures.size(), 2u);
  EXPECT_EQ(module.procedures[0].head, u"Friend Sub A(ByVal n _\n  As Long)");
  EXPECT_TRUE(module.procedures[0].is_friend);
  EXPECT_EQ(module.procedures[0].condition, 0u);
  EXPECT_EQ(module.procedures[1].head, u"Function B&()");
  EXPECT_FALSE(module.procedures[1].is_friend);
  EXPECT_EQ(module.conditions[module.procedures[1].condition].text, u"X");
}

TEST(Modules, KnowTheirVariables) {
  const auto module = ReadModule(
      u"Dim a, b As Long\nPublic WithEvents c As Thing, d(1, 2) As Long\nGlobal e\nPrivate f\n"
      u"Public Const G = 1\nPublic Event H(x)\nSub S()\nDim i\nStatic j\nEnd Sub\n");
  std::string names;
  for (const auto& member : module.members) {
    if (member.kind == ModuleMember::Kind::kVariable)
      names += ToUtf8(member.name) + (member.scope == Scope::kPublic ? "+ " : "- ");
  }
  EXPECT_EQ(names, "a- b- c+ d+ e+ f- ");
}

TEST(Modules, KnowWhereTheirProceduresAre) {
  const auto module = ReadModule(
      u"Dim x\nPrivate Static Sub A()\n x = \"End Sub\"\n ' End Sub\nEnd Sub\nProperty Get P()\n"
      u"End Property: Function F()\nEnd Function\n");
  ASSERT_EQ(module.procedures.size(), 3u);
  EXPECT_EQ(module.procedures[0].name, u"A");
  EXPECT_EQ(module.procedures[0].scope, Scope::kPrivate);
  EXPECT_EQ(module.procedures[0].place.line, 2u);
  EXPECT_EQ(module.procedures[0].end_line, 5u);
  EXPECT_EQ(module.procedures[1].kind, Procedure::Kind::kPropertyGet);
  EXPECT_EQ(module.procedures[1].end_line, 7u);
  EXPECT_EQ(module.procedures[2].end_line, 8u);
  EXPECT_EQ(module.declarations_end, 1u);
}

TEST(Modules, KindIsToldByTheExtension) {
  EXPECT_EQ(ModuleKindOf(u"a/b.CLS"), ModuleKind::kClass);
  EXPECT_EQ(ModuleKindOf(u"b.frm"), ModuleKind::kForm);
  EXPECT_EQ(ModuleKindOf(u"b.pag"), ModuleKind::kPropertyPage);
  EXPECT_EQ(ModuleKindOf(u"b.bas"), ModuleKind::kStandard);
  EXPECT_EQ(ModuleKindOf(u"b"), ModuleKind::kStandard);
}

struct Refused {
  std::u16string_view text;
  std::string_view expected;
  std::u16string_view found;
  unsigned line;
  unsigned column;
};

class Refusals : public ::testing::TestWithParam<Refused> {};

TEST_P(Refusals, SayPlaceExpectedAndFoundAndReadingGoesOn) {
  const auto& refused = GetParam();
  const auto text = std::u16string(refused.text) + u"\nConst Z = 1\n";
  const auto module = ReadModule(text);
  ASSERT_EQ(module.errors.size(), 1u) << ToUtf8(refused.text);
  EXPECT_EQ(module.errors[0].expected, refused.expected);
  EXPECT_EQ(ToUtf8(module.errors[0].found), ToUtf8(refused.found));
  EXPECT_EQ(module.errors[0].place.line, refused.line);
  EXPECT_EQ(module.errors[0].place.column, refused.column);
  ASSERT_FALSE(module.declarations.empty());
  EXPECT_EQ(module.declarations.back().name, u"Z");
}

INSTANTIATE_TEST_SUITE_P(
    Table, Refusals,
    ::testing::Values(
        Refused{u"Const", "a name", u"", 1, 6}, Refused{u"Const A 1", "\"=\"", u"1", 1, 9},
        Refused{u"Const A =", "a value", u"", 1, 10},
        Refused{u"Const A = 1 2", "an operator, \",\" or the end of the statement", u"2", 1, 13},
        Refused{u"Const A = (1 +", "a value", u"", 1, 15},
        Refused{u"Const A = (1", "an operator or \")\"", u"", 1, 13},
        Refused{u"Declare Foo Lib \"k\"", "Sub or Function", u"Foo", 1, 9},
        Refused{u"Declare Sub S Libx \"k\"", "Lib", u"Libx", 1, 15},
        Refused{u"Declare Sub S Lib k", "the library in quotation marks", u"k", 1, 19},
        Refused{u"Declare Sub S Lib \"k", "a closing quotation mark", u"\"k", 1, 19},
        Refused{u"Declare Sub S Lib \"k\" (a", "\",\" or \")\"", u"", 1, 25},
        Refused{u"Declare Sub S Lib \"k\" () As Long", "the end of the statement", u"As", 1, 26},
        Refused{u"Type", "a name", u"", 1, 5}, Refused{u"Type T\n  x\nEnd Type", "As", u"", 2, 4},
        Refused{u"Type T\n  x As Long\nSub S()\nEnd Sub", "End Type", u"Sub S()", 3, 1},
        Refused{u"Enum E\n A\nPublic Const B = 1", "End Enum", u"Public Const B = 1", 3, 1},
        Refused{u"#Else", "#If in front", u"#Else", 1, 1}));

TEST(Refusals, OfAnOpenIfComeAtTheEnd) {
  const auto module = ReadModule(u"#If A Then\nConst B = 1\n");
  ASSERT_EQ(module.errors.size(), 1u);
  EXPECT_EQ(module.errors[0].expected, "#End If");
  EXPECT_EQ(module.errors[0].place.line, 3u);
}

TEST(Refusals, OfAHeaderWithoutEndComeWhereItShouldHaveEnded) {
  struct Open {
    std::u16string_view text;
    std::u16string_view found;
    unsigned line;
    unsigned column;
  };
  const Open kOpen[] = {
      {u"VERSION 5.00\nBegin VB.Form F\n", u"", 3, 1},
      {u"VERSION 5.00\nBegin VB.Form F\n  Caption = \"x\"", u"", 3, 16},
      {u"VERSION 5.00\nBegin VB.Form F\n  Begin VB.Label L\n  End\n", u"", 5, 1},
      {u"VERSION 5.00\nBegin VB.Form F\n  BeginProperty Font\n", u"", 4, 1},
      {u"VERSION 1.0 CLASS\nBEGIN\n  MultiUse = -1\n", u"", 4, 1},
      {u"VERSION 1.0 CLASS\nBEGIN\n\n\n", u"", 5, 1},
      {u"VERSION 1.0 CLASS\nBEGIN\nAttribute VB_Name = \"F\"\nConst A = 1\n",
       u"Attribute VB_Name = \"F\"", 3, 1},
  };
  for (const auto& [text, found, line, column] : kOpen) {
    const auto module = ReadModule(text, ModuleKind::kForm);
    EXPECT_TRUE(module.is_header_open);
    ASSERT_EQ(module.errors.size(), 1u) << ToUtf8(text);
    EXPECT_EQ(module.errors[0].expected, "End");
    EXPECT_EQ(ToUtf8(module.errors[0].found), ToUtf8(found));
    EXPECT_EQ(module.errors[0].place.line, line) << ToUtf8(text);
    EXPECT_EQ(module.errors[0].place.column, column) << ToUtf8(text);
  }
}

TEST(Refusals, OfAHeaderWithoutEndLeaveTheCodeBehindItsAttributesReadable) {
  const auto module = ReadModule(
      u"VERSION 5.00\nBegin VB.Form F\nAttribute VB_Name = \"F\"\nConst A = 1\nSub S()\nEnd "
      u"Sub\n",
      ModuleKind::kForm);
  EXPECT_EQ(module.Name(), u"F");
  EXPECT_EQ(Names(module), "A ");
  EXPECT_EQ(module.procedures.size(), 1u);
  EXPECT_EQ(module.header_end, 2u);
}

TEST(Modules, OfFormsWithAPropertyNamedAttributeHaveAWholeHeader) {
  const auto module = ReadModule(
      u"VERSION 5.00\nBegin VB.Form F\n  Attribute = 1\nEnd\nConst A = 1\n", ModuleKind::kForm);
  EXPECT_FALSE(module.is_header_open);
  EXPECT_EQ(Only(module).name, u"A");
}

TEST(Modules, OfAnythingAreReadToTheEnd) {
  Random random(3);
  const std::u16string_view pieces[] = {u"Const ",
                                        u"A ",
                                        u"= ",
                                        u"1",
                                        u"\n",
                                        u":",
                                        u"Type T\n",
                                        u"End Type\n",
                                        u"Enum ",
                                        u"(",
                                        u")",
                                        u"As ",
                                        u"Long ",
                                        u"#If ",
                                        u"Then\n",
                                        u"#Else\n",
                                        u"Sub S\n",
                                        u"End Sub\n",
                                        u"Declare ",
                                        u"Lib \"k\" ",
                                        u", ",
                                        u"To ",
                                        u"String * ",
                                        u" _\n",
                                        u"'c\n",
                                        u"Public ",
                                        u"#End If\n",
                                        u"\"",
                                        u"Attribute x = ",
                                        u"VERSION 5\n",
                                        u"Begin x\n",
                                        u"DefInt "};
  for (int round = 0; round < 20000; ++round) {
    const auto text = random.Text(pieces, 30);
    const auto module = ReadModule(text);
    for (const auto& declaration : module.declarations) {
      ASSERT_LE(declaration.place.offset + declaration.text.size(), text.size());
      ASSERT_EQ(declaration.text, std::u16string_view(text).substr(declaration.place.offset,
                                                                   declaration.text.size()));
    }
  }
}

// What stands at the start of every statement, by the tokens alone.
std::string SlowConstants(std::u16string_view text) {
  std::string names;
  Tokenizer tokenizer(text);
  std::vector<Token> statement;
  const auto end_statement = [&] {
    const std::size_t first = !statement.empty() && statement[0].kind == TokenKind::kNumber;
    if (statement.size() > first + 3 && statement[first].IsWord(u"const") &&
        statement.size() == first + 4)
      names += ToUtf8(statement[first + 1].text) + " ";
    statement.clear();
  };
  for (auto token = tokenizer.NextSignificant(); token.kind != TokenKind::kEnd;
       token = tokenizer.NextSignificant()) {
    if (token.kind == TokenKind::kLineEnd || token.IsOperator(u':')) {
      end_statement();
    } else if (token.kind != TokenKind::kComment) {
      statement.push_back(token);
    }
  }
  end_statement();
  return names;
}

// Reading passes over most lines of a procedure without cutting them into tokens.
TEST(Modules, FindInProceduresWhatReadingEveryStatementFinds) {
  Random random(4);
  const std::u16string_view pieces[] = {u"x = 1", u"\n",      u":", u" _\n", u"Const A = 1",
                                        u"' c",   u"\"a:b\"", u" ", u"\r\n", u"If a Then",
                                        u"\r",    u"10 ",     u"_", u"Rem ", u"#1 "};
  for (int round = 0; round < 50000; ++round) {
    const auto text = u"Sub S()\n" + random.Text(pieces, 12);
    ASSERT_EQ(Names(ReadModule(text)), SlowConstants(text)) << ToUtf8(text);
  }
}

// Every place where a reserved word stands for a name that the language refuses, and those where it
// takes any word.
TEST(ReservedWords, AreRefusedAsNamesOnlyWhereTheLanguageDoes) {
  const struct {
    std::u16string_view text;
    std::u16string_view refused;  // parted by blanks
  } cases[] = {
      {u"Declare Sub S Lib \"l\" (ByVal Next As Long, x As Long, [End] As Long, STRING As Any)",
       u"Next STRING"},
      {u"Declare Function Close Lib \"l\" () As Long", u"Close"},
      {u"Const A = 1, Stop = 2", u"Stop"},
      {u"Enum Type\nNew\n[Get]\nOther = 2\nEnd Enum", u"Type New"},
      {u"Type Loop\nNext As Long\nType As Long\nEnd As String * 4\nEnd Type", u"Loop"},
      {u"Dim a, Exit As Long, b(1 To 2, 3) As New Collection, Set", u"Exit Set"},
      {u"Public a As Long\nPrivate WithEvents Do As Form\nGlobal Let", u"Do Let"},
      {u"Public Event Changed(ByVal x As Long)\nPrivate Static Sub S()\nEnd Sub", u""},
      {u"Dim Date As Date, Len As Long, LongPtr As Long, Name, Object, Text, Error, Base", u""},
      {u"Sub S()\nx.Next = y!End\nCall F(Type:=1, Next:=2)\nEnd Sub", u""},
      {u"Sub Close(ByVal Next As Long, Optional ByRef x() As Date = #1/1/2000#, ParamArray To())\n"
       u"End Sub",
       u"Next To"},
      {u"Function F$(Loop, [Do], Date)\nEnd Function\nProperty Let P(Set As Long)\nEnd Property",
       u"Loop Set"},
      {u"Sub S()\nEnd Sub\nFunction F() As Long\nEnd Function", u""},
      {u"Attribute Next.VB_UserMemId = 0\nOption Private Module\nDefLng A-Z", u""},
  };
  for (const auto& [text, refused] : cases) {
    std::u16string found;
    for (const auto& error : ReadModule(text).errors) {
      EXPECT_EQ(error.expected, "a name that is no reserved word");
      EXPECT_EQ(text.substr(error.place.offset, error.found.size()), error.found);
      found.append(found.empty() ? u"" : u" ").append(error.found);
    }
    EXPECT_EQ(ToUtf8(found), ToUtf8(refused)) << ToUtf8(text);
  }
}

TEST(ReservedWords, LeaveTheirDeclarationsReadable) {
  const auto module = ReadModule(u"Declare Sub S Lib \"l\" (ByVal Next As Long)\nConst Get = 1");
  EXPECT_EQ(Names(module), "S Get ");
  EXPECT_EQ(module.errors.size(), 2u);
}

}  // namespace
}  // namespace declarium::vb
