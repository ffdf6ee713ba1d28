#include "cli/target_option.h"

#include <map>
#include <string>

namespace declarium::cli {

CLI::Option* DefineTarget(CLI::App& command, OutputTarget& target) {
  std::map<std::string, OutputTarget> targets;
  for (const auto known :
       {OutputTarget::kVb6, OutputTarget::kVba7, OutputTarget::kVba7Only, OutputTarget::kTwinBasic})
    targets.emplace(OutputTargetName(known), known);
  return command
      .add_option(
          "--target", target,
          "For whom declarations are written: vb6, vba7 (with the form of VB6 under #Else), "
          "vba7-only or twinbasic")
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
