#include "audit/library_form.h"

#include "source/item_text.h"
#include "text/text.h"
#include "vb/token.h"

namespace declarium::audit {
namespace {

// "Private", "Public" or "Global"; empty without one.
std::u16string_view ScopeWord(std::u16string_view declaration) {
  const auto token = vb::Tokenizer(declaration).Next();
  const bool is_scope =
      token.IsWord(u"private") || token.IsWord(u"public") || token.IsWord(u"global");
  return is_scope ? token.text : std::u16string_view();
}

std::u16string FormText(const vb::Declaration& replaced, const ItemView& item) {
  std::u16string text;
  AppendItemText(item.kind, item.name, item.item, ScopeWord(replaced.text), text);
  return text;
}

// Whether nothing or a comment stands there.
bool IsTail(std::u16string_view text) {
  const auto start = text.find_first_not_of(u" \t");
  return start == text.npos || (text[start] == u'\'' && text.find(u'\n') == text.npos);
}

}  // namespace

LibraryForm::LibraryForm(const vb::Declaration& replaced, const ItemView& item)
    : text_(FormText(replaced, item)), parsed_(vb::ReadModule(text_)) {}

const vb::Declaration* LibraryForm::Declared() const {
  if (!parsed_.errors.empty() || parsed_.declarations.size() != 1) return nullptr;
  const auto& declaration = parsed_.declarations.front();
  const bool is_first = declaration.place.offset == 0;
  const bool is_all = is_first && IsTail(Source().substr(declaration.text.size()));
  return is_all ? &declaration : nullptr;
}

std::u16string_view LibraryForm::Text() const {
  const auto* const declaration = Declared();
  return declaration != nullptr ? declaration->text : Source();
}

std::u16string LinesWith(std::u16string_view form, const vb::Declaration& declaration,
                         std::u16string_view module_text, const ModuleLines& lines) {
  const auto begin = declaration.place.offset;
  const auto first = lines.Start(declaration.place.line);
  const auto last = lines.Start(declaration.end_line);
  const auto indent = module_text.substr(first, begin - first);
  const auto behind = lines.At(declaration.end_line).substr(begin + declaration.text.size() - last);
  std::u16string text;
  for (const auto line : Split(form, kCrLf)) {
    if (!text.empty()) text += kCrLf;
    text.append(indent).append(line);
  }
  return text.append(behind);
}

}  // namespace declarium::audit
