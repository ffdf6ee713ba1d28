// What long work is doing, in one line of a terminal that disappears when the work is done. Nothing
// is shown anywhere else.
#pragma once

#include <string>
#include <string_view>

#include "cli/streams.h"

namespace declarium::cli {

class StatusLine {
 public:
  explicit StatusLine(Streams& streams) : streams_(streams) {}
  StatusLine(const StatusLine&) = delete;
  StatusLine& operator=(const StatusLine&) = delete;
  ~StatusLine() { Clear(); }

  // Puts `text` in place of what is shown.
  void Show(std::string_view text);
  void Clear();

 private:
  Streams& streams_;
  bool shown_ = false;
};

}  // namespace declarium::cli
