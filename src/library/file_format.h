// The bytes of a ".api" library file, one byte per character in the code page of text/code_page.h,
// without header, lengths, terminator or checksum:
//
//   title  2  names  2  items
//   names = Const names  1  Declare names  1  Type names      entries of a kind joined by byte 0
//   items = Const items  1  Declare items  1  Type items      likewise, in the same order
//
// A kind without items is nothing between its separators. What stands behind the third section, and
// behind the third part of a section, is ignored; names and items may differ in number.
#pragma once

#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "library/library.h"
#include "library/text_arena.h"
#include "text/error.h"

namespace declarium {

inline constexpr char16_t kEntrySeparator = 0;
inline constexpr char16_t kKindSeparator = 1;
inline constexpr char16_t kSectionSeparator = 2;

// Whether no separator is in a title, a name or an item string, which would tear the file apart.
[[nodiscard]] bool IsStorable(std::u16string_view text) noexcept;
// Whether it would also come back from the file: no character is outside the code page.
[[nodiscard]] bool IsKeepable(std::u16string_view text) noexcept;
// The first character that hinders that: one unit, or the two of a surrogate pair.
[[nodiscard]] std::optional<std::u16string_view> FindUnkeepableCharacter(
    std::u16string_view text) noexcept;

// A library file cut into its sections, which are views into its bytes or its text.
template <class View>
struct Sections {
  View title;
  std::optional<View> names;  // missing when the file has no byte 2
  std::optional<View> items;  // missing when it has only one
};

using SectionBytes = Sections<std::string_view>;

struct LibrarySections : Sections<std::u16string_view> {
  std::shared_ptr<TextArena> text;
};

[[nodiscard]] SectionBytes CutBytes(std::string_view bytes);
[[nodiscard]] LibrarySections CutIntoSections(std::string_view bytes);
// The title and the names alone.
[[nodiscard]] LibrarySections DecodeNames(const SectionBytes& sections);

// The bytes of the entry at `position` of `kind` in a section; empty when there are fewer.
[[nodiscard]] std::string_view EntryBytes(std::string_view section, Kind kind,
                                          std::size_t position);

// Replace the names, or the items, of all three kinds by those of the section. False, with nothing
// changed, when the section is missing. The window replaces the names before it looks for the
// items, so the two are separate.
[[nodiscard]] bool TakeNames(const LibrarySections& sections, Library& library);
[[nodiscard]] bool TakeItems(const LibrarySections& sections, Library& library);

// The error of a file without a section of names, or of items when it has names.
[[nodiscard]] Error MissingSection(bool has_names, const std::filesystem::path& path);

// The library in `bytes`; `path` becomes its path and names it in an error.
[[nodiscard]] std::expected<Library, Error> ParseLibrary(std::string_view bytes,
                                                         const std::filesystem::path& path);

// The file's content for `library`. A character outside the code page is written as "?".
[[nodiscard]] std::string LibraryBytes(const Library& library);

// The first item because of which `bytes`, made by LibraryBytes, would not load again as `library`,
// as "Const MAX_PATH", or the library's title: a text with a separator in it or with a character
// outside the code page, or a kind whose only name is empty. nullopt when there is none. Takes less
// time than loading.
[[nodiscard]] std::optional<std::string> FindUnkeepable(const Library& library,
                                                        std::string_view bytes);

// The content of a newly created library.
[[nodiscard]] std::string EmptyLibraryBytes(std::u16string_view title);

}  // namespace declarium
