// Every source file that the examples and the tests have: its tokens are the file again, and its
// declarations stand where they are said to.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "text/code_page.h"
#include "vb/module.h"

namespace declarium::vb {
namespace {

bool IsSource(const std::filesystem::path& path) {
  const auto extension = path.extension();
  return extension == ".bas" || extension == ".cls" || extension == ".frm" || extension == ".ctl";
}

std::vector<std::filesystem::path> Sources() {
  std::vector<std::filesystem::path> sources;
  for (const char* const folder : {"examples", "tests", "fuzz/corpus/import"}) {
    const auto root = std::filesystem::path(DECLARIUM_SOURCE_DIR) / folder;
    const bool all = folder[0] == 'f';
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
      if (entry.is_regular_file() && (all || IsSource(entry.path())))
        sources.push_back(entry.path());
  }
  return sources;
}

std::u16string TextOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return DecodeCodePage(std::string{std::istreambuf_iterator<char>(file), {}});
}

TEST(RoundTrip, OfEverySourceThereIsLosesNothing) {
  const auto sources = Sources();
  ASSERT_GE(sources.size(), 6u);
  for (const auto& path : sources) {
    const auto text = TextOf(path);
    std::u16string together;
    Tokenizer tokenizer(text);
    for (auto token = tokenizer.Next(); token.kind != TokenKind::kEnd; token = tokenizer.Next())
      together += token.text;
    EXPECT_EQ(together, text) << path;
  }
}

TEST(RoundTrip, OfTheExamplesFindsTheirDeclarationsWithoutAnError) {
  std::size_t declarations = 0;
  for (const auto& path : Sources()) {
    if (path.parent_path().filename() != "examples") continue;
    const auto text = TextOf(path);
    const auto module = ReadModule(text);
    EXPECT_TRUE(module.errors.empty()) << path;
    const bool is_counted = path.stem() == "TrayIcon" || path.stem() == "WinShell";
    if (is_counted) declarations += module.declarations.size();
    for (const auto& declaration : module.declarations)
      EXPECT_EQ(text.substr(declaration.place.offset, declaration.text.size()), declaration.text);
  }
  EXPECT_EQ(declarations, 102u + 66u + 18u);
}

}  // namespace
}  // namespace declarium::vb
