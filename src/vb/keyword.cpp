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

}  // namespace

bool IsKeyword(std::u16string_view word) {
  static const auto keywords = Split(kKeywordList, u',');
  if (word.size() < kShortest || word.size() > kLongest) return false;
  return std::ranges::any_of(
      keywords, [word](std::u16string_view keyword) { return EqualIgnoringCase(word, keyword); });
}

}  // namespace declarium
