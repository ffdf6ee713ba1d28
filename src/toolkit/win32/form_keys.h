// The keys of a form that are not for the focused control alone: shortcuts, tab, default and cancel
// buttons, access keys.
#pragma once

#include <string_view>

#include "toolkit/control.h"
#include "toolkit/form_definition.h"
#include "win32/system.h"

namespace declarium::win32 {

class Win32Form;

class FormKeys {
 public:
  // The form must outlive it. `help_topic` is what F1 opens.
  FormKeys(Win32Form& form, std::string_view help_topic) : form_(form), help_topic_(help_topic) {}

  // Handles a keyboard message of the form's windows. False when it is for the focused control.
  bool Translate(MSG& message);

 private:
  bool PressShortcut(int key);
  [[nodiscard]] bool PressToolbarShortcut(const Shortcut& shortcut) const;
  bool PressHelpKey(int key);
  bool PressTab();
  bool PressButtonKey(int key);
  static void Click(Control& button);

  Win32Form& form_;
  std::string_view help_topic_;
};

}  // namespace declarium::win32
