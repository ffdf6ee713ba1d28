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

TEST(InsertIntoModule, AnswersForKnownModules) {
  const InsertCase cases[] = {
      // Behind the first line when that is the only Attribute line.
      {u"Attribute VB_Name = \"M\"\r\nOption Explicit\r\n",
       u"Attribute VB_Name = \"M\"\r\n<>\r\nOption Explicit\r\n"},
      // Behind the first Attribute line that is not the first line.
      {u"VERSION 1.0\r\nBEGIN\r\nEND\r\nAttribute A = 1\r\nAttribute B = 2\r\nx",
       u"VERSION 1.0\r\nBEGIN\r\nEND\r\nAttribute A = 1\r\n<>\r\nAttribute B = 2\r\nx"},
      {u"Attribute A\r\nATTRIBUTE B\r\nx", u"Attribute A\r\nATTRIBUTE B\r\n<>\r\nx"},
      // Behind the first line when there is none.
      {u"Option Explicit\r\nx\r\n", u"Option Explicit\r\n<>\r\nx\r\n"},
      {u"a\r\n", u"a\r\n<>\r\n"},
      // An Attribute line that ends the file.
      {u"a\r\nAttribute B", u"a\r\nAttribute B\r\n<>"},
      // No line end at all.
      {u"a", u"a\r\n<>"},
      {u"", u"\r\n<>"},
      // A line end at the very start is not the first line's end: the search starts behind it.
      {u"\r\na\r\nb", u"\r\na\r\n<>\r\nb"},
      {u"\r\n", u"\r\n\r\n<>"},
      // Only CR LF is a line end.
      {u"a\nAttribute B\nc", u"a\nAttribute B\nc\r\n<>"},
      {u"x\r\nAttributes = 1\r\ny", u"x\r\nAttributes = 1\r\n<>\r\ny"},
      {u"x\r\n Attribute A\r\ny", u"x\r\n<>\r\n Attribute A\r\ny"},
  };
  for (const auto& c : cases) EXPECT_EQ(InsertIntoModule(c.content, u"<>"), c.expected);
}

// The surgery written out with 1-based positions, 0 for none.
std::u16string PlainInsert(const std::u16string& content, const std::u16string& text) {
  const auto search = [](const std::u16string& in, const std::u16string& sought, std::size_t from) {
    return from > in.size() ? 0 : in.find(sought, from - 1) + 1;
  };
  const auto attribute = search(LowerCase(content), u"\r\nattribute", 1);
  const auto q = search(content, u"\r\n", attribute + 2);
  if (q == 0) return content + u"\r\n" + text;
  return content.substr(0, q + 1) + text + content.substr(q - 1);
}

TEST(InsertIntoModule, AgreesWithItsSlowTwinOnRandomModules) {
  Random random(11);
  const std::vector<std::u16string> pieces = {u"Attribute", u"ATTRIBUTE x", u"\r\n", u"\r",
                                              u"\n",        u"a",           u" "};
  for (int round = 0; round < 20'000; ++round) {
    const auto content = random.Text(pieces, 10);
    ASSERT_EQ(InsertIntoModule(content, u"<>\r\n"), PlainInsert(content, u"<>\r\n"))
        << testing::PrintToString(content);
  }
}

}  // namespace
}  // namespace declarium
