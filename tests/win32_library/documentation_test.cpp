// The examples of docs/win32-library.md are rows of the libraries.
#include "gtest/gtest.h"

#include "bundled.h"
#include "import/merge.h"
#include "import/parser.h"
#include "library/file_io.h"
#include "source/item_text.h"
#include "text/code_page.h"
#include "text/text.h"

namespace declarium::win32_library_test {
namespace {

// What stands between ```vb and ```, block after block.
std::u16string Examples() {
  const std::u16string page =
      FromUtf8(ReadWholeFile(DECLARIUM_SOURCE_DIR "/docs/win32-library.md").value());
  std::u16string examples;
  bool inside = false;
  for (const std::u16string_view line : Split(page, u'\n')) {
    if (line.starts_with(u"```")) {
      inside = line == u"```vb";
    } else if (inside) {
      examples.append(line).append(kCrLf);
    }
  }
  return examples;
}

TEST(LibraryPage, ShowsRowsAsTheyAreInTheLibrary) {
  const Library library = AllLibraries();
  Library examples;
  MergeItems(examples, ParseDeclarations(ReadSource(Examples())), Existing::kReplace);
  std::size_t count = 0;
  for (const Kind kind : kKinds) {
    for (std::size_t i = 0; i < examples[kind].names.size(); ++i, ++count) {
      const std::u16string_view name = examples[kind].names[i];
      const auto row = FindItem(library, kind, name);
      ASSERT_TRUE(row) << EncodeCodePage(name);
      EXPECT_EQ(EncodeCodePage(ItemText(kind, row->name, row->item)),
                EncodeCodePage(ItemText(kind, name, examples[kind].ItemAt(i))));
    }
  }
  EXPECT_GE(count, 20u);
}

}  // namespace
}  // namespace declarium::win32_library_test
