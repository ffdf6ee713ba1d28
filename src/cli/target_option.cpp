#include "cli/target_option.h"

#include <map>
#include <string>

namespace declarium::cli {

CLI::Option* DefineTarget(CLI::App& command, vb::Audience& target, const char* description) {
  std::map<std::string, vb::Audience> targets;
  for (const auto known : vb::kAudiences) targets.emplace(vb::AudienceName(known), known);
  return command.add_option("--target", target, description)
      ->transform(CLI::CheckedTransformer(targets, CLI::ignore_case).description(""))
      ->type_name("TARGET");
}

}  // namespace declarium::cli
