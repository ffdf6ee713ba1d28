// What a command that needs a few items takes from a library file: the names of all items, and the
// item strings of those that it looks up. The others, most of a large file, are not decoded; what
// stands in front of one is only read over. For a process that ends soon, see ViewFile.
#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "library/file_io.h"
#include "library/library.h"
#include "library/text_arena.h"
#include "text/error.h"

namespace declarium {

class LibraryExcerpt {
 public:
  // Fails as LoadLibraryFile does.
  [[nodiscard]] static std::expected<LibraryExcerpt, Error> Open(const std::filesystem::path& path);
  [[nodiscard]] static std::expected<LibraryExcerpt, Error> Of(FileView file,
                                                               const std::filesystem::path& path);

  // The library with its title and its names, and with no item strings.
  [[nodiscard]] const Library& Names() const noexcept { return names_; }

  // The item at a position among the names, which must be there. The views live as long as the
  // excerpt.
  [[nodiscard]] ItemView ItemAt(Kind kind, std::size_t position) const;
  // What FindItem gives for the whole library. The views live as long as the excerpt.
  [[nodiscard]] std::optional<ItemView> Find(Kind kind, std::u16string_view name) const;

 private:
  FileView file_;
  std::string_view items_;  // the section, in the file
  Library names_;
  std::unique_ptr<TextArena> found_ = std::make_unique<TextArena>();  // item strings looked up
};

}  // namespace declarium
