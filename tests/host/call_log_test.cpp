#include "host/call_log.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

class LogFileTest : public testing::Test {
 protected:
  [[nodiscard]] std::vector<std::string> Logs() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(logs_)) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }

  TemporaryFolder folder_;
  fs::path logs_ = folder_ / "Declarium" / "Log";
};

TEST_F(LogFileTest, EachLineHasItsTimeAndIsThereAtOnce) {
  LogFile log(logs_, "first");
  log.Add("OnConnection");
  log.Add("CommandBars 80010001");
  const std::string text = ContentOf(logs_ / "first.log");
  EXPECT_TRUE(text.ends_with("\tCommandBars 80010001\r\n")) << text;
  EXPECT_EQ(std::ranges::count(text, '\n'), 2);
  EXPECT_TRUE(text[0] >= '0' && text[0] <= '9');
}

TEST_F(LogFileTest, OnlyTheLastLogsAreKept) {
  for (int i = 0; i < LogFile::kMostFiles + 5; ++i) {
    LogFile(logs_, std::string(1, static_cast<char>('a' + i))).Add("line");
  }
  const auto logs = Logs();
  ASSERT_EQ(logs.size(), static_cast<std::size_t>(LogFile::kMostFiles));
  EXPECT_EQ(logs.front(), "f.log");
  EXPECT_EQ(logs.back(), "o.log");
}

TEST_F(LogFileTest, OtherFilesOfTheFolderStay) {
  fs::create_directories(logs_);
  folder_.Put("Declarium/Log/0.txt", "mine");
  for (int i = 0; i < LogFile::kMostFiles + 2; ++i) {
    LogFile(logs_, std::string(1, static_cast<char>('a' + i))).Add("line");
  }
  EXPECT_EQ(Logs().front(), "0.txt");
}

TEST_F(LogFileTest, ALogDoesNotGrowWithoutEnd) {
  LogFile log(logs_, "long");
  const std::string line(1000, 'x');
  for (std::size_t i = 0; i < LogFile::kMostBytes / 500; ++i) log.Add(line);
  EXPECT_LT(fs::file_size(logs_ / "long.log"), LogFile::kMostBytes + 2 * line.size());
}

TEST_F(LogFileTest, AFolderThatCannotBeMadeIsNoFailure) {
  folder_.Put("Declarium", "a file in its way");
  LogFile log(logs_, "none");
  log.Add("line");
  EXPECT_FALSE(fs::exists(logs_));
}

TEST(LogName, IsOfOneProcessAndSortsByTime) {
  const std::string name = LogName(4711);
  EXPECT_TRUE(name.ends_with("-4711")) << name;
  EXPECT_EQ(name.find('-'), 8u);
  EXPECT_EQ(name.size(), 20u);
}

}  // namespace
}  // namespace declarium
