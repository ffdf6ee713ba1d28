#include "library/temporary_file.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace declarium {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kHash = 0x0f1e2d3c4b5a6978;

TEST(TemporaryFileFor, GivesAnotherNameEveryTimeAndTellsHashAndTarget) {
  std::set<fs::path> names;
  for (int i = 0; i < 100; ++i) {
    const auto path = TemporaryFileFor(fs::path("folder") / u"Súbor.x.api", 4711, kHash);
    EXPECT_EQ(path.parent_path(), "folder");
    const auto name = ParseTemporaryFileName(path);
    ASSERT_TRUE(name) << path;
    EXPECT_EQ(name->hash, kHash);
    EXPECT_EQ(name->target, fs::path(u"Súbor.x.api"));
    names.insert(path);
  }
  EXPECT_EQ(names.size(), 100U);
}

TEST(TemporaryFileFor, LeavesTheTargetOutOfANameThatWouldBeTooLong) {
  const auto path = TemporaryFileFor(std::string(240, 'n') + ".api", 1, kHash);
  const auto name = ParseTemporaryFileName(path);
  ASSERT_TRUE(name);
  EXPECT_FALSE(name->hash);
  EXPECT_TRUE(name->target.empty());
  EXPECT_LE(path.native().size(), 255U);
}

TEST(ParseTemporaryFileName, KnowsTheNamesOfVersion3) {
  const auto name = ParseTemporaryFileName(".declarium-1.2.tmp");
  ASSERT_TRUE(name);
  EXPECT_FALSE(name->hash);
}

TEST(ParseTemporaryFileName, KnowsNothingElse) {
  for (const char* name : {"",
                           ".tmp",
                           ".declarium-",
                           ".declarium-.tmp",
                           ".declarium-1.tmp",
                           ".declarium-1..tmp",
                           ".declarium-.1.tmp",
                           ".declarium-1.2.tmp~",
                           "x.declarium-1.2.tmp",
                           "declarium-1.2.tmp",
                           ".declarium-1.2",
                           ".declarium-1.2.api",
                           ".declarium-a.2.tmp",
                           ".declarium-1.2.3.tmp",
                           ".declarium-1.b.tmp",
                           ".Declarium-1.2.tmp",
                           ".declarium-1.2.0f1e2d3c4b5a6978.tmp",
                           ".declarium-1.2.0f1e2d3c4b5a697.a.tmp",
                           ".declarium-1.2.0F1E2D3C4B5A6978.a.tmp",
                           ".declarium-1.2.0f1e2d3c4b5a697g.a.tmp",
                           ".declarium-1.2.0f1e2d3c4b5a6978..tmp"}) {
    EXPECT_FALSE(ParseTemporaryFileName(name)) << name;
  }
  EXPECT_FALSE(ParseTemporaryFileName(u"č.declarium-1.2.tmp"));
}

}  // namespace
}  // namespace declarium
