// For whom declarations are: who writes them, reads them and compiles them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace declarium::vb {

enum class Audience : std::uint8_t {
  kVb6,        // as libraries keep them
  kVba7,       // for Office of any version and bitness: with #If VBA7, #Else and the VB6 form
  kVba7Only,   // for Office 2010 and later
  kTwinBasic,  // for twinBASIC in both bitnesses
};

inline constexpr Audience kAudiences[] = {Audience::kVb6, Audience::kVba7, Audience::kVba7Only,
                                          Audience::kTwinBasic};

// "vb6", "vba7", "vba7-only" or "twinbasic".
[[nodiscard]] std::string_view AudienceName(Audience audience);
// The audience of that name, in any case; nullopt for an unknown one.
[[nodiscard]] std::optional<Audience> FindAudience(std::u16string_view name);

}  // namespace declarium::vb
