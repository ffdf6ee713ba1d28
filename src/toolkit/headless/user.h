// Does to headless forms what a person does, with the same events in the same order as real
// windows. What a person could not do throws std::logic_error: acting on a control that is hidden
// or disabled, or whose form is, or that stands below a modal form.
#pragma once

#include <string_view>

#include "toolkit/captioned.h"
#include "toolkit/form.h"
#include "toolkit/form_definition.h"
#include "toolkit/headless/toolkit.h"
#include "toolkit/input.h"
#include "toolkit/list_view.h"
#include "toolkit/picture_box.h"
#include "toolkit/row_list.h"
#include "toolkit/text_box.h"
#include "toolkit/toolbar.h"

namespace declarium::headless {

class HeadlessForm;

class HeadlessUser {
 public:
  explicit HeadlessUser(HeadlessToolkit& toolkit) : toolkit_(toolkit) {}

  void Click(CommandButton& button);
  void Click(CheckBox& box);
  // Clicks a row, which selects it. Clicking the selected row raises its click once more.
  void ChooseRow(RowList& list, int row);
  void DoubleClickRow(ListBox& list, int row);
  // Clicks an entry with a button of the mouse: item click, press, release.
  void ClickEntry(ListView& list, int position, MouseButton button = MouseButton::kLeft);
  // A click on the check box in front of an entry.
  void ClickCheckBox(ListView& list, int position);
  // A press and release on the empty space behind the last entry.
  void ClickEmptySpace(ListView& list, MouseButton button = MouseButton::kLeft);
  void DoubleClickEntry(ListView& list, int position);
  void DoubleClickEmptySpace(ListView& list);
  void DragEntry(ListView& list, int position, Control& target);
  void ClickToolbar(Toolbar& toolbar, std::string_view key);
  // Opens the entries above it, then chooses it. Throws when one of them is disabled.
  void ChooseMenu(Form& form, std::string_view name);

  // A key to the control that has the focus, or to `control` after clicking into it: shortcuts of
  // the form, default and cancel buttons, tab, then the control itself.
  void PressKey(int code, Modifiers modifiers = {});
  void PressKey(Control& control, int code, Modifiers modifiers = {});
  // Types character by character; a text box gets each at its selection.
  void Type(std::u16string_view text);
  void Type(Control& control, std::u16string_view text);
  // The key and the character of one keystroke.
  void TypeCharacter(Control& control, char16_t character);

  void MouseDown(Control& control, const MouseEvent& event);
  void MouseMove(Control& control, const MouseEvent& event);
  void MouseUp(Control& control, const MouseEvent& event);
  void DoubleClick(Control& control);
  // Where the pointer stands on the screen.
  void MoveCursorTo(Point at) { toolkit_.SetCursorPosition(at); }

  // The close box of a window, or Alt+F4.
  void Close(Form& form);
  // Drags the window's border.
  void Resize(Form& form, Size outer);

 private:
  [[nodiscard]] HeadlessForm& FormOf(const Control& control) const;
  HeadlessForm& RequireUsable(const Control& control) const;
  void Focus(Control& control);
  bool PressShortcut(HeadlessForm& form, int code, Modifiers modifiers);
  bool PressDialogKey(HeadlessForm& form, Control& control, int code, Modifiers modifiers);
  void ActOnKey(Control& control, int code);

  HeadlessToolkit& toolkit_;
};

}  // namespace declarium::headless
