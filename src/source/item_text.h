// Items as Visual Basic source text, by plain concatenation: nothing is escaped, quoted or
// re-spaced.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "library/kind.h"
#include "library/library.h"

namespace declarium {

// The text of one item, without a scope word and without a line end behind it. Every character 10
// and 11 of a Declare becomes "Sub " or "Function ", wherever it stands.
[[nodiscard]] std::u16string ItemText(Kind kind, std::u16string_view name,
                                      std::u16string_view item);

// Appends the item's text to `out`, with `scope` and a blank in front unless `scope` is empty.
void AppendItemText(Kind kind, std::u16string_view name, std::u16string_view item,
                    std::u16string_view scope, std::u16string& out);

// Every item of the library, Consts, Declares, then Types in stored order, one after another with
// CR LF between them; no line end behind the last.
[[nodiscard]] std::u16string ExportText(const Library& library);
// The same; `begins` hears where in the text each item begins, in their order.
[[nodiscard]] std::u16string ExportText(const Library& library,
                                        const std::function<void(std::size_t start)>& begins);

}  // namespace declarium
