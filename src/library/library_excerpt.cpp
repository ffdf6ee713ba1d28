#include "library/library_excerpt.h"

#include "library/file_format.h"
#include "library/find_item_index.h"
#include "text/code_page.h"

namespace declarium {

std::expected<LibraryExcerpt, Error> LibraryExcerpt::Open(const std::filesystem::path& path) {
  auto file = ViewFile(path);
  if (!file) return std::unexpected(file.error());
  return Of(*std::move(file), path);
}

std::expected<LibraryExcerpt, Error> LibraryExcerpt::Of(FileView file,
                                                        const std::filesystem::path& path) {
  const auto sections = CutBytes(file.bytes);
  const auto names = DecodeNames(sections);
  LibraryExcerpt excerpt;
  if (!TakeNames(names, excerpt.names_) || !sections.items) {
    return std::unexpected(MissingSection(sections.names.has_value(), path));
  }
  excerpt.names_.SetTitle(names.title);
  excerpt.names_.path = path;
  excerpt.items_ = *sections.items;
  excerpt.file_ = std::move(file);
  return excerpt;
}

std::optional<ItemView> LibraryExcerpt::Find(Kind kind, std::u16string_view name) const {
  const auto position = FindItemIndex(name, names_[kind].names);
  if (position < 0) return std::nullopt;
  return ItemAt(kind, static_cast<std::size_t>(position));
}

ItemView LibraryExcerpt::ItemAt(Kind kind, std::size_t position) const {
  return {kind, names_[kind].names[position],
          found_->Store(DecodeCodePage(EntryBytes(items_, kind, position)))};
}

}  // namespace declarium
