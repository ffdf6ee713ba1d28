// One native window of a control: creates it, places it, and turns its messages into the control's
// events through a table.
#pragma once

#include <optional>
#include <string>

#include "toolkit/control.h"
#include "toolkit/form_definition.h"
#include "toolkit/input.h"
#include "win32/system.h"
#include "win32/unique_handle.h"

namespace declarium::win32 {

class Win32Form;

// How the native window is made.
struct NativeClass {
  const wchar_t* name;
  DWORD style = 0;
  DWORD extended_style = 0;
};

// The keys that are held at the moment of the message being handled.
[[nodiscard]] Modifiers HeldModifiers();

class Widget {
 public:
  virtual ~Widget();
  Widget(const Widget&) = delete;
  Widget& operator=(const Widget&) = delete;

  [[nodiscard]] HWND Handle() const { return window_.Get(); }
  [[nodiscard]] Control& TheControl() const { return *control_; }

  // Notifications that the control's window sends to the form.
  virtual void OnCommand(int /*code*/) {}
  virtual std::optional<LRESULT> OnNotify(NMHDR& /*header*/) { return std::nullopt; }
  // The form is on a screen of another resolution now: place, font and pictures follow.
  virtual void OnResolutionChanged();

  // Marks the window with its control's name, by which drivers find it; takes the mark away.
  void Mark();
  void Unmark();

 protected:
  Widget(Win32Form& form, Control& control, const ControlDefinition& definition,
         const NativeClass& native);

  [[nodiscard]] Win32Form& TheForm() const { return form_; }
  [[nodiscard]] int Dpi() const;
  LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    return SendMessageW(Handle(), message, wparam, lparam);
  }
  // Bounds in pixels at 96 dpi.
  void Place(const Rect& bounds);
  [[nodiscard]] const Rect& PlacedAt() const { return bounds_; }
  [[nodiscard]] Point ToPoint(LPARAM place) const;
  [[nodiscard]] MouseEvent MouseEventOf(MouseButton button, WPARAM keys, LPARAM place) const;

  // Whether the message is something that the user does.
  [[nodiscard]] virtual bool IsInput(UINT message) const;
  // A message before the window sees it; a value answers it in the window's stead.
  virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT PassOn(UINT message, WPARAM wparam, LPARAM lparam) const;

 private:
  using Handler = std::optional<LRESULT> (Widget::*)(WPARAM, LPARAM);
  struct Entry {
    UINT message;
    Handler handler;
  };
  static const Entry kHandlers[];
  [[nodiscard]] std::optional<LRESULT> Answer(UINT message, WPARAM wparam, LPARAM lparam);
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam,
                                    LPARAM lparam) noexcept;

  std::optional<LRESULT> OnSetFocus(WPARAM, LPARAM);
  std::optional<LRESULT> OnKeyDown(WPARAM, LPARAM);
  std::optional<LRESULT> OnSystemKeyDown(WPARAM, LPARAM);
  std::optional<LRESULT> OnKeyUp(WPARAM, LPARAM);
  std::optional<LRESULT> OnContextMenu(WPARAM, LPARAM);
  std::optional<LRESULT> OnChar(WPARAM, LPARAM);
  std::optional<LRESULT> OnSetCursor(WPARAM, LPARAM);
  std::optional<LRESULT> OnMouseMove(WPARAM, LPARAM);
  std::optional<LRESULT> OnLeftDown(WPARAM, LPARAM);
  std::optional<LRESULT> OnRightDown(WPARAM, LPARAM);
  std::optional<LRESULT> OnLeftUp(WPARAM, LPARAM);
  std::optional<LRESULT> OnRightUp(WPARAM, LPARAM);
  std::optional<LRESULT> OnDoubleClick(WPARAM, LPARAM);

  std::optional<LRESULT> AskForContextMenu();
  void RaiseMouse(const Event<const MouseEvent&>& event, MouseButton button, WPARAM keys,
                  LPARAM place) const;
  void ApplyFont(BOOL repaint);
  void PutInPlace();

  Win32Form& form_;
  Control* control_;
  Rect bounds_;
  FontRole font_;
  bool named_for_accessibility_;
  WNDPROC native_ = nullptr;  // the control's own procedure
  UniqueWindow window_;
};

}  // namespace declarium::win32
