// The export command: the whole library into a module file.
#pragma once

#include <functional>
#include <string>

#include "library/file_saver.h"
#include "library/library.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit.h"

namespace declarium {

class ExportCommand {
 public:
  // `as_written` makes of the library's source text what goes into the file. Everything must
  // outlive the command.
  ExportCommand(Toolkit& toolkit, FileSaver& saver, const Library& library, MenuItem& mnuExport,
                std::function<std::u16string(std::u16string)> as_written);

  void mnuExport_Click();

 private:
  Toolkit& toolkit_;
  FileSaver& saver_;
  const Library& library_;
  std::function<std::u16string(std::u16string)> as_written_;
};

}  // namespace declarium
