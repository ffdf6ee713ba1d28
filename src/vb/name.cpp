#include "vb/name.h"

#include <algorithm>
#include <set>

#include "text/text.h"

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

constexpr std::u16string_view kRefusedNames[] = {
    u"addressof",  u"and",        u"any",      u"as",      u"boolean", u"byref",    u"byte",
    u"byval",      u"call",       u"case",     u"close",   u"const",   u"currency", u"declare",
    u"defbool",    u"defbyte",    u"defcur",   u"defdate", u"defdbl",  u"defint",   u"deflng",
    u"defobj",     u"defsng",     u"defstr",   u"defvar",  u"dim",     u"do",       u"double",
    u"each",       u"else",       u"elseif",   u"empty",   u"end",     u"endif",    u"enum",
    u"eqv",        u"erase",      u"event",    u"exit",    u"false",   u"for",      u"friend",
    u"function",   u"get",        u"global",   u"gosub",   u"goto",    u"if",       u"imp",
    u"implements", u"in",         u"input",    u"integer", u"is",      u"let",      u"like",
    u"lock",       u"long",       u"loop",     u"lset",    u"mod",     u"new",      u"next",
    u"not",        u"nothing",    u"null",     u"on",      u"open",    u"option",   u"optional",
    u"or",         u"paramarray", u"preserve", u"print",   u"private", u"public",   u"put",
    u"raiseevent", u"redim",      u"rem",      u"resume",  u"return",  u"rset",     u"seek",
    u"select",     u"set",        u"shared",   u"single",  u"spc",     u"static",   u"stop",
    u"string",     u"sub",        u"tab",      u"then",    u"to",      u"true",     u"type",
    u"typeof",     u"unlock",     u"until",    u"variant", u"wend",    u"while",    u"with",
    u"withevents", u"write",      u"xor"};
static_assert(std::ranges::is_sorted(kRefusedNames));

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

bool IsRefusedAsName(std::u16string_view word) noexcept {
  constexpr std::size_t kLongest = 10;
  char16_t lowered[kLongest];
  if (word.size() > kLongest) return false;
  const auto* const end =
      std::ranges::transform(word, lowered, [](char16_t unit) { return LowerCase(unit); }).out;
  return std::ranges::binary_search(kRefusedNames, std::u16string_view(lowered, end));
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
