// A form as a native window. Its window exists from its making to its destruction; unloading hides
// it for good.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/form.h"
#include "toolkit/form_definition.h"
#include "toolkit/win32/fonts.h"
#include "toolkit/win32/form_focus.h"
#include "toolkit/win32/form_keys.h"
#include "toolkit/win32/icons.h"
#include "toolkit/win32/menu.h"
#include "toolkit/win32/popup_menu.h"
#include "toolkit/win32/tool_tips.h"
#include "win32/system.h"
#include "win32/unique_handle.h"

namespace declarium::win32 {

class Widget;
class Win32Timer;
class ModalScope;
class Win32Toolkit;

class Win32Form : public Form {
 public:
  Win32Form(Win32Toolkit& toolkit, const FormDefinition& definition);
  ~Win32Form() override;

  void Load() override;
  [[nodiscard]] bool IsLoaded() const override { return state_ == State::kLoaded; }
  void Show(ShowMode mode = ShowMode::kModeless, Form* owner = nullptr) override;
  void Hide() override;
  [[nodiscard]] bool Visible() const override { return visible_; }

  [[nodiscard]] std::u16string Caption() const override;
  void SetCaption(std::u16string_view caption) override;
  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override;

  [[nodiscard]] int ScaleWidth() const override;
  [[nodiscard]] int ScaleHeight() const override;
  [[nodiscard]] int OuterWidth() const override;
  [[nodiscard]] int OuterHeight() const override;
  void SetOuterWidth(int width) override;
  void SetOuterHeight(int height) override;

  [[nodiscard]] Placement GetPlacement() const override;
  void SetPlacement(const Placement& placement) override;
  void SetShowCommand(ShowCommand command) override;
  void SetTopmost() override;
  void BringToTop() override;
  void LockUpdate() override;
  void UnlockUpdate() override;
  void ShowPopupMenu(MenuItem& menu) override;
  [[nodiscard]] Point CursorPosition() const override;

  // The backend's side.
  [[nodiscard]] HWND Window() const { return window_.Get(); }
  [[nodiscard]] int Dpi() const { return dpi_; }
  [[nodiscard]] const Fonts& TheFonts() const { return fonts_; }
  // Drawn for the first control that asks for them.
  [[nodiscard]] HIMAGELIST SmallPictures() const;
  [[nodiscard]] Win32Toolkit& TheToolkit() const { return toolkit_; }
  [[nodiscard]] const MenuSet& Menus() const { return *menus_; }
  // The widget whose window this is, nullptr when it is none of this form's.
  [[nodiscard]] Widget* WidgetOf(HWND window) const;
  [[nodiscard]] const std::vector<Widget*>& Widgets() const { return widgets_; }
  [[nodiscard]] FormFocus& Focus() { return focus_; }
  [[nodiscard]] const FormFocus& Focus() const { return focus_; }
  [[nodiscard]] FormKeys& Keys() { return keys_; }
  [[nodiscard]] ToolTips& Tips() { return tips_; }
  [[nodiscard]] PopupMenu& Popup() { return popup_; }
  // False while a modal form or dialog is open in front of this one. Input that is sent to its
  // windows all the same, by another program, is dropped then.
  [[nodiscard]] bool TakesInput() const { return IsWindowEnabled(Window()) != FALSE; }
  // A modal form or dialog is open above this form.
  void Block();
  void Unblock();

 private:
  enum class State { kCreated, kLoaded, kUnloaded };
  using Handler = std::optional<LRESULT> (Win32Form::*)(WPARAM, LPARAM);
  struct Entry {
    UINT message;
    Handler handler;
  };
  static const Entry kHandlers[];
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam,
                                    LPARAM lparam) noexcept;
  static const wchar_t* WindowClass();

  [[nodiscard]] Component& Find(std::string_view name) const override;
  void Close() override;

  void CreateNativeWindow(const FormDefinition& definition);
  // The windows still use what was there for the resolution before, which is returned.
  Fonts ChangeResolution(int dpi);
  [[nodiscard]] std::optional<LRESULT> Answer(UINT message, WPARAM wparam, LPARAM lparam);
  void BringDialogForward() const;
  void Build(const FormDefinition& definition);
  void SetIcons();
  // The whole window around an inner area: pixels at 96 dpi to physical pixels.
  [[nodiscard]] Size OuterPhysical(Size inner) const;
  void RaiseResizeIfChanged();
  // The command for ShowWindow with which Show shows the window.
  [[nodiscard]] int CommandForShow() const;
  void UpdateNativeEnabled();

  std::optional<LRESULT> OnCommand(WPARAM, LPARAM);
  std::optional<LRESULT> OnNotify(WPARAM, LPARAM);
  std::optional<LRESULT> OnSize(WPARAM, LPARAM);
  std::optional<LRESULT> OnGetMinMaxInfo(WPARAM, LPARAM);
  std::optional<LRESULT> OnActivate(WPARAM, LPARAM);
  std::optional<LRESULT> OnSetFocus(WPARAM, LPARAM);
  std::optional<LRESULT> OnClose(WPARAM, LPARAM);
  std::optional<LRESULT> OnQueryEndSession(WPARAM, LPARAM);
  std::optional<LRESULT> OnEndSession(WPARAM, LPARAM);
  std::optional<LRESULT> OnTimer(WPARAM, LPARAM);
  std::optional<LRESULT> OnInitMenuPopup(WPARAM, LPARAM);
  std::optional<LRESULT> OnSetCursor(WPARAM, LPARAM);
  std::optional<LRESULT> OnControlColor(WPARAM, LPARAM);
  std::optional<LRESULT> OnDpiChanged(WPARAM, LPARAM);
  std::optional<LRESULT> OnSettingsChanged(WPARAM, LPARAM);

  Win32Toolkit& toolkit_;
  BorderStyle border_;
  StartPosition start_;
  Size minimum_size_;  // of the inner area
  int dpi_;
  Fonts fonts_;
  mutable UniqueImageList pictures_;
  UniqueIcon small_icon_;
  UniqueIcon large_icon_;
  UniqueWindow window_;
  ToolTips tips_;
  PopupMenu popup_;
  std::vector<std::unique_ptr<Component>> components_;
  std::vector<Widget*> widgets_;  // the components that have windows
  std::unique_ptr<MenuSet> menus_;
  FormFocus focus_;
  FormKeys keys_;
  std::vector<Win32Timer*> timers_;
  State state_ = State::kCreated;
  bool visible_ = false;
  bool shown_before_ = false;
  bool placed_ = false;  // a place was set, so the first Show does not choose one
  bool enabled_ = true;
  int blocked_ = 0;
  int locks_ = 0;
  ModalScope* modal_ = nullptr;  // while this form is shown modally
  Size last_inner_;              // in physical pixels, when on_resize was raised last
  ShowCommand kept_command_ = ShowCommand::kNormal;  // of a hidden form, for its next Show
};

}  // namespace declarium::win32
