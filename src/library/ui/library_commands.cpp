#include "library/ui/library_commands.h"

#include <utility>

#include "library/file_format.h"
#include "library/file_name.h"
#include "library/find_item_index.h"
#include "library/ui/file_messages.h"
#include "text/user_texts.h"
#include "toolkit/held_flag.h"
#include "vb/number.h"

namespace declarium {
namespace {

FileDialog LibraryDialog() {
  return {.filter = std::u16string(texts::kDatabaseFilter), .default_extension = u"api"};
}

std::u16string Quoted(std::u16string_view before, std::u16string_view name,
                      std::u16string_view behind) {
  return std::u16string(before).append(name).append(behind);
}

}  // namespace

LibraryCommands::LibraryCommands(Toolkit& toolkit, Library& library, KindSelector& selector,
                                 const DatabaseControls& controls, std::filesystem::path folder)
    : toolkit_(toolkit),
      library_(library),
      selector_(selector),
      controls_(controls),
      folder_(std::move(folder)) {
  controls_.cmbDatabase.on_click = [this] { cmbDatabase_Click(); };
  controls_.mnuDatabase.on_click = [this] { mnuDatabase_Click(); };
  controls_.mnuNew.on_click = [this] { mnuNew_Click(); };
  controls_.mnuOpen.on_click = [this] { mnuOpen_Click(); };
  controls_.mnuSave.on_click = [this] { mnuSave_Click(); };
  controls_.mnuSaveAs.on_click = [this] { mnuSaveAs_Click(); };
  controls_.mnuRename.on_click = [this] { mnuRename_Click(); };
  controls_.mnuDeleteDbItem.on_click = [this] { mnuDeleteDbItem_Click(); };
}

void LibraryCommands::EnumDatabases() {
  const auto row = controls_.cmbDatabase.ListIndex();
  controls_.cmbDatabase.Clear();
  catalogue_ = declarium::EnumDatabases(folder_);
  for (const auto& entry : catalogue_) controls_.cmbDatabase.AddRow(entry.title);
  controls_.cmbDatabase.SetListIndex(row);
}

void LibraryCommands::SetDatabaseTitle(std::u16string_view title) {
  library_.title = title;
  controls_.frmMain.SetCaption(CaptionOf(title));
}

void LibraryCommands::LoadDatabase(const std::filesystem::path& path) {
  const auto old_path = library_.path;
  const auto sections = CutIntoSections(ReadFileOrTell(toolkit_, path));
  if (TryLoad(sections, path)) return;
  toolkit_.ShowMessage(
      {std::u16string(texts::kInvalidFormat), MessageButtons::kOk, MessageIcon::kCritical});
  last_title_.clear();
  EnableDatabaseCommands(false);
  library_.path = old_path;
  if (controls_.cmbDatabase.RowCount() > 0) controls_.cmbDatabase.SetListIndex(0);
}

// The order of the steps decides what a faulty file leaves changed.
bool LibraryCommands::TryLoad(const LibrarySections& sections, const std::filesystem::path& path) {
  if (!TakeNames(sections, library_)) return false;
  selector_.ClearLists();
  library_.path = path;
  selector_.Reselect();
  if (!TakeItems(sections, library_)) return false;
  SetDatabaseTitle(sections.title);
  library_.path = path;
  last_title_.clear();
  ShowInCatalogue(path);
  EnableDatabaseCommands(true);
  controls_.lstFind.Clear();
  controls_.lstShare.Clear();
  return true;
}

void LibraryCommands::ShowInCatalogue(const std::filesystem::path& path) {
  const auto row = FindPath(catalogue_, path);
  if (!row) {
    controls_.cmbDatabase.SetListIndex(-1);
    return;
  }
  const HeldFlag suppressed(suppress_click_);
  // A file changed by others since the catalogue was read has a title that no row shows.
  if (!controls_.cmbDatabase.SetText(library_.title)) {
    controls_.cmbDatabase.SetListIndex(static_cast<int>(*row));
  }
}

void LibraryCommands::EnableDatabaseCommands(bool enabled) {
  controls_.Toolbar1.SetButtonEnabled("save", enabled);
  for (MenuItem* entry : {&controls_.mnuSave, &controls_.mnuSaveAs, &controls_.mnuImport,
                          &controls_.mnuExport, &controls_.mnuAdd, &controls_.mnuRename}) {
    entry->SetEnabled(enabled);
  }
}

void LibraryCommands::LoadDatabaseByName(std::u16string_view title) {
  if (const auto row = FindTitle(catalogue_, title)) {
    LoadDatabase(std::filesystem::path(catalogue_[*row].path));
  }
}

bool LibraryCommands::AskSaveChanges() {
  if (!library_.dirty) return true;
  const auto answer =
      toolkit_.ShowMessage({Quoted(texts::kAskSaveBefore, library_.title, texts::kAskSaveBehind),
                            MessageButtons::kYesNoCancel, MessageIcon::kExclamation});
  if (answer == Answer::kYes) {
    mnuSave_Click();
    library_.dirty = false;
  }
  return answer == Answer::kYes || answer == Answer::kNo;
}

void LibraryCommands::OpenAtStart(const std::filesystem::path& command_line, int remembered_row,
                                  std::u16string_view remembered_title) {
  std::error_code ignored;
  if (!command_line.empty() && std::filesystem::is_regular_file(command_line, ignored)) {
    LoadDatabase(command_line);
  } else if (const auto row = StartupRow(catalogue_, remembered_row, remembered_title)) {
    controls_.cmbDatabase.SetListIndex(static_cast<int>(*row));
  }
}

void LibraryCommands::cmbDatabase_Click() {
  if (suppress_click_) return;
  if (controls_.cmbDatabase.Text() == last_title_) return;
  if (AskSaveChanges()) {
    LoadDatabaseByName(controls_.cmbDatabase.Text());
    // A faulty library has moved the combo box on to the first row, which is remembered then.
    last_title_ = controls_.cmbDatabase.Text();
    last_row_ = controls_.cmbDatabase.ListIndex();
  } else {
    const HeldFlag suppressed(suppress_click_);
    controls_.cmbDatabase.SetListIndex(last_row_);
  }
}

void LibraryCommands::mnuDatabase_Click() {
  const auto* list = selector_.SelectList();
  if (list != nullptr) controls_.mnuDeleteDbItem.SetEnabled(!list->Text().empty());
}

std::u16string LibraryCommands::AskTitle(std::u16string_view prompt, std::u16string_view initial) {
  auto title = toolkit_.AskText(prompt, initial);
  if (const auto separator = FindSeparator(title)) {
    toolkit_.ShowMessage({Quoted(texts::kTitleRefusedBefore, NumberText(*separator), u"."),
                          MessageButtons::kOk, MessageIcon::kExclamation});
    title.clear();
  }
  return title;
}

void LibraryCommands::mnuNew_Click() {
  if (!AskSaveChanges()) return;
  const auto title = AskTitle(texts::kAskTitle, u"");
  if (title.empty()) return;
  auto dialog = LibraryDialog();
  dialog.initial_folder = NameOfPath(folder_);
  const auto file = toolkit_.ChooseFileToSave(dialog);
  if (!file) return;
  const auto path = PathOfName(*file);
  WriteFileOrTell(toolkit_, path, EmptyLibraryBytes(title));
  EnumDatabases();
  LoadDatabase(path);
}

void LibraryCommands::mnuOpen_Click() {
  if (!AskSaveChanges()) return;
  if (const auto file = toolkit_.ChooseFileToOpen(LibraryDialog())) LoadDatabase(PathOfName(*file));
}

void LibraryCommands::mnuSave_Click() {
  const HourglassPointer hourglass(toolkit_);
  WriteFileOrTell(toolkit_, library_.path, LibraryBytes(library_));
  library_.dirty = false;  // also when the message of a failed write was shown
  EnumDatabases();
}

void LibraryCommands::mnuSaveAs_Click() {
  auto dialog = LibraryDialog();
  dialog.file_name = NameOfPath(library_.path);
  const auto file = toolkit_.ChooseFileToSave(dialog);
  if (!file) return;
  const HourglassPointer hourglass(toolkit_);
  const auto path = PathOfName(*file);
  WriteFileOrTell(toolkit_, path, LibraryBytes(library_));
  library_.dirty = false;
  library_.path = path;
  EnumDatabases();
}

void LibraryCommands::mnuRename_Click() {
  const auto title = AskTitle(texts::kAskNewTitle, library_.title);
  library_.dirty = true;  // a cancelled rename counts as a change too
  if (!title.empty()) SetDatabaseTitle(title);
}

void LibraryCommands::mnuDeleteDbItem_Click() {
  const auto* list = selector_.SelectList();
  const auto kind = selector_.SelectedKind();
  if (list == nullptr || !kind) return;
  const auto name = list->Text();
  if (name.empty()) return;
  const auto answer = toolkit_.ShowMessage(
      {Quoted(texts::kAskDeleteBefore, name, texts::kAskDeleteBehind), MessageButtons::kYesNo,
       MessageIcon::kExclamation, DefaultButton::kSecond});
  if (answer != Answer::kYes) return;
  if (const auto position = FindItemIndex(name, library_[*kind].names); position >= 0) {
    RemoveItem(library_, *kind, static_cast<std::size_t>(position));
  }
  library_.dirty = true;
  selector_.Refill();
}

}  // namespace declarium
