// The open library in memory: for each kind two parallel lists, the names and the item strings, in
// ascending order of the lower-cased names; its title, its file, what that file was when it was
// read or written, and whether there are unsaved changes.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>

#include "library/file_stamp.h"
#include "library/kind.h"
#include "library/string_list.h"

namespace declarium {

struct KindLists {
  StringList names;
  StringList items;

  // The item string of the name at `position`; empty when the file held fewer items than names.
  [[nodiscard]] std::u16string_view ItemAt(std::size_t position) const noexcept {
    return items.At(position);
  }
};

struct Library {
  std::array<KindLists, kKindCount> lists;
  std::u16string title;
  std::filesystem::path path;  // empty before the first load
  bool dirty = false;          // differs from its file
  // Names and items belong together. A load that fails between the two leaves lists that are never
  // written to a file.
  bool whole = true;
  std::optional<FileStamp> stamp;  // of the file at `path`; nullopt when it is not known

  [[nodiscard]] KindLists& operator[](Kind kind) { return lists[static_cast<std::size_t>(kind)]; }
  [[nodiscard]] const KindLists& operator[](Kind kind) const {
    return lists[static_cast<std::size_t>(kind)];
  }
  [[nodiscard]] bool HasItems() const noexcept {
    return !lists[0].names.empty() || !lists[1].names.empty() || !lists[2].names.empty();
  }
};

// One item as the other layers use it; the views refer into the library.
struct ItemView {
  Kind kind;
  std::u16string_view name;  // as stored
  std::u16string_view item;
};

// Looks `name` up in the lists of `kind`, without regard to case. A library that is not whole has
// no items: the one at a name's position may be another's.
[[nodiscard]] std::optional<ItemView> FindItem(const Library& library, Kind kind,
                                               std::u16string_view name);

// Removes the item at `position` of `kind` from both lists. `position` must be below the number of
// names.
void RemoveItem(Library& library, Kind kind, std::size_t position);

// The main window's caption for a title.
[[nodiscard]] std::u16string CaptionOf(std::u16string_view title);

}  // namespace declarium
