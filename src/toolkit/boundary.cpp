#include "toolkit/boundary.h"

namespace declarium {

void Boundary::Stop(const std::exception_ptr& failure) noexcept {
  try {
    if (report_) report_(failure);
  } catch (...) {
    // There is nobody left to tell.
  }
}

}  // namespace declarium
