#include "vb/code.h"

#include <algorithm>
#include <optional>
#include <span>

#include "text/text.h"
#include "vb/statement.h"

namespace declarium::vb {
namespace {

using Tokens = std::span<const Token>;

template <std::size_t kCount>
bool IsAnyWord(const Token& token, const std::u16string_view (&words)[kCount]) {
  return std::ranges::any_of(words, [&](const auto word) { return token.IsWord(word); });
}

// The tokens without the words in front of a declaration or procedure.
Tokens WithoutScope(Tokens tokens) {
  static constexpr std::u16string_view kScopes[] = {u"private", u"public", u"friend",
                                                    u"global",  u"static", u"dim"};
  while (!tokens.empty() && IsAnyWord(tokens.front(), kScopes)) tokens = tokens.subspan(1);
  return tokens;
}

bool IsProcedure(Tokens tokens) {
  static constexpr std::u16string_view kKinds[] = {u"sub", u"function", u"property"};
  return !tokens.empty() && IsAnyWord(tokens.front(), kKinds);
}

// Whether what stands behind a scope is no variable.
bool IsOtherDeclaration(const Token& word) {
  static constexpr std::u16string_view kWords[] = {u"declare", u"declarewide", u"const",
                                                   u"type",    u"enum",        u"event"};
  return IsAnyWord(word, kWords);
}

constexpr std::u16string_view kAddressFunctions[] = {u"VarPtr", u"StrPtr", u"ObjPtr", u"AddressOf"};

bool IsAddressFunction(std::u16string_view name) {
  const bool may_be = name.size() == 6 || name.size() == 9;
  return may_be && std::ranges::any_of(kAddressFunctions, [name](const auto each) {
           return EqualIgnoringCase(name, each);
         });
}

bool IsComparison(const Token& token) {
  static constexpr std::u16string_view kSigns[] = {u"=", u"<", u">", u"<>", u"<=", u">="};
  static constexpr std::u16string_view kWords[] = {u"is", u"like"};
  return IsAnyWord(token, kWords) || (token.kind == TokenKind::kOperator &&
                                      std::ranges::find(kSigns, token.text) != std::end(kSigns));
}

// A variable with the members and elements behind it.
struct Path {
  std::size_t begin = 0;  // its tokens
  std::size_t end = 0;
  Variable value;
  // What the last member is one of, and its name.
  std::u16string_view record;
  std::u16string_view member;
};

// The statements of the branches that are read.
class BranchReader {
 public:
  explicit BranchReader(const CodeSource& source) : source_(source), reader_(source.text) {}

  // Goes on at the beginning of a line, behind what was read.
  void GoTo(const Place& place) { reader_ = StatementReader(source_.text, place); }

  // Reads the next one with tokens over `statement`; false behind the line `last`.
  bool Next(Statement& statement, std::uint32_t last) {
    while (reader_.Next(statement)) {
      if (statement.tokens.empty()) continue;
      const auto& first = statement.tokens.front();
      if (first.place.line > last) return false;
      PassBranchLines(first.place.line);
      if (!first.IsOperator(u'#') && source_.is_read[condition_]) return true;
    }
    return false;
  }

  // That of the statement read last.
  [[nodiscard]] std::uint32_t Condition() const { return condition_; }

 private:
  void PassBranchLines(std::uint32_t line) {
    const auto& lines = source_.parsed.branch_lines;
    for (; passed_ < lines.size() && lines[passed_].line < line; ++passed_)
      condition_ = lines[passed_].condition;
  }

  const CodeSource& source_;
  StatementReader reader_;
  std::size_t passed_ = 0;  // lines of #If
  std::uint32_t condition_ = 0;
};

// Behind what a module declares: its first procedure, or the end.
std::uint32_t LastLineOfHead(const Module& module) {
  return module.procedures.empty() ? module.lines : module.procedures.front().place.line - 1;
}

class CodeReader {
 public:
  CodeReader(const CodeSource& source, const Surroundings& surroundings, std::size_t module)
      : reader_(source), surroundings_(surroundings), module_(module) {}

  Code Read(const Module& parsed, std::span<const std::size_t> places) {
    ReadLines(LastLineOfHead(parsed));
    // Any procedure may use them.
    const bool has_addresses = !globals_.NamesOfType(u"LongPtr").empty();
    for (std::size_t i = 0; i < parsed.procedures.size(); ++i) {
      const auto& procedure = parsed.procedures[i];
      const bool is_last = i + 1 == parsed.procedures.size();
      const auto end = is_last ? std::string_view::npos : parsed.procedures[i + 1].place.offset;
      const auto first = std::ranges::lower_bound(places, procedure.place.offset);
      if (!has_addresses && (first == places.end() || *first >= end)) continue;
      reader_.GoTo(procedure.place);
      ReadLines(procedure.end_line);
    }
    return std::move(code_);
  }

 private:
  void ReadLines(std::uint32_t last) {
    while (reader_.Next(statement_, last)) Take();
  }

  [[nodiscard]] const Token& At(std::size_t position) const {
    static const Token none;
    return position < statement_.tokens.size() ? statement_.tokens[position] : none;
  }

  void Take() {
    const Tokens tokens = statement_.tokens;
    const auto rest = WithoutScope(tokens);
    if (IsProcedure(rest)) return TakeProcedure(rest);
    if (At(0).IsWord(u"end")) return TakeEnd();
    if (rest.size() < tokens.size()) {
      if (!rest.empty() && !IsOtherDeclaration(rest.front()))
        (in_procedure_ ? locals_ : globals_).AddList(rest);
    } else if (in_procedure_) {
      TakeCode();
    }
  }

  void TakeEnd() {
    if (At(1).IsWord(u"with") && !with_.empty()) with_.pop_back();
    if (IsProcedure(Tokens(statement_.tokens).subspan(1))) in_procedure_ = false;
  }

  // "Function F(ByVal a As Long) As Long", "Property Get P&()": the parameters and the result.
  void TakeProcedure(Tokens tokens) {
    in_procedure_ = true;
    locals_.Clear();
    with_.clear();
    const bool is_get = tokens.size() > 2 && tokens[1].IsWord(u"get");
    const bool has_result = tokens.front().IsWord(u"function") || is_get;
    const auto name = tokens.subspan(std::min<std::size_t>(tokens.size(), is_get ? 2 : 1));
    const auto open =
        std::ranges::find_if(name, [](const Token& token) { return token.IsOperator(u'('); });
    const auto list = name.subspan(static_cast<std::size_t>(open - name.begin()));
    if (!list.empty()) locals_.AddList(list.subspan(1));
    if (has_result && !name.empty())
      locals_.Add(name.front().text, ResultOf(name.subspan(1), list));
  }

  // `list` begins with the bracket of the parameters; it is empty without one.
  static Variable ResultOf(Tokens behind_name, Tokens list) {
    auto result = VariableOf(behind_name.first(behind_name.size() - list.size()));
    const auto behind_list = list.subspan(Behind(list, 0));
    if (!behind_list.empty()) result = VariableOf(behind_list);
    // "As Long()"
    result.is_array = !behind_list.empty() && behind_list.back().IsOperator(u')');
    return result;
  }

  // Behind the bracket that closes the one at `open`; the end without one.
  [[nodiscard]] static std::size_t Behind(Tokens tokens, std::size_t open) {
    std::size_t depth = 0;
    for (auto i = open; i < tokens.size(); ++i) {
      if (tokens[i].IsOperator(u'(')) ++depth;
      if (tokens[i].IsOperator(u')') && --depth == 0) return i + 1;
    }
    return tokens.size();
  }

  [[nodiscard]] std::size_t Behind(std::size_t open) const {
    return Behind(statement_.tokens, open);
  }

  [[nodiscard]] Variable Find(std::u16string_view name) const {
    const auto lowered = LowerCase(name);
    for (const auto* const scope : {&locals_, &globals_, &surroundings_.PublicVariables()}) {
      if (const auto* const found = scope->Find(lowered)) return *found;
    }
    return {};
  }

  // The variable at the token; nothing for anything else.
  [[nodiscard]] std::optional<Path> PathAt(std::size_t position) const {
    Path path{position, position, {}, {}, {}};
    if (At(position).IsWord(u"me") && At(position + 1).IsOperator(u'.')) position += 2;
    if (At(position).kind == TokenKind::kName) {
      path.value = Find(At(position).text);
      position = BehindIndex(position + 1, path.value);
    } else if (At(position).IsOperator(u'.') && !with_.empty()) {
      path.value.type = with_.back();
    } else {
      return std::nullopt;
    }
    while (At(position).IsOperator(u'.') && At(position + 1).kind == TokenKind::kName) {
      path.record = path.value.is_array ? std::u16string_view() : path.value.type;
      path.member = At(position + 1).text;
      path.value = {surroundings_.TypeOfMember(path.record, path.member, module_), false};
      auto element = path.value;
      element.is_array = At(position + 2).IsOperator(u'(');
      position = BehindIndex(position + 2, element);
    }
    path.end = position;
    return path;
  }

  // Behind the type character and the index; the variable becomes the element.
  [[nodiscard]] std::size_t BehindIndex(std::size_t position, Variable& variable) const {
    if (At(position).kind == TokenKind::kTypeCharacter) ++position;
    if (!At(position).IsOperator(u'(')) return position;
    if (!variable.is_array) variable.type = {};
    variable.is_array = false;
    return Behind(position);
  }

  [[nodiscard]] bool IsOf(const Path& path, std::u16string_view type) const {
    return !path.value.is_array && EqualIgnoringCase(path.value.type, type);
  }

  [[nodiscard]] std::u16string_view TextOf(const Path& path) const {
    const auto& first = At(path.begin);
    return {first.text.data(), At(path.end - 1).End() - first.place.offset};
  }

  void TakeCode() {
    std::size_t start = At(0).kind == TokenKind::kNumber ? 1 : 0;  // behind a line number
    if (At(start).IsWord(u"with")) {
      const auto path = PathAt(start + 1);
      with_.push_back(path && !path->value.is_array ? path->value.type : std::u16string_view());
    }
    for (auto i = start; i < statement_.tokens.size(); ++i) {
      const bool begins = i == start || At(i - 1).IsWord(u"then") || At(i - 1).IsWord(u"else") ||
                          At(i - 1).IsWord(u"let");
      if (begins) TakeAssignment(i);
      if (At(i).kind != TokenKind::kName) continue;
      TakeCall(i, begins);
      TakeLen(i);
    }
  }

  // "x = F(...)", "r.Member = F(...)".
  void TakeAssignment(std::size_t position) {
    const auto target = PathAt(position);
    if (!target || !At(target->end).IsOperator(u'=')) return;
    const auto value = target->end + 1;
    TakeSize(*target, value);
    if (!IsOf(*target, u"Long")) return;
    if (const auto source = AddressIn(value)) Add(AddressInLong::How::kAssigned, *target, *source);
  }

  void Add(AddressInLong::How how, const Path& variable, std::u16string_view source) {
    code_.addresses.push_back(
        {how, At(variable.begin).place, TextOf(variable), source, statement_.Text()});
  }

  [[nodiscard]] std::size_t EndOfValue(std::size_t value) const {
    while (value < statement_.tokens.size() && !At(value).IsWord(u"else")) ++value;
    return value;
  }

  // What gives an address in the value: a procedure outside inner brackets, or a LongPtr that
  // stands alone. A comparison gives none.
  [[nodiscard]] std::optional<std::u16string_view> AddressIn(std::size_t value) const {
    const auto end = EndOfValue(value);
    const auto path = PathAt(value);
    if (path && path->end == end && IsOf(*path, u"LongPtr")) return TextOf(*path);
    std::optional<std::u16string_view> source;
    for (auto i = value; i < end; ++i) {
      if (At(i).IsOperator(u'(')) {
        i = Behind(i) - 1;
      } else if (IsComparison(At(i))) {
        return std::nullopt;
      } else if (!source && At(i).kind == TokenKind::kName && GivesAddress(i)) {
        source = At(i).text;
      }
    }
    return source;
  }

  [[nodiscard]] bool GivesAddress(std::size_t position) const {
    if (IsAddressFunction(At(position).text)) return true;
    const auto* const procedure = ProcedureAt(position);
    return procedure != nullptr && procedure->returns_address;
  }

  // A local variable hides a procedure of its name.
  [[nodiscard]] const AddressPassing* ProcedureAt(std::size_t position) const {
    const auto lowered = LowerCase(At(position).text);
    const auto* const procedure = surroundings_.FindProcedure(lowered, module_);
    return procedure == nullptr || locals_.Find(lowered) != nullptr ? nullptr : procedure;
  }

  // "F a, b" where a statement begins, "Call F(a, b)", and "F(a, b)" in an expression.
  void TakeCall(std::size_t position, bool begins) {
    const auto* const procedure = ProcedureAt(position);
    if (procedure == nullptr || !procedure->IsAny()) return;
    if (begins) return TakeArguments(*procedure, position, position + 1, EndOfValue(position));
    if (At(position + 1).IsOperator(u'('))
      TakeArguments(*procedure, position, position + 2, Behind(position + 1) - 1);
  }

  void TakeArguments(const AddressPassing& procedure, std::size_t name, std::size_t begin,
                     std::size_t end) {
    std::size_t argument = 0;
    for (auto i = begin; i < end && argument < procedure.by_reference.size(); ++argument) {
      auto comma = i;
      while (comma < end && !At(comma).IsOperator(u','))
        comma = At(comma).IsOperator(u'(') ? Behind(comma) : comma + 1;
      const auto path = PathAt(i);
      if (procedure.by_reference[argument] && path && path->end == comma && IsOf(*path, u"Long"))
        Add(AddressInLong::How::kByReference, *path, At(name).text);
      i = comma + 1;
    }
  }

  // A member of a record gets a size.
  void TakeSize(const Path& target, std::size_t value) {
    if (target.member.empty()) return;
    const auto end = EndOfValue(value);
    if (At(value).kind == TokenKind::kNumber && end == value + 1) {
      AddSize(value, target.record, target.member);
    } else if (const auto measured = MeasuredAt(value);
               measured && measured->end + 1 == end && !measured->value.type.empty() &&
               (target.record.empty() || EqualIgnoringCase(target.record, measured->value.type))) {
      AddSize(value, measured->value.type, target.member);
    }
  }

  // What "Len(x)" measures.
  [[nodiscard]] std::optional<Path> MeasuredAt(std::size_t position) const {
    const bool is_len = At(position).IsWord(u"len") || At(position).IsWord(u"lenb");
    if (!is_len || !At(position + 1).IsOperator(u'(')) return std::nullopt;
    auto path = PathAt(position + 2);
    if (path && !At(path->end).IsOperator(u')')) path.reset();
    return path;
  }

  void TakeLen(std::size_t position) {
    const auto measured = MeasuredAt(position);
    const bool is_taken = !code_.sizes.empty() && code_.sizes.back().place == At(position).place;
    if (measured && !is_taken) AddSize(position, measured->value.type, {});
  }

  void AddSize(std::size_t value, std::u16string_view record, std::u16string_view member) {
    if (record.empty()) return;
    code_.sizes.push_back(
        {At(value).place, record, member, At(value).text, statement_.Text(), reader_.Condition()});
  }

  BranchReader reader_;
  const Surroundings& surroundings_;
  std::size_t module_;
  Statement statement_;
  bool in_procedure_ = false;
  Variables globals_;
  Variables locals_;
  std::vector<std::u16string_view> with_;  // the types of open With blocks
  Code code_;
};

}  // namespace

Code ReadCode(const CodeSource& source, const Surroundings& surroundings, std::size_t module,
              std::span<const std::size_t> places) {
  return CodeReader(source, surroundings, module).Read(source.parsed, places);
}

void AddPublicVariables(const CodeSource& source, Variables& variables) {
  BranchReader reader(source);
  Statement statement;
  while (reader.Next(statement, LastLineOfHead(source.parsed))) {
    const Tokens tokens = statement.tokens;
    const auto rest = WithoutScope(tokens);
    const bool is_public = tokens.front().IsWord(u"public") || tokens.front().IsWord(u"global");
    if (is_public && !rest.empty() && !IsOtherDeclaration(rest.front())) variables.AddList(rest);
  }
}

std::span<const std::u16string_view> AddressFunctions() {
  return kAddressFunctions;
}

}  // namespace declarium::vb
