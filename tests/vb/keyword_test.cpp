#include "vb/keyword.h"

#include <gtest/gtest.h>

#include "text/text.h"

namespace declarium {
namespace {

constexpr std::u16string_view kKeywords[] = {
    u"Public", u"Private",  u"As",     u"Function", u"Sub",     u"Const", u"Enum",    u"String",
    u"Long",   u"Currency", u"Double", u"Variant",  u"Integer", u"Alias", u"Lib",     u"Declare",
    u"ByVal",  u"ByRef",    u"Any",    u"End",      u"Type",    u"Byte",  u"Boolean", u"Not",
    u"And",    u"Eqv",      u"Imp",    u"Not",      u"Or",      u"Xor",   u"Mod",     u"To"};

TEST(IsKeyword, HoldsForTheWholeListInAnyCase) {
  for (const auto keyword : kKeywords) {
    EXPECT_TRUE(IsKeyword(keyword));
    EXPECT_TRUE(IsKeyword(LowerCase(keyword)));
    std::u16string upper(keyword);
    for (auto& unit : upper) unit = unit >= u'a' ? static_cast<char16_t>(unit - 32) : unit;
    EXPECT_TRUE(IsKeyword(upper));
  }
}

TEST(IsKeyword, HoldsForNothingElse) {
  for (const std::u16string_view word :
       {u"Dim",   u"Option", u"Optional", u"ParamArray",     u"Single", u"Object", u"Date",
        u"",      u" ",      u"A",        u"Strings",        u"Strin",  u"\tLong", u"Long)",
        u"(Long", u" As",    u"As ",      u"Public,Private", u"Like",   u"Is",     u"Functions"}) {
    EXPECT_FALSE(IsKeyword(word)) << testing::PrintToString(word);
  }
}

}  // namespace
}  // namespace declarium
