// The table of the window's bars, in Markdown.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace declarium::bench {

// Milliseconds of several rounds; the median of none is 0.
using Times = std::vector<double>;
[[nodiscard]] double MedianOf(Times times);
// The quickest round alone: of what takes a few milliseconds, the one that other programs disturbed
// least. `times` must not be empty.
[[nodiscard]] Times QuickestOf(const Times& times);

// Milliseconds that `action` takes.
template <class Action>
[[nodiscard]] double MillisecondsOf(const Action& action) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  action();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

class BarsTable {
 public:
  // A figure that may be at most `most` times its floor.
  void Ratio(std::string_view what, const Times& figure, const Times& floor, double most);
  // A figure that must stay below a number of milliseconds.
  void Below(std::string_view what, const Times& figure, double milliseconds);
  // A figure without a bar.
  void Record(std::string_view what, const Times& figure);
  // A count or size that must not grow by more than `most`.
  void Growth(std::string_view what, std::string_view unit, long long grown, long long most);

  // Prints the table; false when a bar fails.
  [[nodiscard]] bool Print() const;

 private:
  struct Row {
    std::string what, bar, measured, figure, floor;
    bool has_bar = true;
    bool holds = true;
  };
  std::vector<Row> rows_;
};

}  // namespace declarium::bench
