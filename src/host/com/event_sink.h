// Receiving the events of an object of the host through its connection point.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <windows.h>
#include <oleauto.h>

#include "host/com/host_calls.h"
#include "host/host_object_model.h"
#include "toolkit/boundary.h"

namespace declarium::com {

// Called with the event's id and its arguments, last first.
using EventHandler = std::function<void(DISPID event, std::span<const VARIANT> arguments)>;

// Subscribes to the event set `events` of `source`; the subscription keeps the source alive. No
// event arrives after the subscription ended. Exceptions of the handler do not reach the host: the
// boundary, which outlives the subscription, stops them.
[[nodiscard]] HostResult<std::unique_ptr<Subscription>> Advise(const HostObject& source,
                                                               const IID& events,
                                                               Boundary& boundary,
                                                               EventHandler handler);

}  // namespace declarium::com
