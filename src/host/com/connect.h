// The add-in class that the host starts, and the factory through which it does.
#pragma once

#include <memory>
#include <windows.h>
#include <oleauto.h>

#include "host/com/add_in_object.h"
#include "host/com/automation.h"
#include "host/com/posted_calls.h"
#include "host/com/server_process.h"
#include "host/host_sessions.h"

namespace declarium::com {

// What the add-in objects of one server share; outlives them.
struct ConnectContext {
  HostSessions& sessions;
  PostedCalls& posted_calls;
  ServerProcess& process;
};

// A new add-in object, for one host.
[[nodiscard]] ComPtr<AddInEntries> MakeConnect(ConnectContext& context);

// The factory of add-in objects, for ServerProcess::Offer.
[[nodiscard]] ComPtr<IClassFactory> MakeConnectFactory(ConnectContext& context);

}  // namespace declarium::com
