#include "host/ui/toolbar_commands.h"

#include <filesystem>
#include <optional>
#include <utility>

#include "library/file_io.h"
#include "library/file_name.h"
#include "source/module_text.h"
#include "text/code_page.h"
#include "text/user_texts.h"

namespace declarium {
namespace {

// What the file holds with the basket's text in it; nothing when it cannot be read.
std::optional<std::string> NewContent(std::u16string_view file, std::u16string_view text) {
  if (!IsSourceModuleName(file)) return EncodeCodePage(text);
  const auto path = PathOfName(file);
  std::error_code ignored;
  std::string old;
  if (std::filesystem::exists(path, ignored)) {
    auto read = ReadWholeFile(path);
    if (!read) return std::nullopt;
    old = *std::move(read);
  }
  auto module = InsertIntoModule(old, text);
  if (!module) return std::nullopt;
  return std::move(module->bytes);
}

}  // namespace

ToolbarCommands::ToolbarCommands(Toolkit& toolkit, FileSaver& saver, Toolbar& Toolbar1,
                                 ToolbarActions actions)
    : toolkit_(toolkit), saver_(saver), actions_(std::move(actions)) {
  Toolbar1.on_button_click = [this](std::string_view key) { Toolbar1_ButtonClick(key); };
}

void ToolbarCommands::Toolbar1_ButtonClick(std::string_view key) {
  if (key == "new") return actions_.new_database();
  if (key == "open") return actions_.open();
  if (key == "save") return actions_.save();
  if (key == "add") return actions_.add();
  if (key == "copy") return Copy();
  if (key == "delete") return actions_.delete_entry();
  if (key == "export") return Export();
  if (key == "insert") return actions_.insert();
  if (key == "find") return actions_.find();
  if (key == "settings") return actions_.settings();
  if (key == "insert-missing") return actions_.insert_missing();
}

void ToolbarCommands::Copy() {
  toolkit_.ClearClipboard();
  toolkit_.SetClipboardText(actions_.basket_text());
}

// A failure ends the command without a message; the file is unchanged then.
void ToolbarCommands::Export() {
  const auto file = toolkit_.ChooseFileToSave({.filter = std::u16string(texts::kSourceFilter)});
  if (!file) return;
  if (const auto content = NewContent(*file, actions_.basket_text())) {
    (void)saver_.Save(PathOfName(*file), *content);
  }
}

}  // namespace declarium
