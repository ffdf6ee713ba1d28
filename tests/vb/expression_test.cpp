#include "vb/expression.h"

#include "gtest/gtest.h"

namespace declarium::vb {
namespace {

const NameLookup kNames = [](std::string_view name) -> Evaluated {
  if (name == "WM_USER") return Value::Long(0x400);
  if (name == "Small") return Value::Integer(32767);
  return std::unexpected("unknown");
};

struct Case {
  std::string_view text;
  Value value;
};

class ExpressionValues : public ::testing::TestWithParam<Case> {};

TEST_P(ExpressionValues, AreTheLanguages) {
  const auto value = Evaluate(GetParam().text, kNames);
  ASSERT_TRUE(value) << value.error();
  EXPECT_EQ(*value, GetParam().value) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Literals, ExpressionValues,
    ::testing::Values(Case{"10", Value::Integer(10)}, Case{"32767", Value::Integer(32767)},
                      Case{"32768", Value::Long(32768)},
                      Case{"2147483648", Value::Double(2147483648.0)}, Case{"10&", Value::Long(10)},
                      Case{"1.5", Value::Double(1.5)}, Case{"1E3", Value::Double(1000)},
                      Case{"&H7FFF", Value::Integer(32767)}, Case{"&H8000", Value::Integer(-32768)},
                      Case{"&H8000&", Value::Long(32768)}, Case{"&HFFFF", Value::Integer(-1)},
                      Case{"&H10000", Value::Long(65536)}, Case{"&HFFFFFFFF", Value::Long(-1)},
                      Case{"&O17", Value::Integer(15)}, Case{"\"a\"\"b\"", Value::String("a\"b")}));

INSTANTIATE_TEST_SUITE_P(
    Operators, ExpressionValues,
    ::testing::Values(
        Case{"WM_USER + 1", Value::Long(0x401)}, Case{"-1", Value::Integer(-1)},
        Case{"-32768", Value::Long(-32768)}, Case{"1 Or 2 And 3", Value::Integer(3)},
        Case{"Not 0", Value::Integer(-1)}, Case{"Not WM_USER And 255", Value::Long(255)},
        Case{"WM_USER And Not 1", Value::Long(0x400)}, Case{"5 Xor 1", Value::Integer(4)},
        Case{"1 Imp 0", Value::Integer(-2)}, Case{"2 + 3 * 4", Value::Integer(14)},
        Case{"(2 + 3) * 4", Value::Integer(20)}, Case{"7 \\ 2", Value::Integer(3)},
        Case{"-7 Mod 4", Value::Integer(-3)}, Case{"2 ^ 3", Value::Double(8)},
        Case{"-2 ^ 2", Value::Double(-4)}, Case{"6 / 4", Value::Double(1.5)},
        Case{"10 - 3 - 2", Value::Integer(5)}, Case{"1 = 1", Value::Integer(-1)},
        Case{"2 < 1", Value::Integer(0)}, Case{"\"a\" & \"b\"", Value::String("ab")}));

TEST(Expression, FailsWhereTheLanguageDoes) {
  for (const std::string_view text : {"Small + 1", "2147483647 + 1", "1 +", "(1", "1 2", "Unknown",
                                      "\"a\" + 1", "1 \\ 0", "&H", "\"open", "Loop", "1 # 2", ""})
    EXPECT_FALSE(Evaluate(text, kNames)) << text;
}

TEST(Expression, LongOperandsKeepSumsFromOverflowing) {
  EXPECT_EQ(Evaluate("Small + 1&", kNames), Value::Long(32768));
}

TEST(Expression, ConvertsToTheDeclaredType) {
  EXPECT_EQ(ConvertTo("Long", Value::Integer(-1)), Value::Long(-1));
  EXPECT_EQ(ConvertTo("Long", Value::Double(2.5)), Value::Long(2));
  EXPECT_EQ(ConvertTo("", Value::Integer(1)), Value::Integer(1));
  EXPECT_EQ(ConvertTo("Double", Value::Integer(1)), Value::Double(1));
  EXPECT_FALSE(ConvertTo("Integer", Value::Long(32768)));
  EXPECT_FALSE(ConvertTo("Long", Value::Double(2147483648.0)));
  EXPECT_FALSE(ConvertTo("Long", Value::String("1")));
  EXPECT_FALSE(ConvertTo("String", Value::Integer(1)));
}

}  // namespace
}  // namespace declarium::vb
