// What a history keeps, for tests that disturb what is written.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "library/file_system.h"
#include "library/history.h"

namespace declarium {

// Whether the history in `folder` keeps a version of `file` with this content.
[[nodiscard]] inline bool IsKept(const std::filesystem::path& folder,
                                 const std::filesystem::path& file, std::string_view content) {
  const History history(SystemFiles(), folder);
  return std::ranges::any_of(history.Versions(file), [&](const Version& version) {
    return history.Read(version) == content;
  });
}

}  // namespace declarium
