// The rules as a table for people.
#pragma once

#include <string>

namespace declarium::check {

// A page in Markdown: every group with its rules, what happens at run time, and lines with and
// without the fault.
[[nodiscard]] std::string RulesDocument();

}  // namespace declarium::check
