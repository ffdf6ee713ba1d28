#include "import/canonical_item.h"

#include "import/line_reader.h"
#include "library/item.h"
#include "text/text.h"
#include "vb/keyword.h"
#include "vb/statement.h"

namespace declarium {
namespace {

using vb::Token;
using vb::TokenKind;

bool IsOperand(const Token& token) {
  return token.kind == TokenKind::kNumber || token.kind == TokenKind::kString ||
         token.kind == TokenKind::kDate || token.kind == TokenKind::kTypeCharacter ||
         token.IsOperator(u')') || (token.kind == TokenKind::kName && !IsKeyword(token.text));
}

bool IsArithmetic(const Token& token) {
  constexpr std::u16string_view kSigns = u"+-*/\\^&=<>";
  return token.kind == TokenKind::kOperator && kSigns.contains(token.text.front());
}

// Puts tokens together with the blanks that the language's editor would give them.
class Line {
 public:
  void Add(const Token& token, bool has_space) {
    if (!text_.empty() && NeedsBlank(token, has_space)) text_ += u' ';
    text_ += token.kind == TokenKind::kName ? KeywordAsWritten(token.text) : token.text;
    // An operator that no operand precedes is a sign and stays at what follows.
    is_sign_ = IsArithmetic(token) && !IsOperand(last_);
    last_ = token;
  }

  [[nodiscard]] std::u16string Take() { return std::move(text_); }

 private:
  [[nodiscard]] bool NeedsBlank(const Token& token, bool has_space) const {
    const bool sticks = token.kind == TokenKind::kTypeCharacter || token.IsOperator(u',') ||
                        token.IsOperator(u')') || token.IsOperator(u'.') ||
                        last_.IsOperator(u'(') || last_.IsOperator(u'.') ||
                        last_.IsOperator(u'#') || is_sign_;
    if (sticks) return false;
    if (last_.IsOperator(u',') || IsArithmetic(token) || IsArithmetic(last_)) return true;
    return has_space;
  }

  std::u16string text_;
  Token last_;
  bool is_sign_ = false;
};

std::u16string TypeText(const vb::TypeReference& type) {
  auto text = CanonicalText(type.name);
  if (!type.length.empty()) text += u" * " + CanonicalText(type.length);
  return text;
}

// The As clause with a blank in front. Variant is what everything is that says nothing else.
std::u16string AsClause(const vb::TypeReference& type) {
  const bool is_said = type.is_written || type.character != 0 || type.name != u"Variant";
  return is_said ? u" As " + TypeText(type) : std::u16string();
}

std::u16string ParameterText(const vb::Parameter& parameter) {
  std::u16string text;
  if (parameter.is_optional) text += u"Optional ";
  if (parameter.is_passing_written)
    text += parameter.passing == vb::Passing::kByValue ? u"ByVal " : u"ByRef ";
  if (parameter.is_param_array) text += u"ParamArray ";
  text += parameter.name;
  if (parameter.is_array) text += u"()";
  text += AsClause(parameter.type);
  if (!parameter.default_value.empty()) text += u" = " + CanonicalText(parameter.default_value);
  return text;
}

std::u16string MemberText(const vb::Member& member) {
  std::u16string text(member.name);
  if (member.is_array) {
    text += u'(';
    for (const auto& [lower, upper, is_lower_written] : member.dimensions) {
      if (!text.ends_with(u'(')) text += u", ";
      if (!lower.empty()) text += CanonicalText(lower) + u" To ";
      text += CanonicalText(upper);
    }
    text += u')';
  }
  return text + u" As " + TypeText(member.type);
}

void AppendComment(std::u16string_view comment, std::u16string& text) {
  if (comment.empty()) return;
  if (!text.empty()) text += u' ';
  text += CanonicalComment(comment);
}

}  // namespace

std::u16string CanonicalText(std::u16string_view source) {
  Line line;
  vb::Tokenizer tokenizer(source);
  bool has_space = false;
  for (auto token = tokenizer.Next(); token.kind != TokenKind::kEnd; token = tokenizer.Next()) {
    if (!token.IsSpace()) line.Add(token, has_space);
    has_space = token.IsSpace();
  }
  return line.Take();
}

std::u16string CanonicalComment(std::u16string_view comment) {
  auto source = ReadSource(std::u16string(comment));
  JoinContinuedLines(source);
  return NormalizeLine(source.text);
}

std::u16string CanonicalConst(const vb::Constant& constant, std::u16string_view comment) {
  auto item = TypeText(constant.type);
  item += kValueSeparator;
  auto value = CanonicalText(constant.value);
  AppendComment(comment, value);
  return item + value;
}

std::u16string CanonicalDeclare(const vb::External& external, std::u16string_view comment) {
  std::u16string item(1, external.is_function ? kFunctionMarker : kSubMarker);
  item.append(u"\"").append(external.library).append(u"\"");
  if (!external.alias.empty()) item.append(u" Alias \"").append(external.alias).append(u"\"");
  item += u" (";
  for (const auto& parameter : external.parameters) {
    if (!item.ends_with(u'(')) item += u", ";
    item += ParameterText(parameter);
  }
  item += u')';
  if (external.is_function) item += AsClause(external.result);
  if (external.result.is_array) item += u"()";
  AppendComment(comment, item);
  return item;
}

std::u16string CanonicalType(const vb::Declaration& record) {
  vb::StatementReader reader(record.text);
  vb::Statement statement;
  std::u16string item;
  reader.Next(statement);
  if (statement.comment) item = CanonicalComment(statement.comment->text);
  item += kMembersSeparator;
  const auto& members = record.As<vb::Record>()->members;
  std::size_t next = 0;
  bool is_first = true;
  while (reader.Next(statement)) {
    const auto& tokens = statement.tokens;
    if (tokens.size() == 2 && tokens[0].IsWord(u"end") && tokens[1].IsWord(u"type")) break;
    // The members that were read know the module's Option Base.
    const bool is_member = next < members.size() && !tokens.empty() &&
                           tokens.front().text.data() == members[next].name.data();
    auto line = is_member ? MemberText(members[next++])
                          : (tokens.empty() ? std::u16string() : CanonicalText(statement.Text()));
    if (statement.comment) AppendComment(statement.comment->text, line);
    if (!is_first) item += kMemberSeparator;
    is_first = false;
    item += line;
  }
  return item;
}

}  // namespace declarium
