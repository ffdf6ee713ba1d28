#include <cstdlib>
#include <iostream>
#include <unistd.h>

#include "cli/terminal.h"

namespace declarium::cli {
namespace {

bool AsksForNoColor() {
  const char* const value = std::getenv("NO_COLOR");
  return value != nullptr && *value != '\0';
}

}  // namespace

struct StandardStreams::Parts {
  Streams streams{std::cin,
                  std::cout,
                  std::cerr,
                  ::isatty(STDOUT_FILENO) != 0,
                  ::isatty(STDERR_FILENO) != 0,
                  AsksForNoColor()};
};

StandardStreams::StandardStreams() {
  std::ios::sync_with_stdio(false);
  parts_ = std::make_unique<Parts>();
}

StandardStreams::~StandardStreams() = default;

Streams& StandardStreams::Get() noexcept {
  return parts_->streams;
}

}  // namespace declarium::cli
