#include "check/code.h"

#include <algorithm>
#include <optional>
#include <span>

#include "text/text.h"

namespace declarium::check {
namespace {

using vb::Token;
using vb::TokenKind;

std::u16string_view WithoutBrackets(std::u16string_view name) {
  const bool has_brackets = name.size() > 2 && name.front() == u'[' && name.back() == u']';
  return has_brackets ? name.substr(1, name.size() - 2) : name;
}

bool BeginsProcedure(std::span<const Token> tokens) {
  for (const auto& token : tokens) {
    if (token.IsWord(u"sub") || token.IsWord(u"function") || token.IsWord(u"property")) return true;
    const bool is_prefix = token.IsWord(u"public") || token.IsWord(u"private") ||
                           token.IsWord(u"friend") || token.IsWord(u"static");
    if (!is_prefix) return false;
  }
  return false;
}

class CodeReader {
 public:
  CodeReader(std::u16string_view text, NameCounts& counts) : reader_(text), counts_(counts) {}

  Code Read() {
    while (reader_.Next(statement_)) {
      if (statement_.tokens.empty()) continue;
      for (const auto& token : statement_.tokens) {
        if (token.kind == TokenKind::kName) counts_.Count(WithoutBrackets(token.text));
      }
      if (!TakeDirective() && open_ == 0) ReadStatement();
    }
    return std::move(code_);
  }

 private:
  using Types = std::unordered_map<std::u16string, std::u16string_view>;

  [[nodiscard]] const Token& At(std::size_t position) const {
    static const Token none;
    return position < statement_.tokens.size() ? statement_.tokens[position] : none;
  }

  bool TakeDirective() {
    if (!At(0).IsOperator(u'#')) return false;
    if (At(1).IsWord(u"if")) ++open_;
    if ((At(1).IsWord(u"end") || At(1).IsWord(u"endif")) && open_ > 0) --open_;
    return true;
  }

  void ReadStatement() {
    if (BeginsProcedure(statement_.tokens)) {
      locals_.clear();
      in_procedure_ = true;
    }
    const bool has_variables = in_procedure_ || DeclaresVariables();
    for (std::size_t i = 1; i < statement_.tokens.size(); ++i) {
      const auto& token = statement_.tokens[i];
      if (has_variables && token.IsWord(u"as")) ReadVariable(i);
      if (in_procedure_ && token.IsOperator(u'=')) ReadAssignment(i);
    }
  }

  // Outside procedures: parameters of a Declare and members of a record are no variables.
  [[nodiscard]] bool DeclaresVariables() const {
    const bool is_scope =
        At(0).IsWord(u"public") || At(0).IsWord(u"private") || At(0).IsWord(u"global");
    return At(0).IsWord(u"dim") || (is_scope && !At(1).IsWord(u"declare") &&
                                    !At(1).IsWord(u"declarewide") && !At(1).IsWord(u"event"));
  }

  // "name As [New] type" around the word at `as`. A name of several types has none, and an array
  // none that an assignment to it would show.
  void ReadVariable(std::size_t as) {
    auto type = as + 1;
    if (At(type).IsWord(u"new")) ++type;
    const auto& name = At(as - 1);
    if (name.kind != TokenKind::kName || At(type).kind != TokenKind::kName) return;
    auto& types = in_procedure_ ? locals_ : globals_;
    const bool is_qualified = At(type + 1).IsOperator(u'.');
    const auto [known, is_new] =
        types.try_emplace(LowerCase(name.text), is_qualified ? u"" : At(type).text);
    if (!is_new && !EqualIgnoringCase(known->second, At(type).text)) known->second = {};
  }

  [[nodiscard]] std::u16string_view TypeOf(std::u16string_view variable) const {
    const auto name = LowerCase(variable);
    if (const auto local = locals_.find(name); local != locals_.end()) return local->second;
    const auto global = globals_.find(name);
    return global == globals_.end() ? std::u16string_view() : global->second;
  }

  // Whether a statement may begin at the token.
  [[nodiscard]] bool MayBegin(std::size_t position) const {
    return position == 0 || At(position - 1).IsWord(u"then") || At(position - 1).IsWord(u"else") ||
           At(position - 1).IsWord(u"let");
  }

  void ReadAssignment(std::size_t equals) {
    const auto& target = At(equals - 1);
    if (target.kind != TokenKind::kName) return;
    if (equals >= 2 && At(equals - 2).IsOperator(u'.')) return ReadSize(equals);
    const auto& function = At(equals + 1);
    const bool is_address =
        function.IsWord(u"varptr") || function.IsWord(u"strptr") || function.IsWord(u"objptr");
    if (!is_address || !At(equals + 2).IsOperator(u'(') || !MayBegin(equals - 1)) return;
    if (!EqualIgnoringCase(TypeOf(target.text), u"Long")) return;
    code_.addresses.push_back({target.place, target.text, function.text});
  }

  void ReadSize(std::size_t equals) {
    const bool has_variable = equals >= 3 && At(equals - 3).kind == TokenKind::kName;
    if (!MayBegin(equals - (has_variable ? 3 : 2))) return;
    const auto& value = At(equals + 1);
    const auto& member = At(equals - 1).text;
    const bool is_last_number = value.kind == TokenKind::kNumber && !HasMore(equals + 2);
    if (has_variable && is_last_number) return AddSize(value, At(equals - 3).text, member);
    const auto& measured = At(equals + 3);
    const bool is_len = value.IsWord(u"len") && At(equals + 2).IsOperator(u'(') &&
                        measured.kind == TokenKind::kName && At(equals + 4).IsOperator(u')') &&
                        !HasMore(equals + 5);
    const bool is_own = !has_variable || EqualIgnoringCase(At(equals - 3).text, measured.text);
    if (is_len && is_own) AddSize(value, measured.text, member);
  }

  [[nodiscard]] bool HasMore(std::size_t position) const {
    return At(position).kind != TokenKind::kEnd && !At(position).IsWord(u"else");
  }

  void AddSize(const Token& value, std::u16string_view variable, std::u16string_view member) {
    const auto type = TypeOf(variable);
    if (!type.empty()) code_.sizes.push_back({value.place, type, member, value.text});
  }

  vb::StatementReader reader_;
  vb::Statement statement_;
  NameCounts& counts_;
  std::size_t open_ = 0;  // #If
  bool in_procedure_ = false;
  Types globals_;
  Types locals_;
  Code code_;
};

}  // namespace

void NameCounts::Add(std::u16string_view name) {
  counts_.try_emplace(LowerCase(name));
}

void NameCounts::Count(std::u16string_view name) {
  if (counts_.empty()) return;
  LowerCaseInto(name, lowered_);
  const auto found = counts_.find(std::u16string_view(lowered_));
  if (found == counts_.end()) return;
  auto& [all, by_module] = found->second;
  ++all;
  if (by_module.empty() || by_module.back().first != module_) by_module.emplace_back(module_, 0);
  ++by_module.back().second;
}

std::size_t NameCounts::InAll(std::u16string_view name) const {
  const auto found = counts_.find(LowerCase(name));
  return found == counts_.end() ? 0 : found->second.all;
}

std::size_t NameCounts::InModule(std::u16string_view name, std::size_t module) const {
  const auto found = counts_.find(LowerCase(name));
  if (found == counts_.end()) return 0;
  const auto& by_module = found->second.by_module;
  const auto at =
      std::ranges::lower_bound(by_module, module, {}, &std::pair<std::size_t, std::size_t>::first);
  return at == by_module.end() || at->first != module ? 0 : at->second;
}

Code ReadCode(std::u16string_view text, NameCounts& counts) {
  return CodeReader(text, counts).Read();
}

}  // namespace declarium::check
