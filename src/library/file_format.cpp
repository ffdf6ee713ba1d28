#include "library/file_format.h"

#include <algorithm>
#include <array>

#include "library/file_io.h"
#include "text/code_page.h"
#include "text/scan.h"

namespace declarium {
namespace {

// Cuts `text` at its first separator: returns what stands before it and leaves in `text` what
// stands behind it, nothing when there is none.
std::u16string_view TakeUntil(std::optional<std::u16string_view>& text, char16_t separator) {
  const auto whole = *text;
  const auto end = FindUnit(whole, separator);
  text = end == whole.npos ? std::nullopt : std::optional(whole.substr(end + 1));
  return whole.substr(0, end);
}

using ThreeLists = std::array<StringList, kKindCount>;

ThreeLists SplitKinds(std::u16string_view section, const std::shared_ptr<TextArena>& arena) {
  ThreeLists lists;
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
  std::size_t size = library.title.size() + kSeparators;
  for (const auto& [names, items] : library.lists) size += JoinedSize(names) + JoinedSize(items);
  return size;
}

void WriteSection(const Library& library, StringList KindLists::* list, Encoder& encoder) {
  encoder.Write(kSectionSeparator);
  for (const auto kind : kKinds) {
    if (kind != kKinds.front()) encoder.Write(kKindSeparator);
    encoder.WriteEntries(library[kind].*list);
  }
}

}  // namespace

bool IsStorable(std::u16string_view text) noexcept {
  return !HasUnitUpTo(text, kSectionSeparator);
}

LibrarySections CutIntoSections(std::string_view bytes) {
  LibrarySections sections;
  sections.text = std::make_shared<TextArena>();
  const auto room = sections.text->Allocate(bytes.size());
  DecodeCodePageInto(bytes, room.data());

  // Position i of the text is byte i, and bytes are searched faster.
  const std::u16string_view text(room.data(), room.size());
  const auto end_from = [&](std::size_t start) {
    return std::min(bytes.find(static_cast<char>(kSectionSeparator), start), bytes.size());
  };
  const auto title_end = end_from(0);
  sections.title = text.substr(0, title_end);
  if (title_end == text.size()) return sections;
  const auto names_end = end_from(title_end + 1);
  sections.names = text.substr(title_end + 1, names_end - title_end - 1);
  if (names_end == text.size()) return sections;
  sections.items = text.substr(names_end + 1, end_from(names_end + 1) - names_end - 1);
  return sections;
}

bool TakeNames(const LibrarySections& sections, Library& library) {
  if (!sections.names) return false;
  auto lists = SplitKinds(*sections.names, sections.text);
  for (std::size_t k = 0; k < kKindCount; ++k) library.lists[k].names = std::move(lists[k]);
  return true;
}

bool TakeItems(const LibrarySections& sections, Library& library) {
  if (!sections.items) return false;
  auto lists = SplitKinds(*sections.items, sections.text);
  for (std::size_t k = 0; k < kKindCount; ++k) library.lists[k].items = std::move(lists[k]);
  return true;
}

std::expected<Library, Error> ParseLibrary(std::string_view bytes,
                                           const std::filesystem::path& path) {
  const auto sections = CutIntoSections(bytes);
  Library library;
  const auto invalid = [&](const char* missing) {
    return std::unexpected(
        Error{ErrorKind::kInvalidFormat, PathText(path), std::string("not a library: ") + missing});
  };
  if (!TakeNames(sections, library)) return invalid("it has no section of names");
  if (!TakeItems(sections, library)) return invalid("it has no section of items");
  library.title = sections.title;
  library.path = path;
  return library;
}

std::string LibraryBytes(const Library& library) {
  const auto size = LibrarySize(library);
  std::string bytes;
  // The size handed to the function is not used: libstdc++ 12 rounds it up for short strings.
  bytes.resize_and_overwrite(size, [&](char* out, std::size_t) {
    Encoder encoder(out);
    encoder.Write(library.title);
    WriteSection(library, &KindLists::names, encoder);
    WriteSection(library, &KindLists::items, encoder);
    return size;
  });
  return bytes;
}

std::string EmptyLibraryBytes(std::u16string_view title) {
  auto bytes = EncodeCodePage(title);
  bytes += static_cast<char>(kSectionSeparator);
  bytes += static_cast<char>(kSectionSeparator);
  return bytes;
}

}  // namespace declarium
