// The native menus of a form.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "toolkit/form_definition.h"
#include "toolkit/menu.h"
#include "win32/system.h"
#include "win32/unique_handle.h"

namespace declarium::win32 {

class Win32MenuItem : public MenuItem {
 public:
  // Stands at `position` of the native menu `in`; `parent` opens that menu, nullptr for the bar.
  Win32MenuItem(const MenuDefinition& definition, Win32MenuItem* parent, HMENU in, UINT position);

  [[nodiscard]] std::u16string Caption() const override { return caption_; }
  void SetCaption(std::u16string_view caption) override;
  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override;

  [[nodiscard]] Win32MenuItem* Parent() const { return parent_; }
  [[nodiscard]] const Shortcut& ShortcutKey() const { return shortcut_; }
  // The menu that this entry opens, nullptr when it has none.
  [[nodiscard]] HMENU Opens() const { return opens_; }
  void SetOpens(HMENU menu);

 private:
  friend class MenuSet;
  void Show() const;

  std::u16string caption_;
  bool enabled_;
  Shortcut shortcut_;
  Win32MenuItem* parent_;
  HMENU in_;
  UINT position_;
  HMENU opens_ = nullptr;
  HWND bar_ = nullptr;  // the window to redraw, for an entry of the menu bar
};

// All entries of a form, the menu bar and the popup menus.
class MenuSet {
 public:
  static constexpr UINT kFirstId = 1000;

  // Appends the entries to `components`, in the table's order.
  MenuSet(const FormDefinition& definition, std::vector<std::unique_ptr<Component>>& components);

  // The menu bar, nullptr when there is none; the window that is made with it owns it.
  [[nodiscard]] HMENU ReleaseBar();
  // The window that the menu bar is in.
  void ShowIn(HWND window);
  [[nodiscard]] bool HasBar() const { return !in_bar_.empty(); }
  [[nodiscard]] Win32MenuItem* WithId(UINT id) const;
  [[nodiscard]] Win32MenuItem* Opening(HMENU menu) const;
  [[nodiscard]] Win32MenuItem* WithShortcut(int key, const Modifiers& modifiers) const;
  [[nodiscard]] UINT IdOf(const Win32MenuItem& item) const;

 private:
  HMENU MenuBelow(Win32MenuItem* parent);

  UniqueMenu bar_{CreateMenu()};
  UniqueMenu popups_{CreateMenu()};  // holds the popup menus, is never shown
  std::vector<Win32MenuItem*> in_bar_;
  std::vector<Win32MenuItem*> items_;
};

}  // namespace declarium::win32
