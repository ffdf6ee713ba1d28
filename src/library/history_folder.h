// Where the user's history is (library/history.h). One source per operating system has it.
#pragma once

#include <filesystem>

namespace declarium {

// The environment's variable that names another folder; "none" or nothing in it: no history.
inline constexpr const char* kHistoryVariable = "DECLARIUM_HISTORY";

// The variable's folder; without the variable, on Windows, what the text value "HistoryFolder" of
// the program's settings names in the same way, otherwise %LOCALAPPDATA%\Declarium\History;
// elsewhere $XDG_STATE_HOME/declarium/history, by default ~/.local/state/declarium/history. Empty
// when there is to be no history, or no folder of the user is known.
[[nodiscard]] std::filesystem::path HistoryFolder();

}  // namespace declarium
