// Which files the commands that write source may put it into.
#pragma once

#include <string>
#include <string_view>

namespace declarium::cli {

enum class Force { kNo, kYes };

// As --force was given or not.
[[nodiscard]] constexpr Force ForceOf(bool given) noexcept {
  return given ? Force::kYes : Force::kNo;
}

// Throws CommandFailed, unless forced, for a file that a command is about to replace by source and
// that holds something else than such source: a library, a module with code of its own, any other
// file.
void CheckReplaceable(const std::string& file, Force force);

// Throws CommandFailed, unless forced, for a module whose bytes are a library or no source of the
// host language.
void CheckModule(const std::string& file, std::string_view bytes, Force force);

}  // namespace declarium::cli
