#include "import/parser.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "support/texts.h"
#include "text/text.h"

namespace declarium {
namespace {

struct Found {
  Kind kind;
  std::u16string name;
  std::u16string item;

  friend bool operator==(const Found&, const Found&) = default;
};

void PrintTo(const Found& found, std::ostream* out) {
  *out << KindCode(found.kind) << " " << testing::PrintToString(found.name) << " "
       << testing::PrintToString(found.item);
}

using AllFound = std::vector<Found>;

AllFound ItemsOf(const ParsedItems& parsed) {
  AllFound all;
  for (const auto kind : kKinds) {
    const auto& [names, items] = parsed[kind];
    EXPECT_EQ(names.size(), items.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
      all.push_back({kind, std::u16string(names[i]), std::u16string(items[i])});
    }
  }
  return all;
}

ParsedItems Parse(std::u16string text) {
  return ParseDeclarations({std::move(text), {}});
}
AllFound Items(std::u16string text) {
  return ItemsOf(Parse(std::move(text)));
}

Found Const(std::u16string name, std::u16string type, std::u16string value) {
  return {Kind::kConst, std::move(name), type + u'\x0E' + value};
}
Found Sub(std::u16string name, std::u16string tail) {
  return {Kind::kDeclare, std::move(name), u'\n' + tail};
}
Found Function(std::u16string name, std::u16string tail) {
  return {Kind::kDeclare, std::move(name), u'\x0B' + tail};
}
Found Record(std::u16string name, std::u16string item) {
  return {Kind::kType, std::move(name), std::move(item)};
}

struct LineCase {
  std::u16string line;
  AllFound items;
};

TEST(Parser, ReadsConstants) {
  const LineCase cases[] = {
      {u"Const A As Long = 1", {Const(u"A", u"Long", u"1")}},
      {u"Const A = 1", {Const(u"A", u"", u"1")}},
      {u"Public Const A As Long = 1", {Const(u"A", u"Long", u"1")}},
      {u"Private Const A As Long = 1", {Const(u"A", u"Long", u"1")}},
      {u"PUBLIC PRIVATE cOnSt A = 1", {Const(u"A", u"", u"1")}},
      {u"\t Public\tConst\tA\t=\t1", {Const(u"A", u"", u"1")}},
      {u"Const C = 3 ' three", {Const(u"C", u"", u"3 'three")}},
      {u"Const C = \"a  b\"", {Const(u"C", u"", u"\"a  b\"")}},
      {u"Const A   As Long = 1", {Const(u"A", u"Long", u"1")}},
      {u"Const A as Long = 1", {Const(u"A", u"", u"Long = 1")}},
      {u"Const A", {}},
      {u"Const A ", {Const(u"A", u"", u"")}},
      {u"Const A =", {Const(u"A", u"", u"")}},
      {u"Const A B C D", {Const(u"A", u"", u"C D")}},
      {u"Const A =1", {Const(u"A", u"", u"")}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Items(c.line), c.items) << testing::PrintToString(c.line);
  }
}

TEST(Parser, AConstantsValueIsWhatStandsBehindTheFifthBlank) {
  // "Const", "A", "As", "", "Long": the type is the empty word.
  EXPECT_EQ(Items(u"Const A As  Long = 1"), (AllFound{Const(u"A", u"", u"= 1")}));
  // Three blanks: the fourth round finds none, the fifth starts at the beginning again.
  EXPECT_EQ(Items(u"Const A As Long"), (AllFound{Const(u"A", u"Long", u"A As Long")}));
}

TEST(Parser, TheFirstAsMayStandInTheName) {
  EXPECT_EQ(Items(u"Const MyAs = 1"), (AllFound{Const(u"MyAs", u"=", u"")}));
  EXPECT_EQ(Items(u"Const Assist = 1"), (AllFound{Const(u"Assist", u"", u"= 1")}));
  EXPECT_EQ(Items(u"Const BASE = 1"), (AllFound{Const(u"BASE", u"", u"1")})) << "case matters";
}

TEST(Parser, TheFirstAsMayStandInTheValue) {
  EXPECT_EQ(Items(u"Const A = \"As x\""), (AllFound{Const(u"A", u"x\"", u"A As x\"")}));
  EXPECT_EQ(Items(u"Const A = 1 'As is"), (AllFound{Const(u"A", u"is", u"A As is")}));
  EXPECT_EQ(Items(u"Const A = Ascii"), (AllFound{Const(u"A", u"", u"")}));
}

TEST(Parser, ReadsExternalProcedures) {
  const LineCase cases[] = {
      {u"Declare Function GetTickCount Lib \"kernel32\" () As Long",
       {Function(u"GetTickCount", u"\"kernel32\" () As Long")}},
      {u"Private Declare Sub Sleep Lib \"kernel32\" (ByVal ms As Long)",
       {Sub(u"Sleep", u"\"kernel32\" (ByVal ms As Long)")}},
      {u"declare SUB a lib b", {Sub(u"a", u"b")}},
      {u"Declare Sub a NotLib b c", {Sub(u"a", u"b c")}},
      {u"Declare PtrSafe Function a Lib b", {}},
      {u"Declare  Sub a Lib b", {}},
      {u"Declare Sub a Lib", {Sub(u"a", u"")}},
      {u"Declare Sub  a Lib b", {}},
      {u"Declare Sub a  Lib b '  c", {Sub(u"a", u"b 'c")}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Items(c.line), c.items) << testing::PrintToString(c.line);
  }
}

TEST(Parser, AnExternalProcedureWithTwoBlanksStartsAgainAtTheBeginning) {
  // Two blanks: round three finds none, round four finds the first again.
  EXPECT_EQ(Items(u"Declare Sub a")[0].item, u"\nSub a");
  EXPECT_EQ(Items(u"Declare Sub a Lib")[0].item, u"\n");
}

TEST(Parser, ReadsRecords) {
  EXPECT_EQ(
      Items(u"Type RECT\r\n  Left As Long\r\n\tTop As Long\r\n    Right As Long\r\n"
            u"    Bottom As Long\r\nEnd Type"),
      (AllFound{Record(u"RECT", u"\x0CLeft As Long\rTop As Long\rRight As Long\rBottom As Long")}));
}

TEST(Parser, ARecordKeepsTheRestOfItsHeader) {
  EXPECT_EQ(Items(u"Type A '  note\r\nx As Long\r\nEnd Type"),
            (AllFound{Record(u"A", u"'note\x0Cx As Long")}));
}

TEST(Parser, ARecordWithoutMembersHasNoSeparator) {
  EXPECT_EQ(Items(u"Type A\r\nEnd Type"), (AllFound{Record(u"A", u"")}));
  EXPECT_EQ(Items(u"Type A"), (AllFound{Record(u"A", u"")}));
  EXPECT_EQ(Items(u"Type A rest\r\nEnd Type"), (AllFound{Record(u"A", u"rest")}));
}

TEST(Parser, OnlyABareEndTypeAtTheLinesStartEndsARecord) {
  for (const std::u16string end :
       {u"    End Type", u"\tEnd Type", u"End Type ", u"End  Type", u"End Type ' done",
        u"End Type'", u"EndType", u"End", u"End Enum", u"Type", u"End\tType"}) {
    const auto items = Items(u"Type A\r\n" + end + u"\r\nEnd Type");
    ASSERT_FALSE(items.empty());
    const auto& record = items.front();
    EXPECT_EQ(record.item, u'\x0C' + NormalizeLine(end)) << testing::PrintToString(end);
  }
  EXPECT_EQ(Items(u"Type A\r\neND tYPE\r\nx"), (AllFound{Record(u"A", u"")}));
}

TEST(Parser, ARecordWithoutAnEndRunsToTheEndOfTheText) {
  EXPECT_EQ(Items(u"Type A\r\nx As Long\r\n\r\ny As Long\r\n"),
            (AllFound{Record(u"A", u"\x0Cx As Long\r\ry As Long\r")}));
}

TEST(Parser, EmptyLinesAndOneWordLinesInARecordAreMembers) {
  EXPECT_EQ(Items(u"Type A\r\n\r\nword\r\nEnd Type"), (AllFound{Record(u"A", u"\x0C\rword")}));
}

TEST(Parser, LinesInARecordAreReadAsDeclarationsToo) {
  EXPECT_EQ(Items(u"Type A\r\nConst B = 1\r\nType C\r\nEnd Type"),
            (AllFound{Const(u"B", u"", u"1"),
                      Record(u"A",
                             u"\x0C"
                             u"Const B = 1\rType C"),
                      Record(u"C", u"")}));
}

TEST(Parser, JoinsContinuedLinesFirst) {
  EXPECT_EQ(Items(u"Declare Sub a Lib \"b\" _\r\n  (x As Long)"),
            (AllFound{Sub(u"a", u"\"b\"   (x As Long)")}));
  EXPECT_EQ(Items(u"Const A = _\r\n1"), (AllFound{Const(u"A", u"", u"1")}));
}

TEST(Parser, PassesOverEverythingElse) {
  EXPECT_TRUE(Items(u"").empty());
  EXPECT_TRUE(Items(u"\r\n\r\n").empty());
  for (const std::u16string line :
       {u"Global Const A = 1", u"Dim A As Long", u"Enum E", u"Sub Main()", u"' Const A = 1",
        u"Constant A = 1", u"Private Public Const A = 1", u"Public  Const A = 1",
        u"Friend Const A = 1", u"#Const A = 1", u"PublicConst A = 1", u"Public"}) {
    EXPECT_TRUE(Items(line).empty()) << testing::PrintToString(line);
  }
}

TEST(Parser, KeepsSourceOrderAndDuplicates) {
  EXPECT_EQ(Items(u"Const B = 1\r\nConst A = 2\r\nConst B = 3"),
            (AllFound{Const(u"B", u"", u"1"), Const(u"A", u"", u"2"), Const(u"B", u"", u"3")}));
}

struct SkippedCase {
  std::u16string line;
  SkipReason reason;
};

TEST(Parser, ReportsLinesWithTooFewWordsOrNoName) {
  const SkippedCase cases[] = {
      {u"Const", SkipReason::kTooFewWords},
      {u"Const A", SkipReason::kTooFewWords},
      {u"Public Const A", SkipReason::kTooFewWords},
      {u"Const A As", SkipReason::kTooFewWords},
      {u"Const ", SkipReason::kTooFewWords},
      {u"Declare", SkipReason::kTooFewWords},
      {u"Declare Sub", SkipReason::kTooFewWords},
      {u"Declare Function", SkipReason::kTooFewWords},
      {u"Type", SkipReason::kTooFewWords},
      {u"Const  B  = 2", SkipReason::kNoName},
      {u"Const  ", SkipReason::kNoName},
      {u"Declare Sub ", SkipReason::kNoName},
      {u"Declare Sub  a Lib b", SkipReason::kNoName},
      {u"Type ", SkipReason::kNoName},
      {u"Type  A", SkipReason::kNoName},
  };
  for (const auto& c : cases) {
    const auto parsed = Parse(u"x\r\n" + c.line + u"\r\nConst OK = 1");
    ASSERT_EQ(parsed.skipped.size(), 1U) << testing::PrintToString(c.line);
    EXPECT_EQ(parsed.skipped[0].number, 2U);
    EXPECT_EQ(parsed.skipped[0].text, c.line);
    EXPECT_EQ(parsed.skipped[0].reason, c.reason) << testing::PrintToString(c.line);
    EXPECT_FALSE(ReasonText(c.reason).empty());
    EXPECT_EQ(parsed[Kind::kConst].names.size(), 1U) << "the import goes on";
  }
}

TEST(Parser, SaysNothingAboutLinesThatDeclareNothing) {
  for (const std::u16string line :
       {u"Declare PtrSafe", u"Declare ", u"Constant", u"Const A ", u"Const A As "}) {
    EXPECT_TRUE(Parse(line).skipped.empty()) << testing::PrintToString(line);
  }
}

TEST(Parser, NamesTheLineOfTheFileThoughLinesWereJoined) {
  const auto parsed = Parse(u"Const A = _\r\n1\r\nConst _\r\n\r\nConst");
  ASSERT_EQ(parsed.skipped.size(), 2U);
  EXPECT_EQ(parsed.skipped[0].number, 3U);
  EXPECT_EQ(parsed.skipped[1].number, 5U);

  SourceText joined_before{u"Const A = _\r\n1\r\nConst", {}};
  JoinContinuedLines(joined_before);
  EXPECT_EQ(ParseDeclarations(std::move(joined_before)).skipped.at(0).number, 3U);
}

// A slow literal twin of the parser; lines that lack a word give no item.
AllFound PlainParse(std::u16string_view joined) {
  std::array<AllFound, kKindCount> found;
  std::vector<std::u16string> lines;
  for (const auto line : Split(joined, kCrLf)) lines.emplace_back(line);
  const auto words_of = [](const std::u16string& s) {
    std::vector<std::u16string> words;
    for (const auto word : Split(s, u' ')) words.emplace_back(word);
    return words;
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::u16string s(TrimLeft(Replace(lines[i], u"\t", u" ")));
    if (LowerCase(s.substr(0, 7)) == u"public ") s = s.substr(7);
    if (LowerCase(s.substr(0, 8)) == u"private ") s = s.substr(8);
    if (s.empty()) continue;
    auto w = words_of(s);
    const auto rest = [&](int n) { return std::u16string(RestAfterBlank(NormalizeLine(s), n)); };
    const auto w0 = LowerCase(w[0]);
    if (w0 == u"const") {
      if (w.size() < 2) continue;
      if (const auto p = s.find(u"As"); p != s.npos) {
        s = w[0] + u" " + w[1] + u" " + s.substr(p);
        w = words_of(s);
      }
      if (w.size() < 3 || (w[2] == u"As" && w.size() < 4) || w[1].empty()) continue;
      const bool typed = w[2] == u"As";
      found[0].push_back(Const(w[1], typed ? w[3] : u"", rest(typed ? 5 : 3)));
    } else if (w0 == u"declare") {
      if (w.size() < 3 || w[2].empty()) continue;
      const auto w1 = LowerCase(w[1]);
      if (w1 == u"sub") found[1].push_back(Sub(w[2], rest(4)));
      if (w1 == u"function") found[1].push_back(Function(w[2], rest(4)));
    } else if (w0 == u"type") {
      if (w.size() < 2 || w[1].empty()) continue;
      auto item = rest(2) + u'\x0C';
      for (auto j = i + 1; j < lines.size(); ++j) {
        const auto member = words_of(LowerCase(lines[j]));
        if (member.size() == 2 && member[0] == u"end" && member[1] == u"type") break;
        item += NormalizeLine(lines[j]) + u'\r';
      }
      item.pop_back();
      found[2].push_back(Record(w[1], item));
    }
  }
  AllFound all;
  for (auto& kind : found) all.insert(all.end(), kind.begin(), kind.end());
  return all;
}

TEST(Parser, AgreesWithItsSlowTwinOnRandomSource) {
  Random random(5);
  const std::vector<std::u16string> pieces = {u"Const ",
                                              u"const",
                                              u"Declare ",
                                              u"Sub ",
                                              u"Function ",
                                              u"Type ",
                                              u"\r\n",
                                              u"\r\n",
                                              u"As ",
                                              u"As",
                                              u"End Type",
                                              u"end type",
                                              u"Public ",
                                              u"private ",
                                              u" ",
                                              u"  ",
                                              u"\t",
                                              u"A ",
                                              u"= ",
                                              u"' ",
                                              u"Lib ",
                                              u"_\r\n",
                                              u"1",
                                              u"\r\nType B",
                                              u"\r\nConst C = 1",
                                              u"\r\nEnd Type\r\n"};
  for (int round = 0; round < 20'000; ++round) {
    const auto text = random.Text(pieces, 25);
    ASSERT_EQ(Items(text), PlainParse(Replace(text, u"_\r\n", u"")))
        << testing::PrintToString(text);
  }
}

TEST(Parser, ASingleVeryLongLineIsOneLine) {
  const std::u16string value(5'000'000, u'x');
  const auto items = Items(u"Const A = " + value);
  ASSERT_EQ(items.size(), 1U);
  EXPECT_EQ(items[0].item.size(), value.size() + 1);
}

}  // namespace
}  // namespace declarium
