#include "vb/name.h"

#include <algorithm>
#include <set>

namespace declarium::vb {
namespace {

const std::set<std::string, std::less<>>& ReservedWords() {
  static const std::set<std::string, std::less<>> words = {
      "abs",       "addressof",  "alias",   "and",        "any",        "array",      "as",
      "attribute", "boolean",    "byref",   "byte",       "byval",      "call",       "case",
      "cbool",     "cbyte",      "ccur",    "cdate",      "cdbl",       "cdec",       "cdecl",
      "cint",      "circle",     "clng",    "close",      "const",      "csng",       "cstr",
      "currency",  "cvar",       "cverr",   "date",       "debug",      "decimal",    "declare",
      "defbool",   "defbyte",    "defcur",  "defdate",    "defdbl",     "defdec",     "defint",
      "deflng",    "defobj",     "defsng",  "defstr",     "defvar",     "dim",        "do",
      "doevents",  "double",     "each",    "else",       "elseif",     "empty",      "end",
      "endif",     "enum",       "eqv",     "erase",      "error",      "event",      "exit",
      "explicit",  "false",      "fix",     "for",        "friend",     "function",   "get",
      "global",    "gosub",      "goto",    "if",         "imp",        "implements", "in",
      "input",     "inputb",     "int",     "integer",    "is",         "lbound",     "len",
      "lenb",      "let",        "lib",     "like",       "line",       "lock",       "long",
      "loop",      "lset",       "me",      "mid",        "midb",       "mod",        "new",
      "next",      "not",        "nothing", "null",       "object",     "on",         "open",
      "option",    "optional",   "or",      "paramarray", "preserve",   "print",      "private",
      "property",  "pset",       "public",  "put",        "raiseevent", "redim",      "rem",
      "resume",    "return",     "rset",    "scale",      "seek",       "select",     "set",
      "sgn",       "shared",     "single",  "spc",        "static",     "step",       "stop",
      "string",    "sub",        "tab",     "then",       "to",         "true",       "type",
      "typeof",    "ubound",     "unlock",  "until",      "variant",    "wend",       "while",
      "with",      "withevents", "write",   "xor"};
  return words;
}

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool IsNamePart(char c) {
  return IsLetter(c) || (c >= '0' && c <= '9') || c == '_';
}

}  // namespace

std::string Lower(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return result;
}

bool IsReservedWord(std::string_view word) {
  return ReservedWords().contains(Lower(word));
}

bool IsReservedWord(std::u16string_view word) {
  constexpr std::size_t kLongest = 10;  // "addressof" and "implements" are among the longest
  if (word.size() > kLongest || std::ranges::any_of(word, [](char16_t c) { return c > 0x7F; }))
    return false;
  std::string narrow;
  for (const char16_t c : word) narrow += static_cast<char>(c);
  return IsReservedWord(narrow);
}

bool IsLegalName(std::string_view name) {
  constexpr std::size_t kLongestName = 255;
  return !name.empty() && name.size() <= kLongestName && IsLetter(name.front()) &&
         std::ranges::all_of(name, IsNamePart) && !IsReservedWord(name);
}

std::string LegalName(std::string_view name) {
  std::string result(name.substr(std::min(name.find_first_not_of('_'), name.size())));
  if (IsReservedWord(result)) result += '_';
  return IsLegalName(result) ? result : std::string();
}

}  // namespace declarium::vb
