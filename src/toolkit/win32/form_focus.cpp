#include "toolkit/win32/form_focus.h"

#include "toolkit/win32/form.h"
#include "toolkit/win32/toolkit.h"
#include "toolkit/win32/widget.h"

namespace declarium::win32 {

bool FormFocus::IsAt(const Control& control) const {
  return form_.Visible() && form_.TheToolkit().FocusedControl() == &control;
}

void FormFocus::MoveTo(Control& control) {
  if (!CanMoveTo(control)) return;
  current_ = &control;
  if (form_.TheToolkit().ActiveForm() != &form_) {
    SetForegroundWindow(form_.Window());
    form_.TheToolkit().FormActivated(form_);
  }
  Take();
}

bool FormFocus::CanMoveTo(const Control& control) const {
  return form_.Visible() && form_.Enabled() && control.Visible() && control.Enabled();
}

void FormFocus::PassFrom(const Control& control) {
  if (current_ != &control) return;
  current_ = tabs_.Next(&control);
  if (form_.TheToolkit().FocusedControl() == &control) Take();
}

void FormFocus::ArrivedAt(Control& control) {
  current_ = &control;
  form_.TheToolkit().ControlFocused(&control);
}

void FormFocus::Take() {
  if (!current_) current_ = tabs_.Next(nullptr);
  Control* wanted = current_;
  if (auto* widget = dynamic_cast<Widget*>(wanted)) ::SetFocus(widget->Handle());
  // The system gives no focus to a program that is not in the foreground; for the form's own
  // bookkeeping the control has it all the same, and the system follows on activation.
  if (current_ == wanted) form_.TheToolkit().ControlFocused(wanted);
}

void FormFocus::Forget() {
  if (current_ == form_.TheToolkit().FocusedControl()) form_.TheToolkit().ForgetFocus();
}

}  // namespace declarium::win32
