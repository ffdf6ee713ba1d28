// Interfaces of the stand-in IDE that other processes call, kept in use for good.
//
// When the last object of an interface that other processes hold goes, Wine (8.0) takes the
// interface out of service and waits for the calls that still run. A call that ends in that moment
// is waited for for ever, with the thread that does everything: RpcServerUnregisterIf looks at the
// number of calls before it makes the event that the last one would set. With an object that is
// never given up the interface stays in service. The real IDE always has objects of them.
#pragma once

namespace declarium::vbhost {

// For the interfaces of the object model, in the apartment of the calling thread.
void KeepInterfacesInUse();

}  // namespace declarium::vbhost
