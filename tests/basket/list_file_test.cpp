#include "basket/list_file.h"

#include <gtest/gtest.h>
#include <random>

#include "basket/basket.h"
#include "basket/list_selection.h"
#include "text/encoding.h"
#include "text/text.h"

namespace declarium {
namespace {

std::string Described(const ListLine& line) {
  std::string text = std::to_string(line.line) + (line.takes_away ? " -" : " ");
  if (line.sought.NamesKind()) text += ToUtf8(KindName(line.sought.kinds.front())) + ":";
  return text + ToUtf8(line.sought.name) + (line.is_pattern ? " pattern" : "");
}

std::vector<std::string> LinesOf(std::u16string_view text) {
  std::vector<std::string> lines;
  const auto list = ReadListFile(text);
  EXPECT_TRUE(list.has_value());
  if (!list) return lines;
  for (const auto& line : list->lines) lines.push_back(Described(line));
  return lines;
}

using Strings = std::vector<std::string>;

TEST(ListFile, NamesStandOneALineWithOrWithoutTheirKind) {
  EXPECT_EQ(LinesOf(u"GetRect\r\n\r\ntype:RECT\r\nCONST:A\r\n  declare:B\t\r\n"),
            (Strings{"1 GetRect", "3 Type:RECT", "4 Const:A", "5 Declare:B"}));
}

TEST(ListFile, EveryLineEndCounts) {
  EXPECT_EQ(LinesOf(u"A\nB\rC\r\nD"), (Strings{"1 A", "2 B", "3 C", "4 D"}));
}

TEST(ListFile, CommentsSayNothing) {
  EXPECT_EQ(LinesOf(u"' all of it\n# more\n#\n## title\nA ' behind a name\n\t'\n#\tx"),
            (Strings{"5 A"}));
}

TEST(ListFile, PathsMayHoldQuotes) {
  const auto list =
      ReadListFile(u"#library O'Neil/a.api ' mine\n#library b.api '\n#module c.bas'\n");
  ASSERT_TRUE(list.has_value());
  EXPECT_EQ(list->libraries, (std::vector<std::u16string>{u"O'Neil/a.api", u"b.api"}));
  EXPECT_EQ(list->module, u"c.bas'");
}

TEST(ListFile, WildcardsMakeAPattern) {
  EXPECT_EQ(LinesOf(u"SWP_*\nA?\nB#\n[ab]c\nconst:WM_*\n-SWP_DRAW*"),
            (Strings{"1 SWP_* pattern", "2 A? pattern", "3 B# pattern", "4 [ab]c pattern",
                     "5 Const:WM_* pattern", "6 -SWP_DRAW* pattern"}));
}

TEST(ListFile, AMinusTakesAway) {
  EXPECT_EQ(LinesOf(u"-A\n- type:B"), (Strings{"1 -A", "2 -Type:B"}));
}

TEST(ListFile, AColonBehindAnotherWordBelongsToTheName) {
  EXPECT_EQ(LinesOf(u"enum:A"), (Strings{"1 enum:A"}));
}

TEST(ListFile, AQuoteInAListOfCharactersIsNoComment) {
  EXPECT_EQ(LinesOf(u"A[']B ' comment"), (Strings{"1 A[']B pattern"}));
}

TEST(ListFile, DirectivesSayWhatTheModuleIs) {
  const auto list = ReadListFile(
      u"#library Win32.api\n#LIBRARY ..\\my own.api ' second\n#Target VBA7-only\n#module Api.bas");
  ASSERT_TRUE(list.has_value());
  EXPECT_EQ(list->libraries, (std::vector<std::u16string>{u"Win32.api", u"..\\my own.api"}));
  EXPECT_EQ(list->target, vb::Audience::kVba7Only);
  EXPECT_EQ(list->module, u"Api.bas");
  EXPECT_TRUE(list->lines.empty());
}

TEST(ListFile, AnEmptyTextIsAnEmptyList) {
  const auto list = ReadListFile(u"");
  ASSERT_TRUE(list.has_value());
  EXPECT_TRUE(list->lines.empty());
  EXPECT_FALSE(list->target);
}

TEST(ListFile, EveryFaultIsToldWithItsLineAndWord) {
  const auto list = ReadListFile(
      u"#libary Win32.api\n#target vb7\n#target vb6\n#target vba7\n#library\n-\ntype:\n"
      u"A[b\nC[z-a]\n#module A.bas\n#module B.bas\nGood");
  ASSERT_FALSE(list.has_value());
  EXPECT_EQ(list.error(), (std::vector<ListFault>{
                              {1, ListFaultKind::kUnknownDirective, u"#libary"},
                              {2, ListFaultKind::kUnknownTarget, u"vb7"},
                              {4, ListFaultKind::kSaidTwice, u"#target"},
                              {5, ListFaultKind::kValueMissing, u"#library"},
                              {6, ListFaultKind::kValueMissing, u"-"},
                              {7, ListFaultKind::kValueMissing, u"type:"},
                              {8, ListFaultKind::kBrokenPattern, u"A[b"},
                              {9, ListFaultKind::kBrokenPattern, u"C[z-a]"},
                              {11, ListFaultKind::kSaidTwice, u"#module"},
                          }));
}

TEST(ListText, HasOneLineForEachEntry) {
  const std::u16string libraries[] = {u"Win32.api", u"../Own.api"};
  EXPECT_EQ(ListText(libraries, vb::Audience::kVb6, {{u"A", 1}, {u"GetRect", 2}, {u"RECT", 3}}),
            u"#library Win32.api\r\n#library ../Own.api\r\nconst:A\r\ndeclare:GetRect\r\n"
            u"type:RECT\r\n");
  EXPECT_EQ(ListText({}, vb::Audience::kVba7Only, {{u"A", 1}}),
            u"#target vba7-only\r\nconst:A\r\n");
  EXPECT_EQ(ListText({}, vb::Audience::kVb6, {}), u"");
}

TEST(ListText, IsTheSameInItsFileWhateverItsCharacters) {
  constexpr std::u16string_view kTexts[] = {u"",
                                            u"const:A\r\n",
                                            u"#library Šimko/ž.api\r\n",
                                            u"#library Кни/ж.api\r\n",
                                            u"Ă\u02C7\r\n",
                                            u"\uFEFFconst:A\r\n"};
  for (const auto text : kTexts) {
    const auto bytes = ListBytes(text);
    EXPECT_EQ(ToUtf8(DecodeText(bytes, RecognizeEncoding(bytes, kLibraryEncoding))), ToUtf8(text));
  }
  EXPECT_EQ(ListBytes(u"Ž\r\n"), "\x8E\r\n");
}

// Names of any characters, which a library may hold.
TEST(ListText, ReadingItSelectsTheSameItems) {
  std::mt19937 random(7);
  constexpr std::u16string_view kUnits = u"aB1_ -#'*?[]!:\tx";
  for (int round = 0; round < 300; ++round) {
    Library library;
    Basket basket;
    for (const auto kind : kKinds) {
      std::u16string name;
      for (int i = 0; i < 6; ++i) name += kUnits[random() % kUnits.size()];
      library.SetItems(kind, {{name}, {std::u16string(u"item")}});
      basket.Add(kind, name, u"item");
    }
    const auto list = ReadListFile(ListText({}, vb::Audience::kVb6, basket.Entries()));
    ASSERT_TRUE(list.has_value());
    const Library* const libraries[] = {&library};
    const auto selection = SelectItems(*list, libraries);
    ASSERT_TRUE(selection.faults.empty());
    GroupedList selected;
    for (const auto& item : selection.items)
      selected.push_back({std::u16string(item.name), IconOf(item.kind)});
    EXPECT_EQ(selected, basket.Entries());
  }
}

}  // namespace
}  // namespace declarium
