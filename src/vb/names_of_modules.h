// What a name means in each module of several: the module's own declaration before the public one
// of another.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "text/text.h"
#include "vb/declaration.h"

namespace declarium::vb {

template <class Meaning>
class NamesOfModules {
 public:
  // Of several of one name in a module the first counts.
  void Add(std::size_t module, const Declaration& declaration, Meaning meaning) {
    auto& entries = by_name_[LowerCase(declaration.name)];
    if (std::ranges::find(entries, module, &Entry::module) != entries.end()) return;
    entries.push_back({module, declaration.scope == Scope::kPublic, std::move(meaning)});
  }

  // `lowered` is the name in lower case; null for none.
  [[nodiscard]] const Meaning* Find(const std::u16string& lowered, std::size_t module) const {
    const auto found = by_name_.find(lowered);
    if (found == by_name_.end()) return nullptr;
    const Meaning* other = nullptr;
    for (const auto& entry : found->second) {
      if (entry.module == module) return &entry.meaning;
      if (entry.is_public && other == nullptr) other = &entry.meaning;
    }
    return other;
  }

 private:
  struct Entry {
    std::size_t module;
    bool is_public;
    Meaning meaning;
  };
  std::unordered_map<std::u16string, std::vector<Entry>> by_name_;
};

}  // namespace declarium::vb
