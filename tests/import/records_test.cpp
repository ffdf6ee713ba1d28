#include "import/records.h"

#include <string>
#include <vector>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "import/merge.h"

namespace declarium {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::u16string> TextsIn(const StringList& list) {
  return {list.begin(), list.end()};
}

ParsedItems ParsedBoth(const std::string& bytes) {
  auto of_bytes = ParseSourceFile(bytes);
  const auto of_text = ParseDeclarations(ReadSource(bytes));
  for (const auto kind : kKinds) {
    EXPECT_EQ(of_bytes[kind].names, of_text[kind].names);
    EXPECT_EQ(of_bytes[kind].items, of_text[kind].items);
  }
  return of_bytes;
}

TEST(Records, ARecordInsideAnotherHoldsTheRestOfIt) {
  const auto parsed = ParsedBoth("Type A\r\nx\r\nType B note\r\n'  y\r\nEnd Type\r\nType C\r\nz");
  EXPECT_THAT(TextsIn(parsed[Kind::kType].names), ElementsAre(u"A", u"B", u"C"));
  EXPECT_THAT(TextsIn(parsed[Kind::kType].items),
              ElementsAre(u"\x0Cx\x0DType B note\x0D'y", u"note\x0C'y", u"\x0Cz"));
}

TEST(Records, ARecordDirectlyBeforeTheEndHasNoMembers) {
  const auto parsed = ParsedBoth("Type A\r\nType B\r\nEnd Type\r\nType C\r\nType D");
  EXPECT_THAT(TextsIn(parsed[Kind::kType].items),
              ElementsAre(u"\x0CType B", u"", u"\x0CType D", u""));
}

TEST(Records, AnEmptyMemberIsAMember) {
  const auto parsed = ParsedBoth("Type A\r\nType B\r\n\r\nEnd Type");
  EXPECT_THAT(TextsIn(parsed[Kind::kType].items), ElementsAre(u"\x0CType B\x0D", u"\x0C"));
}

// Nested records of the names given, all inside one outermost record with one member of ten units
// for each; the last name's record is the shortest.
struct Nest {
  Nest(std::size_t limit, std::initializer_list<std::u16string_view> names)
      : arena(std::make_shared<TextArena>()), records(arena, limit) {
    for (auto& [list_names, items] : parsed.lists) {
      list_names.Keep(arena);
      items.Keep(arena);
    }
    std::u16string item = u"\x0C";
    for (std::size_t i = 0; i < names.size(); ++i) {
      records.AddMember(10 * i, item.size());
      item += u"123456789\x0D";
    }
    records.AddOutermost(10 * names.size(), Keepable::kYes, u"Outermost", item, parsed);
    std::size_t line = 0;
    for (const auto name : names) {
      const RecordLine at = {line + 2, 10 * line, 10 * line + 10};
      EXPECT_EQ(records.AddNested(at, name, u"\x0C", Keepable::kYes, parsed), NestedRecord::kAdded);
      ++line;
    }
  }

  std::vector<std::size_t> DroppedLines() {
    std::vector<std::size_t> lines;
    for (const auto& line : records.Finish(parsed)) lines.push_back(line.number);
    return lines;
  }

  std::shared_ptr<TextArena> arena;
  Records records;
  ParsedItems parsed;
};

TEST(Records, WithinTheLimitEveryNestedRecordIsMade) {
  Nest nest(100, {u"A", u"B", u"C"});
  EXPECT_THAT(nest.DroppedLines(), IsEmpty());
  EXPECT_THAT(TextsIn(nest.parsed[Kind::kType].items), ElementsAre(u"\x0C"
                                                                   u"123456789\x0D"
                                                                   u"123456789\x0D"
                                                                   u"123456789",
                                                                   u"\x0C"
                                                                   u"123456789\x0D"
                                                                   u"123456789",
                                                                   u"\x0C"
                                                                   u"123456789",
                                                                   u""));
}

TEST(Records, BeyondTheLimitOnlyWhatAMergeKeepsIsMade) {
  Nest nest(12, {u"A", u"A", u"A", u"A"});
  EXPECT_THAT(nest.DroppedLines(), IsEmpty());
  Library library;
  MergeItems(library, nest.parsed, Existing::kReplace);
  EXPECT_THAT(TextsIn(library[Kind::kType].names), ElementsAre(u"A", u"Outermost"));
  EXPECT_EQ(library[Kind::kType].items[0], u"");
}

TEST(Records, BeyondTheLimitTheLongestAreDroppedAndReported) {
  Nest nest(12, {u"A", u"B", u"C", u"D"});
  EXPECT_THAT(nest.DroppedLines(), ElementsAre(3, 2));
  EXPECT_THAT(TextsIn(nest.parsed[Kind::kType].names), ElementsAre(u"Outermost", u"C", u"D"));
}

TEST(Records, ManyTypeLinesWithoutAnEndNeitherCrashNorFillTheMemory) {
  constexpr int kLines = 60'000;  // all records together would take more than 40 GB
  std::string source;
  for (int i = 0; i < kLines; ++i) source += "Type T" + std::to_string(i) + "\r\n";
  const auto parsed = ParseSourceFile(source);
  EXPECT_FALSE(parsed.skipped.empty());
  EXPECT_EQ(parsed[Kind::kType].names.size() + parsed.skipped.size(), kLines);
  EXPECT_EQ(parsed.skipped.front().reason, SkipReason::kTooLong);
  EXPECT_EQ(parsed.skipped.front().number, 2);
  EXPECT_EQ(parsed.skipped.front().text, u"Type T1");
}

TEST(Records, ManyTypeLinesOfOneNameAreOneRecord) {
  constexpr int kLines = 60'000;
  std::string source;
  for (int i = 0; i < kLines; ++i) source += "Type T\r\n";
  const auto parsed = ParseSourceFile(source);
  EXPECT_TRUE(parsed.skipped.empty());
  Library library;
  MergeItems(library, parsed, Existing::kReplace);
  ASSERT_EQ(library[Kind::kType].names.size(), 1);
  // Position 9999 comes last as text; 50 001 lines and an empty one stand behind it.
  EXPECT_EQ(library[Kind::kType].items[0].size(), 1 + 50'001 * 7);
}

}  // namespace
}  // namespace declarium
