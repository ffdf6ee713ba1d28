#include "basket/insertion_text.h"

#include <gtest/gtest.h>

#include "basket/recorded_items.h"
#include "library/kind.h"

namespace declarium {
namespace {

// A basket whose record holds exactly its entries.
struct Listed {
  std::vector<GroupedEntry> entries;
  std::vector<std::u16string> record;

  Listed& Add(Kind kind, std::u16string_view name, std::u16string_view item) {
    entries.push_back({std::u16string(name), IconOf(kind)});
    record.push_back(ItemKey(KindCode(kind), name) + u'\0' + std::u16string(item));
    return *this;
  }
  [[nodiscard]] std::u16string Text(std::u16string_view scope = kPrivate) const {
    return CreateSelect(entries, record, scope);
  }
};

TEST(CreateSelect, RendersAConstADeclareAndAType) {
  const auto listed =
      Listed()
          .Add(Kind::kConst, u"SW_SHOW",
               u"\x0E"
               u"5")
          .Add(Kind::kDeclare, u"ShowWindow",
               u"\x0B\"user32\" (ByVal hwnd As Long, ByVal nCmdShow As Long) As Long")
          .Add(Kind::kType, u"POINTAPI", u"\x0Cx As Long\ry As Long");
  EXPECT_EQ(listed.Text(),
            u"Private Const SW_SHOW = 5\r\n"
            u"Private Declare Function ShowWindow Lib \"user32\" (ByVal hwnd As Long, ByVal "
            u"nCmdShow As Long) As Long\r\n"
            u"\r\n"
            u"Private Type POINTAPI\r\n\tx As Long\r\n\ty As Long\r\nEnd Type\r\n");
}

TEST(CreateSelect, TheScopeWordStandsOnEveryDeclaration) {
  const auto listed = Listed()
                          .Add(Kind::kConst, u"A",
                               u"Long\x0E"
                               u"1")
                          .Add(Kind::kDeclare, u"S", u"\n\"l\"")
                          .Add(Kind::kType, u"P", u"'r\x0C'c\rx");
  EXPECT_EQ(listed.Text(kPublic),
            u"Public Const A As Long = 1\r\nPublic Declare Sub S Lib \"l\"\r\n\r\n"
            u"Public Type P 'r\r\n\t\t\t'c\r\n\tx\r\nEnd Type\r\n");
}

TEST(CreateSelect, AnEmptyBasketGivesOneLineEnd) {
  EXPECT_EQ(Listed().Text(), u"\r\n");
}

TEST(CreateSelect, RecordsStandApartByOneEmptyLineAndNoneInFront) {
  const auto listed = Listed().Add(Kind::kType, u"P", u"\x0Cx").Add(Kind::kType, u"Q", u"\x0Cy");
  EXPECT_EQ(listed.Text(),
            u"Private Type P\r\n\tx\r\nEnd Type\r\n\r\nPrivate Type Q\r\n\ty\r\nEnd Type\r\n");
}

TEST(CreateSelect, ThreeLineEndsInARowBecomeTwoOnce) {
  // A value may hold line ends of its own; behind it stands the entry's.
  const auto with_line_ends = [](std::u16string_view line_ends) {
    return Listed().Add(Kind::kConst, u"A", u"\x0E" + std::u16string(line_ends) + u"x").Text();
  };
  EXPECT_EQ(with_line_ends(u"\r\n\r\n"), u"Private Const A = \r\n\r\nx\r\n");
  EXPECT_EQ(with_line_ends(u"\r\n\r\n\r\n"), u"Private Const A = \r\n\r\nx\r\n");
  EXPECT_EQ(with_line_ends(u"\r\n\r\n\r\n\r\n"), u"Private Const A = \r\n\r\n\r\nx\r\n");
  EXPECT_EQ(with_line_ends(u"\r\n\r\n\r\n\r\n\r\n\r\n"),
            u"Private Const A = \r\n\r\n\r\n\r\nx\r\n");
}

TEST(CreateSelect, LineEndsAtEitherEndOfTheTextGo) {
  EXPECT_EQ(Listed()
                .Add(Kind::kConst, u"A",
                     u"\x0E"
                     u"1\r\n\r\n")
                .Text(),
            u"Private Const A = 1\r\n");
  EXPECT_EQ(Listed().Add(Kind::kType, u"P", u"\x0C").Text(), u"Private Type P\r\nEnd Type\r\n");
}

TEST(CreateSelect, AnEntryWithoutItsRecordIsLeftOut) {
  auto listed = Listed().Add(Kind::kConst, u"A",
                             u"\x0E"
                             u"1");
  listed.entries.push_back({u"Missing", 1});
  listed.entries.push_back({u"A", IconOf(Kind::kType)});
  EXPECT_EQ(listed.Text(), u"Private Const A = 1\r\n");
}

TEST(CreateSelect, TheEarlierOfTwoRecordsOfOneNameAnswers) {
  auto listed = Listed()
                    .Add(Kind::kConst, u"A",
                         u"\x0E"
                         u"1")
                    .Add(Kind::kConst, u"A",
                         u"\x0E"
                         u"2");
  listed.entries.pop_back();
  EXPECT_EQ(listed.Text(), u"Private Const A = 1\r\n");
}

TEST(CreateSelect, TheKeyIsComparedExactly) {
  auto listed = Listed().Add(Kind::kConst, u"a",
                             u"\x0E"
                             u"1");
  listed.entries[0].text = u"A";
  EXPECT_EQ(listed.Text(), u"\r\n");
}

TEST(CreateSelect, AnEntryOrRecordOfNoKindIsLeftOut) {
  const std::vector<GroupedEntry> entries = {{u"A", 0}, {u"A", 4}, {u"A", 1}};
  const std::vector<std::u16string> record = {std::u16string(u"0\0A", 3)};
  EXPECT_EQ(CreateSelect(entries, record, kPrivate), u"\r\n") << "a record without an item string";
}

}  // namespace
}  // namespace declarium
