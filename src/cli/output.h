// Results on the output stream: lines of text, or one JSON object a line.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "cli/session.h"

#include "library/kind.h"

namespace declarium::cli {

// The kind as an argument and in results: const, declare or type.
[[nodiscard]] std::string KindWord(Kind kind);

// "kind:name", which every command takes for a name. In one line, whatever the name holds.
[[nodiscard]] std::string QualifiedName(Kind kind, std::u16string_view name);

// UTF-8 on one line: control characters, which could end the line or drive the terminal, are
// written as \x and two hexadecimal digits.
[[nodiscard]] std::string OneLine(std::u16string_view text);

// A character for messages: "→ (U+2192)", a control character as OneLine writes it.
[[nodiscard]] std::string CharacterText(std::u16string_view character);

// UTF-8 with bare line feeds; control characters other than tabs as OneLine writes them.
[[nodiscard]] std::string Lines(std::u16string_view text);

// The beginning of a command's first JSON object.
[[nodiscard]] nlohmann::ordered_json JsonHeader(std::string_view command);
// The object of one item; nlohmann's objects take further members.
[[nodiscard]] nlohmann::ordered_json JsonItem(Kind kind, std::u16string_view name);

// Bytes that are no UTF-8 (a path can hold them) are replaced.
void PrintJson(const Session& session, const nlohmann::ordered_json& object);

// One result that is just an item.
void PrintItem(const Session& session, Kind kind, std::u16string_view name);

}  // namespace declarium::cli
