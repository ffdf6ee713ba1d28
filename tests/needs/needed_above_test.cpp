#include "needs/needed_above.h"

#include <gtest/gtest.h>

namespace declarium {
namespace {

using Names = std::vector<std::u16string_view>;

TEST(NeededAbove, AConstNeedsEveryNameInItsValue) {
  const struct {
    std::u16string_view value;
    Names names;
  } cases[] = {
      {u"", {}},
      {u"5", {}},
      {u"WM_USER + 1", {u"WM_USER"}},
      {u"A+B", {u"A", u"B"}},
      {u"-A", {u"A"}},
      {u"(A Or B) And Not A", {u"A", u"Or", u"B", u"And", u"Not", u"A"}},
      {u"A&", {u"A"}},
      {u"A & B", {u"A", u"B"}},
      {u"A&B", {u"A", u"B"}},
      {u"&HFFFF& + &O17 + &hAB", {}},
      {u"A&OTHER", {u"A", u"OTHER"}},
      {u"1E5 + 10L", {}},
      {u"\"A \"\"B\" & C", {u"C"}},
      {u"\"A", {}},
      {u"A 'B", {u"A"}},
      {u"\"'\" + A", {u"A"}},
      {u"[A b] + C", {u"[A b]", u"C"}},
      {u"[A", {u"[A"}},
      {u"\u010C\u00ed_1", {u"\u010C\u00ed_1"}},
  };
  for (const auto& c : cases) {
    const auto item = u"Long\x0E" + std::u16string(c.value);
    EXPECT_EQ(NeededAbove(Kind::kConst, item), c.names) << testing::PrintToString(c.value);
  }
}

TEST(NeededAbove, ATypeNeedsWhatItsMembersAre) {
  const struct {
    std::u16string_view members;
    Names names;
  } cases[] = {
      {u"", {}},
      {u"x As Long", {u"Long"}},
      {u"r as RECT\rp As POINTAPI 'As SIZE", {u"RECT", u"POINTAPI"}},
      {u"a(0 To 9) As RECT", {u"RECT"}},
      {u"a(N)\tAs\tRECT", {u"RECT"}},
      {u"s As String * MAX", {u"String"}},
      {u"'c As RECT", {}},
      {u"As As RECT", {u"RECT"}},
      {u"x As", {}},
      {u"x", {}},
      {u" r As RECT", {u"RECT"}},
  };
  for (const auto& c : cases) {
    const auto item = u"As Header\x0C" + std::u16string(c.members);
    EXPECT_EQ(NeededAbove(Kind::kType, item), c.names) << testing::PrintToString(c.members);
  }
}

TEST(NeededAbove, ADeclareNeedsNothingOfItsKind) {
  EXPECT_TRUE(NeededAbove(Kind::kDeclare, u"\n\"l\" (r As RECT)").empty());
}

}  // namespace
}  // namespace declarium
