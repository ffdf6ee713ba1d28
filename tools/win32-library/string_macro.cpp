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

// Appends what a macro of the name stands for; false when there is none or it is no text.
bool AppendMacro(const std::string& name, const MacroLookup& macros, int depth, std::string& text);

bool AppendText(const std::vector<Token>& tokens, const MacroLookup& macros, int depth,
                std::string& text) {
  bool any = false;
  bool ansi = false;  // __MINGW_NAME_AW(X) is XA
  for (const Token& token : tokens) {
    ansi = ansi || token.text == "__MINGW_NAME_AW";
    if (token.text == "(" || token.text == ")" || token.text == "__MINGW_NAME_AW" ||
        IsTextMacro(token.text))
      continue;
    any = true;
    const bool appended =
        IsStringLiteral(token)
            ? AppendLiteral(token.text, text)
            : token.kind == TokenKind::kIdentifier &&
                  AppendMacro(ansi ? token.text + "A" : token.text, macros, depth, text);
    if (!appended) return false;
    ansi = false;
  }
  return any;
}

bool AppendMacro(const std::string& name, const MacroLookup& macros, int depth, std::string& text) {
  const std::vector<Token>* macro = depth > 0 ? macros(name) : nullptr;
  return macro != nullptr && AppendText(*macro, macros, depth - 1, text);
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
