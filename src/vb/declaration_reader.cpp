#include "vb/declaration_reader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "text/text.h"
#include "vb/name.h"

namespace declarium::vb {
namespace {

using Failure = std::unexpected<SyntaxError>;

Failure Fail(const Token& found, std::string_view expected) {
  return Failure(SyntaxError{found.place, expected, found.text});
}

bool IsBinaryOperator(const Token& token) {
  constexpr std::u16string_view kSigns = u"+-*/\\^&=<>";
  if (token.kind == TokenKind::kOperator) return kSigns.contains(token.text.front());
  for (const auto* const word : {u"and", u"or", u"xor", u"mod", u"eqv", u"imp", u"is", u"like"}) {
    if (token.IsWord(word)) return true;
  }
  return false;
}

bool IsOperand(const Token& token) {
  switch (token.kind) {
    case TokenKind::kName:
      return !IsBinaryOperator(token) && !token.IsWord(u"to") && !token.IsWord(u"as");
    case TokenKind::kNumber:
    case TokenKind::kString:
    case TokenKind::kDate:
      return true;
    default:
      return false;
  }
}

bool TakeOperand(TokenCursor& cursor) {
  if (!IsOperand(cursor.Peek())) return false;
  const bool is_name = cursor.Take().kind == TokenKind::kName;
  if (!is_name) return true;
  if (cursor.Peek().kind == TokenKind::kTypeCharacter) cursor.Take();
  while (cursor.Peek().IsOperator(u'.') && cursor.Peek(1).kind == TokenKind::kName) {
    cursor.Take();
    cursor.Take();
  }
  return true;
}

struct NameAndCharacter {
  std::u16string_view name;
  Place place;
  char16_t character = 0;
};

std::expected<NameAndCharacter, SyntaxError> ReadName(TokenCursor& cursor) {
  if (cursor.Peek().kind != TokenKind::kName || cursor.Peek().IsWord(u"as"))
    return Fail(cursor.Peek(), "a name");
  const Token& token = cursor.Take();
  NameAndCharacter name{token.text, token.place};
  if (cursor.Peek().kind == TokenKind::kTypeCharacter) name.character = cursor.Take().text.front();
  return name;
}

// Behind "As": a type's name, "Library.Name", "String * length".
std::expected<TypeReference, SyntaxError> ReadType(TokenCursor& cursor) {
  TypeReference type;
  type.is_written = true;
  cursor.TakeWord(u"new");
  const auto from = cursor.Position();
  if (cursor.Peek().kind != TokenKind::kName) return Fail(cursor.Peek(), "a type");
  const bool is_string = cursor.Take().IsWord(u"string");
  while (cursor.TakeOperator(u'.')) {
    if (cursor.Peek().kind != TokenKind::kName) return Fail(cursor.Peek(), "a type");
    cursor.Take();
  }
  type.name = cursor.TextFrom(from);
  if (!is_string || !cursor.TakeOperator(u'*')) return type;
  const auto length = ReadExpression(cursor);
  if (!length) return Failure(length.error());
  type.length = *length;
  return type;
}

// The type of `name`: written with As, by its character or by the Def lines.
std::expected<TypeReference, SyntaxError> ReadTypeOf(const NameAndCharacter& name,
                                                     TokenCursor& cursor,
                                                     const DefaultTypes& defaults) {
  TypeReference type;
  if (cursor.TakeWord(u"as")) {
    auto written = ReadType(cursor);
    if (!written) return written;
    type = *written;
  } else {
    type.name = name.character == 0 ? defaults.Of(name.name) : TypeOfCharacter(name.character);
  }
  type.character = name.character;
  return type;
}

bool TakeEmptyBrackets(TokenCursor& cursor) {
  if (!cursor.Peek().IsOperator(u'(') || !cursor.Peek(1).IsOperator(u')')) return false;
  cursor.Take();
  cursor.Take();
  return true;
}

// The text in a string token without its quotes; quotes inside stay doubled.
std::expected<std::u16string_view, SyntaxError> ReadString(TokenCursor& cursor,
                                                           std::string_view expected) {
  const Token& token = cursor.Peek();
  if (token.kind != TokenKind::kString) return Fail(token, expected);
  if (token.text.size() < 2 || !token.text.ends_with(u'"'))
    return Fail(token, "a closing quotation mark");
  cursor.Take();
  return token.text.substr(1, token.text.size() - 2);
}

void ReadPassing(TokenCursor& cursor, Parameter& parameter) {
  for (;;) {
    if (cursor.TakeWord(u"optional")) {
      parameter.is_optional = true;
    } else if (cursor.TakeWord(u"paramarray")) {
      parameter.is_param_array = true;
    } else if (cursor.TakeWord(u"byval")) {
      parameter.passing = Passing::kByValue;
      parameter.is_passing_written = true;
    } else if (cursor.TakeWord(u"byref")) {
      parameter.is_passing_written = true;
    } else {
      return;
    }
  }
}

std::expected<Parameter, SyntaxError> ReadParameter(TokenCursor& cursor,
                                                    const DefaultTypes& defaults) {
  Parameter parameter;
  ReadPassing(cursor, parameter);
  const auto name = ReadName(cursor);
  if (!name) return Failure(name.error());
  parameter.name = name->name;
  parameter.place = name->place;
  parameter.is_array = TakeEmptyBrackets(cursor);
  const auto type = ReadTypeOf(*name, cursor, defaults);
  if (!type) return Failure(type.error());
  parameter.type = *type;
  if (!cursor.TakeOperator(u'=')) return parameter;
  const auto value = ReadExpression(cursor);
  if (!value) return Failure(value.error());
  parameter.default_value = *value;
  return parameter;
}

Expected ReadParameters(TokenCursor& cursor, const DefaultTypes& defaults,
                        std::vector<Parameter>& parameters) {
  if (!cursor.TakeOperator(u'(') || cursor.TakeOperator(u')')) return {};
  do {
    auto parameter = ReadParameter(cursor, defaults);
    if (!parameter) return Failure(parameter.error());
    parameters.push_back(*std::move(parameter));
  } while (cursor.TakeOperator(u','));
  if (!cursor.TakeOperator(u')')) return Fail(cursor.Peek(), "\",\" or \")\"");
  return {};
}

Expected ReadResult(const NameAndCharacter& name, TokenCursor& cursor, const DefaultTypes& defaults,
                    External& external) {
  if (external.is_function) {
    const auto type = ReadTypeOf(name, cursor, defaults);
    if (!type) return Failure(type.error());
    external.result = *type;
    external.result.is_array = TakeEmptyBrackets(cursor);
  }
  if (!cursor.AtEnd()) return Fail(cursor.Peek(), "the end of the statement");
  return {};
}

Expected ReadLibrary(TokenCursor& cursor, External& external) {
  cursor.TakeWord(u"cdecl");
  if (!cursor.TakeWord(u"lib")) return Fail(cursor.Peek(), "Lib");
  const auto library = ReadString(cursor, "the library in quotation marks");
  if (!library) return Failure(library.error());
  external.library = *library;
  if (!cursor.TakeWord(u"alias")) return {};
  const auto alias = ReadString(cursor, "the entry in quotation marks");
  if (!alias) return Failure(alias.error());
  external.alias = *alias;
  return {};
}

std::expected<Bounds, SyntaxError> ReadBounds(TokenCursor& cursor, std::u16string_view lowest) {
  Bounds bounds;
  bounds.lower = lowest;
  const auto first = ReadExpression(cursor);
  if (!first) return Failure(first.error());
  bounds.upper = *first;
  if (!cursor.TakeWord(u"to")) return bounds;
  bounds.lower = *first;
  bounds.is_lower_written = true;
  const auto upper = ReadExpression(cursor);
  if (!upper) return Failure(upper.error());
  bounds.upper = *upper;
  return bounds;
}

Expected ReadDimensions(TokenCursor& cursor, std::u16string_view lowest, Member& member) {
  member.is_array = cursor.Peek().IsOperator(u'(');
  if (!member.is_array || TakeEmptyBrackets(cursor)) return {};
  cursor.Take();
  do {
    const auto bounds = ReadBounds(cursor, lowest);
    if (!bounds) return Failure(bounds.error());
    member.dimensions.push_back(*bounds);
  } while (cursor.TakeOperator(u','));
  if (!cursor.TakeOperator(u')')) return Fail(cursor.Peek(), "\",\" or \")\"");
  return {};
}

// The letter's number from 0; nothing for another unit.
std::optional<std::size_t> LetterNumber(char16_t unit) {
  const char16_t lower = LowerCase(unit);
  if (lower < u'a' || lower > u'z') return std::nullopt;
  return lower - u'a';
}

}  // namespace

bool DefaultTypes::Read(std::span<const Token> statement) {
  static constexpr std::pair<std::u16string_view, std::u16string_view> kWords[] = {
      {u"defbool", u"Boolean"}, {u"defbyte", u"Byte"},       {u"defint", u"Integer"},
      {u"deflng", u"Long"},     {u"deflnglng", u"LongLong"}, {u"deflngptr", u"LongPtr"},
      {u"defcur", u"Currency"}, {u"defsng", u"Single"},      {u"defdbl", u"Double"},
      {u"defdate", u"Date"},    {u"defstr", u"String"},      {u"defobj", u"Object"},
      {u"defvar", u"Variant"}};
  const auto* const word = std::ranges::find_if(
      kWords, [&](const auto& each) { return statement.front().IsWord(each.first); });
  if (word == std::end(kWords)) return false;
  for (std::size_t i = 1; i < statement.size(); ++i) {
    const auto first = LetterNumber(statement[i].text.front());
    if (!first) continue;
    const bool is_range = i + 2 < statement.size() && statement[i + 1].IsOperator(u'-');
    if (is_range) i += 2;
    const auto last = LetterNumber(statement[i].text.front()).value_or(*first);
    for (auto letter = *first; letter <= last; ++letter) types_[letter] = word->second;
  }
  return true;
}

std::u16string_view DefaultTypes::Of(std::u16string_view name) const {
  const auto letter = LetterNumber(name.front());
  return letter ? types_[*letter] : std::u16string_view(u"Variant");
}

bool TokenCursor::TakeWord(std::u16string_view lowered) {
  if (!Peek().IsWord(lowered)) return false;
  Take();
  return true;
}

bool TokenCursor::TakeOperator(char16_t unit) {
  if (!Peek().IsOperator(unit)) return false;
  Take();
  return true;
}

std::u16string_view TokenCursor::TextFrom(std::size_t from) const {
  const auto& first = tokens_[from];
  return {first.text.data(), tokens_[position_ - 1].End() - first.place.offset};
}

std::expected<std::u16string_view, SyntaxError> ReadExpression(TokenCursor& cursor) {
  const auto from = cursor.Position();
  for (std::size_t open = 0;;) {
    while (cursor.Peek().IsOperator(u'-') || cursor.Peek().IsOperator(u'+') ||
           cursor.Peek().IsWord(u"not") || cursor.Peek().IsOperator(u'(')) {
      if (cursor.Take().IsOperator(u'(')) ++open;
    }
    if (!TakeOperand(cursor)) return Fail(cursor.Peek(), "a value");
    for (; open > 0 && cursor.TakeOperator(u')'); --open) {
    }
    if (IsBinaryOperator(cursor.Peek())) {
      cursor.Take();
      continue;
    }
    if (open > 0) return Fail(cursor.Peek(), "an operator or \")\"");
    return cursor.TextFrom(from);
  }
}

std::expected<NamedConstant, SyntaxError> ReadConstant(TokenCursor& cursor) {
  const auto name = ReadName(cursor);
  if (!name) return Failure(name.error());
  NamedConstant named{name->name, name->place, {}};
  if (cursor.TakeWord(u"as")) {
    const auto type = ReadType(cursor);
    if (!type) return Failure(type.error());
    named.constant.type = *type;
  } else {
    named.constant.type.name = TypeOfCharacter(name->character);
  }
  named.constant.type.character = name->character;
  if (!cursor.TakeOperator(u'=')) return Fail(cursor.Peek(), "\"=\"");
  const auto value = ReadExpression(cursor);
  if (!value) return Failure(value.error());
  named.constant.value = *value;
  if (!cursor.AtEnd() && !cursor.Peek().IsOperator(u','))
    return Fail(cursor.Peek(), "an operator, \",\" or the end of the statement");
  return named;
}

std::expected<NamedExternal, SyntaxError> ReadExternal(TokenCursor& cursor,
                                                       const DefaultTypes& defaults) {
  NamedExternal named;
  auto& external = named.external;
  external.is_ptr_safe = cursor.TakeWord(u"ptrsafe");
  external.is_function = cursor.TakeWord(u"function");
  if (!external.is_function && !cursor.TakeWord(u"sub"))
    return Fail(cursor.Peek(), "Sub or Function");
  const auto name = ReadName(cursor);
  if (!name) return Failure(name.error());
  named.name = name->name;
  named.place = name->place;
  external.name_character = name->character;
  if (const auto done = ReadLibrary(cursor, external); !done) return Failure(done.error());
  if (const auto done = ReadParameters(cursor, defaults, external.parameters); !done)
    return Failure(done.error());
  if (const auto done = ReadResult(*name, cursor, defaults, external); !done)
    return Failure(done.error());
  return named;
}

std::expected<Member, SyntaxError> ReadMember(TokenCursor& cursor, const DefaultTypes& defaults,
                                              std::u16string_view lowest) {
  Member member;
  const auto name = ReadName(cursor);
  if (!name) return Failure(name.error());
  member.name = name->name;
  member.place = name->place;
  if (const auto done = ReadDimensions(cursor, lowest, member); !done) return Failure(done.error());
  if (name->character == 0 && !cursor.Peek().IsWord(u"as")) return Fail(cursor.Peek(), "As");
  const auto type = ReadTypeOf(*name, cursor, defaults);
  if (!type) return Failure(type.error());
  member.type = *type;
  if (!cursor.AtEnd()) return Fail(cursor.Peek(), "the end of the statement");
  return member;
}

std::expected<EnumMember, SyntaxError> ReadEnumMember(TokenCursor& cursor) {
  EnumMember member;
  const auto name = ReadName(cursor);
  if (!name) return Failure(name.error());
  member.name = name->name;
  member.place = name->place;
  if (cursor.TakeOperator(u'=')) {
    const auto value = ReadExpression(cursor);
    if (!value) return Failure(value.error());
    member.value = *value;
  }
  if (!cursor.AtEnd()) return Fail(cursor.Peek(), "\"=\" or the end of the statement");
  return member;
}

}  // namespace declarium::vb
