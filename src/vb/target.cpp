#include "vb/target.h"

#include "text/text.h"

namespace declarium::vb {

std::optional<int> CompilerConstantOf(Target target, std::u16string_view name) {
  const auto is = [name](std::u16string_view other) { return EqualIgnoringCase(name, other); };
  const auto truth = [](bool holds) { return holds ? -1 : 0; };
  if (is(u"Win32") || is(u"VBA6")) return truth(true);
  if (is(u"Win16") || is(u"Mac")) return truth(false);
  if (is(u"VBA7")) return truth(target != Target::kVb6);
  if (is(u"Win64")) return truth(Is64Bit(target));
  if (is(u"TWINBASIC")) return truth(target == Target::kTwinBasic);
  return std::nullopt;
}

}  // namespace declarium::vb
