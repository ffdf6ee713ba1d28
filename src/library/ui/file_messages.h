// Whole files as the window's commands read and write them: a failure is shown in a message box and
// then passed over.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "toolkit/toolkit.h"

namespace declarium {

// The file's content; empty after the message when it cannot be read.
[[nodiscard]] std::string ReadFileOrTell(Toolkit& toolkit, const std::filesystem::path& path);

// Writes the file; shows a message when it cannot be written.
void WriteFileOrTell(Toolkit& toolkit, const std::filesystem::path& path, std::string_view bytes);

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
