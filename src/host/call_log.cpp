#include "host/call_log.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <exception>
#include <iomanip>
#include <sstream>
#include <vector>

namespace declarium {
namespace {

namespace fs = std::filesystem;

long long Milliseconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

// Leaves room for one more. A log that cannot be removed stays.
void RemoveOldLogs(const fs::path& folder) {
  std::error_code ignored;
  std::vector<fs::path> logs;
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    if (entry.path().extension() == ".log") logs.push_back(entry.path());
  }
  std::ranges::sort(logs);
  const auto most = static_cast<std::size_t>(LogFile::kMostFiles);
  for (std::size_t i = 0; i + most <= logs.size(); ++i) fs::remove(logs[i], ignored);
}

}  // namespace

LogFile::LogFile(const fs::path& folder, std::string_view name) : begin_(Milliseconds()) {
  std::error_code ignored;
  fs::create_directories(folder, ignored);
  RemoveOldLogs(folder);
  file_.open(folder / (std::string(name) + ".log"), std::ios::binary);
}

void LogFile::Add(std::string_view line) noexcept {
  try {
    if (written_ >= kMostBytes) return;
    const std::string text =
        std::to_string(Milliseconds() - begin_) + "\t" + std::string(line) + "\r\n";
    // A program that dies has its last lines in the file.
    file_ << text << std::flush;
    written_ += text.size();
  } catch (const std::exception&) {
    written_ = kMostBytes;
  }
}

std::string LogName(unsigned long process) {
  const std::time_t now = std::time(nullptr);
  std::ostringstream name;
  name << std::put_time(std::gmtime(&now), "%Y%m%d-%H%M%S") << '-' << process;
  return name.str();
}

}  // namespace declarium
