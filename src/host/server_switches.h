// The part of the command line that concerns the program as an automation server.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/registration.h"

namespace declarium {

enum class ServerTask {
  kNone,        // the user started the program
  kServe,       // started for a host: wait for it, show nothing
  kRegister,    // write the registration and end
  kUnregister,  // remove the registration and end
  kDoctor,      // report on the registration and end
};

struct ServerSwitches {
  ServerTask task = ServerTask::kNone;
  RegistrationScope scope = RegistrationScope::kUser;
  std::vector<std::u16string> rest;  // the arguments that are none of these switches, in order
};

// Reads -Embedding, -Automation, -RegServer, -UnregServer (each of the two also with ":machine")
// and -Doctor; "/" and any case are as good. `arguments` is without the program's own name. The
// last of several switches counts.
[[nodiscard]] ServerSwitches ParseServerSwitches(std::span<const std::u16string> arguments);

}  // namespace declarium
