#include "needs/needed_above.h"

#include "library/item.h"
#include "text/text.h"

namespace declarium {
namespace {

// Above ASCII everything counts as a letter; the language takes the letters of its code page.
bool IsLetter(char16_t unit) {
  return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z') || unit >= 0x80;
}

bool IsWordUnit(char16_t unit) {
  return IsLetter(unit) || IsDigit(unit) || unit == u'_';
}

// Cuts code into names, passing over literals, operators and the comment at its end.
class NameScanner {
 public:
  explicit NameScanner(std::u16string_view code) : left_(code) {}

  // The next name, with its brackets when it has them; empty when there is none.
  std::u16string_view Next() {
    while (!left_.empty() && left_.front() != u'\'') {
      const auto unit = left_.front();
      if (IsLetter(unit)) return TakeWord(0);
      if (unit == u'[') return TakeThrough(u']');
      if (unit == u'"') {
        (void)TakeThrough(u'"');
      } else if (IsDigit(unit) || StartsRadix()) {
        // 1E5, &HFF and &O17 are literals to their last letter or digit.
        (void)TakeWord(1);
      } else {
        left_.remove_prefix(1);
      }
    }
    return {};
  }

 private:
  [[nodiscard]] bool StartsRadix() const {
    if (left_.front() != u'&' || left_.size() < 3) return false;
    const auto letter = LowerCase(left_[1]);
    return letter == u'h' || (letter == u'o' && IsDigit(left_[2]));
  }

  std::u16string_view Take(std::size_t length) {
    const auto taken = left_.substr(0, length);
    left_.remove_prefix(taken.size());
    return taken;
  }

  // At least `least` units, and the letters and digits behind them.
  std::u16string_view TakeWord(std::size_t least) {
    auto end = least;
    while (end < left_.size() && IsWordUnit(left_[end])) ++end;
    return Take(end);
  }

  std::u16string_view TakeThrough(char16_t last) {
    const auto end = left_.find(last, 1);
    return Take(end == left_.npos ? end : end + 1);
  }

  std::u16string_view left_;
};

std::vector<std::u16string_view> NamesIn(std::u16string_view value) {
  std::vector<std::u16string_view> names;
  NameScanner scanner(value);
  for (auto name = scanner.Next(); !name.empty(); name = scanner.Next()) names.push_back(name);
  return names;
}

std::vector<std::u16string_view> MemberTypes(std::u16string_view members) {
  std::vector<std::u16string_view> types;
  for (const auto line : Split(members, kMemberSeparator)) {
    NameScanner scanner(line);
    // The member's own name may be As.
    (void)scanner.Next();
    for (auto name = scanner.Next(); !name.empty(); name = scanner.Next()) {
      if (!EqualIgnoringCase(name, u"as")) continue;
      if (const auto type = scanner.Next(); !type.empty()) types.push_back(type);
      break;
    }
  }
  return types;
}

}  // namespace

std::vector<std::u16string_view> NeededAbove(Kind kind, std::u16string_view item) {
  switch (kind) {
    case Kind::kConst:
      return NamesIn(SplitConst(item).value);
    case Kind::kType:
      return MemberTypes(SplitType(item).members);
    case Kind::kDeclare:
      break;
  }
  return {};
}

}  // namespace declarium
