// One run of one command: its surroundings, the options that every command knows, and how it ended.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/exit_status.h"
#include "cli/streams.h"

#include "library/file_saver.h"
#include "text/error.h"

namespace declarium::cli {

enum class OutputFormat { kText, kJsonLines };
enum class ColorUse { kAuto, kAlways, kNever };

struct Session {
  Streams& streams;
  FileSaver& saver;
  OutputFormat format = OutputFormat::kText;
  ColorUse color = ColorUse::kAuto;
  ExitStatus status = ExitStatus::kDone;

  [[nodiscard]] bool IsJson() const noexcept { return format == OutputFormat::kJsonLines; }
  // Whether source text is colored: on a terminal whose user has not asked for none, or always.
  [[nodiscard]] bool UsesColor() const noexcept;

  // Tells what became of files that a killed saver left.
  void SayRecovered(const std::vector<Recovered>& recovered) const;

  // Writes a message to the error stream, with the program's name in front of every line.
  void Say(std::string_view message) const;
};

// Ends a command. Thrown before the command has changed or printed anything, and caught in one
// place, which prints the message.
class CommandFailed : public std::runtime_error {
 public:
  CommandFailed(ExitStatus status, const std::string& message)
      : std::runtime_error(message), status_(status) {}

  [[nodiscard]] ExitStatus Status() const noexcept { return status_; }

 private:
  ExitStatus status_;
};

[[nodiscard]] CommandFailed FileFailed(const Error& error);
// Also tells where what could not be written is.
[[nodiscard]] CommandFailed FileFailed(const NotSaved& failure);

}  // namespace declarium::cli
