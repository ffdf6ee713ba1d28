// A timer over the form's window.
#pragma once

#include <algorithm>

#include "toolkit/timer.h"
#include "toolkit/win32/form.h"

namespace declarium::win32 {

class Win32Timer : public Timer {
 public:
  // `id` is the timer's number in the form's window, from 1.
  Win32Timer(Win32Form& form, const ControlDefinition& definition, UINT_PTR id)
      : Timer(definition.name),
        form_(form),
        id_(id),
        enabled_(definition.enabled),
        interval_(definition.interval) {}

  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override {
    enabled_ = enabled;
    Restart();
  }
  [[nodiscard]] int Interval() const override { return interval_; }
  void SetInterval(int milliseconds) override {
    interval_ = std::max(milliseconds, 0);
    Restart();
  }

  // Runs when the form is loaded and the timer enabled, stops else.
  void Restart() {
    if (form_.IsLoaded() && enabled_ && interval_ > 0) {
      SetTimer(form_.Window(), id_, static_cast<UINT>(interval_), nullptr);
    } else {
      KillTimer(form_.Window(), id_);
    }
  }
  void Fire() const {
    if (form_.IsLoaded() && enabled_) on_timer.Raise();
  }

 private:
  Win32Form& form_;
  UINT_PTR id_;
  bool enabled_;
  int interval_;
};

}  // namespace declarium::win32
