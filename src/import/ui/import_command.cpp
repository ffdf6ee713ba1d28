#include "import/ui/import_command.h"

#include <utility>

#include "basic/texts.h"
#include "database/ui/file_messages.h"
#include "import/parser.h"

namespace declarium {

void ImportSource(Database& database, KindSelector& selector, SourceText source,
                  Existing existing) {
  MergeItems(database, ParseDeclarations(std::move(source)), existing);
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
  auto source = ReadSource(ReadFileOrTell(toolkit_, *file));
  JoinContinuedLines(source);
  auto existing = Existing::kReplace;
  if (database_.HasItems() &&
      toolkit_.ShowMessage({std::u16string(texts::kAskKeepItems), MessageButtons::kYesNo,
                            MessageIcon::kExclamation}) == Answer::kYes) {
    existing = Existing::kKeep;
  }
  const HourglassPointer hourglass(toolkit_);
  ImportSource(database_, selector_, std::move(source), existing);
}

}  // namespace declarium
