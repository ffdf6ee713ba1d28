#include "plan/missing_names.h"

#include <gtest/gtest.h>

#include "plan/planned.h"

namespace declarium::plan {
namespace {

constexpr std::string_view kOffered =
    "Const SW_SHOW = 5\nConst Name = 1\nConst Caption = 2\nConst Command1 = 3\nConst Timer = 4\n"
    "Const both = 1\nConst Left = 1\nConst GWL_STYLE = -16\n"
    "Declare Sub Sleep Lib \"kernel32\" (ByVal ms As Long)\n"
    "Declare Sub both Lib \"kernel32\" ()\nDeclare Sub Refresh Lib \"x\" ()\n"
    "Declare Function GetTickCount Lib \"kernel32\" () As Long\n"
    "Declare Sub Date Lib \"x\" ()\n"
    "Type RECT\nLeft As Long\nEnd Type\nType Point\nx As Long\nEnd Type\n"
    "Type Collection\nx As Long\nEnd Type\n";

// "Sleep(3:2) SW_SHOW(4:7)": the names with their places, "?" behind those that are ambiguous.
std::string MissingIn(std::u16string_view text, vb::ModuleKind kind = vb::ModuleKind::kStandard,
                      std::u16string_view other = u"") {
  const auto first = LibraryOf(kOffered);
  const auto second = LibraryOf("Const SW_SHOW = &H5\nConst GWL_STYLE = 16\n");
  const Library* const libraries[] = {&first, &second};
  const auto module = vb::ReadModule(text, kind);
  const auto other_module = vb::ReadModule(other);
  const ModuleText modules[] = {{u"M", text, &module}, {u"N", other, &other_module}};
  ProjectModules project(modules);
  std::string told;
  for (const auto& missing : FindMissing(project, 0, libraries)) {
    if (!told.empty()) told += ' ';
    told += ToUtf8(missing.name) + "(" + std::to_string(missing.place.line) + ":" +
            std::to_string(missing.place.column) + ")";
    if (missing.IsAmbiguous()) told += "?";
  }
  return told;
}

std::string MissingInSub(std::u16string_view lines,
                         vb::ModuleKind kind = vb::ModuleKind::kStandard) {
  return MissingIn(u"Sub S()\n" + std::u16string(lines) + u"\nEnd Sub\n", kind);
}

struct Case {
  std::u16string_view code;
  std::string_view missing;
};

TEST(MissingNames, AreWhatCodeUsesAndALibraryHas) {
  const Case kCases[] = {
      {u"Sleep 5", "Sleep(2:1)"},
      {u"Call Sleep(5)", "Sleep(2:6)"},
      {u"x = GetTickCount", "GetTickCount(2:5)"},
      {u"x = GetTickCount()", "GetTickCount(2:5)"},
      {u"Show SW_SHOW", "SW_SHOW(2:6)"},
      {u"Dim r As RECT", "RECT(2:10)"},
      {u"n = Len(RECT)", "RECT(2:9)"},
      {u"Sleep SW_SHOW\nSleep 1", "Sleep(2:1) SW_SHOW(2:7)"},
      {u"If a = sw_show Then sleep 1", "sw_show(2:8) sleep(2:21)"},
      {u"x = GWL_STYLE", "GWL_STYLE(2:5)?"},
      {u"x = both", "both(2:5)?"},
      {u"both", "both(2:1)"},
      {u"SetTimer 0, 0, 0, AddressOf GetTickCount", "GetTickCount(2:29)"},
  };
  for (const auto& [code, missing] : kCases) EXPECT_EQ(MissingInSub(code), missing) << ToUtf8(code);
}

TEST(MissingNames, AreNotWhatSomethingDeclares) {
  const Case kCases[] = {
      {u"Sub S()\nDim Sleep\nx = Sleep\nEnd Sub", ""},
      {u"Sub S(SW_SHOW)\nx = SW_SHOW\nEnd Sub", ""},
      {u"Sub S()\nSW_SHOW = 5\nx = SW_SHOW\nEnd Sub", ""},
      {u"Sub S()\nFor SW_SHOW = 1 To 2\nx = SW_SHOW\nNext\nEnd Sub", ""},
      {u"Const SW_SHOW = 1\nSub S()\nx = SW_SHOW\nEnd Sub", ""},
      {u"#If X Then\nConst SW_SHOW = 1\n#End If\nSub S()\nx = SW_SHOW\nEnd Sub", ""},
      {u"Dim Sleep\nSub S()\nSleep 1\nEnd Sub", ""},
      {u"Sub Sleep()\nEnd Sub\nSub S()\nSleep 1\nEnd Sub", ""},
      {u"Enum E\nSW_SHOW\nEnd Enum\nSub S()\nx = SW_SHOW\nEnd Sub", ""},
      {u"Sub S()\nx.Sleep 1\ny = N.SW_SHOW\nFoo SW_SHOW:=1\nEnd Sub", ""},
      {u"Sub S()\nSleep: GoTo Sleep\nEnd Sub", ""},
      {u"Sub S()\n' Sleep\nx = \"SW_SHOW\"\nEnd Sub", ""},
      {u"#If VBA7 Then\nSub S()\nSleep 1\nEnd Sub\n#End If", ""},
      {u"Sub S()\nx = Name & Timer & Date & Left(a, 1)\nEnd Sub", ""},
      {u"Dim c As Collection, d As New Collection", ""},
      {u"Sub S()\nDim RECT As RECT\nRECT.Left = 1\nEnd Sub", "RECT(2:13)"},
      {u"Type T\na As RECT\nSleep As Long\nEnd Type", "RECT(2:6)"},
      {u"Const A = SW_SHOW", "SW_SHOW(1:11)"},
      {u"Declare Sub D Lib \"x\" (Sleep As RECT)", "RECT(1:33)"},
  };
  for (const auto& [code, missing] : kCases) EXPECT_EQ(MissingIn(code), missing) << ToUtf8(code);
}

TEST(MissingNames, KnowTheOtherModules) {
  const std::u16string_view code = u"Sub S()\nSleep SW_SHOW\nEnd Sub";
  EXPECT_EQ(MissingIn(code, vb::ModuleKind::kStandard, u"Public Const SW_SHOW = 5\n"),
            "Sleep(2:1)");
  EXPECT_EQ(MissingIn(code, vb::ModuleKind::kStandard, u"Private Const SW_SHOW = 5\n"),
            "Sleep(2:1) SW_SHOW(2:7)");
}

TEST(MissingNames, AreNoMembersOfAForm) {
  const std::u16string_view form =
      u"VERSION 5.00\nBegin VB.Form F\n Begin VB.CommandButton Command1\n End\nEnd\n"
      u"Private Sub Command1_Click()\nx = Caption & Left & Name\nRefresh\nMe.Refresh\n"
      u"Command1.Left = 1\nSleep 1\nEnd Sub\n";
  EXPECT_EQ(MissingIn(form, vb::ModuleKind::kForm), "Sleep(11:1)");
  EXPECT_EQ(MissingInSub(u"x = Caption\nRefresh"), "Caption(2:5) Refresh(3:1)");
  EXPECT_EQ(MissingInSub(u"Dim p As Point", vb::ModuleKind::kForm), "Point(2:10)");
}

TEST(MissingNames, OnceInsertedAreNone) {
  const std::u16string_view text =
      u"Sub S()\nDim r As RECT\nSleep SW_SHOW\nx = GetTickCount\nEnd Sub\n";
  const auto library = LibraryOf(kOffered);
  const Library* const libraries[] = {&library};
  const auto module = vb::ReadModule(text);
  const ModuleText modules[] = {{u"M", text, &module}};
  ProjectModules project(modules);
  const auto missing = FindMissing(project, 0, libraries);
  ASSERT_EQ(missing.size(), 4u);
  const auto wanted = WithNeeds(CertainItems(missing), libraries);
  const InsertionPlan plan(project, 0, wanted.items, {});
  EXPECT_EQ(MissingIn(WithInsertions(text, plan.Insertions())), "");
}

}  // namespace
}  // namespace declarium::plan
