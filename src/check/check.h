// Checks declarations: every rule over every module.
#pragma once

#include <vector>

#include "check/context.h"
#include "check/finding.h"
#include "check/subject.h"

namespace declarium::check {

// The steps that one module takes.
inline constexpr int kStepsOfAModule = 6;

// What is wrong, in the order of modules, places and rules; without what a comment keeps quiet.
// Views in the findings refer into the subject.
[[nodiscard]] std::vector<Finding> Check(const Subject& subject, Reference& reference,
                                         const Options& options);

}  // namespace declarium::check
