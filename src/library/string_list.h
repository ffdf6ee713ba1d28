// A list of texts with positions from 0, the form of the names and item strings of a library. Its
// texts are views into shared arenas, so a list of a million entries costs 16 bytes an entry beside
// the text itself, and copying a list copies no text.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "library/text_arena.h"

namespace declarium {

class StringList {
 public:
  StringList() = default;
  StringList(std::initializer_list<std::u16string_view> texts);

  // The pieces of `text` between the separators; an empty text gives an empty list. `arena` holds
  // `text` and is kept alive by the list.
  [[nodiscard]] static StringList Split(std::u16string_view text, char16_t separator,
                                        std::shared_ptr<TextArena> arena);

  [[nodiscard]] std::size_t size() const noexcept { return texts_.size(); }
  [[nodiscard]] bool empty() const noexcept { return texts_.empty(); }
  // size() - 1; -1 for an empty list.
  [[nodiscard]] std::ptrdiff_t UpperBound() const noexcept { return std::ssize(texts_) - 1; }

  // `position` must be below size().
  [[nodiscard]] std::u16string_view operator[](std::size_t position) const {
    return texts_[position];
  }
  // The text at `position`, empty when the list is too short.
  [[nodiscard]] std::u16string_view At(std::size_t position) const noexcept {
    return position < texts_.size() ? texts_[position] : std::u16string_view();
  }

  [[nodiscard]] auto begin() const noexcept { return texts_.begin(); }
  [[nodiscard]] auto end() const noexcept { return texts_.end(); }

  void Reserve(std::size_t count) { texts_.reserve(count); }
  void Clear() noexcept;

  // Appends a copy of `text`.
  void Add(std::u16string_view text);
  // Appends `text` itself; Keep must have been called with the arena that holds it.
  void AddKept(std::u16string_view text) { texts_.push_back(text); }
  void Keep(std::shared_ptr<TextArena> arena);
  void KeepArenasOf(const StringList& other);
  [[nodiscard]] const std::vector<std::shared_ptr<TextArena>>& Arenas() const noexcept {
    return arenas_;
  }

  // Puts `text` itself, which lies in a kept arena, over the entry at `position`.
  void ReplaceKept(std::size_t position, std::u16string_view text) { texts_[position] = text; }

  // Removes one entry and closes the gap. `position` must be below size().
  void RemoveAt(std::size_t position);

  friend bool operator==(const StringList& a, const StringList& b) { return a.texts_ == b.texts_; }

 private:
  std::vector<std::u16string_view> texts_;
  std::vector<std::shared_ptr<TextArena>> arenas_;
  std::shared_ptr<TextArena> own_arena_;  // where Add copies to; also among arenas_
};

// Removes the entry at `position` from `list`, closing the gap; the only entry leaves an empty
// list. A position outside the list is a programming error.
void RemoveListItem(StringList& list, std::size_t position);

}  // namespace declarium
