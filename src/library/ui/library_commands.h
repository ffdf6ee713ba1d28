// The catalogue combo box and the commands of the library menu.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "library/catalogue.h"
#include "library/file_format.h"
#include "library/file_saver.h"
#include "library/library.h"
#include "library/ui/kind_selector.h"
#include "toolkit/form.h"
#include "toolkit/list_view.h"
#include "toolkit/menu.h"
#include "toolkit/toolbar.h"

namespace declarium {

struct LibraryControls {
  Form& frmMain;
  ComboBox& cmbDatabase;
  Toolbar& Toolbar1;
  MenuItem& mnuDatabase;
  MenuItem& mnuNew;
  MenuItem& mnuOpen;
  MenuItem& mnuSave;
  MenuItem& mnuSaveAs;
  MenuItem& mnuRename;
  MenuItem& mnuRestore;
  MenuItem& mnuImport;
  MenuItem& mnuExport;
  MenuItem& mnuAdd;
  MenuItem& mnuDeleteDbItem;
  MenuItem& mnuCheck;
  ListBox& lstFind;
  ListView& lstShare;
};

class LibraryCommands {
 public:
  // `folder` is the program's folder, whose libraries make the catalogue. Everything given by
  // reference must outlive the commands.
  LibraryCommands(Toolkit& toolkit, FileSaver& saver, Library& library, KindSelector& selector,
                  const LibraryControls& controls, std::filesystem::path folder);

  // Looks after what killed savers left in the folder, and tells the user; then reads the catalogue
  // anew; the combo box keeps its row number, which loads the row's library
  // when that row has another title now.
  void EnumDatabases();

  // Replaces the open library by the file's. A file that is no library is reported, and the first
  // row of the catalogue is selected; what was replaced before the fault was met stays replaced.
  void LoadDatabase(const std::filesystem::path& path);
  // Loads the first library of the catalogue with exactly this title, if any.
  void LoadDatabaseByName(std::u16string_view title);
  void SetDatabaseTitle(std::u16string_view title);

  // Offers to save unsaved changes; false when the user cancelled, also by not replacing what
  // somebody else has written meanwhile. A No leaves them unsaved and still marked, so the next
  // switch asks again.
  [[nodiscard]] bool AskSaveChanges();

  // The library to open at start: the file named on the command line when it exists, otherwise the
  // catalogue row remembered from the last closing.
  void OpenAtStart(const std::filesystem::path& command_line, int remembered_row,
                   std::u16string_view remembered_title);

  // Tells of what an earlier run could not write, and offers to open it; for when the window is
  // there.
  void OfferUnwritten();

  // Opens a kept version of the library file `path`, as that library with unsaved changes. Asks
  // before unsaved changes are lost.
  void OpenVersion(const std::filesystem::path& path, std::string_view bytes);

  // Keeps unsaved changes in the history, for a moment at which nobody can be asked; the same ones
  // once, so that a failure that comes again and again does not push out the versions before it. To
  // be told at the next start. Whether there are any and they are kept.
  bool KeepUnsaved();

  void cmbDatabase_Click();
  void mnuDatabase_Click();
  void mnuNew_Click();
  void mnuOpen_Click();
  void mnuSave_Click();
  void mnuSaveAs_Click();
  void mnuRename_Click();
  void mnuRestore_Click();
  void mnuDeleteDbItem_Click();

 private:
  void Open(Library library);
  void RefuseFaulty(const LibrarySections& sections, const std::filesystem::path& path);
  // Shows the lists of the library that has just been taken over. That handles pending events,
  // which may open another one: false then, and that one stays open.
  [[nodiscard]] bool ShowLists();
  [[nodiscard]] bool MayReplace();
  void WriteLibrary(const std::filesystem::path& path);
  // The title typed; empty when cancelled, and after a message when no file could hold it.
  [[nodiscard]] std::u16string AskTitle(std::u16string_view prompt, std::u16string_view initial);
  void ShowInCatalogue(const std::filesystem::path& path);
  void EnableLibraryCommands(bool enabled);

  Toolkit& toolkit_;
  FileSaver& saver_;
  Library& library_;
  KindSelector& selector_;
  LibraryControls controls_;
  std::filesystem::path folder_;
  Catalogue catalogue_;
  std::u16string last_title_;  // the title last switched to; empty after every load
  int last_row_ = -1;          // its row, to go back to when a switch is cancelled
  int loads_ = 0;
  bool suppress_click_ = false;
  std::optional<std::uint64_t> kept_revision_;  // of the library, when it was kept unsaved
  bool save_refused_ = false;  // the user chose to keep what somebody else has written
};

}  // namespace declarium
