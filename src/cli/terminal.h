// The standard streams of the process. Two sources implement it, one per operating system.
#pragma once

#include <memory>

#include "cli/streams.h"

namespace declarium::cli {

// The process's standard streams, byte for byte; only one may exist. On Windows, text for a console
// reaches it as UTF-16 whatever its code page.
class StandardStreams {
 public:
  StandardStreams();
  ~StandardStreams();
  StandardStreams(const StandardStreams&) = delete;
  StandardStreams& operator=(const StandardStreams&) = delete;

  [[nodiscard]] Streams& Get() noexcept;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace declarium::cli
