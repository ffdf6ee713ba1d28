#include "vb/keyword.h"

#include <algorithm>

#include "text/text.h"

namespace declarium {
namespace {

// "Not" stands in it twice.
constexpr std::u16string_view kKeywordList =
    u"Public,Private,As,Function,Sub,Const,Enum,String,Long,Currency,Double,Variant,Integer,Alias,"
    u"Lib,Declare,ByVal,ByRef,Any,End,Type,Byte,Boolean,Not,And,Eqv,Imp,Not,Or,Xor,Mod,To";

constexpr std::size_t kShortest = 2;
constexpr std::size_t kLongest = 8;

// The list's own spelling of the word, empty when it is not in the list.
std::u16string_view FindKeyword(std::u16string_view word) {
  static const auto keywords = Split(kKeywordList, u',');
  if (word.size() < kShortest || word.size() > kLongest) return {};
  const auto found = std::ranges::find_if(
      keywords, [word](std::u16string_view keyword) { return EqualIgnoringCase(word, keyword); });
  return found == keywords.end() ? std::u16string_view() : *found;
}

}  // namespace

bool IsKeyword(std::u16string_view word) {
  return !FindKeyword(word).empty();
}

std::u16string_view KeywordAsWritten(std::u16string_view word) {
  const auto keyword = FindKeyword(word);
  return keyword.empty() ? word : keyword;
}

}  // namespace declarium
