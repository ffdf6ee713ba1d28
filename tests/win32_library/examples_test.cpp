// The modules of examples/ that do an everyday job take their declarations from the bundled library
// as it inserts them.
#include <optional>
#include <string>

#include "gtest/gtest.h"

#include "library/file_io.h"
#include "library/library_file.h"
#include "source/item_text.h"
#include "text/code_page.h"
#include "text/text.h"
#include "vb/module.h"

namespace declarium::win32_library_test {
namespace {

// nullopt for what no library holds.
std::optional<Kind> KindOf(const vb::Declaration& declaration) {
  if (declaration.As<vb::Constant>()) return Kind::kConst;
  if (declaration.As<vb::External>()) return Kind::kDeclare;
  if (declaration.As<vb::Record>()) return Kind::kType;
  return std::nullopt;
}

class Example : public testing::TestWithParam<const char*> {
 protected:
  const std::u16string text_ = DecodeCodePage(
      ReadWholeFile(DECLARIUM_SOURCE_DIR "/examples/" + std::string(GetParam()) + ".bas").value());
  const vb::Module module_ = vb::ReadModule(text_);
  const Library library_ = LoadLibraryFile(DECLARIUM_SOURCE_DIR "/data/Win32.api").value();
};

TEST_P(Example, IsReadWithoutAnError) {
  EXPECT_TRUE(module_.errors.empty());
  EXPECT_FALSE(module_.procedures.empty());
}

TEST_P(Example, DeclaresAsTheLibraryInserts) {
  int taken = 0;
  for (const auto& declaration : module_.declarations) {
    const auto kind = KindOf(declaration);
    if (!kind || declaration.scope == vb::Scope::kLocal) continue;
    const auto item = FindItem(library_, *kind, declaration.name);
    // Constants of the example's own are its business.
    if (!item && *kind == Kind::kConst) continue;
    ASSERT_TRUE(item) << ToUtf8(declaration.name);
    std::u16string inserted;
    AppendItemText(*kind, item->name, item->item, u"Private", inserted);
    EXPECT_EQ(ToUtf8(declaration.text), ToUtf8(inserted));
    ++taken;
  }
  EXPECT_GT(taken, 4);
}

INSTANTIATE_TEST_SUITE_P(Jobs, Example,
                         testing::Values("OpenFileDialog", "BrowseForFolder", "RunAndWait",
                                         "RegistryValue", "Subclassing"));

}  // namespace
}  // namespace declarium::win32_library_test
