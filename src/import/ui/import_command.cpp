#include "import/ui/import_command.h"

#include "basic/texts.h"
#include "database/ui/file_messages.h"

namespace declarium {

void ImportItems(Database& database, KindSelector& selector, const ParsedItems& parsed,
                 Existing existing) {
  MergeItems(database, parsed, existing);
  selector.Refill();
  database.dirty = true;
}

ImportCommand::ImportCommand(Toolkit& toolkit, Database& database, KindSelector& selector,
                             MenuItem& mnuImport)
    : toolkit_(toolkit), database_(database), selector_(selector) {
  mnuImport.on_click = [this] { mnuImport_Click(); };
}

void ImportCommand::mnuImport_Click() {
  const auto file = toolkit_.ChooseFileToOpen({.filter = std::u16string(texts::kModuleFilter)});
  if (!file) return;
  const auto bytes = ReadFileOrTell(toolkit_, *file);
  auto existing = Existing::kReplace;
  if (database_.HasItems() &&
      toolkit_.ShowMessage({std::u16string(texts::kAskKeepItems), MessageButtons::kYesNo,
                            MessageIcon::kExclamation}) == Answer::kYes) {
    existing = Existing::kKeep;
  }
  const HourglassPointer hourglass(toolkit_);
  ImportItems(database_, selector_, ParseSourceFile(bytes), existing);
}

}  // namespace declarium
