#include "check/check.h"

#include <algorithm>
#include <tuple>

#include "check/code.h"
#include "check/rule_groups.h"
#include "check/suppression.h"

namespace declarium::check {
namespace {

// The names whose uses are counted.
NameCounts NamesOf(const Subject& subject) {
  NameCounts names;
  for (const auto& module : subject.modules) {
    for (const auto& declaration : module.parsed->declarations) {
      if (declaration.scope == vb::Scope::kLocal) continue;
      names.Add(declaration.name);
      if (const auto* const enumeration = declaration.As<vb::Enumeration>()) {
        for (const auto& member : enumeration->members) names.Add(member.name);
      }
    }
  }
  return names;
}

auto Order(const Finding& finding) {
  return std::tuple(finding.module, finding.place.offset, finding.rule);
}

void RemoveQuiet(const Subject& subject, std::vector<Finding>& findings) {
  std::size_t module = subject.modules.size();
  std::optional<Suppressions> suppressions;
  std::erase_if(findings, [&](const Finding& finding) {
    if (finding.module != module) suppressions.emplace(subject.modules[finding.module].text);
    module = finding.module;
    return suppressions->Cover(finding);
  });
}

}  // namespace

std::vector<Finding> Check(const Subject& subject, Reference& reference, const Options& options) {
  Context context(subject, reference, options);
  const bool has_code = subject.form != Subject::Form::kLibrary;
  auto uses = has_code ? NamesOf(subject) : NameCounts();
  for (std::size_t i = 0; i < subject.modules.size(); ++i) {
    ModuleContext module(context, i);
    uses.BeginModule(i);
    const auto code = has_code ? ReadCode(module.text, uses) : Code();
    CheckCompiles(module);
    CheckEntries(module);
    CheckFrames(module);
    CheckValues(module, code);
    CheckBits(module, code);
  }
  CheckCleanUp(context, uses);
  auto findings = std::move(context.findings);
  std::ranges::stable_sort(findings, {}, Order);
  RemoveQuiet(subject, findings);
  return findings;
}

}  // namespace declarium::check
