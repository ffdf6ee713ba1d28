#include "search/search_matcher.h"

#include <algorithm>
#include <array>

#include "library/item.h"
#include "text/scan.h"
#include "text/text.h"
#include "vb/keyword.h"
#include "vb/number.h"

namespace declarium {
namespace {

constexpr std::u16string_view kCommentStart = u" '";
constexpr std::u16string_view kAs = u" as ";
constexpr std::u16string_view kStringLength = u" as string * ";

std::optional<LikePattern> MakePattern(std::u16string_view text, bool whole) {
  if (text.empty()) return std::nullopt;
  const auto lowered = LowerCase(text);
  return LikePattern(whole ? lowered : u"*" + lowered + u"*");
}

std::optional<LikePattern> MakeFullTextPattern(std::u16string_view text, bool whole_words) {
  if (text.empty() || !whole_words) return MakePattern(text, false);
  constexpr std::u16string_view kNoWordUnit = u"[!a-z!0-9]";
  return LikePattern(std::u16string(u"*")
                         .append(kNoWordUnit)
                         .append(LowerCase(text))
                         .append(kNoWordUnit)
                         .append(u"*"));
}

// The lower-cased text when it is nothing but units that stand for themselves both in a pattern and
// in a normalized text, otherwise empty.
std::u16string PlainText(std::u16string_view text) {
  constexpr std::u16string_view kSpecial = u"?*#[ .,()'";
  return text.find_first_of(kSpecial) == text.npos ? LowerCase(text) : std::u16string();
}

std::u16string_view UpTo(std::u16string_view text, std::u16string_view end) {
  return text.substr(0, text.find(end));
}

std::u16string_view FirstWord(std::u16string_view text) {
  return UpTo(text, u" ");
}

// A token of a value or of bounds that names a constant rather than being a number.
bool IsNameToken(std::u16string_view token) {
  if (!token.empty() && (IsDigit(token.front()) || token.front() == u'&')) return false;
  return !IsKeyword(token);
}

// What stands between the first "(" of a line and the next ")".
std::u16string_view BoundsOf(std::u16string_view line) {
  const auto open = line.find(u'(');
  if (open == line.npos) return {};
  const auto close = line.find(u')', open + 1);
  if (close == line.npos) return {};
  return line.substr(open + 1, close - open - 1);
}

// The text as the constant and the value criterion see it, from the lower-cased value of a Const.
std::u16string PlainValue(std::u16string_view lowered) {
  auto value = RemoveUnits(UpTo(lowered, kCommentStart), u"()");
  if (value.starts_with(u'"')) value.erase(0, 1);
  if (value.ends_with(u'"')) value.pop_back();
  return value;
}

constexpr auto kFullTextUnit = [] {
  std::array<bool, 128> is_blank{};
  for (const char16_t unit : std::u16string_view(u".,()'")) is_blank[unit] = true;
  return is_blank;
}();

// A text as the full-text criterion sees it: lower case, trimmed, a blank at both ends, and blanks
// for ".", ",", "(", ")" and "'". Line breaks stay.
void NormalizeFullTextInto(std::u16string_view text, std::u16string& out) {
  text = Trim(text);
  out.resize(text.size() + 2);
  out.front() = u' ';
  std::ranges::transform(text, out.begin() + 1, [](char16_t unit) {
    return unit < kFullTextUnit.size() && kFullTextUnit[unit] ? u' ' : LowerCase(unit);
  });
  out.back() = u' ';
}

}  // namespace

SearchMatcher::SearchMatcher(const SearchCriteria& criteria)
    : name_(MakePattern(criteria.nameText, criteria.nameWhole)),
      type_(MakePattern(criteria.typeText, criteria.typeWhole)),
      constant_(MakePattern(criteria.constText, criteria.constWhole)),
      value_(MakePattern(criteria.valueText, criteria.valueWhole)),
      argument_(MakePattern(criteria.argText, criteria.argWhole)),
      full_(MakeFullTextPattern(criteria.fullText, criteria.fullWholeWords)),
      plain_text_(PlainText(criteria.fullText)),
      full_whole_words_(criteria.fullWholeWords),
      value_as_number_(criteria.valueAsNumber) {}

bool SearchMatcher::Matches(Kind kind, std::u16string_view name, std::u16string_view item) {
  // A given name must match whatever else does, so it goes first: it is the cheapest test.
  if (name_ && !MatchesName(name)) return false;
  if (!HasOtherCriteria()) return true;
  switch (kind) {
    case Kind::kConst:
      return MatchesConst(item);
    case Kind::kDeclare:
      return MatchesDeclare(item);
    case Kind::kType:
      return MatchesType(item);
  }
  return false;
}

bool SearchMatcher::MatchesName(std::u16string_view name) {
  return name_->MatchesLowerCaseOf(name, lowered_);
}

bool SearchMatcher::MatchesFullText(std::u16string_view text) {
  if (!plain_text_.empty()) {
    if (FindIgnoringCase(text, plain_text_) == text.npos) return false;
    if (!full_whole_words_) return true;
  }
  NormalizeFullTextInto(text, normalized_);
  return full_->Matches(normalized_);
}

bool SearchMatcher::MatchesNumberOrText(std::u16string_view text) const {
  if (!value_as_number_) return value_->Matches(text);
  const auto number = ValText(text);
  return number && value_->Matches(LowerCase(*number));
}

bool SearchMatcher::MatchesConst(std::u16string_view item) {
  const auto value = SplitConst(item).value;
  if (constant_ || value_) {
    LowerCaseInto(value, lowered_);
    const auto plain = PlainValue(lowered_);
    if (constant_) {
      for (const auto token : Split(plain, u' ')) {
        if (token.starts_with(u'"') || token.ends_with(u'"')) continue;
        if (IsNameToken(token) && constant_->Matches(token)) return true;
      }
    }
    if (value_ && MatchesNumberOrText(plain)) return true;
  }
  return full_ && MatchesFullText(value);
}

bool SearchMatcher::MatchesDeclare(std::u16string_view item) {
  const auto tail = SplitDeclare(item).tail;
  if (type_ || argument_) {
    LowerCaseInto(tail, lowered_);
    if (type_ && MatchesDeclareType(lowered_)) return true;
    if (argument_ && MatchesParameter(lowered_)) return true;
  }
  return full_ && MatchesFullText(tail);
}

bool SearchMatcher::MatchesDeclareType(std::u16string_view lowered) const {
  const auto text = RemoveUnits(UpTo(lowered, kCommentStart), u"(),") + u" ";
  const std::u16string_view view = text;
  for (auto as = view.find(kAs); as != view.npos; as = view.find(kAs, as + 1)) {
    if (type_->Matches(FirstWord(view.substr(as + kAs.size())))) return true;
  }
  return false;
}

bool SearchMatcher::MatchesParameter(std::u16string_view lowered) const {
  const auto parameters = Replace(Replace(BoundsOf(lowered), u"byval ", u""), u"byref ", u"");
  return std::ranges::any_of(Split(parameters, u", "), [this](std::u16string_view parameter) {
    return argument_->Matches(FirstWord(parameter));
  });
}

bool SearchMatcher::MatchesType(std::u16string_view item) {
  const auto members = SplitType(item).members;
  LowerCaseInto(members, lowered_);
  if (type_ || constant_ || value_) {
    for (const auto line : Split(lowered_, kMemberSeparator)) {
      const auto comment = line.find(u'\'');
      if (MatchesMember(comment == line.npos ? line : TrimRight(line.substr(0, comment)))) {
        return true;
      }
    }
  }
  if (full_ && MatchesFullText(members)) return true;
  return argument_ && MatchesMemberName(lowered_);
}

bool SearchMatcher::MatchesMember(std::u16string_view line) const {
  if (type_) {
    const auto as = line.find(kAs);
    if (as != line.npos && type_->Matches(FirstWord(line.substr(as + kAs.size())))) return true;
  }
  return MatchesBounds(line) || MatchesStringLength(line);
}

bool SearchMatcher::MatchesBounds(std::u16string_view line) const {
  return std::ranges::any_of(Split(BoundsOf(line), u' '), [this](std::u16string_view token) {
    return (constant_ && IsNameToken(token) && constant_->Matches(token)) ||
           (value_ && value_->Matches(token));
  });
}

bool SearchMatcher::MatchesStringLength(std::u16string_view line) const {
  const auto found = line.find(kStringLength);
  if (found == line.npos) return false;
  const auto length = line.substr(found + kStringLength.size());
  const bool is_number = !length.empty() && (IsDigit(length.front()) || length.front() == u'&');
  return (constant_ && !is_number && constant_->Matches(length)) ||
         (value_ && MatchesNumberOrText(length));
}

bool SearchMatcher::MatchesMemberName(std::u16string_view lowered_members) const {
  return std::ranges::any_of(Split(lowered_members, kMemberSeparator),
                             [this](std::u16string_view line) {
                               return !line.empty() && argument_->Matches(FirstWord(line));
                             });
}

}  // namespace declarium
