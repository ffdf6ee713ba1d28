// One run of one command: its surroundings, the options that every command knows, and how it ended.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "cli/exit_status.h"
#include "cli/streams.h"

#include "text/error.h"

namespace declarium::cli {

enum class OutputFormat { kText, kJsonLines };
enum class ColorUse { kAuto, kAlways, kNever };

struct Session {
  Streams& streams;
  OutputFormat format = OutputFormat::kText;
  ColorUse color = ColorUse::kAuto;
  ExitStatus status = ExitStatus::kDone;

  [[nodiscard]] bool IsJson() const noexcept { return format == OutputFormat::kJsonLines; }
  // Whether source text is colored: on a terminal whose user has not asked for none, or always.
  [[nodiscard]] bool UsesColor() const noexcept;

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

}  // namespace declarium::cli
