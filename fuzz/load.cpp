// Any bytes: a library or an error; a library comes back the same after saving and loading.
#include <algorithm>

#include "fuzz/input.h"
#include "library/file_format.h"
#include "library/find_item_index.h"
#include "text/code_page.h"

using namespace declarium;
using fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto bytes = fuzz::Bytes(data, size);
  const auto separators = std::ranges::count(bytes, '\2');
  const auto library = ParseLibrary(bytes, "library.api");
  Require(library.has_value() == (separators >= 2), "three sections make a library");
  Require(EncodeCodePage(DecodeCodePage(bytes)) == bytes, "decoding and encoding keep every byte");
  if (!library) return 0;

  const auto saved = LibraryBytes(*library);
  const auto again = ParseLibrary(saved, "library.api");
  Require(again.has_value(), "what was saved loads");
  Require(again->Title() == library->Title(), "the title comes back");
  for (const auto kind : kKinds) {
    const auto& names = (*library)[kind].names;
    Require((*again)[kind].names == names, "the names come back");
    Require((*again)[kind].items == (*library)[kind].items, "the items come back");
    for (std::size_t i = 0; i < names.size() && i < 20; ++i) {
      const auto found = FindItemIndex(names[i], names);
      Require(found >= -1 && found < std::ssize(names), "a position lies in the list");
    }
  }
  Require(LibraryBytes(*again) == saved, "saving again gives the same bytes");
  return 0;
}
