#include "library/catalogue.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "library/file_name.h"
#include "support/temporary_folder.h"

namespace declarium {
namespace {

std::vector<std::u16string> Titles(const Catalogue& catalogue) {
  std::vector<std::u16string> titles;
  for (const auto& entry : catalogue) titles.push_back(entry.title);
  return titles;
}

using Strings = std::vector<std::u16string>;

TEST(Catalogue, ListsTheApiFilesOfTheFolderByName) {
  const TemporaryFolder folder;
  folder.Put("b.api", "Second\2\2");
  folder.Put("A.API", "First\2\2");
  folder.Put("c.Api", "Third\2\2");
  folder.Put("d.txt", "Other\2\2");
  folder.Put("e.apix", "Other\2\2");
  folder.Put("api", "Other\2\2");
  std::filesystem::create_directory(folder / "folder.api");
  const auto catalogue = EnumDatabases(folder.path());
  EXPECT_EQ(Titles(catalogue), (Strings{u"First", u"Second", u"Third"}));
  EXPECT_EQ(catalogue[1].path, folder / "b.api");
}

TEST(Catalogue, AFileNameNeedBeNoValidText) {
  const TemporaryFolder folder;
  const std::u16string lone_surrogate = u"a\xD800.api";
  std::vector<std::filesystem::path> files{PathOfName(lone_surrogate)};
  if constexpr (sizeof(std::filesystem::path::value_type) == 1) files.emplace_back("b\xFF\xFE.api");
  for (const auto& file : files) folder.Put(file, "Strange\2\2");
  const std::filesystem::directory_iterator listing(folder.path());
  if (std::none_of(begin(listing), end(listing),
                   [&](const auto& entry) { return entry.path() == folder / files[0]; })) {
    GTEST_SKIP() << "Wine 8 lists no such name";
  }
  const auto catalogue = EnumDatabases(folder.path());
  ASSERT_EQ(Titles(catalogue), Strings(files.size(), u"Strange"));
  for (std::size_t i = 0; i < files.size(); ++i) {
    EXPECT_EQ(catalogue[i].path, folder / files[i]);
    EXPECT_TRUE(std::filesystem::exists(catalogue[i].path));
  }
}

TEST(Catalogue, AFileMayHaveNoNameBeforeItsExtension) {
  const TemporaryFolder folder;
  folder.Put(".api", "Nameless\2\2");
  EXPECT_EQ(Titles(EnumDatabases(folder.path())), (Strings{u"Nameless"}));
}

TEST(Catalogue, AFileThatIsNoLibraryIsListedWithoutATitle) {
  const TemporaryFolder folder;
  folder.Put("a.api", "");
  folder.Put("b.api", "no separator");
  EXPECT_EQ(Titles(EnumDatabases(folder.path())), (Strings{u"", u""}));
}

TEST(Catalogue, AFolderThatCannotBeListedHasNone) {
  const TemporaryFolder folder;
  EXPECT_TRUE(EnumDatabases(folder / "missing").empty());
  EXPECT_TRUE(EnumDatabases(folder.path()).empty());
}

Catalogue SomeCatalogue() {
  return {{u"Win", "/p/a.api"}, {u"Gdi", "/p/b.api"}, {u"Win", "/p/c.api"}};
}

TEST(Catalogue, ATitleMeansTheFirstEntryThatHasIt) {
  EXPECT_EQ(FindTitle(SomeCatalogue(), u"Win"), 0U);
  EXPECT_EQ(FindTitle(SomeCatalogue(), u"Gdi"), 1U);
  EXPECT_FALSE(FindTitle(SomeCatalogue(), u"win")) << "case matters";
  EXPECT_FALSE(FindTitle(SomeCatalogue(), u""));
}

TEST(Catalogue, APathMustBeExactlyTheEntrys) {
  EXPECT_EQ(FindPath(SomeCatalogue(), "/p/c.api"), 2U);
  EXPECT_FALSE(FindPath(SomeCatalogue(), "/p/C.api"));
  EXPECT_FALSE(FindPath(SomeCatalogue(), "/p/./c.api"));
}

TEST(StartupRow, IsTheRememberedRowWhileItHasTheRememberedTitle) {
  EXPECT_EQ(StartupRow(SomeCatalogue(), 1, u"Gdi"), 1U);
  EXPECT_EQ(StartupRow(SomeCatalogue(), 2, u"Win"), 2U);
}

TEST(StartupRow, IsTheFirstWhenNoneWasSelected) {
  EXPECT_EQ(StartupRow(SomeCatalogue(), -1, u""), 0U);
  EXPECT_EQ(StartupRow(SomeCatalogue(), -1, u"Gdi"), 0U);
}

TEST(StartupRow, IsNoneWhenTheFolderChanged) {
  EXPECT_FALSE(StartupRow(SomeCatalogue(), 1, u"gdi"));
  EXPECT_FALSE(StartupRow(SomeCatalogue(), 0, u"Gdi"));
  EXPECT_FALSE(StartupRow(SomeCatalogue(), 3, u"Win"));
  EXPECT_FALSE(StartupRow(SomeCatalogue(), -2, u"Win"));
}

TEST(StartupRow, IsNoneInAnEmptyCatalogue) {
  EXPECT_FALSE(StartupRow({}, -1, u""));
  EXPECT_FALSE(StartupRow({}, 0, u""));
}

}  // namespace
}  // namespace declarium
