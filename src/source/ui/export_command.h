// The export command: the whole library into a module file.
#pragma once

#include "library/library.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit.h"

namespace declarium {

class ExportCommand {
 public:
  // Everything must outlive the command.
  ExportCommand(Toolkit& toolkit, const Library& library, MenuItem& mnuExport);

  void mnuExport_Click();

 private:
  Toolkit& toolkit_;
  const Library& library_;
};

}  // namespace declarium
