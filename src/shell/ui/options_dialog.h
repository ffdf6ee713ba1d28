// frmOptions: the dialog for the three colors of the code display.
#pragma once

#include "shell/settings_store.h"
#include "source/display_colors.h"
#include "toolkit/toolkit.h"

namespace declarium {

[[nodiscard]] const FormDefinition& OptionsFormDefinition();

// Shows the dialog over `owner` (nullptr: over the active form) and returns when it is closed. OK
// takes the three colors over into `colors` and writes them to the store, changed or not; every
// other way out changes neither. What is already displayed keeps its colors.
void ShowOptionsDialog(Toolkit& toolkit, Form* owner, SettingsStore& store, DisplayColors& colors);

}  // namespace declarium
