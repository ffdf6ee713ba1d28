#include "source/item_text.h"

#include <gtest/gtest.h>

namespace declarium {
namespace {

struct ItemCase {
  Kind kind;
  std::u16string_view name;
  std::u16string_view item;
  std::u16string_view text;
};

TEST(ItemText, AnswersForKnownItems) {
  const ItemCase cases[] = {
      {Kind::kConst, u"A",
       u"Long\x0E"
       u"1",
       u"Const A As Long = 1"},
      {Kind::kConst, u"A",
       u"\x0E"
       u"1",
       u"Const A = 1"},
      {Kind::kConst, u"A", u"\x0E", u"Const A = "},
      {Kind::kConst, u"A", u"Long\x0E", u"Const A As Long = "},
      {Kind::kConst, u"A", u"", u"Const A = "},
      {Kind::kDeclare, u"GetTickCount", u"\x0B\"kernel32\" () As Long",
       u"Declare Function GetTickCount Lib \"kernel32\" () As Long"},
      {Kind::kDeclare, u"Beep", u"\n\"kernel32\" ()", u"Declare Sub Beep Lib \"kernel32\" ()"},
      {Kind::kDeclare, u"A", u"", u"Declare A Lib "},
      {Kind::kType, u"P", u"\x0Cx As Long\ry As Long",
       u"Type P\r\n\tx As Long\r\n\ty As Long\r\nEnd Type"},
      {Kind::kType, u"P", u"'rest\x0Cx As Long", u"Type P 'rest\r\n\tx As Long\r\nEnd Type"},
      {Kind::kType, u"P", u"\x0C", u"Type P\r\nEnd Type"},
      {Kind::kType, u"P", u"", u"Type P\r\nEnd Type"},
      {Kind::kType, u"P", u"rest", u"Type P rest\r\nEnd Type"},
  };
  for (const auto& c : cases) EXPECT_EQ(ItemText(c.kind, c.name, c.item), c.text);
}

TEST(ItemText, ACommentMemberStandsThreeTabsIn) {
  EXPECT_EQ(ItemText(Kind::kType, u"P", u"\x0C'note\r 'spaced\rx 'y"),
            u"Type P\r\n\t\t\t'note\r\n\t 'spaced\r\n\tx 'y\r\nEnd Type");
}

TEST(ItemText, EmptyMemberLinesKeepTheirTab) {
  EXPECT_EQ(ItemText(Kind::kType, u"P", u"\x0C\rx\r"), u"Type P\r\n\t\r\n\tx\r\n\t\r\nEnd Type");
}

TEST(ItemText, EveryMarkerOfADeclareIsSpelled) {
  EXPECT_EQ(ItemText(Kind::kDeclare, u"A\x0B", u"\n\"l\n\x0B\""),
            u"Declare Sub AFunction  Lib \"lSub Function \"");
  EXPECT_EQ(ItemText(Kind::kConst, u"A", u"\x0E\n"), u"Const A = \n") << "only in Declares";
}

TEST(ItemText, TheScopeWordStandsInFront) {
  std::u16string text = u"before ";
  AppendItemText(Kind::kConst, u"A",
                 u"\x0E"
                 u"1",
                 u"Public", text);
  EXPECT_EQ(text, u"before Public Const A = 1");
  for (const auto kind : kKinds) {
    text.clear();
    AppendItemText(kind, u"A", u"", u"Private", text);
    EXPECT_TRUE(text.starts_with(u"Private " + std::u16string(KindName(kind)))) << KindCode(kind);
  }
}

TEST(ExportText, AnEmptyLibraryGivesAnEmptyText) {
  EXPECT_EQ(ExportText(Library()), u"");
}

TEST(ExportText, PutsConstantsThenProceduresThenRecordsIntoOneText) {
  Library library;
  library.SetItems(Kind::kType, {{u"P", u"Q"}, {u"\x0Cx", u"\x0Cy"}});
  library.SetItems(Kind::kDeclare, {{u"S"}, {u"\n\"l\""}});
  library.SetItems(Kind::kConst, {{u"A", u"B"},
                                  {u"\x0E"
                                   u"1",
                                   u"Long\x0E"
                                   u"2"}});
  EXPECT_EQ(ExportText(library),
            u"Const A = 1\r\nConst B As Long = 2\r\nDeclare Sub S Lib \"l\"\r\n"
            u"Type P\r\n\tx\r\nEnd Type\r\nType Q\r\n\ty\r\nEnd Type");
}

TEST(ExportText, ANameWithoutAnItemStringIsWrittenWithAnEmptyOne) {
  Library library;
  library.SetItems(Kind::kConst, {{u"A"}, {}});
  library.SetItems(Kind::kType, {{u"P"}, {}});
  EXPECT_EQ(ExportText(library), u"Const A = \r\nType P\r\nEnd Type");
}

}  // namespace
}  // namespace declarium
