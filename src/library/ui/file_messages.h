// Whole files as the window's commands read and write them: a failure is shown in message boxes and
// then passed over, and so is what became of files that a killed saver left.
#pragma once

#include <expected>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "library/file_saver.h"
#include "toolkit/toolkit.h"

namespace declarium {

// The file's content; empty after the message when it cannot be read.
[[nodiscard]] std::string ReadFileOrTell(Toolkit& toolkit, const std::filesystem::path& path);

// The same with the file's stamp.
[[nodiscard]] StampedBytes ReadStampedOrTell(Toolkit& toolkit, const std::filesystem::path& path);

// Writes the file; shows a message when it cannot be written, and then another that tells whether
// its content is in the history.
void WriteFileOrTell(Toolkit& toolkit, FileSaver& saver, const std::filesystem::path& path,
                     std::string_view bytes);

// The same for what saving a library gave. False when it is not saved.
bool TellSaved(Toolkit& toolkit, const std::expected<Saved, NotSaved>& saved);

// The message of a write error, for a library that is not whole and is therefore not written.
void TellNotWhole(Toolkit& toolkit);

// Shows a message for each.
void TellRecovered(Toolkit& toolkit, const std::vector<Recovered>& recovered);

// Shows the hourglass for as long as it lives.
class HourglassPointer {
 public:
  explicit HourglassPointer(Toolkit& toolkit) : toolkit_(toolkit) {
    toolkit_.SetPointer(MousePointer::kHourglass);
  }
  ~HourglassPointer() { toolkit_.SetPointer(MousePointer::kDefault); }
  HourglassPointer(const HourglassPointer&) = delete;
  HourglassPointer& operator=(const HourglassPointer&) = delete;

 private:
  Toolkit& toolkit_;
};

}  // namespace declarium
