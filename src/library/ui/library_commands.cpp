#include "library/ui/library_commands.h"

#include <algorithm>
#include <string>
#include <utility>

#include "library/file_format.h"
#include "library/file_name.h"
#include "library/find_item_index.h"
#include "library/library_file.h"
#include "library/temporary_file.h"
#include "library/ui/character_name.h"
#include "library/ui/file_messages.h"
#include "library/ui/history_dialog.h"
#include "text/user_texts.h"
#include "toolkit/held_flag.h"

namespace declarium {
namespace {

FileDialog LibraryDialog() {
  return {.filter = std::u16string(texts::kLibraryFilter), .default_extension = u"api"};
}

std::u16string Quoted(std::u16string_view before, std::u16string_view name,
                      std::u16string_view behind) {
  return std::u16string(before).append(name).append(behind);
}

// A file that was left by a saver of version 3.0.0 has no name that a library could be saved to.
std::filesystem::path FileToRestore(const std::filesystem::path& path) {
  if (!ParseTemporaryFileName(path)) return path;
  auto file = path.parent_path() / "recovered.api";
  std::error_code failed;
  for (int i = 2; std::filesystem::exists(file, failed); ++i) {
    file.replace_filename("recovered-" + std::to_string(i) + ".api");
  }
  return file;
}

}  // namespace

LibraryCommands::LibraryCommands(Toolkit& toolkit, FileSaver& saver, Library& library,
                                 KindSelector& selector, const LibraryControls& controls,
                                 std::filesystem::path folder)
    : toolkit_(toolkit),
      saver_(saver),
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
  controls_.mnuRestore.on_click = [this] { mnuRestore_Click(); };
  controls_.mnuDeleteDbItem.on_click = [this] { mnuDeleteDbItem_Click(); };
}

void LibraryCommands::EnumDatabases() {
  TellRecovered(toolkit_, saver_.LookInto(folder_));
  const auto row = controls_.cmbDatabase.ListIndex();
  controls_.cmbDatabase.Clear();
  catalogue_ = declarium::EnumDatabases(folder_);
  for (const auto& entry : catalogue_) controls_.cmbDatabase.AddRow(entry.title);
  controls_.cmbDatabase.SetListIndex(row);
}

void LibraryCommands::SetDatabaseTitle(std::u16string_view title) {
  library_.SetTitle(title);
  controls_.frmMain.SetCaption(CaptionOf(title));
}

void LibraryCommands::LoadDatabase(const std::filesystem::path& path) {
  const auto read = ReadStampedOrTell(toolkit_, path);
  if (auto library = ParseLibrary(read.bytes, path)) {
    library->stamp = read.stamp;
    library->dirty = library_.dirty;
    Open(*std::move(library));
  } else {
    RefuseFaulty(CutIntoSections(read.bytes), path);
  }
}

// Names and items are taken over at once, before events can save or change them.
void LibraryCommands::Open(Library library) {
  library_ = std::move(library);
  if (!ShowLists()) return;
  SetDatabaseTitle(std::u16string(library_.Title()));
  last_title_.clear();
  ShowInCatalogue(library_.path);
  EnableLibraryCommands(true);
  controls_.lstFind.Clear();
  controls_.lstShare.Clear();
}

// The order of the steps decides what a faulty file leaves changed.
void LibraryCommands::RefuseFaulty(const LibrarySections& sections,
                                   const std::filesystem::path& path) {
  const auto old_path = library_.path;
  bool is_open = true;
  if (TakeNames(sections, library_)) {
    library_.path = path;
    is_open = ShowLists();
  }
  toolkit_.ShowMessage(
      {std::u16string(texts::kInvalidFormat), MessageButtons::kOk, MessageIcon::kCritical});
  if (!is_open) return;
  last_title_.clear();
  EnableLibraryCommands(false);
  library_.path = old_path;
  if (controls_.cmbDatabase.RowCount() > 0) controls_.cmbDatabase.SetListIndex(0);
}

bool LibraryCommands::ShowLists() {
  const auto load = ++loads_;
  selector_.Refill();
  return load == loads_;
}

void LibraryCommands::ShowInCatalogue(const std::filesystem::path& path) {
  const auto row = FindPath(catalogue_, path);
  if (!row) {
    controls_.cmbDatabase.SetListIndex(-1);
    return;
  }
  const HeldFlag suppressed(suppress_click_);
  // A file changed by others since the catalogue was read has a title that no row shows.
  if (!controls_.cmbDatabase.SetText(library_.Title())) {
    controls_.cmbDatabase.SetListIndex(static_cast<int>(*row));
  }
}

void LibraryCommands::EnableLibraryCommands(bool enabled) {
  controls_.Toolbar1.SetButtonEnabled("save", enabled);
  for (MenuItem* entry :
       {&controls_.mnuSave, &controls_.mnuSaveAs, &controls_.mnuImport, &controls_.mnuExport,
        &controls_.mnuAdd, &controls_.mnuRename, &controls_.mnuCheck}) {
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
      toolkit_.ShowMessage({Quoted(texts::kAskSaveBefore, library_.Title(), texts::kAskSaveBehind),
                            MessageButtons::kYesNoCancel, MessageIcon::kExclamation});
  if (answer == Answer::kYes) {
    mnuSave_Click();
    if (save_refused_) return false;
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
  if (const auto character = FindUnkeepableCharacter(title)) {
    toolkit_.ShowMessage({Quoted(texts::kTitleRefusedBefore, CharacterName(*character), u"."),
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
  WriteFileOrTell(toolkit_, saver_, path, EmptyLibraryBytes(title));
  EnumDatabases();
  LoadDatabase(path);
}

void LibraryCommands::mnuOpen_Click() {
  if (!AskSaveChanges()) return;
  if (const auto file = toolkit_.ChooseFileToOpen(LibraryDialog())) LoadDatabase(PathOfName(*file));
}

// Whether the file may be replaced: nobody else has changed it, or the user wants it.
bool LibraryCommands::MayReplace() {
  if (!library_.IsWhole() || !library_.stamp || !HasChangedSince(*library_.stamp, library_.path)) {
    return true;
  }
  return toolkit_.ShowMessage({std::u16string(texts::kAskReplaceChanged), MessageButtons::kYesNo,
                               MessageIcon::kExclamation, DefaultButton::kSecond}) == Answer::kYes;
}

void LibraryCommands::WriteLibrary(const std::filesystem::path& path) {
  kept_revision_.reset();
  const auto saved = SaveLibraryFile(saver_, library_, path);
  if (!TellSaved(toolkit_, saved)) return;
  library_.stamp = saved->stamp;
  saver_.Kept().MarkTold(path);
}

void LibraryCommands::mnuSave_Click() {
  save_refused_ = !MayReplace();
  if (save_refused_) return;
  const HourglassPointer hourglass(toolkit_);
  WriteLibrary(library_.path);
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
  library_.stamp.reset();
  WriteLibrary(path);
  library_.dirty = false;
  library_.path = path;
  EnumDatabases();
}

void LibraryCommands::OpenVersion(const std::filesystem::path& path, std::string_view bytes) {
  if (!AskSaveChanges()) return;
  auto library = ParseLibrary(bytes, path);
  if (!library) {
    toolkit_.ShowMessage(
        {std::u16string(texts::kInvalidFormat), MessageButtons::kOk, MessageIcon::kCritical});
    return;
  }
  // What the file holds now is known: replacing it is what the user is about to do.
  if (path == library_.path) library->stamp = library_.stamp;
  library->dirty = true;
  Open(*std::move(library));
}

void LibraryCommands::mnuRestore_Click() {
  if (library_.path.empty()) return;
  const auto path = library_.path;
  if (const auto bytes = AskForVersion(toolkit_, controls_.frmMain, saver_.Kept(), library_)) {
    OpenVersion(path, *bytes);
  }
}

void LibraryCommands::OfferUnwritten() {
  auto& history = saver_.Kept();
  for (const auto& path : history.Untold()) {
    const auto versions = history.Versions(path);
    const auto untold = std::ranges::find(versions, false, &Version::told);
    if (untold == versions.end()) continue;
    const auto bytes = history.Read(*untold).value_or(std::string());
    history.MarkTold(path);
    if (!ParseLibrary(bytes, path)) {
      TellRecovered(toolkit_, {{path, false}});
    } else if (toolkit_.ShowMessage(
                   {Quoted(texts::kAskOpenUnwritten, u"\r\n\r\n", NameOfPath(path)),
                    MessageButtons::kYesNo, MessageIcon::kQuestion}) == Answer::kYes) {
      return OpenVersion(FileToRestore(path), bytes);
    }
  }
}

bool LibraryCommands::KeepUnsaved() {
  if (!library_.dirty || !library_.IsWhole() || library_.path.empty() || !saver_.Kept().IsOn()) {
    return false;
  }
  if (kept_revision_ == library_.Revision()) return true;
  if (!saver_.Kept().KeepBytes(library_.path, LibraryBytes(library_))) return false;
  kept_revision_ = library_.Revision();
  return true;
}

void LibraryCommands::mnuRename_Click() {
  const auto title = AskTitle(texts::kAskNewTitle, library_.Title());
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
    library_.RemoveItem(*kind, static_cast<std::size_t>(position));
  }
  library_.dirty = true;
  selector_.Refill();
}

}  // namespace declarium
