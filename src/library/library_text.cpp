#include "library/library_text.h"

#include <memory>
#include <set>

namespace declarium {
namespace {

// Less waste than a megabyte is left alone, whatever the library's size.
constexpr std::size_t kLeastWaste = 512 * 1024;

StringList CopyInto(const std::shared_ptr<TextArena>& arena, const StringList& list) {
  StringList copy;
  copy.Keep(arena);
  copy.Reserve(list.size());
  for (const auto text : list) copy.AddKept(arena->Store(text));
  return copy;
}

}  // namespace

TextUse TextUseOf(std::span<const KindLists> lists) {
  TextUse use{0, 0};
  std::set<const TextArena*> arenas;
  for (const auto& [names, items] : lists) {
    for (const auto* list : {&names, &items}) {
      for (const auto text : *list) use.used += text.size();
      for (const auto& arena : list->Arenas()) {
        if (arenas.insert(arena.get()).second) use.held += arena->Capacity();
      }
    }
  }
  return use;
}

void CompactText(std::span<KindLists> lists) {
  const auto [used, held] = TextUseOf(lists);
  if (held <= 2 * used + kLeastWaste) return;
  const auto arena = std::make_shared<TextArena>();
  for (auto& [names, items] : lists) {
    names = CopyInto(arena, names);
    items = CopyInto(arena, items);
  }
}

}  // namespace declarium
