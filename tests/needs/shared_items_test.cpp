#include "needs/shared_items.h"

#include <gtest/gtest.h>

#include "support/texts.h"
#include "text/text.h"
#include "vb/keyword.h"
#include "vb/number.h"

namespace declarium {
namespace {

struct SharedCase {
  std::u16string_view text;
  GroupedList list;
};

GroupedList Consts(const std::vector<std::u16string>& names) {
  GroupedList list;
  for (const auto& name : names) list.push_back({name, 1});
  return list;
}
GroupedList Types(const std::vector<std::u16string>& names) {
  GroupedList list;
  for (const auto& name : names) list.push_back({name, 3});
  return list;
}

TEST(IsNumber, LooksAtTheFirstCharacterOnly) {
  for (const std::u16string_view token : {u"&", u"&H1", u"-", u"-x", u"0", u"9a"}) {
    EXPECT_TRUE(IsNumber(token));
  }
  for (const std::u16string_view token : {u"", u"a", u"+1", u".5", u" 1", u"\u0665"}) {
    EXPECT_FALSE(IsNumber(token));
  }
}

TEST(SharedItemsOfAConst, AnswersForKnownValues) {
  const SharedCase cases[] = {
      {u"", {}},
      {u"   ", {}},
      {u"&H8000&", {}},
      {u"100", {}},
      {u"1.5", {}},
      {u"-5", {}},
      {u"-WM_USER", {}},
      {u"WM_USER + 1", Consts({u"WM_USER"})},
      {u"A * B", Consts({u"*", u"A", u"B"})},
      {u"A+B", Consts({u"A+B"})},
      {u"A \\ B ^ C / D = E - F + G", Consts({u"A", u"B", u"C", u"D", u"E", u"F", u"G"})},
      {u"A < B > C", Consts({u"<", u">", u"A", u"B", u"C"})},
      {u"10#", Consts({u"10#"})},
      {u"&h10", Consts({u"&h10"})},
      {u"&O17 &H1F", {}},
      {u"&o17", Consts({u"&o17"})},
      {u"A&", {}},
      {u"\"only text\"", {}},
      {u"'only comment", {}},
      {u"A 'B C", Consts({u"A"})},
      {u"\"it's\" A", Consts({u"A"})},
      {u"A \"B\" C", Consts({u"A", u"C"})},
      {u"A\"B\"C", Consts({u"AC"})},
      {u"\"a ' b\" A ' \"B\" C", Consts({u"A"})},
      {u"(A Or B) And Not (C)", Consts({u"A", u"B", u"C"})},
      {u"RGB(A, B)", Consts({u"B", u"RGBA"})},
      {u"Rect RECT rect", Consts({u"Rect"})},
      {u"b A", Consts({u"A", u"b"})},
      {u"A    B", Consts({u"A", u"B"})},
      {u"Single Long", Consts({u"Single"})},
      {u"1E+309", Consts({u"1E+309"})},
      {u"1E+15", {}},
      {u"05", Consts({u"05"})},
      {u".5", Consts({u".5"})},
      {u"A\tB", Consts({u"A\tB"})},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CreateShared_Const(c.text), c.list) << testing::PrintToString(c.text);
  }
}

TEST(SharedItemsOfADeclare, AnswersForKnownTexts) {
  const SharedCase cases[] = {
      {u"", {}},
      {u"\x0B\"user32\" (ByVal hWnd As Long, lpRect As RECT) As Long", Types({u"RECT"})},
      {u"\x0B\"l\" () As Single", Types({u"Single"})},
      {u"\x0B\"l\" (a as RECT, b AS POINT)", Types({u"POINT", u"RECT"})},
      {u"\n\"l\" (a As Rect, b As RECT)", Types({u"Rect"})},
      {u"\n\"l\" (a As  RECT)", Types({u"RECT"})},
      {u"\n\"l\" (a As\tRECT)", {}},
      {u"\n\"l\" (a As RECT", Types({u"RECT"})},
      {u"As RECT", Types({u"RECT"})},
      {u"\nAs RECT", {}},
      {u"x As As RECT", {}},
      {u"x As ", {}},
      {u"x As )", Types({u""})},
      {u"x As ,RECT", Types({u""})},
      {u"x (As RECT)", {}},
      {u"x As Long) As RECT", Types({u"RECT"})},
      {u"x As RECT\"", {}},
      {u"x As RECT'", {}},
      {u"x As RECT\r", {}},
      {u"x As RECT\n", {}},
      {u"x As RECT' ", Types({u"RECT'"})},
      {u"x As \"RECT\" y", Types({u"\"RECT\""})},
      {u"x 'As RECT", {}},
      {u"x As RECT() y", Types({u"RECT("})},
      {u"\x0B\"l\" (a As Date, b As Object, c As Any, d As Boolean)", Types({u"Date", u"Object"})},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CreateShared_Declare(c.text), c.list) << testing::PrintToString(c.text);
  }
}

TEST(SharedItemsOfAType, AnswersForKnownMembers) {
  const SharedCase cases[] = {
      {u"", {}},
      {u"x As Long", {}},
      {u"rc As RECT", Types({u"RECT"})},
      {u"rc As RECT 'note", Types({u"RECT"})},
      {u"d As Date", Types({u"Date"})},
      {u"rc as RECT", {}},
      {u"rc As", {}},
      {u"rc", {}},
      {u"rc As ", Types({u""})},
      {u"s As String * MAX_PATH", Consts({u"MAX_PATH"})},
      {u"s As String * 260", {}},
      {u"s As String * &H100", Consts({u"&H100"})},
      {u"s As String * 'note", {}},
      {u"s As String *", {}},
      {u"s As String * ", Consts({u""})},
      {u"s As string * MAX_PATH", {}},
      {u"s Is String * MAX_PATH", Consts({u"MAX_PATH"})},
      {u"b(MAX_PATH) As Byte", Consts({u"MAX_PATH"})},
      {u"b(10) As Byte", {}},
      {u"b(&H10) As Byte", {}},
      {u"b(-1) As Byte", {}},
      {u"b() As Byte", Consts({u""})},
      {u"b(MAX_PATH As Byte", Consts({u"MAX_PATH"})},
      {u"b( As Byte", {}},
      {u"b(MAX_PATH)", {}},
      {u"b(0 To N_MAX) As Byte", Consts({u"N_MAX"})},
      {u"b(N_MIN To N_MAX) As Byte", Consts({u"N_MAX", u"N_MIN"})},
      {u"b(-1 To 10) As Byte", {}},
      {u"b(0 To", {}},
      {u"b(0 to N_MAX) As Byte", {}},
      {u"b(N To", Consts({u"N"})},
      {u"a(0 To 9) As RECT", {}},
      {u"a(9) As RECT", Types({u"RECT"})},
      {u" rc As RECT", {}},
      {u" s As String * MAX_PATH", {}},
      {u"'rc As RECT", {}},
      {u"rc  As  RECT", Types({u"RECT"})},
      {u"a(X)(Y) As Byte", Consts({u"X"})},
      {u"a(N, M) As Byte", Consts({u"N,"})},
      {u"x As RECT\ry As POINT\r\rz As Rect", Types({u"POINT", u"RECT"})},
      {u"x As Long\x0Cy As RECT", {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CreateShared_Type(u"header\x0C" + std::u16string(c.text)), c.list)
        << testing::PrintToString(c.text);
  }
}

TEST(SharedItemsOfAType, WithoutASeparatorThereAreNoMembers) {
  EXPECT_TRUE(CreateShared_Type(u"x As RECT").empty());
}

TEST(SharedItemsOfAType, ConstantsStandBeforeRecords) {
  EXPECT_EQ(CreateShared_Type(u"\x0Cr As ZZZ\rb(A) As Byte\rc(M) As Byte"),
            (GroupedList{{u"A", 1}, {u"M", 1}, {u"ZZZ", 3}}));
}

TEST(SharedItemsOfAType, AConstantThatSortsBehindTheFirstRecordStandsBehindIt) {
  EXPECT_EQ(CreateShared_Type(u"\x0Cr As B\rb(C) As Byte"), (GroupedList{{u"B", 3}, {u"C", 1}}));
  EXPECT_EQ(CreateShared_Type(u"\x0Cr As B\rb(A) As Byte\rc(C) As Byte"),
            (GroupedList{{u"A", 1}, {u"B", 3}, {u"C", 1}}));
}

TEST(SharedItemsOfAType, AConstantWithTheFirstRecordsNameIsNotListed) {
  EXPECT_EQ(CreateShared_Type(u"\x0Cr As RECT\rb(rect) As Byte"), Types({u"RECT"}));
  EXPECT_EQ(CreateShared_Type(u"\x0C"
                              u"b(rect) As Byte\rr As RECT"),
            (GroupedList{{u"rect", 1}, {u"RECT", 3}}))
      << "a record with a constant's name is";
}

TEST(SharedItems, TakeTheItemStringOfAnyKind) {
  EXPECT_EQ(CreateShared(Kind::kConst,
                         u"Long\x0E"
                         u"A + 1"),
            Consts({u"A"}));
  EXPECT_EQ(CreateShared(Kind::kDeclare, u"\n\"l\" (a As RECT)"), Types({u"RECT"}));
  EXPECT_EQ(CreateShared(Kind::kType, u"\x0Cr As RECT"), Types({u"RECT"}));
  for (const auto kind : kKinds) EXPECT_TRUE(CreateShared(kind, u"").empty());
}

// A slow literal twin: the list, entry by entry.
struct PlainList {
  GroupedList entries;

  [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(entries.size()); }
  void Add(std::int32_t first, std::int32_t last, const std::u16string& text, int icon) {
    std::int32_t position = first;
    for (auto i = first; i <= last; ++i) {
      const auto t = LowerCase(entries[static_cast<std::size_t>(i - 1)].text);
      if (t == LowerCase(text)) return;
      if (LowerCase(text) < t) {
        position = i;
        break;
      }
      position = i + 1;
    }
    entries.insert(entries.begin() + (position - 1), {text, icon});
  }
  [[nodiscard]] std::int32_t First(int icon) const {
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (entries[i].icon == icon) return static_cast<std::int32_t>(i) + 1;
    }
    return -1;
  }
  void AddConst(const std::u16string& text) {
    Add(First(1) == -1 ? 1 : First(1), First(3) == -1 ? Count() : First(3), text, 1);
  }
  void AddType(const std::u16string& text) {
    Add(First(3) == -1 ? Count() + 1 : First(3), Count(), text, 3);
  }
};

std::u16string Folded(std::u16string text) {
  while (text.contains(u"  ")) text = Replace(text, u"  ", u" ");
  return text;
}

std::vector<std::u16string> Pieces(const std::u16string& text, char16_t separator) {
  std::vector<std::u16string> pieces;
  for (const auto piece : Split(text, separator)) pieces.emplace_back(piece);
  return pieces;
}

bool IsOwnNumber(const std::u16string& token) {
  const auto value = Val(token);
  return value && NumberText(*value) == token;
}

GroupedList PlainConst(std::u16string_view value) {
  PlainList list;
  auto text = Folded(std::u16string(value));
  for (const std::u16string_view unwanted : {u"(", u")", u","}) text = Replace(text, unwanted, u"");
  std::u16string result;
  bool in_quote = false;
  bool in_comment = false;
  for (const char16_t c : text) {
    if (c == u'"') {
      in_quote = !in_quote;
    } else if (c == u'\'' && !in_quote) {
      in_comment = true;
    }
    if (c != u'"' && !in_quote && !in_comment) result += c;
  }
  result = Replace(result, u"  ", u" ");
  for (const auto& token : Pieces(result, u' ')) {
    if (token.empty() || IsOwnNumber(token) || token.substr(0, 2) == u"&O" ||
        token.substr(0, 2) == u"&H" || token.back() == u'&' || token.front() == u'-' ||
        token == u"\\" || token == u"^" || token == u"/" || token == u"=" || token == u"-" ||
        token == u"+" || IsKeyword(token)) {
      continue;
    }
    list.Add(1, list.Count(), token, 1);
  }
  return list.entries;
}

GroupedList PlainDeclare(std::u16string_view item) {
  PlainList list;
  const auto text = Folded(std::u16string(item));
  std::u16string word;
  bool after_as = false;
  for (std::size_t i = 1; i <= text.size(); ++i) {
    const char16_t c = text[i - 1];
    word += c;
    if (c == u'"' || c == u'\r' || c == u'\n' || c == u'\'') continue;
    if (c != u' ' && c != u')' && c != u',' && i != text.size()) continue;
    if (after_as) {
      for (const std::u16string_view unwanted : {u" ", u",", u")"}) {
        word = Replace(word, unwanted, u"");
      }
      if (!IsKeyword(word)) list.Add(1, list.Count(), word, 3);
      after_as = false;
    }
    if (LowerCase(word) == u"as ") after_as = true;
    word.clear();
  }
  return list.entries;
}

GroupedList PlainType(std::u16string_view item) {
  PlainList list;
  const auto fields = Pieces(Folded(std::u16string(item)), u'\x0C');
  if (fields.size() < 2) return {};
  for (const auto& line : Pieces(fields[1], u'\r')) {
    if (line.empty() || line[0] == u'\'') continue;
    const auto w = Pieces(line, u' ');
    if (w.size() > 2 && w[1] == u"As" && !IsKeyword(w[2])) list.AddType(w[2]);
    if (w.size() >= 5 && w[2] == u"String" && w[3] == u"*" && w[4].substr(0, 1) != u"'" &&
        !IsOwnNumber(w[4])) {
      list.AddConst(w[4]);
    }
    const auto bounds = Pieces(w[0], u'(');
    if (bounds.size() < 2 || w.size() < 2) continue;
    if (w[1] != u"To") {
      const auto pieces = Pieces(bounds[1], u')');
      if (!pieces.empty() && !IsNumber(pieces[0])) list.AddConst(pieces[0]);
    } else {
      if (!IsNumber(bounds[1])) list.AddConst(bounds[1]);
      if (w.size() > 2) {
        const auto upper = Replace(w[2], u")", u"");
        if (!IsNumber(upper)) list.AddConst(upper);
      }
    }
  }
  return list.entries;
}

TEST(SharedItems, AgreeWithTheirSlowTwinOnRandomTexts) {
  Random random(12);
  const std::vector<std::u16string> pieces = {u"A",   u"b",    u"RECT", u"rect", u"Long",
                                              u" ",   u" ",    u" ",    u"As ",  u" As ",
                                              u"as ", u"(",    u")",    u",",    u"\"",
                                              u"'",   u"\r",   u"1",    u"-",    u"&H",
                                              u"&",   u"*",    u"To",   u" To ", u" As String * ",
                                              u"x(",  u"\x0C", u"\n",   u"+",    u"10"};
  for (int round = 0; round < 30'000; ++round) {
    const auto text = random.Text(pieces, 20);
    ASSERT_EQ(CreateShared_Const(text), PlainConst(text)) << testing::PrintToString(text);
    ASSERT_EQ(CreateShared_Declare(text), PlainDeclare(text)) << testing::PrintToString(text);
    const auto record = u"\x0C" + text;
    ASSERT_EQ(CreateShared_Type(record), PlainType(record)) << testing::PrintToString(record);
  }
}

TEST(SharedItems, AgreeWithTheirSlowTwinOnEverySmallDeclareText) {
  for (const auto& tail : AllTexts(u"Q ),\"'", 5)) {
    const auto text = u"x As " + tail;
    ASSERT_EQ(CreateShared_Declare(text), PlainDeclare(text)) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace declarium
