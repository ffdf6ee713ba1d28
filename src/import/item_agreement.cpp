#include "import/item_agreement.h"

#include <algorithm>

#include "library/item.h"
#include "text/text.h"
#include "vb/token.h"

namespace declarium {
namespace {

using vb::Token;
using vb::TokenKind;

// The next token that says something: no space, no comment, one line end for several.
Token NextTelling(vb::Tokenizer& tokens, const Token& before) {
  for (;;) {
    const auto token = tokens.NextSignificant();
    const bool repeats = token.kind == TokenKind::kLineEnd && (before.kind == TokenKind::kLineEnd);
    if (token.kind != TokenKind::kComment && !repeats) return token;
  }
}

// Whether both say the same: names in any case, no matter which spaces and comments.
bool SayTheSame(std::u16string_view a, std::u16string_view b) {
  vb::Tokenizer a_tokens(a);
  vb::Tokenizer b_tokens(b);
  Token a_token{TokenKind::kLineEnd, {}, {}};
  Token b_token = a_token;
  for (;;) {
    a_token = NextTelling(a_tokens, a_token);
    b_token = NextTelling(b_tokens, b_token);
    // A line end in front of the end says nothing.
    if (a_token.kind == TokenKind::kLineEnd && b_token.kind == TokenKind::kEnd)
      a_token = NextTelling(a_tokens, a_token);
    if (b_token.kind == TokenKind::kLineEnd && a_token.kind == TokenKind::kEnd)
      b_token = NextTelling(b_tokens, b_token);
    if (a_token.kind != b_token.kind) return false;
    if (a_token.kind == TokenKind::kEnd) return true;
    if (a_token.kind == TokenKind::kName
            ? !EqualIgnoringCase(a_token.text, b_token.text)
            : a_token.kind != TokenKind::kLineEnd && a_token.text != b_token.text)
      return false;
  }
}

bool IsSameName(std::u16string_view literal, std::u16string_view name, char16_t character) {
  if (character == 0) return literal == name;
  return literal.size() == name.size() + 1 && literal.starts_with(name) &&
         literal.back() == character;
}

bool SaysConst(std::u16string_view name, std::u16string_view item,
               const vb::Declaration& declaration) {
  const auto& constant = *declaration.As<vb::Constant>();
  const auto& type = constant.type;
  const auto fields = SplitConst(item);
  return IsSameName(name, declaration.name, type.character) &&
         SayTheSame(fields.type, type.is_written ? type.Text() : std::u16string_view()) &&
         SayTheSame(fields.value, constant.value);
}

// Whether the module's Def lines say what the type is, which another module would not know.
bool IsSaidByDefLine(const vb::TypeReference& type) {
  return !type.is_written && type.character == 0 && type.name != u"Variant";
}

// What stands behind Lib.
std::u16string_view TailOf(std::u16string_view declaration) {
  vb::Tokenizer tokens(declaration);
  auto token = tokens.NextSignificant();
  while (token.kind != TokenKind::kEnd && token.kind != TokenKind::kString)
    token = tokens.NextSignificant();
  return declaration.substr(token.place.offset);
}

bool SaysDeclare(std::u16string_view name, std::u16string_view item,
                 const vb::Declaration& declaration) {
  const auto& external = *declaration.As<vb::External>();
  const auto fields = SplitDeclare(item);
  const char16_t marker = external.is_function ? kFunctionMarker : kSubMarker;
  const bool needs_def_line = (external.is_function && IsSaidByDefLine(external.result)) ||
                              std::ranges::any_of(external.parameters, [](const auto& parameter) {
                                return IsSaidByDefLine(parameter.type);
                              });
  return !external.is_ptr_safe && !external.is_wide && !needs_def_line &&
         fields.marker == std::u16string_view(&marker, 1) &&
         IsSameName(name, declaration.name, external.name_character) &&
         SayTheSame(fields.tail, TailOf(declaration.text));
}

// What stands between the first line of a Type and End Type.
std::u16string_view BodyOf(std::u16string_view declaration) {
  vb::Tokenizer tokens(declaration);
  auto token = tokens.NextSignificant();
  while (token.kind != TokenKind::kLineEnd && token.kind != TokenKind::kEnd &&
         !token.IsOperator(u':'))
    token = tokens.NextSignificant();
  const auto start = token.End();
  auto end = declaration.size();
  Token last;
  for (; token.kind != TokenKind::kEnd; token = tokens.NextSignificant()) {
    if (last.IsWord(u"end") && token.IsWord(u"type")) end = last.place.offset;
    last = token;
  }
  return declaration.substr(start, end - start);
}

bool SaysType(std::u16string_view name, std::u16string_view item,
              const vb::Declaration& declaration) {
  const auto fields = SplitType(item);
  const bool needs_option_base =
      std::ranges::any_of(declaration.As<vb::Record>()->members, [](const auto& member) {
        return std::ranges::any_of(member.dimensions, [](const auto& bounds) {
          return !bounds.lower.empty() && !bounds.is_lower_written;
        });
      });
  return !needs_option_base && name == declaration.name && SayTheSame(fields.header_rest, u"") &&
         SayTheSame(fields.members, BodyOf(declaration.text));
}

}  // namespace

bool Says(Kind kind, std::u16string_view name, std::u16string_view item,
          const vb::Declaration& declaration) {
  switch (kind) {
    case Kind::kConst:
      return SaysConst(name, item, declaration);
    case Kind::kDeclare:
      return SaysDeclare(name, item, declaration);
    case Kind::kType:
      return SaysType(name, item, declaration);
  }
  return false;
}

}  // namespace declarium
