// Reads declarations from the tokens of a statement.
#pragma once

#include <array>
#include <expected>
#include <span>
#include <string_view>
#include <vector>

#include "vb/declaration.h"

namespace declarium::vb {

// What Def lines say a name without a type is: by its first letter, Variant unless said otherwise.
class DefaultTypes {
 public:
  DefaultTypes() { types_.fill(u"Variant"); }

  // Takes in "DefLng A-Z" and its like; false for another statement.
  bool Read(std::span<const Token> statement);
  [[nodiscard]] std::u16string_view Of(std::u16string_view name) const;

 private:
  std::array<std::u16string_view, 26> types_;
};

// Walks the tokens of one statement.
class TokenCursor {
 public:
  // `end` is where the statement ends.
  TokenCursor(std::span<const Token> tokens, Place end) : tokens_(tokens), end_{} {
    end_.place = end;
  }

  // The token here, or `ahead` further; a kEnd token behind the last.
  [[nodiscard]] const Token& Peek(std::size_t ahead = 0) const {
    return position_ + ahead < tokens_.size() ? tokens_[position_ + ahead] : end_;
  }
  [[nodiscard]] bool AtEnd() const { return position_ >= tokens_.size(); }
  const Token& Take() {
    const Token& token = Peek();
    if (!AtEnd()) ++position_;
    return token;
  }
  // Goes on when this stands here. Words are given in lower case.
  bool TakeWord(std::u16string_view lowered);
  bool TakeOperator(char16_t unit);
  // The source from the token at `from` up to here, without what separates.
  [[nodiscard]] std::u16string_view TextFrom(std::size_t from) const;
  [[nodiscard]] std::size_t Position() const { return position_; }

 private:
  std::span<const Token> tokens_;
  Token end_;
  std::size_t position_ = 0;
};

using Expected = std::expected<void, SyntaxError>;

// Behind the word Const: one constant, up to "," or the end.
struct NamedConstant {
  std::u16string_view name;
  Place place;
  Constant constant;
};
[[nodiscard]] std::expected<NamedConstant, SyntaxError> ReadConstant(TokenCursor& cursor);

// Behind the word Declare or DeclareWide, up to the end.
struct NamedExternal {
  std::u16string_view name;
  Place place;
  External external;
};
[[nodiscard]] std::expected<NamedExternal, SyntaxError> ReadExternal(TokenCursor& cursor,
                                                                     const DefaultTypes& defaults);

// A line of a Type, where arrays without a lower bound begin at `lowest` (empty for 0), and one of
// an Enum.
[[nodiscard]] std::expected<Member, SyntaxError> ReadMember(TokenCursor& cursor,
                                                            const DefaultTypes& defaults,
                                                            std::u16string_view lowest);
[[nodiscard]] std::expected<EnumMember, SyntaxError> ReadEnumMember(TokenCursor& cursor);

// An expression, up to "," or ")" of no bracket in it, "To", or the end.
[[nodiscard]] std::expected<std::u16string_view, SyntaxError> ReadExpression(TokenCursor& cursor);

}  // namespace declarium::vb
