// What every control of the headless backend keeps.
#pragma once

#include <string>
#include <string_view>

#include "toolkit/control.h"
#include "toolkit/form_definition.h"

namespace declarium::headless {

// The form, as far as its controls need it.
class FocusOwner {
 public:
  virtual ~FocusOwner() = default;
  [[nodiscard]] virtual const Control* Focused() const = 0;
  // Moves the focus when `control` can take it.
  virtual void MoveFocus(Control& control) = 0;
  // Passes the focus on if `control`, just hidden or disabled, has it.
  virtual void PassFocusFrom(const Control& control) = 0;
};

template <class Base>
class HeadlessControl : public Base {
 public:
  HeadlessControl(FocusOwner& owner, const ControlDefinition& definition)
      : Base(definition.name),
        owner_(owner),
        bounds_(definition.bounds),
        visible_(definition.visible),
        enabled_(definition.enabled),
        pointer_(definition.pointer),
        tool_tip_(definition.tooltip) {}

  [[nodiscard]] Rect Bounds() const override { return bounds_; }
  void SetBounds(const Rect& bounds) override { bounds_ = bounds; }

  [[nodiscard]] bool Visible() const override { return visible_; }
  void SetVisible(bool visible) override {
    visible_ = visible;
    if (!visible) owner_.PassFocusFrom(*this);
  }

  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override {
    enabled_ = enabled;
    if (!enabled) owner_.PassFocusFrom(*this);
  }

  void SetFocus() override { owner_.MoveFocus(*this); }
  [[nodiscard]] bool HasFocus() const override { return owner_.Focused() == this; }

  void BringToFront() override { ++times_brought_to_front_; }
  void Refresh() override { ++times_refreshed_; }

  [[nodiscard]] MousePointer Pointer() const override { return pointer_; }
  void SetPointer(MousePointer pointer) override { pointer_ = pointer; }

  [[nodiscard]] std::u16string ToolTip() const override { return tool_tip_; }
  void SetToolTip(std::u16string_view text) override { tool_tip_ = text; }

  [[nodiscard]] int TimesBroughtToFront() const { return times_brought_to_front_; }
  [[nodiscard]] int TimesRefreshed() const { return times_refreshed_; }

 private:
  FocusOwner& owner_;
  Rect bounds_;
  bool visible_;
  bool enabled_;
  MousePointer pointer_;
  std::u16string tool_tip_;
  int times_brought_to_front_ = 0;
  int times_refreshed_ = 0;
};

template <class Base>
class HeadlessCaptioned : public HeadlessControl<Base> {
 public:
  HeadlessCaptioned(FocusOwner& owner, const ControlDefinition& definition)
      : HeadlessControl<Base>(owner, definition), caption_(definition.caption) {}

  [[nodiscard]] std::u16string Caption() const override { return caption_; }
  void SetCaption(std::u16string_view caption) override { caption_ = caption; }

 private:
  std::u16string caption_;
};

}  // namespace declarium::headless
