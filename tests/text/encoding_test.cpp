#include "text/encoding.h"

#include <gtest/gtest.h>
#include <string>

#include "text/code_page.h"
#include "text/windows_code_pages.h"

namespace declarium {
namespace {

using Form = Encoding::Form;
using std::string_literals::operator""s;

Encoding Marked(Form form) {
  return {.form = form, .has_mark = true};
}

TEST(RecognizeEncoding, AMarkDecides) {
  EXPECT_EQ(RecognizeEncoding("\xEF\xBB\xBFx", kLibraryEncoding), Marked(Form::kUtf8));
  EXPECT_EQ(RecognizeEncoding("\xEF\xBB\xBF\xFF", kLibraryEncoding), Marked(Form::kUtf8));
  EXPECT_EQ(RecognizeEncoding("\xFF\xFEx\0"s, kLibraryEncoding), Marked(Form::kUtf16LittleEndian));
  EXPECT_EQ(RecognizeEncoding("\xFE\xFF\0x"s, kLibraryEncoding), Marked(Form::kUtf16BigEndian));
}

TEST(RecognizeEncoding, WellFormedUtf8WithMoreThanAsciiIsUtf8) {
  for (const auto* bytes :
       {"\xC4\x8D",
        "a\xE2\x82\xAC"
        "b",
        "\xF0\x9F\x98\x80", "\xEE\x80\x80", "0123456789012345678901234567890123456789\xC2\x80"}) {
    EXPECT_EQ(RecognizeEncoding(bytes, kLibraryEncoding), Encoding{.form = Form::kUtf8}) << bytes;
  }
}

TEST(RecognizeEncoding, AnythingElseIsWhatTheCallerSays) {
  const Encoding otherwise{.code_page = 1251};
  for (const auto* bytes :
       {"", "ascii", "\x80", "\xC4", "\xC4x", "\xC1\xBF", "\xE0\x9F\xBF", "\xE2\x82", "\xE2\x82x",
        "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
        "\xC4\x8D\xE8 mixed", "0123456789012345678901234567890123456789\xE8"}) {
    EXPECT_EQ(RecognizeEncoding(bytes, otherwise), otherwise) << bytes;
  }
}

TEST(EncodingNames, NameTheirEncodingAndNothingElseDoes) {
  for (const auto& page : kWindowsCodePages) {
    const Encoding encoding{.code_page = page.number};
    const auto number = std::to_string(page.number);
    EXPECT_EQ(EncodingName(encoding), "windows-" + number);
    for (const auto& name : {"windows-" + number, "Windows-" + number, "CP" + number, number}) {
      EXPECT_EQ(EncodingOfName(name), encoding) << name;
    }
  }
  EXPECT_EQ(EncodingOfName("UTF-8"), Encoding{.form = Form::kUtf8});
  EXPECT_EQ(EncodingOfName("utf-16le"), Encoding{.form = Form::kUtf16LittleEndian});
  EXPECT_EQ(EncodingOfName("utf-16be"), Encoding{.form = Form::kUtf16BigEndian});
  for (const auto* name : {"", "utf", "cp", "125", "12500", "windows", "cp932", "utf-8 "}) {
    EXPECT_EQ(EncodingOfName(name), std::nullopt) << name;
  }
  EXPECT_TRUE(EncodingNames().starts_with("windows-874, windows-1250, "));
  EXPECT_TRUE(EncodingNames().ends_with(", windows-1258, utf-8, utf-16le, utf-16be"));
}

TEST(DecodeText, TakesTheMarkAway) {
  EXPECT_EQ(DecodeText("\xEF\xBB\xBF\xC4\x8D", Marked(Form::kUtf8)), u"č");
  EXPECT_EQ(DecodeText("\xFF\xFE\x0D\x01", Marked(Form::kUtf16LittleEndian)), u"č");
  EXPECT_EQ(DecodeText("\xFE\xFF\x01\x0D", Marked(Form::kUtf16BigEndian)), u"č");
  EXPECT_EQ(DecodeText("\xFE\xFF\x01", Marked(Form::kUtf16BigEndian)), u"\uFFFD") << "half a unit";
}

TEST(DecodeText, KnowsTheCodePages) {
  const struct {
    int code_page;
    std::string_view bytes;
    std::u16string_view text;
  } cases[] = {
      {874, "\xA1\x80", u"ก€"},       {1250, "\xE8\xBE", u"čľ"}, {1251, "\xC6\xFF", u"Жя"},
      {1252, "\xE8\x80", u"è€"},      {1253, "\xE1", u"α"},      {1254, "\xFE", u"ş"},
      {1255, "\xE0", u"א"},           {1256, "\xC7", u"ا"},      {1257, "\xE8", u"č"},
      {1258, "\xFE\x81", u"₫\u0081"}, {1253, "\xFF", u"\uFFFD"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(DecodeText(c.bytes, {.code_page = c.code_page}), c.text) << c.code_page;
  }
}

TEST(EncodeText, IsTheWayBackForEveryCharacterOfACodePage) {
  for (const auto& page : kWindowsCodePages) {
    const Encoding encoding{.code_page = page.number};
    for (int byte = 0; byte < 256; ++byte) {
      const std::string bytes(1, static_cast<char>(byte));
      const auto text = DecodeText(bytes, encoding);
      ASSERT_EQ(text.size(), 1U);
      const auto back = EncodeText(text, encoding);
      ASSERT_EQ(back.has_value(), text != u"\uFFFD") << page.number << ' ' << byte;
      EXPECT_EQ(back.value_or(bytes), bytes) << page.number;
    }
  }
}

TEST(EncodeText, OfLibrariesIsThatOfTheirCodePage) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string bytes(1, static_cast<char>(byte));
    EXPECT_EQ(DecodeText(bytes, kLibraryEncoding), DecodeCodePage(bytes));
  }
}

TEST(EncodeText, TellsWhereTheFirstMissingCharacterStands) {
  const auto bytes = EncodeText(u"aè→č", {.code_page = 1252});
  ASSERT_FALSE(bytes);
  EXPECT_EQ(bytes.error(), 2U);
  EXPECT_EQ(EncodeText(u"č\U0001F600", {.form = Form::kUtf8}), "\xC4\x8D\xF0\x9F\x98\x80");
  EXPECT_EQ(EncodeText(u"č", {.form = Form::kUtf16LittleEndian}), "\x0D\x01");
  EXPECT_EQ(EncodeText(u"č", {.form = Form::kUtf16BigEndian}), "\x01\x0D");
}

TEST(FindOutsideCodePage, FindsTheFirstUnitThatTheLibraryCannotKeep) {
  EXPECT_EQ(FindOutsideCodePage(u"Const \u010D = \"?\" \u0081"), std::u16string_view::npos);
  EXPECT_EQ(FindOutsideCodePage(u"a\u2192\u2192"), 1U);
  EXPECT_EQ(FindOutsideCodePage(u"a\u2192\u2192", 2), 2U);
  EXPECT_EQ(FindOutsideCodePage(u"a\u2192", 2), std::u16string_view::npos);
  EXPECT_EQ(FindOutsideCodePage(u"\uFFFD"), 0U);
}

}  // namespace
}  // namespace declarium
