// Whether a library is whole, for tests that disturb the program.
#pragma once

#include <algorithm>
#include <string_view>

#include "library/file_format.h"

namespace declarium {

[[nodiscard]] inline bool IsWhole(const Library& library) {
  return std::ranges::all_of(library.Lists(), [](const KindLists& lists) {
    return lists.names.size() == lists.items.size();
  });
}

// Of a file's content: as a save writes it, or as a new library begins.
[[nodiscard]] inline bool IsWholeContent(std::string_view bytes) {
  const auto library = ParseLibrary(bytes, {});
  if (!library) return false;
  return bytes == EmptyLibraryBytes(library->Title()) ||
         (IsWhole(*library) && LibraryBytes(*library) == bytes);
}

}  // namespace declarium
