#include "source/source_check.h"

#include <algorithm>

#include "text/text.h"

namespace declarium {
namespace {

constexpr std::u16string_view kFirstWords[] = {
    u"#const",   u"#if",    u"attribute",  u"begin",  u"const",  u"declare", u"defbool",
    u"defbyte",  u"defcur", u"defdate",    u"defdbl", u"defint", u"deflng",  u"defobj",
    u"defsng",   u"defstr", u"defvar",     u"dim",    u"enum",   u"event",   u"friend",
    u"function", u"global", u"implements", u"object", u"option", u"private", u"property",
    u"public",   u"rem",    u"static",     u"sub",    u"type",   u"version"};

std::u16string_view WithoutLineEnd(std::u16string_view line) {
  if (line.ends_with(u'\r')) line.remove_suffix(1);
  return line;
}

// Cuts `prefix` off when the line begins with it.
bool Take(std::u16string_view& line, std::u16string_view prefix) {
  if (!line.starts_with(prefix)) return false;
  line.remove_prefix(prefix.size());
  return true;
}

bool IsConst(std::u16string_view declaration) {
  return Take(declaration, u"Const ") && declaration.contains(u" = ");
}

bool IsDeclare(std::u16string_view declaration) {
  return (Take(declaration, u"Declare Sub ") || Take(declaration, u"Declare Function ")) &&
         declaration.contains(u" Lib ");
}

bool IsEditorsLine(std::u16string_view line) {
  return line.empty() || line.starts_with(u"Attribute VB_") || line.starts_with(u"Option ");
}

}  // namespace

bool IsSource(std::u16string_view text) {
  const auto start = text.find_first_not_of(u" \t\r\n");
  if (start == text.npos || text[start] == u'\'') return true;
  const auto line = text.substr(start);
  const auto word = LowerCase(line.substr(0, line.find_first_of(u" \t\r\n(=")));
  return std::ranges::find(kFirstWords, word) != std::end(kFirstWords);
}

bool IsWrittenSource(std::u16string_view text) {
  bool in_record = false;
  for (auto line : Split(text, u'\n')) {
    line = WithoutLineEnd(line);
    if (in_record) {
      if (line == u"End Type") {
        in_record = false;
      } else if (!line.starts_with(u'\t')) {
        return false;
      }
      continue;
    }
    if (IsEditorsLine(line)) continue;
    if (!Take(line, u"Private ")) (void)Take(line, u"Public ");
    in_record = line.starts_with(u"Type ");
    if (!in_record && !IsConst(line) && !IsDeclare(line)) return false;
  }
  return !in_record;
}

}  // namespace declarium
