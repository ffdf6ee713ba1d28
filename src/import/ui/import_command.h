// The import command: the declarations of a source file into the open library.
#pragma once

#include "database/ui/kind_selector.h"
#include "import/merge.h"
#include "import/parser.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit.h"

namespace declarium {

// Merges the items into `database`, refills the lists and marks the library changed. The part that
// importing a file and typing declarations have in common.
void ImportItems(Database& database, KindSelector& selector, const ParsedItems& parsed,
                 Existing existing);

class ImportCommand {
 public:
  // Everything must outlive the command.
  ImportCommand(Toolkit& toolkit, Database& database, KindSelector& selector, MenuItem& mnuImport);

  void mnuImport_Click();

 private:
  Toolkit& toolkit_;
  Database& database_;
  KindSelector& selector_;
};

}  // namespace declarium
