// Makes the controls of forms.
#pragma once

#include <memory>

#include "toolkit/control.h"
#include "toolkit/form_definition.h"
#include "win32/system.h"

namespace declarium::win32 {

class Win32Form;

// `timer_id` tells the timers of a form apart, from 1; other controls have no use for it.
[[nodiscard]] std::unique_ptr<Component> MakeControl(Win32Form& form,
                                                     const ControlDefinition& definition,
                                                     UINT_PTR timer_id);

}  // namespace declarium::win32
