// What modules declare and projects list, as the objects of the parse command.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "vb/definitions.h"
#include "vb/module.h"
#include "vb/name_use.h"
#include "vb/project.h"

namespace declarium::cli {

// The word for a declaration's kind: const, declare, type or enum.
[[nodiscard]] const char* DeclarationWord(const vb::Declaration& declaration);
[[nodiscard]] const char* ScopeWord(vb::Scope scope);

// `definitions` know what the names in the declaration mean.
[[nodiscard]] nlohmann::ordered_json DeclarationObject(const std::string& source,
                                                       const vb::Module& module,
                                                       const vb::Declaration& declaration,
                                                       vb::Definitions& definitions);
[[nodiscard]] nlohmann::ordered_json ErrorObject(const std::string& source,
                                                 const vb::SyntaxError& error);
[[nodiscard]] nlohmann::ordered_json ModuleObject(const std::string& source,
                                                  const vb::Module& module);
[[nodiscard]] nlohmann::ordered_json ProjectObject(const std::string& source,
                                                   const vb::Project& project);
[[nodiscard]] nlohmann::ordered_json UseObject(const std::string& source, const vb::NameUse& use);

}  // namespace declarium::cli
