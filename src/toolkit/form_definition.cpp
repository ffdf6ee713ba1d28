#include "toolkit/form_definition.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace declarium {

namespace {

using Faults = std::vector<std::string>;
using Names = std::set<std::string_view>;

void CheckName(std::string_view what, std::string_view name, Names& seen, Faults& faults) {
  if (name.empty()) {
    faults.push_back(std::string(what) + " without a name");
  } else if (!seen.insert(name).second) {
    faults.push_back("two components named " + std::string(name));
  }
}

void CheckToolbar(const ControlDefinition& toolbar, Faults& faults) {
  Names keys;
  for (const ToolbarButtonDefinition& button : toolbar.buttons) {
    if (!button.key.empty() && !keys.insert(button.key).second) {
      faults.push_back("two buttons " + std::string(button.key) + " in " +
                       std::string(toolbar.name));
    }
  }
}

void CheckRole(const FormDefinition& form, ButtonRole role, const char* name, Faults& faults) {
  const auto count = std::ranges::count(form.controls, role, &ControlDefinition::role);
  if (count > 1) faults.push_back(std::string("more than one ") + name + " button");
}

void CheckMenus(const FormDefinition& form, Names& names, Faults& faults) {
  int previous_level = -1;
  for (const MenuDefinition& menu : form.menus) {
    CheckName("menu entry", menu.name, names, faults);
    if (menu.level < 0 || menu.level > previous_level + 1) {
      faults.push_back("menu entry " + std::string(menu.name) + " has no parent");
    }
    previous_level = menu.level;
  }
}

std::u16string KeyText(int key) {
  switch (key) {
    case key::kInsert:
      return u"Insert";
    case key::kDelete:
      return u"Delete";
    case key::kEnter:
      return u"Enter";
    default:
      break;
  }
  if (key >= key::kF1 && key < key::kF1 + 12) {
    const int number = key - key::kF1 + 1;
    std::u16string text = u"F";
    if (number >= 10) text += u'1';
    return text += static_cast<char16_t>(u'0' + number % 10);
  }
  return std::u16string(1, static_cast<char16_t>(key));
}

}  // namespace

std::vector<std::string> FindDefinitionFaults(const FormDefinition& definition) {
  Faults faults;
  Names names;
  if (definition.name.empty()) faults.emplace_back("the form has no name");
  for (const ControlDefinition& control : definition.controls) {
    CheckName("control", control.name, names, faults);
    CheckToolbar(control, faults);
  }
  CheckRole(definition, ButtonRole::kDefault, "default", faults);
  CheckRole(definition, ButtonRole::kCancel, "cancel", faults);
  CheckMenus(definition, names, faults);
  return faults;
}

void RequireValid(const FormDefinition& definition) {
  const Faults faults = FindDefinitionFaults(definition);
  if (faults.empty()) return;
  std::string text = "form " + std::string(definition.name) + ":";
  for (const std::string& fault : faults) text += " " + fault + ";";
  throw std::logic_error(text);
}

bool IsTabStop(const ControlDefinition& control) {
  if (control.tab_stop != TabStop::kUsual) return control.tab_stop == TabStop::kYes;
  switch (control.kind) {
    case ControlKind::kLabel:
    case ControlKind::kFrame:
    case ControlKind::kToolbar:
    case ControlKind::kPictureBox:
    case ControlKind::kProgressBar:
    case ControlKind::kTimer:
      return false;
    default:
      return true;
  }
}

std::u16string ShortcutText(const Shortcut& shortcut) {
  std::u16string text;
  if (shortcut.key == 0) return text;
  if (shortcut.modifiers.control) text += u"Ctrl+";
  if (shortcut.modifiers.shift) text += u"Shift+";
  if (shortcut.modifiers.alt) text += u"Alt+";
  return text += KeyText(shortcut.key);
}

}  // namespace declarium
