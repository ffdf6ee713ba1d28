#include "vb/conditions.h"

#include <algorithm>

#include "vb/token.h"

namespace declarium::vb {
namespace {

// The expression as an operand of Not and And.
std::u16string Operand(std::u16string_view expression) {
  if (std::ranges::all_of(expression, ContinuesName)) return std::u16string(expression);
  return u"(" + std::u16string(expression) + u")";
}

Condition And(const Condition& outer, std::u16string_view text, const Condition::Part& part) {
  Condition both = outer;
  if (!both.text.empty()) both.text += u" And ";
  both.text += text;
  both.parts.push_back(part);
  return both;
}

// One line: a continuation in the middle becomes a blank.
std::u16string InOneLine(std::u16string_view expression) {
  std::u16string text;
  Tokenizer tokens(expression);
  for (Token token = tokens.Next(); token.kind != TokenKind::kEnd; token = tokens.Next()) {
    if (token.IsSpace()) {
      if (!text.ends_with(u' ')) text += u' ';
    } else {
      text += token.text;
    }
  }
  return text;
}

}  // namespace

std::uint32_t Conditions::Add(const Condition& condition) {
  // A module writes the same few conditions again and again.
  const auto found = std::ranges::find(all_, condition.text, &Condition::text);
  if (found != all_.end()) return static_cast<std::uint32_t>(found - all_.begin());
  all_.push_back(condition);
  return static_cast<std::uint32_t>(all_.size() - 1);
}

void Conditions::If(std::u16string_view expression) {
  const auto text = InOneLine(expression);
  const auto operand = Operand(text);
  Open open;
  if (!open_.empty()) open.outer = open_.back().inner;
  open.inner = And(open.outer, operand, {expression, true});
  open.others_failed = And(open.outer, u"Not " + operand, {expression, false});
  // Alone it needs no brackets.
  Condition here = open.inner;
  if (open.outer.text.empty()) here.text = text;
  open.branch = Add(here);
  open_.push_back(std::move(open));
}

bool Conditions::ElseIf(std::u16string_view expression) {
  if (open_.empty()) return false;
  auto& open = open_.back();
  const auto operand = Operand(InOneLine(expression));
  open.inner = And(open.others_failed, operand, {expression, true});
  open.others_failed = And(open.others_failed, u"Not " + operand, {expression, false});
  open.branch = Add(open.inner);
  return true;
}

bool Conditions::Else() {
  if (open_.empty()) return false;
  auto& open = open_.back();
  open.inner = open.others_failed;
  open.branch = Add(open.inner);
  return true;
}

bool Conditions::EndIf() {
  if (open_.empty()) return false;
  open_.pop_back();
  return true;
}

}  // namespace declarium::vb
