#include "shell/file_store.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sstream>
#include <string>

namespace declarium {
namespace {

using namespace std::string_literals;

constexpr std::u16string_view kKey = u"Software\\Maker\\Program 1.0";

// A store in a folder of its own, which is gone afterwards.
class FileStoreTest : public testing::Test {
 protected:
  FileStoreTest()
      : folder_(std::filesystem::temp_directory_path() /
                ("file_store_test_" + std::to_string(std::random_device()()))),
        store_(folder_) {
    std::filesystem::remove_all(folder_);
  }
  ~FileStoreTest() override { std::filesystem::remove_all(folder_); }

  [[nodiscard]] std::filesystem::path File() const {
    return folder_ / "software" / "maker" / "program 1.0.values";
  }
  [[nodiscard]] std::string Content() const {
    std::ostringstream content;
    content << std::ifstream(File(), std::ios::binary).rdbuf();
    return content.str();
  }
  void WriteContent(std::string_view content) {
    std::filesystem::create_directories(File().parent_path());
    std::ofstream(File(), std::ios::binary) << content;
  }

  std::filesystem::path folder_;
  FileStore store_;
};

TEST_F(FileStoreTest, GivesTheDefaultBeforeAnythingWasWritten) {
  EXPECT_EQ(store_.GetValue(kKey, u"A", 5), SettingValue(5));
  EXPECT_FALSE(std::filesystem::exists(folder_));
}

TEST_F(FileStoreTest, KeepsValuesInOneFileForEachKey) {
  EXPECT_TRUE(store_.SetValue(kKey, u"KeywordColor", ValueType::kInteger, 0xFF0000));
  EXPECT_TRUE(store_.SetValue(kKey, u"LastDatabaseName", ValueType::kText, u"A"s));
  EXPECT_TRUE(store_.SetValue(kKey, u"Nič", ValueType::kBinary, u""s));
  EXPECT_EQ(Content(), "4 0000ff00 KeywordColor\n1 41000000 LastDatabaseName\n3 - Nič\n");
}

TEST_F(FileStoreTest, ReturnsWhatAnotherStoreOfTheFolderWrote) {
  ASSERT_TRUE(store_.SetValue(kKey, u"Text", ValueType::kText, u"ž\0\xD800 x\n"s));
  ASSERT_TRUE(store_.SetValue(kKey, u"Bytes", ValueType::kBinary, u"ab\n"s));
  ASSERT_TRUE(store_.SetValue(kKey, u"Number", ValueType::kInteger, -1));
  const FileStore other(folder_);
  EXPECT_EQ(other.GetValue(kKey, u"Text", {}), SettingValue(u"ž\0\xD800 x\n"s));
  EXPECT_EQ(other.GetValue(kKey, u"Bytes", {}), SettingValue(u"ab\n"s));
  EXPECT_EQ(other.GetValue(kKey, u"Number", {}), SettingValue(-1));
}

TEST_F(FileStoreTest, ReplacesAValueInItsPlaceAndType) {
  ASSERT_TRUE(store_.SetValue(kKey, u"A", ValueType::kInteger, 1));
  ASSERT_TRUE(store_.SetValue(kKey, u"B", ValueType::kInteger, 2));
  ASSERT_TRUE(store_.SetValue(kKey, u"A", ValueType::kText, u"x"s));
  EXPECT_EQ(Content(), "1 78000000 A\n4 02000000 B\n");
}

TEST_F(FileStoreTest, ComparesKeysAndNamesWithoutCase) {
  ASSERT_TRUE(store_.SetValue(kKey, u"Name", ValueType::kInteger, 1));
  EXPECT_EQ(store_.GetValue(u"SOFTWARE\\maker\\PROGRAM 1.0", u"nAME", 5), SettingValue(1));
}

TEST_F(FileStoreTest, KeepsTheValuesOfAKeyThatIsCreatedAgain) {
  ASSERT_TRUE(store_.SetValue(kKey, u"A", ValueType::kInteger, 1));
  EXPECT_TRUE(store_.CreateKey(kKey));
  EXPECT_EQ(store_.GetValue(kKey, u"A", 5), SettingValue(1));
}

TEST_F(FileStoreTest, KeepsAKeyApartFromTheKeysBelowIt) {
  ASSERT_TRUE(store_.SetValue(u"Software", u"A", ValueType::kInteger, 1));
  ASSERT_TRUE(store_.SetValue(u"Software\\Maker", u"A", ValueType::kInteger, 2));
  EXPECT_EQ(store_.GetValue(u"Software", u"A", 5), SettingValue(1));
  EXPECT_EQ(store_.GetValue(u"Software\\Maker", u"A", 5), SettingValue(2));
}

TEST_F(FileStoreTest, PassesOverLinesThatItDidNotWrite) {
  WriteContent("rubbish\n4 01000000 A\nx 01 B\n4 0 C\n4 zz D\n\n4 02000000 E");
  EXPECT_EQ(store_.GetValue(kKey, u"A", 5), SettingValue(1));
  for (const auto* name : {u"B", u"C", u"D"}) {
    EXPECT_EQ(store_.GetValue(kKey, name, 5), SettingValue(5));
  }
  EXPECT_EQ(store_.GetValue(kKey, u"E", 5), SettingValue(2));
}

TEST_F(FileStoreTest, RefusesKeysAndNamesThatNoFileCanHold) {
  for (const auto& key : {u""s, u"\\A"s, u"A\\"s, u"A\\..\\B"s, u"."s, u"A/B"s, u"A\n"s}) {
    EXPECT_FALSE(store_.SetValue(key, u"A", ValueType::kInteger, 1));
    EXPECT_EQ(store_.GetValue(key, u"A", 5), SettingValue(5));
  }
  EXPECT_FALSE(store_.SetValue(kKey, u"A\nB", ValueType::kInteger, 1));
  EXPECT_FALSE(store_.SetValue(kKey, u"\xD800", ValueType::kInteger, 1));
}

TEST_F(FileStoreTest, FailsWhereTheFolderIsAFile) {
  std::ofstream(folder_) << "in the way";
  EXPECT_FALSE(store_.SetValue(kKey, u"A", ValueType::kInteger, 1));
  EXPECT_EQ(store_.GetValue(kKey, u"A", 5), SettingValue(5));
}

}  // namespace
}  // namespace declarium
