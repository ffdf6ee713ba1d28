#include "plan/declaration_section.h"

#include <algorithm>

#include "text/text.h"
#include "vb/statement.h"

namespace declarium::plan {
namespace {

std::u16string_view SectionText(std::u16string_view text, const vb::Module& module) {
  if (module.procedures.empty()) return text;
  const auto& place = module.procedures.front().place;
  return text.substr(0, place.offset - (place.column - 1));
}

std::uint32_t LineEndsIn(std::u16string_view text) {
  std::uint32_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (text[i] == u'\n' || (text[i] == u'\r' && !text.substr(i + 1).starts_with(u'\n'))) ++count;
  return count;
}

bool IsDefLine(const vb::Statement& statement) {
  constexpr std::u16string_view kWords[] = {
      u"defbool", u"defbyte", u"defint", u"deflng", u"defcur", u"defsng",    u"defdbl",
      u"defdec",  u"defdate", u"defstr", u"defobj", u"defvar", u"deflnglng", u"deflngptr"};
  const auto& first = statement.tokens.front();
  return std::ranges::any_of(kWords, [&](auto word) { return first.IsWord(word); });
}

}  // namespace

std::optional<Kind> KindOf(const vb::Declaration& declaration) {
  if (declaration.As<vb::Constant>() != nullptr) return Kind::kConst;
  if (declaration.As<vb::External>() != nullptr) return Kind::kDeclare;
  if (declaration.As<vb::Record>() != nullptr) return Kind::kType;
  return std::nullopt;
}

DeclarationSection::DeclarationSection(std::u16string_view text, const vb::Module& module)
    : text_(SectionText(text, module)),
      module_(module),
      lines_count_(module.declarations_end),
      first_open_(module.header_end),
      lines_(lines_count_ + 2, Line::kBlank),
      is_attribute_(lines_count_ + 2),
      is_open_(lines_count_ + 1, true),
      of_(lines_count_ + 2) {
  ReadLines();
  FindOpenPlaces();
  default_ = FindDefault();
}

void DeclarationSection::Join(std::uint32_t first, std::uint32_t last) {
  for (auto line = first; line < last && line <= lines_count_; ++line) is_open_[line] = false;
}

void DeclarationSection::ReadLines() {
  const auto mark = [this](std::uint32_t first, std::uint32_t last, Line as) {
    for (auto line = first; line <= last && line <= lines_count_; ++line)
      lines_[line] = std::max(lines_[line], as);
    Join(first, last);
  };
  vb::StatementReader reader(text_);
  vb::Statement statement;
  while (reader.Next(statement)) {
    if (const auto& comment = statement.comment) {
      const auto line = comment->place.line;
      mark(line, line + LineEndsIn(comment->text), Line::kComment);
    }
    if (statement.tokens.empty()) continue;
    const auto& first = statement.tokens.front();
    const auto last = statement.tokens.back().place.line;
    mark(first.place.line, last, Line::kCode);
    if (first.place.line > lines_count_) continue;
    is_attribute_[first.place.line] = first.IsWord(u"attribute");
    if (first.IsWord(u"option") || IsDefLine(statement)) first_open_ = std::max(first_open_, last);
  }
  for (const auto& declaration : module_.declarations) {
    if (declaration.place.line > lines_count_) break;
    mark(declaration.place.line, declaration.end_line, Line::kCode);
    if (declaration.condition != 0) continue;
    const auto last = std::min(declaration.end_line, lines_count_);
    of_[declaration.place.line] = KindOf(declaration);
    of_[last] = KindOf(declaration);
  }
}

void DeclarationSection::FindOpenPlaces() {
  for (std::size_t i = 0; i < module_.branch_lines.size(); ++i) {
    if (!module_.branch_lines[i].is_inside) continue;
    const bool has_next = i + 1 < module_.branch_lines.size();
    Join(module_.branch_lines[i].line,
         has_next ? module_.branch_lines[i + 1].line : lines_count_ + 1);
  }
  // The attributes behind the header belong to it.
  while (first_open_ < lines_count_ && is_attribute_[first_open_ + 1]) ++first_open_;
  for (std::uint32_t place = 0; place <= lines_count_; ++place)
    if (place < first_open_ || is_attribute_[place + 1]) is_open_[place] = false;
  if (module_.procedures.empty()) return;
  for (auto line = lines_count_; line > 0 && lines_[line] == Line::kComment; --line)
    is_open_[line] = false;
}

std::uint32_t DeclarationSection::FindDefault() const {
  auto last = lines_count_;
  while (last > 0 && lines_[last] != Line::kCode) --last;
  if (last > module_.header_end) return Nearest(last, 0, kNoLimit);
  // What stands on top of a module without declarations is about the module.
  auto line = first_open_;
  while (line < lines_count_ && lines_[line + 1] == Line::kComment) ++line;
  return Nearest(line, 0, kNoLimit);
}

std::uint32_t DeclarationSection::Nearest(std::uint32_t place, std::uint32_t low,
                                          std::uint32_t high) const {
  const auto from = std::clamp(place, low, std::max(low, std::min(high, lines_count_)));
  for (auto above = std::min(from, lines_count_) + 1; above-- > low;)
    if (is_open_[above]) return above;
  for (auto below = from; below <= lines_count_; ++below)
    if (is_open_[below]) return below;
  for (auto above = std::min(low, lines_count_) + 1; above-- > 0;)
    if (is_open_[above]) return above;
  return std::min(first_open_, lines_count_);
}

std::uint32_t DeclarationSection::PlaceFor(Kind kind, std::uint32_t low, std::uint32_t high) const {
  const auto last = std::min(high, lines_count_);
  for (auto line = last + 1; line-- > low;)
    if (line > 0 && is_open_[line] && of_[line] == kind) return line;
  return Nearest(default_, low, high);
}

bool DeclarationSection::IsBlank(std::uint32_t line) const {
  if (line == 0) return true;
  return line <= lines_count_ ? lines_[line] == Line::kBlank : module_.procedures.empty();
}

bool DeclarationSection::IsOf(Kind kind, std::uint32_t line) const {
  return line <= lines_count_ && of_[line] == kind;
}

}  // namespace declarium::plan
