#include "cli/nearest_names.h"

#include <algorithm>
#include <numeric>
#include <string>

#include "text/text.h"

namespace declarium::cli {
namespace {

constexpr std::size_t kMostSuggestions = 3;
// A longer text is no mistyped name, and its distances would cost its square.
constexpr std::size_t kLongestName = 200;

std::size_t Difference(std::size_t a, std::size_t b) {
  return a > b ? a - b : b - a;
}

struct Candidate {
  std::size_t distance;
  ItemView item;
};

// Keeps the nearest candidates, earlier ones first among equals.
void Offer(std::vector<Candidate>& nearest, const Candidate& candidate) {
  const auto place =
      std::ranges::upper_bound(nearest, candidate.distance, {}, &Candidate::distance);
  nearest.insert(place, candidate);
  if (nearest.size() > kMostSuggestions) nearest.pop_back();
}

}  // namespace

std::size_t EditDistance(std::u16string_view a, std::u16string_view b, std::size_t limit) {
  if (Difference(a.size(), b.size()) > limit) return limit + 1;
  // Rows of the distance table: two rows back (for swapped neighbours), the last, the current.
  std::vector<std::size_t> before(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> current(b.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    current[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      current[j] = std::min({replaced, last[j] + 1, current[j - 1] + 1});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) current[j] = std::min(current[j], before[j - 2] + 1);
    }
    if (std::ranges::min(current) > limit) return limit + 1;
    std::swap(before, last);
    std::swap(last, current);
  }
  return std::min(last.back(), limit + 1);
}

std::vector<ItemView> NearestNames(const Library& library, std::span<const Kind> kinds,
                                   std::u16string_view name) {
  if (name.empty() || name.size() > kLongestName) return {};
  const auto sought = LowerCase(name);
  std::size_t limit = std::max<std::size_t>(1, name.size() / 3);
  std::vector<Candidate> nearest;
  std::u16string lowered;
  for (const auto kind : kinds) {
    const auto& lists = library[kind];
    for (std::size_t i = 0; i < lists.names.size(); ++i) {
      if (Difference(lists.names[i].size(), sought.size()) > limit) continue;
      LowerCaseInto(lists.names[i], lowered);
      const auto distance = EditDistance(sought, lowered, limit);
      if (distance > limit) continue;
      Offer(nearest, {distance, {kind, lists.names[i], lists.ItemAt(i)}});
      if (nearest.size() == kMostSuggestions) limit = nearest.back().distance;
    }
  }
  std::vector<ItemView> items;
  items.reserve(nearest.size());
  for (const auto& candidate : nearest) items.push_back(candidate.item);
  return items;
}

}  // namespace declarium::cli
