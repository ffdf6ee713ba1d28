#include "text/code_page.h"

#include <gtest/gtest.h>

#include "text/text.h"

namespace declarium {
namespace {

std::string AllBytes() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  return bytes;
}

// The upper half of Windows-1250 from byte 0x80 on, as text; the control characters stand for the
// bytes that the code page leaves open.
constexpr std::string_view kUpperHalf =
    "€\u0081‚\u0083„…†‡\u0088‰Š‹ŚŤŽŹ"
    "\u0090‘’“”•–—\u0098™š›śťžź"
    "\u00A0ˇ˘Ł¤Ą¦§¨©Ş«¬\u00AD®Ż"
    "°±˛ł´µ¶·¸ąş»Ľ˝ľż"
    "ŔÁÂĂÄĹĆÇČÉĘËĚÍÎĎ"
    "ĐŃŇÓÔŐÖ×ŘŮÚŰÜÝŢß"
    "ŕáâăäĺćçčéęëěíîď"
    "đńňóôőö÷řůúűüýţ˙";

TEST(CodePage, DecodesEveryByteAsWindows1250) {
  const auto decoded = DecodeCodePage(AllBytes());
  ASSERT_EQ(decoded.size(), 256U);
  for (int byte = 0; byte < 128; ++byte) EXPECT_EQ(decoded[static_cast<std::size_t>(byte)], byte);
  EXPECT_EQ(decoded.substr(128), FromUtf8(kUpperHalf));
}

TEST(CodePage, AllBytesComeBackThemselves) {
  EXPECT_EQ(EncodeCodePage(DecodeCodePage(AllBytes())), AllBytes());
}

TEST(CodePage, EveryUnitOutsideItBecomesAQuestionMark) {
  const auto inside = DecodeCodePage(AllBytes());
  for (int code = 0; code < 0x10000; ++code) {
    const auto unit = static_cast<char16_t>(code);
    if (inside.contains(unit)) continue;
    ASSERT_EQ(EncodeCodePage(std::u16string_view(&unit, 1)), "?") << code;
  }
  EXPECT_EQ(EncodeCodePage(u"a\U0001F600b"), "a??b") << "one byte per unit";
}

TEST(CodePage, TextsOfEveryLengthAndMixtureAreOneBytePerUnit) {
  // Long texts are converted in blocks; a character outside ASCII may stand anywhere in one.
  for (std::size_t length = 0; length <= 100; ++length) {
    const std::string ascii(length, 'x');
    ASSERT_EQ(DecodeCodePage(ascii), std::u16string(length, u'x'));
    ASSERT_EQ(EncodeCodePage(std::u16string(length, u'x')), ascii);
    for (std::size_t position = 0; position < length; ++position) {
      auto bytes = ascii;
      bytes[position] = '\x8A';
      std::u16string text(length, u'x');
      text[position] = u'Š';
      ASSERT_EQ(DecodeCodePage(bytes), text);
      ASSERT_EQ(EncodeCodePage(text), bytes);
    }
  }
}

TEST(CodePage, AppendsBehindWhatIsThere) {
  std::string out = "a";
  AppendCodePage(u"ž", out);
  EXPECT_EQ(out, "a\x9E");
}

}  // namespace
}  // namespace declarium
