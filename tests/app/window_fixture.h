// The main window on the headless backend, over a folder of libraries of its own.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/main_window.h"
#include "shell/file_store.h"
#include "toolkit/headless/toolkit.h"
#include "toolkit/headless/user.h"

namespace declarium {

// Looks at what a window has and shows to nobody.
class MainWindowProbe {
 public:
  [[nodiscard]] static const Library& LibraryOf(const MainWindow& window) {
    return window.library_;
  }
};

// The rows of a list, or the entries of a list view as "icon name".
std::vector<std::u16string> RowsOf(const RowList& list);
std::vector<std::u16string> EntriesOf(const ListView& list);

// A library file's content from the items of its kinds, which must be sorted; '/' stands for
// separator 14 in a constant, '|' for 13 and '!' for 12 in a record, '+' and '-' for the markers of
// Function and Sub at the start of a Declare.
std::string LibraryContent(std::u16string_view title,
                           const std::vector<std::pair<std::u16string, std::u16string>>& consts,
                           const std::vector<std::pair<std::u16string, std::u16string>>& declares,
                           const std::vector<std::pair<std::u16string, std::u16string>>& types);

inline constexpr std::u16string_view kWriteError = u"Chyba pri zápise do súboru.";

class WindowTest : public testing::Test {
 protected:
  WindowTest();
  ~WindowTest() override;

  // Files of the libraries' folder.
  [[nodiscard]] std::filesystem::path FileAt(std::string_view name) const {
    return folder_ / "program" / name;
  }
  void WriteFile(std::string_view name, std::string_view bytes);
  [[nodiscard]] std::string ReadFile(std::string_view name) const;
  // "Win": constants A, B, MAX_PATH, declares Beep, GetTickCount, GetWindow, records POINTAPI,
  // RECT.
  void WriteWinLibrary(std::string_view name = "win.api", std::u16string_view title = u"Win");

  // Makes the window over what the folder and the store hold now, and shows it.
  void Open();
  // The same, for a window that ran before: closes it and opens a new one.
  void Reopen();

  [[nodiscard]] MainForm& Form() { return window_->Controls(); }
  [[nodiscard]] const Library& Opened() const { return MainWindowProbe::LibraryOf(*window_); }
  [[nodiscard]] Toolkit& toolkit() { return *toolkit_; }
  [[nodiscard]] headless::DialogScript& Script() { return toolkit_->Script(); }
  [[nodiscard]] headless::HeadlessUser& User() { return user_; }
  // The message boxes shown since this was last asked.
  [[nodiscard]] std::vector<std::u16string> Messages();

  std::filesystem::path folder_;
  MainWindowOptions options_;
  std::optional<FileStore> store_;
  std::unique_ptr<headless::HeadlessToolkit> toolkit_;
  headless::HeadlessUser user_;
  std::unique_ptr<MainWindow> window_;
};

}  // namespace declarium
