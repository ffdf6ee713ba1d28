// frmOptions: the dialog for the three colours of the code display.
#pragma once

#include "render/display_colours.h"
#include "shell/settings_store.h"
#include "toolkit/toolkit.h"

namespace declarium {

[[nodiscard]] const FormDefinition& OptionsFormDefinition();

// Shows the dialog over `owner` (nullptr: over the active form) and returns when it is closed. OK
// takes the three colours over into `colours` and writes them to the store, changed or not; every
// other way out changes neither. What is already displayed keeps its colours.
void ShowOptionsDialog(Toolkit& toolkit, Form* owner, SettingsStore& store,
                       DisplayColours& colours);

}  // namespace declarium
