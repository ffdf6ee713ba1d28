#include <cstdlib>
#include <string_view>

#include "library/history_folder.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

// A relative path would mean another folder after every change of the current one.
fs::path FolderIn(const char* variable) {
  const char* const value = std::getenv(variable);
  const fs::path folder = value == nullptr ? "" : value;
  return folder.is_absolute() ? folder : fs::path();
}

}  // namespace

fs::path HistoryFolder() {
  if (const char* const chosen = std::getenv(kHistoryVariable)) {
    const std::string_view folder = chosen;
    return folder.empty() || folder == "none" ? fs::path() : fs::absolute(folder);
  }
  if (const auto state = FolderIn("XDG_STATE_HOME"); !state.empty()) {
    return state / "declarium" / "history";
  }
  const auto home = FolderIn("HOME");
  return home.empty() ? home : home / ".local" / "state" / "declarium" / "history";
}

}  // namespace declarium
