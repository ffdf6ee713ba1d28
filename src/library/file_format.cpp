#include "library/file_format.h"

#include <algorithm>
#include <array>

#include "library/file_io.h"
#include "text/character.h"
#include "text/code_page.h"
#include "text/scan.h"
#include "text/text.h"

namespace declarium {
namespace {

// Cuts `text` at its first separator: returns what stands before it and leaves in `text` what
// stands behind it, nothing when there is none.
template <class Unit>
std::basic_string_view<Unit> TakeUntil(std::optional<std::basic_string_view<Unit>>& text,
                                       char16_t separator) {
  const auto whole = *text;
  const auto end = FindUnit(whole, static_cast<Unit>(separator));
  text = end == whole.npos ? std::nullopt : std::optional(whole.substr(end + 1));
  return whole.substr(0, end);
}

template <class Unit>
Sections<std::basic_string_view<Unit>> Cut(std::basic_string_view<Unit> text) {
  Sections<std::basic_string_view<Unit>> sections;
  std::optional rest = text;
  sections.title = TakeUntil(rest, kSectionSeparator);
  if (rest) sections.names = TakeUntil(rest, kSectionSeparator);
  if (rest) sections.items = TakeUntil(rest, kSectionSeparator);
  return sections;
}

std::u16string_view DecodeInto(TextArena& arena, std::string_view bytes) {
  const auto room = arena.Allocate(bytes.size());
  DecodeCodePageInto(bytes, room.data());
  return {room.data(), room.size()};
}

// The piece at `position` between the separators; empty when there are fewer.
std::string_view PieceAt(std::string_view bytes, char16_t separator, std::size_t position) {
  std::optional rest = bytes;
  std::string_view piece;
  for (std::size_t i = 0; i <= position; ++i) {
    if (!rest) return {};
    piece = TakeUntil(rest, separator);
  }
  return piece;
}

ListOfEachKind SplitKinds(std::u16string_view section, const std::shared_ptr<TextArena>& arena) {
  ListOfEachKind lists;
  std::optional rest = section;
  for (auto& list : lists) {
    if (!rest) break;
    list = StringList::Split(TakeUntil(rest, kKindSeparator), kEntrySeparator, arena);
  }
  return lists;
}

// Writes encoded text into storage of exactly the size needed.
class Encoder {
 public:
  explicit Encoder(char* out) : next_(out) {}

  void Write(std::u16string_view text) {
    EncodeCodePageInto(text, next_);
    next_ += text.size();
  }
  void Write(char16_t separator) { *next_++ = static_cast<char>(separator); }

  void WriteEntries(const StringList& list) {
    // A library sorted after an import has its texts all over the memory.
    constexpr std::size_t kAhead = 8;
    for (std::size_t i = 0; i < list.size(); ++i) {
      if (i > 0) Write(kEntrySeparator);
      const auto ahead = list.At(i + kAhead);
      Prefetch(ahead.data());
      Prefetch(ahead.data() + ahead.size());
      Write(list[i]);
    }
  }

 private:
  char* next_;
};

std::size_t JoinedSize(const StringList& list) {
  std::size_t size = list.empty() ? 0 : list.size() - 1;
  for (const auto entry : list) size += entry.size();
  return size;
}

std::size_t LibrarySize(const Library& library) {
  constexpr std::size_t kSeparators = 2 + 2 * (kKindCount - 1);
  std::size_t size = library.Title().size() + kSeparators;
  for (const auto& [names, items] : library.Lists()) size += JoinedSize(names) + JoinedSize(items);
  return size;
}

void WriteSection(const Library& library, StringList KindLists::* list, Encoder& encoder) {
  encoder.Write(kSectionSeparator);
  for (const auto kind : kKinds) {
    if (kind != kKinds.front()) encoder.Write(kKindSeparator);
    encoder.WriteEntries(library[kind].*list);
  }
}

// Compares a library with what its bytes mean, text by text in the order of the file.
class Reloading {
 public:
  explicit Reloading(std::string_view bytes) : text_(bytes.size(), u'\0') {
    DecodeCodePageInto(bytes, text_.data());
  }

  // What stands next in the file, which is one unit longer with the separator behind it.
  bool Gives(std::u16string_view saved) {
    const auto loaded = std::u16string_view(text_).substr(next_, saved.size());
    next_ += saved.size() + 1;
    return loaded == saved;
  }

 private:
  std::u16string text_;
  std::size_t next_ = 0;
};

// The position of the first entry that does not come back; nullopt when all do.
std::optional<std::size_t> FirstLost(const StringList& list, Reloading& file) {
  if (list.empty()) {
    // A kind without entries is nothing between its separators.
    (void)file.Gives({});
    return std::nullopt;
  }
  std::optional<std::size_t> first;
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (!file.Gives(list[i]) && !first) first = i;
    if (!IsStorable(list[i]) && !first) first = i;
  }
  return first;
}

}  // namespace

bool IsStorable(std::u16string_view text) noexcept {
  return !HasUnitUpTo(text, kSectionSeparator);
}

bool IsKeepable(std::u16string_view text) noexcept {
  return IsStorable(text) && FindOutsideCodePage(text) == text.npos;
}

std::optional<std::u16string_view> FindUnkeepableCharacter(std::u16string_view text) noexcept {
  const auto found =
      std::ranges::find_if_not(text, [](char16_t unit) { return IsKeepable({&unit, 1}); });
  if (found == text.end()) return std::nullopt;
  const auto position = static_cast<std::size_t>(found - text.begin());
  return text.substr(position, CharacterLength(text, position));
}

SectionBytes CutBytes(std::string_view bytes) {
  return Cut(bytes);
}

LibrarySections CutIntoSections(std::string_view bytes) {
  auto arena = std::make_shared<TextArena>();
  const auto text = DecodeInto(*arena, bytes);
  return {Cut(text), std::move(arena)};
}

LibrarySections DecodeNames(const SectionBytes& sections) {
  LibrarySections decoded;
  decoded.text = std::make_shared<TextArena>();
  decoded.title = DecodeInto(*decoded.text, sections.title);
  if (sections.names) decoded.names = DecodeInto(*decoded.text, *sections.names);
  return decoded;
}

std::string_view EntryBytes(std::string_view section, Kind kind, std::size_t position) {
  const auto of_kind = PieceAt(section, kKindSeparator, static_cast<std::size_t>(KindCode(kind)));
  return PieceAt(of_kind, kEntrySeparator, position);
}

bool TakeNames(const LibrarySections& sections, Library& library) {
  if (!sections.names) return false;
  library.TakeNames(SplitKinds(*sections.names, sections.text));
  return true;
}

bool TakeItems(const LibrarySections& sections, Library& library) {
  if (!sections.items) return false;
  library.TakeItems(SplitKinds(*sections.items, sections.text));
  return true;
}

Error MissingSection(bool has_names, const std::filesystem::path& path) {
  return {ErrorKind::kInvalidFormat, PathText(path),
          std::string("not a library: it has no section of ") + (has_names ? "items" : "names")};
}

std::expected<Library, Error> ParseLibrary(std::string_view bytes,
                                           const std::filesystem::path& path) {
  const auto sections = CutIntoSections(bytes);
  Library library;
  if (!TakeNames(sections, library) || !TakeItems(sections, library)) {
    return std::unexpected(MissingSection(sections.names.has_value(), path));
  }
  library.SetTitle(sections.title);
  library.path = path;
  return library;
}

std::string LibraryBytes(const Library& library) {
  const auto size = LibrarySize(library);
  std::string bytes;
  // The size handed to the function is not used: libstdc++ 12 rounds it up for short strings.
  bytes.resize_and_overwrite(size, [&](char* out, std::size_t) {
    Encoder encoder(out);
    encoder.Write(library.Title());
    WriteSection(library, &KindLists::names, encoder);
    WriteSection(library, &KindLists::items, encoder);
    return size;
  });
  return bytes;
}

std::optional<std::string> FindUnkeepable(const Library& library, std::string_view bytes) {
  Reloading file(bytes);
  if (!file.Gives(library.Title()) || library.Title().contains(kSectionSeparator)) {
    return ToUtf8(library.Title());
  }
  for (const auto list : {&KindLists::names, &KindLists::items}) {
    for (const auto kind : kKinds) {
      const auto& lists = library[kind];
      auto lost = FirstLost(lists.*list, file);
      // It would load as a kind without items.
      if (lists.names.size() == 1 && lists.names[0].empty()) lost = 0;
      if (lost) return ToUtf8(KindName(kind)) + " " + ToUtf8(lists.names.At(*lost));
    }
  }
  return std::nullopt;
}

std::string EmptyLibraryBytes(std::u16string_view title) {
  auto bytes = EncodeCodePage(title);
  bytes += static_cast<char>(kSectionSeparator);
  bytes += static_cast<char>(kSectionSeparator);
  return bytes;
}

}  // namespace declarium
