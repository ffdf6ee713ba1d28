#include "bench/window/bars_table.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

namespace declarium::bench {
namespace {

std::string Number(double value, int digits) {
  std::ostringstream text;
  text.setf(std::ios::fixed);
  text.precision(digits);
  text << value;
  return text.str();
}

std::string Milliseconds(double value) {
  return Number(value, value < 10 ? 2 : value < 100 ? 1 : 0) + " ms";
}

std::string WithUnit(long long number, std::string_view unit) {
  return std::to_string(number) + (unit.empty() ? "" : " ") + std::string(unit);
}

}  // namespace

double MedianOf(Times times) {
  if (times.empty()) return 0;
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::ranges::nth_element(times, middle);
  return *middle;
}

Times QuickestOf(const Times& times) {
  return {std::ranges::min(times)};
}

void BarsTable::Ratio(std::string_view what, const Times& figure, const Times& floor, double most) {
  const double ratio = MedianOf(figure) / MedianOf(floor);
  rows_.push_back({.what = std::string(what),
                   .bar = "≤ " + Number(most, 1) + " ×",
                   .measured = Number(ratio, 2) + " ×",
                   .figure = Milliseconds(MedianOf(figure)),
                   .floor = Milliseconds(MedianOf(floor)),
                   .holds = ratio <= most});
}

void BarsTable::Below(std::string_view what, const Times& figure, double milliseconds) {
  const double median = MedianOf(figure);
  rows_.push_back({.what = std::string(what),
                   .bar = "< " + Number(milliseconds, 0) + " ms",
                   .measured = Milliseconds(median),
                   .figure = {},
                   .floor = {},
                   .holds = median < milliseconds});
}

void BarsTable::Record(std::string_view what, const Times& figure) {
  rows_.push_back({.what = std::string(what),
                   .bar = {},
                   .measured = Milliseconds(MedianOf(figure)),
                   .figure = {},
                   .floor = {},
                   .has_bar = false});
}

void BarsTable::Growth(std::string_view what, std::string_view unit, long long grown,
                       long long most) {
  rows_.push_back({.what = std::string(what),
                   .bar = "≤ " + WithUnit(most, unit),
                   .measured = WithUnit(grown, unit),
                   .figure = {},
                   .floor = {},
                   .holds = grown <= most});
}

bool BarsTable::Print() const {
  std::printf("| what | bar | measured | figure | floor | holds |\n|---|---|---|---|---|---|\n");
  for (const Row& row : rows_) {
    const char* const holds = !row.has_bar ? "" : row.holds ? "yes" : "**no**";
    std::printf("| %s | %s | %s | %s | %s | %s |\n", row.what.c_str(), row.bar.c_str(),
                row.measured.c_str(), row.figure.c_str(), row.floor.c_str(), holds);
  }
  return std::ranges::all_of(rows_, &Row::holds);
}

}  // namespace declarium::bench
