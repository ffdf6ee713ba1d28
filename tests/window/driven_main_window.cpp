#include "window/driven_main_window.h"

#include <algorithm>
#include <stdexcept>

#include "shell/settings.h"
#include "shell/ui/main_form.h"
#include "text/text.h"
#include "toolkit/win32/menu.h"
#include "win32/clipboard.h"
#include "win32/wide.h"
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
  return win32::WideString(kSettingsKey);
}

bool KeyExists(const std::wstring& path) {
  win32::UniqueRegistryKey key;
  return RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, key.Receive()) ==
         ERROR_SUCCESS;
}

// Makes `to` with all that `from` holds, which may be missing.
bool CopyKey(const std::wstring& from, const std::wstring& to) {
  win32::UniqueRegistryKey copy;
  if (RegCreateKeyW(HKEY_CURRENT_USER, to.c_str(), copy.Receive()) != ERROR_SUCCESS) return false;
  const LSTATUS status = RegCopyTreeW(HKEY_CURRENT_USER, from.c_str(), copy.Get());
  return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

// The windows of open menus are of a class of their own.
bool IsMenuShown() {
  const HWND menu = FindWindowW(L"#32768", nullptr);
  return menu != nullptr && IsWindowVisible(menu);
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

void AddSharedItem(HWND frmMain, int entry) {
  const HWND basket = FindControl(frmMain, "lstAdd");
  const int before = EntryCount(basket);
  DoubleClickEntry(FindControl(frmMain, "lstShare"), entry);
  WaitFor("the basket", [&] { return EntryCount(basket) == before + 1; });
}

int BasketEntryOf(HWND frmMain, std::u16string_view name) {
  const auto entries = Entries(FindControl(frmMain, "lstAdd"));
  const auto found = std::ranges::find_if(
      entries, [&](const std::u16string& entry) { return entry.substr(2) == name; });
  if (found == entries.end()) throw std::runtime_error("not in the basket: " + ToUtf8(name));
  return static_cast<int>(found - entries.begin());
}

void FindNames(HWND frmMain, std::u16string_view pattern) {
  const HWND box = FindControl(frmMain, "txtFind");
  SetText(box, pattern);
  PressKey(box, VK_RETURN);
  const HWND hits = FindControl(frmMain, "lstFind");
  WaitFor("hits", [&] { return Ask(hits, LB_GETCOUNT) > 0; });
}

HWND SearchForUsesOf(const DrivenProgram& program, HWND frmMain, std::u16string_view type) {
  ClickToolbar(frmMain, "find");
  const HWND dialog = program.Form("frmFind");
  WaitFor("the search dialog in front", [&] { return GetForegroundWindow() == dialog; });
  SetText(FindControl(dialog, "Text2"), type);
  PressButton(FindControl(dialog, "Command2"));
  const HWND results = FindControl(dialog, "LV1");
  WaitFor("hits", [&] { return EntryCount(results) > 0; });
  ClickEntry(results, 0);
  WaitFor("the hit", [&] { return SelectedEntry(results) == 0; });
  return dialog;
}

void CloseSearch(const DrivenProgram& program, HWND frmFind) {
  PressButton(FindControl(frmFind, "Command1"));
  WaitFor("the dialog's end", [&] { return !program.FindForm("frmFind"); });
}

void OpenMenu(HWND frmMain, char key) {
  SetForegroundWindow(frmMain);
  PostMessageW(frmMain, WM_SYSCOMMAND, SC_KEYMENU, key);
  AwaitOpenMenu();
}

void AwaitOpenMenu() {
  WaitFor("the menu", [] { return IsMenuShown(); });
}

void ShutMenus(HWND frmMain) {
  PressKey(frmMain, VK_ESCAPE);
  PressKey(frmMain, VK_ESCAPE);
  WaitFor("the menu's end", [] { return !IsMenuShown(); });
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
  return win32::ClipboardText(nullptr);
}

}  // namespace declarium::window_driver
