#include "check/check.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <iterator>
#include <tuple>

#include "check/ambiguous_names.h"
#include "check/code_reading.h"
#include "check/name_counts.h"
#include "check/rule_groups.h"
#include "check/suppression.h"

namespace declarium::check {
namespace {

// The names whose uses are counted.
NameCounts NamesOf(const Subject& subject) {
  NameCounts names;
  for (std::size_t i = 0; i < subject.modules.size(); ++i) {
    for (const auto& declaration : subject.modules[i].parsed->declarations) {
      names.Declare(declaration.name, i);
      if (const auto* const enumeration = declaration.As<vb::Enumeration>()) {
        for (const auto& member : enumeration->members) names.Declare(member.name, i);
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

// Every group of rules over one module; false when the work is to stop.
bool CheckModule(ModuleContext& module, const vb::Code& code, const Options& options) {
  const std::function<void()> groups[] = {
      [&] { CheckCompiles(module); }, [&] { CheckEntries(module); }, [&] { CheckFrames(module); },
      [&] { CheckValues(module, code); }, [&] { CheckBits(module, code); }};
  static_assert(std::size(groups) + 1 == kStepsOfAModule);
  for (const auto& check : groups) {
    if (!options.go_on()) return false;
    check();
  }
  return true;
}

}  // namespace

std::vector<Finding> Check(const Subject& subject, Reference& reference, const Options& options) {
  Context context(subject, reference, options);
  const bool has_code = subject.form != Subject::Form::kLibrary;
  auto uses = has_code ? NamesOf(subject) : NameCounts();
  std::deque<ModuleContext> modules;
  for (std::size_t i = 0; i < subject.modules.size(); ++i) modules.emplace_back(context, i);
  CodeReading reading(modules, uses);
  const AmbiguousNames ambiguous(modules, uses);
  for (auto& module : modules) {
    uses.BeginModule(module.module);
    const auto places = has_code ? CountNames(module.text, uses) : WatchedPlaces();
    const auto code = reading.Read(module, places.addresses);
    if (places.has_ambiguous) ambiguous.Check(module);
    if (!CheckModule(module, code, options)) return std::move(context.findings);
  }
  if (!options.go_on()) return std::move(context.findings);
  CheckCleanUp(modules, uses);
  auto findings = std::move(context.findings);
  std::ranges::stable_sort(findings, {}, Order);
  RemoveQuiet(subject, findings);
  return findings;
}

}  // namespace declarium::check
