// Whether a procedure of a DLL returns an address or a handle, or writes one to its caller's
// variable.
#pragma once

#include <vector>

#include "vb/declaration.h"

namespace declarium::vb {

struct AddressPassing {
  bool returns_address = false;
  std::vector<bool> by_reference;  // for each parameter whether a LongPtr is passed by reference

  [[nodiscard]] bool IsAny() const;
};

// As the Declare is written: what is a LongPtr.
[[nodiscard]] AddressPassing AddressPassingOf(const External& external);

}  // namespace declarium::vb
