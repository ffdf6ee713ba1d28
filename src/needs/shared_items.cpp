#include "needs/shared_items.h"

#include <algorithm>
#include <optional>

#include "library/item.h"
#include "text/text.h"
#include "vb/keyword.h"
#include "vb/number.h"

namespace declarium {
namespace {

constexpr int kConstIcon = IconOf(Kind::kConst);
constexpr int kTypeIcon = IconOf(Kind::kType);

void AddBetween(GroupedList& list, std::int32_t first, std::int32_t last, std::u16string_view name,
                int icon) {
  const auto position = GetAlphabeticInsertion(first, last, name, list);
  if (position != -1) InsertEntry(list, position, {std::u16string(name), icon});
}

std::int32_t Count(const GroupedList& list) {
  return static_cast<std::int32_t>(list.size());
}

void AddAnywhere(GroupedList& list, std::u16string_view name, int icon) {
  AddBetween(list, 1, Count(list), name, icon);
}

// The range ends with the first record itself, not before it: a constant that sorts behind that
// record's name stands behind it. The order on screen has always been this one.
void AddConst(GroupedList& list, std::u16string_view name) {
  const auto first_const = FindItemByIcon(kConstIcon, list);
  const auto first_type = FindItemByIcon(kTypeIcon, list);
  AddBetween(list, first_const == -1 ? 1 : first_const, first_type == -1 ? Count(list) : first_type,
             name, kConstIcon);
}

void AddType(GroupedList& list, std::u16string_view name) {
  const auto first_type = FindItemByIcon(kTypeIcon, list);
  AddBetween(list, first_type == -1 ? Count(list) + 1 : first_type, Count(list), name, kTypeIcon);
}

// The text outside string literals and before a comment, without the quotes.
std::u16string WithoutLiteralsAndComment(std::u16string_view text) {
  std::u16string code;
  bool in_quote = false;
  for (const char16_t unit : text) {
    if (unit == u'"') {
      in_quote = !in_quote;
    } else if (!in_quote) {
      if (unit == u'\'') break;
      code += unit;
    }
  }
  return code;
}

// "-" is an operator here; "*" is not, so it is listed.
bool IsOperator(std::u16string_view token) {
  constexpr std::u16string_view kOperators = u"\\^/=-+";
  return token.size() == 1 && kOperators.contains(token.front());
}

bool IsConstName(std::u16string_view token) {
  return !token.empty() && !IsOwnNumberText(token) && !token.starts_with(u"&O") &&
         !token.starts_with(u"&H") && !token.ends_with(u'&') && !token.starts_with(u'-') &&
         !IsOperator(token) && !IsKeyword(token);
}

// Walks a Declare's text and collects the words behind "As ".
class AsWords {
 public:
  GroupedList Collect(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      word_ += text[i];
      if (NeverEndsWord(text[i])) continue;
      if (IsWordEnd(text[i]) || i + 1 == text.size()) EndWord();
    }
    return std::move(list_);
  }

 private:
  // These extend the word even as the last character of the text.
  static bool NeverEndsWord(char16_t unit) {
    return unit == u'"' || unit == u'\r' || unit == u'\n' || unit == u'\'';
  }
  static bool IsWordEnd(char16_t unit) { return unit == u' ' || unit == u')' || unit == u','; }

  void EndWord() {
    if (after_as_) {
      word_ = RemoveUnits(word_, u" ,)");
      if (!IsKeyword(word_)) AddAnywhere(list_, word_, kTypeIcon);
      after_as_ = false;
    }
    // The removal above took the blank, so an "As" behind an "As" opens nothing.
    if (EqualIgnoringCase(word_, u"as ")) after_as_ = true;
    word_.clear();
  }

  GroupedList list_;
  std::u16string word_;
  bool after_as_ = false;
};

// The words of one member line; word 0 is the member's name with its bounds.
class Member {
 public:
  explicit Member(std::u16string_view line) : words_(Split(line, u' ')) {}

  void AddSharedItems(GroupedList& list) const {
    AddMemberType(list);
    AddStringLength(list);
    AddArrayBounds(list);
  }

 private:
  [[nodiscard]] bool WordIs(std::size_t i, std::u16string_view text) const {
    return i < words_.size() && words_[i] == text;
  }

  void AddMemberType(GroupedList& list) const {
    if (!WordIs(1, u"As") || words_.size() < 3 || IsKeyword(words_[2])) return;
    AddType(list, words_[2]);
  }

  void AddStringLength(GroupedList& list) const {
    if (words_.size() < 5 || !WordIs(2, u"String") || !WordIs(3, u"*")) return;
    const auto length = words_[4];
    if (!length.starts_with(u'\'') && !IsOwnNumberText(length)) AddConst(list, length);
  }

  void AddArrayBounds(GroupedList& list) const {
    const auto parts = Split(words_[0], u'(');
    if (parts.size() < 2 || words_.size() < 2) return;
    if (words_[1] == u"To") {
      AddBound(list, parts[1]);
      if (words_.size() > 2) AddBound(list, RemoveUnits(words_[2], u")"));
    } else if (const auto pieces = Split(parts[1], u')'); !pieces.empty()) {
      AddBound(list, pieces[0]);
    }
  }

  static void AddBound(GroupedList& list, std::u16string_view bound) {
    if (!IsNumber(bound)) AddConst(list, bound);
  }

  std::vector<std::u16string_view> words_;  // never empty: the line is not
};

}  // namespace

bool IsNumber(std::u16string_view token) {
  return !token.empty() &&
         (token.front() == u'&' || token.front() == u'-' || IsDigit(token.front()));
}

GroupedList CreateShared_Const(std::u16string_view value) {
  GroupedList list;
  const auto code = WithoutLiteralsAndComment(RemoveUnits(FoldBlanks(value), u"(),"));
  for (const auto token : Split(code, u' ')) {
    if (IsConstName(token)) AddAnywhere(list, token, kConstIcon);
  }
  return list;
}

GroupedList CreateShared_Declare(std::u16string_view item) {
  return AsWords().Collect(FoldBlanks(item));
}

GroupedList CreateShared_Type(std::u16string_view item) {
  GroupedList list;
  const auto folded = FoldBlanks(item);
  for (const auto line : Split(SplitType(folded).members, kMemberSeparator)) {
    if (!line.empty() && !line.starts_with(u'\'')) Member(line).AddSharedItems(list);
  }
  return list;
}

GroupedList CreateShared(Kind kind, std::u16string_view item) {
  switch (kind) {
    case Kind::kConst:
      return CreateShared_Const(SplitConst(item).value);
    case Kind::kDeclare:
      return CreateShared_Declare(item);
    case Kind::kType:
      return CreateShared_Type(item);
  }
  return {};
}

}  // namespace declarium
