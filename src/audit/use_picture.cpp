#include "audit/use_picture.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace declarium::audit {
namespace {

constexpr std::size_t kMostPlaces = 24;  // on each side
constexpr std::size_t kLongestName = 32;

// Pixels at 96 dpi.
constexpr int kWidth = 900;
constexpr int kBoxWidth = 300;
constexpr int kBoxHeight = 22;
constexpr int kStep = 30;
constexpr int kTop = 34;

using Pairs = std::map<std::pair<std::size_t, std::size_t>, std::size_t>;

// How often each module uses what each other one declares.
Pairs CountPairs(const Audit& audit) {
  Pairs pairs;
  for (const auto& row : audit.rows)
    for (const auto& use : row.uses)
      if (use.module != row.row.module) ++pairs[{row.row.module, use.module}];
  return pairs;
}

// The modules of one side from top to bottom, those with the most uses; the rest shares the last
// place.
class Side {
 public:
  explicit Side(const std::map<std::size_t, std::size_t>& uses) {
    std::vector<std::pair<std::size_t, std::size_t>> order(uses.begin(), uses.end());
    std::ranges::sort(order, [](const auto& a, const auto& b) {
      return a.second != b.second ? a.second > b.second : a.first < b.first;
    });
    for (const auto& [module, count] : order) {
      const auto place = std::min(places_.size(), kMostPlaces);
      places_.emplace(module, place);
      if (place == counts_.size()) counts_.push_back({module, 0, 0});
      ++counts_[place].modules;
      counts_[place].uses += count;
    }
  }

  struct Place {
    std::size_t module;   // the first of those that share it
    std::size_t modules;  // that share it
    std::size_t uses;
  };

  [[nodiscard]] const std::vector<Place>& Places() const { return counts_; }
  [[nodiscard]] std::size_t PlaceOf(std::size_t module) const { return places_.at(module); }

 private:
  std::map<std::size_t, std::size_t> places_;  // by module
  std::vector<Place> counts_;
};

int Middle(std::size_t place) {
  return kTop + static_cast<int>(place) * kStep + kBoxHeight / 2;
}

// Cut at a character.
std::string Shortened(std::string text) {
  if (text.size() <= kLongestName) return text;
  auto end = kLongestName;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return text.substr(0, end) + "\xE2\x80\xA6";
}

std::string Coordinates(int x, int y) {
  return "x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) + "\"";
}

class Picture {
 public:
  Picture(const Subject& subject, const Pairs& pairs) : subject_(subject), pairs_(pairs) {}

  std::string Draw() {
    std::map<std::size_t, std::size_t> declaring;
    std::map<std::size_t, std::size_t> using_modules;
    for (const auto& [pair, count] : pairs_) {
      declaring[pair.first] += count;
      using_modules[pair.second] += count;
    }
    const Side left(declaring);
    const Side right(using_modules);
    const auto rows = std::max(left.Places().size(), right.Places().size());
    const auto height = std::to_string(kTop + static_cast<int>(rows) * kStep);
    svg_ = "<h3>Who uses what</h3>\n<svg viewBox=\"0 0 " + std::to_string(kWidth) + " " + height +
           "\" width=\"" + std::to_string(kWidth) + "\" height=\"" + height +
           "\" role=\"img\" aria-label=\"Modules that declare on the left, modules that use on the "
           "right\">\n<text class=\"count\" x=\"1\" y=\"16\">declares</text><text class=\"count\" "
           "x=\"" +
           std::to_string(kWidth - kBoxWidth) + "\" y=\"16\">uses</text>\n";
    DrawLines(left, right);
    DrawSide(left, 0);
    DrawSide(right, kWidth - kBoxWidth);
    return std::move(svg_ += "</svg>\n");
  }

 private:
  void DrawLines(const Side& left, const Side& right) {
    Pairs places;
    for (const auto& [pair, count] : pairs_)
      places[{left.PlaceOf(pair.first), right.PlaceOf(pair.second)}] += count;
    for (const auto& [pair, count] : places) {
      const auto from = Middle(pair.first);
      const auto to = Middle(pair.second);
      const auto bend = std::to_string(kWidth / 2);
      // Twice the uses, a pixel more.
      const auto width = std::min(1 + std::lround(std::log2(static_cast<double>(count))), 10L);
      svg_ += "<path stroke-width=\"" + std::to_string(width) + "\" d=\"M" +
              std::to_string(kBoxWidth) + " " + std::to_string(from) + "C" + bend + " " +
              std::to_string(from) + " " + bend + " " + std::to_string(to) + " " +
              std::to_string(kWidth - kBoxWidth) + " " + std::to_string(to) + "\"><title>" +
              NameOf(right.Places()[pair.second]) + " uses " + NameOf(left.Places()[pair.first]) +
              ": " + std::to_string(count) + "</title></path>\n";
    }
  }

  void DrawSide(const Side& side, int x) {
    for (std::size_t i = 0; i < side.Places().size(); ++i) {
      const auto& place = side.Places()[i];
      const auto y = Middle(i) - kBoxHeight / 2;
      svg_ +=
          "<rect " + Coordinates(x, y) + " width=\"" + std::to_string(kBoxWidth) + "\" height=\"" +
          std::to_string(kBoxHeight) + "\" rx=\"4\"/><text " + Coordinates(x + 8, y + 15) + ">" +
          NameOf(place) + "</text><text class=\"count\" text-anchor=\"end\" " +
          Coordinates(x + kBoxWidth - 8, y + 15) + ">" + std::to_string(place.uses) + "</text>\n";
    }
  }

  [[nodiscard]] std::string NameOf(const Side::Place& place) const {
    if (place.modules > 1) return std::to_string(place.modules) + " other modules";
    return HtmlText(Shortened(ModuleNameText(subject_, place.module)));
  }

  const Subject& subject_;
  const Pairs& pairs_;
  std::string svg_;
};

}  // namespace

std::string HtmlText(std::string_view text) {
  std::string escaped;
  for (const char byte : text) {
    switch (byte) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\'':
        escaped += "&#39;";
        break;
      default:
        if (static_cast<unsigned char>(byte) >= 0x20 || byte == '\n' || byte == '\t') {
          escaped += byte;
        } else if (byte != '\r') {
          escaped += "\xEF\xBF\xBD";
        }
    }
  }
  return escaped;
}

std::string UsePicture(const Subject& subject, const Audit& audit) {
  const auto pairs = CountPairs(audit);
  return pairs.empty() ? std::string() : Picture(subject, pairs).Draw();
}

}  // namespace declarium::audit
