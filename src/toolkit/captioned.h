// The controls that show one line of text of their own. "&" before a character makes it the access
// key, "&&" shows one "&".
#pragma once

#include <string>
#include <string_view>

#include "toolkit/control.h"

namespace declarium {

class CaptionedControl : public Control {
 public:
  [[nodiscard]] virtual std::u16string Caption() const = 0;
  virtual void SetCaption(std::u16string_view caption) = 0;

 protected:
  using Control::Control;
};

// A label's access key goes to the control that stands behind it in the form's table, and names
// that control for assistive tools.
class Label : public CaptionedControl {
 protected:
  using CaptionedControl::CaptionedControl;
};

// A captioned border around other controls. It does not contain them: their places are in the form.
class Frame : public CaptionedControl {
 protected:
  using CaptionedControl::CaptionedControl;
};

class CommandButton : public CaptionedControl {
 public:
  Event<> on_click;

 protected:
  using CaptionedControl::CaptionedControl;
};

class CheckBox : public CaptionedControl {
 public:
  // 0 off, 1 on, 2 grayed. A user's click goes from 0 to 1 and from 1 or 2 to 0.
  [[nodiscard]] virtual int Value() const = 0;
  // Raises on_click when the value changes. A value other than 0, 1 and 2 changes nothing and
  // returns false.
  bool SetValue(int value);

  Event<> on_click;

 protected:
  using CaptionedControl::CaptionedControl;

 private:
  // Shows the value without raising an event.
  virtual void ShowValue(int value) = 0;
};

}  // namespace declarium
