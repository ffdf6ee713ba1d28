// The open library in memory: for each kind two parallel lists, the names and the item strings, in
// ascending order of the lower-cased names; its title, its file, what that file was when it was
// read or written, and whether there are unsaved changes.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

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

// One list of texts for each kind.
using ListOfEachKind = std::array<StringList, kKindCount>;

// Counts changes. What is assigned is a change too, whatever the other's count.
class ChangeCount {
 public:
  ChangeCount() = default;
  ChangeCount(const ChangeCount&) = default;
  ChangeCount& operator=(const ChangeCount& other) noexcept {
    count_ = std::max(count_, other.count_) + 1;
    return *this;
  }
  void Increase() noexcept { ++count_; }
  [[nodiscard]] std::uint64_t Get() const noexcept { return count_; }

 private:
  std::uint64_t count_ = 0;
};

class Library {
 public:
  [[nodiscard]] const KindLists& operator[](Kind kind) const { return lists_[Index(kind)]; }
  [[nodiscard]] const std::array<KindLists, kKindCount>& Lists() const noexcept { return lists_; }
  [[nodiscard]] const std::u16string& Title() const noexcept { return title_; }
  [[nodiscard]] bool HasItems() const noexcept {
    return std::ranges::any_of(lists_, [](const auto& lists) { return !lists.names.empty(); });
  }
  // Whether names and items belong together. A load that fails between the two leaves a library
  // that is never written to a file.
  [[nodiscard]] bool IsWhole() const noexcept { return is_whole_; }
  // Another number after every change of the title, the names or the items, and when another
  // library is assigned. Who keeps something made of them compares it with the one at that time.
  [[nodiscard]] std::uint64_t Revision() const noexcept { return revision_.Get(); }

  void SetTitle(std::u16string_view title);

  // There are as many items as names. Only a file may hold them otherwise; they stay so until the
  // kind is merged with others, so that saving writes what was there.
  void SetItems(Kind kind, KindLists lists) noexcept;
  // Removes the item at `position`, which must be below the number of names, from both lists.
  void RemoveItem(Kind kind, std::size_t position);

  // The two steps of taking over what was read: the library is not whole between them.
  void TakeNames(ListOfEachKind names) noexcept;
  void TakeItems(ListOfEachKind items) noexcept;

  // What the program knows about the library's file. Nothing above depends on it.
  std::filesystem::path path;      // empty before the first load
  bool dirty = false;              // differs from its file
  std::optional<FileStamp> stamp;  // of the file at `path`; nullopt when it is not known

 private:
  [[nodiscard]] static constexpr std::size_t Index(Kind kind) noexcept {
    return static_cast<std::size_t>(KindCode(kind));
  }

  std::array<KindLists, kKindCount> lists_;
  std::u16string title_;
  bool is_whole_ = true;
  ChangeCount revision_;
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

// The main window's caption for a title.
[[nodiscard]] std::u16string CaptionOf(std::u16string_view title);

}  // namespace declarium
