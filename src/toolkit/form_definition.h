// A form as data: what both backends build it from. Tables are constants with static lifetime; they
// must outlive the forms made from them.
//
//   constexpr ControlDefinition kControls[] = {
//       {.kind = ControlKind::kLabel, .name = "Label1", .caption = u"&Meno", .bounds = {8, 8, 80,
//       17}},
//       {.kind = ControlKind::kTextBox, .name = "Text1", .bounds = {96, 6, 200, 21}},
//       {.kind = ControlKind::kCommandButton, .name = "Command1", .caption = u"&OK",
//        .bounds = {96, 34, 75, 23}, .role = ButtonRole::kDefault}};
//   constexpr FormDefinition kForm = {.name = "frmAdd", .caption = u"...", .size = {304, 66},
//                                     .controls = kControls};
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/canvas.h"
#include "toolkit/color.h"
#include "toolkit/geometry.h"
#include "toolkit/icon.h"
#include "toolkit/input.h"

namespace declarium {

enum class ControlKind {
  kLabel,
  kFrame,
  kCommandButton,
  kCheckBox,
  kListBox,
  kComboBox,
  kTextBox,
  kMultiLineTextBox,
  kRichText,
  kListView,
  kToolbar,
  kPictureBox,
  kProgressBar,
  kTimer,
};

enum class ButtonRole {
  kPlain,
  kDefault,  // Enter clicks it wherever the focus is, but in a multi-line text box, on another
             // button and in a control that takes Enter; no key event is raised for it
  kCancel,   // Escape clicks it wherever the focus is; no key event is raised for it
};

enum class TabStop {
  kUsual,  // what the kind of control is made for: labels, frames, toolbars, bars and pictures are
           // passed over, the others stopped at
  kYes,
  kNo,
};

struct Shortcut {
  int key = 0;  // a key code, 0: none
  Modifiers modifiers = {};
  bool operator==(const Shortcut&) const = default;
};

struct ToolbarButtonDefinition {
  std::string_view key;  // empty: a gap between groups
  std::u16string_view tooltip = {};
  Icon icon = Icon::kNone;
  bool enabled = true;
  Shortcut shortcut = {};  // presses the button wherever in the form the focus is
};

struct ControlDefinition {
  ControlKind kind;
  std::string_view name;
  std::u16string_view caption = {};  // text of a captioned control, first text of a text box
  Rect bounds = {};                  // a combo box's height is that of its closed state
  std::u16string_view tooltip = {};
  std::u16string_view accessible_name =
      {};  // for controls without a caption or a label before them
  bool enabled = true;
  bool visible = true;
  TabStop tab_stop = TabStop::kUsual;  // the order of the tab key is the order of the table
  bool takes_enter = false;            // Enter is a key of this control, as if no default button
  FontRole font = FontRole::kText;
  ButtonRole role = ButtonRole::kPlain;
  Color back_color = kButtonFaceColor;  // picture boxes
  MousePointer pointer = MousePointer::kDefault;
  bool check_boxes = false;                               // list views: one for each entry
  std::span<const std::u16string_view> rows = {};         // list and combo boxes
  std::span<const ToolbarButtonDefinition> buttons = {};  // toolbars
  int interval = 0;                                       // timers, milliseconds
};

// One entry of the menus. An entry belongs to the nearest entry before it whose level is one less;
// level 0 stands in the menu bar.
struct MenuDefinition {
  int level = 0;
  std::string_view name;
  std::u16string_view caption = {};  // "-" is a separating line
  Shortcut shortcut = {};
  bool enabled = true;
  bool in_menu_bar = true;  // level 0 only; false: a popup menu
};

enum class BorderStyle {
  kSizable,  // with minimize and maximize boxes
  kDialog,   // fixed, with a close box
  kNone,     // no border and no title
};

// Wherever it starts, a window that fits its screen stands wholly on it.
enum class StartPosition { kSystem, kCentreOwner, kCentreScreen };

struct FormDefinition {
  std::string_view name;
  std::u16string_view caption = {};
  Size size = {};                    // of the inner area
  Size minimum_size = {};            // of the inner area; the window cannot be made smaller
  std::string_view help_topic = {};  // what Toolkit::on_help gets when F1 is pressed in it
  BorderStyle border = BorderStyle::kDialog;
  StartPosition start = StartPosition::kCentreOwner;
  std::span<const ControlDefinition> controls = {};
  std::span<const MenuDefinition> menus = {};
};

// What is wrong with a table, one line each: missing or repeated names, repeated toolbar keys, more
// than one default or cancel button, a menu level without its parent. Empty when the form can be
// built.
[[nodiscard]] std::vector<std::string> FindDefinitionFaults(const FormDefinition& definition);

// Throws std::logic_error with the faults, when there are any.
void RequireValid(const FormDefinition& definition);

// Whether the tab key stops at the control.
[[nodiscard]] bool IsTabStop(const ControlDefinition& control);

// What menus show for a shortcut, as in "Ctrl+S"; empty for none.
[[nodiscard]] std::u16string ShortcutText(const Shortcut& shortcut);

}  // namespace declarium
