#include "source/source_check.h"

#include <gtest/gtest.h>

#include "library/library_file.h"
#include "source/item_text.h"

namespace declarium {
namespace {

TEST(IsSource, BeginsAsALineOfAModuleCan) {
  for (const std::u16string_view text :
       {u"", u"\r\n \t\r\n", u"' anything", u"Rem x", u"Option Explicit", u"ATTRIBUTE VB_Name = 1",
        u"VERSION 5.00\r\n", u"\r\n\tpublic sub X()", u"Begin VB.Form F", u"#If VBA7 Then",
        u"Const A = 1", u"Object=x", u"DefLng A-Z", u"Sub"}) {
    EXPECT_TRUE(IsSource(text)) << testing::PrintToString(text);
  }
  for (const std::u16string_view text : {u"Dear all,", u"{\"json\": 1}", u"<html>",
                                         u"\x7F"
                                         u"ELF",
                                         u"MZ\0", u"Attributes", u"x\r\nOption Explicit", u"100"}) {
    EXPECT_FALSE(IsSource(text)) << testing::PrintToString(text);
  }
}

TEST(IsWrittenSource, KnowsWhatTheProgramWritesAndWhatTheEditorAdds) {
  for (const std::u16string_view text :
       {u"", u"\r\n", u"Const A = 1", u"Const A As Long = 1 'c\r\n", u"Public Const A = ",
        u"Private Declare Sub S Lib \"l\" ()\r\nDeclare Function F Lib \"l\" () As Long",
        u"Private Const A = 1\r\n\r\nPrivate Type T\r\n\tx As Long\r\n\t\t\t'c\r\nEnd Type\r\n",
        u"Type T\r\nEnd Type", u"Const A = 1\nType T\n\tx\nEnd Type\n",
        u"Attribute VB_Name = \"M\"\r\nOption Explicit\r\nPublic Const A = 1\r\n"}) {
    EXPECT_TRUE(IsWrittenSource(text)) << testing::PrintToString(text);
  }
}

TEST(IsWrittenSource, AnythingThatWouldBeLostSaysNo) {
  for (const std::u16string_view text :
       {u"Sub Main()\r\nEnd Sub", u"Const A = 1\r\nDim x", u"' my notes", u"Const A = 1\r\n'mine",
        u"const A = 1", u"Const A", u"Declare Sub S", u"Declare PtrSafe Sub S Lib \"l\" ()",
        u"Type T\r\n    x As Long\r\nEnd Type", u"Type T\r\n\tx As Long", u"Enum E\r\nEnd Enum",
        u"Public x As Long", u"\tConst A = 1", u"Friend Const A = 1"}) {
    EXPECT_FALSE(IsWrittenSource(text)) << testing::PrintToString(text);
  }
}

TEST(IsWrittenSource, TheBundledLibrarysExportIs) {
  const auto library = LoadLibraryFile(DECLARIUM_SOURCE_DIR "/data/Win32.api");
  ASSERT_TRUE(library);
  const auto text = ExportText(*library);
  EXPECT_TRUE(IsWrittenSource(text));
  EXPECT_FALSE(IsWrittenSource(text + u"\r\nSub Main()"));
}

}  // namespace
}  // namespace declarium
