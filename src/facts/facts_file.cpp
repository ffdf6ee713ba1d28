#include "facts/facts_file.h"

#include <algorithm>
#include <array>
#include <string>

#include "text/text.h"

namespace declarium {
namespace {

constexpr std::string_view kFirstLine = "Declarium facts 1";

std::string_view WithoutReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// The first two fields of a line.
std::string_view KeyOf(std::string_view line) {
  const auto first = line.find('\t');
  return first == line.npos ? line : line.substr(0, line.find('\t', first + 1));
}

std::string_view LetterOf(Kind kind) {
  constexpr std::array<std::string_view, kKindCount> kLetters = {"c", "d", "t"};
  return kLetters[static_cast<std::size_t>(KindCode(kind))];
}

}  // namespace

std::filesystem::path FactsPathOf(std::filesystem::path library) {
  return library.replace_extension(".facts");
}

std::expected<FactsFile, Error> FactsFile::OpenBeside(const std::filesystem::path& library) {
  const auto path = FactsPathOf(library);
  auto file = ViewFile(path);
  if (!file) return std::unexpected(file.error());
  return Of(*std::move(file), path);
}

std::expected<FactsFile, Error> FactsFile::Of(FileView file, const std::filesystem::path& path) {
  const auto end = std::min(file.bytes.find('\n'), file.bytes.size());
  if (WithoutReturn(file.bytes.substr(0, end)) != kFirstLine) {
    return std::unexpected(Error{ErrorKind::kInvalidFormat, PathText(path), "is no facts file"});
  }
  FactsFile facts;
  facts.lines_ = file.bytes.substr(std::min(end + 1, file.bytes.size()));
  facts.file_ = std::move(file);
  return facts;
}

std::optional<RowFacts> FactsFile::Find(Kind kind, std::u16string_view name) const {
  const auto line = LineOf(LetterOf(kind), ToUtf8(LowerCase(name)));
  if (line.empty()) return std::nullopt;
  return ReadRowFacts(line);
}

std::optional<Form64> FactsFile::FindForm64(Kind kind, std::u16string_view name) const {
  const auto line = LineOf(kind == Kind::kDeclare ? "D" : "T", ToUtf8(LowerCase(name)));
  if (line.empty()) return std::nullopt;
  return ReadForm64(line);
}

ConstantSetFacts FactsFile::FindSet(std::string_view name) const {
  return ReadConstantSetFacts(LineOf("s", name));
}

std::string_view FactsFile::LineOf(std::string_view letter, std::string_view name) const {
  const auto wanted = std::string(letter) + '\t' + std::string(name);
  // Lines that begin before `low` are smaller, those that begin at `high` or behind are larger.
  std::size_t low = 0;
  std::size_t high = lines_.size();
  while (low < high) {
    const auto before = lines_.substr(0, low + (high - low) / 2).rfind('\n');
    const auto begin = before == lines_.npos ? 0 : before + 1;
    const auto end = std::min(lines_.find('\n', begin), lines_.size());
    const auto line = WithoutReturn(lines_.substr(begin, end - begin));
    const auto key = KeyOf(line);
    if (key == wanted) return line;
    if (key < wanted) {
      low = std::min(end + 1, lines_.size());
    } else {
      high = begin;
    }
  }
  return {};
}

}  // namespace declarium
