// The tasks of an automation server that need no window: registering, unregistering, reporting.
#pragma once

#include "host/registration.h"
#include "host/server_switches.h"

namespace declarium::com {

// Does kRegister, kRegisterVba, kUnregister, kDoctor or kHelp and says on standard output, or on
// the console that the program was started from, what happened; where there is neither, in a box.
// Returns the exit status: 0 done or nothing wrong, 1 otherwise. `vba` is the server's add-in for
// VBA editors, null when it has none.
[[nodiscard]] int RunServerTask(const ServerSwitches& switches, const ServerIdentity& server,
                                const ServerIdentity* vba = nullptr);

}  // namespace declarium::com
