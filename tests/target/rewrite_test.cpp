#include "target/rewrite.h"

#include <gtest/gtest.h>
#include <string>

#include "text/text.h"

namespace declarium {
namespace {

constexpr std::string_view kFacts =
    "Declarium facts 1\n"
    "D\tgetmem4\t!it exists in 32 bits only\n"
    "D\tsetwindowlong\tDeclare PtrSafe Function SetWindowLong Lib \"user32\" Alias "
    "\"SetWindowLongPtrA\" (ByVal hWnd As LongPtr, ByVal nIndex As Long, ByVal dwNewLong As "
    "LongPtr) As LongPtr\n"
    "D\twindowfrompoint\tDeclare PtrSafe Function WindowFromPoint Lib \"user32\" (ByVal Point As "
    "LongLong) As LongPtr\n"
    "T\tfilled\tcb As Long|filler(3) As Byte|big As Currency\n"
    "d\tcheck\tsample.h\tuser32\t\t\t\t\t|||\ta\n"
    "d\tfindtext\tsample.h\tuser32\tFindTextA\t\t\twide=FindTextW\t||int\ta|i|LPCSTR||*\tn|i|int\n"
    "d\tfindtextw\tsample.h\tuser32\t\t\t\tansi=FindText\t||int\ta|i|LPCWSTR||LongPtr\tn|i|int\n"
    "d\tgetbytes\tsample.h\tuser32\tGetBytesA\t\t\twide=GetBytesW\t||int\ta|i|LPCSTR||*\t"
    "p|o|LPBYTE||*\n"
    "d\tgetbytesw\tsample.h\tuser32\t\t\t\tansi=GetBytes\t||int\ta|i|LPCWSTR||LongPtr\t"
    "p|o|LPBYTE||*\n"
    "d\tgetmem4\tsample.h\tmsvbvm60\t\t\t\t\t\tAddr\tRetVal\n"
    "d\tgetparent\tsample.h\tuser32\t\t\t\t\t||HWND||LongPtr\thWnd|i|HWND||LongPtr\n"
    "d\tregopenkey\tsample.h\tadvapi32\tRegOpenKeyA\t\t\t\t||LONG\thKey|i|HKEY||LongPtr\t"
    "lpSubKey|i|LPCSTR||*\tphkResult|o|PHKEY||LongPtr*\n"
    "d\tseekfile\tsample.h\tkernel32\t\t\t\t\t||BOOL\thFile|i|HANDLE||LongPtr\t"
    "Distance|i|LARGE_INTEGER||LongLong\n"
    "d\tsetwindowlong\tsample.h\tuser32\tSetWindowLongA\t\t\t\t\thWnd\tnIndex\tdwNewLong\n"
    "d\twindowfrompoint\tsample.h\tuser32\t\t\t\t\t\tx\ty\n"
    "t\tfilled\tsample.h\tcb\tbig\n"
    "t\tmsg\tsample.h\thWnd||HWND||LongPtr\tmessage||UINT\tpt||POINT\n"
    "t\trect\tsample.h\tLeft||LONG\tTop||LONG\n";

Rewriting Changes(std::u16string_view text, vb::Audience target,
                  TextEntries entries = TextEntries::kAnsi) {
  std::vector<FactsFile> facts;
  facts.push_back(FactsFile::Of(ViewOf(std::string(kFacts)), "sample.facts").value());
  return RewriteDeclarations(text, vb::ModuleKind::kStandard, target,
                             KnowledgeOf64(std::move(facts), entries));
}

std::string Rewritten(std::u16string_view text, vb::Audience target) {
  return ToUtf8(Changes(text, target).text);
}

struct Case {
  const char* name;
  std::u16string_view source;
  std::string_view vba7;
  std::string_view vba7_only;
};

constexpr Case kCases[] = {
    {"a constant stays", u"Const A = 1\n", "Const A = 1\n", "Const A = 1\n"},
    {"an address becomes LongPtr",
     u"Private Declare Function GetParent Lib \"user32\" (ByVal hWnd As Long) As Long\n",
     "#If VBA7 Then\n"
     "Private Declare PtrSafe Function GetParent Lib \"user32\" (ByVal hWnd As LongPtr) As "
     "LongPtr\n"
     "#Else\n"
     "Private Declare Function GetParent Lib \"user32\" (ByVal hWnd As Long) As Long\n"
     "#End If\n",
     "Private Declare PtrSafe Function GetParent Lib \"user32\" (ByVal hWnd As LongPtr) As "
     "LongPtr\n"},
    {"a type character is written out",
     u"Declare Function GetParent& Lib \"user32\" (ByVal hWnd&)\n",
     "#If VBA7 Then\n"
     "Declare PtrSafe Function GetParent Lib \"user32\" (ByVal hWnd As LongPtr) As LongPtr\n"
     "#Else\n"
     "Declare Function GetParent& Lib \"user32\" (ByVal hWnd&)\n"
     "#End If\n",
     "Declare PtrSafe Function GetParent Lib \"user32\" (ByVal hWnd As LongPtr) As LongPtr\n"},
    {"another name, the DLL with its ending, a text passed by its address",
     u"Declare Function Reg Lib \"ADVAPI32.dll\" Alias \"RegOpenKeyA\" (ByVal k As Long, ByVal s "
     u"As "
     u"Long, r As Long) As Long ' opens\n",
     "#If VBA7 Then\n"
     "Declare PtrSafe Function Reg Lib \"ADVAPI32.dll\" Alias \"RegOpenKeyA\" (ByVal k As LongPtr, "
     "ByVal s As LongPtr, r As LongPtr) As Long\n"
     "#Else\n"
     "Declare Function Reg Lib \"ADVAPI32.dll\" Alias \"RegOpenKeyA\" (ByVal k As Long, ByVal s As "
     "Long, r As Long) As Long ' opens\n"
     "#End If\n",
     "Declare PtrSafe Function Reg Lib \"ADVAPI32.dll\" Alias \"RegOpenKeyA\" (ByVal k As LongPtr, "
     "ByVal s As LongPtr, r As LongPtr) As Long ' opens\n"},
    {"a value of 64 bits is parted by Win64",
     u"Declare Sub SeekFile Lib \"kernel32\" (ByVal hFile As Long, ByVal Distance As Currency)\n",
     "#If VBA7 Then\n"
     "#If Win64 Then\n"
     "Declare PtrSafe Sub SeekFile Lib \"kernel32\" (ByVal hFile As LongPtr, ByVal Distance As "
     "LongLong)\n"
     "#Else\n"
     "Declare PtrSafe Sub SeekFile Lib \"kernel32\" (ByVal hFile As LongPtr, ByVal Distance As "
     "Currency)\n"
     "#End If\n"
     "#Else\n"
     "Declare Sub SeekFile Lib \"kernel32\" (ByVal hFile As Long, ByVal Distance As Currency)\n"
     "#End If\n",
     "#If Win64 Then\n"
     "Declare PtrSafe Sub SeekFile Lib \"kernel32\" (ByVal hFile As LongPtr, ByVal Distance As "
     "LongLong)\n"
     "#Else\n"
     "Declare PtrSafe Sub SeekFile Lib \"kernel32\" (ByVal hFile As LongPtr, ByVal Distance As "
     "Currency)\n"
     "#End If\n"},
    {"a procedure that another stands for",
     u"Public Declare Function SetWindowLong Lib \"user32\" Alias \"SetWindowLongA\" (ByVal h As "
     u"Long, ByVal i As Long, ByVal n As Long) As Long\n",
     "#If VBA7 Then\n"
     "#If Win64 Then\n"
     "Public Declare PtrSafe Function SetWindowLong Lib \"user32\" Alias \"SetWindowLongPtrA\" "
     "(ByVal hWnd As LongPtr, ByVal nIndex As Long, ByVal dwNewLong As LongPtr) As LongPtr\n"
     "#Else\n"
     "Public Declare PtrSafe Function SetWindowLong Lib \"user32\" Alias \"SetWindowLongA\" (ByVal "
     "h "
     "As Long, ByVal i As Long, ByVal n As Long) As Long\n"
     "#End If\n"
     "#Else\n"
     "Public Declare Function SetWindowLong Lib \"user32\" Alias \"SetWindowLongA\" (ByVal h As "
     "Long, ByVal i As Long, ByVal n As Long) As Long\n"
     "#End If\n",
     "#If Win64 Then\n"
     "Public Declare PtrSafe Function SetWindowLong Lib \"user32\" Alias \"SetWindowLongPtrA\" "
     "(ByVal hWnd As LongPtr, ByVal nIndex As Long, ByVal dwNewLong As LongPtr) As LongPtr\n"
     "#Else\n"
     "Public Declare PtrSafe Function SetWindowLong Lib \"user32\" Alias \"SetWindowLongA\" (ByVal "
     "h "
     "As Long, ByVal i As Long, ByVal n As Long) As Long\n"
     "#End If\n"},
    {"a procedure that 64 bits do not have",
     u"Declare Sub GetMem4 Lib \"msvbvm60\" (ByVal Addr As Long, RetVal As Long)\n",
     "#If VBA7 Then\n"
     "#If Win64 Then\n"
     "' GetMem4: it exists in 32 bits only\n"
     "#Else\n"
     "Declare PtrSafe Sub GetMem4 Lib \"msvbvm60\" (ByVal Addr As Long, RetVal As Long)\n"
     "#End If\n"
     "#Else\n"
     "Declare Sub GetMem4 Lib \"msvbvm60\" (ByVal Addr As Long, RetVal As Long)\n"
     "#End If\n",
     "#If Win64 Then\n"
     "' GetMem4: it exists in 32 bits only\n"
     "#Else\n"
     "Declare PtrSafe Sub GetMem4 Lib \"msvbvm60\" (ByVal Addr As Long, RetVal As Long)\n"
     "#End If\n"},
    {"a record of the same layout stays", u"Type RECT\n  Left As Long\n  Top As Long\nEnd Type\n",
     "Type RECT\n  Left As Long\n  Top As Long\nEnd Type\n",
     "Type RECT\n  Left As Long\n  Top As Long\nEnd Type\n"},
    {"a record with addresses, its comments kept",
     u"Private Type MSG ' of a window\n    hWnd As Long ' whose\n    message As Long\n    pt As "
     u"POINTAPI\nEnd Type\n",
     "#If VBA7 Then\n"
     "Private Type MSG ' of a window\n    hWnd As LongPtr ' whose\n    message As Long\n    pt As "
     "POINTAPI\nEnd Type\n"
     "#Else\n"
     "Private Type MSG ' of a window\n    hWnd As Long ' whose\n    message As Long\n    pt As "
     "POINTAPI\nEnd Type\n"
     "#End If\n",
     "Private Type MSG ' of a window\n    hWnd As LongPtr ' whose\n    message As Long\n    pt As "
     "POINTAPI\nEnd Type\n"},
    {"a record with other members", u"Type Filled\n  cb As Long\n  big As Currency\nEnd Type\n",
     "#If VBA7 Then\n"
     "#If Win64 Then\n"
     "Type Filled\n  cb As Long\n  filler(3) As Byte\n  big As Currency\nEnd Type\n"
     "#Else\n"
     "Type Filled\n  cb As Long\n  big As Currency\nEnd Type\n"
     "#End If\n"
     "#Else\n"
     "Type Filled\n  cb As Long\n  big As Currency\nEnd Type\n"
     "#End If\n",
     "#If Win64 Then\n"
     "Type Filled\n  cb As Long\n  filler(3) As Byte\n  big As Currency\nEnd Type\n"
     "#Else\n"
     "Type Filled\n  cb As Long\n  big As Currency\nEnd Type\n"
     "#End If\n"},
    {"neighbours share one #If",
     u"Declare Function GetParent Lib \"user32\" (ByVal hWnd As Long) As Long\n"
     u"Declare Sub Own Lib \"own\" ()\n\n"
     u"Declare Sub Other Lib \"own\" ()",
     "#If VBA7 Then\n"
     "Declare PtrSafe Function GetParent Lib \"user32\" (ByVal hWnd As LongPtr) As LongPtr\n"
     "Declare PtrSafe Sub Own Lib \"own\" ()\n"
     "#Else\n"
     "Declare Function GetParent Lib \"user32\" (ByVal hWnd As Long) As Long\n"
     "Declare Sub Own Lib \"own\" ()\n"
     "#End If\n"
     "\n"
     "#If VBA7 Then\n"
     "Declare PtrSafe Sub Other Lib \"own\" ()\n"
     "#Else\n"
     "Declare Sub Other Lib \"own\" ()\n"
     "#End If",
     "Declare PtrSafe Function GetParent Lib \"user32\" (ByVal hWnd As LongPtr) As LongPtr\n"
     "Declare PtrSafe Sub Own Lib \"own\" ()\n\n"
     "Declare PtrSafe Sub Other Lib \"own\" ()"},
    {"continued lines and the column stay",
     u"  Declare Function GetParent _\n    Lib \"user32\" ( _\n    ByVal hWnd As Long) As Long\n",
     "  #If VBA7 Then\n"
     "  Declare PtrSafe Function GetParent _\n    Lib \"user32\" ( _\n    ByVal hWnd As LongPtr) "
     "As "
     "LongPtr\n"
     "  #Else\n"
     "  Declare Function GetParent _\n    Lib \"user32\" ( _\n    ByVal hWnd As Long) As Long\n"
     "  #End If\n",
     "  Declare PtrSafe Function GetParent _\n    Lib \"user32\" ( _\n    ByVal hWnd As LongPtr) "
     "As "
     "LongPtr\n"},
    {"what nobody knows is read by its names, and marked",
     u"Declare Sub Own Lib \"own\" (ByVal hThing As Long, ByVal nSize As Long, ByVal lpData As "
     u"Long)\n",
     "#If VBA7 Then\n"
     "Declare PtrSafe Sub Own Lib \"own\" (ByVal hThing As LongPtr, ByVal nSize As Long, ByVal "
     "lpData "
     "As LongPtr) ' check: hThing, lpData are taken for addresses\n"
     "#Else\n"
     "Declare Sub Own Lib \"own\" (ByVal hThing As Long, ByVal nSize As Long, ByVal lpData As "
     "Long)\n"
     "#End If\n",
     "Declare PtrSafe Sub Own Lib \"own\" (ByVal hThing As LongPtr, ByVal nSize As Long, ByVal "
     "lpData "
     "As LongPtr) ' check: hThing, lpData are taken for addresses\n"},
    {"a branch for VBA7 is mended in its place",
     u"#If VBA7 Then\nDeclare PtrSafe Function GetParent Lib \"user32\" (ByVal hWnd As Long) As "
     u"LongPtr\n#Else\nDeclare Function GetParent Lib \"user32\" (ByVal hWnd As Long) As "
     u"Long\n#End If\n",
     "#If VBA7 Then\nDeclare PtrSafe Function GetParent Lib \"user32\" (ByVal hWnd As LongPtr) As "
     "LongPtr\n#Else\nDeclare Function GetParent Lib \"user32\" (ByVal hWnd As Long) As "
     "Long\n#End If\n",
     "#If VBA7 Then\nDeclare PtrSafe Function GetParent Lib \"user32\" (ByVal hWnd As LongPtr) As "
     "LongPtr\n#Else\nDeclare Function GetParent Lib \"user32\" (ByVal hWnd As Long) As "
     "Long\n#End If\n"},
    {"a record with conditions among its members stays",
     u"Type MSG\n  hWnd As Long\n  #If X Then\n  message As Long\n  #End If\n  pt As POINTAPI\nEnd "
     u"Type\n",
     "Type MSG\n  hWnd As Long\n  #If X Then\n  message As Long\n  #End If\n  pt As POINTAPI\nEnd "
     "Type\n",
     "Type MSG\n  hWnd As Long\n  #If X Then\n  message As Long\n  #End If\n  pt As POINTAPI\nEnd "
     "Type\n"},
    {"what is no Visual Basic stays",
     u"Type MSG\n  hWnd As Long\n  message As\n  pt As POINTAPI\nEnd "
     u"Type\n",
     "Type MSG\n  hWnd As Long\n  message As\n  pt As POINTAPI\nEnd Type\n",
     "Type MSG\n  hWnd As Long\n  message As\n  pt As POINTAPI\nEnd Type\n"},
    {"several statements on a line stay",
     u"Declare Sub A Lib \"x\" (): Declare Sub B Lib \"x\" ()\n",
     "Declare Sub A Lib \"x\" (): Declare Sub B Lib \"x\" ()\n",
     "Declare Sub A Lib \"x\" (): Declare Sub B Lib \"x\" ()\n"},
};

TEST(RewriteDeclarations, WritesTheFormOfTheTarget) {
  for (const auto& c : kCases) {
    EXPECT_EQ(Rewritten(c.source, vb::Audience::kVba7), c.vba7) << c.name;
    EXPECT_EQ(Rewritten(c.source, vb::Audience::kVba7Only), c.vba7_only) << c.name;
    EXPECT_EQ(Rewritten(c.source, vb::Audience::kTwinBasic), c.vba7_only) << c.name;
    EXPECT_EQ(Rewritten(c.source, vb::Audience::kVb6), ToUtf8(c.source)) << c.name;
  }
}

TEST(RewriteDeclarations, TwiceGivesTheSame) {
  for (const auto& c : kCases) {
    EXPECT_EQ(Rewritten(FromUtf8(c.vba7), vb::Audience::kVba7), c.vba7) << c.name;
    EXPECT_EQ(Rewritten(FromUtf8(c.vba7_only), vb::Audience::kVba7Only), c.vba7_only) << c.name;
  }
}

// The declaration for twinBASIC with entries of wide text.
std::string Wide(std::u16string_view text) {
  return ToUtf8(Changes(text, vb::Audience::kTwinBasic, TextEntries::kWide).text);
}

TEST(RewriteDeclarations, TwinBasicMayCallTheEntryOfWideText) {
  EXPECT_EQ(Wide(u"Declare Function FindText Lib \"user32\" Alias \"FindTextA\" (ByVal a As "
                 u"String, ByVal n As Long) As Long\n"),
            "DeclareWide PtrSafe Function FindText Lib \"user32\" Alias \"FindTextW\" (ByVal a As "
            "String, ByVal n As Long) As Long\n");
  const std::u16string without_alias =
      u"Private Declare PtrSafe Function FindTextA Lib \"user32\" (ByVal a As String, ByVal n As "
      u"Long) As Long ' why\n";
  const auto wide = Wide(without_alias);
  EXPECT_EQ(wide,
            "Private DeclareWide PtrSafe Function FindTextA Lib \"user32\" Alias \"FindTextW\" "
            "(ByVal a As String, ByVal n As Long) As Long ' why\n");
  EXPECT_EQ(Wide(FromUtf8(wide)), wide);
  EXPECT_EQ(ToUtf8(Changes(without_alias, vb::Audience::kTwinBasic).text), ToUtf8(without_alias));
}

TEST(RewriteDeclarations, WhatIsMoreThanTextKeepsItsEntry) {
  for (const auto* text :
       {u"Declare PtrSafe Function GetBytes Lib \"user32\" Alias \"GetBytesA\" (ByVal a As String, "
        u"ByVal p As String) As Long\n",
        u"Declare PtrSafe Function FindText Lib \"user32\" Alias \"FindTextA\" (a As Byte, ByVal n "
        u"As Long) As Long\n",
        u"Declare PtrSafe Function FindText Lib \"user32\" Alias \"FindTextA\" (ByVal a As Any, "
        u"ByVal n As Long) As Long\n",
        u"Declare PtrSafe Function FindText Lib \"mine\" Alias \"FindTextA\" (ByVal a As String, "
        u"ByVal n As Long) As Long\n"})
    EXPECT_EQ(Wide(text), ToUtf8(text));
}

TEST(RewriteDeclarations, WhatIsPassedByReferenceIsAHandleOnlyByItsName) {
  EXPECT_EQ(
      Rewritten(u"Declare Sub Own Lib \"own\" (hKey As Long, phToken As Long, lpSize As Long, "
                u"pCount As Long)\n",
                vb::Audience::kVba7Only),
      "Declare PtrSafe Sub Own Lib \"own\" (hKey As LongPtr, phToken As LongPtr, lpSize As "
      "Long, pCount As Long) ' check: hKey, phToken are taken for addresses\n");
}

TEST(RewriteDeclarations, KeepsEveryLineEnd) {
  EXPECT_EQ(Rewritten(u"Declare Sub A Lib \"x\" ()\r\nDim b\r\n", vb::Audience::kVba7),
            "#If VBA7 Then\r\nDeclare PtrSafe Sub A Lib \"x\" ()\r\n#Else\r\nDeclare Sub A Lib "
            "\"x\" ()\r\n#End If\r\nDim b\r\n");
}

TEST(RewriteDeclarations, SaysWhatChangesAndWhy) {
  const auto changes =
      Changes(
          u"\nDeclare Sub Own Lib \"own\" (ByVal hThing As Long)\n"
          u"Type MSG\n  hWnd As Long\n  message As Long\n  pt As POINTAPI\nEnd Type\n"
          u"Declare Sub A Lib \"x\" (): Declare Sub B Lib \"x\" ()\n",
          vb::Audience::kVba7Only)
          .changes;
  ASSERT_EQ(changes.size(), 4);
  EXPECT_EQ(changes[0].line, 2);
  EXPECT_EQ(changes[0].name, u"Own");
  EXPECT_TRUE(changes[0].is_guess);
  EXPECT_EQ(changes[0].before, u"Declare Sub Own Lib \"own\" (ByVal hThing As Long)");
  EXPECT_EQ(changes[1].line, 3);
  EXPECT_TRUE(changes[1].is_record);
  EXPECT_EQ(changes[1].reason, "its layout changes");
  EXPECT_FALSE(changes[1].is_guess);
  EXPECT_EQ(changes[2].reason, "it shares its line with another statement");
  EXPECT_TRUE(changes[3].after.empty());
}

TEST(RewriteDeclarations, PartsALineThatBecomesTooLong) {
  std::u16string source = u"Declare Sub Own Lib \"own\" (ByVal hA0 As Long";
  for (int i = 1; i < 43; ++i) source += u", ByVal hA" + FromUtf8(std::to_string(i)) + u" As Long";
  source += u")\r\n";
  ASSERT_LT(source.size(), 1024);
  const auto text = Changes(source, vb::Audience::kVba7Only).text;
  const auto module = vb::ReadModule(text);
  ASSERT_TRUE(module.errors.empty());
  EXPECT_EQ(module.declarations.at(0).As<vb::External>()->parameters.size(), 43);
  for (std::size_t begin = 0; begin < text.size();) {
    const auto end = std::min(text.find(u'\r', begin), text.size());
    EXPECT_LE(end - begin, 1023);
    begin = end + 1;
  }
}

}  // namespace
}  // namespace declarium
