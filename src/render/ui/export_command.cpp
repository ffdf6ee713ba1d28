#include "render/ui/export_command.h"

#include "basic/code_page.h"
#include "basic/texts.h"
#include "database/ui/file_messages.h"
#include "render/item_text.h"

namespace declarium {

ExportCommand::ExportCommand(Toolkit& toolkit, const Database& database, MenuItem& mnuExport)
    : toolkit_(toolkit), database_(database) {
  mnuExport.on_click = [this] { mnuExport_Click(); };
}

void ExportCommand::mnuExport_Click() {
  const auto file = toolkit_.ChooseFileToSave({.filter = std::u16string(texts::kModuleFilter)});
  if (!file) return;
  const HourglassPointer hourglass(toolkit_);
  WriteFileOrTell(toolkit_, *file, EncodeCodePage(ExportText(database_)));
}

}  // namespace declarium
