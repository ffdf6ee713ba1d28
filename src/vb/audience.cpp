#include "vb/audience.h"

namespace declarium::vb {
namespace {

constexpr std::string_view kNames[] = {"vb6", "vba7", "vba7-only", "twinbasic"};

}  // namespace

std::string_view AudienceName(Audience audience) {
  return kNames[static_cast<std::size_t>(audience)];
}

}  // namespace declarium::vb
