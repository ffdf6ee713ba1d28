// Two source texts merged one after the other, saved and loaded: the order and the survivors are
// those of a plain insertion sort.
#include "import/merge.h"

#include <algorithm>
#include <map>

#include "fuzz/input.h"
#include "library/file_format.h"
#include "text/text.h"

using namespace declarium;
using fuzz::Require;

namespace {

using Items = std::vector<std::pair<std::u16string, std::u16string>>;

Items Combined(const ParsedItems::Lists& parsed, const KindLists* existing) {
  Items items;
  for (std::size_t i = 0; i < parsed.names.size(); ++i) {
    items.emplace_back(parsed.names[i], parsed.items[i]);
  }
  for (std::size_t i = 0; existing != nullptr && i < existing->names.size(); ++i) {
    items.emplace_back(existing->names[i], existing->ItemAt(i));
  }
  std::erase_if(items, [](const auto& item) { return item.first.empty(); });
  return items;
}

// The naive twin: keys in an ordered map, neighbours of the same name reduced to the last.
Items Merged(const Items& combined) {
  std::map<std::u16string, std::size_t> keys;
  for (std::size_t i = 0; i < combined.size(); ++i) {
    const auto digits = std::to_string(i + 1);
    keys[LowerCase(combined[i].first) + u'\x1B' + std::u16string(digits.begin(), digits.end())] = i;
  }
  Items result;
  for (const auto& [key, index] : keys) {
    if (!result.empty() && result.back().first == combined[index].first) result.pop_back();
    result.push_back(combined[index]);
  }
  return result;
}

void MergeAndCheck(Library& library, std::string_view source, Existing existing) {
  const auto parsed = ParseSourceFile(source);
  const auto before = library;
  MergeItems(library, parsed, existing);
  for (const auto kind : kKinds) {
    const auto expected =
        Merged(Combined(parsed[kind], existing == Existing::kKeep ? &before[kind] : nullptr));
    const auto& [names, items] = library[kind];
    Require(names.size() == expected.size() && items.size() == expected.size(),
            "as many items as the naive merge keeps");
    for (std::size_t i = 0; i < expected.size(); ++i) {
      Require(names[i] == expected[i].first && items[i] == expected[i].second,
              "the items of the naive merge");
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto bytes = fuzz::Bytes(data, size);
  const auto first = fuzz::TakePart(bytes);
  Library library;
  library.SetTitle(u"Title");
  MergeAndCheck(library, first, Existing::kKeep);
  MergeAndCheck(library, bytes, first.size() % 2 == 0 ? Existing::kKeep : Existing::kReplace);

  // The separators of the file cannot be kept in it.
  const std::string_view whole = fuzz::Bytes(data, size);
  if (std::ranges::any_of(whole, [](char byte) { return byte >= 0 && byte <= 2; })) return 0;
  const auto again = ParseLibrary(LibraryBytes(library), "library.api");
  Require(again.has_value(), "a merged library loads");
  for (const auto kind : kKinds) {
    Require((*again)[kind].names == library[kind].names, "the names come back");
    // A kind whose only item string is empty is read as a kind without any, which means the same.
    for (std::size_t i = 0; i < library[kind].names.size(); ++i) {
      Require((*again)[kind].ItemAt(i) == library[kind].ItemAt(i), "the items come back");
    }
  }
  return 0;
}
