#include "plan/project_modules.h"

namespace declarium::plan {

ProjectModules::ProjectModules(std::span<const ModuleText> modules,
                               std::u16string_view project_name, vb::ProjectConstants constants)
    : modules_(modules.begin(), modules.end()), names_(project_name), constants_(constants) {
  for (const auto& module : modules_) names_.Add(*module.parsed, module.name);
}

std::u16string_view ProjectModules::NameOf(std::size_t module) const {
  const auto& [name, text, parsed] = modules_[module];
  return name.empty() ? parsed->Name() : name;
}

const std::vector<vb::Branch>& ProjectModules::BranchesOf(std::size_t module, vb::Target target) {
  const auto [found, is_new] = branches_.try_emplace({module, target});
  if (is_new) found->second = vb::BranchesOf(*modules_[module].parsed, target, constants_);
  return found->second;
}

vb::Definitions& ProjectModules::DefinitionsOf(std::size_t module, vb::Target target) {
  auto& all = all_[target];
  if (!all) {
    all = std::make_unique<vb::Definitions>(target);
    for (const auto& each : modules_) all->Add(*each.parsed, constants_);
  }
  auto& own = own_[{module, target}];
  if (!own) {
    own = std::make_unique<vb::Definitions>(target, all.get());
    own->Add(*modules_[module].parsed, constants_);
  }
  return *own;
}

}  // namespace declarium::plan
