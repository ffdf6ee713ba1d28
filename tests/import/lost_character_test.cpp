#include "import/lost_character.h"

#include <array>
#include <span>
#include <string>
#include <vector>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "import/reading.h"
#include "library/file_format.h"
#include "support/texts.h"
#include "text/text.h"

namespace declarium {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::u16string>;
using Report = std::vector<std::string>;

Texts TextsOf(const StringList& list) {
  return {list.begin(), list.end()};
}

std::string PlaceOf(const LostCharacter& lost) {
  return std::to_string(lost.line) + ":" + std::to_string(lost.column);
}

// "line reason line:column" for what was left out, "? line:column" for what was replaced.
Report ReportOf(const ParsedItems& parsed) {
  Report report;
  for (const auto& [number, text, reason, character] : parsed.skipped) {
    auto entry = std::to_string(number);
    if (reason == SkipReason::kSeparator) entry += " separator";
    if (reason == SkipReason::kForeign) entry += " foreign";
    if (character) entry += " " + PlaceOf(*character);
    report.push_back(entry);
  }
  for (const auto& lost : parsed.replaced) report.push_back("? " + PlaceOf(lost));
  return report;
}

ParsedItems ParseText(std::u16string text) {
  return ParseDeclarations(ReadSource(std::move(text)));
}

// The source as the command reads it.
ParsedItems ReadFile(std::string_view bytes, const Encoding& encoding, Reading reading) {
  auto literal = ParseSourceFile(bytes, encoding);
  if (reading == Reading::kLiteral) return literal;
  return ReadAsVisualBasic(DecodeText(bytes, encoding), literal).items;
}

TEST(UnkeepableCharacters, AreFoundInCodeAndInComments) {
  const auto found =
      FindUnkeepableCharacters(u"\u2192 \"'\u2192\" '\U0001F600\u010D\xD800\x01 \u2192");
  ASSERT_EQ(found.size(), 6U);
  const std::size_t positions[] = {0, 4, 8, 11, 12, 14};
  const std::size_t lengths[] = {1, 1, 2, 1, 1, 1};
  const Loss losses[] = {Loss::kForeign,   Loss::kForeign,   Loss::kInComment,
                         Loss::kInComment, Loss::kSeparator, Loss::kInComment};
  for (std::size_t i = 0; i < found.size(); ++i) {
    EXPECT_EQ(found[i].position, positions[i]);
    EXPECT_EQ(found[i].length, lengths[i]);
    EXPECT_EQ(found[i].loss, losses[i]);
  }
  EXPECT_THAT(FindUnkeepableCharacters(u"Const \u010D = \"\u20AC\" '\u0081\x03"), IsEmpty());
}

TEST(UnkeepableCharacters, OfARemLineStandInAComment) {
  EXPECT_EQ(FindUnkeepableCharacters(u"Rem \u2192").at(0).loss, Loss::kInComment);
}

TEST(ReplaceForeignCharacters, PutsOneQuestionMarkForOneCharacter) {
  std::u16string text = u"\u2192a\U0001F600b\xD800";
  ReplaceForeignCharacters(text, 1);
  EXPECT_EQ(text, u"\u2192a?b?");
}

TEST(OrderByPlace, LeavesEachPlaceOnce) {
  std::vector<LostCharacter> characters = {{2, 1, u"b"}, {1, 9, u"a"}, {2, 1, u"b"}, {1, 10, u"c"}};
  OrderByPlace(characters);
  Report places;
  for (const auto& each : characters) places.push_back(PlaceOf(each));
  EXPECT_THAT(places, ElementsAre("1:9", "1:10", "2:1"));
}

// A declaration with "@" where the character goes, and where that stands.
struct Place {
  const char* declaration;
  std::size_t line;
  std::size_t column;
};

constexpr Place kInCode[] = {{"Const A@B = 1", 2, 8},
                             {"Const A = \"@\"", 2, 12},
                             {"Const A = _\r\n 1 @", 3, 4},
                             {"Public Const A As Lo@ng = 1", 2, 21},
                             {"Declare Sub D Lib \"l@\" ()", 2, 21},
                             {"Declare Sub D@ Lib \"l\" ()", 2, 14},
                             {"Declare Function D Lib \"l\" (ByVal x@ As Long) As Long", 2, 36},
                             {"Type G@\r\nx As Long\r\nEnd Type", 2, 7},
                             {"Type G\r\nx@ As Long\r\ny As Long\r\nEnd Type", 3, 2},
                             {"Type G\r\nx As Long\r\ny As @Long\r\nEnd Type", 4, 6}};
constexpr Place kInComment[] = {{"Const A = 1 '@", 2, 14},
                                {"Const A = \"'\" '  a@", 2, 19},
                                {"Declare Sub D Lib \"l\" () ' @", 2, 28},
                                {"Type G '@\r\nx As Long\r\nEnd Type", 2, 9},
                                {"Type G\r\nx As Long 'a@\r\nEnd Type", 3, 13},
                                {"Type G\r\n'a@b\r\nx As Long\r\nEnd Type", 3, 3}};

class Losses : public testing::TestWithParam<Reading> {
 protected:
  // The module that has the declaration between two others, with the character put in.
  ParsedItems Read(const Place& place, std::string_view character) const {
    std::string source = "Const ONE = 1\r\n"s + place.declaration + "\r\nConst TWO = 2\r\n";
    source.replace(source.find('@'), 1, character);
    return ReadFile(source, RecognizeEncoding(source, kLibraryEncoding), GetParam());
  }
  [[nodiscard]] ParsedItems Read(std::u16string_view source) const {
    const auto utf8 = *EncodingOfName("utf-8");
    return ReadFile(ToUtf8(source), utf8, GetParam());
  }
};

INSTANTIATE_TEST_SUITE_P(Readings, Losses,
                         testing::Values(Reading::kVisualBasic, Reading::kLiteral));

TEST_P(Losses, ADeclarationWithASeparatorIsLeftOutAloneAndReported) {
  for (const auto& places : {std::span<const Place>(kInCode), std::span<const Place>(kInComment)}) {
    for (const auto& place : places) {
      for (const auto& separator : {"\0"s, "\1"s, "\2"s}) {
        const auto parsed = Read(place, separator);
        EXPECT_THAT(ReportOf(parsed), ElementsAre("2 separator " + std::to_string(place.line) +
                                                  ":" + std::to_string(place.column)))
            << place.declaration;
        EXPECT_THAT(TextsOf(parsed[Kind::kConst].names), ElementsAre(u"ONE", u"TWO"));
        EXPECT_TRUE(parsed[Kind::kDeclare].names.empty());
        EXPECT_TRUE(parsed[Kind::kType].names.empty());
      }
    }
  }
}

TEST_P(Losses, AForeignCharacterInCodeLeavesTheDeclarationOut) {
  for (const auto& place : kInCode) {
    for (const auto* character : {"\u2192", "\U0001F600"}) {
      const auto parsed = Read(place, character);
      EXPECT_THAT(ReportOf(parsed), ElementsAre("2 foreign " + std::to_string(place.line) + ":" +
                                                std::to_string(place.column)))
          << place.declaration;
      EXPECT_EQ(parsed.skipped.at(0).character->text, FromUtf8(character));
      EXPECT_THAT(TextsOf(parsed[Kind::kConst].names), ElementsAre(u"ONE", u"TWO"));
      EXPECT_TRUE(parsed[Kind::kDeclare].names.empty());
      EXPECT_TRUE(parsed[Kind::kType].names.empty());
    }
  }
}

TEST_P(Losses, AForeignCharacterInACommentIsReplacedAndReported) {
  for (const auto& place : kInComment) {
    for (const auto* character : {"\u2192", "\U0001F600"}) {
      const auto parsed = Read(place, character);
      EXPECT_THAT(ReportOf(parsed), ElementsAre("? " + std::to_string(place.line) + ":" +
                                                std::to_string(place.column)))
          << place.declaration;
      const auto expected = Read(place, "?");
      for (const auto kind : kKinds) {
        EXPECT_EQ(parsed[kind].names, expected[kind].names) << place.declaration;
        EXPECT_EQ(parsed[kind].items, expected[kind].items) << place.declaration;
      }
    }
  }
}

TEST_P(Losses, OutsideDeclarationsAreNone) {
  const auto parsed =
      Read(u"' \u2192 \x01\r\nSub S()\r\n  x = \"\u2192\"\r\nEnd Sub\r\nConst A = 1\r\n");
  EXPECT_THAT(ReportOf(parsed), IsEmpty());
  EXPECT_THAT(TextsOf(parsed[Kind::kConst].names), ElementsAre(u"A"));
}

TEST_P(Losses, EveryCharacterOfACommentIsReported) {
  const auto parsed = Read(u"Const A = 1 '\u2192\U0001F600x\u2192\r\n");
  EXPECT_THAT(ReportOf(parsed), ElementsAre("? 1:14", "? 1:15", "? 1:17"));
  EXPECT_THAT(TextsOf(parsed[Kind::kConst].items), ElementsAre(u"\x0E"
                                                               u"1 '??x?"));
}

TEST_P(Losses, OfADeclarationLeftOutNothingIsReportedAsReplaced) {
  const auto parsed = Read(u"Type T\r\n'\u2192\r\nx As \u2192\r\n'\u2192\r\nEnd Type\r\n");
  EXPECT_THAT(ReportOf(parsed), ElementsAre("1 foreign 3:6"));
}

TEST_P(Losses, WhatIsNotUtf8InAFileWithAMarkIsForeign) {
  const Encoding utf8 = {.form = Encoding::Form::kUtf8, .has_mark = true};
  const auto parsed = ReadFile(
      "\xEF\xBB\xBF"
      "Const A = \"\xFF\"\r\nConst B = 1",
      utf8, GetParam());
  EXPECT_THAT(ReportOf(parsed), ElementsAre("1 foreign 1:12"));
}

TEST_P(Losses, TheSameIsReadWhateverTheEncodingAndTheLineEndsAre) {
  const std::u16string text =
      u"Const \u010D = 1 '\u0161\nType T\n\t\u017E As Long\nEnd Type\nConst A = _\n \"\u0161\"\n";
  const auto expected = ParseText(Replace(text, u"\n", u"\r\n"));
  ASSERT_THAT(TextsOf(expected[Kind::kConst].names), ElementsAre(u"\u010D", u"A"));
  for (const auto* name : {"windows-1250", "windows-1257", "utf-8", "utf-16le", "utf-16be"}) {
    for (const auto* line_end : {u"\r\n", u"\n", u"\r"}) {
      for (const bool has_mark : {false, true}) {
        auto encoding = *EncodingOfName(name);
        if (has_mark && encoding.form == Encoding::Form::kCodePage) continue;
        const auto with_mark = has_mark ? u"\uFEFF" + text : text;
        const auto bytes = *EncodeText(Replace(with_mark, u"\n", line_end), encoding);
        encoding = RecognizeEncoding(bytes, encoding);
        ASSERT_EQ(encoding.has_mark, has_mark);
        ASSERT_EQ(EncodingName(encoding), name);
        const auto parsed = ReadFile(bytes, encoding, GetParam());
        EXPECT_THAT(ReportOf(parsed), IsEmpty()) << name;
        for (const auto kind : kKinds) {
          EXPECT_EQ(parsed[kind].names, expected[kind].names) << name;
          EXPECT_EQ(parsed[kind].items, expected[kind].items) << name;
        }
      }
    }
  }
}

TEST_P(Losses, AreNamedByTheLineOfTheFileWhateverItsLineEndsAre) {
  for (const auto* line_end : {u"\r\n", u"\n", u"\r"}) {
    const auto parsed =
        Read(Replace(u"\n\nConst A = _\n1 '\u2192\nConst \u2192 = 1\n", u"\n", line_end));
    EXPECT_THAT(ReportOf(parsed), ElementsAre("5 foreign 5:7", "? 4:4"));
  }
}

// Whatever stands in a source, what is read of it goes through a library's file unchanged.
TEST_P(Losses, WhatIsReadComesBackFromTheFile) {
  for (const auto& places : {std::span<const Place>(kInCode), std::span<const Place>(kInComment)}) {
    for (const auto& place : places) {
      for (const auto& character : {"\0"s, "\1"s, "\2"s, "\u2192"s, "\u010D"s, "\x03"s}) {
        const auto parsed = Read(place, character);
        Library library;
        for (const auto kind : kKinds)
          library.SetItems(kind, {parsed[kind].names, parsed[kind].items});
        const auto loaded = ParseLibrary(LibraryBytes(library), {});
        ASSERT_TRUE(loaded);
        for (const auto kind : kKinds) {
          EXPECT_EQ((*loaded)[kind].names, parsed[kind].names) << place.declaration;
          EXPECT_EQ((*loaded)[kind].items, parsed[kind].items) << place.declaration;
        }
      }
    }
  }
}

TEST_P(Losses, WhateverStandsInASourceALibraryCanKeepWhatIsRead) {
  constexpr auto kPieces = std::to_array<std::u16string_view>({u"\u2192",
                                                               u"\x01",
                                                               u"\U0001F600",
                                                               u"\xD800",
                                                               u"\u010D",
                                                               u"\r\n",
                                                               u"\r\n",
                                                               u" ",
                                                               u" _\r\n",
                                                               u"'",
                                                               u"\"",
                                                               u",",
                                                               u"=",
                                                               u"(",
                                                               u": ",
                                                               u"Const A = 1",
                                                               u"Const ",
                                                               u"Type B\r\n",
                                                               u"x As Long",
                                                               u"End Type\r\n",
                                                               u"Enum E\r\n",
                                                               u"C\r\n",
                                                               u"End Enum\r\n",
                                                               u"Declare Sub D Lib \"l\" (",
                                                               u")",
                                                               u"Rem ",
                                                               u"Global Const G = ",
                                                               u"#If VBA7 Then\r\n",
                                                               u"#End If\r\n"});
  Random random(17);
  for (int round = 0; round < 10'000; ++round) {
    const auto source = random.Text(kPieces, 14);
    auto parsed = ParseText(source);
    if (GetParam() == Reading::kVisualBasic) parsed = ReadAsVisualBasic(source, parsed).items;
    for (const auto kind : kKinds) {
      for (const auto name : parsed[kind].names) ASSERT_TRUE(IsKeepable(name)) << ToUtf8(source);
      for (const auto item : parsed[kind].items) ASSERT_TRUE(IsKeepable(item)) << ToUtf8(source);
    }
    for (const auto& line : parsed.skipped) {
      const auto character = line.character.value_or(LostCharacter{.text = u"\x01"});
      ASSERT_FALSE(IsKeepable(character.text)) << ToUtf8(source);
    }
    for (const auto& lost : parsed.replaced) ASSERT_FALSE(IsKeepable(lost.text)) << ToUtf8(source);
  }
}

TEST(LiteralLosses, RecordsAroundASeparatorAreLeftOutAndThoseBelowItKept) {
  const auto parsed =
      ParseSourceFile("Type A\r\nType B\r\nx\1\r\nType C 'h\r\ny\r\nEnd Type\r\nType D\r\nz");
  EXPECT_THAT(ReportOf(parsed), ElementsAre("1 separator 3:2", "2 separator 3:2"));
  EXPECT_THAT(TextsOf(parsed[Kind::kType].names), ElementsAre(u"C", u"D"));
  EXPECT_THAT(TextsOf(parsed[Kind::kType].items), ElementsAre(u"'h\x0Cy", u"\x0Cz"));
}

TEST(LiteralLosses, ANestedRecordWithABadHeaderLeavesTheOneAroundItOutToo) {
  const auto parsed = ParseSourceFile("Type A\r\nType B\1\r\nType C\r\nx\r\nEnd Type\r\n");
  EXPECT_THAT(ReportOf(parsed), ElementsAre("1 separator 2:7", "2 separator 2:7"));
  EXPECT_THAT(TextsOf(parsed[Kind::kType].names), ElementsAre(u"C"));
}

TEST(LiteralLosses, AMemberReadAsADeclarationTooIsReportedOnce) {
  const auto parsed = ParseText(u"Type T\r\n\tConst B = 1 '\u2192\r\nEnd Type\r\n");
  EXPECT_THAT(ReportOf(parsed), ElementsAre("? 2:15"));
  EXPECT_THAT(TextsOf(parsed[Kind::kType].items), ElementsAre(u"\x0C"
                                                              u"Const B = 1 '?"));
}

TEST(LiteralLosses, ANameThatBeginsLikeACommentIsLeftOutToo) {
  EXPECT_THAT(ReportOf(ParseText(u"Const '\u2192 = 1")), ElementsAre("1 foreign 1:8"));
}

struct VbCase {
  std::u16string_view source;
  Texts names;  // of constants
  Report report;
};

class VisualBasicLosses : public testing::TestWithParam<VbCase> {};

TEST_P(VisualBasicLosses, AreThoseOfTheDeclarationAlone) {
  const auto& [source, names, report] = GetParam();
  const auto parsed = ReadAsVisualBasic(source, ParseText(std::u16string(source))).items;
  EXPECT_EQ(TextsOf(parsed[Kind::kConst].names), names) << ToUtf8(source);
  EXPECT_EQ(ReportOf(parsed), report) << ToUtf8(source);
}

constexpr std::u16string_view kRefusedConst(u"Const A = 1, B = 2\0, C = 3\nConst D = 4", 38);
constexpr std::u16string_view kRefusedGlobal(u"Global Const G = 1\0", 19);
constexpr std::u16string_view kRefusedMember(u"Enum E\nA = 5\nB = 1\0\nC\nD = 7\nEnd Enum", 36);

INSTANTIATE_TEST_SUITE_P(
    Sources, VisualBasicLosses,
    testing::Values(
        VbCase{u"Const A = 1, B = \"\u2192\", C = 3 '\u2192",
               {u"A", u"C"},
               {"1 foreign 1:19", "? 1:30"}},
        VbCase{u"Const A = 1: x = \"\u2192\"", {u"A"}, {}},
        VbCase{u"Const A = \"\u2192\": Const B = \"\u2192\"",
               {},
               {"1 foreign 1:12", "1 foreign 1:27"}},
        VbCase{u"Global Const  G = 1 '\u2192", {u"G"}, {"? 1:22"}},
        VbCase{u"Enum E\n A = 1 ' \u2192\n B\u2192\n C\nEnd Enum", {u"A", u"C"}, {"3 foreign 3:3"}},
        VbCase{
            u"Enum E\n A = X\n B\u2192\n C\nEnd Enum", {u"A"}, {"3 foreign 3:3", "4 foreign 3:3"}},
        VbCase{u"Const A = \"\u2192\"\nSub S()\nConst A = 1\nEnd Sub", {}, {"1 foreign 1:12"}},
        VbCase{u"#If VBA7 Then\nConst A = \"\u2192\"\n#Else\nConst A = 1\n#End If", {u"A"}, {}},
        VbCase{kRefusedConst, {u"A", u"D"}, {"1 separator 1:19"}},
        VbCase{kRefusedGlobal, {}, {"1 separator 1:19"}},
        VbCase{kRefusedMember, {u"A", u"D"}, {"3 separator 3:6"}},
        VbCase{u"Const A = 1 2 '\u2192", {u"A"}, {"? 1:16"}}));

TEST(VisualBasicLosses, AreNoDifference) {
  const std::u16string_view source = u"Const A = \"\u2192\"\r\nConst B = 1 '\u2192\r\n";
  EXPECT_TRUE(ReadAsVisualBasic(source, ParseText(std::u16string(source))).differences.empty());
}

}  // namespace
}  // namespace declarium
