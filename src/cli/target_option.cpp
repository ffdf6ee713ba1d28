#include "cli/target_option.h"

#include <map>
#include <string>

namespace declarium::cli {

CLI::Option* DefineTarget(CLI::App& command, vb::Audience& target, const char* description) {
  std::map<std::string, vb::Audience> targets;
  for (const auto known :
       {vb::Audience::kVb6, vb::Audience::kVba7, vb::Audience::kVba7Only, vb::Audience::kTwinBasic})
    targets.emplace(vb::AudienceName(known), known);
  return command.add_option("--target", target, description)
      ->transform(CLI::CheckedTransformer(targets, CLI::ignore_case).description(""))
      ->type_name("TARGET");
}

std::vector<FactsFile> FactsBeside(const std::vector<std::filesystem::path>& libraries) {
  std::vector<FactsFile> facts;
  for (const auto& library : libraries)
    if (auto file = FactsFile::OpenBeside(library)) facts.push_back(*std::move(file));
  return facts;
}

}  // namespace declarium::cli
