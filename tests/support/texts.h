// Small and random texts to compare a function with its plain twin.
#pragma once

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace declarium {

// Every text of up to `longest` units over the alphabet, shortest first, beginning with the empty
// one.
inline std::vector<std::u16string> AllTexts(std::u16string_view alphabet, std::size_t longest) {
  std::vector<std::u16string> texts = {u""};
  for (std::size_t first = 0, length = 0; length < longest; ++length) {
    const auto last = texts.size();
    for (; first < last; ++first) {
      for (const char16_t unit : alphabet) texts.push_back(texts[first] + unit);
    }
  }
  return texts;
}

// The same numbers in every run and on every platform.
class Random {
 public:
  explicit Random(std::uint32_t seed) : engine_(seed) {}

  // 0 to below - 1.
  std::size_t Below(std::size_t below) { return engine_() % below; }

  // Up to `longest` pieces in a row.
  template <class Pieces>
  std::u16string Text(const Pieces& pieces, std::size_t longest) {
    std::u16string text;
    for (auto count = Below(longest + 1); count > 0; --count)
      text += pieces[Below(std::size(pieces))];
    return text;
  }

 private:
  std::mt19937 engine_;
};

}  // namespace declarium
