#include "library/string_list.h"

#include <algorithm>
#include <cassert>
#include <string>

#include "text/scan.h"

namespace declarium {

StringList::StringList(std::initializer_list<std::u16string_view> texts) {
  for (const auto text : texts) Add(text);
}

StringList StringList::Split(std::u16string_view text, char16_t separator,
                             std::shared_ptr<TextArena> arena) {
  StringList list;
  list.Keep(std::move(arena));
  if (text.empty()) return list;
  list.Reserve(static_cast<std::size_t>(std::ranges::count(text, separator)) + 1);
  std::size_t start = 0;
  for (;;) {
    const auto end = FindUnit(text, separator, start);
    list.AddKept(text.substr(start, end - start));
    if (end == text.npos) return list;
    start = end + 1;
  }
}

void StringList::Clear() noexcept {
  texts_.clear();
  arenas_.clear();
  own_arena_.reset();
}

void StringList::Add(std::u16string_view text) {
  if (!own_arena_) {
    own_arena_ = std::make_shared<TextArena>();
    Keep(own_arena_);
  }
  AddKept(own_arena_->Store(text));
}

void StringList::Keep(std::shared_ptr<TextArena> arena) {
  if (std::ranges::find(arenas_, arena) == arenas_.end()) arenas_.push_back(std::move(arena));
}

void StringList::KeepArenasOf(const StringList& other) {
  for (const auto& arena : other.arenas_) Keep(arena);
}

void StringList::RemoveAt(std::size_t position) {
  assert(position < texts_.size());
  texts_.erase(texts_.begin() + static_cast<std::ptrdiff_t>(position));
}

void RemoveListItem(StringList& list, std::size_t position) {
  list.RemoveAt(position);
}

}  // namespace declarium
