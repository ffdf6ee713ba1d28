// A long source of every sort of line a real module has, and of lines that real modules have not,
// through the whole import. Under the sanitizers it fails at any overrun, overflow or leak.
// DECLARIUM_STRESS_LINES sets the number of lines, a million by hand.
#include <cstdlib>
#include <string>

#include "gtest/gtest.h"

#include "import/merge.h"
#include "library/file_format.h"

namespace declarium {
namespace {

constexpr std::size_t kModerateLines = 20'000;

std::size_t WantedLines() {
  const auto* lines = std::getenv("DECLARIUM_STRESS_LINES");
  return lines == nullptr ? kModerateLines : std::strtoul(lines, nullptr, 10);
}

// Lines of a module in turn; the number keeps most names apart.
std::string Module(std::size_t lines) {
  const char* const kLines[] = {
      "Attribute VB_Name = \"Module%\"",
      "Public Const WM_FIRST% As Long = &H400 + %",
      "Private Const TITLE% = \"it's number %\"   '   a  note",
      "\tConst Asterisk% = 1",
      "Const",
      "Const  Nameless% = 1",
      "Public Declare Function Get% Lib \"kernel32\" Alias \"GetA\" _",
      "    (ByVal lpName As String, _",
      "     nSize As Long) As Long",
      "Declare Sub Sleep Lib \"kernel32\" (ByVal n As Long)",
      "Declare PtrSafe Function F% Lib \"x\" ()",
      "Type RECORD%",
      "    Left As Long  ' of the   rectangle",
      "\tszName As String * MAX_PATH",
      "",
      "    ab(0 To %) As Byte",
      "End Type",
      "Type ONCE",
      "  Type INSIDE%",
      "    End Type",
      "end type",
      "Public Sub Run%(ByVal Index As Long)",
      "    If Index > % Then MsgBox \"\x8A\xE8\xF8\xFF ' % _\"",
      "End Sub",
      "' Const Comment% = 1 __",
      "",
  };
  std::string source;
  for (std::size_t i = 0; i < lines; ++i) {
    for (const char* unit = kLines[i % std::size(kLines)]; *unit != '\0'; ++unit) {
      if (*unit == '%') {
        source += std::to_string(i);
      } else {
        source += *unit;
      }
    }
    source += "\r\n";
  }
  return source;
}

TEST(ImportStress, ALongModuleIsImportedMergedAgainAndComesBackFromItsFile) {
  const auto lines = WantedLines();
  const auto source = Module(lines);
  Library library;
  MergeItems(library, ParseSourceFile(source), Existing::kReplace);
  const auto constants = library[Kind::kConst].names.size();
  EXPECT_GT(constants, lines / 26 * 3 - 3);
  MergeItems(library, ParseSourceFile(source), Existing::kKeep);
  EXPECT_EQ(library[Kind::kConst].names.size(), constants);

  const auto again = ParseLibrary(LibraryBytes(library), "library.api");
  ASSERT_TRUE(again);
  for (const auto kind : kKinds) {
    EXPECT_EQ((*again)[kind].names, library[kind].names);
    EXPECT_EQ((*again)[kind].items, library[kind].items);
  }
}

}  // namespace
}  // namespace declarium
