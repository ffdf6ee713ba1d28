// The languages that declarations are written for.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace declarium {

enum class OutputTarget : std::uint8_t {
  kVb6,        // as libraries keep them
  kVba7,       // for Office of any version and bitness: with #If VBA7, #Else and the VB6 form
  kVba7Only,   // for Office 2010 and later
  kTwinBasic,  // for twinBASIC in both bitnesses
};

// "vb6", "vba7", "vba7-only" or "twinbasic".
[[nodiscard]] std::string_view OutputTargetName(OutputTarget target);
[[nodiscard]] std::optional<OutputTarget> OutputTargetOfName(std::string_view name);

}  // namespace declarium
