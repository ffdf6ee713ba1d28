#include "toolkit/win32/menu.h"

#include <algorithm>

#include "win32/wide.h"

namespace declarium::win32 {

Win32MenuItem::Win32MenuItem(const MenuDefinition& definition, Win32MenuItem* parent, HMENU in,
                             UINT position)
    : MenuItem(definition.name),
      caption_(definition.caption),
      enabled_(definition.enabled),
      shortcut_(definition.shortcut),
      parent_(parent),
      in_(in),
      position_(position) {}

void Win32MenuItem::Show() const {
  std::u16string text = caption_;
  if (shortcut_.key != 0) text += u"\t" + ShortcutText(shortcut_);
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_STRING;
  info.fType = caption_ == u"-" ? MFT_SEPARATOR : MFT_STRING;
  info.fState = enabled_ ? MFS_ENABLED : MFS_DISABLED;
  info.dwTypeData = WideBuffer(text);
  SetMenuItemInfoW(in_, position_, TRUE, &info);
  if (bar_) DrawMenuBar(bar_);
}

void Win32MenuItem::SetCaption(std::u16string_view caption) {
  caption_ = caption;
  Show();
}

void Win32MenuItem::SetEnabled(bool enabled) {
  enabled_ = enabled;
  Show();
}

void Win32MenuItem::SetOpens(HMENU menu) {
  opens_ = menu;
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_SUBMENU;
  info.hSubMenu = menu;
  SetMenuItemInfoW(in_, position_, TRUE, &info);
}

MenuSet::MenuSet(const FormDefinition& definition,
                 std::vector<std::unique_ptr<Component>>& components) {
  std::vector<Win32MenuItem*> path;
  for (const MenuDefinition& menu : definition.menus) {
    path.resize(static_cast<std::size_t>(menu.level));
    Win32MenuItem* parent = path.empty() ? nullptr : path.back();
    const bool in_bar = !parent && menu.in_menu_bar;
    const HMENU in = parent ? MenuBelow(parent) : (in_bar ? bar_ : popups_).Get();
    const UINT position = static_cast<UINT>(GetMenuItemCount(in));
    AppendMenuW(in, MF_STRING, kFirstId + items_.size(), L"");
    auto item = std::make_unique<Win32MenuItem>(menu, parent, in, position);
    item->Show();
    items_.push_back(item.get());
    if (in_bar) in_bar_.push_back(item.get());
    path.push_back(item.get());
    components.push_back(std::move(item));
  }
}

HMENU MenuSet::MenuBelow(Win32MenuItem* parent) {
  if (!parent->Opens()) parent->SetOpens(CreatePopupMenu());
  return parent->Opens();
}

HMENU MenuSet::ReleaseBar() {
  return HasBar() ? bar_.Release() : nullptr;
}

void MenuSet::ShowIn(HWND window) {
  for (Win32MenuItem* item : in_bar_) item->bar_ = window;
}

Win32MenuItem* MenuSet::WithId(UINT id) const {
  return id >= kFirstId && id - kFirstId < items_.size() ? items_[id - kFirstId] : nullptr;
}

Win32MenuItem* MenuSet::Opening(HMENU menu) const {
  const auto found = std::ranges::find(items_, menu, &Win32MenuItem::Opens);
  return found == items_.end() ? nullptr : *found;
}

Win32MenuItem* MenuSet::WithShortcut(int key, const Modifiers& modifiers) const {
  const auto found = std::ranges::find_if(items_, [&](const Win32MenuItem* item) {
    return item->ShortcutKey().key == key && item->ShortcutKey().modifiers == modifiers;
  });
  return found == items_.end() ? nullptr : *found;
}

UINT MenuSet::IdOf(const Win32MenuItem& item) const {
  return kFirstId + static_cast<UINT>(std::ranges::find(items_, &item) - items_.begin());
}

}  // namespace declarium::win32
