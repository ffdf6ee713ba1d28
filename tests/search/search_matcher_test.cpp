#include "search/search_matcher.h"

#include <gtest/gtest.h>

#include "support/full_text.h"
#include "support/texts.h"
#include "text/text.h"
#include "vb/keyword.h"
#include "vb/number.h"

namespace declarium {
namespace {

SearchCriteria NameIs(std::u16string text, bool whole = false) {
  SearchCriteria criteria;
  criteria.nameText = std::move(text);
  criteria.nameWhole = whole;
  return criteria;
}
SearchCriteria TypeIs(std::u16string text, bool whole = false) {
  SearchCriteria criteria;
  criteria.typeText = std::move(text);
  criteria.typeWhole = whole;
  return criteria;
}
SearchCriteria ConstIs(std::u16string text, bool whole = false) {
  SearchCriteria criteria;
  criteria.constText = std::move(text);
  criteria.constWhole = whole;
  return criteria;
}
SearchCriteria ValueIs(std::u16string text, bool whole = false, bool as_number = false) {
  SearchCriteria criteria;
  criteria.valueText = std::move(text);
  criteria.valueWhole = whole;
  criteria.valueAsNumber = as_number;
  return criteria;
}
SearchCriteria NumberIs(std::u16string text) {
  return ValueIs(std::move(text), true, true);
}
SearchCriteria ArgIs(std::u16string text, bool whole = false) {
  SearchCriteria criteria;
  criteria.argText = std::move(text);
  criteria.argWhole = whole;
  return criteria;
}
SearchCriteria FullTextIs(std::u16string text, bool whole_words = false) {
  SearchCriteria criteria;
  criteria.fullText = std::move(text);
  criteria.fullWholeWords = whole_words;
  return criteria;
}

constexpr bool kWhole = true;

bool ConstHit(const SearchCriteria& criteria, std::u16string_view value,
              std::u16string_view name = u"Name") {
  return SearchMatcher(criteria).Matches(Kind::kConst, name, u"Type\x0E" + std::u16string(value));
}
bool DeclareHit(const SearchCriteria& criteria, std::u16string_view tail) {
  return SearchMatcher(criteria).Matches(Kind::kDeclare, u"Name", u"\x0B" + std::u16string(tail));
}
bool TypeHit(const SearchCriteria& criteria, std::u16string_view members) {
  return SearchMatcher(criteria).Matches(Kind::kType, u"Name",
                                         u"'header\x0C" + std::u16string(members));
}

TEST(SearchMatcher, AnEmptyTextIsNoCriterion) {
  EXPECT_FALSE(SearchMatcher(SearchCriteria()).HasCriteria());
  SearchCriteria flags_only;
  flags_only.nameWhole = flags_only.valueAsNumber = flags_only.fullWholeWords = true;
  EXPECT_FALSE(SearchMatcher(flags_only).HasCriteria());
  for (const auto& criteria :
       {NameIs(u"a"), TypeIs(u"a"), ConstIs(u"a"), ValueIs(u"a"), ArgIs(u"a"), FullTextIs(u"a")}) {
    EXPECT_TRUE(SearchMatcher(criteria).HasCriteria());
  }
}

TEST(SearchByName, WholeOrAnywhereInAnyCase) {
  for (const auto kind : kKinds) {
    const auto hit = [&](const SearchCriteria& criteria, std::u16string_view name) {
      return SearchMatcher(criteria).Matches(kind, name, u"");
    };
    EXPECT_TRUE(hit(NameIs(u"*", kWhole), u"Anything"));
    EXPECT_TRUE(hit(NameIs(u"getwindow", kWhole), u"GetWindow"));
    EXPECT_FALSE(hit(NameIs(u"getwindow", kWhole), u"GetWindowText"));
    EXPECT_TRUE(hit(NameIs(u"GETWINDOW"), u"GetWindowText"));
    EXPECT_TRUE(hit(NameIs(u"get*text", kWhole), u"GetWindowText"));
    EXPECT_FALSE(hit(NameIs(u"[", kWhole), u"["));
  }
}

TEST(SearchByName, WithOthersTheNameMustMatchToo) {
  auto criteria = ValueIs(u"5", kWhole);
  criteria.nameText = u"show";
  EXPECT_TRUE(ConstHit(criteria, u"5", u"SW_SHOW"));
  EXPECT_FALSE(ConstHit(criteria, u"5", u"SW_HIDE"));
  EXPECT_FALSE(ConstHit(criteria, u"6", u"SW_SHOW"));
  criteria.nameText = u"*";
  EXPECT_FALSE(DeclareHit(criteria, u"5")) << "a Declare has no value";
}

TEST(SearchByName, WithSeveralOthersOneOfThemIsEnough) {
  auto criteria = ValueIs(u"5", kWhole);
  criteria.nameText = u"show";
  criteria.fullText = u"note";
  EXPECT_TRUE(ConstHit(criteria, u"6 'note", u"SW_SHOW"));
  EXPECT_FALSE(ConstHit(criteria, u"6", u"SW_SHOW"));
  criteria.nameText.clear();
  EXPECT_TRUE(ConstHit(criteria, u"5", u"SW_HIDE")) << "criteria besides the name are alternatives";
}

TEST(SearchMatcher, ACriterionThatAKindDoesNotKnowNeverMatches) {
  EXPECT_FALSE(ConstHit(TypeIs(u"*"), u"1 As Long"));
  EXPECT_FALSE(ConstHit(ArgIs(u"*"), u"(a)"));
  EXPECT_FALSE(DeclareHit(ConstIs(u"*"), u"(a)"));
  EXPECT_FALSE(DeclareHit(ValueIs(u"*"), u"(a)"));
}

TEST(SearchByConstant, LooksAtTheNamesInAValue) {
  EXPECT_TRUE(ConstHit(ConstIs(u"max_path", kWhole), u"MAX_PATH + 1"));
  EXPECT_TRUE(ConstHit(ConstIs(u"path"), u"MAX_PATH + 1"));
  EXPECT_FALSE(ConstHit(ConstIs(u"path", kWhole), u"MAX_PATH + 1"));
  EXPECT_TRUE(ConstHit(ConstIs(u"a", kWhole), u"(B Or (A))"));
  EXPECT_TRUE(ConstHit(ConstIs(u"*", kWhole), u"A"));
  EXPECT_TRUE(ConstHit(ConstIs(u"+", kWhole), u"A + B"));
}

TEST(SearchByConstant, LeavesOutKeywordsNumbersAndQuotedWords) {
  EXPECT_FALSE(ConstHit(ConstIs(u"or", kWhole), u"A Or B"));
  EXPECT_FALSE(ConstHit(ConstIs(u"*"), u"10"));
  EXPECT_FALSE(ConstHit(ConstIs(u"*"), u"&H10"));
  EXPECT_FALSE(ConstHit(ConstIs(u"*"), u"10 Or &H10"));
  EXPECT_FALSE(ConstHit(ConstIs(u"b", kWhole), u"A & \"b\" & C"));
  EXPECT_FALSE(ConstHit(ConstIs(u"*b*", kWhole), u"1 & \"b\" & 2"));
  EXPECT_FALSE(ConstHit(ConstIs(u"*b*", kWhole), u"1 & \"b c"));
}

TEST(SearchByConstant, DropsTheOuterQuotesFirst) {
  EXPECT_TRUE(ConstHit(ConstIs(u"max_path", kWhole), u"\"max_path\""));
  EXPECT_TRUE(ConstHit(ConstIs(u"some", kWhole), u"\"some text\""));
  EXPECT_FALSE(ConstHit(ConstIs(u"*max*", kWhole), u"\"\"max\"\""));
}

TEST(SearchByConstant, DoesNotLookIntoAComment) {
  EXPECT_FALSE(ConstHit(ConstIs(u"note"), u"1 'note"));
  EXPECT_TRUE(ConstHit(ConstIs(u"a'note", kWhole), u"A'note")) << "a comment needs its blank";
}

TEST(SearchByConstant, AnEmptyWordMatchesAStarAndAnEmptyValueNothing) {
  EXPECT_TRUE(ConstHit(ConstIs(u"*", kWhole), u"1  2"));
  EXPECT_FALSE(ConstHit(ConstIs(u"*", kWhole), u""));
  EXPECT_FALSE(ConstHit(ConstIs(u"*", kWhole), u"\"\""));
}

TEST(SearchByValue, MatchesTheValueOfAConst) {
  EXPECT_TRUE(ConstHit(ValueIs(u"5", kWhole), u"5"));
  EXPECT_TRUE(ConstHit(ValueIs(u"5"), u"15"));
  EXPECT_FALSE(ConstHit(ValueIs(u"5", kWhole), u"15"));
  EXPECT_TRUE(ConstHit(ValueIs(u"5", kWhole), u"5 'five"));
  EXPECT_TRUE(ConstHit(ValueIs(u"5", kWhole), u"(5)"));
  EXPECT_TRUE(ConstHit(ValueIs(u"text", kWhole), u"\"Text\""));
  EXPECT_TRUE(ConstHit(ValueIs(u"*", kWhole), u""));
  EXPECT_FALSE(ConstHit(ValueIs(u"16", kWhole), u"&H10"));
}

TEST(SearchByValue, AsANumberCoversEveryBase) {
  EXPECT_TRUE(ConstHit(NumberIs(u"16"), u"&H10"));
  EXPECT_TRUE(ConstHit(NumberIs(u"16"), u"&O20"));
  EXPECT_TRUE(ConstHit(NumberIs(u"16"), u"16"));
  EXPECT_TRUE(ConstHit(NumberIs(u"16"), u"\"16\""));
  EXPECT_TRUE(ConstHit(NumberIs(u"0"), u"A")) << "no number reads as 0";
  EXPECT_TRUE(ConstHit(NumberIs(u"-1"), u"&HFFFF"));
  EXPECT_TRUE(ConstHit(NumberIs(u"65535"), u"&HFFFF&"));
  EXPECT_TRUE(ConstHit(NumberIs(u"1E+20"), u"1e20")) << "both are lower-cased";
  EXPECT_FALSE(ConstHit(NumberIs(u"*"), u"1e999")) << "no number a double can hold";
}

TEST(SearchByFullText, LooksAtTheWholeValueOfAConstAlone) {
  EXPECT_TRUE(ConstHit(FullTextIs(u"note"), u"1 'a note"));
  EXPECT_FALSE(ConstHit(FullTextIs(u"type"), u"1"));
  EXPECT_FALSE(ConstHit(FullTextIs(u"name"), u"1"));
  EXPECT_FALSE(ConstHit(FullTextIs(u"a.b"), u"a.b")) << "punctuation reads as blanks";
  EXPECT_TRUE(ConstHit(FullTextIs(u"a b"), u"a.b"));
}

TEST(SearchByFullText, WholeWordsEndAtAnythingButLettersDigitsAndExclamationMarks) {
  const auto word = FullTextIs(u"long", true);
  EXPECT_TRUE(TypeHit(word, u"x As Long"));
  EXPECT_TRUE(TypeHit(word, u"x As Long\ry"));
  EXPECT_FALSE(TypeHit(word, u"x As LongPtr"));
  EXPECT_FALSE(TypeHit(word, u"x As Long!"));
  EXPECT_FALSE(TypeHit(word, u"x As Long1"));
  EXPECT_TRUE(TypeHit(word, u"x As Long_")) << "an underscore ends a word";
  EXPECT_TRUE(TypeHit(word, u"(long)"));
  EXPECT_TRUE(TypeHit(FullTextIs(u"long"), u"x As LongPtr"));
}

TEST(SearchByFullText, SeesTrimmedLowerCaseWithBlanksForPunctuation) {
  // With a unit more in front the pattern is longer than the text that is seen.
  const auto sees = [](std::u16string_view members, const std::u16string& seen) {
    return TypeHit(FullTextIs(seen), members) && !TypeHit(FullTextIs(u"?" + seen), members);
  };
  EXPECT_TRUE(sees(u"  A.b,C(d)E'f\rG  ", u" a b c d e f\rg "));
  EXPECT_TRUE(sees(u"\t\"x\" - Č", u" \t\"x\" - č "));
  for (const auto& text : AllTexts(u"A .,'(", 5))
    ASSERT_TRUE(sees(text, NormalizeFullText(text))) << ToUtf8(text);
}

TEST(SearchByType, LooksBehindEveryAsOfADeclare) {
  constexpr std::u16string_view kTail =
      u"\"user32\" (ByVal h As Long, r As RECT) As Boolean 'as note";
  EXPECT_TRUE(DeclareHit(TypeIs(u"rect", kWhole), kTail));
  EXPECT_TRUE(DeclareHit(TypeIs(u"long", kWhole), kTail));
  EXPECT_TRUE(DeclareHit(TypeIs(u"boolean", kWhole), kTail)) << "the return type";
  EXPECT_FALSE(DeclareHit(TypeIs(u"note"), kTail)) << "a comment";
  EXPECT_FALSE(DeclareHit(TypeIs(u"h"), kTail));
  EXPECT_TRUE(DeclareHit(TypeIs(u"as", kWhole), u"x As As As y"));
  EXPECT_TRUE(DeclareHit(TypeIs(u"y", kWhole), u"x As As y"));
}

TEST(SearchByArgument, LooksAtTheFirstWordOfEveryParameter) {
  constexpr std::u16string_view kTail =
      u"\"l\" (ByVal hWnd As Long, ByRef r As RECT, Optional ByVal n As Long)";
  EXPECT_TRUE(DeclareHit(ArgIs(u"hwnd", kWhole), kTail));
  EXPECT_TRUE(DeclareHit(ArgIs(u"r", kWhole), kTail));
  EXPECT_TRUE(DeclareHit(ArgIs(u"optional", kWhole), kTail));
  EXPECT_FALSE(DeclareHit(ArgIs(u"n", kWhole), kTail));
  EXPECT_FALSE(DeclareHit(ArgIs(u"long", kWhole), kTail));
}

TEST(SearchByArgument, ADeclareWithoutBracketsHasNoParameters) {
  for (const std::u16string_view tail : {u"\"l\"", u"\"l\" (a", u"\"l\" )a(", u"\"l\" ()", u""}) {
    EXPECT_FALSE(DeclareHit(ArgIs(u"*", kWhole), tail)) << testing::PrintToString(tail);
  }
}

TEST(SearchByArgument, TheListEndsAtTheFirstClosingBracket) {
  EXPECT_TRUE(DeclareHit(ArgIs(u"a(", kWhole), u"(a() As Long, b As Long)"));
  EXPECT_FALSE(DeclareHit(ArgIs(u"b"), u"(a() As Long, b As Long)"));
}

TEST(SearchByFullText, LooksAtADeclareWithoutItsMarker) {
  EXPECT_TRUE(DeclareHit(FullTextIs(u"user32"), u"\"user32\" ()"));
  EXPECT_FALSE(DeclareHit(FullTextIs(u"\x0B"), u"\"user32\" ()"));
}

TEST(SearchByType, LooksAtTheFirstAsOfAMember) {
  EXPECT_TRUE(TypeHit(TypeIs(u"rect", kWhole), u"x As Long\rr As RECT 'note"));
  EXPECT_TRUE(TypeHit(TypeIs(u"string", kWhole), u"s As String * 5"));
  EXPECT_FALSE(TypeHit(TypeIs(u"rect"), u"'r As RECT"));
  EXPECT_FALSE(TypeHit(TypeIs(u"rect"), u"x 'r As RECT"));
  EXPECT_FALSE(TypeHit(TypeIs(u"b", kWhole), u"x As A As B"));
}

TEST(SearchByConstant, LooksAtBoundsAndStringLengths) {
  const auto max_path = ConstIs(u"max_path", kWhole);
  EXPECT_TRUE(TypeHit(max_path, u"s As String * MAX_PATH"));
  EXPECT_TRUE(TypeHit(max_path, u"b(MAX_PATH) As Byte"));
  EXPECT_TRUE(TypeHit(max_path, u"b(0 To MAX_PATH) As Byte"));
  EXPECT_FALSE(TypeHit(max_path, u"b As MAX_PATH"));
  EXPECT_FALSE(TypeHit(ConstIs(u"to", kWhole), u"b(0 To 5) As Byte"));
  EXPECT_FALSE(TypeHit(ConstIs(u"*", kWhole), u"b(0 To &H5) As Byte"));
  EXPECT_FALSE(TypeHit(ConstIs(u"*", kWhole), u"s As String * 5"));
  EXPECT_FALSE(TypeHit(ConstIs(u"*", kWhole), u"s As String * &H5"));
  EXPECT_FALSE(TypeHit(ConstIs(u"*", kWhole), u"b() As Byte"));
  EXPECT_FALSE(TypeHit(max_path, u"'b(MAX_PATH) As Byte"));
  EXPECT_FALSE(TypeHit(max_path, u"b)MAX_PATH( As Byte"));
  EXPECT_TRUE(TypeHit(max_path, u"s As String * MAX_PATH 'note")) << "the comment is cut off";
  EXPECT_TRUE(TypeHit(ConstIs(u"max_path x", kWhole), u"s As String * MAX_PATH x"));
}

TEST(SearchByValue, LooksAtBoundsAndStringLengths) {
  EXPECT_TRUE(TypeHit(ValueIs(u"260", kWhole), u"b(0 To 260) As Byte"));
  EXPECT_TRUE(TypeHit(ValueIs(u"to", kWhole), u"b(0 To 260) As Byte")) << "every word counts";
  EXPECT_TRUE(TypeHit(ValueIs(u"260", kWhole), u"s As String * 260"));
  EXPECT_FALSE(TypeHit(ValueIs(u"260", kWhole), u"s As Long 260"));
  EXPECT_FALSE(TypeHit(NumberIs(u"16"), u"b(&H10) As Byte")) << "bounds are never numbers";
  EXPECT_TRUE(TypeHit(NumberIs(u"16"), u"s As String * &H10"));
  EXPECT_FALSE(TypeHit(ValueIs(u"16", kWhole), u"s As String * &H10"));
}

TEST(SearchByArgument, LooksAtMemberNames) {
  EXPECT_TRUE(TypeHit(ArgIs(u"left", kWhole), u"Left As Long\rTop As Long"));
  EXPECT_TRUE(TypeHit(ArgIs(u"top", kWhole), u"Left As Long\rTop As Long"));
  EXPECT_FALSE(TypeHit(ArgIs(u"b", kWhole), u"b(5) As Byte"));
  EXPECT_TRUE(TypeHit(ArgIs(u"b(0", kWhole), u"b(0 To 5) As Byte"));
  EXPECT_TRUE(TypeHit(ArgIs(u"'note", kWhole), u"'note here")) << "comments are not removed here";
  EXPECT_FALSE(TypeHit(ArgIs(u"*", kWhole), u"\r\r"));
}

TEST(SearchByFullText, LooksAtMembersButNotAtTheHeader) {
  EXPECT_TRUE(TypeHit(FullTextIs(u"note"), u"x As Long 'note"));
  EXPECT_FALSE(TypeHit(FullTextIs(u"header"), u"x As Long"));
}

TEST(SearchMatcher, AnItemWithoutItsSeparatorIsSearchedAsEmpty) {
  EXPECT_FALSE(SearchMatcher(FullTextIs(u"x")).Matches(Kind::kType, u"N", u"x"));
  EXPECT_FALSE(SearchMatcher(FullTextIs(u"x")).Matches(Kind::kConst, u"N", u"x"));
  EXPECT_TRUE(SearchMatcher(ValueIs(u"*")).Matches(Kind::kConst, u"N", u""));
}

// The tests of the kinds written out, without any pattern prepared.
struct PlainMatcher {
  const SearchCriteria& criteria;

  [[nodiscard]] static std::u16string Pattern(const std::u16string& text, bool whole) {
    if (text.empty()) return {};
    return whole ? LowerCase(text) : u"*" + LowerCase(text) + u"*";
  }
  [[nodiscard]] static bool Is(const std::u16string& pattern, std::u16string_view text) {
    return !pattern.empty() && declarium::Matches(text, pattern);
  }
  [[nodiscard]] bool Name(std::u16string_view name) const {
    return Is(Pattern(criteria.nameText, criteria.nameWhole), LowerCase(name));
  }
  [[nodiscard]] bool TypeText(std::u16string_view t) const {
    return Is(Pattern(criteria.typeText, criteria.typeWhole), t);
  }
  [[nodiscard]] bool Constant(std::u16string_view t) const {
    return Is(Pattern(criteria.constText, criteria.constWhole), t);
  }
  [[nodiscard]] bool Value(std::u16string_view t) const {
    return Is(Pattern(criteria.valueText, criteria.valueWhole), t);
  }
  [[nodiscard]] bool ValueOrNumber(std::u16string_view t) const {
    if (!criteria.valueAsNumber) return Value(t);
    const auto number = ValText(t);
    return number && Value(LowerCase(*number));
  }
  [[nodiscard]] bool Arg(std::u16string_view t) const {
    return Is(Pattern(criteria.argText, criteria.argWhole), t);
  }
  [[nodiscard]] bool Full(std::u16string_view t) const {
    if (criteria.fullText.empty()) return false;
    auto pattern = Pattern(criteria.fullText, false);
    if (criteria.fullWholeWords) {
      pattern = u"*[!a-z!0-9]" + LowerCase(criteria.fullText) + u"[!a-z!0-9]*";
    }
    return Is(pattern, NormalizeFullText(t));
  }
  [[nodiscard]] static bool IsNumberLike(std::u16string_view t) {
    return !t.empty() && (IsDigit(t[0]) || t[0] == u'&');
  }
  [[nodiscard]] static std::u16string_view Before(std::u16string_view t, std::u16string_view end) {
    const auto found = t.find(end);
    return found == t.npos ? t : t.substr(0, found);
  }

  [[nodiscard]] bool Const(std::u16string_view value) const {
    auto v = std::u16string(Before(LowerCase(value), u" '"));
    v = Replace(Replace(v, u"(", u""), u")", u"");
    if (!v.empty() && v.front() == u'"') v = v.substr(1);
    if (!v.empty() && v.back() == u'"') v.pop_back();
    for (const auto token : Split(v, u' ')) {
      const bool quoted = !token.empty() && (token.front() == u'"' || token.back() == u'"');
      if (!IsKeyword(token) && !quoted && !IsNumberLike(token) && Constant(token)) return true;
    }
    return ValueOrNumber(v) || Full(value);
  }

  [[nodiscard]] bool Declare(std::u16string_view d) const {
    auto s = std::u16string(Before(LowerCase(d), u" '"));
    for (const std::u16string_view unit : {u"(", u")", u","}) s = Replace(s, unit, u"");
    s += u" ";
    for (std::size_t i = 0; i + 4 <= s.size(); ++i) {
      if (s.substr(i, 4) == u" as " && TypeText(Before(std::u16string_view(s).substr(i + 4), u" ")))
        return true;
    }
    std::u16string parameters;
    if (const auto open = d.find(u'('); open != d.npos) {
      const auto rest = d.substr(open + 1);
      if (const auto close = rest.find(u')'); close != rest.npos) {
        parameters = LowerCase(rest.substr(0, close));
      }
    }
    parameters = Replace(Replace(parameters, u"byval ", u""), u"byref ", u"");
    for (const auto parameter : Split(parameters, u", ")) {
      if (Arg(Before(parameter, u" "))) return true;
    }
    return Full(d);
  }

  [[nodiscard]] bool Type(std::u16string_view members) const {
    const auto lowered = LowerCase(members);
    for (auto line : Split(lowered, u'\r')) {
      if (line.contains(u'\'')) line = TrimRight(Before(line, u"'"));
      if (const auto as = line.find(u" as "); as != line.npos) {
        if (TypeText(Before(line.substr(as + 4), u" "))) return true;
      }
      const auto open = line.find(u'(');
      const auto close = open == line.npos ? line.npos : line.find(u')', open);
      if (close != line.npos) {
        for (const auto token : Split(line.substr(open + 1, close - open - 1), u' ')) {
          if (!IsKeyword(token) && !IsNumberLike(token) && Constant(token)) return true;
          if (Value(token)) return true;
        }
      }
      constexpr std::u16string_view kLength = u" as string * ";
      if (const auto found = line.find(kLength); found != line.npos) {
        const auto rest = line.substr(found + kLength.size());
        if (!IsNumberLike(rest) && Constant(rest)) return true;
        if (ValueOrNumber(rest)) return true;
      }
    }
    if (Full(members)) return true;
    for (const auto line : Split(lowered, u'\r')) {
      if (!line.empty() && Arg(Before(line, u" "))) return true;
    }
    return false;
  }

  [[nodiscard]] bool Matches(Kind kind, std::u16string_view name,
                             std::u16string_view fields) const {
    const bool others = !criteria.typeText.empty() || !criteria.constText.empty() ||
                        !criteria.valueText.empty() || !criteria.argText.empty() ||
                        !criteria.fullText.empty();
    if (!others) return Name(name);
    const bool hit = kind == Kind::kConst     ? Const(fields)
                     : kind == Kind::kDeclare ? Declare(fields)
                                              : Type(fields);
    return hit && (criteria.nameText.empty() || Name(name));
  }
};

TEST(SearchMatcher, AgreesWithItsSlowTwinOnRandomItemsAndCriteria) {
  Random random(15);
  const std::vector<std::u16string> pieces = {
      u"A", u"b",  u"RECT", u"Long", u"To", u" ",  u" ",      u" As ",   u" As String * ", u"(",
      u")", u", ", u"\"",   u"'",    u" '", u"\r", u"ByVal ", u"ByRef ", u"&H10",          u"16"};
  const std::vector<std::u16string> texts = {u"a", u"B",      u"rect", u"long", u"*", u"16",
                                             u"?", u"[!a-z]", u"to",   u" ",    u"#", u"'"};
  const auto text_or_none = [&] { return random.Below(3) == 0 ? random.Text(texts, 1) : u""; };
  for (int round = 0; round < 20'000; ++round) {
    SearchCriteria criteria;
    criteria.nameText = text_or_none();
    criteria.typeText = text_or_none();
    criteria.constText = text_or_none();
    criteria.valueText = text_or_none();
    criteria.argText = text_or_none();
    criteria.fullText = text_or_none();
    for (auto* flag :
         {&criteria.nameWhole, &criteria.typeWhole, &criteria.constWhole, &criteria.valueWhole,
          &criteria.valueAsNumber, &criteria.argWhole, &criteria.fullWholeWords}) {
      *flag = random.Below(2) == 0;
    }
    SearchMatcher matcher(criteria);
    if (!matcher.HasCriteria()) continue;
    const PlainMatcher plain{criteria};
    for (const auto kind : kKinds) {
      const auto fields = random.Text(pieces, 12);
      const auto name = random.Text(pieces, 2);
      const auto item = kind == Kind::kConst     ? u"T\x0E" + fields
                        : kind == Kind::kDeclare ? u"\n" + fields
                                                 : u"h\x0C" + fields;
      ASSERT_EQ(matcher.Matches(kind, name, item), plain.Matches(kind, name, fields))
          << KindCode(kind) << " " << testing::PrintToString(fields);
    }
  }
}

}  // namespace
}  // namespace declarium
