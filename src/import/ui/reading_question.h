// The question that follows reading when the literal rules would store some declarations otherwise
// than the source says.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "import/reading.h"
#include "toolkit/toolkit.h"

namespace declarium {

// The text of the question: how many declarations, three of them.
[[nodiscard]] std::u16string ReadingQuestion(const SourceReading& reading);

// The items to take: `literal` where both readings agree, otherwise as the user decides. Nothing
// when the user cancels.
[[nodiscard]] std::optional<ParsedItems> ChooseReading(Toolkit& toolkit, std::u16string_view source,
                                                       ParsedItems literal);

}  // namespace declarium
