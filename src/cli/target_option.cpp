#include "cli/target_option.h"

#include <map>
#include <string>

namespace declarium::cli {
namespace {

CLI::Option* WithTargets(CLI::Option* option) {
  std::map<std::string, vb::Audience> targets;
  for (const auto known : vb::kAudiences) targets.emplace(vb::AudienceName(known), known);
  return option->transform(CLI::CheckedTransformer(targets, CLI::ignore_case).description(""))
      ->type_name("TARGET");
}

}  // namespace

CLI::Option* DefineTarget(CLI::App& command, vb::Audience& target, const char* description) {
  return WithTargets(command.add_option("--target", target, description));
}

CLI::Option* DefineTarget(CLI::App& command, std::optional<vb::Audience>& target) {
  return WithTargets(command.add_option("--target", target, kTargetToWrite));
}

}  // namespace declarium::cli
