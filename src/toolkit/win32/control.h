// What every control of the Windows backend does the same way.
#pragma once

#include <string>
#include <string_view>

#include "toolkit/win32/form.h"
#include "toolkit/win32/widget.h"
#include "win32/wide.h"

namespace declarium::win32 {

template <class Base>
class Win32Control : public Base, public Widget {
 public:
  Win32Control(Win32Form& form, const ControlDefinition& definition, const NativeClass& native)
      : Base(definition.name),
        Widget(form, *this, definition, native),
        visible_(definition.visible),
        enabled_(definition.enabled),
        pointer_(definition.pointer) {
    SetToolTip(definition.tooltip);
  }

  [[nodiscard]] Rect Bounds() const override { return PlacedAt(); }
  void SetBounds(const Rect& bounds) override { Place(bounds); }

  [[nodiscard]] bool Visible() const override { return visible_; }
  void SetVisible(bool visible) override {
    visible_ = visible;
    if (!visible) TheForm().Focus().PassFrom(*this);
    ShowWindow(Handle(), visible ? SW_SHOWNA : SW_HIDE);
  }

  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override {
    enabled_ = enabled;
    if (!enabled) TheForm().Focus().PassFrom(*this);
    EnableWindow(Handle(), enabled);
  }

  void SetFocus() override { TheForm().Focus().MoveTo(*this); }
  [[nodiscard]] bool HasFocus() const override { return TheForm().Focus().IsAt(*this); }

  void BringToFront() override {
    SetWindowPos(Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
  void Refresh() override {
    RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  }

  [[nodiscard]] MousePointer Pointer() const override { return pointer_; }
  void SetPointer(MousePointer pointer) override { pointer_ = pointer; }

  [[nodiscard]] std::u16string ToolTip() const override { return tool_tip_; }
  void SetToolTip(std::u16string_view text) override {
    tool_tip_ = text;
    TheForm().Tips().Set(Handle(), tool_tip_);
  }

 private:
  bool visible_;
  bool enabled_;
  MousePointer pointer_;
  std::u16string tool_tip_;
};

}  // namespace declarium::win32
