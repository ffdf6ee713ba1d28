#include "target/long_variables.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <unordered_map>

#include "text/text.h"
#include "vb/statement.h"

namespace declarium {
namespace {

using vb::Token;
using vb::TokenKind;

using Tokens = std::span<const Token>;

bool IsAnyWord(const Token& token, std::span<const std::u16string_view> words) {
  return std::ranges::any_of(words, [&](const auto word) { return token.IsWord(word); });
}

// The tokens without the words in front of a declaration or procedure.
Tokens WithoutScope(Tokens tokens) {
  static constexpr std::u16string_view kScopes[] = {u"private", u"public", u"friend",    u"global",
                                                    u"static",  u"dim",    u"withevents"};
  while (!tokens.empty() && IsAnyWord(tokens.front(), kScopes)) tokens = tokens.subspan(1);
  return tokens;
}

// Whether names declared in a scope are Longs.
class Names {
 public:
  void Clear() { are_long_.clear(); }
  void Add(std::u16string_view name, bool is_long) { are_long_[LowerCase(name)] = is_long; }
  [[nodiscard]] const bool* Find(const std::u16string& lowered) const {
    const auto found = are_long_.find(lowered);
    return found == are_long_.end() ? nullptr : &found->second;
  }

 private:
  std::unordered_map<std::u16string, bool> are_long_;
};

class Reader {
 public:
  Reader(std::u16string_view text, const std::set<std::u16string>& functions)
      : statements_(text), functions_(functions) {}

  std::vector<AddressInLong> Read() {
    vb::Statement statement;
    while (statements_.Next(statement))
      if (!statement.tokens.empty()) Take(statement);
    return std::move(found_);
  }

 private:
  void Take(const vb::Statement& statement) {
    const Tokens tokens = statement.tokens;
    const auto rest = WithoutScope(tokens);
    if (rest.empty()) return;
    if (IsProcedure(rest)) {
      TakeProcedure(rest);
    } else if (tokens.front().IsWord(u"end") && IsProcedure(tokens.subspan(1))) {
      is_in_procedure_ = false;
    } else if (rest.front().IsWord(u"declare")) {
      return;
    } else if (rest.size() < tokens.size()) {
      TakeList(rest, is_in_procedure_ ? locals_ : globals_);
    } else {
      TakeCode(statement);
    }
  }

  static bool IsProcedure(Tokens tokens) {
    static constexpr std::u16string_view kKinds[] = {u"sub", u"function", u"property"};
    return !tokens.empty() && IsAnyWord(tokens.front(), kKinds);
  }

  // "Function F(ByVal a As Long) As Long": the parameters and the result.
  void TakeProcedure(Tokens tokens) {
    is_in_procedure_ = true;
    locals_.Clear();
    const auto open =
        std::ranges::find_if(tokens, [](const Token& t) { return t.IsOperator(u'('); });
    if (tokens.size() > 1 && tokens.front().IsWord(u"function")) {
      const bool has_long_result =
          tokens[tokens.size() - 2].IsWord(u"as") && tokens.back().IsWord(u"long");
      locals_.Add(tokens[1].text, has_long_result || (tokens.size() > 2 && tokens[2].text == u"&"));
    }
    if (open == tokens.end()) return;
    TakeList(tokens.subspan(static_cast<std::size_t>(open - tokens.begin()) + 1), locals_);
  }

  // "a As Long, b&, c(5) As Long": arrays are left out. Ends at a closing bracket.
  static void TakeList(Tokens tokens, Names& names) {
    static constexpr std::u16string_view kPassing[] = {u"byval", u"byref", u"optional",
                                                       u"paramarray"};
    while (!tokens.empty()) {
      while (!tokens.empty() && IsAnyWord(tokens.front(), kPassing)) tokens = tokens.subspan(1);
      const auto end = EndOfItem(tokens);
      const auto item = tokens.first(end);
      if (item.size() > 1 && item.front().kind == TokenKind::kName && !item[1].IsOperator(u'('))
        names.Add(item.front().text, IsLong(item));
      if (end == tokens.size() || tokens[end].IsOperator(u')')) return;
      tokens = tokens.subspan(end + 1);
    }
  }

  static std::size_t EndOfItem(Tokens tokens) {
    int depth = 0;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
      if (tokens[i].IsOperator(u'(')) ++depth;
      if (depth == 0 && (tokens[i].IsOperator(u',') || tokens[i].IsOperator(u')'))) return i;
      if (tokens[i].IsOperator(u')')) --depth;
    }
    return tokens.size();
  }

  static bool IsLong(Tokens item) {
    return item[1].text == u"&" ||
           (item.size() > 2 && item[1].IsWord(u"as") && item[2].IsWord(u"long"));
  }

  // "x = F(...)" at the beginning, behind Then or behind Else.
  void TakeCode(const vb::Statement& statement) {
    const auto& tokens = statement.tokens;
    for (std::size_t i = 0; i + 2 < tokens.size(); ++i) {
      const bool begins = i == 0 || tokens[i - 1].IsWord(u"then") ||
                          tokens[i - 1].IsWord(u"else") || tokens[i - 1].IsWord(u"let");
      if (!begins || tokens[i].kind != TokenKind::kName || !tokens[i + 1].IsOperator(u'='))
        continue;
      const auto& function = tokens[i + 2];
      if (function.kind == TokenKind::kName && IsLongVariable(tokens[i].text) &&
          GivesAddress(function.text))
        found_.push_back({tokens[i].place, tokens[i].text, function.text, statement.Text()});
    }
  }

  [[nodiscard]] bool IsLongVariable(std::u16string_view name) const {
    const auto lowered = LowerCase(name);
    const bool* local = is_in_procedure_ ? locals_.Find(lowered) : nullptr;
    const bool* known = local != nullptr ? local : globals_.Find(lowered);
    return known != nullptr && *known;
  }

  [[nodiscard]] bool GivesAddress(std::u16string_view function) const {
    static constexpr std::u16string_view kOwn[] = {u"varptr", u"strptr", u"objptr", u"addressof"};
    const auto lowered = LowerCase(function);
    return std::ranges::find(kOwn, lowered) != std::end(kOwn) || functions_.contains(lowered);
  }

  vb::StatementReader statements_;
  const std::set<std::u16string>& functions_;
  Names globals_;
  Names locals_;
  bool is_in_procedure_ = false;
  std::vector<AddressInLong> found_;
};

}  // namespace

std::vector<AddressInLong> AddressesInLongs(std::u16string_view text,
                                            const std::set<std::u16string>& functions) {
  return Reader(text, functions).Read();
}

}  // namespace declarium
