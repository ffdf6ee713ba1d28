#include "library/library_excerpt.h"

#include <gtest/gtest.h>

#include "library/file_format.h"
#include "library/library_file.h"
#include "support/temporary_folder.h"
#include "support/texts.h"
#include "text/code_page.h"

namespace declarium {
namespace {

using namespace std::string_literals;

// Every answer of the excerpt beside that of the whole library, for every name and some others.
void ExpectTheAnswersOfTheWholeLibrary(const std::string& bytes) {
  const auto library = ParseLibrary(bytes, "some.api");
  const auto excerpt = LibraryExcerpt::Of(ViewOf(bytes), "some.api");
  ASSERT_EQ(excerpt.has_value(), library.has_value());
  if (!library) {
    EXPECT_EQ(excerpt.error().Message(), library.error().Message());
    return;
  }
  EXPECT_EQ(excerpt->Names().Title(), library->Title());
  EXPECT_EQ(excerpt->Names().path, library->path);
  for (const auto kind : kKinds) {
    ASSERT_TRUE(excerpt->Names()[kind].names == (*library)[kind].names);
    StringList sought = (*library)[kind].names;
    for (const std::u16string_view other : {u"", u"A", u"b", u"zzz"}) sought.Add(other);
    for (const auto name : sought) {
      const auto expected = FindItem(*library, kind, name);
      const auto found = excerpt->Find(kind, name);
      ASSERT_EQ(found.has_value(), expected.has_value());
      if (!found) continue;
      ASSERT_TRUE(found->kind == expected->kind && found->name == expected->name &&
                  found->item == expected->item)
          << testing::PrintToString(bytes);
    }
  }
}

TEST(LibraryExcerpt, FindsAnItemWithoutRegardToCase) {
  const auto excerpt = LibraryExcerpt::Of(ViewOf("Win\2A\0B\1Beep\1\2"
                                                 "1\0"
                                                 "2\1\n\"kernel32\"\1"s),
                                          "win.api");
  ASSERT_TRUE(excerpt);
  const auto beep = excerpt->Find(Kind::kDeclare, u"BEEP");
  ASSERT_TRUE(beep);
  EXPECT_EQ(beep->name, u"Beep");
  EXPECT_EQ(beep->item, u"\n\"kernel32\"");
  EXPECT_EQ(excerpt->Find(Kind::kConst, u"b")->item, u"2");
  EXPECT_FALSE(excerpt->Find(Kind::kType, u"Beep"));
}

TEST(LibraryExcerpt, AnItemThatTheFileLacksIsEmpty) {
  const auto excerpt = LibraryExcerpt::Of(ViewOf("T\2A\0B\2x"s), "t.api");
  ASSERT_TRUE(excerpt);
  EXPECT_EQ(excerpt->Find(Kind::kConst, u"A")->item, u"x");
  EXPECT_EQ(excerpt->Find(Kind::kConst, u"B")->item, u"");
}

TEST(LibraryExcerpt, AnswersAsTheWholeLibraryForEverySmallFile) {
  for (const auto& text : AllTexts(u"a\0\1\2"s, 7)) {
    ExpectTheAnswersOfTheWholeLibrary(EncodeCodePage(text));
  }
}

TEST(LibraryExcerpt, AnswersAsTheWholeLibraryForRandomBytesInAnyOrder) {
  Random random(11);
  for (int round = 0; round < 300; ++round) {
    std::string bytes(random.Below(400), '\0');
    for (auto& byte : bytes) {
      const auto sort = random.Below(8);
      byte = static_cast<char>(sort < 2    ? 0
                               : sort == 2 ? 1 + random.Below(2)
                               : sort < 6  ? 'A' + random.Below(40)
                                           : 3 + random.Below(253));
    }
    ExpectTheAnswersOfTheWholeLibrary(bytes);
  }
}

TEST(LibraryExcerpt, AFileFailsAsItDoesWhenLoadedWhole) {
  const TemporaryFolder folder;
  for (const auto& path : {folder / "missing.api", folder.path(), folder.Put("empty", ""),
                           folder.Put("names only", "T\2A")}) {
    const auto excerpt = LibraryExcerpt::Open(path);
    ASSERT_FALSE(excerpt);
    EXPECT_EQ(excerpt.error().Message(), LoadLibraryFile(path).error().Message());
  }
}

}  // namespace
}  // namespace declarium
