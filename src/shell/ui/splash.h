// frmSplash: the window that a program started by itself shows above all others for its first
// moments. A click on it or a key closes it earlier.
#pragma once

#include <memory>

#include "toolkit/toolkit.h"

namespace declarium {

[[nodiscard]] const FormDefinition& SplashFormDefinition();

class Splash {
 public:
  explicit Splash(Toolkit& toolkit);
  Splash(const Splash&) = delete;
  Splash& operator=(const Splash&) = delete;

  // Shows the window and keeps it above those of all programs; once for each Splash.
  void Show();

 private:
  std::unique_ptr<Form> form_;
};

}  // namespace declarium
