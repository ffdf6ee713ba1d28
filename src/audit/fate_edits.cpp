#include "audit/fate_edits.h"

#include <algorithm>

#include "text/text.h"

namespace declarium::audit {

std::vector<LineEdit> EditsOf(std::size_t module, const ModuleLines& lines,
                              const std::vector<FatedDeclaration>& declarations) {
  std::vector<RemovedLines> declared;
  std::vector<RemovedLines> removed;
  std::vector<LineEdit> edits;
  for (const auto& [declaration, does, replacement] : declarations) {
    const RemovedLines own{declaration->place.line, declaration->end_line};
    declared.push_back(own);
    switch (does) {
      case Fate::Does::kStays:
        break;
      case Fate::Does::kGoes:
      case Fate::Does::kGoesForAnother:
        removed.push_back(own);
        break;
      case Fate::Does::kBecomesPublic:
      case Fate::Does::kReplaced:
        edits.push_back({module, own.first, own.last - own.first + 1, replacement});
        break;
    }
  }
  if (!removed.empty()) {
    const auto gone = EditsToRemove(module, lines, removed, declared);
    edits.insert(edits.end(), gone.begin(), gone.end());
  }
  std::ranges::sort(edits, {}, &LineEdit::line);
  return edits;
}

std::u16string PublicLines(const vb::Declaration& declaration, const ModuleLines& lines) {
  constexpr std::u16string_view kPrivateWord = u"Private";
  const auto line = lines.At(declaration.place.line);
  const auto indent = declaration.place.offset - lines.Start(declaration.place.line);
  auto rest = line.substr(indent);
  const bool has_word = EqualIgnoringCase(rest.substr(0, kPrivateWord.size()), kPrivateWord);
  if (has_word) rest.remove_prefix(kPrivateWord.size());
  auto text = std::u16string(line.substr(0, indent));
  text.append(has_word ? u"Public" : u"Public ").append(rest);
  for (auto next = declaration.place.line + 1; next <= declaration.end_line; ++next)
    text.append(kCrLf).append(lines.At(next));
  return text;
}

}  // namespace declarium::audit
