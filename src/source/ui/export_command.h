// The export command: the whole library into a module file.
#pragma once

#include "library/file_saver.h"
#include "library/library.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit.h"

namespace declarium {

class ExportCommand {
 public:
  // Everything must outlive the command.
  ExportCommand(Toolkit& toolkit, FileSaver& saver, const Library& library, MenuItem& mnuExport);

  void mnuExport_Click();

 private:
  Toolkit& toolkit_;
  FileSaver& saver_;
  const Library& library_;
};

}  // namespace declarium
