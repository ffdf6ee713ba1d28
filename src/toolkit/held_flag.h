// Sets a flag for as long as it lives; at the end the flag is what it was, also after an exception.
#pragma once

#include <utility>

namespace declarium {

class HeldFlag {
 public:
  explicit HeldFlag(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  ~HeldFlag() { flag_ = before_; }
  HeldFlag(const HeldFlag&) = delete;
  HeldFlag& operator=(const HeldFlag&) = delete;

  [[nodiscard]] bool WasSet() const noexcept { return before_; }

 private:
  bool& flag_;
  bool before_;
};

}  // namespace declarium
