// A form with one control of every kind, for the contract suite and its screenshot.
#pragma once

#include "toolkit/form_definition.h"

namespace declarium::demo {

inline constexpr std::u16string_view kKinds[] = {u"Const", u"Declare", u"Type"};

inline constexpr ToolbarButtonDefinition kButtons[] = {
    {.key = "new", .tooltip = u"Nová databáza", .icon = Icon::kNew},
    {.key = "open", .tooltip = u"Otvoriť databázu", .icon = Icon::kOpen},
    {.key = "save", .tooltip = u"Uložiť databázu", .icon = Icon::kSave, .enabled = false},
    {.key = ""},
    {.key = "add", .tooltip = u"Pridať", .icon = Icon::kAdd},
    {.key = "delete", .tooltip = u"Odstrániť", .icon = Icon::kDelete},
    {.key = "copy", .tooltip = u"Kopírovať", .icon = Icon::kCopy},
    {.key = "export", .tooltip = u"Exportovať", .icon = Icon::kExport},
    {.key = "insert", .tooltip = u"Vložiť", .icon = Icon::kInsert},
    {.key = ""},
    {.key = "find", .tooltip = u"Rozšírené vyhľadávanie...", .icon = Icon::kFind},
    {.key = "settings", .tooltip = u"Nastavenia", .icon = Icon::kSettings},
};

inline constexpr ControlDefinition kControls[] = {
    {.kind = ControlKind::kToolbar,
     .name = "Toolbar1",
     .bounds = {0, 0, 620, 28},
     .buttons = kButtons},
    {.kind = ControlKind::kLabel,
     .name = "Label1",
     .caption = u"&Názov:",
     .bounds = {8, 38, 60, 17}},
    {.kind = ControlKind::kTextBox,
     .name = "Text1",
     .bounds = {72, 35, 160, 21},
     .tooltip = u"Začiatok názvu"},
    {.kind = ControlKind::kListBox,
     .name = "List1",
     .bounds = {8, 62, 224, 150},
     .accessible_name = u"Položky"},
    {.kind = ControlKind::kLabel,
     .name = "Label2",
     .caption = u"&Druh:",
     .bounds = {244, 38, 50, 17}},
    {.kind = ControlKind::kComboBox,
     .name = "Combo1",
     .bounds = {300, 35, 140, 21},
     .rows = kKinds},
    {.kind = ControlKind::kListView,
     .name = "View1",
     .bounds = {244, 62, 180, 150},
     .accessible_name = u"Výber"},
    {.kind = ControlKind::kListView,
     .name = "View2",
     .bounds = {430, 62, 180, 150},
     .accessible_name = u"Zdieľané položky"},
    {.kind = ControlKind::kPictureBox,
     .name = "Bar1",
     .bounds = {234, 62, 8, 150},
     .pointer = MousePointer::kSizeWestEast},
    {.kind = ControlKind::kRichText,
     .name = "RTB",
     .bounds = {8, 218, 602, 90},
     .accessible_name = u"Zdrojový text",
     .font = FontRole::kCode},
    {.kind = ControlKind::kFrame,
     .name = "Frame1",
     .caption = u"Kategórie",
     .bounds = {8, 314, 224, 66}},
    {.kind = ControlKind::kCheckBox,
     .name = "Check1",
     .caption = u"&Konštanty",
     .bounds = {18, 332, 96, 17}},
    {.kind = ControlKind::kCheckBox,
     .name = "Check2",
     .caption = u"T&ypy",
     .bounds = {18, 354, 96, 17}},
    {.kind = ControlKind::kMultiLineTextBox,
     .name = "Text2",
     .caption = u"Const A = 1",
     .bounds = {244, 318, 180, 62},
     .accessible_name = u"Deklarácia",
     .font = FontRole::kCode},
    {.kind = ControlKind::kPictureBox,
     .name = "Picture1",
     .bounds = {430, 318, 60, 24},
     .tab_stop = TabStop::kYes,
     .back_color = 0x800000},
    {.kind = ControlKind::kProgressBar, .name = "PB", .bounds = {430, 352, 180, 14}},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = u"&OK",
     .bounds = {450, 388, 75, 23}},
    {.kind = ControlKind::kCommandButton,
     .name = "Command2",
     .caption = u"&Zrušiť",
     .bounds = {535, 388, 75, 23}},
    {.kind = ControlKind::kTimer, .name = "Timer1", .enabled = false, .interval = 20},
};

inline constexpr MenuDefinition kMenus[] = {
    {.level = 0, .name = "mnuDatabase", .caption = u"&Databáza"},
    {.level = 1, .name = "mnuNew", .caption = u"&Nová...", .shortcut = {'N', {.control = true}}},
    {.level = 1,
     .name = "mnuSave",
     .caption = u"&Uložiť",
     .shortcut = {'S', {.control = true}},
     .enabled = false},
    {.level = 1, .name = "mnuLine", .caption = u"-"},
    {.level = 1, .name = "mnuEnd", .caption = u"&Koniec"},
    {.level = 0, .name = "mnuPopup", .caption = u"Popup", .in_menu_bar = false},
    {.level = 1, .name = "mnuDelOnce", .caption = u"Odstrániť &položku"},
    {.level = 1, .name = "mnuDelAll", .caption = u"Odstrániť &všetko"},
};

inline constexpr FormDefinition kForm = {
    .name = "frmDemo",
    .caption = u"Ukážka ovládacích prvkov",
    .size = {620, 420},
    .border = BorderStyle::kSizable,
    .start = StartPosition::kCentreScreen,
    .controls = kControls,
    .menus = kMenus,
};

inline constexpr ControlDefinition kDialogControls[] = {
    {.kind = ControlKind::kTextBox, .name = "Text1", .bounds = {8, 8, 180, 21}},
    {.kind = ControlKind::kMultiLineTextBox, .name = "Text2", .bounds = {8, 36, 180, 60}},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = u"&OK",
     .bounds = {28, 104, 75, 23},
     .role = ButtonRole::kDefault},
    {.kind = ControlKind::kCommandButton,
     .name = "Command2",
     .caption = u"&Zrušiť",
     .bounds = {113, 104, 75, 23},
     .role = ButtonRole::kCancel},
};

inline constexpr FormDefinition kDialog = {
    .name = "frmDialog",
    .caption = u"Dialóg",
    .size = {196, 136},
    .help_topic = "dialog",
    .controls = kDialogControls,
};

inline constexpr ControlDefinition kResultControls[] = {
    {.kind = ControlKind::kListView,
     .name = "View1",
     .bounds = {8, 8, 180, 91},
     .accessible_name = u"Výsledky",
     .takes_enter = true},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = u"&Hľadať",
     .bounds = {113, 107, 75, 23},
     .role = ButtonRole::kDefault},
};

inline constexpr FormDefinition kResults = {
    .name = "frmResults",
    .caption = u"Výsledky",
    .size = {196, 138},
    .minimum_size = {150, 100},
    .border = BorderStyle::kSizable,
    .controls = kResultControls,
};

inline constexpr ControlDefinition kCheckedControls[] = {
    {.kind = ControlKind::kListView,
     .name = "View1",
     .bounds = {8, 8, 180, 91},
     .accessible_name = u"Plán",
     .check_boxes = true},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = u"&OK",
     .bounds = {113, 107, 75, 23},
     .role = ButtonRole::kDefault},
};

// Its list has check boxes.
inline constexpr FormDefinition kChecked = {
    .name = "frmChecked",
    .caption = u"Plán",
    .size = {196, 138},
    .controls = kCheckedControls,
};

inline constexpr ToolbarButtonDefinition kBarButtons[] = {
    {.key = "new", .icon = Icon::kNew},
    {.key = "save", .icon = Icon::kSave, .enabled = false},
    {.key = ""},
    {.key = "find", .icon = Icon::kFind, .shortcut = {'F', {.control = true}}},
};

inline constexpr ControlDefinition kBarControls[] = {
    {.kind = ControlKind::kTextBox, .name = "Text1", .bounds = {8, 36, 180, 21}},
    {.kind = ControlKind::kToolbar,
     .name = "Toolbar1",
     .bounds = {0, 0, 196, 28},
     .tab_stop = TabStop::kYes,
     .buttons = kBarButtons},
};

// Its toolbar is reached by the tab key.
inline constexpr FormDefinition kBar = {
    .name = "frmBar",
    .caption = u"Panel",
    .size = {196, 64},
    .controls = kBarControls,
};

}  // namespace declarium::demo
