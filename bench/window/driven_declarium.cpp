#include "bench/window/driven_declarium.h"

#include <chrono>
#include <stdexcept>

#include "shell/registry_store.h"
#include "shell/settings.h"
#include "win32/program.h"
#include "win32/system_registry.h"
#include "window/driven_main_window.h"

namespace declarium::bench {
namespace {

namespace fs = std::filesystem;
using namespace window_driver;

fs::path WithKind(const fs::path& program, Kind kind) {
  SetStartingKind(kind);
  return program;
}

}  // namespace

fs::path BuiltProgram(const fs::path& below_build_tree) {
  return (fs::path(win32::ProgramPath()).parent_path() / "../.." / below_build_tree)
      .lexically_normal();
}

fs::path PutProgramInto(const fs::path& folder) {
  fs::remove_all(folder);
  fs::create_directories(folder);
  fs::copy_file(BuiltProgram("src/app/Declarium.exe"), folder / "Declarium.exe");
  return folder / "Declarium.exe";
}

void SetStartingKind(Kind kind) {
  win32::SystemRegistry registry;
  RegistryStore store(registry);
  WriteSetting(store, setting::kSizeSaved, 0);
  WriteSetting(store, setting::kSelector, KindCode(kind));
  WriteSetting(store, setting::kLastDatabaseIndex, -1);
  WriteSetting(store, setting::kLastDatabaseName, u"");
  WriteSetting(store, setting::kFindCheckBox, setting::kFindCheckBox.default_value);
}

void WaitTightly(const std::string& what, const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) {
      throw std::runtime_error("waited in vain for " + what);
    }
    Sleep(0);  // the program that is waited for may need this core
  }
}

void WaitUntilPainted(HWND window) {
  WaitTightly("the painting", [window] { return !GetUpdateRect(window, nullptr, FALSE); });
}

DrivenDeclarium::DrivenDeclarium(const fs::path& program, Kind kind)
    : program_(WithKind(program, kind)), main_(program_.Form("frmMain")) {
  WaitFor("the splash window's end", [this] { return program_.FindForm("frmSplash") == nullptr; });
}

HWND DrivenDeclarium::Control(std::string_view name) const {
  return FindControl(main_, name);
}

HWND DrivenDeclarium::ListOf(Kind kind) const {
  constexpr std::string_view kLists[] = {"lstConst", "lstDeclare", "lstType"};
  return Control(kLists[static_cast<std::size_t>(KindCode(kind))]);
}

void DrivenDeclarium::Choose(std::string_view combo, int row) const {
  const HWND window = Control(combo);
  Ask(window, CB_SETCURSEL, static_cast<WPARAM>(row));
  Ask(main_, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), CBN_SELCHANGE),
      reinterpret_cast<LPARAM>(window));
}

void DrivenDeclarium::ChooseKind(Kind kind) const {
  Choose("cmbSelector", KindCode(kind));
}

void DrivenDeclarium::ChooseLibrary(int row) const {
  Choose("cmbDatabase", row);
}

HWND DrivenDeclarium::OpenByToolbar(std::string_view key, std::string_view form) const {
  ClickToolbar(main_, key);
  return program_.Form(form);
}

HWND DrivenDeclarium::OpenByMenu(std::string_view entry, std::string_view form) const {
  ChooseMenu(main_, entry);
  return program_.Form(form);
}

void DrivenDeclarium::CloseForm(std::string_view form) const {
  PostMessageW(program_.Form(form), WM_CLOSE, 0, 0);
  WaitFor("the form's end", [&] { return program_.FindForm(form) == nullptr; });
}

}  // namespace declarium::bench
