// docs/automation.md lists the controls that the forms have.
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "check/ui/check_form.h"
#include "host/ui/plan_form.h"
#include "host/ui/project_form.h"
#include "host/ui/reading_window.h"
#include "import/ui/add_dialog.h"
#include "library/ui/history_dialog.h"
#include "search/ui/search_form.h"
#include "search/ui/wait_window.h"
#include "shell/ui/main_form.h"
#include "shell/ui/options_dialog.h"
#include "shell/ui/splash.h"
#include "support/temporary_folder.h"
#include "text/text.h"
#include "toolkit/form_definition.h"

namespace declarium {
namespace {

constexpr int kFirstMenuCommand = 1000;

std::string_view KindText(ControlKind kind) {
  switch (kind) {
    case ControlKind::kLabel:
      return "label";
    case ControlKind::kFrame:
      return "frame";
    case ControlKind::kCommandButton:
      return "command button";
    case ControlKind::kCheckBox:
      return "check box";
    case ControlKind::kListBox:
      return "list box";
    case ControlKind::kComboBox:
      return "combo box";
    case ControlKind::kTextBox:
    case ControlKind::kMultiLineTextBox:
      return "text box";
    case ControlKind::kRichText:
      return "rich text";
    case ControlKind::kListView:
      return "list view";
    case ControlKind::kToolbar:
      return "toolbar";
    case ControlKind::kPictureBox:
      return "picture box";
    case ControlKind::kProgressBar:
      return "progress bar";
    case ControlKind::kTimer:
      return "timer";
  }
  return "";
}

std::string Row(std::string_view name, std::string_view kind, std::u16string_view text) {
  std::string row = "| `" + std::string(name) + "` | " + std::string(kind) + " |";
  if (!text.empty()) row += " " + ToUtf8(text);
  return row + " |\n";
}

std::string ButtonRows(const ControlDefinition& toolbar) {
  std::string rows;
  for (std::size_t place = 0; place < toolbar.buttons.size(); ++place) {
    const auto& button = toolbar.buttons[place];
    if (!button.key.empty()) {
      rows += Row(button.key, "button " + std::to_string(place), button.tooltip);
    }
  }
  return rows;
}

std::string MenuRows(const FormDefinition& form) {
  std::string rows;
  for (std::size_t place = 0; place < form.menus.size(); ++place) {
    const auto& menu = form.menus[place];
    if (menu.caption == u"-") continue;
    const auto command = std::to_string(kFirstMenuCommand + static_cast<int>(place));
    rows += Row(menu.name, "menu entry " + command, menu.caption);
  }
  return rows;
}

// The section of a form as it stands on the page.
std::string SectionOf(const FormDefinition& form) {
  std::string section = "### " + std::string(form.name);
  if (!form.caption.empty()) section += ": " + ToUtf8(form.caption);
  section += "\n\n| name | what it is | text |\n|---|---|---|\n";
  std::string buttons;
  for (const auto& control : form.controls) {
    section += Row(control.name, KindText(control.kind),
                   control.caption.empty() ? control.accessible_name : control.caption);
    buttons += ButtonRows(control);
  }
  return section + buttons + MenuRows(form);
}

const FormDefinition* const kForms[] = {
    &MainFormDefinition(),    &AddDialogDefinition(),   &HistoryFormDefinition(),
    &OptionsFormDefinition(), &CheckFormDefinition(),   &PlanFormDefinition(),
    &ProjectFormDefinition(), &ReadingFormDefinition(), &SearchFormDefinition(),
    &WaitWindowDefinition(),  &SplashFormDefinition()};

TEST(AutomationPage, ListsTheControlsOfEveryForm) {
  const auto page = ContentOf(DECLARIUM_SOURCE_DIR "/docs/automation.md") + "\n";
  for (const auto* form : kForms) {
    const auto section = SectionOf(*form);
    EXPECT_NE(page.find(section + "\n"), std::string::npos) << "docs/automation.md lacks\n"
                                                            << section;
  }
}

}  // namespace
}  // namespace declarium
