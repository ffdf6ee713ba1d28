// A picture of which modules use what others declare, as SVG for a page of HTML.
#pragma once

#include <string>
#include <string_view>

#include "audit/audit.h"

namespace declarium::audit {

// UTF-8 text for a page: characters that mean something there, and control characters, replaced.
[[nodiscard]] std::string HtmlText(std::string_view text);

// The modules that declare on the left, those that use on the right, and a line for each pair, the
// thicker the more uses. Of many modules those with the most uses have places of their own. Empty
// when no module uses another's declarations. The page's style colors it.
[[nodiscard]] std::string UsePicture(const Subject& subject, const Audit& audit);

}  // namespace declarium::audit
