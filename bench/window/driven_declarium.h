// Declarium.exe in a folder of its own, driven from outside for the measurements. What is chosen
// here is chosen with a message that is answered when the program has done its work.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "library/kind.h"
#include "window/window_driver.h"

namespace declarium::bench {

// The folder with the programs that the build made beside this one.
[[nodiscard]] std::filesystem::path BuiltProgram(const std::filesystem::path& below_build_tree);

// Makes the folder, empty but for the program; returns the program's path there.
std::filesystem::path PutProgramInto(const std::filesystem::path& folder);

// What the program reads at its next start: the kind shown, the first library, no place.
void SetStartingKind(Kind kind);

// Waits, without a pause, until the window shows what it holds.
void WaitUntilPainted(HWND window);
// Waits, without a pause, for a condition. Throws std::runtime_error after twenty seconds.
void WaitTightly(const std::string& what, const std::function<bool()>& condition);

class DrivenDeclarium {
 public:
  // Starts the program, which shows the kind, and waits for its window.
  DrivenDeclarium(const std::filesystem::path& program, Kind kind);

  [[nodiscard]] HWND Main() const { return main_; }
  [[nodiscard]] HWND Control(std::string_view name) const;
  [[nodiscard]] HWND ListOf(Kind kind) const;
  [[nodiscard]] window_driver::DrivenProgram& Program() { return program_; }

  void ChooseKind(Kind kind) const;
  // A row of the catalogue.
  void ChooseLibrary(int row) const;
  // Presses a button of the toolbar and returns the form that it opens.
  [[nodiscard]] HWND OpenByToolbar(std::string_view key, std::string_view form) const;
  [[nodiscard]] HWND OpenByMenu(std::string_view entry, std::string_view form) const;
  // Closes a form as its user does and waits until it is gone.
  void CloseForm(std::string_view form) const;

 private:
  void Choose(std::string_view combo, int row) const;

  window_driver::DrivenProgram program_;
  HWND main_ = nullptr;
};

}  // namespace declarium::bench
