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

 public:
  explicit Parser(const typename Cursor::Source& source)
      : source_(source), arena_(std::make_shared<TextArena>()), records_(arena_) {
    for (auto& [names, items] : parsed_.lists) {
      names.Keep(arena_);
      items.Keep(arena_);
    }
  }

  // nullopt when the line numbers are uncertain.
  std::optional<ParsedItems> Run() {
    Cursor lines(source_, 0);
    line_ = &lines;
    while (lines.Next()) {
      if (!MayDeclare(lines.Beginning())) continue;
      const auto declaration = DeclarationStart(lines.Line());
      if (const auto kind = DeclarationKind(declaration)) Read(*kind, declaration);
    }
    if (lines.IsUncertain()) return std::nullopt;
    for (const auto& line : records_.Finish(parsed_)) SkipTooLong(line);
    std::ranges::stable_sort(parsed_.skipped, {}, &SkippedLine::number);
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
    const RecordLine line = {line_->FileLine(), line_->start(), line_->next()};
    if (records_.AddNested(line, words_[1], item_, parsed_)) return;
    records_.Begin();
    auto end = Text<Unit>::npos;
    for (Cursor member(source_, line_->next()); member.Next();) {
      const auto member_line = member.Line();
      // Nothing but this at the line's very start ends a record.
      if (IsWordIgnoringCase(member_line, u"end type")) {
        end = member.start();
        break;
      }
      records_.AddMember(member.start(), item_.size());
      AppendNormalized(member_line, item_);
      item_ += kMemberSeparator;
    }
    NoteUnstorable(words_[1], item_);
    records_.AddOutermost(end, words_[1], item_, parsed_);
  }

  // Asked here, where the texts are at hand, it costs a fraction of a later walk over all items.
  // Records inside others hold no character that the line or the record around them does not.
  void NoteUnstorable(std::u16string_view name, std::u16string_view item) {
    parsed_.all_storable = parsed_.all_storable && IsStorable(name) && IsStorable(item);
  }

  // The line as NormalizeLine leaves it.
  std::u16string_view NormalizedDeclaration() {
    normalized_ = declaration_;
    NormalizeComment(normalized_);
    return normalized_;
  }

  void Add(Kind kind, std::u16string_view name) {
    if (name.empty()) return Skip(SkipReason::kNoName);
    NoteUnstorable(name, item_);
    auto& [names, items] = parsed_.lists[static_cast<std::size_t>(kind)];
    names.AddKept(arena_->Store(name));
    items.AddKept(arena_->Store(item_));
  }

  void Skip(SkipReason reason) { Skip(line_->FileLine(), line_->Line(), reason); }

  void SkipTooLong(const RecordLine& record) {
    Cursor line(source_, record.start);
    line.Next();
    Skip(record.number, line.Line(), SkipReason::kTooLong);
  }

  void Skip(std::size_t number, Text<Unit> line, SkipReason reason) {
    std::u16string text;
    AppendDecoded(line, text);
    parsed_.skipped.push_back({number, std::move(text), reason});
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
};

}  // namespace

std::string_view ReasonText(SkipReason reason) {
  switch (reason) {
    case SkipReason::kTooFewWords:
      return "too few words for a declaration";
    case SkipReason::kNoName:
      return "no name where it is expected";
    case SkipReason::kTooLong:
      return "a record without its End Type, too long to keep";
  }
  return {};
}

ParsedItems ParseDeclarations(SourceText source) {
  JoinContinuedLines(source);
  return *Parser<TextCursor>(source).Run();
}

ParsedItems ParseSourceFile(std::string_view bytes) {
  const auto with_cr_lf = CrLfForBareLineEnds(bytes);
  const std::string_view source = with_cr_lf ? *with_cr_lf : bytes;
  if (auto parsed = Parser<FileCursor>(source).Run()) return *std::move(parsed);
  // Joined pieces may form a continuation of their own; the import has always joined twice.
  auto text = ReadSource(bytes);
  JoinContinuedLines(text);
  return ParseDeclarations(std::move(text));
}

}  // namespace declarium
