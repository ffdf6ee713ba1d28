// Interfaces of the stand-in IDE that other processes call, kept in use for good.
//
// When the last object of an interface that other processes hold goes, Wine (8.0) takes the
// interface out of service and waits for the calls that still run. A call that ends in that moment
// is waited for forever, with the thread that does everything: RpcServerUnregisterIf looks at the
// number of calls before it makes the event that the last one would set. With an object that is
// never given up the interface stays in service. The real IDE always has objects of them.
//
// The stack of one program that stopped showed it there; the other runs that stopped were not
// looked into. The add-in itself has no way round it, so with a single host under Wine it can still
// happen; Windows has its own code.
#pragma once

namespace declarium::vbhost {

// For the interfaces of the object model, in the apartment of the calling thread.
void KeepInterfacesInUse();

}  // namespace declarium::vbhost
