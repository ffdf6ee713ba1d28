// Libraries with their facts, kept in memory as what others are checked against.
#pragma once

#include <deque>
#include <optional>
#include <string_view>
#include <utility>

#include "check/reference.h"

namespace declarium::check {

class KnownLibraries {
 public:
  KnownLibraries() = default;
  KnownLibraries(const KnownLibraries&) = delete;
  KnownLibraries& operator=(const KnownLibraries&) = delete;

  void Add(Library library, std::optional<FactsFile> facts) {
    libraries_.push_back(std::move(library));
    const FactsFile* beside = nullptr;
    if (facts) beside = &facts_.emplace_back(*std::move(facts));
    reference_.Add(libraries_.back(), beside);
  }

  // The first item of that name; nullopt when no library has one.
  [[nodiscard]] std::optional<ItemView> Find(Kind kind, std::u16string_view name) const {
    for (const auto& library : libraries_)
      if (const auto item = FindItem(library, kind, name)) return item;
    return std::nullopt;
  }

  [[nodiscard]] Reference& AsReference() { return reference_; }

 private:
  std::deque<Library> libraries_;
  std::deque<FactsFile> facts_;
  Reference reference_;
};

}  // namespace declarium::check
