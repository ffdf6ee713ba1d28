#include "vb/address_passing.h"

#include <algorithm>

#include "text/text.h"

namespace declarium::vb {
namespace {

bool IsAddress(const TypeReference& type) {
  return !type.is_array && EqualIgnoringCase(type.name, u"LongPtr");
}

}  // namespace

bool AddressPassing::IsAny() const {
  return returns_address || std::ranges::find(by_reference, true) != by_reference.end();
}

AddressPassing AddressPassingOf(const External& external) {
  AddressPassing passing;
  passing.returns_address = external.is_function && IsAddress(external.result);
  for (const auto& parameter : external.parameters) {
    passing.by_reference.push_back(parameter.passing == Passing::kByReference &&
                                   !parameter.is_array && IsAddress(parameter.type));
  }
  return passing;
}

}  // namespace declarium::vb
