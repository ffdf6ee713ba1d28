// Names that code in a form, a control or a document means as members of its own object.
#pragma once

#include <string_view>

namespace declarium::audit {

// Whether some such object has a member of the name, in any case, so that a declaration of the name
// in another module does not count in its code.
[[nodiscard]] bool IsFormMember(std::u16string_view name);

}  // namespace declarium::audit
