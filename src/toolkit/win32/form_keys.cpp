#include "toolkit/win32/form_keys.h"

#include <algorithm>

#include "toolkit/captioned.h"
#include "toolkit/text_box.h"
#include "toolkit/win32/form.h"
#include "toolkit/win32/toolbar.h"
#include "toolkit/win32/toolkit.h"
#include "toolkit/win32/widget.h"

namespace declarium::win32 {

namespace {

bool IsHeld(int key) {
  return GetKeyState(key) < 0;
}

}  // namespace

bool FormKeys::Translate(MSG& message) {
  if (!form_.Visible() || !form_.TakesInput()) return false;
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  if (message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN) {
    const int key = static_cast<int>(message.wParam);
    if (PressShortcut(key) || PressHelpKey(key)) return true;
    if (key == VK_TAB && !IsHeld(VK_CONTROL) && !IsHeld(VK_MENU)) return PressTab();
    if ((key == VK_RETURN || key == VK_ESCAPE) && message.message == WM_KEYDOWN) {
      return PressButtonKey(key);
    }
  }
  const bool plain_key = message.message == WM_KEYDOWN || message.message == WM_KEYUP;
  const bool dialog_char = message.wParam == VK_RETURN || message.wParam == VK_ESCAPE;
  if (plain_key || (message.message == WM_CHAR && dialog_char)) return false;
  // Access keys, with the Alt key or, on buttons, without it.
  return IsDialogMessageW(form_.Window(), &message) != FALSE;
}

bool FormKeys::PressShortcut(int key) {
  if (dynamic_cast<TextBox*>(form_.Focus().Current()) && TextBox::Edits(key, HeldModifiers()))
    return false;
  Win32MenuItem* item = form_.Menus().WithShortcut(key, HeldModifiers());
  if (!item) return PressToolbarShortcut({key, HeldModifiers()});
  for (Win32MenuItem* above = item->Parent(); above; above = above->Parent()) {
    if (!above->Enabled()) return true;
    above->on_click.Raise();
  }
  if (item->Enabled()) item->on_click.Raise();
  return true;
}

bool FormKeys::PressToolbarShortcut(const Shortcut& shortcut) const {
  return std::ranges::any_of(form_.Widgets(), [&](const Widget* widget) {
    const auto* toolbar = dynamic_cast<const Win32Toolbar*>(widget);
    return toolbar && toolbar->PressShortcut(shortcut);
  });
}

bool FormKeys::PressHelpKey(int key) {
  if (key != VK_F1 || HeldModifiers() != Modifiers()) return false;
  form_.TheToolkit().on_help.Raise(help_topic_);
  return true;
}

bool FormKeys::PressTab() {
  const auto& focus = form_.Focus();
  Control* next = IsHeld(VK_SHIFT) ? focus.Tabs().Previous(focus.Current())
                                   : focus.Tabs().Next(focus.Current());
  if (!next) return true;
  next->SetFocus();
  // As in dialogs: the text of a box that was reached by the tab key is selected.
  if (auto* box = dynamic_cast<TextBox*>(next))
    box->Select(0, static_cast<int>(box->Text().size()));
  return true;
}

bool FormKeys::PressButtonKey(int key) {
  const TabOrder& tabs = form_.Focus().Tabs();
  Control* focused = form_.Focus().Current();
  Control* button = nullptr;
  if (key == VK_ESCAPE) {
    button = tabs.WithRole(ButtonRole::kCancel);
  } else {
    button = dynamic_cast<CommandButton*>(focused);
    const bool takes_enter = focused && tabs.TakesEnter(*focused);
    if (!button && !takes_enter) button = tabs.WithRole(ButtonRole::kDefault);
  }
  if (!button) return false;
  Click(*button);
  return true;
}

void FormKeys::Click(Control& button) {
  if (!button.Visible() || !button.Enabled()) return;
  button.SetFocus();
  dynamic_cast<CommandButton&>(button).on_click.Raise();
}

}  // namespace declarium::win32
