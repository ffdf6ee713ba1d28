#include "import/parser.h"

#include <algorithm>
#include <optional>

#include "basic/text.h"
#include "database/item.h"

namespace declarium {
namespace {

constexpr std::u16string_view kConst = u"const";
constexpr std::u16string_view kDeclare = u"declare";
constexpr std::u16string_view kType = u"type";

bool IsBlank(char16_t unit) {
  return unit == u' ' || unit == u'\t';
}

bool StartsWithIgnoringCase(std::u16string_view text, std::u16string_view lowered) {
  return text.size() >= lowered.size() &&
         EqualIgnoringCase(text.substr(0, lowered.size()), lowered);
}

// "public " or "private " in any case, where the blank may be a tab, which counts as a blank.
bool StartsWithScope(std::u16string_view text, std::u16string_view scope) {
  return text.size() > scope.size() && StartsWithIgnoringCase(text, scope) &&
         IsBlank(text[scope.size()]);
}

// The line without its leading blanks and scope words.
std::u16string_view DeclarationStart(std::u16string_view line) {
  const auto first = std::ranges::find_if_not(line, IsBlank);
  line.remove_prefix(static_cast<std::size_t>(first - line.begin()));
  for (const std::u16string_view scope : {u"public", u"private"}) {
    if (StartsWithScope(line, scope)) line.remove_prefix(scope.size() + 1);
  }
  return line;
}

std::optional<Kind> DeclarationKind(std::u16string_view declaration) {
  const auto end = std::ranges::find_if(declaration, IsBlank);
  const auto word = declaration.substr(0, static_cast<std::size_t>(end - declaration.begin()));
  if (EqualIgnoringCase(word, kConst)) return Kind::kConst;
  if (EqualIgnoringCase(word, kDeclare)) return Kind::kDeclare;
  if (EqualIgnoringCase(word, kType)) return Kind::kType;
  return std::nullopt;
}

// Walks the lines of a text.
class LineCursor {
 public:
  LineCursor(std::u16string_view text, std::size_t position) : text_(text), next_(position) {}

  // False behind the last line. A text always ends in a line, though an empty one.
  bool Next() {
    if (next_ == text_.npos) return false;
    start_ = next_;
    const auto end = text_.find(kCrLf, start_);
    line_ = text_.substr(start_, end - start_);
    next_ = end == text_.npos ? end : end + kCrLf.size();
    return true;
  }
  [[nodiscard]] std::u16string_view line() const { return line_; }
  [[nodiscard]] std::size_t start() const { return start_; }
  [[nodiscard]] std::size_t next() const { return next_; }

 private:
  std::u16string_view text_;
  std::u16string_view line_;
  std::size_t start_ = 0;
  std::size_t next_;
};

// "End Type" at the line's very start, one blank between, nothing behind.
bool EndsRecord(std::u16string_view line) {
  constexpr std::u16string_view kEndType = u"end type";
  return line.size() == kEndType.size() && EqualIgnoringCase(line, kEndType);
}

class Parser {
 public:
  explicit Parser(const SourceText& source)
      : source_(source), arena_(std::make_shared<TextArena>()) {
    for (auto& [names, items] : parsed_.lists) {
      names.Keep(arena_);
      items.Keep(arena_);
    }
  }

  ParsedItems Run() {
    if (source_.text.empty()) return std::move(parsed_);
    for (LineCursor lines(source_.text, 0); lines.Next();) {
      ++line_number_;
      const auto declaration = DeclarationStart(lines.line());
      if (const auto kind = DeclarationKind(declaration)) Read(*kind, declaration, lines);
    }
    return std::move(parsed_);
  }

 private:
  void Read(Kind kind, std::u16string_view declaration, const LineCursor& line) {
    line_ = &line;
    declaration_.assign(declaration);
    std::ranges::replace(declaration_, u'\t', u' ');
    SplitWords();
    switch (kind) {
      case Kind::kConst:
        return ReadConst();
      case Kind::kDeclare:
        return ReadDeclare();
      case Kind::kType:
        return ReadType();
    }
  }

  void SplitWords() { words_ = Split(declaration_, u' '); }

  void ReadConst() {
    if (words_.size() < 2) return Skip(SkipReason::kTooFewWords);
    if (const auto as = declaration_.find(u"As"); as != declaration_.npos) {
      auto rebuilt = std::u16string(words_[0]);
      rebuilt.append(u" ").append(words_[1]).append(u" ").append(declaration_, as);
      declaration_ = std::move(rebuilt);
      SplitWords();
    }
    if (words_.size() < 3) return Skip(SkipReason::kTooFewWords);
    if (words_[2] != u"As") return AddConst({}, 3);
    if (words_.size() < 4) return Skip(SkipReason::kTooFewWords);
    AddConst(words_[3], 5);
  }

  void AddConst(std::u16string_view type, int blanks_before_value) {
    item_.assign(type);
    item_ += kValueSeparator;
    item_ += RestAfterBlank(NormalizeLine(declaration_), blanks_before_value);
    Add(Kind::kConst, words_[1]);
  }

  void ReadDeclare() {
    if (words_.size() < 2) return Skip(SkipReason::kTooFewWords);
    const bool is_sub = EqualIgnoringCase(words_[1], u"sub");
    if (!is_sub && !EqualIgnoringCase(words_[1], u"function")) return;
    if (words_.size() < 3) return Skip(SkipReason::kTooFewWords);
    item_.assign(1, is_sub ? kSubMarker : kFunctionMarker);
    item_ += RestAfterBlank(NormalizeLine(declaration_), 4);
    Add(Kind::kDeclare, words_[2]);
  }

  void ReadType() {
    if (words_.size() < 2) return Skip(SkipReason::kTooFewWords);
    item_.assign(RestAfterBlank(NormalizeLine(declaration_), 2));
    item_ += kMembersSeparator;
    for (LineCursor member(source_.text, line_->next()); member.Next();) {
      if (EndsRecord(member.line())) break;
      item_ += NormalizeLine(member.line());
      item_ += kMemberSeparator;
    }
    item_.pop_back();
    Add(Kind::kType, words_[1]);
  }

  void Add(Kind kind, std::u16string_view name) {
    if (name.empty()) return Skip(SkipReason::kNoName);
    auto& [names, items] = parsed_.lists[static_cast<std::size_t>(kind)];
    names.AddKept(arena_->Store(name));
    items.AddKept(arena_->Store(item_));
  }

  void Skip(SkipReason reason) {
    parsed_.skipped.push_back(
        {line_number_ + source_.JoinsUpTo(line_->start()), std::u16string(line_->line()), reason});
  }

  const SourceText& source_;
  std::shared_ptr<TextArena> arena_;
  ParsedItems parsed_;
  std::size_t line_number_ = 0;             // 1-based, continued lines counted once
  const LineCursor* line_ = nullptr;        // the line that begins the declaration
  std::u16string declaration_;              // without scope words, tabs as blanks
  std::vector<std::u16string_view> words_;  // of declaration_
  std::u16string item_;                     // the item string being built
};

}  // namespace

std::string_view ReasonText(SkipReason reason) {
  switch (reason) {
    case SkipReason::kTooFewWords:
      return "too few words for a declaration";
    case SkipReason::kNoName:
      return "no name where it is expected";
  }
  return {};
}

ParsedItems ParseDeclarations(SourceText source) {
  JoinContinuedLines(source);
  return Parser(source).Run();
}

}  // namespace declarium
