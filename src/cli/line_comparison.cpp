#include "cli/line_comparison.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

#include "cli/line_difference.h"

namespace declarium::cli {
namespace {

// Beyond this the search for the fewest lines costs more than a reader gains.
constexpr std::ptrdiff_t kMostSteps = 1000;

using Lines16 = std::span<const std::u16string_view>;

std::u16string Joined(Lines16 lines) {
  std::u16string text;
  for (const auto line : lines) text += line;
  return text;
}

// A line of `before` that goes, or one of `now` that comes in front of that position.
struct Step {
  std::ptrdiff_t before;
  std::ptrdiff_t now;
  bool comes;
};

// The greedy search along diagonals: after each number of steps, how far in `before` each diagonal
// has come. Nothing when there are too many steps.
class ShortestEdit {
 public:
  ShortestEdit(Lines16 before, Lines16 now) : before_(before), now_(now) {}

  // The steps in the order of the texts; false when there would be too many.
  bool Find(std::vector<Step>& steps) {
    const auto size = static_cast<std::ptrdiff_t>(before_.size() + now_.size());
    const auto most = std::min(size, kMostSteps);
    reached_.assign(static_cast<std::size_t>(2 * most + 3), 0);
    offset_ = most + 1;
    for (std::ptrdiff_t count = 0; count <= most; ++count) {
      trace_.push_back(reached_);
      for (auto diagonal = -count; diagonal <= count; diagonal += 2) {
        if (Advance(diagonal, count)) return WalkBack(diagonal, count, steps), true;
      }
    }
    return false;
  }

 private:
  [[nodiscard]] static bool ComesFromAbove(const std::vector<std::ptrdiff_t>& reached,
                                           std::ptrdiff_t at, std::ptrdiff_t diagonal,
                                           std::ptrdiff_t count) {
    const auto index = static_cast<std::size_t>(at);
    return diagonal == -count || (diagonal != count && reached[index - 1] < reached[index + 1]);
  }

  // Whether the ends of both texts are reached.
  bool Advance(std::ptrdiff_t diagonal, std::ptrdiff_t count) {
    const auto at = offset_ + diagonal;
    const auto index = static_cast<std::size_t>(at);
    auto x = ComesFromAbove(reached_, at, diagonal, count) ? reached_[index + 1]
                                                           : reached_[index - 1] + 1;
    auto y = x - diagonal;
    const auto before_size = static_cast<std::ptrdiff_t>(before_.size());
    const auto now_size = static_cast<std::ptrdiff_t>(now_.size());
    while (x < before_size && y < now_size &&
           before_[static_cast<std::size_t>(x)] == now_[static_cast<std::size_t>(y)]) {
      ++x;
      ++y;
    }
    reached_[index] = x;
    return x >= before_size && y >= now_size;
  }

  void WalkBack(std::ptrdiff_t diagonal, std::ptrdiff_t count, std::vector<Step>& steps) const {
    for (; count > 0; --count) {
      const auto& reached = trace_[static_cast<std::size_t>(count)];
      const auto at = offset_ + diagonal;
      const bool comes = ComesFromAbove(reached, at, diagonal, count);
      diagonal += comes ? 1 : -1;
      const auto x = reached[static_cast<std::size_t>(offset_ + diagonal)];
      steps.push_back({x, x - diagonal, comes});
    }
    std::ranges::reverse(steps);
  }

  Lines16 before_;
  Lines16 now_;
  std::vector<std::ptrdiff_t> reached_;
  std::vector<std::vector<std::ptrdiff_t>> trace_;
  std::ptrdiff_t offset_ = 0;
};

// Steps beside each other become one replacement. `offset` is where `before` begins.
std::vector<Replacement> ReplacementsOf(const std::vector<Step>& steps, Lines16 before, Lines16 now,
                                        std::size_t offset) {
  std::vector<Replacement> replacements;
  std::size_t line = 0;
  for (std::size_t i = 0; i < steps.size();) {
    const auto first = static_cast<std::size_t>(steps[i].before);
    for (; line < first; ++line) offset += before[line].size();
    Replacement replacement{offset, offset, {}};
    auto x = steps[i].before;
    auto y = steps[i].now;
    for (; i < steps.size() && steps[i].before == x && steps[i].now == y; ++i) {
      if (steps[i].comes) {
        replacement.text += now[static_cast<std::size_t>(y++)];
      } else {
        replacement.end += before[static_cast<std::size_t>(x++)].size();
      }
    }
    for (; line < static_cast<std::size_t>(x); ++line) offset += before[line].size();
    replacements.push_back(std::move(replacement));
  }
  return replacements;
}

}  // namespace

std::vector<Replacement> ReplacementsBetween(std::u16string_view before, std::u16string_view now) {
  const auto all_before = LinesWithEnds(before);
  const auto all_now = LinesWithEnds(now);
  const auto [first, first_now] = std::ranges::mismatch(all_before, all_now);
  const auto head = static_cast<std::size_t>(first - all_before.begin());
  const auto most_tail = std::min(all_before.size(), all_now.size()) - head;
  std::size_t tail = 0;
  while (tail < most_tail &&
         all_before[all_before.size() - 1 - tail] == all_now[all_now.size() - 1 - tail])
    ++tail;
  const auto lines = Lines16(all_before).subspan(head, all_before.size() - head - tail);
  const auto lines_now = Lines16(all_now).subspan(head, all_now.size() - head - tail);
  if (lines.empty() && lines_now.empty()) return {};
  const auto offset = Joined(Lines16(all_before).first(head)).size();
  std::vector<Step> steps;
  if (ShortestEdit(lines, lines_now).Find(steps))
    return ReplacementsOf(steps, lines, lines_now, offset);
  return {{offset, offset + Joined(lines).size(), Joined(lines_now)}};
}

}  // namespace declarium::cli
