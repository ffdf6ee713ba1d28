// What is wrong with a list file, as message boxes tell it: the first lines of it, each with its
// number.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "basket/list_file.h"
#include "basket/list_selection.h"

namespace declarium {

// A line of a message for each mistake of the file, and for each line of the list that gave
// nothing.
[[nodiscard]] std::vector<std::u16string> ListReasons(std::span<const ListFault> faults);
[[nodiscard]] std::vector<std::u16string> ListReasons(std::span<const LineFault> faults);

// A word of a file or a library: long ones cut, without what no message can show.
[[nodiscard]] std::u16string ShownWord(std::u16string_view word);

// The text with the first of the lines below it, and how many more there are.
[[nodiscard]] std::u16string WithLines(std::u16string_view text,
                                       std::span<const std::u16string> lines);

}  // namespace declarium
