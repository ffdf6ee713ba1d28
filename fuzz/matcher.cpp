// A pattern and a text, against a matcher that follows the definition by trying everything.
#include <optional>
#include <vector>

#include "fuzz/input.h"
#include "text/scan.h"
#include "text/text.h"
#include "vb/like.h"

using namespace declarium;
using fuzz::Require;

namespace {

// One step of a pattern: which units it takes, or any run of them.
struct Step {
  bool is_run = false;
  std::vector<bool> takes = std::vector<bool>(0x10000);
};

// The steps of a pattern; none when it is malformed.
std::optional<std::vector<Step>> Steps(std::u16string_view pattern) {
  std::vector<Step> steps;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    Step step;
    const auto unit = pattern[i];
    if (unit == u'*') {
      step.is_run = true;
    } else if (unit == u'?') {
      step.takes.flip();
    } else if (unit == u'#') {
      for (char16_t digit = u'0'; digit <= u'9'; ++digit) step.takes[digit] = true;
    } else if (unit == u'[') {
      const auto close = pattern.find(u']', i);
      if (close == pattern.npos) return std::nullopt;
      auto list = pattern.substr(i + 1, close - i - 1);
      i = close;
      if (list.empty()) continue;
      const bool negated = list.size() > 1 && list.front() == u'!';
      if (negated) list.remove_prefix(1);
      for (std::size_t k = 0; k < list.size(); ++k) {
        auto last = list[k];
        const auto first = last;
        if (k + 2 < list.size() && list[k + 1] == u'-') last = list[k += 2];
        if (first > last) return std::nullopt;
        for (std::uint32_t listed = first; listed <= last; ++listed) step.takes[listed] = true;
      }
      if (negated) step.takes.flip();
    } else {
      step.takes[unit] = true;
    }
    steps.push_back(step);
  }
  return steps;
}

// Which beginnings of the text the steps so far match, step by step.
bool NaiveMatch(std::u16string_view text, std::u16string_view pattern) {
  const auto steps = Steps(pattern);
  if (!steps) return false;
  std::vector<bool> reached(text.size() + 1);
  reached[0] = true;
  for (const auto& step : *steps) {
    std::vector<bool> next(text.size() + 1);
    for (std::size_t i = 0; i <= text.size(); ++i) {
      if (step.is_run) {
        next[i] = reached[i] || (i > 0 && next[i - 1]);
      } else {
        next[i] = i > 0 && reached[i - 1] && step.takes[text[i - 1]];
      }
    }
    reached = std::move(next);
  }
  return reached[text.size()];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kLongestPattern = 64;
  auto bytes = fuzz::Bytes(data, size);
  const auto pattern = fuzz::TakeText(bytes);
  if (pattern.size() > kLongestPattern) return 0;
  const auto text = DecodeCodePage(bytes);
  Require(Matches(text, pattern) == NaiveMatch(text, pattern), "the naive matcher agrees");

  const auto lowered = LowerCase(text);
  const auto lowered_pattern = LowerCase(pattern);
  std::u16string scratch;
  for (const auto& sought : {lowered_pattern, u"*" + lowered_pattern + u"*"}) {
    Require(LikePattern(sought).MatchesLowerCaseOf(text, scratch) == Matches(lowered, sought),
            "lower-casing on the way makes no difference");
  }
  Require(FindIgnoringCase(text, lowered_pattern) == lowered.find(lowered_pattern),
          "a search without regard to case finds the first place");
  return 0;
}
