#include "library/temporary_file.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <string>

namespace declarium {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = ".declarium-";
constexpr std::string_view kExtension = ".tmp";
// A saver at work has written to its file a moment ago.
constexpr auto kYoungest = std::chrono::minutes(1);

bool IsNumber(std::string_view text) {
  return !text.empty() &&
         std::ranges::all_of(text, [](char digit) { return digit >= '0' && digit <= '9'; });
}

bool HasTemporaryFileName(const fs::path& path) {
  const fs::path file = path.filename();
  std::string name;
  for (const auto unit : file.native()) {
    if (static_cast<unsigned>(unit) > 0x7F) return false;
    name += static_cast<char>(unit);
  }
  return IsTemporaryFileName(name);
}

bool IsAbandoned(const fs::directory_entry& entry) {
  std::error_code failed;
  if (!HasTemporaryFileName(entry.path())) return false;
  if (!fs::is_regular_file(entry.symlink_status(failed))) return false;
  const auto written = entry.last_write_time(failed);
  return !failed && written < fs::file_time_type::clock::now() - kYoungest;
}

}  // namespace

fs::path TemporaryFileIn(const fs::path& folder, unsigned long process) {
  std::random_device random;
  // Without the replaced file's own name, which may already be as long as a name can be.
  return folder / (std::string(kPrefix) + std::to_string(process) + "." + std::to_string(random()) +
                   std::to_string(random()) + std::string(kExtension));
}

bool IsTemporaryFileName(std::string_view name) {
  if (!name.starts_with(kPrefix) || !name.ends_with(kExtension)) return false;
  name.remove_prefix(kPrefix.size());
  name.remove_suffix(std::min(kExtension.size(), name.size()));
  const auto point = name.find('.');
  return point != std::string_view::npos && IsNumber(name.substr(0, point)) &&
         IsNumber(name.substr(point + 1));
}

void RemoveAbandonedFiles(const fs::path& folder) {
  std::error_code failed;
  fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, failed);
  for (; !failed && entry != fs::directory_iterator(); entry.increment(failed)) {
    if (IsAbandoned(*entry)) RemoveUnlessHeld(entry->path());
  }
}

}  // namespace declarium
