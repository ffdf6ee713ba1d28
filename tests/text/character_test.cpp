#include "text/character.h"

#include <gtest/gtest.h>

namespace declarium {
namespace {

struct Case {
  std::u16string_view text;
  char32_t first;
  std::size_t length;
  std::size_t count;
  std::string_view name;
};

class Characters : public testing::TestWithParam<Case> {};

TEST_P(Characters, AreUnitsOrSurrogatePairs) {
  const auto& [text, first, length, count, name] = GetParam();
  EXPECT_EQ(CharacterAt(text, 0), first);
  EXPECT_EQ(CharacterLength(text, 0), length);
  EXPECT_EQ(CountCharacters(text), count);
  EXPECT_EQ(CodePointText(text), name);
}

constexpr char16_t kHighTwice[] = {0xD83D, 0xD83D, 0xDE00};
constexpr char16_t kLowFirst[] = {0xDE00, 0xD83D};

INSTANTIATE_TEST_SUITE_P(Texts, Characters,
                         testing::Values(Case{u"ab", u'a', 1, 2, "U+0061"},
                                         Case{std::u16string_view(u"\0", 1), 0, 1, 1, "U+0000"},
                                         Case{u"\u2192", 0x2192, 1, 1, "U+2192"},
                                         Case{u"\U0001F600x", 0x1F600, 2, 2, "U+1F600"},
                                         Case{u"\U0010FFFF", 0x10FFFF, 2, 1, "U+10FFFF"},
                                         Case{{kHighTwice, 3}, 0xD83D, 1, 2, "U+D83D"},
                                         Case{{kLowFirst, 2}, 0xDE00, 1, 2, "U+DE00"}));

TEST(CountCharacters, IsNoneForAnEmptyText) {
  EXPECT_EQ(CountCharacters(u""), 0U);
}

}  // namespace
}  // namespace declarium
