#include "vb/expression.h"

#include "gtest/gtest.h"

#include "text/text.h"

namespace declarium::vb {
namespace {

const NameLookup kNames = [](std::u16string_view name) -> Evaluated {
  if (name == u"WM_USER") return Value::Long(0x400);
  if (name == u"Small") return Value::Integer(32767);
  return std::unexpected("unknown");
};

struct Case {
  std::u16string_view text;
  Value value;
};

class ExpressionValues : public ::testing::TestWithParam<Case> {};

TEST_P(ExpressionValues, AreTheLanguages) {
  const auto value = Evaluate(GetParam().text, kNames);
  ASSERT_TRUE(value) << value.error();
  EXPECT_EQ(*value, GetParam().value) << ToUtf8(GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Literals, ExpressionValues,
    ::testing::Values(Case{u"10", Value::Integer(10)}, Case{u"32767", Value::Integer(32767)},
                      Case{u"32768", Value::Long(32768)},
                      Case{u"2147483648", Value::Double(2147483648.0)},
                      Case{u"10&", Value::Long(10)}, Case{u"1.5", Value::Double(1.5)},
                      Case{u"1E3", Value::Double(1000)}, Case{u"&H7FFF", Value::Integer(32767)},
                      Case{u"&H8000", Value::Integer(-32768)}, Case{u"&H8000&", Value::Long(32768)},
                      Case{u"&HFFFF", Value::Integer(-1)}, Case{u"&H10000", Value::Long(65536)},
                      Case{u"&HFFFFFFFF", Value::Long(-1)}, Case{u"&O17", Value::Integer(15)},
                      Case{u"\"a\"\"b\"", Value::String(u"a\"b")}));

INSTANTIATE_TEST_SUITE_P(
    Operators, ExpressionValues,
    ::testing::Values(
        Case{u"WM_USER + 1", Value::Long(0x401)}, Case{u"-1", Value::Integer(-1)},
        Case{u"-32768", Value::Long(-32768)}, Case{u"1 Or 2 And 3", Value::Integer(3)},
        Case{u"Not 0", Value::Integer(-1)}, Case{u"Not WM_USER And 255", Value::Long(255)},
        Case{u"WM_USER And Not 1", Value::Long(0x400)}, Case{u"5 Xor 1", Value::Integer(4)},
        Case{u"1 Imp 0", Value::Integer(-2)}, Case{u"2 + 3 * 4", Value::Integer(14)},
        Case{u"(2 + 3) * 4", Value::Integer(20)}, Case{u"7 \\ 2", Value::Integer(3)},
        Case{u"-7 Mod 4", Value::Integer(-3)}, Case{u"2 ^ 3", Value::Double(8)},
        Case{u"-2 ^ 2", Value::Double(-4)}, Case{u"6 / 4", Value::Double(1.5)},
        Case{u"10 - 3 - 2", Value::Integer(5)}, Case{u"1 = 1", Value::Integer(-1)},
        Case{u"2 < 1", Value::Integer(0)}, Case{u"\"a\" & \"b\"", Value::String(u"ab")}));

TEST(Expression, FailsWhereTheLanguageDoes) {
  for (const std::u16string_view text :
       {u"Small + 1", u"2147483647 + 1", u"1 +", u"(1", u"1 2", u"Unknown", u"\"a\" + 1", u"1 \\ 0",
        u"&H", u"\"open", u"Loop", u"1 # 2", u""})
    EXPECT_FALSE(Evaluate(text, kNames)) << ToUtf8(text);
}

TEST(Expression, KnowsTheSuffixesAndTheLongerNumbers) {
  EXPECT_EQ(Evaluate(u"5^", kNames), Value::LongLong(5));
  EXPECT_EQ(Evaluate(u"&HFFFFFFFFFF^", kNames), Value::LongLong(0xFFFFFFFFFF));
  EXPECT_EQ(Evaluate(u"2147483647^ + 1", kNames), Value::LongLong(2147483648));
  EXPECT_EQ(Evaluate(u"1.5@", kNames), Value::Double(1.5));
  EXPECT_EQ(Evaluate(u"1D2", kNames), Value::Double(100));
  EXPECT_FALSE(Evaluate(u"9223372036854775807^ + 1^", kNames));
  EXPECT_FALSE(Evaluate(u"#1/1/2000#", kNames));
}

TEST(Expression, TakesTruthSignsContinuationsAndQualifiedNames) {
  EXPECT_EQ(Evaluate(u"true And Not FALSE", kNames), Value::Integer(-1));
  EXPECT_EQ(Evaluate(u"+1 - -2", kNames), Value::Integer(3));
  EXPECT_EQ(Evaluate(u"1 + _\r\n 2", kNames), Value::Integer(3));
  const auto value = Evaluate(u"Module1.A", [](std::u16string_view name) -> Evaluated {
    return Value::String(std::u16string(name));
  });
  EXPECT_EQ(value, Value::String(u"Module1.A"));
}

TEST(Expression, LongOperandsKeepSumsFromOverflowing) {
  EXPECT_EQ(Evaluate(u"Small + 1&", kNames), Value::Long(32768));
}

TEST(Expression, ConvertsToTheDeclaredType) {
  EXPECT_EQ(ConvertTo(u"Long", Value::Integer(-1)), Value::Long(-1));
  EXPECT_EQ(ConvertTo(u"Long", Value::Double(2.5)), Value::Long(2));
  EXPECT_EQ(ConvertTo(u"", Value::Integer(1)), Value::Integer(1));
  EXPECT_EQ(ConvertTo(u"Double", Value::Integer(1)), Value::Double(1));
  EXPECT_FALSE(ConvertTo(u"Integer", Value::Long(32768)));
  EXPECT_FALSE(ConvertTo(u"Long", Value::Double(2147483648.0)));
  EXPECT_FALSE(ConvertTo(u"Long", Value::String(u"1")));
  EXPECT_FALSE(ConvertTo(u"String", Value::Integer(1)));
}

}  // namespace
}  // namespace declarium::vb
