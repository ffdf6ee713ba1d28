#include "vb/name.h"

#include <algorithm>
#include <span>

#include "text/text.h"

namespace declarium::vb {
namespace {

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

// Words of the language that programs use as names all the same.
constexpr std::u16string_view kAllowedWords[] = {
    u"abs",      u"alias", u"array",  u"attribute", u"cbool",   u"cbyte",    u"ccur",     u"cdate",
    u"cdbl",     u"cdec",  u"cdecl",  u"cint",      u"circle",  u"clng",     u"csng",     u"cstr",
    u"cvar",     u"cverr", u"date",   u"debug",     u"decimal", u"defdec",   u"doevents", u"error",
    u"explicit", u"fix",   u"inputb", u"int",       u"lbound",  u"len",      u"lenb",     u"lib",
    u"line",     u"me",    u"mid",    u"midb",      u"object",  u"property", u"pset",     u"scale",
    u"sgn",      u"step",  u"ubound"};
static_assert(std::ranges::is_sorted(kAllowedWords));

bool IsOneOf(std::span<const std::u16string_view> words, std::u16string_view word) noexcept {
  constexpr std::size_t kLongest = 10;  // "implements", "paramarray"
  char16_t lowered[kLongest];
  if (word.size() > kLongest) return false;
  const auto* const end =
      std::ranges::transform(word, lowered, [](char16_t unit) { return LowerCase(unit); }).out;
  return std::ranges::binary_search(words, std::u16string_view(lowered, end));
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
  return IsReservedWord(std::u16string(word.begin(), word.end()));
}

bool IsReservedWord(std::u16string_view word) noexcept {
  return IsRefusedAsName(word) || IsOneOf(kAllowedWords, word);
}

bool IsRefusedAsName(std::u16string_view word) noexcept {
  return IsOneOf(kRefusedNames, word);
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

std::u16string_view TypeOfCharacter(char16_t character) {
  switch (character) {
    case u'%':
      return u"Integer";
    case u'&':
      return u"Long";
    case u'!':
      return u"Single";
    case u'#':
      return u"Double";
    case u'@':
      return u"Currency";
    case u'$':
      return u"String";
    case u'^':
      return u"LongLong";
    default:
      return {};
  }
}

}  // namespace declarium::vb
