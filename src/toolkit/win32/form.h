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
#include "toolkit/tab_order.h"
#include "toolkit/win32/fonts.h"
#include "toolkit/win32/icons.h"
#include "toolkit/win32/menu.h"
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
  // Handles a keyboard message of this form's windows that is not for the focused control alone:
  // shortcuts, tab, default and cancel buttons, access keys. False when it is.
  bool TranslateKey(MSG& message);
  // The widget whose window this is, nullptr when it is none of this form's.
  [[nodiscard]] Widget* WidgetOf(HWND window) const;
  void MoveFocus(Control& control);
  void PassFocusFrom(const Control& control);
  [[nodiscard]] bool HasFocus(const Control& control) const;
  // The native focus came to the control.
  void FocusArrived(Control& control);
  // Gives the native focus to the control that had it last, or to the first tab stop.
  void TakeFocus();
  void SetToolTipOf(HWND control, const std::u16string& text);
  // The pointer is over the form, so that a tooltip may be wanted from now on.
  void PointerArrived();
  // The keyboard asked for the control's popup menu.
  void ContextMenuAskedFor(Control& control);
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
  void MakeTips();
  [[nodiscard]] std::unique_ptr<Component> Make(const ControlDefinition& definition);
  void SetIcons();
  void ChoosePlace(const Form* owner);
  // The whole window around an inner area: pixels at 96 dpi to physical pixels.
  [[nodiscard]] Size OuterDots(Size inner) const;
  void SetOuterSize(int width, int height);
  void RaiseResizeIfChanged();
  // How the window is shown now.
  [[nodiscard]] ShowCommand NativeShowCommand() const;
  // The command for ShowWindow with which Show shows the window.
  [[nodiscard]] int CommandForShow() const;
  [[nodiscard]] bool CanTakeFocus(const Control& control) const;
  bool PressShortcut(int key);
  [[nodiscard]] bool PressToolbarShortcut(const Shortcut& shortcut) const;
  bool PressHelpKey(int key);
  bool PressTab();
  bool PressButtonKey(int key);
  void ClickFromKeyboard(Control& button);
  void UpdateNativeEnabled();
  // Where a popup menu opens, in physical pixels of the screen.
  [[nodiscard]] POINT PopupPlace() const;

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
  std::string_view help_topic_;
  int dpi_;
  Fonts fonts_;
  mutable UniqueImageList pictures_;
  UniqueIcon small_icon_;
  UniqueIcon large_icon_;
  UniqueWindow window_;
  UniqueWindow tips_;
  std::vector<std::unique_ptr<Component>> components_;
  std::vector<Widget*> widgets_;  // the components that have windows
  std::unique_ptr<MenuSet> menus_;
  TabOrder tabs_;
  std::vector<Win32Timer*> timers_;
  State state_ = State::kCreated;
  bool visible_ = false;
  bool shown_before_ = false;
  bool placed_ = false;  // a place was set, so the first Show does not choose one
  bool enabled_ = true;
  bool in_popup_ = false;
  bool pointer_arrived_ = false;
  const Control* popup_at_ = nullptr;  // where the keyboard asked for a popup menu
  int blocked_ = 0;
  int locks_ = 0;
  ModalScope* modal_ = nullptr;  // while this form is shown modally
  Size last_inner_;              // in physical pixels, when on_resize was raised last
  ShowCommand kept_command_ = ShowCommand::kNormal;  // of a hidden form, for its next Show
  Control* focus_ = nullptr;
};

}  // namespace declarium::win32
