#include "import/ui/import_command.h"

#include "import/ui/loss_message.h"
#include "import/ui/reading_question.h"
#include "library/file_name.h"
#include "library/ui/file_messages.h"
#include "text/encoding.h"
#include "text/user_texts.h"

namespace declarium {

void ImportItems(Toolkit& toolkit, Library& library, KindSelector& selector,
                 const ParsedItems& parsed, Existing existing) {
  {
    const HourglassPointer hourglass(toolkit);
    MergeItems(library, parsed, existing);
    library.dirty = true;
    selector.Refill();
  }
  TellLosses(toolkit, parsed);
}

ImportCommand::ImportCommand(Toolkit& toolkit, Library& library, KindSelector& selector,
                             MenuItem& mnuImport)
    : toolkit_(toolkit), library_(library), selector_(selector) {
  mnuImport.on_click = [this] { mnuImport_Click(); };
}

void ImportCommand::mnuImport_Click() {
  const auto file = toolkit_.ChooseFileToOpen({.filter = std::u16string(texts::kModuleFilter)});
  if (!file) return;
  const auto bytes = ReadFileOrTell(toolkit_, PathOfName(*file));
  auto existing = Existing::kReplace;
  if (library_.HasItems() &&
      toolkit_.ShowMessage({std::u16string(texts::kAskKeepItems), MessageButtons::kYesNo,
                            MessageIcon::kExclamation}) == Answer::kYes) {
    existing = Existing::kKeep;
  }
  const auto chosen = [&] {
    const HourglassPointer hourglass(toolkit_);
    const auto encoding = RecognizeEncoding(bytes, kLibraryEncoding);
    return ChooseReading(toolkit_, DecodeText(bytes, encoding), ParseSourceFile(bytes, encoding));
  }();
  if (chosen) ImportItems(toolkit_, library_, selector_, *chosen, existing);
}

}  // namespace declarium
