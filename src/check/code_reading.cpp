#include "check/code_reading.h"

#include "text/text.h"

namespace declarium::check {
namespace {

bool IsRead(const ModuleContext& module, const Systems& systems) {
  const bool is_compiled = module.whole.Checks64Bits() ? systems.Have64Bits() : systems.vb6;
  return is_compiled && systems.is_certain;
}

std::vector<bool> BranchesToRead(const ModuleContext& module) {
  std::vector<bool> branches;
  branches.reserve(module.parsed.conditions.size());
  for (std::uint32_t i = 0; i < module.parsed.conditions.size(); ++i)
    branches.push_back(IsRead(module, module.SystemsOf(i)));
  return branches;
}

}  // namespace

CodeReading::CodeReading(const std::deque<ModuleContext>& modules, NameCounts& names)
    : modules_(modules) {
  for (const auto& module : modules) AddDeclarations(module, names);
  if (modules.empty() || !modules.front().whole.Checks64Bits()) return;
  WatchAddresses(names);
  AddVariables();
  WatchVariables(surroundings_.PublicVariables(), names);
}

void CodeReading::AddDeclarations(const ModuleContext& module, NameCounts& names) {
  for (const auto& declaration : module.parsed.declarations) {
    if (!IsRead(module, module.SystemsOf(declaration))) continue;
    if (const auto* const external = declaration.As<vb::External>()) {
      auto passing = vb::AddressPassingOf(*external);
      if (passing.IsAny()) names.Watch(declaration.name, Watched::kAddresses);
      surroundings_.AddProcedure(module.module, declaration, std::move(passing));
    }
    if (const auto* const record = declaration.As<vb::Record>()) {
      vb::MemberTypes members;
      for (const auto& member : record->members) {
        if (IsRead(module, module.SystemsOf(member.condition)))
          members.push_back({member.name, member.type.name});
      }
      WatchMembers(members, names);
      surroundings_.AddRecord(module.module, declaration, std::move(members));
    }
  }
}

void CodeReading::AddVariables() {
  knows_variables_ = true;
  for (const auto& module : modules_) {
    if (module.parsed.kind == vb::ModuleKind::kStandard) {
      const auto branches = BranchesToRead(module);
      vb::AddPublicVariables({module.text, module.parsed, branches},
                             surroundings_.PublicVariables());
    }
  }
}

vb::Code CodeReading::Read(const ModuleContext& module, std::span<const std::size_t> places) {
  if (places.empty()) return {};
  if (!knows_variables_) AddVariables();
  const auto branches = BranchesToRead(module);
  return vb::ReadCode({module.text, module.parsed, branches}, surroundings_, module.module, places);
}

}  // namespace declarium::check
