// Every rule on its cases: cases/D301.txt holds sources with exactly that fault and sources with
// none. A case is "bad" or "good" with its options in the first line, then lines of source up to a
// blank line; "=====" parts modules, with the kind of the next where it is another one.
//
//   target=vba7  form=project|library  kind=class|form  windows=6.0
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "check/checked.h"

namespace declarium::check {
namespace {

struct Case {
  std::size_t line = 0;
  bool is_bad = false;
  std::map<std::string, std::string> options;
  std::string source;
};

std::vector<Case> ReadCases(const std::filesystem::path& path) {
  std::vector<Case> cases;
  std::ifstream file(path, std::ios::binary);
  std::size_t number = 0;
  bool is_first = true;
  for (std::string line; std::getline(file, line);) {
    ++number;
    if (line.empty()) {
      is_first = true;
      continue;
    }
    if (std::exchange(is_first, false)) {
      std::istringstream words(line);
      auto& added = cases.emplace_back();
      added.line = number;
      std::string word;
      words >> word;
      EXPECT_TRUE(word == "bad" || word == "good") << path << ':' << number;
      added.is_bad = word == "bad";
      while (words >> word) {
        const auto equals = word.find('=');
        added.options[word.substr(0, equals)] = word.substr(equals + 1);
      }
      continue;
    }
    cases.back().source += line + "\r\n";
  }
  return cases;
}

Options OptionsOf(const Case& each) {
  static const std::map<std::string, Audience> kAudiences = {{"vb6", Audience::kVb6},
                                                             {"vba7", Audience::kVba7},
                                                             {"vba7-only", Audience::kVba7Only},
                                                             {"twinbasic", Audience::kTwinBasic}};
  Options options;
  if (each.options.contains("target")) options.audience = kAudiences.at(each.options.at("target"));
  if (each.options.contains("windows")) {
    const auto& version = each.options.at("windows");
    const auto dot = version.find('.');
    options.windows =
        WindowsVersion{std::stoi(version.substr(0, dot)), std::stoi(version.substr(dot + 1))};
  }
  return options;
}

Subject::Form FormOf(const Case& each) {
  const auto form = each.options.find("form");
  if (form == each.options.end()) return Subject::Form::kModules;
  return form->second == "project" ? Subject::Form::kProject : Subject::Form::kLibrary;
}

vb::ModuleKind KindOf(const std::string& word) {
  if (word == "class") return vb::ModuleKind::kClass;
  return word == "form" ? vb::ModuleKind::kForm : vb::ModuleKind::kStandard;
}

std::vector<Source> SourcesOf(const Case& each) {
  constexpr std::string_view kBetween = "=====";
  const auto kind = each.options.find("kind");
  std::vector<Source> sources = {
      {"", KindOf(kind == each.options.end() ? std::string() : kind->second)}};
  std::istringstream lines(each.source);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string word;
    words >> word;
    if (word == kBetween) {
      word.clear();
      words >> word;
      sources.push_back({"", word.empty() ? sources.back().kind : KindOf(word)});
    } else {
      sources.back().text += line + "\n";
    }
  }
  return sources;
}

std::string Text(const CheckedSource& checked) {
  std::string text;
  for (const auto& finding : checked.findings) {
    text += std::to_string(finding.place.line) + ": " + std::string(RuleOf(finding.rule).number) +
            ": " + finding.message + "\n";
  }
  return text;
}

class RuleCases : public testing::TestWithParam<Rule> {};

std::filesystem::path PathOf(const Rule& rule) {
  return std::filesystem::path(DECLARIUM_SOURCE_DIR) / "tests" / "check" / "cases" /
         (std::string(rule.number) + ".txt");
}

TEST_P(RuleCases, FiresOnItsFaultsAndOnNothingElse) {
  const std::string number(GetParam().number);
  std::size_t bad = 0;
  std::size_t good = 0;
  for (const auto& each : ReadCases(PathOf(GetParam()))) {
    SCOPED_TRACE(number + ".txt:" + std::to_string(each.line) + "\n" + each.source);
    ++(each.is_bad ? bad : good);
    const auto checked = CheckSources(SourcesOf(each), FormOf(each), OptionsOf(each));
    if (each.is_bad) {
      EXPECT_THAT(checked.Rules(),
                  testing::AllOf(testing::Not(testing::IsEmpty()), testing::Each(number)))
          << Text(checked);
    } else {
      EXPECT_THAT(checked.Rules(), testing::IsEmpty()) << Text(checked);
    }
  }
  EXPECT_GE(bad, 10u);
  EXPECT_GE(good, 10u);
}

// What mends a finding leaves none of its rule.
TEST_P(RuleCases, ItsEditsMend) {
  for (const auto& each : ReadCases(PathOf(GetParam()))) {
    if (!each.is_bad || each.source.contains("=====")) continue;
    SCOPED_TRACE(each.source);
    auto checked = CheckSources(SourcesOf(each), FormOf(each), OptionsOf(each));
    auto text = checked.texts.front();
    std::size_t mended = 0;
    for (auto finding = checked.findings.rbegin(); finding != checked.findings.rend(); ++finding) {
      if (finding->edits.empty()) continue;
      text = Edited(text, finding->edits);
      ++mended;
    }
    if (mended < checked.findings.size()) continue;
    auto sources = SourcesOf(each);
    sources.front().text = ToUtf8(text);
    const auto again = CheckSources(sources, FormOf(each), OptionsOf(each));
    EXPECT_THAT(again.Rules(), testing::Not(testing::Contains(std::string(GetParam().number))))
        << ToUtf8(text) << Text(again);
  }
}

// What declarations of other modules mean is the audit's, and tried there.
std::vector<Rule> RulesOfCheck() {
  std::vector<Rule> rules(Rules().begin(), Rules().end());
  std::erase_if(rules, [](const Rule& rule) { return rule.id == RuleId::kDeclaredDifferently; });
  return rules;
}

INSTANTIATE_TEST_SUITE_P(All, RuleCases, testing::ValuesIn(RulesOfCheck()),
                         [](const auto& each) { return std::string(each.param.number); });

}  // namespace
}  // namespace declarium::check
