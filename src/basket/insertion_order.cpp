#include "basket/insertion_order.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "basket/recorded_items.h"
#include "needs/needed_above.h"
#include "text/text.h"

namespace declarium {
namespace {

// Goes from each entry to those that it needs above it and lists it behind them. The way down is
// kept in a list: records can hold each other deeper than the stack reaches.
class OrderedEntries {
 public:
  explicit OrderedEntries(const Basket& basket)
      : entries_(basket.Entries()), recorded_(basket.Record()), met_(entries_.size()) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      positions_[GroupOf(entries_[i])].emplace(LowerCase(entries_[i].text), i);
    }
  }

  void Add(std::size_t position) {
    Enter(position);
    while (!way_.empty()) {
      auto& step = way_.back();
      if (step.entered < step.above.size()) {
        Enter(step.above[step.entered++]);
      } else {
        ordered_.push_back(entries_[step.position]);
        way_.pop_back();
      }
    }
  }

  [[nodiscard]] GroupedList Take() { return std::move(ordered_); }

 private:
  struct Step {
    std::size_t position;
    std::vector<std::size_t> above;  // positions, ascending
    std::size_t entered = 0;         // how many of them were gone to
  };

  static std::size_t GroupOf(const GroupedEntry& entry) {
    return static_cast<std::size_t>(entry.icon - 1);
  }

  void Enter(std::size_t position) {
    if (met_[position]) return;
    met_[position] = true;
    way_.push_back({position, Above(entries_[position])});
  }

  [[nodiscard]] std::vector<std::size_t> Above(const GroupedEntry& entry) const {
    std::vector<std::size_t> above;
    const auto item = recorded_.Find(entry);
    if (!item) return above;
    const auto& group = positions_[GroupOf(entry)];
    for (const auto name : NeededAbove(item->kind, item->item)) {
      if (const auto found = group.find(LowerCase(name)); found != group.end()) {
        above.push_back(found->second);
      }
    }
    std::ranges::sort(above);
    return above;
  }

  const GroupedList& entries_;
  RecordedItems recorded_;
  std::array<std::unordered_map<std::u16string, std::size_t>, kKindCount> positions_;
  std::vector<bool> met_;
  std::vector<Step> way_;
  GroupedList ordered_;
};

}  // namespace

GroupedList InsertionOrder(const Basket& basket) {
  OrderedEntries ordered(basket);
  for (std::size_t i = 0; i < basket.Entries().size(); ++i) ordered.Add(i);
  return ordered.Take();
}

}  // namespace declarium
