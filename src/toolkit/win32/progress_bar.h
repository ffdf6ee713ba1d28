// The native progress bar.
#pragma once

#include <algorithm>

#include "toolkit/progress_bar.h"
#include "toolkit/win32/control.h"
#include "win32/system.h"

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
    painted_at_ = GetTickCount();
    Send(PBM_SETRANGE32, 0, maximum_);
    value_ = std::min(value_, maximum_);
    shown_ = std::min(shown_, maximum_);
    Synchronize();
  }
  [[nodiscard]] int Value() const override { return value_; }
  void SetValue(int value) override {
    value_ = std::clamp(value, 0, maximum_);
    if (value_ == shown_ || posted_) return;
    posted_ = true;
    PostMessageW(Handle(), kSynchronize, 0, 0);
  }
  // Painting each of many positions would take longer than most of the work that they report, so
  // those that follow too fast for the eye are left out; the last one is always shown in the end.
  void Refresh() override {
    const DWORD now = GetTickCount();
    if (now - painted_at_ < kPaintInterval) return;
    painted_at_ = now;
    Synchronize();
    Win32Control::Refresh();
  }

 private:
  static constexpr UINT kSynchronize = WM_APP + 1;
  static constexpr DWORD kPaintInterval = 25;  // milliseconds

  std::optional<LRESULT> OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override {
    if (message != kSynchronize) return Win32Control::OnMessage(message, wparam, lparam);
    posted_ = false;
    Synchronize();
    return 0;
  }

  // The native control paints itself at every change that it is notified of, so it is notified when
  // the change is to be seen.
  void Synchronize() {
    if (value_ == shown_) return;
    shown_ = value_;
    Send(PBM_SETPOS, static_cast<WPARAM>(value_));
  }

  int maximum_ = 0;
  int value_ = 0;
  DWORD painted_at_ = 0;
  int shown_ = 0;        // the value that the native control knows
  bool posted_ = false;  // a notification of a change is on its way
};

}  // namespace declarium::win32
