#include "import/reading.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "import/canonical_item.h"
#include "import/item_agreement.h"
#include "import/line_reader.h"
#include "library/file_format.h"
#include "library/item.h"
#include "text/text.h"
#include "vb/definitions.h"
#include "vb/module.h"

namespace declarium {
namespace {

using vb::TokenKind;

// The lines from where a statement begins to the end of the line that `end` stands in.
std::u16string_view LinesOf(std::u16string_view source, const vb::Place& start, std::size_t end) {
  const auto line_start = start.offset - (start.column - 1);
  vb::Tokenizer tokens(source, {end, 1, 1});
  auto token = tokens.Next();
  while (token.kind != TokenKind::kLineEnd && token.kind != TokenKind::kEnd) token = tokens.Next();
  return source.substr(line_start, token.place.offset - line_start);
}

// The comment behind `end` on its line, empty without one.
std::u16string_view CommentBehind(std::u16string_view source, std::size_t end) {
  const auto token = vb::Tokenizer(source, {end, 1, 2}).NextSignificant();
  return token.kind == TokenKind::kComment ? token.text : std::u16string_view();
}

ParsedItems LiteralItems(std::u16string_view lines) {
  auto source = ReadSource(std::u16string(lines));
  JoinContinuedLines(source);
  return ParseDeclarations(std::move(source));
}

Kind KindOf(const vb::Declaration& declaration) {
  if (declaration.As<vb::Constant>() != nullptr) return Kind::kConst;
  return declaration.As<vb::External>() != nullptr ? Kind::kDeclare : Kind::kType;
}

// The lower, the sooner a declaration is kept of several of its name.
enum class Rank { kCompiled, kUnknown, kLeftOut, kLocal };

struct Entry {
  Kind kind;
  std::u16string name;
  std::u16string item;
  vb::Place place;
  Rank rank;
  bool differs;
  bool is_literally_read;  // whether the literal rules make an item here at all
  Change change = Change::kNone;
  std::optional<SkippedLine> left_out = {};  // why no library can keep it
  std::vector<LostCharacter> replaced = {};  // in its comments
};

// A part of the source.
struct Part {
  vb::Place start;
  std::size_t end;  // 0-based, behind its last unit
};

// Tells the names of the kinds apart, without regard to case.
std::u16string KeyOf(Kind kind, std::u16string_view name) {
  std::u16string key(1, static_cast<char16_t>(u'0' + KindCode(kind)));
  constexpr std::u16string_view kTypeCharacters = u"%&!#@$^";
  if (!name.empty() && kTypeCharacters.contains(name.back())) name.remove_suffix(1);
  return key + LowerCase(name);
}

class Reader {
 public:
  Reader(std::u16string_view source, const ParsedItems& literal)
      : source_(source),
        literal_(literal),
        module_(vb::ReadModule(source)),
        branches_(vb::BranchesOf(module_, vb::Target::kVb6)),
        definitions_(vb::Target::kVb6),
        is_keepable_(IsKeepable(source)) {}

  SourceReading Read() {
    definitions_.Add(module_);
    for (const auto& declaration : module_.declarations) ReadDeclaration(declaration);
    for (const auto& error : module_.errors) ReadRefused(error);
    std::ranges::stable_sort(entries_, {}, [](const Entry& entry) { return entry.place.offset; });
    FindBest();
    for (const auto& entry : entries_) Take(entry);
    TellOfLiteralOnly();
    TakeSkipped();
    ReportRefused();
    std::ranges::stable_sort(reading_.differences, {}, &Difference::line);
    std::ranges::stable_sort(reading_.items.skipped, {}, &SkippedLine::number);
    OrderByPlace(reading_.items.replaced);
    return std::move(reading_);
  }

 private:
  [[nodiscard]] Rank RankOf(vb::Scope scope, std::uint32_t condition) const {
    if (scope == vb::Scope::kLocal) return Rank::kLocal;
    switch (branches_[condition]) {
      case vb::Branch::kCompiled:
        return Rank::kCompiled;
      case vb::Branch::kUnknown:
        return Rank::kUnknown;
      case vb::Branch::kLeftOut:
        return Rank::kLeftOut;
    }
    return Rank::kCompiled;
  }

  void ReadDeclaration(const vb::Declaration& declaration) {
    if (declaration.As<vb::Enumeration>() != nullptr) return ReadEnumeration(declaration);
    const auto kind = KindOf(declaration);
    const auto end = declaration.place.offset + declaration.text.size();
    const auto literal = LiteralItems(LinesOf(source_, declaration.place, end));
    const auto& [names, items] = literal[kind];
    const bool is_literally_read = !names.empty();
    const bool agrees = is_literally_read && Says(kind, names[0], items[0], declaration);
    Entry entry{kind,
                {},
                {},
                declaration.place,
                RankOf(declaration.scope, declaration.condition),
                !agrees,
                is_literally_read};
    entry.name = agrees ? names[0] : declaration.name;
    entry.item = agrees ? std::u16string(items[0]) : Canonical(declaration, end);
    const auto* const external = declaration.As<vb::External>();
    if (external != nullptr && external->is_ptr_safe) entry.change = Change::kPtrSafeDropped;
    Add(std::move(entry), PartOf(declaration, end));
  }

  // What of the source the item of a declaration is made of.
  [[nodiscard]] Part PartOf(const vb::Declaration& declaration, std::size_t end) const {
    if (declaration.As<vb::Record>() != nullptr) return {declaration.place, end};
    const auto* const constant = declaration.As<vb::Constant>();
    const auto& start = constant != nullptr ? declaration.name_place : declaration.place;
    if (constant != nullptr && OffsetBehind(constant->value) != end)
      return {start, OffsetBehind(constant->value)};
    const auto comment = CommentBehind(source_, end);
    return {start, comment.empty() ? end : OffsetBehind(comment)};
  }

  // Where the piece of the source ends.
  [[nodiscard]] std::size_t OffsetBehind(std::u16string_view piece) const {
    return static_cast<std::size_t>(piece.data() + piece.size() - source_.data());
  }

  // Adds the entry that is made of this part of the source, after a look for what no library can
  // keep in it.
  void Add(Entry entry, const Part& part) {
    if (!is_keepable_ && !IsKeepable(TextOf(part))) TakeLosses(entry, part);
    entries_.push_back(std::move(entry));
  }

  [[nodiscard]] std::u16string_view TextOf(const Part& part) const {
    return source_.substr(part.start.offset, part.end - part.start.offset);
  }

  void TakeLosses(Entry& entry, const Part& part) const {
    for (const auto& [position, length, loss] : FindUnkeepableCharacters(TextOf(part))) {
      auto lost = LostAt(source_, part.start, part.start.offset + position, length);
      if (loss != Loss::kInComment) {
        entry.left_out = {entry.place.line, LineOf(entry.place), SkipReasonOf(loss),
                          std::move(lost)};
        return;
      }
      entry.replaced.push_back(std::move(lost));
    }
    ReplaceForeignCharacters(entry.item);
  }

  // The line that the place stands in, continued lines joined.
  [[nodiscard]] std::u16string LineOf(const vb::Place& place) const {
    auto line = ReadSource(std::u16string(LinesOf(source_, place, place.offset)));
    JoinContinuedLines(line);
    return std::move(line.text);
  }

  [[nodiscard]] std::u16string Canonical(const vb::Declaration& declaration,
                                         std::size_t end) const {
    const auto comment = CommentBehind(source_, end);
    if (const auto* const constant = declaration.As<vb::Constant>()) {
      // Behind several constants the comment is the last one's.
      const auto value_end = constant->value.data() + constant->value.size();
      return CanonicalConst(*constant, value_end == source_.data() + end ? comment : u"");
    }
    if (const auto* const external = declaration.As<vb::External>())
      return CanonicalDeclare(*external, comment);
    return CanonicalType(declaration);
  }

  void ReadEnumeration(const vb::Declaration& declaration) {
    std::u16string_view before;
    auto known = declaration.place.offset;
    for (const auto& member : declaration.As<vb::Enumeration>()->members) {
      const auto start = member.place.offset;
      if (!member.value.empty()) known = start;
      // What comes behind a member that the language refuses would count from another.
      if (HasErrorBetween(known, start)) continue;
      std::u16string item = u"Long";
      item += kValueSeparator;
      item += MemberValue(member, before);
      const auto end = OffsetBehind(member.value.empty() ? member.name : member.value);
      // An item that names the member before is made of that too.
      const auto& from = IsKeepable(item) ? member.place : declaration.place;
      Add({Kind::kConst, std::u16string(member.name), std::move(item), member.place,
           RankOf(declaration.scope, member.condition), true, false, Change::kEnumMember},
          {from, end});
      before = member.name;
    }
  }

  [[nodiscard]] bool HasErrorBetween(std::size_t start, std::size_t end) const {
    return std::ranges::any_of(module_.errors, [&](const vb::SyntaxError& error) {
      return error.place.offset >= start && error.place.offset < end;
    });
  }

  // The expression as it is written; the number where there is none or where it names a member by
  // its enumeration, which a library does not have.
  std::u16string MemberValue(const vb::EnumMember& member, std::u16string_view before) {
    const bool can_stay = !member.value.empty() && !member.value.contains(u'.');
    if (can_stay) return CanonicalText(member.value);
    const auto value = definitions_.ValueOf(member.name);
    if (value) return FromUtf8(std::to_string(value->whole));
    if (!member.value.empty()) return CanonicalText(member.value);
    return before.empty() ? u"0" : std::u16string(before) + u" + 1";
  }

  // What the language would refuse is stored as the literal rules read it.
  void ReadRefused(const vb::SyntaxError& error) {
    const auto literal = LiteralItems(LinesOf(source_, error.statement, error.place.offset));
    for (const auto kind : {Kind::kConst, Kind::kDeclare}) {
      const auto& [names, items] = literal[kind];
      for (std::size_t i = 0; i < names.size(); ++i) {
        const bool is_read = std::ranges::any_of(entries_, [&](const Entry& entry) {
          return entry.kind == kind && entry.place == error.statement && entry.name == names[i];
        });
        if (is_read) continue;
        Add({kind, std::u16string(names[i]), std::u16string(items[i]), error.statement,
             Rank::kCompiled, false, true},
            StatementOf(error));
      }
    }
  }

  // From where the refused statement begins to the end of its line.
  [[nodiscard]] Part StatementOf(const vb::SyntaxError& error) const {
    return {error.statement, OffsetBehind(LinesOf(source_, error.statement, error.place.offset))};
  }

  void FindBest() {
    for (const auto& entry : entries_) {
      const auto [best, is_new] = best_.try_emplace(KeyOf(entry.kind, entry.name), &entry);
      if (!is_new && entry.rank < best->second->rank) best->second = &entry;
    }
  }

  void Take(const Entry& entry) {
    const auto& best = *best_.at(KeyOf(entry.kind, entry.name));
    const bool is_kept = entry.rank == best.rank;
    if (entry.left_out) {
      if (is_kept) reading_.items.skipped.push_back(*entry.left_out);
      return;
    }
    // A declaration that is dropped and that the literal rules would have stored may have been the
    // one that survived there.
    if (entry.differs ? is_kept : !is_kept && entry.item != best.item) Tell(entry);
    if (!is_kept) return;
    auto& [names, items] = reading_.items.lists[static_cast<std::size_t>(KindCode(entry.kind))];
    names.Add(entry.name);
    items.Add(entry.item);
    std::ranges::copy(entry.replaced, std::back_inserter(reading_.items.replaced));
  }

  void Tell(const Entry& entry) {
    reading_.differences.push_back(
        {entry.kind, entry.name, entry.place.line, entry.place.column, entry.change});
  }

  // Items that the literal rules make of lines that declare nothing.
  void TellOfLiteralOnly() {
    std::unordered_set<std::u16string> told;
    for (const auto kind : kKinds) {
      for (const auto name : literal_[kind].names) {
        const auto key = KeyOf(kind, name);
        if (best_.contains(key) || !told.insert(key).second) continue;
        const auto place = PlaceOf(name);
        reading_.differences.push_back({kind, std::u16string(name), place.line, place.column});
      }
    }
  }

  // Where the first word of the name stands.
  [[nodiscard]] vb::Place PlaceOf(std::u16string_view name) const {
    const auto word = vb::Tokenizer(name).NextSignificant().text;
    vb::Tokenizer tokens(source_);
    for (auto token = tokens.Next(); token.kind != TokenKind::kEnd; token = tokens.Next())
      if (token.text == word) return token.place;
    return {};
  }

  // Lines that the literal rules cannot read and the language can are not skipped.
  void TakeSkipped() {
    std::unordered_set<std::size_t> read_lines;
    for (const auto& entry : entries_) read_lines.insert(entry.place.line);
    for (const auto& line : literal_.skipped)
      if (!read_lines.contains(line.number)) reading_.items.skipped.push_back(line);
  }

  // The separators of a library's file are nothing in the language, so that it refuses what holds
  // one outside of texts and comments, also what the literal rules would not read.
  void ReportRefused() {
    for (const auto& error : module_.errors) {
      const auto statement = StatementOf(error);
      if (IsStorable(TextOf(statement))) continue;
      Entry entry{{}, {}, {}, error.statement, {}, {}, {}};
      TakeLosses(entry, statement);
      if (entry.left_out && !IsReported(*entry.left_out->character))
        reading_.items.skipped.push_back(*std::move(entry.left_out));
    }
  }

  [[nodiscard]] bool IsReported(const LostCharacter& lost) const {
    return std::ranges::any_of(reading_.items.skipped, [&](const SkippedLine& line) {
      return line.character && line.character->line == lost.line &&
             line.character->column == lost.column;
    });
  }

  std::u16string_view source_;
  const ParsedItems& literal_;
  vb::Module module_;
  std::vector<vb::Branch> branches_;
  vb::Definitions definitions_;
  bool is_keepable_;  // the whole source
  std::vector<Entry> entries_;
  std::unordered_map<std::u16string, const Entry*> best_;  // by kind and name
  SourceReading reading_;
};

}  // namespace

std::string_view ChangeText(Change change) {
  switch (change) {
    case Change::kNone:
      return {};
    case Change::kPtrSafeDropped:
      return "PtrSafe is dropped";
    case Change::kEnumMember:
      return "a member of an Enum becomes a constant";
  }
  return {};
}

SourceReading ReadAsVisualBasic(std::u16string_view source, const ParsedItems& literal) {
  return Reader(source, literal).Read();
}

}  // namespace declarium
