// Labels, frames, buttons and check boxes as native windows.
#pragma once

#include <utility>

#include "toolkit/captioned.h"
#include "toolkit/win32/control.h"

namespace declarium::win32 {

template <class Base>
class Win32Captioned : public Win32Control<Base> {
 public:
  Win32Captioned(Win32Form& form, const ControlDefinition& definition, const NativeClass& native)
      : Win32Control<Base>(form, definition, native) {}

  [[nodiscard]] std::u16string Caption() const override { return WindowText(this->Handle()); }
  // The window paints a caption that it is given, even the one that it has.
  void SetCaption(std::u16string_view caption) override {
    if (caption == Caption()) return;
    SetWindowTextW(this->Handle(), Wide(std::u16string(caption)));
    changed_ = true;
  }
  // A changed caption is painted or marked for painting by the window itself. Without one there is
  // nothing to hurry for.
  void Refresh() override {
    if (std::exchange(changed_, false)) UpdateWindow(this->Handle());
  }

 private:
  bool changed_ = false;  // since the last Refresh
};

class Win32Label : public Win32Captioned<Label> {
 public:
  Win32Label(Win32Form& form, const ControlDefinition& definition)
      : Win32Captioned(form, definition, {L"STATIC", SS_LEFT | SS_NOTIFY | WS_CLIPSIBLINGS}) {}
};

class Win32Frame : public Win32Captioned<Frame> {
 public:
  Win32Frame(Win32Form& form, const ControlDefinition& definition);
  void SendToBack();

 private:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
};

class Win32CommandButton : public Win32Captioned<CommandButton> {
 public:
  Win32CommandButton(Win32Form& form, const ControlDefinition& definition)
      : Win32Captioned(form, definition,
                       {L"BUTTON", WS_CLIPSIBLINGS | (definition.role == ButtonRole::kDefault
                                                          ? DWORD{BS_DEFPUSHBUTTON}
                                                          : DWORD{BS_PUSHBUTTON})}) {}

  void OnCommand(int code) override {
    if (code == BN_CLICKED) on_click.Raise();
  }
};

class Win32CheckBox : public Win32Captioned<CheckBox> {
 public:
  Win32CheckBox(Win32Form& form, const ControlDefinition& definition)
      : Win32Captioned(form, definition, {L"BUTTON", BS_3STATE | WS_CLIPSIBLINGS}) {}

  [[nodiscard]] int Value() const override { return static_cast<int>(Send(BM_GETCHECK)); }
  void OnCommand(int code) override {
    if (code == BN_CLICKED) SetValue(Value() == 0 ? 1 : 0);
  }

 private:
  void ShowValue(int value) override { Send(BM_SETCHECK, static_cast<WPARAM>(value)); }
};

}  // namespace declarium::win32
