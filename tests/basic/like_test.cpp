#include "basic/like.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

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

std::vector<std::u16string> AllTexts(std::u16string_view alphabet, std::size_t longest) {
  std::vector<std::u16string> texts = {u""};
  for (std::size_t first = 0, length = 0; length < longest; ++length) {
    const auto last = texts.size();
    for (; first < last; ++first) {
      for (const char16_t unit : alphabet) texts.push_back(texts[first] + unit);
    }
  }
  return texts;
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
