#include "vb/name_use.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

#include "text/text.h"
#include "vb/name.h"
#include "vb/statement.h"

namespace declarium::vb {
namespace {

// Which names a statement declares.
enum class Declares : unsigned char {
  kNothing,
  kVariables,   // Dim, Const and their like: those in front of brackets, types and values
  kParameters,  // Sub, Declare, Event: their own name, and those in the brackets
  kMember,      // a line of a Type or Enum: its first
};

bool IsAnyOf(const Token& token, std::initializer_list<std::u16string_view> words) {
  return token.kind == TokenKind::kName &&
         std::ranges::any_of(words, [&](auto word) { return token.IsWord(word); });
}

bool IsScopeWord(const Token& token) {
  return IsAnyOf(token, {u"public", u"private", u"friend", u"global", u"static"});
}

bool IsProcedureWord(const Token& token) {
  return IsAnyOf(token, {u"sub", u"function", u"property"});
}

// Words that may stand in front of a declared name.
bool PrecedesName(const Token& token) {
  return IsAnyOf(token, {u"withevents", u"optional", u"byval", u"byref", u"paramarray", u"preserve",
                         u"shared"});
}

class NameUseReader {
 public:
  NameUseReader(std::u16string_view text, const Module& module)
      : text_(text), module_(module), reader_(text) {}

  std::vector<NameUse> Read() {
    while (reader_.Next(statement_)) {
      if (statement_.tokens.empty() || At(0).place.line <= module_.header_end) continue;
      ReadStatement();
    }
    EndProcedure();
    return std::move(uses_);
  }

 private:
  [[nodiscard]] const Token& At(std::size_t position) const {
    static const Token none;
    return position < statement_.tokens.size() ? statement_.tokens[position] : none;
  }

  // The position behind the name at `position` and its type character.
  [[nodiscard]] std::size_t Behind(std::size_t position) const {
    return position + (At(position + 1).kind == TokenKind::kTypeCharacter ? 2 : 1);
  }

  void ReadStatement() {
    // #If and #Const speak of constants of their own.
    if (At(0).IsOperator(u'#') || IsLabel()) return;
    FindCondition();
    std::size_t start = At(0).kind == TokenKind::kNumber ? 1 : 0;
    const auto first = start;
    while (IsScopeWord(At(start))) ++start;
    const auto& word = At(start);
    if (in_block_) return ReadMember(start);
    if (word.IsWord(u"end") && IsProcedureWord(At(start + 1))) return EndProcedure();
    if (IsAnyOf(word, {u"attribute", u"option"}) && !in_procedure_) return;
    if (IsProcedureWord(word) && At(start + 1).kind == TokenKind::kName)
      return BeginProcedure(start);
    if (word.IsWord(u"const")) return Walk(start + 1, Declares::kVariables);
    if (word.IsWord(u"dim")) return Walk(start + 1, Declares::kVariables);
    if (IsAnyOf(word, {u"declare", u"declarewide"}) && !in_procedure_) return ReadDeclare(start);
    if (word.IsWord(u"event") && !in_procedure_) return Walk(start + 2, Declares::kParameters);
    if (BeginsBlock(start)) {
      in_block_ = true;
    } else {
      // "Public A As Long", and "Static b" in a procedure.
      Walk(start, start > first ? Declares::kVariables : Declares::kNothing);
    }
  }

  [[nodiscard]] bool BeginsBlock(std::size_t start) const {
    return !in_procedure_ && IsAnyOf(At(start), {u"type", u"enum"}) &&
           At(start + 1).kind == TokenKind::kName && At(start + 2).kind == TokenKind::kEnd;
  }

  void ReadMember(std::size_t start) {
    if (At(start).IsWord(u"end") && IsAnyOf(At(start + 1), {u"type", u"enum"})) {
      in_block_ = false;
    } else if (IsProcedureWord(At(start)) && At(start + 1).kind == TokenKind::kName) {
      // The end is missing: a member is not called so with a name behind it.
      in_block_ = false;
      BeginProcedure(start);
    } else {
      Walk(0, Declares::kMember);
    }
  }

  void BeginProcedure(std::size_t start) {
    EndProcedure();
    const auto& place = At(0).place;
    while (next_procedure_ < module_.procedures.size() &&
           module_.procedures[next_procedure_].place.offset < place.offset)
      ++next_procedure_;
    in_procedure_ = true;
    first_use_ = uses_.size();
    const bool is_property =
        IsAnyOf(At(start + 1), {u"get", u"let", u"set"}) && At(start + 2).kind == TokenKind::kName;
    Walk(start + (is_property ? 3 : 2), Declares::kParameters);
  }

  void EndProcedure() {
    if (!std::exchange(in_procedure_, false)) return;
    const auto begin = uses_.begin() + static_cast<std::ptrdiff_t>(first_use_);
    const auto is_local = [this](const NameUse& use) {
      const auto first = use.qualifier.substr(0, use.qualifier.find(u'.'));
      return use.kind != UseKind::kType && IsLocal(use.qualifier.empty() ? use.name : first);
    };
    if (!locals_.empty()) uses_.erase(std::remove_if(begin, uses_.end(), is_local), uses_.end());
    locals_.clear();
  }

  [[nodiscard]] bool IsLocal(std::u16string_view name) {
    LowerCaseInto(WithoutBrackets(name), lowered_);
    return locals_.contains(lowered_);
  }

  // "Declare Function Name Lib ... Alias ... (...)"
  void ReadDeclare(std::size_t start) {
    auto at = start + 1;
    while (IsAnyOf(At(at), {u"ptrsafe", u"function", u"sub"})) ++at;
    while (At(at).kind != TokenKind::kEnd && !At(at).IsOperator(u'(') && !At(at).IsWord(u"as"))
      ++at;
    Walk(at, Declares::kParameters);
  }

  // A name in front of ":" at the start of a line.
  [[nodiscard]] bool IsLabel() const {
    if (!in_procedure_ || statement_.tokens.size() != 1 || At(0).kind != TokenKind::kName)
      return false;
    const auto behind = text_.find_first_not_of(u" \t", At(0).End());
    if (behind == text_.npos || text_[behind] != u':') return false;
    const auto& place = At(0).place;
    const auto line_start = place.offset - (place.column - 1);
    const auto front = text_.substr(line_start, place.offset - line_start);
    return front.find_first_not_of(u" \t") == front.npos && !IsRefusedAsName(At(0).text);
  }

  void FindCondition() {
    const auto& lines = module_.branch_lines;
    while (next_branch_ < lines.size() && lines[next_branch_].line < At(0).place.line)
      condition_ = lines[next_branch_++].condition;
  }

  // Goes through the tokens from `start` on.
  void Walk(std::size_t start, Declares declares) {
    start_ = start;
    declares_ = declares;
    depth_ = 0;
    is_name_next_ = declares == Declares::kVariables || declares == Declares::kMember;
    // "Open f For Output As n" and "Name a As b" name no types.
    has_types_ = !IsAnyOf(At(start), {u"open", u"name"}) || declares != Declares::kNothing;
    has_type_of_ = false;
    for (auto i = start; i < statement_.tokens.size(); ++i) {
      const auto& token = At(i);
      if (token.kind == TokenKind::kOperator) {
        TakeOperator(token);
      } else if (token.kind == TokenKind::kName) {
        if (declares == Declares::kNothing && IsAnyOf(token, {u"goto", u"gosub", u"resume"}))
          return;
        TakeName(i);
      }
    }
  }

  void TakeOperator(const Token& token) {
    if (token.IsOperator(u'(')) ++depth_;
    if (token.IsOperator(u')') && depth_ > 0) --depth_;
    const bool begins =
        token.IsOperator(u',') || (token.IsOperator(u'(') && declares_ == Declares::kParameters);
    const std::size_t wanted = declares_ == Declares::kParameters ? 1 : 0;
    const bool has_more = declares_ == Declares::kVariables || declares_ == Declares::kParameters;
    if (begins && has_more && depth_ == wanted) is_name_next_ = true;
  }

  void TakeName(std::size_t i) {
    const auto& token = At(i);
    if (is_name_next_) {
      if (PrecedesName(token)) return;
      is_name_next_ = false;
      if (in_procedure_) locals_.insert(LowerCase(WithoutBrackets(token.text)));
      return;
    }
    has_type_of_ = has_type_of_ || token.IsWord(u"typeof");
    if (i > 0 && (At(i - 1).IsOperator(u'.') || At(i - 1).IsOperator(u'!'))) return TakeMember(i);
    if (At(i + 1).kind == TokenKind::kOperator && At(i + 1).text == u":=") return;
    const bool is_on_error = token.IsWord(u"error") && i > 0 && At(i - 1).IsWord(u"on");
    if (is_on_error || IsRefusedAsName(token.text)) return;
    Add(i, {}, KindAt(i));
  }

  // What stands behind the dots of "a.b" and "a.b.c"; with more in front it is a member.
  void TakeMember(std::size_t i) {
    std::size_t first = i;
    for (int dots = 0; dots < 2 && first >= 2 && At(first - 1).IsOperator(u'.') &&
                       At(first - 2).kind == TokenKind::kName;
         ++dots)
      first -= 2;
    const bool is_whole =
        first < i &&
        (first == 0 || !(At(first - 1).IsOperator(u'.') || At(first - 1).IsOperator(u'!')));
    // A blank in front of the dot belongs to With: "f .Left".
    if (!is_whole || At(i - 1).place.offset != At(i - 2).End() || At(first).IsWord(u"me")) return;
    const auto& start = At(first);
    Add(i, text_.substr(start.place.offset, At(i - 2).End() - start.place.offset),
        KindAt(i, first));
  }

  void Add(std::size_t i, std::u16string_view qualifier, UseKind kind) {
    uses_.push_back({WithoutBrackets(At(i).text), qualifier, At(i).place, kind, condition_,
                     in_procedure_ ? next_procedure_ : kNoProcedure});
  }

  // `first` is where the name with its qualifier begins.
  [[nodiscard]] UseKind KindAt(std::size_t i, std::size_t first) const {
    const auto& before = first > 0 ? At(first - 1) : At(statement_.tokens.size());
    if (HasMember(i)) return UseKind::kValue;
    const bool is_type =
        IsAnyOf(before, {u"as", u"new", u"implements"}) || (has_type_of_ && before.IsWord(u"is"));
    if (is_type && has_types_) return UseKind::kType;
    const bool is_counter = first == start_ + 1 && before.IsWord(u"for");
    if (is_counter || IsAnyOf(before, {u"each", u"next", u"redim", u"preserve", u"erase", u"lset",
                                       u"rset", u"set", u"let"}))
      return UseKind::kAssigned;
    if (IsAnyOf(before, {u"addressof", u"call", u"raiseevent"})) return UseKind::kCall;
    const auto behind = Behind(i);
    if (BeginsStatement(first)) return KindOfStatement(behind);
    if (At(behind).IsOperator(u'(')) return UseKind::kCall;
    const bool is_measured = first >= 2 && before.IsOperator(u'(') && At(behind).IsOperator(u')') &&
                             IsAnyOf(At(first - 2), {u"len", u"lenb"});
    return is_measured ? UseKind::kMeasured : UseKind::kValue;
  }
  [[nodiscard]] UseKind KindAt(std::size_t i) const { return KindAt(i, i); }

  // Whether a "." or "!" stands directly behind; with a blank between it belongs to With.
  [[nodiscard]] bool HasMember(std::size_t i) const {
    const auto& next = At(i + 1);
    return (next.IsOperator(u'.') || next.IsOperator(u'!')) && next.place.offset == At(i).End();
  }

  [[nodiscard]] bool BeginsStatement(std::size_t position) const {
    return declares_ == Declares::kNothing &&
           (position == start_ || IsAnyOf(At(position - 1), {u"then", u"else"}));
  }

  // "x = 1", "a(1) = 1", "x.Left = 1" and "Beep 1, 2"
  [[nodiscard]] UseKind KindOfStatement(std::size_t behind) const {
    if (At(behind).IsOperator(u'(')) {
      std::size_t open = 0;
      do {
        if (At(behind).IsOperator(u'(')) ++open;
        if (At(behind).IsOperator(u')')) --open;
        ++behind;
      } while (open > 0 && behind < statement_.tokens.size());
    }
    return At(behind).IsOperator(u'=') ? UseKind::kAssigned : UseKind::kCall;
  }

  std::u16string_view text_;
  const Module& module_;
  StatementReader reader_;
  Statement statement_;
  std::vector<NameUse> uses_;

  std::size_t next_branch_ = 0;
  std::uint32_t condition_ = 0;
  bool in_block_ = false;  // Type or Enum
  bool in_procedure_ = false;
  std::size_t next_procedure_ = 0;
  std::size_t first_use_ = 0;                  // of the procedure
  std::unordered_set<std::u16string> locals_;  // in lower case
  std::u16string lowered_;                     // reused

  // Of the statement.
  std::size_t start_ = 0;
  Declares declares_ = Declares::kNothing;
  std::size_t depth_ = 0;  // of brackets
  bool is_name_next_ = false;
  bool has_types_ = true;
  bool has_type_of_ = false;
};

}  // namespace

std::vector<NameUse> ReadNameUses(std::u16string_view text, const Module& module) {
  return NameUseReader(text, module).Read();
}

std::u16string_view WithoutBrackets(std::u16string_view name) noexcept {
  if (name.starts_with(u'[') && name.ends_with(u']')) return name.substr(1, name.size() - 2);
  return name;
}

}  // namespace declarium::vb
