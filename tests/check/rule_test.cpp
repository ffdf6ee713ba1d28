#include "check/rule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "check/checked.h"
#include "check/rule_document.h"
#include "support/golden.h"

namespace declarium::check {
namespace {

TEST(Rules, StandInTheOrderOfTheirNumbers) {
  int last = 0;
  for (const auto& rule : Rules()) {
    const auto number = static_cast<int>(rule.id);
    EXPECT_LT(last, number);
    EXPECT_EQ(rule.number, "D" + std::to_string(number));
    EXPECT_EQ(&RuleOf(rule.id), &rule);
    EXPECT_EQ(FindRule(FromUtf8("d" + std::to_string(number))), &rule);
    last = number;
  }
  EXPECT_EQ(FindRule(u"D999"), nullptr);
}

// Which options an example needs to show its fault.
struct Example {
  Options options;
  Subject::Form form = Subject::Form::kModules;
  vb::ModuleKind kind = vb::ModuleKind::kStandard;
};

Example ExampleOf(const Rule& rule) {
  Example example;
  if (static_cast<int>(rule.id) / 100 == 5) example.options.audience = Audience::kVba7Only;
  if (rule.id == RuleId::kNotInThisWindows) example.options.windows = WindowsVersion{5, 1};
  if (rule.id == RuleId::kUnknownType) example.form = Subject::Form::kProject;
  if (rule.id == RuleId::kAmbiguousName || rule.id == RuleId::kDeclaredTwice)
    example.form = Subject::Form::kProject;
  if (rule.id == RuleId::kPublicInObjectModule) example.kind = vb::ModuleKind::kClass;
  return example;
}

// The modules of an example: each begins with a comment that names it.
std::vector<Source> ModulesOf(std::string_view source, vb::ModuleKind kind) {
  constexpr std::string_view kHead = "' Module";
  std::vector<Source> modules;
  for (std::size_t begin = 0; begin < source.size();) {
    const auto end = std::min(source.find(kHead, begin + 1), source.size());
    modules.push_back({std::string(source.substr(begin, end - begin)), kind});
    begin = end;
  }
  return modules;
}

// An example is no whole program: what it declares is not used.
std::vector<std::string> RulesFiredOn(std::string_view source, const Rule& rule) {
  const auto example = ExampleOf(rule);
  auto rules = CheckSources(ModulesOf(source, example.kind), example.form, example.options).Rules();
  if (rule.id != RuleId::kUnused) std::erase(rules, "D601");
  return rules;
}

TEST(Rules, TheirExamplesShowThem) {
  for (const auto& rule : Rules()) {
    SCOPED_TRACE(rule.number);
    EXPECT_FALSE(rule.wrong.empty() || rule.right.empty());
    // The audit's, which tries its examples itself.
    if (rule.id == RuleId::kDeclaredDifferently) continue;
    EXPECT_THAT(RulesFiredOn(rule.wrong, rule),
                testing::AllOf(testing::Not(testing::IsEmpty()), testing::Each(rule.number)));
    EXPECT_THAT(RulesFiredOn(rule.right, rule), testing::IsEmpty());
  }
}

TEST(Rules, DocumentsAreMadeFromThem) {
  ExpectGoldenFile(DECLARIUM_SOURCE_DIR "/docs/checks.md", RulesDocument());
}

}  // namespace
}  // namespace declarium::check
