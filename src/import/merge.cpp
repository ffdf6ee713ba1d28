#include "import/merge.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <string>
#include <utility>

#include "library/library_text.h"
#include "text/scan.h"

namespace declarium {
namespace {

constexpr char16_t kPositionMark = 27;
// How many entries ahead the prefetch hint goes.
constexpr std::size_t kAhead = 8;

// The items of one kind before they are sorted; position 1 is the first.
struct Combined {
  StringList names;
  StringList items;

  void Add(const StringList& new_names, const StringList& new_items) {
    names.KeepArenasOf(new_names);
    items.KeepArenasOf(new_items);
    names.Reserve(names.size() + new_names.size());
    items.Reserve(names.size() + new_names.size());
    for (std::size_t i = 0; i < new_names.size(); ++i) {
      if (new_names[i].empty()) continue;
      names.AddKept(new_names[i]);
      items.AddKept(new_items.At(i));
    }
  }
};

// The sort keys: lower-cased name, character 27, position. They live as long as the arena.
std::vector<std::u16string_view> MakeKeys(const StringList& names, TextArena& arena) {
  constexpr std::size_t kMostDigits = 20;
  std::vector<std::u16string_view> keys;
  keys.reserve(names.size());
  for (std::size_t position = 1; position <= names.size(); ++position) {
    const auto name = names[position - 1];
    const auto room = arena.Allocate(name.size() + 1 + kMostDigits);
    LowerCaseInto(name, room.data());
    auto out = room.begin() + static_cast<std::ptrdiff_t>(name.size());
    *out++ = kPositionMark;
    char digits[kMostDigits];
    const auto end = std::to_chars(digits, digits + kMostDigits, position).ptr;
    out = std::copy(digits, end, out);
    const auto length = static_cast<std::size_t>(out - room.begin());
    arena.Trim(room, length);
    keys.emplace_back(room.data(), length);
  }
  return keys;
}

KindLists SortAndReduce(const Combined& combined) {
  TextArena arena;
  const auto order = SortedPositions(MakeKeys(combined.names, arena));

  KindLists result;
  result.names.KeepArenasOf(combined.names);
  result.items.KeepArenasOf(combined.items);
  result.names.Reserve(order.size());
  result.items.Reserve(order.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    // The order is as good as random for where the names stand, and they are compared next.
    Prefetch(std::to_address(combined.names.begin()) +
             order[std::min(i + 2 * kAhead, order.size() - 1)]);
    Prefetch(combined.names[order[std::min(i + kAhead, order.size() - 1)]].data());
    const auto index = order[i];
    const auto name = combined.names[index];
    const auto item = combined.items[index];
    if (!result.names.empty() && result.names[result.names.size() - 1] == name) {
      result.items.ReplaceKept(result.items.size() - 1, item);
    } else {
      result.names.AddKept(name);
      result.items.AddKept(item);
    }
  }
  return result;
}

}  // namespace

void MergeItems(Library& library, const ParsedItems& parsed, Existing existing) {
  // Taken over together: memory that runs out half-way leaves the library as it was.
  std::array<KindLists, kKindCount> merged;
  for (const auto kind : kKinds) {
    Combined combined;
    combined.Add(parsed[kind].names, parsed[kind].items);
    const auto& lists = library[kind];
    if (existing == Existing::kKeep) combined.Add(lists.names, lists.items);
    merged[static_cast<std::size_t>(KindCode(kind))] = SortAndReduce(combined);
  }
  CompactText(merged);
  for (const auto kind : kKinds)
    library.SetItems(kind, std::move(merged[static_cast<std::size_t>(KindCode(kind))]));
}

}  // namespace declarium
