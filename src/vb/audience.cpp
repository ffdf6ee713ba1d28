#include "vb/audience.h"

#include "text/text.h"

namespace declarium::vb {
namespace {

constexpr std::string_view kNames[] = {"vb6", "vba7", "vba7-only", "twinbasic"};

}  // namespace

std::string_view AudienceName(Audience audience) {
  return kNames[static_cast<std::size_t>(audience)];
}

std::optional<Audience> FindAudience(std::u16string_view name) {
  for (const auto audience : kAudiences)
    if (EqualIgnoringCase(name, FromUtf8(AudienceName(audience)))) return audience;
  return std::nullopt;
}

}  // namespace declarium::vb
