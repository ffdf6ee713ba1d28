#include "source/format_text.h"

#include <algorithm>
#include <iterator>

#include "text/text.h"
#include "vb/keyword.h"

namespace declarium {
namespace {

bool IsBracket(char16_t unit) {
  return unit == u'(' || unit == u')';
}
bool IsBracketOrComma(char16_t unit) {
  return IsBracket(unit) || unit == u',';
}

bool BeginsComment(std::u16string_view word) {
  const auto first = word.find_first_not_of(u'\t');
  return first != word.npos && word[first] == u'\'';
}

bool IsKeywordOf64Bits(std::u16string_view word) {
  static constexpr std::u16string_view kWords[] = {u"ptrsafe",     u"longptr", u"longlong",
                                                   u"declarewide", u"#if",     u"#else",
                                                   u"#end",        u"if",      u"then"};
  const auto lowered = LowerCase(word);
  return std::ranges::find(kWords, lowered) != std::end(kWords);
}

class Coloring {
 public:
  explicit Coloring(vb::Audience audience) : audience_(audience) {}

  void Line(std::u16string_view line) {
    quote_depth_ = 0;
    in_comment_ = false;
    color_ = TextColor::kNormal;
    bool first = true;
    for (const auto word : Split(line, u' ')) {
      if (!first) Insert(u" ");
      first = false;
      Word(word);
    }
  }

  void Insert(std::u16string_view text) {
    if (text.empty()) return;
    if (runs_.empty() || runs_.back().color != color_) runs_.push_back({color_, {}});
    runs_.back().text += text;
  }

  std::vector<ColorRun> Take() { return std::move(runs_); }

 private:
  [[nodiscard]] bool InPlainCode() const { return quote_depth_ == 0 && !in_comment_; }

  [[nodiscard]] bool IsColored(std::u16string_view word) const {
    return IsKeyword(word) || (audience_ != vb::Audience::kVb6 && IsKeywordOf64Bits(word));
  }

  void Word(std::u16string_view word) {
    auto inner = word;
    if (!inner.empty() && IsBracket(inner.front())) inner.remove_prefix(1);
    if (!inner.empty() && IsBracketOrComma(inner.back())) inner.remove_suffix(1);

    if (!word.empty() && IsBracket(word.front())) Insert(word.substr(0, 1));
    if (inner.starts_with(u'"')) ++quote_depth_;
    if (inner.ends_with(u'"')) --quote_depth_;
    if (BeginsComment(inner)) {
      color_ = TextColor::kComment;
      in_comment_ = true;
    }
    if (InPlainCode() && IsColored(inner)) color_ = TextColor::kKeyword;
    Insert(inner);
    if (InPlainCode()) color_ = TextColor::kNormal;
    if (!word.empty() && IsBracketOrComma(word.back())) Insert(word.substr(word.size() - 1));
  }

  vb::Audience audience_;
  std::vector<ColorRun> runs_;
  TextColor color_ = TextColor::kNormal;  // of what is inserted next
  int quote_depth_ = 0;
  bool in_comment_ = false;
};

}  // namespace

std::vector<ColorRun> FormatText(std::u16string_view text, vb::Audience audience) {
  Coloring coloring(audience);
  bool first = true;
  for (const auto line : Split(text, kCrLf)) {
    if (!first) coloring.Insert(kCrLf);
    first = false;
    coloring.Line(line);
  }
  return coloring.Take();
}

}  // namespace declarium
