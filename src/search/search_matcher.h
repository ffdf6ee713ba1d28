// The tests of the advanced search on single items. They look for words of the stored text with
// patterns and cut no tokens (vb/token.h): a search reads every item of a library, and what it
// finds must not depend on whether the declaration is well-formed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "library/library.h"
#include "search/search_engine.h"
#include "vb/like.h"

namespace declarium {

class SearchMatcher {
 public:
  // Compiles the patterns; `criteria` need not outlive the call.
  explicit SearchMatcher(const SearchCriteria& criteria);

  // Whether any criterion is given.
  [[nodiscard]] bool HasCriteria() const noexcept { return name_ || HasOtherCriteria(); }

  // Not const: it reuses its buffers from item to item.
  [[nodiscard]] bool Matches(Kind kind, std::u16string_view name, std::u16string_view item);

 private:
  [[nodiscard]] bool HasOtherCriteria() const noexcept {
    return type_ || constant_ || value_ || argument_ || full_;
  }
  [[nodiscard]] bool MatchesName(std::u16string_view name);
  [[nodiscard]] bool MatchesConst(std::u16string_view item);
  [[nodiscard]] bool MatchesDeclare(std::u16string_view item);
  [[nodiscard]] bool MatchesType(std::u16string_view item);
  [[nodiscard]] bool MatchesDeclareType(std::u16string_view lowered) const;
  [[nodiscard]] bool MatchesParameter(std::u16string_view lowered) const;
  [[nodiscard]] bool MatchesMember(std::u16string_view line) const;
  [[nodiscard]] bool MatchesBounds(std::u16string_view line) const;
  [[nodiscard]] bool MatchesStringLength(std::u16string_view line) const;
  [[nodiscard]] bool MatchesMemberName(std::u16string_view lowered_members) const;
  [[nodiscard]] bool MatchesNumberOrText(std::u16string_view text) const;
  [[nodiscard]] bool MatchesFullText(std::u16string_view text);

  std::optional<LikePattern> name_;
  std::optional<LikePattern> type_;
  std::optional<LikePattern> constant_;
  std::optional<LikePattern> value_;
  std::optional<LikePattern> argument_;
  std::optional<LikePattern> full_;
  // When not empty, no text without it matches full_, and every text with it does unless whole
  // words are asked for: normalizing leaves it as it is.
  std::u16string plain_text_;
  bool full_whole_words_;
  bool value_as_number_;
  std::u16string lowered_;
  std::u16string normalized_;
};

}  // namespace declarium
