// Lets the compiler evaluate macros.
#pragma once

#include <string>
#include <vector>

#include "header_model.h"

namespace declarium::win32_library {

// Gives every macro of `constants` the value that the compiler computes for it behind `source`. A
// macro that is no constant expression keeps Value::kNone; enumerators are left as they are.
void EvaluateConstants(const std::string& source, std::vector<Constant>& constants);

}  // namespace declarium::win32_library
