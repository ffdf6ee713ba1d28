#include "cli/colored_text.h"

#include <nlohmann/json.hpp>

#include "cli/output.h"

#include "source/format_text.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

// The keyword is bright blue and the comment green: both can be read on dark and light ground.
constexpr std::string_view kKeywordColor = "\x1B[94m";
constexpr std::string_view kCommentColor = "\x1B[32m";
constexpr std::string_view kNormalColor = "\x1B[0m";

std::string_view EscapeOf(TextColor color) {
  switch (color) {
    case TextColor::kKeyword:
      return kKeywordColor;
    case TextColor::kComment:
      return kCommentColor;
    case TextColor::kNormal:
      break;
  }
  return {};
}

std::string_view NameOf(TextColor color) {
  switch (color) {
    case TextColor::kKeyword:
      return "keyword";
    case TextColor::kComment:
      return "comment";
    case TextColor::kNormal:
      break;
  }
  return "normal";
}

// The part of a run that is in the code, which moves forward over it. The display shows a bracket
// that stands alone twice; text on a terminal is there to be copied, so the second one goes.
std::u16string TakeFromCode(std::u16string_view run, std::u16string_view& code) {
  std::u16string taken;
  for (const char16_t unit : run) {
    if (!code.starts_with(unit)) continue;
    taken += unit;
    code.remove_prefix(1);
  }
  return taken;
}

}  // namespace

std::string ColoredLines(std::u16string_view code, vb::Audience audience) {
  std::string lines;
  auto rest = code;
  for (const auto& [color, text] : FormatText(code, audience)) {
    const auto escape = EscapeOf(color);
    lines.append(escape).append(Lines(TakeFromCode(text, rest)));
    if (!escape.empty()) lines += kNormalColor;
  }
  return lines;
}

nlohmann::ordered_json RunsArray(std::u16string_view code, vb::Audience audience) {
  auto runs = nlohmann::ordered_json::array();
  for (const auto& [color, text] : FormatText(code, audience)) {
    runs.push_back(nlohmann::ordered_json::array({NameOf(color), ToUtf8(text)}));
  }
  return runs;
}

}  // namespace declarium::cli
