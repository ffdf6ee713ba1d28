// What the program and its host do with each other, a line each, for a user to send when something
// fails: names of members, statuses, times. No source text, no names of modules or libraries.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace declarium {

class CallLog {
 public:
  virtual ~CallLog() = default;
  // Never fails; what cannot be written is left out.
  virtual void Add(std::string_view line) noexcept = 0;
};

// A file for one run of the program.
class LogFile final : public CallLog {
 public:
  static constexpr int kMostFiles = 10;
  static constexpr std::size_t kMostBytes = 1'000'000;

  // Begins "NAME.log" in `folder`, which is made. Of the logs there only the last ones by name are
  // kept, with this one kMostFiles.
  LogFile(const std::filesystem::path& folder, std::string_view name);

  // Writes the line with the milliseconds since the beginning, until kMostBytes are written.
  void Add(std::string_view line) noexcept override;

 private:
  std::ofstream file_;
  std::size_t written_ = 0;
  const long long begin_;
};

// A name for a log that begins now: the date and time, in UTC, and the process.
[[nodiscard]] std::string LogName(unsigned long process);

}  // namespace declarium
