#include "bundled.h"

#include <algorithm>
#include <filesystem>

#include "import/merge.h"
#include "import/parser.h"
#include "library/library_file.h"
#include "source/item_text.h"

namespace declarium::win32_library_test {

std::vector<std::string> LibraryNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(DECLARIUM_SOURCE_DIR "/data"))
    if (entry.path().extension() == ".api") names.push_back(entry.path().stem().string());
  std::ranges::sort(names);
  return names;
}

std::string LibraryPath(const std::string& name) {
  return DECLARIUM_SOURCE_DIR "/data/" + name + ".api";
}

Library AllLibraries() {
  Library all;
  for (const std::string& name : LibraryNames()) {
    const Library library = LoadLibraryFile(LibraryPath(name)).value();
    const std::u16string text = ExportText(library);
    MergeItems(all, ParseDeclarations(ReadSource(text)), Existing::kKeep);
  }
  return all;
}

}  // namespace declarium::win32_library_test
