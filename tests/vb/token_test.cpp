#include "vb/token.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/texts.h"
#include "text/text.h"

namespace declarium::vb {
namespace {

std::vector<Token> TokensOf(std::u16string_view text) {
  std::vector<Token> tokens;
  Tokenizer tokenizer(text);
  for (auto token = tokenizer.Next(); token.kind != TokenKind::kEnd; token = tokenizer.Next())
    tokens.push_back(token);
  return tokens;
}

char Letter(TokenKind kind) {
  constexpr std::string_view kLetters = ".b_lcntNsdo?";
  return kLetters[static_cast<std::size_t>(kind)];
}

// One letter a token: b blank, _ continuation, l line end, c comment, n name, t type character,
// N number, s string, d date, o operator, ? unknown.
std::string Kinds(std::u16string_view text) {
  std::string kinds;
  for (const auto& token : TokensOf(text)) kinds += Letter(token.kind);
  return kinds;
}

struct Case {
  std::u16string_view text;
  std::string_view kinds;
};

class TokenKinds : public ::testing::TestWithParam<Case> {};

TEST_P(TokenKinds, AreTheLanguages) {
  EXPECT_EQ(Kinds(GetParam().text), GetParam().kinds) << ToUtf8(GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, TokenKinds,
    ::testing::Values(Case{u"Const A = 1", "nbnbobN"}, Case{u"a$", "nt"}, Case{u"a& ", "ntb"},
                      Case{u"rs!Name", "non"}, Case{u"x! ", "ntb"}, Case{u"n^", "nt"},
                      Case{u"a ^ 2", "nbobN"}, Case{u"[a b]", "n"}, Case{u"[a\nb", "onln"},
                      Case{u"\"a\"\"b\"", "s"}, Case{u"\"open\nA", "sln"},
                      Case{u"&HFF& &o17", "NbN"}, Case{u"= &17", "obN"}, Case{u"a &1", "nboN"},
                      Case{u"10# 1.5E-3! 1.", "NbNbN"}, Case{u"+.5", "oN"}, Case{u"2^3", "NoN"},
                      Case{u"5^", "N"}, Case{u"#1/31/1999# #10:30 PM#", "dbd"},
                      Case{u"Close #1, #2", "nboNoboN"}, Case{u"Rem all of this", "c"},
                      Case{u"Remark", "n"}, Case{u"a: Rem x", "nobc"}, Case{u"a Rem", "nbn"},
                      Case{u"10 Rem x", "Nbc"}, Case{u"' one _\r\ntwo\r\nA", "cln"},
                      Case{u"' no_\nA", "cln"}, Case{u"a _\n b", "nb_bn"}, Case{u"a_\nb", "nln"},
                      Case{u"a _ \t\r\nb", "nb_n"}, Case{u"(_\n)", "o_o"}, Case{u"a _", "nb?"},
                      Case{u"\r\n\r\n\n\r", "llll"}, Case{u"<> <= >= := <", "obobobobo"},
                      Case{u"{~}", "???"}, Case{u"č_1", "n"}, Case{u"x:=1", "noN"}));

TEST(Tokens, NumbersTheLinesAndColumnsOfEveryLineEnd) {
  const auto tokens = TokensOf(u"a\r\nb\rc\n' x _\n y\nd _\ne");
  std::vector<std::pair<unsigned, unsigned>> names;
  for (const auto& token : tokens)
    if (token.kind == TokenKind::kName) names.emplace_back(token.place.line, token.place.column);
  const std::vector<std::pair<unsigned, unsigned>> expected = {
      {1, 1}, {2, 1}, {3, 1}, {6, 1}, {7, 1}};
  EXPECT_EQ(names, expected);
}

TEST(Tokens, ComparesWordsWithoutRegardToCase) {
  EXPECT_TRUE(TokensOf(u"CONST")[0].IsWord(u"const"));
  EXPECT_FALSE(TokensOf(u"Constant")[0].IsWord(u"const"));
  EXPECT_FALSE(TokensOf(u"\"const\"")[0].IsWord(u"const"));
}

// Whether the tokens stand one behind the other and are together the text, at their true places.
void ExpectLossless(std::u16string_view text) {
  std::u16string together;
  for (const auto& token : TokensOf(text)) {
    ASSERT_EQ(token.place.offset, together.size()) << ToUtf8(text);
    ASSERT_FALSE(token.text.empty()) << ToUtf8(text);
    together += token.text;
  }
  ASSERT_EQ(together, text);
}

TEST(Tokens, LoseNothing) {
  Random random(1);
  const std::u16string_view pieces[] = {
      u"a",           u"_",      u" ",  u"\t",  u"\r\n", u"\n",  u"\r", u"\"", u"'",
      u"#",           u"1",      u"&H", u"Rem", u":",    u".",   u"(",  u"[",  u"]",
      u"Const A = 1", u" _\r\n", u"č",  u"$",   u"!",    u"1/2", u"E5", u"\0"};
  for (int round = 0; round < 20000; ++round) ExpectLossless(random.Text(pieces, 12));
}

// What each unit belongs to, told unit by unit: s string, c comment, k continuation, l line end,
// n anything else.
std::string SlowClasses(std::u16string_view text) {
  std::string classes(text.size(), 'n');
  const auto is_name = [](char16_t unit) { return unit == u'a' || unit == u'_'; };
  for (std::size_t i = 0; i < text.size();) {
    const auto line_end = std::min(text.find(u'\n', i), text.size());
    if (text[i] == u'\n') {
      classes[i++] = 'l';
    } else if (text[i] == u'"') {
      classes[i++] = 's';
      while (i < line_end) {
        classes[i] = 's';
        const bool quote = text[i] == u'"';
        const bool doubled = quote && i + 1 < line_end && text[i + 1] == u'"';
        if (doubled) classes[++i] = 's';
        ++i;
        if (quote && !doubled) break;
      }
    } else if (text[i] == u'\'') {
      for (auto start = i;; start = i) {
        while (i < text.size() && text[i] != u'\n') classes[i++] = 'c';
        auto line = text.substr(start, i - start);
        while (line.ends_with(u' ')) line.remove_suffix(1);
        if (i == text.size() || !line.ends_with(u" _")) break;
        classes[i++] = 'c';
      }
    } else if (is_name(text[i])) {
      const auto start = i;
      while (i < text.size() && is_name(text[i])) ++i;
      auto end = i;
      while (end < text.size() && text[end] == u' ') ++end;
      if (text.substr(start, i - start) == u"_" && end < text.size() && text[end] == u'\n') {
        while (i <= end) classes[i++] = 'k';
        classes[start] = 'k';
      }
    } else {
      ++i;
    }
  }
  return classes;
}

std::string Classes(std::u16string_view text) {
  std::string classes;
  for (const auto& token : TokensOf(text)) {
    const char letter = token.kind == TokenKind::kString         ? 's'
                        : token.kind == TokenKind::kComment      ? 'c'
                        : token.kind == TokenKind::kContinuation ? 'k'
                        : token.kind == TokenKind::kLineEnd      ? 'l'
                                                                 : 'n';
    classes.append(token.text.size(), letter);
  }
  return classes;
}

TEST(Tokens, OfAllShortTextsAreWhatUnitByUnitReadingSays) {
  for (const auto& text : AllTexts(u"a\"' _\n", 6))
    ASSERT_EQ(Classes(text), SlowClasses(text)) << ToUtf8(text);
}

}  // namespace
}  // namespace declarium::vb
