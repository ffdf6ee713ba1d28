#include "toolkit/win32/popup_menu.h"

#include "toolkit/win32/form.h"
#include "toolkit/win32/menu.h"
#include "toolkit/win32/scale.h"
#include "toolkit/win32/widget.h"

namespace declarium::win32 {

void PopupMenu::AskedForAt(Control& control) {
  at_ = &control;
  try {
    control.on_context_menu.Raise();
  } catch (...) {
    at_ = nullptr;
    throw;
  }
  at_ = nullptr;
}

void PopupMenu::Show(const Win32Form& form, const Win32MenuItem& item) {
  if (!item.Opens()) return;
  const POINT at = Place(form.Dpi());
  open_ = true;
  const BOOL chosen = TrackPopupMenuEx(item.Opens(), TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y,
                                       form.Window(), nullptr);
  open_ = false;
  if (auto* entry = form.Menus().WithId(static_cast<UINT>(chosen))) entry->on_click.Raise();
}

POINT PopupMenu::Place(int dpi) const {
  POINT at{};
  GetCursorPos(&at);
  const auto* widget = dynamic_cast<const Widget*>(at_);
  if (!widget) return at;
  RECT area{};
  GetWindowRect(widget->Handle(), &area);
  const int inset = ToPhysical(16, dpi);
  return {area.left + inset, area.top + inset};
}

}  // namespace declarium::win32
