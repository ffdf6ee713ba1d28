// The export command: the whole library into a module file.
#pragma once

#include "database/database.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit.h"

namespace declarium {

class ExportCommand {
 public:
  // Everything must outlive the command.
  ExportCommand(Toolkit& toolkit, const Database& database, MenuItem& mnuExport);

  void mnuExport_Click();

 private:
  Toolkit& toolkit_;
  const Database& database_;
};

}  // namespace declarium
