// The native toolbar.
#pragma once

#include <string>
#include <vector>

#include "toolkit/toolbar.h"
#include "toolkit/toolbar_keys.h"
#include "toolkit/win32/control.h"
#include "toolkit/win32/icons.h"
#include "win32/system.h"

namespace declarium::win32 {

class Win32Toolbar : public Win32Control<Toolbar> {
 public:
  Win32Toolbar(Win32Form& form, const ControlDefinition& definition);

  [[nodiscard]] bool ButtonEnabled(std::string_view key) const override;
  void SetButtonEnabled(std::string_view key, bool enabled) override;

  // A command from the button with this identifier.
  void OnButton(int id);
  std::optional<LRESULT> OnNotify(NMHDR& header) override;
  void OnResolutionChanged() override;
  [[nodiscard]] bool PressShortcut(const Shortcut& shortcut) const {
    return keys_.PressShortcut(shortcut);
  }

 private:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  // The button that the keyboard has reached looks as if under the pointer while the toolbar has
  // the focus.
  void ShowCurrentButton() const;
  [[nodiscard]] int IdOf(std::string_view key) const;
  void AddButtons();
  void LoadPictures();

  std::span<const ToolbarButtonDefinition> buttons_;
  ToolbarKeys keys_;
  std::vector<std::u16string> tips_;
  UniqueImageList disabled_;
};

}  // namespace declarium::win32
