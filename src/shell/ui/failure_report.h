// What becomes of a failure that nothing below has handled: unsaved work is put aside, the user is
// told what failed, and the program goes on.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <string>

#include "toolkit/toolkit.h"

namespace declarium {

class FailureReport {
 public:
  // Takes the reports of the toolkit's boundary until its own end. `keep_unsaved` puts unsaved work
  // aside; true when there was some and it is kept now.
  FailureReport(Toolkit& toolkit, std::function<bool()> keep_unsaved);
  FailureReport(const FailureReport&) = delete;
  FailureReport& operator=(const FailureReport&) = delete;
  ~FailureReport();

 private:
  void Tell(const std::exception_ptr& failure);
  [[nodiscard]] bool KeepUnsaved() noexcept;
  [[nodiscard]] bool WasToldJustNow(const std::u16string& reason) const;

  Toolkit& toolkit_;
  std::function<bool()> keep_unsaved_;
  bool telling_ = false;
  std::u16string told_;  // the last reason, and when its box was closed
  std::uint32_t told_at_ = 0;
};

}  // namespace declarium
