#include "check/rule_document.h"

#include "check/rule.h"

namespace declarium::check {
namespace {

void AppendLines(std::string_view title, std::string_view lines, std::string& text) {
  if (lines.empty()) return;
  text += "\n" + std::string(title) + "\n\n```vb\n" + std::string(lines) + "\n```\n";
}

void AppendRule(const Rule& rule, std::string& text) {
  text += "\n### " + std::string(rule.number) + ": " + std::string(rule.title) + "\n\n" +
          std::string(LevelText(rule.level)) + ": " + std::string(rule.consequence) + "\n";
  AppendLines("Wrong:", rule.wrong, text);
  AppendLines("Right:", rule.right, text);
}

}  // namespace

std::string RulesDocument() {
  std::string text =
      "# The rules of `check`\n\n"
      "Made by `declarium-cli check --rules`.\n\n"
      "| level | means |\n|---|---|\n"
      "| error | does not compile, damages memory, or is wrong whenever it is called |\n"
      "| warning | wrong on some systems or in 64 bits, or nearly always a mistake |\n"
      "| note | rests on a name alone, or only tidies up |\n";
  for (const auto& group : Groups()) {
    text += "\n## " + std::string(group.title) + "\n";
    for (const auto& rule : Rules()) {
      if (static_cast<int>(rule.id) / 100 == group.hundreds) AppendRule(rule, text);
    }
  }
  return text;
}

}  // namespace declarium::check
