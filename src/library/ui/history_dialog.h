// frmHistory: the kept versions of the open library's file, one of which can be opened.
#pragma once

#include <optional>
#include <string>

#include "library/history.h"
#include "library/library.h"
#include "toolkit/form.h"
#include "toolkit/toolkit.h"

namespace declarium {

// Shows when each version was written, its size, why it was kept, and what it has more, less and
// other than `library`. The content of the version chosen; nullopt when none was. A file without
// versions gets a message instead.
[[nodiscard]] std::optional<std::string> AskForVersion(Toolkit& toolkit, Form& owner,
                                                       const History& history,
                                                       const Library& library);

// For the list of control names and for tests.
[[nodiscard]] const FormDefinition& HistoryFormDefinition();

}  // namespace declarium
