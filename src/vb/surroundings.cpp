#include "vb/surroundings.h"

#include <algorithm>

namespace declarium::vb {

std::u16string_view Surroundings::TypeOfMember(std::u16string_view record,
                                               std::u16string_view member,
                                               std::size_t module) const {
  const auto* const members = records_.Find(LowerCase(record), module);
  if (members == nullptr) return {};
  const auto found = std::ranges::find_if(
      *members, [member](const MemberType& each) { return EqualIgnoringCase(each.name, member); });
  return found == members->end() ? std::u16string_view() : found->type;
}

}  // namespace declarium::vb
