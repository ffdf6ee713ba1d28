// The modules of a project, read once for all plans and questions about them.
#pragma once

#include <map>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "vb/definitions.h"
#include "vb/project_names.h"

namespace declarium::plan {

struct ModuleText {
  std::u16string_view name;            // of the component; empty for what VB_Name says
  std::u16string_view text;            // what a code pane shows, or a whole file with its header
  const vb::Module* parsed = nullptr;  // the text as ReadModule read it
};

class ProjectModules {
 public:
  // What is handed over must outlive it. `constants` are those of #If that the project defines.
  explicit ProjectModules(std::span<const ModuleText> modules,
                          std::u16string_view project_name = {},
                          vb::ProjectConstants constants = {});

  [[nodiscard]] std::size_t Size() const { return modules_.size(); }
  [[nodiscard]] const ModuleText& At(std::size_t module) const { return modules_[module]; }
  // The name of the component, from VB_Name where the caller gave none.
  [[nodiscard]] std::u16string_view NameOf(std::size_t module) const;
  [[nodiscard]] const vb::ProjectNames& Names() const { return names_; }
  [[nodiscard]] vb::ProjectConstants Constants() const { return constants_; }

  // Whether the branches of the module's conditions are compiled for the target.
  [[nodiscard]] const std::vector<vb::Branch>& BranchesOf(std::size_t module, vb::Target target);
  // What names mean in the module for the target: its own declarations before those of the others.
  [[nodiscard]] vb::Definitions& DefinitionsOf(std::size_t module, vb::Target target);

 private:
  using Key = std::pair<std::size_t, vb::Target>;

  std::vector<ModuleText> modules_;
  vb::ProjectNames names_;
  vb::ProjectConstants constants_;
  std::map<Key, std::vector<vb::Branch>> branches_;
  std::map<vb::Target, std::unique_ptr<vb::Definitions>> all_;
  std::map<Key, std::unique_ptr<vb::Definitions>> own_;
};

}  // namespace declarium::plan
