#include "cli/coloured_text.h"

#include <nlohmann/json.hpp>

#include "cli/output.h"

#include "basic/text.h"
#include "render/format_text.h"

namespace declarium::cli {
namespace {

// The keyword is bright blue and the comment green: both can be read on dark and light ground.
constexpr std::string_view kKeywordColour = "\x1B[94m";
constexpr std::string_view kCommentColour = "\x1B[32m";
constexpr std::string_view kNormalColour = "\x1B[0m";

std::string_view EscapeOf(TextColour colour) {
  switch (colour) {
    case TextColour::kKeyword:
      return kKeywordColour;
    case TextColour::kComment:
      return kCommentColour;
    case TextColour::kNormal:
      break;
  }
  return {};
}

std::string_view NameOf(TextColour colour) {
  switch (colour) {
    case TextColour::kKeyword:
      return "keyword";
    case TextColour::kComment:
      return "comment";
    case TextColour::kNormal:
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

std::string ColouredLines(std::u16string_view code) {
  std::string lines;
  auto rest = code;
  for (const auto& [colour, text] : FormatText(code)) {
    const auto escape = EscapeOf(colour);
    lines.append(escape).append(Lines(TakeFromCode(text, rest)));
    if (!escape.empty()) lines += kNormalColour;
  }
  return lines;
}

nlohmann::ordered_json RunsArray(std::u16string_view code) {
  auto runs = nlohmann::ordered_json::array();
  for (const auto& [colour, text] : FormatText(code)) {
    runs.push_back(nlohmann::ordered_json::array({NameOf(colour), ToUtf8(text)}));
  }
  return runs;
}

}  // namespace declarium::cli
