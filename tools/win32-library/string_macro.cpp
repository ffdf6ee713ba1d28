#include "string_macro.h"

#include <algorithm>

namespace declarium::win32_library {
namespace {

constexpr int kDeepestMacro = 16;

bool IsStringLiteral(const Token& token) {
  return token.kind == TokenKind::kLiteral && token.text.ends_with('"') &&
         (token.text.starts_with('"') || token.text.starts_with("L\""));
}

bool IsTextMacro(const std::string& name) {
  return name == "TEXT" || name == "__TEXT" || name == "_T" || name == "_TEXT" || name == "OLESTR";
}

// Appends the characters of a literal; false when one is escaped other than by \\ and \".
bool AppendLiteral(const std::string& literal, std::string& text) {
  const std::size_t begin = literal.find('"') + 1;
  for (std::size_t i = begin; i + 1 < literal.size(); ++i) {
    char c = literal[i];
    if (c == '\\') {
      c = literal[++i];
      if (c != '\\' && c != '"') return false;
    }
    if (c < ' ' || c > '~') return false;
    text += c;
  }
  return true;
}

bool AppendText(const std::vector<Token>& tokens, const MacroLookup& macros, int depth,
                std::string& text) {
  bool any = false;
  for (const Token& token : tokens) {
    if (token.text == "(" || token.text == ")" || IsTextMacro(token.text)) continue;
    any = true;
    if (IsStringLiteral(token)) {
      if (!AppendLiteral(token.text, text)) return false;
      continue;
    }
    const std::vector<Token>* macro =
        token.kind == TokenKind::kIdentifier && depth > 0 ? macros(token.text) : nullptr;
    if (macro == nullptr || !AppendText(*macro, macros, depth - 1, text)) return false;
  }
  return any;
}

}  // namespace

std::optional<std::string> StringOf(const std::vector<Token>& tokens, const MacroLookup& macros) {
  std::string text;
  if (!AppendText(tokens, macros, kDeepestMacro, text)) return std::nullopt;
  return text;
}

bool HoldsStringLiteral(const std::vector<Token>& tokens) {
  return std::ranges::any_of(tokens, IsStringLiteral);
}

}  // namespace declarium::win32_library
