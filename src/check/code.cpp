#include "check/code.h"

#include <algorithm>
#include <optional>
#include <span>

#include "check/context.h"
#include "text/text.h"

namespace declarium::check {
namespace {

using vb::Token;
using vb::TokenKind;

constexpr auto kModule = &std::pair<std::size_t, std::ptrdiff_t>::first;

bool IsAddressFunction(std::u16string_view name) {
  if (name.size() != 6 || LowerCase(name.back()) != u'r') return false;
  return EqualIgnoringCase(name, u"VarPtr") || EqualIgnoringCase(name, u"StrPtr") ||
         EqualIgnoringCase(name, u"ObjPtr");
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
  explicit CodeReader(std::u16string_view text) : reader_(text) {}

  Code Read() {
    while (reader_.Next(statement_)) {
      if (!statement_.tokens.empty() && !TakeDirective() && open_ == 0) ReadStatement();
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
    if (!IsAddressFunction(function.text) || !At(equals + 2).IsOperator(u'(') ||
        !MayBegin(equals - 1))
      return;
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
  std::size_t open_ = 0;  // #If
  bool in_procedure_ = false;
  Types globals_;
  Types locals_;
  Code code_;
};

}  // namespace

std::size_t NameCounts::FilterBit(std::u16string_view name) {
  if (name.empty()) return 0;
  // The same for upper and lower case; other alphabets all look alike.
  const auto fold = [](char16_t unit) -> std::size_t { return unit < 0x80 ? unit | 0x20 : 0; };
  auto bit = name.size();
  for (const auto position : {std::size_t{0}, name.size() / 3, name.size() / 2, name.size() - 1})
    bit = bit * 131 + fold(name[position]);
  return bit % kFilterBits;
}

void NameCounts::Declare(std::u16string_view name, std::size_t module) {
  filter_[FilterBit(name)] = true;
  auto& [all, by_module] = counts_[LowerCase(name)];
  --all;
  if (by_module.empty() || by_module.back().first != module) by_module.emplace_back(module, 0);
  --by_module.back().second;
}

void NameCounts::Count(std::u16string_view name) {
  if (!filter_[FilterBit(name)]) return;
  LowerCaseInto(name, lowered_);
  const auto found = counts_.find(std::u16string_view(lowered_));
  if (found == counts_.end()) return;
  auto& [all, by_module] = found->second;
  ++all;
  const auto here = std::ranges::lower_bound(by_module, module_, {}, kModule);
  if (here != by_module.end() && here->first == module_) ++here->second;
}

bool NameCounts::IsUsed(std::u16string_view name) const {
  const auto found = counts_.find(LowerCase(name));
  return found != counts_.end() && found->second.all > 0;
}

bool NameCounts::IsUsedIn(std::size_t module, std::u16string_view name) const {
  const auto found = counts_.find(LowerCase(name));
  if (found == counts_.end()) return false;
  const auto& by_module = found->second.by_module;
  const auto here = std::ranges::lower_bound(by_module, module, {}, kModule);
  return here != by_module.end() && here->first == module && here->second > 0;
}

bool CountNames(std::u16string_view text, NameCounts& counts) {
  bool may_have_code = false;
  std::size_t position = 0;
  const auto pass_to = [&](std::u16string_view ends) {
    position = std::min(text.find_first_of(ends, position + 1), text.size());
  };
  while (position < text.size()) {
    const char16_t unit = text[position];
    if (vb::StartsName(unit)) {
      const auto start = position;
      while (position < text.size() && vb::ContinuesName(text[position])) ++position;
      const auto name = text.substr(start, position - start);
      counts.Count(name);
      const bool is_member = start > 0 && text[start - 1] == u'.';
      may_have_code = may_have_code || IsAddressFunction(name) || (is_member && IsSizeMember(name));
      continue;
    }
    if (unit == u'\'') pass_to(u"\r\n");
    if (unit == u'"') pass_to(u"\"\r\n");
    ++position;
  }
  return may_have_code;
}

Code ReadCode(std::u16string_view text) {
  return CodeReader(text).Read();
}

}  // namespace declarium::check
