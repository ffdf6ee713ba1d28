// frmReading: reads a project of the host while the user sees how far it is, and may cancel.
#pragma once

#include <functional>

#include "host/code_reading.h"
#include "toolkit/form.h"
#include "toolkit/form_definition.h"
#include "toolkit/toolkit.h"

namespace declarium {

enum class ReadingEnd { kWhole, kCancelled, kFailed };

// Reads until the end while `goes_on` says that the host is still connected. The window appears
// only when that takes a while; it is modal to `owner`, and events go on.
[[nodiscard]] ReadingEnd ReadWithWindow(Toolkit& toolkit, Form& owner, ProjectReading& reading,
                                        const std::function<bool()>& goes_on);

[[nodiscard]] const FormDefinition& ReadingFormDefinition();

}  // namespace declarium
