// Which of a form's controls has the keyboard focus, or gets it when the form becomes active.
#pragma once

#include "toolkit/tab_order.h"

namespace declarium::win32 {

class Win32Form;

class FormFocus {
 public:
  // The form must outlive it.
  explicit FormFocus(Win32Form& form) : form_(form) {}

  [[nodiscard]] TabOrder& Tabs() { return tabs_; }
  [[nodiscard]] const TabOrder& Tabs() const { return tabs_; }
  // nullptr before the form took the focus first.
  [[nodiscard]] Control* Current() const { return current_; }
  [[nodiscard]] bool IsAt(const Control& control) const;

  // Nothing when the control cannot take the focus.
  void MoveTo(Control& control);
  // To the next control when this one has the focus.
  void PassFrom(const Control& control);
  // The native focus came to the control.
  void ArrivedAt(Control& control);
  // Gives the native focus to the control that had it last, or to the first tab stop.
  void Take();
  // The form is going away; no event.
  void Forget();

 private:
  [[nodiscard]] bool CanMoveTo(const Control& control) const;

  Win32Form& form_;
  TabOrder tabs_;
  Control* current_ = nullptr;
};

}  // namespace declarium::win32
