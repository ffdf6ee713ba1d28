// frmOptions: the dialog for the three colors of the code display, and for whom declarations are
// written.
#pragma once

#include <string_view>

#include "shell/settings_store.h"
#include "source/display_colors.h"
#include "toolkit/toolkit.h"
#include "vb/audience.h"

namespace declarium {

[[nodiscard]] const FormDefinition& OptionsFormDefinition();

// Shows the dialog over `owner` (nullptr: over the active form) and returns when it is closed. OK
// takes the three colors over into `colors` and writes them to the store, changed or not, and the
// target into `target`, which is written when it is another one; every other way out changes
// neither. What is already displayed keeps its colors.
void ShowOptionsDialog(Toolkit& toolkit, Form* owner, SettingsStore& store, DisplayColors& colors,
                       vb::Audience& target);

// The target as the dialog names it.
[[nodiscard]] std::u16string_view TargetText(vb::Audience target);

}  // namespace declarium
