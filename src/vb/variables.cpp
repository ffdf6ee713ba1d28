#include "vb/variables.h"

#include <algorithm>

#include "text/text.h"
#include "vb/name.h"

namespace declarium::vb {
namespace {

// Where the item ends: at a comma or a closing bracket outside its own brackets.
std::size_t EndOfItem(std::span<const Token> tokens) {
  int depth = 0;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].IsOperator(u'(')) ++depth;
    if (depth == 0 && (tokens[i].IsOperator(u',') || tokens[i].IsOperator(u')'))) return i;
    if (tokens[i].IsOperator(u')')) --depth;
  }
  return tokens.size();
}

}  // namespace

bool StandsBeforeVariable(const Token& token) {
  static constexpr std::u16string_view kWords[] = {u"byval", u"byref", u"optional", u"paramarray",
                                                   u"withevents"};
  return std::ranges::any_of(kWords, [&](auto each) { return token.IsWord(each); });
}

void Variables::Add(std::u16string_view name, Variable variable) {
  const auto [known, is_new] = by_name_.try_emplace(LowerCase(name), variable);
  if (!is_new && !EqualIgnoringCase(known->second.type, variable.type)) known->second.type = {};
}

void Variables::AddList(std::span<const Token> tokens) {
  while (!tokens.empty()) {
    while (!tokens.empty() && StandsBeforeVariable(tokens.front())) tokens = tokens.subspan(1);
    const auto end = EndOfItem(tokens);
    const auto item = tokens.first(end);
    if (!item.empty() && item.front().kind == TokenKind::kName)
      Add(item.front().text, VariableOf(item.subspan(1)));
    if (end == tokens.size() || tokens[end].IsOperator(u')')) return;
    tokens = tokens.subspan(end + 1);
  }
}

const Variable* Variables::Find(const std::u16string& lowered) const {
  const auto found = by_name_.find(lowered);
  return found == by_name_.end() ? nullptr : &found->second;
}

std::vector<std::u16string> Variables::NamesOfType(std::u16string_view type) const {
  std::vector<std::u16string> names;
  for (const auto& [name, variable] : by_name_)
    if (EqualIgnoringCase(variable.type, type)) names.push_back(name);
  return names;
}

Variable VariableOf(std::span<const Token> behind_name) {
  Variable variable;
  if (!behind_name.empty() && behind_name.front().kind == TokenKind::kTypeCharacter) {
    variable.type = TypeOfCharacter(behind_name.front().text.front());
    behind_name = behind_name.subspan(1);
  }
  variable.is_array = !behind_name.empty() && behind_name.front().IsOperator(u'(');
  const auto as = std::ranges::find_if(behind_name, [](const Token& t) { return t.IsWord(u"as"); });
  auto type = behind_name.subspan(static_cast<std::size_t>(as - behind_name.begin()));
  if (!type.empty()) type = type.subspan(1);
  if (!type.empty() && type.front().IsWord(u"new")) type = type.subspan(1);
  if (type.empty() || type.front().kind != TokenKind::kName) return variable;
  const bool is_qualified = type.size() > 1 && type[1].IsOperator(u'.');
  variable.type = is_qualified ? std::u16string_view() : type.front().text;
  return variable;
}

}  // namespace declarium::vb
