#include "vb/module.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "text/text.h"
#include "vb/declaration_reader.h"
#include "vb/name.h"
#include "vb/statement.h"
#include "vb/variables.h"

namespace declarium::vb {
namespace {

// What stands in front of a declaration's own word.
struct Prefix {
  std::size_t words = 0;
  std::optional<Scope> scope;
  bool is_global = false;
  bool is_friend = false;
};

Prefix ReadPrefix(const std::vector<Token>& tokens) {
  Prefix prefix;
  for (const auto& token : tokens) {
    if (token.IsWord(u"public") || token.IsWord(u"friend")) {
      prefix.scope = Scope::kPublic;
      prefix.is_friend = token.IsWord(u"friend");
    } else if (token.IsWord(u"global")) {
      prefix.scope = Scope::kPublic;
      prefix.is_global = true;
    } else if (token.IsWord(u"private")) {
      prefix.scope = Scope::kPrivate;
    } else if (!token.IsWord(u"static")) {
      break;
    }
    ++prefix.words;
  }
  return prefix;
}

const Token& TokenAt(const std::vector<Token>& tokens, std::size_t position) {
  static const Token none;
  return position < tokens.size() ? tokens[position] : none;
}

bool IsTwoWords(const std::vector<Token>& tokens, std::u16string_view first,
                std::u16string_view second) {
  return tokens.size() == 2 && tokens[0].IsWord(first) && tokens[1].IsWord(second);
}

std::optional<Procedure::Kind> ProcedureKind(const std::vector<Token>& tokens, std::size_t at) {
  if (TokenAt(tokens, at).IsWord(u"sub")) return Procedure::Kind::kSub;
  if (TokenAt(tokens, at).IsWord(u"function")) return Procedure::Kind::kFunction;
  if (!TokenAt(tokens, at).IsWord(u"property")) return std::nullopt;
  const auto& which = TokenAt(tokens, at + 1);
  if (which.IsWord(u"get")) return Procedure::Kind::kPropertyGet;
  if (which.IsWord(u"let")) return Procedure::Kind::kPropertyLet;
  if (which.IsWord(u"set")) return Procedure::Kind::kPropertySet;
  return std::nullopt;
}

bool EndsProcedure(const std::vector<Token>& tokens) {
  return IsTwoWords(tokens, u"end", u"sub") || IsTwoWords(tokens, u"end", u"function") ||
         IsTwoWords(tokens, u"end", u"property");
}

// Whether a line inside a procedure may matter: a constant, the end, or what shows that the end is
// missing. A line number may stand before any of them.
bool MattersInProcedure(std::u16string_view first_word) {
  if (first_word.empty()) return false;
  switch (first_word.front()) {
    case u'#':
      return true;
    case u'c':
      return first_word == u"const";
    case u'e':
      return first_word == u"end";
    case u'p':
      return first_word == u"public" || first_word == u"private" || first_word == u"property";
    case u'f':
      return first_word == u"friend" || first_word == u"function";
    case u's':
      return first_word == u"sub";
    default:
      return IsDigit(first_word.front());
  }
}

class ModuleReader {
 public:
  ModuleReader(std::u16string_view text, ModuleKind kind) : text_(text), reader_(text) {
    module_.kind = kind;
  }

  Module Read() {
    ReadHeader();
    while (Next()) ReadStatement();
    const auto end = reader_.Here();
    if (procedure_) module_.procedures.back().end_line = end.line;
    module_.lines = end.column == 1 ? end.line - 1 : end.line;
    if (module_.procedures.empty()) module_.declarations_end = module_.lines;
    if (conditions_.IsOpen()) Refuse({end, "#End If", {}});
    module_.conditions = conditions_.TakeAll();
    return std::move(module_);
  }

 private:
  // Reads the next statement into statement_, or gives back the one that was put back.
  bool Next() {
    if (std::exchange(is_put_back_, false)) return true;
    return procedure_ ? reader_.NextWanted(statement_, MattersInProcedure)
                      : reader_.Next(statement_);
  }

  [[nodiscard]] const std::vector<Token>& Tokens() const { return statement_.tokens; }

  // The place behind the statement's last token.
  [[nodiscard]] Place StatementEnd() const {
    Place end = Tokens().back().place;
    end.offset = Tokens().back().End();
    end.column += static_cast<std::uint32_t>(Tokens().back().text.size());
    return end;
  }

  [[nodiscard]] TokenCursor CursorBehind(std::size_t words) const {
    return {std::span(Tokens()).subspan(words), StatementEnd()};
  }

  void Refuse(SyntaxError error) {
    error.statement = Tokens().empty() ? error.place : Tokens().front().place;
    module_.errors.push_back(error);
  }

  // VERSION, Object and the Begin ... End of a form.
  void ReadHeader() {
    std::size_t depth = 0;
    bool is_header = false;
    while (Next()) {
      const auto& first = TokenAt(Tokens(), 0);
      if (first.IsWord(u"version") && TokenAt(Tokens(), 1).kind == TokenKind::kNumber) {
        is_header = true;
        module_.header_end = first.place.line;
      } else if (is_header && (first.IsWord(u"begin") || first.IsWord(u"beginproperty"))) {
        if (depth > 0 && first.IsWord(u"begin")) AddControl();
        ++depth;
        module_.header_end = first.place.line;
      } else if (depth > 0 && IsModuleAttribute()) {
        is_put_back_ = true;
        return RefuseHeader({first.place, "End", statement_.Text()});
      } else if (depth > 0) {
        const bool ends = first.IsWord(u"end") || first.IsWord(u"endproperty");
        if (ends && Tokens().size() == 1) --depth;
        module_.header_end = first.place.line;
      } else if (!Tokens().empty() && !(is_header && first.IsWord(u"object"))) {
        is_put_back_ = true;
        return;
      } else if (!Tokens().empty()) {
        module_.header_end = first.place.line;
      }
    }
    if (depth > 0) RefuseHeader({reader_.Here(), "End", {}});
  }

  // "Attribute VB_Name = ...", which stands behind the header; a property has "=" behind its name.
  [[nodiscard]] bool IsModuleAttribute() const {
    return TokenAt(Tokens(), 0).IsWord(u"attribute") &&
           TokenAt(Tokens(), 1).kind == TokenKind::kName;
  }

  void RefuseHeader(const SyntaxError& error) {
    module_.is_header_open = true;
    Refuse(error);
  }

  // "Begin VB.CommandButton Command1"
  void AddControl() {
    const auto& name = Tokens().back();
    if (name.kind != TokenKind::kName || Tokens().size() < 3) return;
    module_.members.push_back(
        {ModuleMember::Kind::kControl, Scope::kPrivate, name.text, name.place, 0});
  }

  void ReadStatement() {
    if (Tokens().empty() || ReadDirective()) return;
    DropLineNumber();
    if (Tokens().empty()) return;
    const auto prefix = ReadPrefix(Tokens());
    const auto& word = TokenAt(Tokens(), prefix.words);
    if (word.IsWord(u"const")) return ReadConstants(prefix);
    if (const auto kind = ProcedureKind(Tokens(), prefix.words)) return Begin(*kind, prefix);
    if (EndsProcedure(Tokens())) return EndProcedure();
    if (procedure_ && prefix.words == 0) return;
    if (word.IsWord(u"declare") || word.IsWord(u"declarewide")) return ReadDeclare(prefix);
    if (word.IsWord(u"type")) return ReadRecord(prefix);
    if (word.IsWord(u"enum")) return ReadEnumeration(prefix);
    if (prefix.words == 0) return ReadModuleLine(word);
    if (procedure_) return CheckVariables(prefix.words);
    const auto scope = prefix.scope.value_or(Scope::kPrivate);
    if (!word.IsWord(u"event")) return CheckVariables(prefix.words, scope);
    AddMember(ModuleMember::Kind::kEvent, scope, TokenAt(Tokens(), prefix.words + 1));
  }

  void AddMember(ModuleMember::Kind kind, Scope scope, const Token& name) {
    if (name.kind != TokenKind::kName) return;
    module_.members.push_back({kind, scope, name.text, name.place, conditions_.Current()});
  }

  void DropLineNumber() {
    if (Tokens().front().kind == TokenKind::kNumber)
      statement_.tokens.erase(statement_.tokens.begin());
  }

  // Option, Attribute and Def lines.
  void ReadModuleLine(const Token& word) {
    if (word.IsWord(u"option")) {
      module_.options.push_back({statement_.Text(), word.place});
      if (Tokens().size() == 3 && Tokens()[1].IsWord(u"base"))
        lowest_ = Tokens()[2].text == u"1" ? u"1" : u"";
    } else if (word.IsWord(u"attribute")) {
      ReadAttribute();
    } else if (word.IsWord(u"dim")) {
      CheckVariables(1, Scope::kPrivate);
    } else if (word.IsWord(u"event")) {
      AddMember(ModuleMember::Kind::kEvent, Scope::kPublic, TokenAt(Tokens(), 1));
    } else {
      defaults_.Read(Tokens());
    }
  }

  // What has such a name is read all the same: only its name is wrong.
  void CheckName(std::u16string_view name, const Place& place) {
    if (IsRefusedAsName(name)) Refuse({place, "a name that is no reserved word", name});
  }

  // The names of variables behind Dim and its like, or of a procedure's parameters; with a scope
  // they are the module's.
  void CheckVariables(std::size_t behind_words, std::optional<Scope> scope = std::nullopt) {
    std::size_t open = 0;
    bool is_name_next = true;
    for (const auto& token : std::span(Tokens()).subspan(behind_words)) {
      if (is_name_next && StandsBeforeVariable(token)) continue;
      if (std::exchange(is_name_next, false)) {
        CheckName(token.text, token.place);
        if (scope) AddMember(ModuleMember::Kind::kVariable, *scope, token);
      }
      if (token.IsOperator(u'(')) ++open;
      if (token.IsOperator(u')') && open > 0) --open;
      is_name_next = open == 0 && token.IsOperator(u',');
    }
  }

  void ReadAttribute() {
    const auto equals =
        std::ranges::find_if(Tokens(), [](const Token& token) { return token.IsOperator(u'='); });
    const auto at = static_cast<std::size_t>(equals - Tokens().begin());
    if (at < 2 || at + 1 >= Tokens().size()) return;
    const auto whole = statement_.Text();
    const auto start = Tokens().front().place.offset;
    const auto name = Tokens()[1].place.offset - start;
    const auto value = Tokens()[at + 1].place.offset - start;
    module_.attributes.push_back({whole.substr(name, Tokens()[at - 1].End() - start - name),
                                  whole.substr(value), Tokens().front().place});
  }

  // #If and its like; false for any other statement.
  bool ReadDirective() {
    if (!Tokens().front().IsOperator(u'#') || Tokens().size() < 2) return false;
    const auto& word = Tokens()[1];
    if (word.IsWord(u"const")) {
      ReadCompilerConstant();
    } else if (word.IsWord(u"if")) {
      conditions_.If(ConditionText());
    } else if (word.IsWord(u"elseif")) {
      if (!conditions_.ElseIf(ConditionText())) RefuseDirective();
    } else if (word.IsWord(u"else")) {
      if (!conditions_.Else()) RefuseDirective();
    } else if (word.IsWord(u"end") || word.IsWord(u"endif")) {
      if (!conditions_.EndIf()) RefuseDirective();
    } else {
      return false;
    }
    if (!word.IsWord(u"const"))
      module_.branch_lines.push_back(
          {Tokens().back().place.line, conditions_.Current(), conditions_.IsOpen()});
    return true;
  }

  void RefuseDirective() { Refuse({Tokens().front().place, "#If in front", statement_.Text()}); }

  // What stands between the directive's word and Then.
  [[nodiscard]] std::u16string_view ConditionText() {
    auto last = Tokens().size() - 1;
    if (Tokens()[last].IsWord(u"then")) {
      --last;
    } else {
      Refuse({StatementEnd(), "Then", {}});
    }
    if (last < 2) return {};
    const auto& first = Tokens()[2];
    return {first.text.data(), Tokens()[last].End() - first.place.offset};
  }

  void ReadCompilerConstant() {
    auto cursor = CursorBehind(2);
    const auto constant = ReadConstant(cursor);
    if (!constant) return Refuse(constant.error());
    module_.compiler_constants.push_back(
        {constant->name, constant->constant.value, Tokens().front().place, conditions_.Current()});
  }

  Declaration Begin(const Prefix& prefix, Scope scope) {
    Declaration declaration;
    declaration.text = statement_.Text();
    declaration.place = Tokens().front().place;
    declaration.scope = prefix.scope.value_or(scope);
    declaration.is_global = prefix.is_global;
    declaration.condition = conditions_.Current();
    declaration.end_line = Tokens().back().place.line;
    return declaration;
  }

  [[nodiscard]] Scope DefaultScope() const {
    return module_.kind == ModuleKind::kStandard ? Scope::kPublic : Scope::kPrivate;
  }

  void ReadConstants(const Prefix& prefix) {
    auto cursor = CursorBehind(prefix.words + 1);
    do {
      auto constant = ReadConstant(cursor);
      if (!constant) return Refuse(constant.error());
      auto declaration = Begin(prefix, procedure_ ? Scope::kLocal : Scope::kPrivate);
      CheckName(constant->name, constant->place);
      declaration.name = constant->name;
      declaration.name_place = constant->place;
      declaration.what = constant->constant;
      module_.declarations.push_back(std::move(declaration));
    } while (cursor.TakeOperator(u','));
  }

  void ReadDeclare(const Prefix& prefix) {
    const bool is_wide = Tokens()[prefix.words].IsWord(u"declarewide");
    auto cursor = CursorBehind(prefix.words + 1);
    auto external = ReadExternal(cursor, defaults_);
    if (!external) return Refuse(external.error());
    external->external.is_wide = is_wide;
    CheckName(external->name, external->place);
    for (const auto& parameter : external->external.parameters)
      CheckName(parameter.name, parameter.place);
    auto declaration = Begin(prefix, DefaultScope());
    declaration.name = external->name;
    declaration.name_place = external->place;
    declaration.what = std::move(external->external);
    module_.declarations.push_back(std::move(declaration));
  }

  // The head of a Type or Enum; nothing when it has no name or more than that.
  std::optional<Declaration> BeginBlock(const Prefix& prefix, Scope scope) {
    const auto& name = TokenAt(Tokens(), prefix.words + 1);
    if (name.kind != TokenKind::kName) {
      // "Type = 1" and its like are no declarations.
      if (name.kind == TokenKind::kEnd) Refuse({StatementEnd(), "a name", {}});
      return std::nullopt;
    }
    if (Tokens().size() > prefix.words + 2) {
      const auto& rest = Tokens()[prefix.words + 2];
      Refuse({rest.place, "the end of the statement", rest.text});
      return std::nullopt;
    }
    CheckName(name.text, name.place);
    auto declaration = Begin(prefix, scope);
    declaration.name = name.text;
    declaration.name_place = name.place;
    return declaration;
  }

  // Whether the statement can be no line of a block: the block's end is missing.
  [[nodiscard]] bool LeavesBlock() const {
    if (EndsProcedure(Tokens())) return true;
    const auto prefix = ReadPrefix(Tokens());
    const auto& word = TokenAt(Tokens(), prefix.words);
    const auto& next = TokenAt(Tokens(), prefix.words + 1);
    if (next.kind != TokenKind::kName || next.IsWord(u"as")) return false;
    if (prefix.words > 0) return true;
    constexpr std::u16string_view kWords[] = {u"const",  u"declare",  u"type",     u"enum",
                                              u"sub",    u"function", u"property", u"dim",
                                              u"option", u"attribute"};
    return std::ranges::any_of(kWords, [&](auto each) { return word.IsWord(each); });
  }

  // Reads the lines of a block up to "End" and its word.
  template <class ReadLine>
  void ReadBlock(Declaration& declaration, std::u16string_view word, std::string_view end,
                 const ReadLine& read_line) {
    const auto start = declaration.text.data();
    while (Next()) {
      if (Tokens().empty()) {
        read_line();
        continue;
      }
      if (IsTwoWords(Tokens(), u"end", word)) {
        declaration.end_line = Tokens().back().place.line;
        declaration.text = {start, static_cast<std::size_t>(Tokens().back().text.data() +
                                                            Tokens().back().text.size() - start)};
        return;
      }
      if (LeavesBlock()) {
        Refuse({Tokens().front().place, end, statement_.Text()});
        is_put_back_ = true;
        return;
      }
      if (!ReadDirective()) read_line();
      declaration.end_line = Tokens().back().place.line;
      const auto& last = Tokens().back().text;
      declaration.text = {start, static_cast<std::size_t>(last.data() + last.size() - start)};
    }
    Refuse({reader_.Here(), end, {}});
  }

  void ReadRecord(const Prefix& prefix) {
    auto declaration = BeginBlock(prefix, DefaultScope());
    if (!declaration) return;
    Record record;
    if (statement_.comment)
      record.comments.push_back({statement_.comment->text, statement_.comment->place});
    ReadBlock(*declaration, u"type", "End Type", [&] {
      if (statement_.comment)
        record.comments.push_back({statement_.comment->text, statement_.comment->place});
      if (Tokens().empty()) return;
      auto cursor = CursorBehind(0);
      auto member = ReadMember(cursor, defaults_, lowest_);
      if (!member) return Refuse(member.error());
      member->condition = conditions_.Current();
      record.members.push_back(*std::move(member));
    });
    record.members.shrink_to_fit();
    declaration->what = std::move(record);
    module_.declarations.push_back(*std::move(declaration));
  }

  void ReadEnumeration(const Prefix& prefix) {
    auto declaration = BeginBlock(prefix, Scope::kPublic);
    if (!declaration) return;
    Enumeration enumeration;
    ReadBlock(*declaration, u"enum", "End Enum", [&] {
      if (Tokens().empty()) return;
      auto cursor = CursorBehind(0);
      auto member = ReadEnumMember(cursor);
      if (!member) return Refuse(member.error());
      CheckName(member->name, member->place);
      member->condition = conditions_.Current();
      enumeration.members.push_back(*member);
    });
    enumeration.members.shrink_to_fit();
    declaration->what = std::move(enumeration);
    module_.declarations.push_back(*std::move(declaration));
  }

  // The name of a procedure may be any: programs call methods as Close or Print are called.
  void Begin(Procedure::Kind kind, const Prefix& prefix) {
    const bool is_property = kind != Procedure::Kind::kSub && kind != Procedure::Kind::kFunction;
    const auto name_at = prefix.words + (is_property ? 2 : 1);
    const auto& name = TokenAt(Tokens(), name_at);
    if (name.kind != TokenKind::kName) return;
    const auto& place = Tokens().front().place;
    if (procedure_) {
      Refuse({place, "End Sub, End Function or End Property", statement_.Text()});
      module_.procedures.back().end_line = place.line - 1;
    }
    if (module_.procedures.empty()) module_.declarations_end = place.line - 1;
    module_.procedures.push_back({kind, prefix.scope.value_or(Scope::kPublic), prefix.is_friend,
                                  name.text, statement_.Text(), conditions_.Current(), place,
                                  place.line});
    procedure_ = true;
    const bool has_character = TokenAt(Tokens(), name_at + 1).kind == TokenKind::kTypeCharacter;
    const auto bracket_at = name_at + (has_character ? 2 : 1);
    const auto& first = TokenAt(Tokens(), bracket_at + 1);
    if (TokenAt(Tokens(), bracket_at).IsOperator(u'(') && !first.IsOperator(u')'))
      CheckVariables(bracket_at + 1);
  }

  void EndProcedure() {
    if (!std::exchange(procedure_, false)) return;
    module_.procedures.back().end_line = Tokens().front().place.line;
  }

  std::u16string_view text_;
  StatementReader reader_;
  Statement statement_;
  bool is_put_back_ = false;
  bool procedure_ = false;  // inside one
  Conditions conditions_;
  DefaultTypes defaults_;
  std::u16string_view lowest_;  // what Option Base says, empty for 0
  Module module_;
};

std::optional<ModuleKind> KindByExtension(std::u16string_view file_name) {
  static constexpr std::pair<std::u16string_view, ModuleKind> kExtensions[] = {
      {u".bas", ModuleKind::kStandard},    {u".cls", ModuleKind::kClass},
      {u".dsr", ModuleKind::kClass},       {u".frm", ModuleKind::kForm},
      {u".ctl", ModuleKind::kControl},     {u".dob", ModuleKind::kDocument},
      {u".pag", ModuleKind::kPropertyPage}};
  const auto extension = file_name.substr(std::min(file_name.rfind(u'.'), file_name.size()));
  const auto* const found = std::ranges::find_if(kExtensions, [extension](const auto& each) {
    return EqualIgnoringCase(extension, each.first);
  });
  return found == std::end(kExtensions) ? std::nullopt : std::optional(found->second);
}

}  // namespace

std::u16string_view Module::Name() const {
  for (const auto& attribute : attributes) {
    if (!EqualIgnoringCase(attribute.name, u"VB_Name") || attribute.value.size() < 2) continue;
    return attribute.value.substr(1, attribute.value.size() - 2);
  }
  return {};
}

ModuleKind ModuleKindOf(std::u16string_view file_name) {
  return KindByExtension(file_name).value_or(ModuleKind::kStandard);
}

bool IsModuleFile(std::u16string_view file_name) {
  return KindByExtension(file_name).has_value();
}

std::string_view ModuleKindText(ModuleKind kind) {
  switch (kind) {
    case ModuleKind::kStandard:
      return "standard";
    case ModuleKind::kClass:
      return "class";
    case ModuleKind::kForm:
      return "form";
    case ModuleKind::kControl:
      return "control";
    case ModuleKind::kDocument:
      return "document";
    case ModuleKind::kPropertyPage:
      return "property page";
  }
  return {};
}

Module ReadModule(std::u16string_view text, ModuleKind kind) {
  return ModuleReader(text, kind).Read();
}

}  // namespace declarium::vb
