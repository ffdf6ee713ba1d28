// The examples of docs/file-format.md, read from the page itself.
#include <charconv>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

#include "import/merge.h"
#include "library/file_format.h"
#include "text/text.h"

namespace declarium {
namespace {

std::string Page() {
  std::ifstream file(std::filesystem::path(DECLARIUM_SOURCE_DIR) / "docs/file-format.md");
  return {std::istreambuf_iterator<char>(file), {}};
}

// The fenced blocks of a language, in order.
std::vector<std::string> Blocks(const std::string& language) {
  std::vector<std::string> blocks;
  std::istringstream page(Page());
  bool inside = false;
  for (std::string line; std::getline(page, line);) {
    if (inside && line == "```") {
      inside = false;
    } else if (inside) {
      blocks.back() += line + "\n";
    } else if (line == "```" + language) {
      inside = true;
      blocks.emplace_back();
    }
  }
  return blocks;
}

// The bytes at the start of every line; what is no pair of hexadecimal digits begins the remark.
std::string Bytes(const std::string& block) {
  std::string bytes;
  std::istringstream lines(block);
  for (std::string line; std::getline(lines, line);) {
    const auto remark = line.find("  ");
    std::istringstream words(line.substr(0, remark));
    for (std::string word; words >> word;) {
      int byte = 0;
      const auto end = std::from_chars(word.data(), word.data() + word.size(), byte, 16).ptr;
      EXPECT_TRUE(word.size() == 2 && end == word.data() + 2) << word;
      bytes.push_back(static_cast<char>(byte));
    }
  }
  return bytes;
}

TEST(FileFormatPage, TheExamplesSourceGivesItsBytes) {
  const auto source = Blocks("vb");
  const auto hex = Blocks("hex");
  ASSERT_EQ(source.size(), 1U);
  ASSERT_EQ(hex.size(), 2U);

  Library library;
  library.SetTitle(u"Okná");
  MergeItems(library, ParseDeclarations(ReadSource(FromUtf8(source[0]))), Existing::kKeep);
  EXPECT_EQ(LibraryBytes(library), Bytes(hex[0]));
}

TEST(FileFormatPage, TheExamplesBytesLoadAndSaveThemselves) {
  const auto bytes = Bytes(Blocks("hex").at(0));
  const auto library = ParseLibrary(bytes, "example.api");
  ASSERT_TRUE(library);
  EXPECT_EQ(library->Title(), u"Okná");
  EXPECT_EQ((*library)[Kind::kConst].names, StringList({u"MAX_PATH", u"SW_SHOW"}));
  EXPECT_EQ(FindItem(*library, Kind::kConst, u"sw_show")->item,
            u"Long\x0E"
            u"5");
  EXPECT_EQ(FindItem(*library, Kind::kDeclare, u"GetTickCount")->item,
            u"\x0B\"kernel32\" () As Long");
  EXPECT_EQ(FindItem(*library, Kind::kType, u"POINTAPI")->item, u"\x0Cx As Long\ry As Long");
  EXPECT_EQ(LibraryBytes(*library), bytes);
}

TEST(FileFormatPage, TheEmptyExampleIsANewLibrary) {
  EXPECT_EQ(Bytes(Blocks("hex").at(1)), EmptyLibraryBytes(u"Okná"));
}

}  // namespace
}  // namespace declarium
