#include "vb/like.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "support/texts.h"

namespace declarium {
namespace {

// The plain recursive reading of the same rules, for patterns without lists.
bool NaiveMatches(std::u16string_view text, std::u16string_view pattern) {
  if (pattern.empty()) return text.empty();
  if (pattern[0] == u'*') {
    for (std::size_t i = 0; i <= text.size(); ++i) {
      if (NaiveMatches(text.substr(i), pattern.substr(1))) return true;
    }
    return false;
  }
  if (text.empty()) return false;
  const bool accepted = pattern[0] == u'?' ||
                        (pattern[0] == u'#' && text[0] >= u'0' && text[0] <= u'9') ||
                        pattern[0] == text[0];
  return accepted && NaiveMatches(text.substr(1), pattern.substr(1));
}

TEST(Like, AgreesWithTheNaiveMatcherOnAllSmallPatternsAndTexts) {
  const auto texts = AllTexts(u"ab1", 5);
  for (const auto& pattern : AllTexts(u"ab*?#", 4)) {
    const LikePattern compiled(pattern);
    for (const auto& text : texts) {
      ASSERT_EQ(compiled.Matches(text), NaiveMatches(text, pattern))
          << "pattern " << std::string(pattern.begin(), pattern.end()) << " text "
          << std::string(text.begin(), text.end());
    }
  }
}

struct ListCase {
  std::u16string_view pattern;
  std::u16string_view accepted;  // every single character that must match
  std::u16string_view refused;
};

TEST(Like, ListsHoldCharactersAndRanges) {
  const ListCase cases[] = {
      {u"[abc]", u"abc", u"d]["},  {u"[a-c]", u"abc", u"d-"},
      {u"[!a-c]", u"d!-", u"abc"}, {u"[!a-z!0-9]", u" -[", u"az!09"},
      {u"[a!b]", u"a!b", u"c"},    {u"[-a]", u"-a", u"b"},
      {u"[a-]", u"-a", u"b"},      {u"[a-c-e]", u"abc-e", u"d"},
      {u"[!!]", u"a", u"!"},       {u"[!]", u"!", u"a]"},
      {u"[*?#]", u"*?#", u"a1"},   {u"[[]", u"[", u"]"},
      {u"]", u"]", u"["},          {u"[!-a]", u"b", u"-a"},
  };
  for (const auto& c : cases) {
    for (const char16_t unit : c.accepted) {
      EXPECT_TRUE(Matches(std::u16string(1, unit), c.pattern)) << static_cast<char>(unit);
    }
    for (const char16_t unit : c.refused) {
      EXPECT_FALSE(Matches(std::u16string(1, unit), c.pattern)) << static_cast<char>(unit);
    }
    EXPECT_FALSE(Matches(u"", c.pattern));
  }
}

// Whether the pattern reads to its end: every list is closed and no range runs downwards.
bool IsWellFormed(std::u16string_view pattern) {
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] != u'[') continue;
    const auto close = pattern.find(u']', i);
    if (close == pattern.npos) return false;
    auto first = i + 1;
    if (pattern[first] == u'!' && close > first + 1) ++first;
    while (first < close) {
      const bool is_range = pattern[first + 1] == u'-' && first + 2 < close;
      if (is_range && pattern[first] > pattern[first + 2]) return false;
      first += is_range ? 3 : 1;
    }
    i = close;
  }
  return true;
}

bool IsListed(std::u16string_view list, char16_t unit) {
  if (list.empty()) return false;
  if (list.size() > 2 && list[1] == u'-') {
    return (unit >= list[0] && unit <= list[2]) || IsListed(list.substr(3), unit);
  }
  return list[0] == unit || IsListed(list.substr(1), unit);
}

// The plain recursive reading with lists, for well-formed patterns.
bool NaiveMatchesWithLists(std::u16string_view text, std::u16string_view pattern) {
  if (!pattern.starts_with(u'[')) {
    if (pattern.empty()) return text.empty();
    if (pattern[0] == u'*') {
      return NaiveMatchesWithLists(text, pattern.substr(1)) ||
             (!text.empty() && NaiveMatchesWithLists(text.substr(1), pattern));
    }
    return !text.empty() && NaiveMatches(text.substr(0, 1), pattern.substr(0, 1)) &&
           NaiveMatchesWithLists(text.substr(1), pattern.substr(1));
  }
  const auto close = pattern.find(u']');
  auto list = pattern.substr(1, close - 1);
  const auto rest = pattern.substr(close + 1);
  if (list.empty()) return NaiveMatchesWithLists(text, rest);
  if (text.empty()) return false;
  const bool negated = list.size() > 1 && list[0] == u'!';
  if (negated) list.remove_prefix(1);
  return IsListed(list, text[0]) != negated && NaiveMatchesWithLists(text.substr(1), rest);
}

TEST(Like, AgreesWithTheNaiveMatcherOnAllSmallPatternsWithLists) {
  const auto texts = AllTexts(u"abc!-]", 3);
  for (const auto& pattern : AllTexts(u"[]!-ac*", 6)) {
    const LikePattern compiled(pattern);
    const bool well_formed = IsWellFormed(pattern);
    for (const auto& text : texts) {
      ASSERT_EQ(compiled.Matches(text), well_formed && NaiveMatchesWithLists(text, pattern))
          << "pattern " << testing::PrintToString(pattern) << " text "
          << testing::PrintToString(text);
    }
  }
}

TEST(Like, TheStepsOfTheHostLanguage) {
  const struct {
    std::u16string_view text;
    std::u16string_view pattern;
    bool matches;
  } cases[] = {
      {u"abc", u"*a?c*", true},
      {u"a1c", u"*a?c*", true},
      {u"ac", u"*a?c*", false},
      {u"window", u"*", true},
      {u"", u"*", true},
      {u"", u"", true},
      {u"a", u"", false},
      {u"a5", u"a#", true},
      {u"ax", u"a#", false},
      {u"a\u0665", u"a#", false},
      {u"getwindow", u"get*dow", true},
      {u"getwindows", u"get*dow", false},
      {u"a-c", u"a[-]c", true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Matches(c.text, c.pattern), c.matches)
        << testing::PrintToString(c.text) << " " << testing::PrintToString(c.pattern);
  }
}

TEST(Like, EmptyListMatchesTheEmptyText) {
  EXPECT_TRUE(Matches(u"", u"[]"));
  EXPECT_TRUE(Matches(u"ab", u"a[]b"));
  EXPECT_FALSE(Matches(u"a", u"[]"));
}

TEST(Like, MalformedPatternMatchesNothing) {
  for (const std::u16string_view pattern : {u"[", u"*[", u"a[b", u"[z-a]", u"*[!z-a]*", u"[!"}) {
    for (const std::u16string_view text : {u"", u"[", u"a", u"a[b", u"z"}) {
      EXPECT_FALSE(Matches(text, pattern));
    }
  }
}

TEST(Like, ComparesByCodeUnit) {
  EXPECT_FALSE(Matches(u"A", u"a"));
  EXPECT_TRUE(Matches(u"\u010D", u"[\u010C-\u010E]"));
}

TEST(Like, ManyStarsTakeNoExponentialTime) {
  std::u16string pattern;
  for (int i = 0; i < 200; ++i) pattern += u"*a";
  pattern += u"*b";
  EXPECT_FALSE(Matches(std::u16string(5000, u'a'), pattern));
  EXPECT_TRUE(Matches(std::u16string(5000, u'a') + u"b", pattern));
}

}  // namespace
}  // namespace declarium
