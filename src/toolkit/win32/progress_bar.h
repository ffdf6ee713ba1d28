// The native progress bar.
#pragma once

#include <algorithm>

#include "toolkit/progress_bar.h"
#include "toolkit/win32/control.h"
#include "toolkit/win32/system.h"

namespace declarium::win32 {

class Win32ProgressBar : public Win32Control<ProgressBar> {
 public:
  Win32ProgressBar(Win32Form& form, const ControlDefinition& definition)
      : Win32Control(form, definition, {PROGRESS_CLASSW, WS_CLIPSIBLINGS}) {
    SetMaximum(100);
  }

  [[nodiscard]] int Maximum() const override { return maximum_; }
  void SetMaximum(int maximum) override {
    maximum_ = std::max(maximum, 0);
    Send(PBM_SETRANGE32, 0, maximum_);
    SetValue(Value());
  }
  [[nodiscard]] int Value() const override { return value_; }
  void SetValue(int value) override {
    value_ = std::clamp(value, 0, maximum_);
    Send(PBM_SETPOS, static_cast<WPARAM>(value_));
  }

 private:
  int maximum_ = 0;
  int value_ = 0;
};

}  // namespace declarium::win32
