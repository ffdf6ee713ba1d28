#include "win32/program.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace declarium::win32 {
namespace {

TEST(Program, StandsWhereItsPathSays) {
  const std::filesystem::path path(ProgramPath());
  EXPECT_TRUE(path.is_absolute());
  EXPECT_TRUE(std::filesystem::is_regular_file(path));
  EXPECT_EQ(path.filename(), "win32_test.exe");
}

TEST(Program, ItsOwnNameIsNoArgument) {
  for (const auto& argument : ProgramArguments()) EXPECT_FALSE(argument.contains(u"win32_test"));
}

}  // namespace
}  // namespace declarium::win32
