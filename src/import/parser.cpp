#include "import/parser.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <span>

#include "import/line_cursor.h"
#include "import/records.h"
#include "library/file_format.h"
#include "library/item.h"
#include "library/text_arena.h"
#include "text/code_page.h"
#include "text/text.h"

namespace declarium {
namespace {

template <typename Unit>
using Text = std::basic_string_view<Unit>;

// The sought words are ASCII, and no character of the code page but an ASCII letter has an ASCII
// lower-case form, so bytes can be compared undecoded.
constexpr char16_t Lower(char byte) {
  return static_cast<unsigned char>(byte >= 'A' && byte <= 'Z' ? byte + 32 : byte);
}
char16_t Lower(char16_t unit) {
  return LowerCase(unit);
}

bool IsBlank(char16_t unit) {
  return unit == u' ' || unit == u'\t';
}

template <typename Unit>
bool StartsWithIgnoringCase(Text<Unit> text, std::u16string_view lowered) {
  return text.size() >= lowered.size() &&
         std::ranges::equal(text.substr(0, lowered.size()), lowered, {},
                            [](Unit unit) { return Lower(unit); });
}

template <typename Unit>
bool IsWordIgnoringCase(Text<Unit> text, std::u16string_view lowered) {
  return text.size() == lowered.size() && StartsWithIgnoringCase(text, lowered);
}

// "public " or "private " in any case, where the blank may be a tab, which counts as a blank.
template <typename Unit>
bool StartsWithScope(Text<Unit> text, std::u16string_view scope) {
  return text.size() > scope.size() && StartsWithIgnoringCase(text, scope) &&
         IsBlank(text[scope.size()]);
}

template <typename Unit>
Text<Unit> WithoutLeadingBlanks(Text<Unit> line) {
  const auto first = std::ranges::find_if_not(line, IsBlank);
  return line.substr(static_cast<std::size_t>(first - line.begin()));
}

// Whether the first letter is that of a scope word or of a declaration's first word, or the line
// may begin further down; rules out nearly all other lines at once.
template <typename Unit>
bool MayDeclare(Text<Unit> line) {
  line = WithoutLeadingBlanks(line);
  if (line.empty()) return false;
  switch (Lower(line.front())) {
    case u'p':
    case u'c':
    case u'd':
    case u't':
    case u'_':
      return true;
    default:
      return false;
  }
}

// The line without its leading blanks and scope words.
template <typename Unit>
Text<Unit> DeclarationStart(Text<Unit> line) {
  line = WithoutLeadingBlanks(line);
  for (const std::u16string_view scope : {u"public", u"private"}) {
    if (StartsWithScope(line, scope)) line.remove_prefix(scope.size() + 1);
  }
  return line;
}

template <typename Unit>
std::optional<Kind> DeclarationKind(Text<Unit> declaration) {
  const auto end = std::ranges::find_if(declaration, IsBlank);
  const auto word = declaration.substr(0, static_cast<std::size_t>(end - declaration.begin()));
  if (IsWordIgnoringCase(word, u"const")) return Kind::kConst;
  if (IsWordIgnoringCase(word, u"declare")) return Kind::kDeclare;
  if (IsWordIgnoringCase(word, u"type")) return Kind::kType;
  return std::nullopt;
}

void DecodeInto(std::u16string_view text, char16_t* out) {
  std::ranges::copy(text, out);
}
void DecodeInto(std::string_view bytes, char16_t* out) {
  DecodeCodePageInto(bytes, out);
}

template <typename Unit>
void AppendDecoded(Text<Unit> text, std::u16string& out) {
  const auto start = out.size();
  const auto size = start + text.size();
  out.resize_and_overwrite(size, [=](char16_t* units, std::size_t) {
    DecodeInto(text, units + start);
    return size;
  });
}

// Appends the decoded line with blanks for tabs.
template <typename Unit>
void AppendWithBlanks(Text<Unit> line, std::u16string& out) {
  const auto start = out.size();
  AppendDecoded(line, out);
  // Writing every unit back lets the compiler use vector instructions.
  for (auto& unit : std::span(out).subspan(start)) unit = unit == u'\t' ? u' ' : unit;
}

// Appends NormalizeLine of the decoded line.
template <typename Unit>
void AppendNormalized(Text<Unit> line, std::u16string& out) {
  const auto start = out.size();
  AppendWithBlanks(WithoutLeadingBlanks(line), out);
  NormalizeComment(out, start);
}

// The first words of a line, as many as a declaration looks at.
class Words {
 public:
  void Split(std::u16string_view line) {
    for (count_ = 0; count_ < words_.size(); ++count_) {
      const auto end = line.find(u' ');
      words_[count_] = line.substr(0, end);
      if (end == line.npos) {
        ++count_;
        return;
      }
      line.remove_prefix(end + 1);
    }
  }
  [[nodiscard]] std::size_t size() const { return count_; }
  [[nodiscard]] std::u16string_view operator[](std::size_t i) const { return words_[i]; }

 private:
  std::array<std::u16string_view, 4> words_;
  std::size_t count_ = 0;
};

template <typename Cursor>
class Parser {
  using Unit = Cursor::Unit;

  // Why a declaration is left out.
  struct Fault {
    SkipReason reason;
    std::optional<LostCharacter> character;  // because of which no library can keep it
  };

 public:
  explicit Parser(const typename Cursor::Source& source)
      : source_(source), arena_(std::make_shared<TextArena>()), records_(arena_) {
    for (auto& [names, items] : parsed_.lists) {
      names.Keep(arena_);
      items.Keep(arena_);
    }
  }

  // nullopt when the line numbers are uncertain, or places are asked for that the cursor does not
  // know.
  std::optional<ParsedItems> Run() {
    Cursor lines(source_, 0);
    line_ = &lines;
    while (lines.Next()) {
      if (!MayDeclare(lines.Beginning())) continue;
      const auto declaration = DeclarationStart(lines.Line());
      if (const auto kind = DeclarationKind(declaration)) Read(*kind, declaration);
    }
    if (lines.IsUncertain() || lacks_places_) return std::nullopt;
    for (const auto& line : records_.Finish(parsed_)) SkipTooLong(line);
    std::ranges::stable_sort(parsed_.skipped, {}, &SkippedLine::number);
    // A member line that is read as a declaration too gave its characters twice.
    OrderByPlace(parsed_.replaced);
    return std::move(parsed_);
  }

 private:
  void Read(Kind kind, Text<Unit> declaration) {
    declaration_.clear();
    AppendWithBlanks(declaration, declaration_);
    words_.Split(declaration_);
    switch (kind) {
      case Kind::kConst:
        return ReadConst();
      case Kind::kDeclare:
        return ReadDeclare();
      case Kind::kType:
        return ReadType();
    }
  }

  void ReadConst() {
    if (words_.size() < 2) return Skip(SkipReason::kTooFewWords);
    if (const auto as = declaration_.find(u"As"); as != declaration_.npos) {
      rebuilt_.assign(words_[0]).append(u" ").append(words_[1]).append(u" ");
      rebuilt_.append(declaration_, as);
      declaration_.swap(rebuilt_);
      words_.Split(declaration_);
    }
    if (words_.size() < 3) return Skip(SkipReason::kTooFewWords);
    if (words_[2] != u"As") return AddConst({}, 3);
    if (words_.size() < 4) return Skip(SkipReason::kTooFewWords);
    AddConst(words_[3], 5);
  }

  void AddConst(std::u16string_view type, int blanks_before_value) {
    item_.assign(type);
    item_ += kValueSeparator;
    item_ += RestAfterBlank(NormalizedDeclaration(), blanks_before_value);
    Add(Kind::kConst, words_[1]);
  }

  void ReadDeclare() {
    if (words_.size() < 2) return Skip(SkipReason::kTooFewWords);
    const bool is_sub = EqualIgnoringCase(words_[1], u"sub");
    if (!is_sub && !EqualIgnoringCase(words_[1], u"function")) return;
    if (words_.size() < 3) return Skip(SkipReason::kTooFewWords);
    item_.assign(1, is_sub ? kSubMarker : kFunctionMarker);
    item_ += RestAfterBlank(NormalizedDeclaration(), 4);
    Add(Kind::kDeclare, words_[2]);
  }

  void ReadType() {
    if (words_.size() < 2) return Skip(SkipReason::kTooFewWords);
    if (words_[1].empty()) return Skip(SkipReason::kNoName);
    item_.assign(RestAfterBlank(NormalizedDeclaration(), 2));
    item_ += kMembersSeparator;
    const auto name = words_[1];
    std::vector<LostCharacter> replaced;
    auto fault = FindFault(*line_, name, replaced);
    switch (records_.AddNested(Place(), name, item_, Keeping(fault), parsed_)) {
      case NestedRecord::kAdded:
        return Note(replaced_in_record_);
      case NestedRecord::kUnkeepable:
        return Skip(fault ? *fault : *member_fault_);
      case NestedRecord::kOutside:
        break;
    }
    replaced_in_record_ = std::move(replaced);
    const auto end = ReadMembers(fault);
    records_.AddOutermost(end, Keeping(fault), name, item_, parsed_);
    if (fault) return Skip(*fault);
    Note(replaced_in_record_);
  }

  // Appends the members to the item string and returns where the line behind them starts. `fault`
  // becomes that of the first member that no library can keep, unless there is one already.
  std::size_t ReadMembers(std::optional<Fault>& fault) {
    records_.Begin();
    for (auto member = *line_; member.Next();) {
      const auto line = member.Line();
      // Nothing but this at the line's very start ends a record.
      if (IsWordIgnoringCase(line, u"end type")) return member.Start();
      const auto start = item_.size();
      records_.AddMember(member.Start(), start);
      AppendNormalized(line, item_);
      if (auto found = TakePart(member, start, replaced_in_record_)) {
        records_.NoteUnkeepable();
        // Records around this line are left out; what stands above it is in no other.
        replaced_in_record_.clear();
        if (!fault) fault = found;
        member_fault_ = std::move(found);
      }
      item_ += kMemberSeparator;
    }
    return Text<Unit>::npos;
  }

  [[nodiscard]] RecordLine Place() const {
    return {line_->FileLine(), line_->Start(), line_->NextStart()};
  }

  static Keepable Keeping(const std::optional<Fault>& fault) {
    return fault ? Keepable::kNo : Keepable::kYes;
  }

  // The bytes of a file are characters of the code page.
  static bool CanKeep(std::u16string_view text) {
    return Cursor::kKnowsPlaces ? IsKeepable(text) : IsStorable(text);
  }

  // Why no library can keep the declaration of this name in item_. What stands only in its comment
  // is replaced there and noted in `replaced`.
  std::optional<Fault> FindFault(Cursor& line, std::u16string_view name,
                                 std::vector<LostCharacter>& replaced) {
    return CanKeep(name) ? TakePart(line, 0, replaced) : FaultIn(line);
  }

  // The same for the part of item_ from `start` on, which `line` gave.
  std::optional<Fault> TakePart(Cursor& line, std::size_t start,
                                std::vector<LostCharacter>& replaced) {
    if (CanKeep(std::u16string_view(item_).substr(start))) return std::nullopt;
    if constexpr (Cursor::kKnowsPlaces) {
      const auto characters = FindUnkeepableCharacters(line.Line());
      if (std::ranges::all_of(
              characters, [](Loss loss) { return loss == Loss::kInComment; },
              &UnkeepableCharacter::loss)) {
        for (const auto& character : characters) replaced.push_back(Lost(line, character));
        ReplaceForeignCharacters(item_, start);
        return std::nullopt;
      }
    }
    return FaultIn(line);
  }

  // The line's first character that no library can keep, rather in code than in its comment.
  Fault FaultIn(Cursor& line) {
    if constexpr (Cursor::kKnowsPlaces) {
      const auto characters = FindUnkeepableCharacters(line.Line());
      auto found = std::ranges::find_if(
          characters, [](Loss loss) { return loss != Loss::kInComment; },
          &UnkeepableCharacter::loss);
      if (found == characters.end()) found = characters.begin();
      return {SkipReasonOf(found->loss), Lost(line, *found)};
    }
    lacks_places_ = true;
    return {SkipReason::kSeparator, {}};
  }

  static LostCharacter Lost(TextCursor& line, const UnkeepableCharacter& character) {
    return {line.FileLineOf(character.position), line.FileColumnOf(character.position),
            std::u16string(line.Line().substr(character.position, character.length))};
  }

  // Moves the places to the result.
  void Note(std::vector<LostCharacter>& replaced) {
    std::ranges::move(replaced, std::back_inserter(parsed_.replaced));
    replaced.clear();
  }

  // The line as NormalizeLine leaves it.
  std::u16string_view NormalizedDeclaration() {
    normalized_ = declaration_;
    NormalizeComment(normalized_);
    return normalized_;
  }

  void Add(Kind kind, std::u16string_view name) {
    if (name.empty()) return Skip(SkipReason::kNoName);
    std::vector<LostCharacter> replaced;
    if (const auto fault = FindFault(*line_, name, replaced)) return Skip(*fault);
    Note(replaced);
    auto& [names, items] = parsed_.lists[static_cast<std::size_t>(kind)];
    names.AddKept(arena_->Store(name));
    items.AddKept(arena_->Store(item_));
  }

  void Skip(SkipReason reason) { Skip(Fault{reason, {}}); }
  void Skip(const Fault& fault) { Skip(line_->FileLine(), line_->Line(), fault); }

  void SkipTooLong(const RecordLine& record) {
    Cursor line(source_, record.start);
    line.Next();
    Skip(record.number, line.Line(), {SkipReason::kTooLong, {}});
  }

  void Skip(std::size_t number, Text<Unit> line, const Fault& fault) {
    std::u16string text;
    AppendDecoded(line, text);
    parsed_.skipped.push_back({number, std::move(text), fault.reason, fault.character});
  }

  const typename Cursor::Source& source_;
  std::shared_ptr<TextArena> arena_;
  Records records_;
  ParsedItems parsed_;
  Cursor* line_ = nullptr;      // at the line that begins the declaration
  std::u16string declaration_;  // without scope words, tabs as blanks
  Words words_;                 // of declaration_
  std::u16string item_;         // the item string being built
  std::u16string rebuilt_;
  std::u16string normalized_;
  // Of the outermost record read last: what was replaced in its members and is not noted yet, and
  // why the last member that no library can keep is one.
  std::vector<LostCharacter> replaced_in_record_;
  std::optional<Fault> member_fault_;
  bool lacks_places_ = false;
};

}  // namespace

SkipReason SkipReasonOf(Loss loss) {
  return loss == Loss::kSeparator ? SkipReason::kSeparator : SkipReason::kForeign;
}

std::string_view ReasonText(SkipReason reason) {
  switch (reason) {
    case SkipReason::kTooFewWords:
      return "too few words for a declaration";
    case SkipReason::kNoName:
      return "no name where it is expected";
    case SkipReason::kTooLong:
      return "a record without its End Type, too long to keep";
    case SkipReason::kSeparator:
      return "a character 0, 1 or 2, which no library can keep";
    case SkipReason::kForeign:
      return "a character that the library's code page does not have";
  }
  return {};
}

ParsedItems ParseDeclarations(SourceText source) {
  JoinContinuedLines(source);
  return *Parser<TextCursor>(source).Run();
}

ParsedItems ParseSourceFile(std::string_view bytes, const Encoding& encoding) {
  if (encoding == kLibraryEncoding) {
    const auto with_cr_lf = CrLfForBareLineEnds(bytes);
    const std::string_view source = with_cr_lf ? *with_cr_lf : bytes;
    if (auto parsed = Parser<FileCursor>(source).Run()) return *std::move(parsed);
  }
  auto text = ReadSource(DecodeText(bytes, encoding));
  // Joined pieces may form a continuation of their own; the import has always joined twice.
  JoinContinuedLines(text);
  return ParseDeclarations(std::move(text));
}

}  // namespace declarium
