// How far a long operation has come.
#pragma once

#include "toolkit/control.h"

namespace declarium {

class ProgressBar : public Control {
 public:
  // From 0 to Maximum(); the maximum is 100 at first. Values outside are moved to the nearer end.
  [[nodiscard]] virtual int Maximum() const = 0;
  virtual void SetMaximum(int maximum) = 0;
  [[nodiscard]] virtual int Value() const = 0;
  virtual void SetValue(int value) = 0;

 protected:
  using Control::Control;
};

}  // namespace declarium
