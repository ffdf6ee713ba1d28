#include "library/file_format.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "support/texts.h"
#include "text/code_page.h"

namespace declarium {
namespace {

using namespace std::string_literals;

Library Parse(std::string_view bytes) {
  auto library = ParseLibrary(bytes, "some.api");
  EXPECT_TRUE(library) << (library ? "" : library.error().Message());
  return library ? *std::move(library) : Library();
}

// A library titled Win with the constants A and B and one Sub named Beep.
const std::string kWin =
    "Win\2A\0B\1Beep\1\2\x0E"
    "1\0Long\x0E"
    "2\1\n\"kernel32\" ()\1"s;

Library WinLibrary() {
  Library library;
  library.SetTitle(u"Win");
  library.SetItems(Kind::kConst, {{u"A", u"B"},
                                  {u"\x0E"
                                   u"1",
                                   u"Long\x0E"
                                   u"2"}});
  library.SetItems(Kind::kDeclare, {{u"Beep"}, {u"\n\"kernel32\" ()"}});
  return library;
}

void ExpectSameContent(const Library& a, const Library& b) {
  EXPECT_EQ(a.Title(), b.Title());
  for (const auto kind : kKinds) {
    EXPECT_EQ(a[kind].names, b[kind].names);
    EXPECT_EQ(a[kind].items, b[kind].items);
  }
}

TEST(FileFormat, ReadsSectionsKindsAndEntries) {
  const auto library = Parse(kWin);
  ExpectSameContent(library, WinLibrary());
  EXPECT_EQ(library.path, "some.api");
  EXPECT_FALSE(library.dirty);
}

TEST(FileFormat, WritesWhatItReads) {
  EXPECT_EQ(LibraryBytes(WinLibrary()), kWin);
}

TEST(FileFormat, ALibraryOfAnyLengthEndsWithItsLastEntry) {
  for (std::size_t length = 0; length < 100; ++length) {
    Library library;
    library.SetTitle(std::u16string(length, u't'));
    ASSERT_EQ(LibraryBytes(library), std::string(length, 't') + "\2\1\1\2\1\1");
  }
}

TEST(FileFormat, ANewLibraryIsItsTitleAndTwoSeparators) {
  EXPECT_EQ(EmptyLibraryBytes(u"T"), "T\2\2");
  const auto library = Parse("T\2\2");
  EXPECT_EQ(library.Title(), u"T");
  EXPECT_FALSE(library.HasItems());
  for (const auto kind : kKinds) EXPECT_TRUE(library[kind].items.empty());
}

TEST(FileFormat, AKindWithoutItemsIsNothingBetweenItsSeparators) {
  Library library;
  library.SetItems(Kind::kConst, {{u"A"},
                                  {u"\x0E"
                                   u"1"}});
  library.SetItems(Kind::kType, {{u"R"}, {u"\x0C"}});
  EXPECT_EQ(LibraryBytes(library),
            "\2A\1\1R\2\x0E"
            "1\1\1\x0C");
  EXPECT_EQ(LibraryBytes(Library()), "\2\1\1\2\1\1");
}

TEST(FileFormat, AMissingKindIsEmpty) {
  const auto library = Parse("T\2A\1B\2a\1b");
  EXPECT_EQ(library[Kind::kConst].names, StringList({u"A"}));
  EXPECT_EQ(library[Kind::kDeclare].names, StringList({u"B"}));
  EXPECT_TRUE(library[Kind::kType].names.empty());
  EXPECT_EQ(library[Kind::kDeclare].items, StringList({u"b"}));
  EXPECT_TRUE(library[Kind::kType].items.empty());
}

TEST(FileFormat, FurtherSectionsAndPartsAreIgnored) {
  const auto library = Parse("T\2A\1B\1C\1D\2a\1b\1c\1d\2more\2");
  EXPECT_EQ(LibraryBytes(library), "T\2A\1B\1C\2a\1b\1c");
}

TEST(FileFormat, NamesAndItemsMayDifferInNumber) {
  const auto bytes = "T\2A\0B\1\1C\2a\1x\0y\1"s;
  const auto library = Parse(bytes);
  EXPECT_EQ(library[Kind::kConst].names, StringList({u"A", u"B"}));
  EXPECT_EQ(library[Kind::kConst].items, StringList({u"a"}));
  EXPECT_EQ(library[Kind::kConst].ItemAt(1), u"");
  EXPECT_TRUE(library[Kind::kDeclare].names.empty());
  EXPECT_EQ(library[Kind::kDeclare].items, StringList({u"x", u"y"}));
  EXPECT_EQ(LibraryBytes(library), bytes) << "saving writes what is there";
}

TEST(FileFormat, EmptyEntriesBesideASeparatorAreEntries) {
  const auto bytes = "\2\0A\1\0\1\2\0\1\1"s;
  const auto library = Parse(bytes);
  EXPECT_EQ(library[Kind::kConst].names, StringList({u"", u"A"}));
  EXPECT_EQ(library[Kind::kDeclare].names, StringList({u"", u""}));
  EXPECT_EQ(LibraryBytes(library), bytes);
}

TEST(FileFormat, OnlyByteTwoEndsTheTitle) {
  const auto bytes = "a\0b\1c\2\1\1\2\1\1"s;
  EXPECT_EQ(Parse(bytes).Title(), u"a\0b\1c"s);
  EXPECT_EQ(LibraryBytes(Parse(bytes)), bytes);
}

TEST(FileFormat, BytesWithoutTwoSectionsAreNoLibrary) {
  for (const auto& bytes : {""s, "T"s, "T\2"s, "T\2A\1B\1C"s, "\0\1"s}) {
    const auto library = ParseLibrary(bytes, "some.api");
    ASSERT_FALSE(library);
    EXPECT_EQ(library.error().kind, ErrorKind::kInvalidFormat);
    EXPECT_TRUE(library.error().Message().starts_with("some.api: not a library"))
        << library.error().Message();
  }
}

TEST(FileFormat, NamesAreTakenThoughTheItemsAreMissing) {
  auto library = WinLibrary();
  const auto sections = CutIntoSections("T\2X\1Y");
  EXPECT_TRUE(TakeNames(sections, library));
  EXPECT_FALSE(TakeItems(sections, library));
  EXPECT_EQ(library[Kind::kConst].names, StringList({u"X"}));
  EXPECT_EQ(library[Kind::kDeclare].names, StringList({u"Y"}));
  EXPECT_EQ(library[Kind::kConst].items, WinLibrary()[Kind::kConst].items);
  EXPECT_EQ(library.Title(), u"Win");
}

TEST(FileFormat, WithoutNamesNothingIsTaken) {
  auto library = WinLibrary();
  const auto sections = CutIntoSections("T");
  EXPECT_FALSE(TakeNames(sections, library));
  EXPECT_FALSE(TakeItems(sections, library));
  ExpectSameContent(library, WinLibrary());
}

TEST(FileFormat, AllOtherBytesLoadAndSaveThemselves) {
  std::string all;
  for (int byte = 3; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
  const auto bytes = all + "\2" + all + "\1\1\2" + all + "\1\1";
  EXPECT_EQ(LibraryBytes(Parse(bytes)), bytes);
}

TEST(FileFormat, ACharacterOutsideTheCodePageIsWrittenAsAQuestionMark) {
  EXPECT_EQ(EmptyLibraryBytes(u"\u0416"), "?\2\2");
}

// The rules once more on bytes: what is written for what was read.
std::string Tidied(std::string_view bytes) {
  const auto cut = [](std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t start = 0;;) {
      const auto end = text.find(separator, start);
      parts.emplace_back(text.substr(start, end - start));
      if (end == text.npos) return parts;
      start = end + 1;
    }
  };
  const auto sections = cut(bytes, '\2');
  auto written = sections[0];
  for (const std::size_t s : {1, 2}) {
    auto kinds = cut(sections[s], '\1');
    kinds.resize(3);
    written += '\2' + kinds[0] + '\1' + kinds[1] + '\1' + kinds[2];
  }
  return written;
}

TEST(FileFormat, EverySmallFileIsALibraryOrRefused) {
  for (const auto& text : AllTexts(u"a\0\1\2"s, 7)) {
    const auto bytes = EncodeCodePage(text);
    const auto library = ParseLibrary(bytes, "x");
    ASSERT_EQ(library.has_value(), std::ranges::count(bytes, '\2') >= 2);
    if (!library) continue;
    ASSERT_EQ(LibraryBytes(*library), Tidied(bytes)) << testing::PrintToString(bytes);
  }
}

TEST(FileFormat, RandomBytesSurviveLoadAndSave) {
  Random random(7);
  for (int round = 0; round < 500; ++round) {
    std::string bytes(random.Below(300), '\0');
    for (auto& byte : bytes) {
      byte = static_cast<char>(random.Below(3) == 0 ? random.Below(3) : random.Below(256));
    }
    const auto library = ParseLibrary(bytes, "x");
    if (!library) continue;
    const auto saved = LibraryBytes(*library);
    ASSERT_EQ(saved, Tidied(bytes));
    ASSERT_EQ(LibraryBytes(Parse(saved)), saved);
  }
}

}  // namespace
}  // namespace declarium
