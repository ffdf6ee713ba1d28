// The part of the command line that concerns the program as an automation server.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/registration.h"

namespace declarium {

enum class ServerTask {
  kNone,         // the user started the program
  kServe,        // started for a host: wait for it, show nothing
  kRegister,     // write the registration and end
  kRegisterVba,  // write that for VBA editors and end
  kUnregister,   // remove the registration and end
  kDoctor,       // report on the registration and end
  kHelp,         // show the switches and end
};

struct ServerSwitches {
  ServerTask task = ServerTask::kNone;
  RegistrationScope scope = RegistrationScope::kUser;
  bool quiet = false;                // where there is no console, nothing is shown
  bool log = false;                  // calls and failures are written down
  std::vector<std::u16string> rest;  // the arguments that are none of these switches, in order
};

// One switch: its name without the mark, what it is for, and what it does.
struct ServerSwitch {
  std::u16string_view name;
  std::u16string_view purpose;
  void (*apply)(ServerSwitches& switches);
};

// All of them, as the help lists them.
[[nodiscard]] std::span<const ServerSwitch> AllServerSwitches() noexcept;

// Finds the switches, with "-" or "/" and in any case. `arguments` is without the program's own
// name. The last of several tasks counts.
[[nodiscard]] ServerSwitches ParseServerSwitches(std::span<const std::u16string> arguments);

// How the program is called, with every switch; lines end with CR LF.
[[nodiscard]] std::u16string SwitchHelp();

}  // namespace declarium
