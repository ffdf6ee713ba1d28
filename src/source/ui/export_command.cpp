#include "source/ui/export_command.h"

#include <utility>

#include "library/file_name.h"
#include "library/ui/file_messages.h"
#include "source/item_text.h"
#include "text/code_page.h"
#include "text/user_texts.h"

namespace declarium {

ExportCommand::ExportCommand(Toolkit& toolkit, FileSaver& saver, const Library& library,
                             MenuItem& mnuExport,
                             std::function<std::u16string(std::u16string)> as_written)
    : toolkit_(toolkit), saver_(saver), library_(library), as_written_(std::move(as_written)) {
  mnuExport.on_click = [this] { mnuExport_Click(); };
}

void ExportCommand::mnuExport_Click() {
  const auto file = toolkit_.ChooseFileToSave({.filter = std::u16string(texts::kModuleFilter)});
  if (!file) return;
  const HourglassPointer hourglass(toolkit_);
  if (!library_.IsWhole()) return TellNotWhole(toolkit_);
  WriteFileOrTell(toolkit_, saver_, PathOfName(*file),
                  EncodeCodePage(as_written_(ExportText(library_))));
}

}  // namespace declarium
