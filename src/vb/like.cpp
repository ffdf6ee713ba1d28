#include "vb/like.h"

#include <algorithm>

#include "text/scan.h"
#include "text/text.h"

namespace declarium {

LikePattern::LikePattern(std::u16string_view pattern) {
  Compile(pattern);
  FindPlainText();
}

void LikePattern::Compile(std::u16string_view pattern) {
  for (std::size_t position = 0; position < pattern.size();) {
    const char16_t unit = pattern[position];
    if (unit == u'[') {
      if (!CompileList(pattern, position)) {
        malformed_ = true;
        return;
      }
      continue;
    }
    ++position;
    switch (unit) {
      case u'?':
        elements_.push_back({Step::kAnyUnit, 0, 0, 0});
        break;
      case u'#':
        elements_.push_back({Step::kDigit, 0, 0, 0});
        break;
      case u'*':
        if (elements_.empty() || elements_.back().step != Step::kAnyRun) {
          elements_.push_back({Step::kAnyRun, 0, 0, 0});
        }
        break;
      default:
        elements_.push_back({Step::kUnit, unit, 0, 0});
    }
  }
}

bool LikePattern::CompileList(std::u16string_view pattern, std::size_t& position) {
  const auto close = pattern.find(u']', position);
  if (close == pattern.npos) return false;
  auto list = pattern.substr(position + 1, close - position - 1);
  position = close + 1;
  if (list.empty()) return true;
  if (list == u"!") {
    elements_.push_back({Step::kUnit, u'!', 0, 0});
    return true;
  }
  const bool negated = list.front() == u'!';
  if (negated) list.remove_prefix(1);

  const auto first_range = ranges_.size();
  for (std::size_t i = 0; i < list.size();) {
    if (i + 2 < list.size() && list[i + 1] == u'-') {
      if (list[i] > list[i + 2]) return false;
      ranges_.push_back({list[i], list[i + 2]});
      i += 3;
    } else {
      ranges_.push_back({list[i], list[i]});
      ++i;
    }
  }
  elements_.push_back({negated ? Step::kNotInList : Step::kInList, 0, first_range, ranges_.size()});
  return true;
}

void LikePattern::FindPlainText() {
  if (malformed_ || elements_.size() < 2 || elements_.front().step != Step::kAnyRun ||
      elements_.back().step != Step::kAnyRun) {
    return;
  }
  for (std::size_t i = 1; i + 1 < elements_.size(); ++i) {
    if (elements_[i].step != Step::kUnit) return;
    contained_.push_back(elements_[i].unit);
  }
  is_contained_text_ = true;
}

bool LikePattern::Accepts(const Element& element, char16_t unit) const noexcept {
  switch (element.step) {
    case Step::kUnit:
      return unit == element.unit;
    case Step::kDigit:
      return IsDigit(unit);
    case Step::kInList:
    case Step::kNotInList: {
      const auto begin = ranges_.begin() + static_cast<std::ptrdiff_t>(element.first_range);
      const auto end = ranges_.begin() + static_cast<std::ptrdiff_t>(element.last_range);
      const bool listed = std::any_of(begin, end, [unit](const Range& range) {
        return unit >= range.low && unit <= range.high;
      });
      return listed == (element.step == Step::kInList);
    }
    case Step::kAnyUnit:
    case Step::kAnyRun:
      break;
  }
  return true;
}

// Every element besides "*" takes exactly one unit, so it is enough to come back to the last star
// and let it take one unit more: no recursion, no exponential case.
bool LikePattern::MatchesElements(std::u16string_view text) const noexcept {
  constexpr auto kNone = static_cast<std::size_t>(-1);
  std::size_t position = 0;
  std::size_t element = 0;
  std::size_t star = kNone;
  std::size_t star_position = 0;
  while (position < text.size()) {
    if (element < elements_.size() && elements_[element].step == Step::kAnyRun) {
      star = element++;
      star_position = position;
    } else if (element < elements_.size() && Accepts(elements_[element], text[position])) {
      ++element;
      ++position;
    } else if (star != kNone) {
      element = star + 1;
      position = ++star_position;
    } else {
      return false;
    }
  }
  while (element < elements_.size() && elements_[element].step == Step::kAnyRun) ++element;
  return element == elements_.size();
}

bool LikePattern::Matches(std::u16string_view text) const noexcept {
  if (malformed_) return false;
  if (is_contained_text_) return text.find(contained_) != text.npos;
  return MatchesElements(text);
}

bool LikePattern::MatchesLowerCaseOf(std::u16string_view text, std::u16string& scratch) const {
  if (malformed_) return false;
  if (is_contained_text_) return FindIgnoringCase(text, contained_) != text.npos;
  LowerCaseInto(text, scratch);
  return MatchesElements(scratch);
}

bool Matches(std::u16string_view text, std::u16string_view pattern) {
  return LikePattern(pattern).Matches(text);
}

}  // namespace declarium
