#include "toolkit/headless/user.h"

#include <algorithm>
#include <stdexcept>

#include "toolkit/headless/form.h"
#include "toolkit/headless/list_view.h"
#include "toolkit/headless/text.h"

namespace declarium::headless {

namespace {

constexpr Point kEmptySpace{5, 1'000'000};

[[noreturn]] void Refuse(const Component& component, const char* why) {
  throw std::logic_error(component.Name() + " " + why);
}

void MoveRow(RowList& list, int step) {
  const int row = std::clamp(list.ListIndex() + step, 0, list.RowCount() - 1);
  if (list.RowCount() > 0) list.SetListIndex(row);
}

void MoveEntry(ListView& list, int step) {
  if (list.Count() == 0) return;
  const int before = list.Selected();
  const int position = before < 1 ? 1 : std::clamp(before + step, 1, list.Count());
  if (position == before) return;
  list.Select(position);
  list.on_item_click.Raise(position);
}

void EditByKey(HeadlessTextBox& box, int code) {
  if (code == key::kBackspace) {
    box.SelectBefore();
    box.ReplaceSelection(u"");
  } else if (code == key::kDelete) {
    box.SelectBehind();
    box.ReplaceSelection(u"");
  } else if (code == key::kEnter && box.IsMultiLine()) {
    box.ReplaceSelection(u"\r\n");
  } else if (code == key::kHome) {
    box.SetCaret(0);
  } else if (code == key::kEnd) {
    box.SetCaretToEnd();
  }
}

int StepOf(int code) {
  if (code == key::kUp) return -1;
  return code == key::kDown ? 1 : 0;
}

int KeyCodeOf(char16_t character) {
  if (character >= u'a' && character <= u'z') return character - u'a' + 'A';
  return character < 128 ? character : 0xDF;
}

}  // namespace

HeadlessForm& HeadlessUser::FormOf(const Control& control) const {
  for (HeadlessForm* form : toolkit_.Forms()) {
    if (form->Owns(control)) return *form;
  }
  Refuse(control, "belongs to no form");
}

HeadlessForm& HeadlessUser::RequireUsable(const Control& control) const {
  HeadlessForm& form = FormOf(control);
  if (!form.CanTakeInput()) Refuse(control, "is in a form that takes no input now");
  if (!control.Visible()) Refuse(control, "is hidden");
  if (!control.Enabled()) Refuse(control, "is disabled");
  return form;
}

void HeadlessUser::Focus(Control& control) {
  RequireUsable(control);
  control.SetFocus();
}

void HeadlessUser::Click(CommandButton& button) {
  Focus(button);
  button.on_click.Raise();
}

void HeadlessUser::Click(CheckBox& box) {
  Focus(box);
  box.SetValue(box.Value() == 0 ? 1 : 0);
}

void HeadlessUser::ChooseRow(RowList& list, int row) {
  Focus(list);
  if (row < 0 || row >= list.RowCount()) Refuse(list, "has no such row");
  if (list.ListIndex() == row) {
    list.on_click.Raise();
  } else {
    list.SetListIndex(row);
  }
}

void HeadlessUser::DoubleClickRow(ListBox& list, int row) {
  ChooseRow(list, row);
  list.on_double_click.Raise();
}

void HeadlessUser::ClickEntry(ListView& list, int position, MouseButton button) {
  Focus(list);
  if (position < 1 || position > list.Count()) Refuse(list, "has no such entry");
  const MouseEvent event{.button = button, .at = HeadlessListView::PointOf(position)};
  list.Select(position);
  list.on_item_click.Raise(position);
  list.on_mouse_down.Raise(event);
  list.on_mouse_up.Raise(event);
}

void HeadlessUser::ClickCheckBox(ListView& list, int position) {
  if (list.Entry(position).check == CheckMark::kNone) Refuse(list, "has no check box there");
  Focus(list);
  list.Select(position);
  list.on_item_click.Raise(position);
  dynamic_cast<HeadlessListView&>(list).SwitchCheck(position);
}

void HeadlessUser::ClickEmptySpace(ListView& list, MouseButton button) {
  Focus(list);
  const MouseEvent event{.button = button, .at = kEmptySpace};
  list.on_mouse_down.Raise(event);
  list.on_mouse_up.Raise(event);
}

void HeadlessUser::DoubleClickEntry(ListView& list, int position) {
  ClickEntry(list, position);
  list.on_double_click.Raise();
  list.on_mouse_up.Raise(
      MouseEvent{.button = MouseButton::kLeft, .at = HeadlessListView::PointOf(position)});
}

void HeadlessUser::DoubleClickEmptySpace(ListView& list) {
  ClickEmptySpace(list);
  list.on_double_click.Raise();
  list.on_mouse_up.Raise(MouseEvent{.button = MouseButton::kLeft, .at = kEmptySpace});
}

void HeadlessUser::DragEntry(ListView& list, int position, Control& target) {
  ClickEntry(list, position);
  RequireUsable(target);
  if (dynamic_cast<HeadlessListView&>(list).DragTarget() != &target) return;
  target.on_drop.Raise(Drop{.source = &list, .position = position});
}

void HeadlessUser::ClickToolbar(Toolbar& toolbar, std::string_view key) {
  RequireUsable(toolbar);
  if (!toolbar.ButtonEnabled(key)) Refuse(toolbar, "has that button disabled");
  toolbar.on_button_click.Raise(key);
}

void HeadlessUser::ChooseMenu(Form& form, std::string_view name) {
  if (!dynamic_cast<HeadlessForm&>(form).CanTakeInput()) {
    throw std::logic_error("form " + form.Name() + " takes no input now");
  }
  std::vector<HeadlessMenuItem*> path;
  for (auto* item = &form.Get<HeadlessMenuItem>(name); item; item = item->Parent()) {
    path.insert(path.begin(), item);
  }
  for (HeadlessMenuItem* item : path) {
    if (!item->Enabled()) Refuse(*item, "is disabled");
    item->on_click.Raise();
  }
}

bool HeadlessUser::PressShortcut(HeadlessForm& form, int code, Modifiers modifiers) {
  for (HeadlessMenuItem* item : form.Menus()) {
    const Shortcut& shortcut = item->ShortcutKey();
    if (shortcut.key != code || shortcut.modifiers != modifiers) continue;
    for (HeadlessMenuItem* above = item->Parent(); above; above = above->Parent()) {
      if (!above->Enabled()) return true;
      above->on_click.Raise();
    }
    if (item->Enabled()) item->on_click.Raise();
    return true;
  }
  return std::ranges::any_of(form.Toolbars(), [&](HeadlessToolbar* toolbar) {
    return toolbar->Keys().PressShortcut({code, modifiers});
  });
}

bool HeadlessUser::PressDialogKey(HeadlessForm& form, Control& control, int code,
                                  Modifiers modifiers) {
  if (code == key::kTab && !modifiers.control) {
    const TabOrder& tabs = form.Tabs();
    Control* next = modifiers.shift ? tabs.Previous(&control) : tabs.Next(&control);
    if (next) next->SetFocus();
    return true;
  }
  CommandButton* button = nullptr;
  if (code == key::kEscape) button = form.ButtonWith(ButtonRole::kCancel);
  if (code == key::kEnter) {
    button = dynamic_cast<CommandButton*>(&control);
    if (!button && !form.Tabs().TakesEnter(control)) button = form.ButtonWith(ButtonRole::kDefault);
  }
  if (!button) return false;
  if (button->Visible() && button->Enabled()) Click(*button);
  return true;
}

void HeadlessUser::ActOnKey(Control& control, int code) {
  if (auto* box = dynamic_cast<HeadlessTextBox*>(&control)) {
    EditByKey(*box, code);
  } else if (auto* list = dynamic_cast<RowList*>(&control)) {
    if (StepOf(code) != 0) MoveRow(*list, StepOf(code));
  } else if (auto* view = dynamic_cast<HeadlessListView*>(&control)) {
    if (StepOf(code) != 0) MoveEntry(*view, StepOf(code));
    if (code == key::kSpace) view->SwitchCheck(view->Selected());
  } else if (auto* toolbar = dynamic_cast<HeadlessToolbar*>(&control)) {
    toolbar->Keys().Press(code);
  } else if (code == key::kSpace) {
    if (auto* check = dynamic_cast<CheckBox*>(&control)) Click(*check);
    if (auto* button = dynamic_cast<CommandButton*>(&control)) Click(*button);
  }
}

void HeadlessUser::PressKey(int code, Modifiers modifiers) {
  Control* control = toolkit_.FocusedControl();
  if (!control) throw std::logic_error("no control has the focus");
  HeadlessForm& form = RequireUsable(*control);
  auto* box = dynamic_cast<TextBox*>(control);
  const bool edits = box != nullptr && TextBox::Edits(code, modifiers);
  if (!edits && PressShortcut(form, code, modifiers)) return;
  if (code == key::kF1 && modifiers == Modifiers()) return toolkit_.on_help.Raise(form.HelpTopic());
  if (PressDialogKey(form, *control, code, modifiers)) return;
  KeyDown event{.code = code, .modifiers = modifiers};
  control->on_key_down.Raise(event);
  if (event.code == 0) return;
  if (edits) {
    box->DeleteWord();
  } else if (code == key::kApps || (code == key::kF10 && modifiers == Modifiers{.shift = true})) {
    control->on_context_menu.Raise();
  } else {
    ActOnKey(*control, code);
  }
}

void HeadlessUser::PressKey(Control& control, int code, Modifiers modifiers) {
  Focus(control);
  PressKey(code, modifiers);
}

void HeadlessUser::TypeCharacter(Control& control, char16_t character) {
  KeyDown down{.code = KeyCodeOf(character)};
  control.on_key_down.Raise(down);
  if (down.code == 0) return;
  KeyPress press{.character = character};
  control.on_key_press.Raise(press);
  if (press.character == 0) return;
  if (auto* box = dynamic_cast<HeadlessTextBox*>(&control)) {
    box->ReplaceSelection(std::u16string_view(&press.character, 1));
  }
}

void HeadlessUser::Type(std::u16string_view text) {
  for (const char16_t character : text) {
    Control* control = toolkit_.FocusedControl();
    if (!control) throw std::logic_error("no control has the focus");
    RequireUsable(*control);
    TypeCharacter(*control, character);
  }
}

void HeadlessUser::Type(Control& control, std::u16string_view text) {
  Focus(control);
  Type(text);
}

void HeadlessUser::MouseDown(Control& control, const MouseEvent& event) {
  Focus(control);
  control.on_mouse_down.Raise(event);
}

void HeadlessUser::MouseMove(Control& control, const MouseEvent& event) {
  RequireUsable(control);
  control.on_mouse_move.Raise(event);
}

void HeadlessUser::MouseUp(Control& control, const MouseEvent& event) {
  RequireUsable(control);
  control.on_mouse_up.Raise(event);
}

void HeadlessUser::DoubleClick(Control& control) {
  Focus(control);
  const MouseEvent event{.button = MouseButton::kLeft};
  control.on_mouse_down.Raise(event);
  control.on_mouse_up.Raise(event);
  control.on_double_click.Raise();
  control.on_mouse_up.Raise(event);
}

void HeadlessUser::Close(Form& form) {
  if (!dynamic_cast<HeadlessForm&>(form).CanTakeInput()) {
    throw std::logic_error("form " + form.Name() + " takes no input now");
  }
  form.Unload(UnloadReason::kUser);
}

void HeadlessUser::Resize(Form& form, Size outer) {
  Placement placement = form.GetPlacement();
  placement.right = placement.left + outer.width;
  placement.bottom = placement.top + outer.height;
  form.SetPlacement(placement);
}

}  // namespace declarium::headless
