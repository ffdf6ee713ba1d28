#include "vb/name_use.h"

#include <gtest/gtest.h>
#include <string>

#include "text/text.h"
#include "vb/project_names.h"

namespace declarium::vb {
namespace {

char LetterOf(UseKind kind) {
  constexpr char kLetters[] = {'v', 'c', 'a', 't', 'm'};  // value, call, assigned, type, measured
  return kLetters[static_cast<std::size_t>(kind)];
}

// "v:Name c:Module1.Name" and so on.
std::string UsesIn(std::u16string_view text) {
  const auto module = ReadModule(text);
  std::string uses;
  for (const auto& use : ReadNameUses(text, module)) {
    if (!uses.empty()) uses += ' ';
    uses += LetterOf(use.kind);
    uses += ':';
    if (!use.qualifier.empty()) uses += ToUtf8(use.qualifier) + ".";
    uses += ToUtf8(use.name);
  }
  return uses;
}

std::string UsesInSub(std::u16string_view lines) {
  return UsesIn(u"Sub S()\n" + std::u16string(lines) + u"\nEnd Sub\n");
}

struct Line {
  std::u16string_view code;
  std::string_view uses;
};

TEST(NameUses, AreToldForEveryStatementOfAProcedure) {
  const Line kLines[] = {
      {u"x = A", "a:x v:A"},
      {u"x = Foo(A, B)", "a:x c:Foo v:A v:B"},
      {u"Sleep 100", "c:Sleep"},
      {u"Sleep", "c:Sleep"},
      {u"Call Sleep(A)", "c:Sleep v:A"},
      {u"MoveWindow (hWnd), 1", "c:MoveWindow v:hWnd"},
      {u"a(1) = b", "a:a v:b"},
      {u"If IsWindow(h) Then Beep 1 Else Stop2", "c:IsWindow v:h c:Beep c:Stop2"},
      {u"x.Left = Foo(A, rs!B) ' C", "v:x a:x.Left c:Foo v:A v:rs"},
      {u"obj.Method.Other.Third 1", "v:obj v:obj.Method v:obj.Method.Other"},
      {u"With f\n .Left = A\nEnd With", "v:f v:A"},
      {u"Foo .Left, 1", "c:Foo"},
      {u"Me.Caption = A", "v:Me v:A"},
      {u"Foo Name:=A, Flags:=B", "c:Foo v:A v:B"},
      {u"Dim r As RECT, p As Module1.POINT", "t:RECT v:Module1 t:Module1.POINT"},
      {u"Dim r As RECT\nGetRect r\nr.Left = A", "t:RECT c:GetRect v:A"},
      {u"Dim r(MAX_PATH) As Long\nr(A) = B", "v:MAX_PATH v:A v:B"},
      {u"Static n As Long\nn = n + A", "v:A"},
      {u"Const A = B + 1\nx = A", "v:B a:x"},
      {u"Set c = New Collector", "a:c t:Collector"},
      {u"If TypeOf c Is Form1 Then x = 1", "v:c t:Form1 a:x"},
      {u"If c Is Nothing Then x = 1", "v:c a:x"},
      {u"n = Len(OSVERSIONINFO) + LenB(v)", "a:n c:Len m:OSVERSIONINFO c:LenB m:v"},
      {u"x = Left$(s, A%)", "a:x c:Left v:s v:A"},
      {u"SetTimer h, 1, A, AddressOf Timed", "c:SetTimer v:h v:A c:Timed"},
      {u"here:\nGoTo here\nOn Error GoTo there\nthere: x = A\nResume here", "a:x v:A"},
      {u"On n GoTo A, B", "v:n"},
      {u"For i = A To B\nNext i", "a:i v:A v:B a:i"},
      {u"For Each c In Controls\nNext", "a:c v:Controls"},
      {u"ReDim Preserve r(A)", "a:r v:A"},
      {u"Open f For Output As n", "v:f v:Output v:n"},
      {u"x = \"A B\" & C", "a:x v:C"},
      {u"x = [A B]", "a:x v:A B"},
      {u"#If A Then\nx = B\n#End If", "a:x v:B"},
      {u"10 x = A: y = B", "a:x v:A a:y v:B"},
      {u"x = A _\n + B", "a:x v:A v:B"},
      {u"Rem x = A", ""},
  };
  for (const auto& [code, uses] : kLines) EXPECT_EQ(UsesInSub(code), uses) << ToUtf8(code);
}

TEST(NameUses, AreToldForEveryDeclaration) {
  const Line kLines[] = {
      {u"Option Explicit", ""},
      {u"Attribute VB_Name = \"A\"", ""},
      {u"Private Const A = B Or C, D As Long = E", "v:B v:C v:E"},
      {u"Private Declare Function F Lib \"l\" Alias \"G\" (ByVal a As Long, b As RECT, Optional "
       u"c() "
       u"As Byte = D) As HANDLE",
       "t:RECT v:D t:HANDLE"},
      {u"Type T\n a(MAX) As RECT\n s As String * LEN_OF\n End As Long\nEnd Type\nPublic x As T",
       "v:MAX t:RECT v:LEN_OF t:T"},
      {u"Enum E\n a = B\n c\nEnd Enum\nDim v As E", "v:B t:E"},
      {u"Event Done(ByVal r As RECT)", "t:RECT"},
      {u"Implements IThing", "t:IThing"},
      {u"Public WithEvents w As Watcher, v(A) As B", "t:Watcher v:A t:B"},
      {u"Function F(ByVal a As T, Optional b = C) As R\n F = a + b + D\nEnd Function",
       "t:T v:C t:R a:F v:D"},
      {u"Property Get P() As T\n P = a\nEnd Property", "t:T a:P v:a"},
  };
  for (const auto& [code, uses] : kLines) EXPECT_EQ(UsesIn(code), uses) << ToUtf8(code);
}

TEST(NameUses, LocalsOfOneProcedureAreNoneOfTheNext) {
  EXPECT_EQ(UsesIn(u"Sub A()\nDim x\nx = 1\nEnd Sub\nSub B()\nx = 1\nEnd Sub"), "a:x");
}

TEST(NameUses, OfADesignersHeaderAreNone) {
  EXPECT_EQ(
      UsesIn(u"VERSION 5.00\nBegin VB.Form F\n Caption = \"x\"\n Begin VB.Label L\n End\nEnd\n"
             u"Attribute VB_Name = \"F\"\nSub S()\nL.Caption = A\nEnd Sub"),
      "v:L a:L.Caption v:A");
}

TEST(NameUses, TellPlaceBranchAndProcedure) {
  const std::u16string_view text = u"Const A = B\n#If X Then\nSub S()\n\t y = Z\nEnd Sub\n#End If";
  const auto module = ReadModule(text);
  const auto uses = ReadNameUses(text, module);
  ASSERT_EQ(uses.size(), 3u);
  EXPECT_EQ(uses[0].place, (Place{10, 1, 11}));
  EXPECT_EQ(uses[0].procedure, kNoProcedure);
  EXPECT_EQ(uses[0].condition, 0u);
  EXPECT_EQ(uses[2].place.line, 4u);
  EXPECT_EQ(uses[2].place.column, 7u);
  EXPECT_EQ(uses[2].procedure, 0u);
  EXPECT_EQ(module.conditions[uses[2].condition].text, u"X");
}

// The uses of a name in the second module of a project, as "module:line" of what they mean.
std::string MeaningsOf(std::u16string_view name) {
  static constexpr std::u16string_view kFirst =
      u"Attribute VB_Name = \"M\"\nPublic Const A = 1\nPrivate Const B = 2\nPublic v As Long\n"
      u"Public Enum E\n e1\nEnd Enum\nPublic Type R\n a As Long\nEnd Type\n"
      u"Public Declare Sub D Lib \"l\" ()\nPublic Sub P()\nEnd Sub";
  const std::u16string second =
      u"Const C = 1\nPrivate Const e1 = 2\nSub S()\n x = " + std::u16string(name) + u"\nEnd Sub";
  const auto first_module = ReadModule(kFirst);
  const auto second_module = ReadModule(second, ModuleKind::kClass);
  ProjectNames names(u"Project1");
  names.Add(first_module);
  names.Add(second_module, u"Second");
  std::string meanings;
  const auto uses = ReadNameUses(second, second_module);
  for (const auto& meaning : names.MeaningsOf(1, uses.back()))
    meanings +=
        std::to_string(meaning.module) + ":" + std::to_string(names.PlaceOf(meaning).line) + " ";
  return meanings;
}

TEST(ProjectNames, ResolveUses) {
  struct UseCase {
    std::u16string_view use;
    std::string_view meanings;
  };
  const UseCase kCases[] = {
      {u"A", "0:2 "},
      {u"a", "0:2 "},
      {u"B", ""},
      {u"M.B", ""},
      {u"v", "0:4 "},
      {u"e1", "1:2 "},
      {u"M.e1", "0:6 "},
      {u"E.e1", "0:6 "},
      {u"D", "0:11 "},
      {u"P", "0:12 "},
      {u"C", "1:1 "},
      {u"Second", "1:1 "},
      {u"M.A", "0:2 "},
      {u"Project1.M.A", "0:2 "},
      {u"Other.M.A", ""},
      {u"Project1.A", "0:2 "},
      {u"New R", "0:8 "},
      {u"R", ""},
      {u"New Second", "1:1 "},
  };
  for (const auto& [use, meanings] : kCases) EXPECT_EQ(MeaningsOf(use), meanings) << ToUtf8(use);
}

}  // namespace
}  // namespace declarium::vb
