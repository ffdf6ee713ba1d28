// frmAdd: declarations typed or pasted, added to the open library.
#pragma once

#include "library/ui/kind_selector.h"
#include "toolkit/form.h"
#include "toolkit/toolkit.h"

namespace declarium {

class AddDialog {
 public:
  // Everything must outlive the dialog.
  AddDialog(Toolkit& toolkit, Library& library, KindSelector& selector);

  // Shows the dialog, empty, and returns when it is closed.
  void Show(Form& owner);

 private:
  void Command1_Click(Form& form);

  Toolkit& toolkit_;
  Library& library_;
  KindSelector& selector_;
};

// For the list of control names and for tests.
[[nodiscard]] const FormDefinition& AddDialogDefinition();

}  // namespace declarium
