#include "check/library_check.h"

#include <gtest/gtest.h>
#include <set>

#include "check/library_source.h"
#include "library/library_file.h"
#include "source/item_text.h"

namespace declarium::check {
namespace {

const std::filesystem::path kData = std::filesystem::path(DECLARIUM_SOURCE_DIR) / "data";

TEST(LibrarySource, FindsTheItemOfItsFirstAndItsLastCharacter) {
  const auto library = LoadLibraryFile(kData / "Win32_Web.api").value();
  const LibrarySource source(library);
  EXPECT_EQ(source.Text(), ExportText(library));
  std::size_t start = 0;
  for (const auto kind : kKinds) {
    const auto& lists = library[kind];
    for (std::size_t i = 0; i < lists.names.size(); ++i) {
      const auto size = ItemText(kind, lists.names[i], lists.ItemAt(i)).size();
      for (const auto offset : {start, start + size - 1}) {
        const auto item = source.ItemAt(offset);
        ASSERT_EQ(item.kind, kind);
        ASSERT_EQ(item.name, lists.names[i]);
      }
      start += size + 2;
    }
  }
}

TEST(CheckLibrary, FindsNothingInALibraryThatComesWithTheProgram) {
  const auto library = LoadLibraryFile(kData / "Win32_Web.api").value();
  const auto found =
      CheckLibrary(library, {kData / "Win32_Web.api"}, [](int, int) { return true; });
  ASSERT_TRUE(found);
  EXPECT_TRUE(found->empty());
}

TEST(CheckLibrary, TellsItsProgressAndStopsAtEveryStep) {
  const Library library;
  const std::vector against = {kData / "none.api", kData / "Win32_Web.api"};
  std::vector<int> steps;
  int all_steps = 0;
  ASSERT_TRUE(CheckLibrary(library, against, [&](int done, int all) {
    steps.push_back(done);
    all_steps = all;
    return true;
  }));
  ASSERT_EQ(static_cast<int>(steps.size()), all_steps);
  for (int i = 0; i < all_steps; ++i) EXPECT_EQ(steps[static_cast<std::size_t>(i)], i);
  for (int last = 0; last < all_steps; ++last) {
    int heard = 0;
    EXPECT_FALSE(CheckLibrary(library, against, [&](int done, int) {
      ++heard;
      return done < last;
    }));
    EXPECT_EQ(heard, last + 1);
  }
}

TEST(WindowTexts, EveryRuleHasItsOwn) {
  std::set<std::u16string_view> titles;
  for (const auto& rule : Rules()) {
    EXPECT_TRUE(titles.insert(rule.window.title).second) << rule.number;
    EXPECT_FALSE(rule.window.title.empty()) << rule.number;
    EXPECT_FALSE(rule.window.title.ends_with(u'.')) << rule.number;
    EXPECT_TRUE(rule.window.consequence.ends_with(u'.')) << rule.number;
  }
}

}  // namespace
}  // namespace declarium::check
