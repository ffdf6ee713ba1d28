// The hits of one search as the entries of the result list. A hit is a view of its item's name, 16
// bytes, and all of them stand in one block of memory: listing a hit copies no text, and a long
// list is freed at once. The texts of the library that was searched stay in memory as long as the
// hits do, whatever becomes of the library.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "library/library.h"
#include "search/search_engine.h"
#include "toolkit/list_view.h"

namespace declarium {

class SearchHits : public ListEntries {
  struct Packed {
    const char16_t* name;
    std::uint32_t length : 30;
    std::uint32_t icon : 2;
  };

 public:
  using Block = std::vector<Packed>;

  // The hits stand in `block`, which must outlive them and has its memory back when they go: memory
  // fresh from the system costs more to fill than many hits cost to find.
  SearchHits(const Library& searched, Block& block) : block_(block), hits_(std::move(block)) {
    hits_.clear();
    for (const auto kind : kKinds) texts_.KeepArenasOf(searched[kind].names);
  }
  ~SearchHits() override { block_ = std::move(hits_); }
  SearchHits(const SearchHits&) = delete;
  SearchHits& operator=(const SearchHits&) = delete;

  // Room for this many, so that adding them moves none.
  void Reserve(std::size_t count) { hits_.reserve(count); }
  void Add(const SearchHit& hit) {
    hits_.push_back({.name = hit.name.data(),
                     .length = static_cast<std::uint32_t>(hit.name.size()) & kLongest,
                     .icon = static_cast<std::uint32_t>(IconOf(hit.kind)) & kIcons});
  }

  [[nodiscard]] int Count() const override { return static_cast<int>(hits_.size()); }
  [[nodiscard]] ListEntry At(int position) const override {
    const auto& hit = hits_[static_cast<std::size_t>(position - 1)];
    return {{hit.name, hit.length}, static_cast<int>(hit.icon)};
  }

 private:
  static constexpr std::uint32_t kLongest = (1U << 30U) - 1;
  static constexpr std::uint32_t kIcons = 3;

  Block& block_;
  Block hits_;
  StringList texts_;  // holds no entry, but what the names stand in
};

}  // namespace declarium
