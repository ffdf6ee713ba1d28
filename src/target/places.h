// What a person has to look at when declarations get the forms of 64 bits: code that puts addresses
// into Longs, and sizes of records that change.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "check/name_counts.h"
#include "target/form_for_64.h"
#include "vb/code.h"
#include "vb/definitions.h"
#include "vb/surroundings.h"

namespace declarium {

struct PlaceToLookAt {
  vb::Place place;
  std::u16string_view name;       // of the variable, or of the record
  std::string reason;             // for people
  std::u16string_view statement;  // of the source
};

// A module with the forms of its declarations, one for each in order.
struct ModuleWithForms {
  std::u16string_view text;
  const vb::Module* parsed;
  std::span<const FormFor64> forms;
};

// The places in the modules of a project.
class Places {
 public:
  // What the modules refer to must outlive this.
  Places(std::vector<ModuleWithForms> modules, vb::Target target, vb::ProjectConstants constants);

  // In the order of the source, in the branches that the target may compile. `module` counts from
  // 0.
  [[nodiscard]] std::vector<PlaceToLookAt> In(std::size_t module);

 private:
  void AddDeclarations(std::size_t module);
  void AddRecord(std::size_t module, const vb::Declaration& declaration, const vb::Record& record,
                 const FormFor64& form);
  void FollowChanges();

  std::vector<ModuleWithForms> modules_;
  std::vector<std::vector<bool>> branches_;  // those that are read
  vb::Surroundings surroundings_;
  std::vector<std::pair<std::u16string, vb::MemberTypes>> records_;  // by lower-cased name
  std::unordered_set<std::u16string> changed_;                       // names of records, likewise
  check::NameCounts names_;  // watches what shows that a module may have such places
};

}  // namespace declarium
