#include "search/search_engine.h"

#include <algorithm>
#include <optional>

#include "search/search_matcher.h"

namespace declarium {
namespace {

constexpr std::int32_t kPositionSteps = 200;
constexpr std::uint32_t kCountInterval = 50;  // milliseconds

bool IsSearched(const SearchCriteria& criteria, Kind kind) {
  switch (kind) {
    case Kind::kConst:
      return criteria.searchConsts;
    case Kind::kDeclare:
      return criteria.searchDeclares;
    case Kind::kType:
      return criteria.searchTypes;
  }
  return false;
}

// Upper bound less lower bound of every kind searched: one less than its number of items, so kinds
// with a single item each are not enough. It has always been counted so.
std::int32_t Total(const SearchCriteria& criteria, const Library& library) {
  std::int32_t total = 0;
  for (const auto kind : kKinds) {
    if (!IsSearched(criteria, kind)) continue;
    total +=
        static_cast<std::int32_t>(std::max<std::ptrdiff_t>(0, library[kind].names.UpperBound()));
  }
  return total;
}

// Decides when the position and the count are shown.
class Progress {
 public:
  Progress(std::int32_t maximum, SearchReceiver& receiver)
      : receiver_(receiver), maximum_(maximum), step_(std::max(1, maximum / kPositionSteps)) {}

  void AddHit() { ++hits_; }

  void Advance() {
    if (counter_ % step_ == 0 && counter_ >= 0 && counter_ <= maximum_) {
      receiver_.Position(counter_);
    }
    ++counter_;
    if (hits_ == shown_hits_) return;
    const auto now = receiver_.TickCount();
    if (shown_at_ && now - *shown_at_ <= kCountInterval) return;
    receiver_.Count(hits_);
    shown_hits_ = hits_;
    shown_at_ = now;
  }

  // Shows the final count whenever the last one was shown.
  void Finish() {
    shown_at_.reset();
    --counter_;
    Advance();
    receiver_.End();
  }

 private:
  SearchReceiver& receiver_;
  std::int32_t maximum_;
  std::int32_t step_;
  std::int32_t counter_ = -1;
  std::int32_t hits_ = 0;
  std::int32_t shown_hits_ = -1;  // nothing shown yet, so that no hits are shown too
  std::optional<std::uint32_t> shown_at_;
};

}  // namespace

SearchOutcome Search(const SearchCriteria& criteria, const Library& library,
                     SearchReceiver& receiver) {
  SearchMatcher matcher(criteria);
  if (!matcher.HasCriteria()) return SearchOutcome::kNoCriteria;
  const auto total = Total(criteria, library);
  if (total == 0) return SearchOutcome::kNotEnough;

  receiver.Begin(total);
  Progress progress(total, receiver);
  progress.Advance();
  for (const auto kind : kKinds) {
    if (!IsSearched(criteria, kind)) continue;
    const auto& lists = library[kind];
    for (std::size_t i = 0; i < lists.names.size(); ++i) {
      const auto name = lists.names[i];
      if (matcher.Matches(kind, name, lists.ItemAt(i))) {
        receiver.Hit({name, kind});
        progress.AddHit();
      }
      progress.Advance();
    }
  }
  progress.Finish();
  return SearchOutcome::kDone;
}

}  // namespace declarium
