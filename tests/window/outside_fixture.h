// Declarium.exe in a folder of its own, driven from outside. Each test begins without settings; the
// user's own are put away meanwhile.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "shell/registry_store.h"
#include "support/temporary_folder.h"
#include "win32/system_registry.h"
#include "window/driven_lists.h"
#include "window/driven_main_window.h"
#include "window/window_driver.h"

namespace declarium {

using Rows = std::vector<std::u16string>;

// The bytes of a library: constants A, B, MAX_PATH; declares Beep, GetTickCount, GetWindow; records
// POINTAPI, RECT.
[[nodiscard]] std::string WinLibrary(std::string_view title = "Win");
// One constant, C.
[[nodiscard]] std::string OtherLibrary();

class OutsideTest : public testing::Test {
 protected:
  OutsideTest();
  ~OutsideTest() override;

  // A file in the program's folder, which is where it looks for libraries.
  [[nodiscard]] std::filesystem::path FileAt(std::string_view name) const { return folder_ / name; }
  void Put(std::string_view name, std::string_view bytes) const;
  [[nodiscard]] std::string BytesOf(std::string_view name) const;
  // Whether the file comes to hold these bytes.
  [[nodiscard]] bool ComesToHold(std::string_view name, std::string_view bytes) const;

  // Starts the program; StartAndShow waits until its window is there.
  void Start(const std::wstring& arguments = {});
  void StartAndShow(const std::wstring& arguments = {});
  // Ends the program at once, as it cannot notice.
  void Kill();
  // In another folder than its own.
  void StartIn(const std::filesystem::path& folder, const std::wstring& arguments);
  // Drives a process of the program that a host started; AwaitMain waits until its window is shown.
  void Attach(DWORD process);
  void AwaitMain();
  [[nodiscard]] window_driver::DrivenProgram& Program() const { return *program_; }

  // frmMain and its controls.
  [[nodiscard]] HWND Main() const { return main_; }
  [[nodiscard]] HWND Control(std::string_view name) const;
  [[nodiscard]] std::u16string Caption() const { return window_driver::TextOf(main_); }
  void ChooseMenu(std::string_view name) const;
  void ClickToolbar(std::string_view key) const;
  [[nodiscard]] bool ToolbarEnabled(std::string_view key) const;
  void ChooseKind(int kind) const;
  // Clicks a row of the kind's list when it is there, and waits until its code is shown.
  void ClickItem(std::string_view list, int row, std::u16string_view code_start) const;

  [[nodiscard]] bool CaptionBecomes(std::u16string_view caption) const;
  [[nodiscard]] bool CodeBecomes(std::u16string_view code) const;
  [[nodiscard]] bool ListBecomes(std::string_view list, const Rows& rows) const;
  [[nodiscard]] bool EntriesBecome(std::string_view view, const Rows& entries) const;
  // Waits for a message box with this text and presses a button of it.
  void AnswerMessage(std::u16string_view text, int button) const;
  // Waits for a file dialog and gives it a file of the program's folder.
  void AnswerFile(std::string_view name) const;
  // The same for a file that is there: lets it be replaced.
  void AnswerFileThatExists(std::string_view name) const;
  // Waits for the input box, types and presses OK.
  void AnswerText(std::u16string_view text) const;
  void Close() const;

  win32::SystemRegistry registry_;
  RegistryStore store_{registry_};

 private:
  window_driver::SettingsPutAway settings_;
  TemporaryFolder folder_;
  std::unique_ptr<window_driver::DrivenProgram> program_;
  HWND main_ = nullptr;
};

}  // namespace declarium
