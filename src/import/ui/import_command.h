// The import command: the declarations of a source file into the open library.
#pragma once

#include "import/merge.h"
#include "import/parser.h"
#include "library/ui/kind_selector.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit.h"

namespace declarium {

// Merges the items into `library`, refills the lists and marks the library changed, all under the
// hourglass; then tells what no library could keep. The part that importing a file and typing
// declarations have in common.
void ImportItems(Toolkit& toolkit, Library& library, KindSelector& selector,
                 const ParsedItems& parsed, Existing existing);

class ImportCommand {
 public:
  // Everything must outlive the command.
  ImportCommand(Toolkit& toolkit, Library& library, KindSelector& selector, MenuItem& mnuImport);

  void mnuImport_Click();

 private:
  Toolkit& toolkit_;
  Library& library_;
  KindSelector& selector_;
};

}  // namespace declarium
