#include "app/named_library.h"

#include <gtest/gtest.h>
#include <vector>

#include "library/file_name.h"
#include "support/temporary_folder.h"

namespace declarium {
namespace {

class NamedLibraryTest : public testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path Find(const std::vector<std::u16string>& words) const {
    return FindNamedLibrary(words, caller_.path(), program_.path());
  }

  TemporaryFolder caller_;
  TemporaryFolder program_;
};

TEST_F(NamedLibraryTest, IsLookedForWhereTheCallerIsFirst) {
  caller_.Put("a.api", "");
  program_.Put("a.api", "");
  EXPECT_EQ(Find({u"a.api"}), caller_ / "a.api");
}

TEST_F(NamedLibraryTest, IsLookedForInTheProgramsFolderNext) {
  std::filesystem::create_directory(caller_ / "a.api");
  program_.Put("a.api", "");
  EXPECT_EQ(Find({u"a.api"}), program_ / "a.api") << "a folder is no library";
}

TEST_F(NamedLibraryTest, MayHaveBlanksWithoutQuotes) {
  caller_.Put("my old library.api", "");
  EXPECT_EQ(Find({u"my", u"old", u"library.api"}), caller_ / "my old library.api");
}

TEST_F(NamedLibraryTest, WithAFullPathIsThatFile) {
  const auto file = program_.Put("a.api", "");
  EXPECT_EQ(Find({NameOfPath(file)}), file);
}

TEST_F(NamedLibraryTest, IsNoneWithoutWords) {
  EXPECT_EQ(Find({}), std::filesystem::path());
}

TEST_F(NamedLibraryTest, NeedNotExist) {
  EXPECT_EQ(Find({u"a.api"}), program_ / "a.api");
}

TEST_F(NamedLibraryTest, MayBeNoValidText) {
  const std::u16string name = u"a\xD800.api";
  EXPECT_EQ(Find({name}), program_ / PathOfName(name));
}

}  // namespace
}  // namespace declarium
