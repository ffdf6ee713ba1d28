// What all controls of a form have in common. Controls are made by a Toolkit from a form's table,
// belong to their Form and live as long as it; when the form is unloaded they keep answering with
// their last state but are no longer seen.
#pragma once

#include <string>
#include <string_view>

#include "toolkit/event.h"
#include "toolkit/geometry.h"
#include "toolkit/input.h"

namespace declarium {

class Control;
class ListView;

// Anything of a form that has a name: controls, timers, menu entries.
class Component {
 public:
  virtual ~Component();
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  [[nodiscard]] const std::string& Name() const { return name_; }

 protected:
  explicit Component(std::string_view name) : name_(name) {}

 private:
  std::string name_;
};

// An entry was dragged from a list view and let go over a control.
struct Drop {
  ListView* source = nullptr;  // never null in a raised event
  int position = 0;            // 1-based entry of `source`
  Point at = {};               // in the control that it was dropped on
};

class Control : public Component {
 public:
  // Place in the form's inner area.
  [[nodiscard]] virtual Rect Bounds() const = 0;
  virtual void SetBounds(const Rect& bounds) = 0;
  void SetLeft(int left);
  void SetTop(int top);
  void SetWidth(int width);
  void SetHeight(int height);

  // The control's own state; an enabled control of a disabled form stays Enabled(). A control that
  // has the focus and is hidden or disabled passes it to the next one in the order of the tab key.
  [[nodiscard]] virtual bool Visible() const = 0;
  virtual void SetVisible(bool visible) = 0;
  [[nodiscard]] virtual bool Enabled() const = 0;
  virtual void SetEnabled(bool enabled) = 0;

  // Gives the control the keyboard focus: on_lost_focus of the control that had it, then
  // on_got_focus of this one, both before the function returns. Nothing happens when it has the
  // focus already, and while it or its form is hidden or disabled.
  virtual void SetFocus() = 0;
  [[nodiscard]] virtual bool HasFocus() const = 0;

  // Above the other controls of the form.
  virtual void BringToFront() = 0;
  // Paints at once what is waiting to be painted.
  virtual void Refresh() = 0;

  // The pointer shown over this control; kDefault is the control's usual one.
  [[nodiscard]] virtual MousePointer Pointer() const = 0;
  virtual void SetPointer(MousePointer pointer) = 0;

  [[nodiscard]] virtual std::u16string ToolTip() const = 0;
  virtual void SetToolTip(std::u16string_view text) = 0;

  Event<> on_got_focus;
  Event<> on_lost_focus;
  Event<KeyDown&> on_key_down;
  Event<KeyPress&> on_key_press;
  // The keyboard asks for the control's popup menu: the menu key or Shift+F10. Without a subscriber
  // the control opens its own, if it has one.
  Event<> on_context_menu;
  Event<const MouseEvent&> on_mouse_down;
  Event<const MouseEvent&> on_mouse_move;
  Event<const MouseEvent&> on_mouse_up;
  Event<> on_double_click;  // in the place of the second press's on_mouse_down
  Event<const Drop&> on_drop;

 protected:
  using Component::Component;
};

}  // namespace declarium
