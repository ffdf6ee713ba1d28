#include "check/library_check.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "check/check.h"
#include "check/known_libraries.h"
#include "check/library_source.h"
#include "library/library_file.h"
#include "source/item_text.h"
#include "text/text.h"
#include "vb/token.h"

namespace declarium::check {
namespace {

std::optional<FactsFile> FactsBeside(const std::filesystem::path& library) {
  auto facts = FactsFile::OpenBeside(library);
  if (!facts) return std::nullopt;
  return *std::move(facts);
}

// The name that stands where something was found, unless it is the item's own or none.
std::u16string PartAt(std::u16string_view text, const ItemView& item) {
  vb::Tokenizer tokens(text);
  const auto token = tokens.Next();
  const bool is_own = token.kind != vb::TokenKind::kName ||
                      EqualIgnoringCase(token.text, item.name) || token.IsWord(u"declare") ||
                      token.IsWord(u"const") || token.IsWord(u"type");
  return is_own ? std::u16string() : std::u16string(token.text);
}

std::u16string TextOf(const ItemView& item) {
  return ItemText(item.kind, item.name, item.item);
}

LibraryFinding Described(const Finding& finding, const LibrarySource& source,
                         const KnownLibraries& libraries) {
  const auto item = source.ItemAt(finding.place.offset);
  const auto text = TextOf(item);
  const auto same_name = libraries.Find(item.kind, item.name);
  auto known = same_name ? TextOf(*same_name) : text;
  return {.rule = finding.rule,
          .level = finding.level,
          .kind = item.kind,
          .name = std::u16string(item.name),
          .part = PartAt(source.Text().substr(finding.place.offset), item),
          .source = text,
          .mended = MendedLines(source.Text(), finding.edits),
          .known = known == text ? std::u16string() : std::move(known)};
}

}  // namespace

std::optional<std::vector<LibraryFinding>> CheckLibrary(
    const Library& library, const std::vector<std::filesystem::path>& against,
    const Progress& progress) {
  const int all = static_cast<int>(against.size()) + 1 + kStepsOfAModule;
  int done = 0;
  bool goes_on = true;
  const auto go_on = [&] { return goes_on = goes_on && progress(done++, all); };
  KnownLibraries known;
  for (const auto& path : against) {
    if (!go_on()) return std::nullopt;
    if (auto read = LoadLibraryFile(path)) known.Add(*std::move(read), FactsBeside(path));
  }
  if (!go_on()) return std::nullopt;
  const LibrarySource source(library);
  auto findings = Check(source.AsSubject(), known.AsReference(), {.go_on = go_on});
  if (!goes_on) return std::nullopt;
  std::ranges::stable_sort(findings, std::greater(), &Finding::level);
  std::vector<LibraryFinding> described;
  described.reserve(findings.size());
  for (const auto& finding : findings) described.push_back(Described(finding, source, known));
  return described;
}

}  // namespace declarium::check
