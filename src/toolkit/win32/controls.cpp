#include "toolkit/win32/controls.h"

#include <stdexcept>
#include <string>

#include "toolkit/win32/captioned.h"
#include "toolkit/win32/list_view.h"
#include "toolkit/win32/picture_box.h"
#include "toolkit/win32/progress_bar.h"
#include "toolkit/win32/rows.h"
#include "toolkit/win32/text.h"
#include "toolkit/win32/timer.h"
#include "toolkit/win32/toolbar.h"

namespace declarium::win32 {

std::unique_ptr<Component> MakeControl(Win32Form& form, const ControlDefinition& definition,
                                       UINT_PTR timer_id) {
  switch (definition.kind) {
    case ControlKind::kLabel:
      return std::make_unique<Win32Label>(form, definition);
    case ControlKind::kFrame:
      return std::make_unique<Win32Frame>(form, definition);
    case ControlKind::kCommandButton:
      return std::make_unique<Win32CommandButton>(form, definition);
    case ControlKind::kCheckBox:
      return std::make_unique<Win32CheckBox>(form, definition);
    case ControlKind::kListBox:
      return std::make_unique<Win32ListBox>(form, definition);
    case ControlKind::kComboBox:
      return std::make_unique<Win32ComboBox>(form, definition);
    case ControlKind::kTextBox:
    case ControlKind::kMultiLineTextBox:
      return std::make_unique<Win32TextBox>(form, definition);
    case ControlKind::kRichText:
      return std::make_unique<Win32RichText>(form, definition);
    case ControlKind::kListView:
      return std::make_unique<Win32ListView>(form, definition);
    case ControlKind::kToolbar:
      return std::make_unique<Win32Toolbar>(form, definition);
    case ControlKind::kPictureBox:
      return std::make_unique<Win32PictureBox>(form, definition);
    case ControlKind::kProgressBar:
      return std::make_unique<Win32ProgressBar>(form, definition);
    case ControlKind::kTimer:
      return std::make_unique<Win32Timer>(form, definition, timer_id);
  }
  throw std::logic_error("unknown kind of control " + std::string(definition.name));
}

}  // namespace declarium::win32
