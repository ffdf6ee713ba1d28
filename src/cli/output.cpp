#include "cli/output.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "text/character.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

using nlohmann::ordered_json;

bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

void AppendEscape(char16_t unit, std::u16string& out) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  out += u"\\x";
  out += kDigits[unit / 16];
  out += kDigits[unit % 16];
}

template <class KeepUnit>
std::string EscapeControls(std::u16string_view text, KeepUnit keep) {
  std::u16string escaped;
  escaped.reserve(text.size());
  for (const char16_t unit : text) {
    if (IsControl(unit) && !keep(unit)) {
      AppendEscape(unit, escaped);
    } else {
      escaped += unit;
    }
  }
  return ToUtf8(escaped);
}

}  // namespace

std::string KindWord(Kind kind) {
  return ToUtf8(LowerCase(KindName(kind)));
}

std::string QualifiedName(Kind kind, std::u16string_view name) {
  return KindWord(kind) + ":" + OneLine(name);
}

std::string OneLine(std::u16string_view text) {
  return EscapeControls(text, [](char16_t) { return false; });
}

std::string CharacterText(std::u16string_view character) {
  return OneLine(character) + " (" + CodePointText(character) + ")";
}

std::string Lines(std::u16string_view text) {
  return EscapeControls(Replace(text, kCrLf, u"\n"),
                        [](char16_t unit) { return unit == u'\n' || unit == u'\t'; });
}

ordered_json JsonHeader(std::string_view command) {
  return {{"declarium", 1}, {"command", command}};
}

ordered_json JsonItem(Kind kind, std::u16string_view name) {
  return {{"kind", KindWord(kind)}, {"name", ToUtf8(name)}};
}

void PrintJson(const Session& session, const ordered_json& object) {
  constexpr int kOneLine = -1;
  session.streams.out << object.dump(kOneLine, ' ', false, ordered_json::error_handler_t::replace)
                      << '\n';
}

void PrintItem(const Session& session, Kind kind, std::u16string_view name) {
  if (session.IsJson()) {
    PrintJson(session, JsonItem(kind, name));
  } else {
    session.streams.out << QualifiedName(kind, name) << '\n';
  }
}

}  // namespace declarium::cli
