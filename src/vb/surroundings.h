// What the code of several modules may use: their Declares, records and public variables.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "vb/address_passing.h"
#include "vb/names_of_modules.h"
#include "vb/variables.h"

namespace declarium::vb {

struct MemberType {
  std::u16string_view name;
  std::u16string_view type;
};
using MemberTypes = std::vector<MemberType>;

// Modules are told by their numbers, from 0. The texts that views refer into must outlive it.
class Surroundings {
 public:
  void AddProcedure(std::size_t module, const Declaration& declaration, AddressPassing passing) {
    procedures_.Add(module, declaration, std::move(passing));
  }
  void AddRecord(std::size_t module, const Declaration& declaration, MemberTypes members) {
    records_.Add(module, declaration, std::move(members));
  }
  // Those of all standard modules.
  [[nodiscard]] Variables& PublicVariables() { return variables_; }
  [[nodiscard]] const Variables& PublicVariables() const { return variables_; }

  // What the name, in lower case, means in the module; null for no Declare.
  [[nodiscard]] const AddressPassing* FindProcedure(const std::u16string& lowered,
                                                    std::size_t module) const {
    return procedures_.Find(lowered, module);
  }
  // The type of a record's member; empty when it is not known.
  [[nodiscard]] std::u16string_view TypeOfMember(std::u16string_view record,
                                                 std::u16string_view member,
                                                 std::size_t module) const;

 private:
  NamesOfModules<AddressPassing> procedures_;
  NamesOfModules<MemberTypes> records_;
  Variables variables_;
};

}  // namespace declarium::vb
