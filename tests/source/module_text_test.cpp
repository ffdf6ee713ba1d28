#include "source/module_text.h"

#include <gtest/gtest.h>

#include "support/texts.h"
#include "text/text.h"

namespace declarium {
namespace {

TEST(SourceModuleName, IsRecognizedByItsLastThreeCharacters) {
  for (const std::u16string_view name : {u"a.frm", u"a.ctl", u"a.dob", u"a.pag", u"a.bas", u"a.cls",
                                         u"A.BAS", u"a.Frm", u"bas", u"C:\\x\\abas"}) {
    EXPECT_TRUE(IsSourceModuleName(name)) << testing::PrintToString(name);
  }
  for (const std::u16string_view name :
       {u"a.txt", u"a.basx", u"a.bas ", u"as", u"", u"a.bas.txt", u"a.vbp"}) {
    EXPECT_FALSE(IsSourceModuleName(name)) << testing::PrintToString(name);
  }
}

struct InsertCase {
  std::u16string_view content;
  std::u16string_view expected;  // with <> where the text stands
};

// The content with the text <> in it, through the bytes of an encoding.
std::u16string Inserted(std::u16string_view content, const Encoding& encoding = kLibraryEncoding) {
  const auto module = InsertIntoModule(*EncodeText(content, encoding), u"<>", encoding);
  return DecodeText(module->bytes, encoding);
}

TEST(InsertIntoModule, AnswersForKnownModules) {
  const InsertCase cases[] = {
      // Behind the first line when that is the only Attribute line.
      {u"Attribute VB_Name = \"M\"\r\nOption Explicit\r\n",
       u"Attribute VB_Name = \"M\"\r\n<>\r\nOption Explicit\r\n"},
      // Behind the last line of the first run of attributes.
      {u"VERSION 1.0\r\nBEGIN\r\nEND\r\nAttribute A = 1\r\nAttribute B = 2\r\nx",
       u"VERSION 1.0\r\nBEGIN\r\nEND\r\nAttribute A = 1\r\nAttribute B = 2\r\n<>\r\nx"},
      {u"Attribute A\r\nATTRIBUTE B\r\nx", u"Attribute A\r\nATTRIBUTE B\r\n<>\r\nx"},
      {u"Attribute A\r\nx\r\nAttribute B\r\ny", u"Attribute A\r\n<>\r\nx\r\nAttribute B\r\ny"},
      // A member's attribute stands in the code.
      {u"Attribute A = 1\r\nSub S()\r\nAttribute S.VB_Description = \"x\"\r\nEnd Sub\r\n",
       u"Attribute A = 1\r\n<>\r\nSub S()\r\nAttribute S.VB_Description = \"x\"\r\nEnd Sub\r\n"},
      {u"Dim x\r\nSub S()\r\nAttribute S.VB_Description = \"x\"\r\nEnd Sub\r\n",
       u"Dim x\r\n<>\r\nSub S()\r\nAttribute S.VB_Description = \"x\"\r\nEnd Sub\r\n"},
      {u"x\r\nAttribute A = \"a.b\"\r\ny", u"x\r\nAttribute A = \"a.b\"\r\n<>\r\ny"},
      // Behind the designer's block of a form that has lost its attributes.
      {u"VERSION 5.00\r\nObject = \"{1}\"; \"x\"\r\nBegin VB.Form F\r\n   Begin VB.Label L\r\n"
       u"      Caption = \"End\"\r\n      BeginProperty Font\r\n      EndProperty\r\n   End\r\n"
       u"End\r\nSub S()",
       u"VERSION 5.00\r\nObject = \"{1}\"; \"x\"\r\nBegin VB.Form F\r\n   Begin VB.Label L\r\n"
       u"      Caption = \"End\"\r\n      BeginProperty Font\r\n      EndProperty\r\n   End\r\n"
       u"End\r\n<>\r\nSub S()"},
      {u"VERSION 5.00\r\nBegin VB.Form F\r\nx", u"VERSION 5.00\r\n<>\r\nBegin VB.Form F\r\nx"},
      {u"Sub S()\r\nBegin\r\nEnd\r\n", u"Sub S()\r\n<>\r\nBegin\r\nEnd\r\n"},
      // Behind the first line when there is none.
      {u"Option Explicit\r\nx\r\n", u"Option Explicit\r\n<>\r\nx\r\n"},
      {u"a\r\n", u"a\r\n<>\r\n"},
      // An Attribute line that ends the file.
      {u"a\r\nAttribute B", u"a\r\nAttribute B\r\n<>"},
      // No line end at all.
      {u"a", u"a\r\n<>"},
      {u"", u"\r\n<>"},
      // An empty line at the very start is not taken for the first one.
      {u"\r\na\r\nb", u"\r\na\r\n<>\r\nb"},
      {u"\r\n", u"\r\n\r\n<>"},
      // The module's line ends.
      {u"a\nAttribute B\nc", u"a\nAttribute B\n<>\nc"},
      {u"Attribute B\rc", u"Attribute B\r<>\rc"},
      {u"x\r\nAttributes = 1\r\ny", u"x\r\nAttributes = 1\r\n<>\r\ny"},
      {u"x\r\n Attribute A\r\ny", u"x\r\n<>\r\n Attribute A\r\ny"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Inserted(c.content), c.expected);
    EXPECT_EQ(Inserted(c.content, {.form = Encoding::Form::kUtf16LittleEndian}), c.expected);
    EXPECT_EQ(Inserted(c.content, {.form = Encoding::Form::kUtf16BigEndian}), c.expected);
  }
}

TEST(InsertIntoModule, KeepsTheMarkTheEncodingAndTheLineEnds) {
  struct Case {
    const char* name;
    std::string mark;
    bool has_mark;
  };
  for (const auto& [name, mark, has_mark] :
       {Case{"utf-8", "\xEF\xBB\xBF", true}, Case{"utf-8", "", false},
        Case{"utf-16le", "\xFF\xFE", true}, Case{"utf-16be", "\xFE\xFF", true},
        Case{"windows-1250", "", false}}) {
    auto encoding = *EncodingOfName(name);
    const auto old = mark + *EncodeText(u"Attribute A = \"\u010D\"\nx", encoding);
    const auto module = InsertIntoModule(old, u"\u0161\r\n\u017E\r\n");
    ASSERT_TRUE(module);
    encoding.has_mark = has_mark;
    EXPECT_EQ(module->encoding, encoding);
    EXPECT_EQ(module->line_end, LineEnd::kLf);
    EXPECT_EQ(module->inserted, u"\u0161\n\u017E\n");
    EXPECT_EQ(module->bytes,
              mark + *EncodeText(u"Attribute A = \"\u010D\"\n\u0161\n\u017E\n\nx", encoding));
  }
}

TEST(InsertIntoModule, LeavesHalfACharacterOfUtf16AtTheEnd) {
  const std::string mark = "\xFF\xFE";
  const auto module = InsertIntoModule(mark + "a" + '\0' + "b", u"<>");
  ASSERT_TRUE(module);
  EXPECT_EQ(module->bytes, mark + *EncodeText(u"a\r\n<>", module->encoding) + "b");
}

TEST(InsertIntoModule, TellsWhichCharacterTheModuleCannotKeep) {
  const auto module = InsertIntoModule("Option Explicit\r\n", u"ab\u010D", {.code_page = 1252});
  ASSERT_FALSE(module);
  EXPECT_EQ(module.error(), u'\u010D');
}

TEST(InsertIntoModule, NamesTheLineEnds) {
  EXPECT_EQ(LineEndName(InsertIntoModule("a\r\n", u"")->line_end), "crlf");
  EXPECT_EQ(LineEndName(InsertIntoModule("a\n", u"")->line_end), "lf");
  EXPECT_EQ(LineEndName(InsertIntoModule("a\r", u"")->line_end), "cr");
  EXPECT_EQ(LineEndName(InsertIntoModule("a", u"")->line_end), "crlf");
}

TEST(InsertIntoModule, TouchesNoByteOfAnyModule) {
  Random random(11);
  const std::vector<std::u16string> pieces = {u"Attribute", u"ATTRIBUTE x", u"\r\n",  u"\r",
                                              u"\n",        u"a",           u" ",     u"Begin x",
                                              u"End",       u"VERSION",     u"\u010D"};
  for (int round = 0; round < 20'000; ++round) {
    const auto old = *EncodeText(random.Text(pieces, 10), kLibraryEncoding);
    const auto module = InsertIntoModule(old, u"<>\r\n");
    ASSERT_TRUE(module);
    const auto at = module->bytes.find("<>");
    ASSERT_NE(at, std::string::npos);
    const auto line_end = module->line_end == LineEnd::kCrAndLf ? std::string("\r\n")
                          : module->line_end == LineEnd::kLf    ? std::string("\n")
                                                                : std::string("\r");
    const auto before = module->bytes.substr(0, at);
    const auto behind = module->bytes.substr(at + 2 + line_end.size());
    ASSERT_TRUE(before.ends_with(line_end)) << old;
    // Either the line end in front was there, and one of its own follows the text, or it came too.
    ASSERT_TRUE((behind.starts_with(line_end) && before + behind.substr(line_end.size()) == old) ||
                (behind.empty() && before == old + line_end))
        << old;
  }
}

}  // namespace
}  // namespace declarium
