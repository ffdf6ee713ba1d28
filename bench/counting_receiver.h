// A receiver of the advanced search that only counts hits. Its clock stands still, which keeps the
// count label out of the measurement.
#pragma once

#include <cstddef>
#include <cstdint>

#include "search/search_engine.h"

namespace declarium::bench {

class CountingReceiver : public SearchReceiver {
 public:
  void Begin(std::int32_t) override {}
  void Hit(const SearchHit&) override { ++hits; }
  void Position(std::int32_t) override {}
  void Count(std::int32_t) override {}
  void End() override {}
  std::uint32_t TickCount() override { return 0; }

  std::size_t hits = 0;
};

}  // namespace declarium::bench
