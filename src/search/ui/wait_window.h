// frmWait: says that memory is being freed while a long result list goes.
#pragma once

#include <memory>

#include "toolkit/form.h"
#include "toolkit/form_definition.h"
#include "toolkit/toolkit.h"

namespace declarium {

class WaitWindow {
 public:
  // The toolkit must outlive the window.
  explicit WaitWindow(Toolkit& toolkit) : toolkit_(toolkit) {}

  // Shows and paints the window, handling pending events. It stays on screen while the caller is
  // busy and closes itself when events are handled next: a press of the mouse on its picture, which
  // closes it, is in the queue by then. `owner` may be null.
  void Show(Form* owner);

 private:
  void MakeForm();

  Toolkit& toolkit_;
  std::unique_ptr<Form> frmWait_;
};

[[nodiscard]] const FormDefinition& WaitWindowDefinition();

}  // namespace declarium
