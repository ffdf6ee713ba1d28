#include "basket/listed_libraries.h"

#include <fstream>
#include <gtest/gtest.h>

#include "library/file_format.h"
#include "library/file_name.h"
#include "support/temporary_folder.h"
#include "text/text.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kItem =
    u"Long\x0E"
    u"1";

ItemView One(std::u16string_view name) {
  return {Kind::kConst, name, kItem};
}

class ListedLibrariesTest : public testing::Test {
 protected:
  ListedLibrariesTest() {
    for (const auto* const folder : {"program", "project", "elsewhere"})
      fs::create_directories(folder_ / folder);
    open_ = Put("project/open.api", u"A");
    open_.path = folder_ / "project" / "open.api";
  }

  // A library file with this constant.
  Library Put(const std::string& file, const std::u16string& name) {
    Library library;
    library.SetItems(Kind::kConst, {{name}, {std::u16string(kItem)}});
    library.SetTitle(u"Library of " + name);
    std::ofstream(folder_ / file, std::ios::binary) << LibraryBytes(library);
    return library;
  }

  // The titles of what a list in "project" with these lines opens.
  std::vector<std::string> Titles(std::u16string_view text) {
    const auto list = ReadListFile(text);
    EXPECT_TRUE(list.has_value());
    const auto listed =
        OpenListed(*list, folder_ / "project" / "a.list", open_, folder_ / "program");
    unreadable_ = listed.unreadable;
    std::vector<std::string> titles;
    for (const auto* const library : listed.all) titles.push_back(ToUtf8(library->Title()));
    return titles;
  }

  TemporaryFolder folder_;
  Library open_;
  std::vector<std::u16string> unreadable_;
};

using Strings = std::vector<std::string>;

TEST_F(ListedLibrariesTest, AreFoundFromTheFolderOfTheList) {
  Put("elsewhere/b.api", u"B");
  EXPECT_EQ(Titles(u"#library ../elsewhere/b.api\r\n#library open.api"),
            (Strings{"Library of B", "Library of A"}));
  EXPECT_EQ(Titles(u"#library ..\\elsewhere\\b.api"), (Strings{"Library of B"}));
  EXPECT_TRUE(unreadable_.empty());
}

TEST_F(ListedLibrariesTest, TakeTheOpenOneWithItsUnsavedChanges) {
  open_.SetTitle(u"Changed");
  EXPECT_EQ(Titles(u"#library open.api"), (Strings{"Changed"}));
  EXPECT_EQ(Titles(u"#library ./../project/open.api"), (Strings{"Changed"}));
}

TEST_F(ListedLibrariesTest, OfAListThatWasMovedAreTheOpenOneOrThatOfTheProgram) {
  Put("program/b.api", u"B");
  EXPECT_EQ(Titles(u"#library gone/open.api\r\n#library gone/b.api"),
            (Strings{"Library of A", "Library of B"}));
}

TEST_F(ListedLibrariesTest, ThatCannotBeReadAreToldAndTheOpenOneIsLeft) {
  std::ofstream(folder_ / "project" / "broken.api") << "no library";
  EXPECT_EQ(Titles(u"#library gone.api\r\n#library broken.api"), (Strings{"Library of A"}));
  EXPECT_EQ(unreadable_, (std::vector<std::u16string>{u"gone.api", u"broken.api"}));
  EXPECT_EQ(Titles(u"A"), (Strings{"Library of A"}));
}

TEST_F(ListedLibrariesTest, AreNamedFromTheFolderOfTheListAndFoundByThatName) {
  const fs::path list = folder_ / "project" / "a.list";
  EXPECT_EQ(NameInList(list, folder_ / "project" / "open.api"), u"open.api");
  EXPECT_EQ(NameInList(list, folder_ / "project" / "sub" / "b.api"), u"sub/b.api");
  EXPECT_EQ(NameInList(list, folder_ / "elsewhere" / "b.api"), u"../elsewhere/b.api");
  for (const auto* const file : {"open.api", "O'Neil/b.api", "a [1]/b.api", "# c/b.api"}) {
    const auto path = folder_ / "project" / file;
    const std::u16string names[] = {NameInList(list, path)};
    const auto read = ReadListFile(ListText(names, vb::Audience::kVb6, {}));
    ASSERT_TRUE(read.has_value()) << file;
    ASSERT_EQ(read->libraries.size(), 1u);
    EXPECT_EQ(PathFromList(list, read->libraries[0]).lexically_normal(), path.lexically_normal());
  }
}

TEST_F(ListedLibrariesTest, OfABasketAreThoseThatHaveItsEntries) {
  Put("program/b.api", u"B");
  Put("program/c.api", u"C");
  const std::vector<fs::path> others = {folder_ / "program" / "b.api",
                                        folder_ / "program" / "gone.api",
                                        folder_ / "program" / "c.api"};
  const auto all = FindSources(std::vector{One(u"A"), One(u"C"), One(u"X")}, open_, others);
  EXPECT_EQ(all.libraries, (std::vector<fs::path>{open_.path, others[2]}));
  EXPECT_EQ(all.lost, (std::vector<std::u16string>{u"X"}));
}

TEST_F(ListedLibrariesTest, OfABasketDoNotGiveBackWhatTheyHaveOtherwise) {
  const ItemView items[] = {{Kind::kConst, u"A",
                             u"Long\x0E"
                             u"2"},
                            {Kind::kDeclare, u"A", kItem}};
  const auto sources = FindSources(items, open_, {});
  EXPECT_EQ(sources.libraries, (std::vector<fs::path>{open_.path}));
  EXPECT_EQ(sources.lost, (std::vector<std::u16string>{u"A", u"A"}));
}

TEST_F(ListedLibrariesTest, OfABasketAreNoneThatIsInNoFile) {
  open_.path.clear();
  const auto sources = FindSources(std::vector{One(u"A")}, open_, {});
  EXPECT_TRUE(sources.libraries.empty());
  EXPECT_TRUE(sources.lost.empty());
}

}  // namespace
}  // namespace declarium
