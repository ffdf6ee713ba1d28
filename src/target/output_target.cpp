#include "target/output_target.h"

#include <algorithm>
#include <iterator>

namespace declarium {
namespace {

constexpr std::string_view kNames[] = {"vb6", "vba7", "vba7-only", "twinbasic"};

}  // namespace

std::string_view OutputTargetName(OutputTarget target) {
  return kNames[static_cast<std::size_t>(target)];
}

std::optional<OutputTarget> OutputTargetOfName(std::string_view name) {
  const auto found = std::ranges::find(kNames, name);
  if (found == std::end(kNames)) return std::nullopt;
  return static_cast<OutputTarget>(found - std::begin(kNames));
}

}  // namespace declarium
