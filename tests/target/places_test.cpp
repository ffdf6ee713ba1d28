#include "target/places.h"

#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "text/text.h"
#include "vb/module.h"

namespace declarium {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Declares whose names tell what is an address: hWnd by value, phKey by reference. GetDC returns
// one by a form of its own.
constexpr std::u16string_view kDeclares =
    u"Declare Function GetDC Lib \"user32\" (ByVal hWnd As Long) As Long\n"
    u"Declare Function OpenKey Lib \"advapi32\" (ByVal Name As String, hKey As Long) As Long\n"
    u"Type INFO\n  hProcess As Long\n  Count As Long\nEnd Type\n"
    u"Type OUTER\n  Inner As INFO\nEnd Type\n"
    u"Type SIZED\n  cbSize As Long\n  hOwner As Long\nEnd Type\n"
    u"Type PLAIN\n  cbSize As Long\nEnd Type\n";

class PlacesIn {
 public:
  explicit PlacesIn(const std::vector<std::u16string>& modules) {
    std::vector<ModuleWithForms> with_forms;
    for (const auto& text : modules) {
      const auto& kept = texts_.emplace_back(text);
      const auto& parsed = parsed_.emplace_back(vb::ReadModule(kept));
      auto& forms = forms_.emplace_back(KnowledgeOf64({}).FormsOf(parsed));
      for (std::size_t i = 0; i < forms.size(); ++i)
        if (parsed.declarations[i].name == u"GetDC") forms[i].result = u"LongPtr";
      with_forms.push_back({kept, &parsed, forms});
    }
    Places places(with_forms, vb::Target::kVba7x64, {});
    for (std::size_t i = 0; i < with_forms.size(); ++i)
      for (const auto& place : places.In(i)) found.push_back(Text(place));
  }

  std::vector<std::string> found;

 private:
  static std::string Text(const PlaceToLookAt& place) {
    return std::to_string(place.place.line) + " " + ToUtf8(place.name) + ": " + place.reason;
  }

  std::deque<std::u16string> texts_;
  std::deque<vb::Module> parsed_;
  std::deque<std::vector<FormFor64>> forms_;
};

// Of one module below the Declares of another, "h=GetDC" for each place.
std::vector<std::string> Found(std::u16string_view text) {
  return PlacesIn({std::u16string(kDeclares), std::u16string(text)}).found;
}

constexpr const char* kAssigned = " gives an address, ";

std::string Assigned(const std::string& line, const std::string& variable,
                     const std::string& source) {
  return line + " " + variable + ": " + source + kAssigned + variable + " is a Long";
}

std::string Written(const std::string& line, const std::string& variable,
                    const std::string& source) {
  return line + " " + variable + ": " + source + " writes an address to " + variable +
         ", which is a Long";
}

TEST(Places, AreLocalsParametersResultsAndModuleVariables) {
  EXPECT_THAT(Found(u"Sub S()\nDim h As Long\nh = GetDC(0)\nEnd Sub\n"),
              ElementsAre(Assigned("3", "h", "GetDC")));
  EXPECT_THAT(Found(u"Sub S()\nDim a, h&, b As Long\nh = GetDC(0)\nb = getdc(0)\na = GetDC(0)\n"),
              ElementsAre(Assigned("3", "h", "GetDC"), Assigned("4", "b", "getdc")));
  EXPECT_THAT(
      Found(u"Sub S(ByVal h As Long, Optional p As Long = 0)\nh = GetDC(0): p = StrPtr(s)\n"),
      ElementsAre(Assigned("2", "h", "GetDC"), Assigned("2", "p", "StrPtr")));
  EXPECT_THAT(Found(u"Private m As Long\nSub S()\nIf x Then m = VarPtr(y) Else m = ObjPtr(z)\n"),
              ElementsAre(Assigned("3", "m", "VarPtr"), Assigned("3", "m", "ObjPtr")));
  EXPECT_THAT(Found(u"Dim m As Long\nSub S()\nm = AddressOf T\n"),
              ElementsAre(Assigned("3", "m", "AddressOf")));
}

TEST(Places, AreResultsOfFunctionsAndProperties) {
  EXPECT_THAT(Found(u"Public Function F(a) As Long\nF = GetDC(a)\nEnd Function\n"),
              ElementsAre(Assigned("2", "F", "GetDC")));
  EXPECT_THAT(Found(u"Property Get P() As Long\nP = GetDC(0)\nEnd Property\n"),
              ElementsAre(Assigned("2", "P", "GetDC")));
  EXPECT_THAT(Found(u"Function F&(a)\nF = GetDC(a)\nEnd Function\n"),
              ElementsAre(Assigned("2", "F", "GetDC")));
  EXPECT_THAT(Found(u"Function F(a As Long)\nF = GetDC(a)\nEnd Function\n"), IsEmpty());
  EXPECT_THAT(Found(u"Function F() As Long()\nF = GetDC(a)\nEnd Function\n"), IsEmpty());
}

TEST(Places, AreLongsThatAProcedureWritesAnAddressTo) {
  EXPECT_THAT(Found(u"Sub S()\nDim h As Long\nOpenKey \"a\", h\nEnd Sub\n"),
              ElementsAre(Written("3", "h", "OpenKey")));
  EXPECT_THAT(Found(u"Sub S()\nDim h As Long\nCall OpenKey(\"a\", h)\nEnd Sub\n"),
              ElementsAre(Written("3", "h", "OpenKey")));
  EXPECT_THAT(Found(u"Sub S()\nDim h&\nIf OpenKey(F(1, 2), h) = 0 Then x = 1\nEnd Sub\n"),
              ElementsAre(Written("3", "h", "OpenKey")));
  EXPECT_THAT(Found(u"Sub S()\nDim h As LongPtr\nOpenKey \"a\", h\nEnd Sub\n"), IsEmpty());
  EXPECT_THAT(Found(u"Sub S()\nDim h As Long\nOpenKey \"a\", (h)\nOpenKey \"a\", h + 1\n"),
              IsEmpty());
  EXPECT_THAT(Found(u"Sub S()\nDim h As Long\nOpenKey h, k\nEnd Sub\n"), IsEmpty());
}

TEST(Places, AreElementsAndMembers) {
  EXPECT_THAT(Found(u"Sub S()\nDim a(3) As Long\na(1) = GetDC(0)\na = GetDC(0)\nEnd Sub\n"),
              ElementsAre(Assigned("3", "a(1)", "GetDC")));
  EXPECT_THAT(
      Found(u"Sub S()\nDim i As INFO\ni.Count = GetDC(0)\ni.hProcess = GetDC(0)\nEnd Sub\n"),
      ElementsAre(Assigned("3", "i.Count", "GetDC")));
  EXPECT_THAT(
      Found(u"Sub S()\nDim o As OUTER\nWith o.Inner\n.Count = GetDC(0)\nEnd With\nEnd Sub\n"),
      ElementsAre(Assigned("4", ".Count", "GetDC")));
  EXPECT_THAT(Found(u"Sub S()\nDim i(2) As INFO, h As Long\nh = i(0).hProcess\nh = i(0).Count\n"),
              ElementsAre(Assigned("3", "h", "i(0).hProcess")));
}

TEST(Places, AreSizesOfRecordsThatChange) {
  EXPECT_THAT(
      Found(u"Sub S()\nDim i As INFO, o As OUTER, p As PLAIN\nn = Len(i)\nF LenB(o)\n"
            u"p.cbSize = Len(p)\ni.Count = 8\nEnd Sub\nSub T(s As SIZED)\ns.cbSize = 8\nEnd Sub\n"),
      ElementsAre("3 INFO: Len measures INFO, whose layout changes",
                  "4 OUTER: LenB measures OUTER, whose layout changes",
                  "9 SIZED: 8 is a size of SIZED, whose layout changes"));
}

TEST(Places, ArePublicVariablesOfOtherModules) {
  const PlacesIn places({std::u16string(kDeclares) + u"Public Shared As Long, Wide As LongPtr\n",
                         u"Sub S()\nShared = GetDC(0)\nWide = GetDC(0)\nEnd Sub\n"});
  EXPECT_THAT(places.found, ElementsAre(Assigned("2", "Shared", "GetDC")));
}

TEST(Places, AreLongsThatGetALongPtr) {
  EXPECT_THAT(
      Found(u"Dim p As LongPtr\nSub S()\nDim h As Long\nh = p\nEnd Sub\nSub T(n As Long)\nn = p: n "
            u"= p <> 0\nEnd Sub\n"),
      ElementsAre(Assigned("4", "h", "p"), Assigned("7", "n", "p")));
  const PlacesIn places({u"Public Wide As LongPtr\n", u"Sub S(n As Long)\nn = Wide\nEnd Sub\n"});
  EXPECT_THAT(places.found, ElementsAre(Assigned("2", "n", "Wide")));
}

TEST(Places, AreInTheBranchesThatTheTargetCompiles) {
  EXPECT_THAT(Found(u"Sub S()\n#If VBA7 Then\nDim h As LongPtr\n#Else\nDim h As Long\n#End If\n"
                    u"h = GetDC(0)\nEnd Sub\n"),
              IsEmpty());
  EXPECT_THAT(Found(u"Sub S()\nDim h As Long\n#If Win64 Then\nh = GetDC(0)\n#Else\nh = GetDC(1)\n"
                    u"#End If\nEnd Sub\n"),
              ElementsAre(Assigned("4", "h", "GetDC")));
}

TEST(Places, AreNoneForOtherTypesAndFunctions) {
  EXPECT_THAT(Found(u"Sub S()\nDim h As LongPtr, n As Long, v\nh = GetDC(0)\nn = GetTick()\nv = "
                    u"GetDC(0)\n"),
              IsEmpty());
  EXPECT_THAT(Found(u"Sub S()\nDim n As Long\nn = Len(GetDC(0))\nx.n = GetDC(0)\n"), IsEmpty());
  EXPECT_THAT(Found(u"Sub S()\nDim n As Long\nn = GetDC(0) <> 0\nn = F(GetDC(0))\nEnd Sub\n"),
              IsEmpty());
  EXPECT_THAT(Found(u"Private Declare Function GetDC Lib \"mine\" () As Long\nSub S()\nDim n As "
                    u"Long\nn = F(GetDC)\nEnd Sub\n"),
              IsEmpty());
}

TEST(Places, ALocalHidesTheModulesVariable) {
  EXPECT_THAT(Found(u"Dim h As Long\nSub S()\nDim h As LongPtr\nh = GetDC(0)\nEnd Sub\nSub T()\nh "
                    u"= GetDC(0)\nEnd Sub\n"),
              ElementsAre(Assigned("7", "h", "GetDC")));
}

TEST(Places, TheVariablesOfAProcedureEndWithIt) {
  EXPECT_THAT(Found(u"Sub S()\nDim h As Long\nIf a Then\nEnd If\nEnd With\nh = GetDC(0)\n"),
              ElementsAre(Assigned("6", "h", "GetDC")));
  EXPECT_THAT(Found(u"Sub S()\nDim h As Long\nEnd Sub\nSub T()\nh = GetDC(0)\nEnd Sub\n"),
              IsEmpty());
}

TEST(Places, AnyTextIsRead) {
  for (const auto* text : {u"",
                           u"Sub",
                           u"Function F",
                           u"Dim",
                           u"Dim h As",
                           u"= =",
                           u"Sub S(",
                           u"h = ",
                           u"Property",
                           u"Property Get",
                           u"Sub S()\nWith",
                           u"Sub S()\nWith .",
                           u"Sub S()\n.x = VarPtr(",
                           u"Sub S()\nOpenKey",
                           u"Sub S()\nOpenKey(",
                           u"Sub S()\nx = OpenKey(",
                           u"Sub S()\nLen(",
                           u"#If",
                           u"#If Then\n#Else\n#ElseIf",
                           u"Function F&",
                           u"Function F() As",
                           u"End",
                           u"Me.",
                           u"Sub S()\nMe."})
    EXPECT_THAT(Found(text), IsEmpty());
}

}  // namespace
}  // namespace declarium
