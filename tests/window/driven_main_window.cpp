#include "window/driven_main_window.h"

#include <algorithm>
#include <stdexcept>

#include "basic/text.h"
#include "shell/settings.h"
#include "shell/ui/main_form.h"
#include "toolkit/win32/menu.h"
#include "window/driven_lists.h"

namespace declarium::window_driver {
namespace {

int PlaceInToolbar(std::string_view key) {
  const auto controls = MainFormDefinition().controls;
  const auto toolbar = std::ranges::find(controls, "Toolbar1", &ControlDefinition::name);
  const auto found = std::ranges::find(toolbar->buttons, key, &ToolbarButtonDefinition::key);
  if (found == toolbar->buttons.end()) throw std::logic_error("no button " + std::string(key));
  return static_cast<int>(found - toolbar->buttons.begin());
}

WPARAM MenuCommand(std::string_view name) {
  const auto menus = MainFormDefinition().menus;
  const auto found = std::ranges::find(menus, name, &MenuDefinition::name);
  if (found == menus.end()) throw std::logic_error("no menu entry " + std::string(name));
  return win32::MenuSet::kFirstId + static_cast<WPARAM>(found - menus.begin());
}

constexpr const wchar_t* kPutAway = L"Software\\Brindlework\\Declarium under test";
constexpr const wchar_t* kSettings = L"settings";  // below it, when there were any

std::wstring SettingsKey() {
  return {kSettingsKey.begin(), kSettingsKey.end()};
}

bool KeyExists(const std::wstring& path) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
    return false;
  }
  RegCloseKey(key);
  return true;
}

// Makes `to` with all that `from` holds, which may be missing.
bool CopyKey(const std::wstring& from, const std::wstring& to) {
  HKEY copy = nullptr;
  if (RegCreateKeyW(HKEY_CURRENT_USER, to.c_str(), &copy) != ERROR_SUCCESS) return false;
  const LSTATUS status = RegCopyTreeW(HKEY_CURRENT_USER, from.c_str(), copy);
  RegCloseKey(copy);
  return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

}  // namespace

void ChooseMenu(HWND frmMain, std::string_view name) {
  PostMessageW(frmMain, WM_COMMAND, MenuCommand(name), 0);
}

void ClickToolbar(HWND frmMain, std::string_view key) {
  ClickButton(FindControl(frmMain, "Toolbar1"), PlaceInToolbar(key));
}

bool ToolbarEnabled(HWND frmMain, std::string_view key) {
  return IsButtonEnabled(FindControl(frmMain, "Toolbar1"), PlaceInToolbar(key));
}

void ChooseLibrary(HWND frmMain, std::u16string_view title) {
  const HWND selector = FindControl(frmMain, "cmbDatabase");
  const auto titles = ComboRows(selector);
  const auto row = std::ranges::find(titles, title);
  if (row == titles.end()) throw std::runtime_error("no library " + ToUtf8(title));
  ChooseRow(selector, static_cast<int>(row - titles.begin()));
  WaitFor("the library", [&] { return TextOf(frmMain).starts_with(title); });
}

int TypeToItem(HWND frmMain, int kind, std::u16string_view beginning, std::u16string_view code) {
  const char* const lists[] = {"lstConst", "lstDeclare", "lstType"};
  const HWND list = FindControl(frmMain, lists[kind]);
  ChooseRow(FindControl(frmMain, "cmbSelector"), kind);
  WaitFor("the kind's list", [&] { return IsWindowVisible(list) && Ask(list, LB_GETCOUNT) > 0; });
  Type(FindControl(frmMain, "txtInput"), beginning);
  const HWND shown = FindControl(frmMain, "RTB");
  WaitFor("the item", [&] { return TextOf(shown).starts_with(code); });
  return static_cast<int>(Ask(list, LB_GETCOUNT));
}

void AddTypedItem(HWND frmMain) {
  const HWND basket = FindControl(frmMain, "lstAdd");
  const int before = EntryCount(basket);
  PressKey(FindControl(frmMain, "txtInput"), VK_RETURN);
  WaitFor("the basket", [&] { return EntryCount(basket) == before + 1; });
}

void AnswerText(const DrivenProgram& program, std::u16string_view text) {
  const HWND input = program.Form("frmInput");
  SetText(FindControl(input, "Text1"), text);
  PressButton(FindControl(input, "Command1"));
  WaitFor("the input box's end", [&] { return program.FindForm("frmInput") == nullptr; });
}

SettingsPutAway::SettingsPutAway() {
  // Kept by a process that did not come to put them back; what is there now is its own.
  if (KeyExists(kPutAway)) {
    RegDeleteTreeW(HKEY_CURRENT_USER, SettingsKey().c_str());
    return;
  }
  const std::wstring place = std::wstring(kPutAway) + L"\\" + kSettings;
  if (!CopyKey(SettingsKey(), KeyExists(SettingsKey()) ? place : kPutAway)) {
    throw std::runtime_error("the user's settings cannot be put away");
  }
  RegDeleteTreeW(HKEY_CURRENT_USER, SettingsKey().c_str());
}

SettingsPutAway::~SettingsPutAway() {
  RegDeleteTreeW(HKEY_CURRENT_USER, SettingsKey().c_str());
  const std::wstring place = std::wstring(kPutAway) + L"\\" + kSettings;
  if (KeyExists(place) && !CopyKey(place, SettingsKey())) return;
  RegDeleteTreeW(HKEY_CURRENT_USER, kPutAway);
}

std::u16string ClipboardText() {
  if (!OpenClipboard(nullptr)) return {};
  std::u16string text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    if (const void* units = GlobalLock(data)) text = static_cast<const char16_t*>(units);
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

}  // namespace declarium::window_driver
