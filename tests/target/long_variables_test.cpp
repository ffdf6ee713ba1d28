#include "target/long_variables.h"

#include <gtest/gtest.h>
#include <string>

#include "text/text.h"

namespace declarium {
namespace {

// "line variable=function" for each place.
std::string Found(std::u16string_view text) {
  std::string found;
  for (const auto& place : AddressesInLongs(text, {u"getdc", u"getparent"}))
    found += (found.empty() ? "" : " ") + std::to_string(place.place.line) +
             ToUtf8(place.variable) + "=" + ToUtf8(place.function);
  return found;
}

TEST(AddressesInLongs, FindsLocalsParametersResultsAndModuleVariables) {
  EXPECT_EQ(Found(u"Sub S()\nDim h As Long\nh = GetDC(0)\nEnd Sub\n"), "3h=GetDC");
  EXPECT_EQ(Found(u"Sub S()\nDim a, h&, b As Long\nh = GetDC(0)\nb = getdc(0)\na = GetDC(0)\n"),
            "3h=GetDC 4b=getdc");
  EXPECT_EQ(Found(u"Sub S(ByVal h As Long, Optional p As Long = 0)\nh = GetDC(0): p = StrPtr(s)\n"),
            "2h=GetDC 2p=StrPtr");
  EXPECT_EQ(Found(u"Public Function F(a) As Long\nF = GetParent(a)\nEnd Function\n"),
            "2F=GetParent");
  EXPECT_EQ(Found(u"Private m As Long\nSub S()\nIf x Then m = VarPtr(y) Else m = ObjPtr(z)\n"),
            "3m=VarPtr 3m=ObjPtr");
  EXPECT_EQ(Found(u"Dim m As Long\nSub S()\nm = AddressOf T\n"), "3m=AddressOf");
}

TEST(AddressesInLongs, PassesOverOtherTypesAndFunctions) {
  EXPECT_EQ(Found(u"Sub S()\nDim h As LongPtr, n As Long, v\nh = GetDC(0)\nn = GetTick()\nv = "
                  u"GetDC(0)\n"),
            "");
  EXPECT_EQ(Found(u"Sub S()\nDim n As Long\nn = Len(GetDC(0))\nx.n = GetDC(0)\n"), "");
  EXPECT_EQ(Found(u"Declare Function GetDC Lib \"user32\" (ByVal h As Long) As Long\n"), "");
  EXPECT_EQ(Found(u"Sub S()\nDim a(3) As Long\na = GetDC(0)\n"), "");
}

TEST(AddressesInLongs, ALocalHidesTheModulesVariable) {
  EXPECT_EQ(Found(u"Dim h As Long\nSub S()\nDim h As LongPtr\nh = GetDC(0)\nEnd Sub\nSub T()\nh "
                  u"= GetDC(0)\nEnd Sub\n"),
            "7h=GetDC");
}

TEST(AddressesInLongs, TheVariablesOfAProcedureEndWithIt) {
  EXPECT_EQ(Found(u"Sub S()\nDim h As Long\nIf a Then\nEnd If\nEnd With\nh = GetDC(0)\n"),
            "6h=GetDC");
  EXPECT_EQ(Found(u"Sub S()\nDim h As Long\nEnd Sub\nSub T()\nh = GetDC(0)\nEnd Sub\n"), "");
}

TEST(AddressesInLongs, AnyTextIsRead) {
  for (const auto* text :
       {u"", u"Sub", u"Function F", u"Dim", u"Dim h As", u"= =", u"Sub S(", u"h = "})
    EXPECT_EQ(Found(text), "");
}

}  // namespace
}  // namespace declarium
