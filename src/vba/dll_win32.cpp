// DeclariumVba32.dll and DeclariumVba64.dll: what the system asks a DLL with a class for.
#include <windows.h>
#include <objbase.h>

#include "host/registration.h"
#include "vba/editor_add_in.h"
#include "win32/wide.h"

using namespace declarium;

STDAPI DllGetClassObject(REFCLSID wanted, REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  try {
    CLSID own{};
    const HRESULT known = CLSIDFromString(win32::WideString(kVbaAddIn.class_id).c_str(), &own);
    if (FAILED(known) || wanted != own) return CLASS_E_CLASSNOTAVAILABLE;
    const auto factory = vba::MakeEditorAddInFactory();
    return factory ? factory->QueryInterface(iid, object) : E_OUTOFMEMORY;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

// Never: an editor may still hold a sink of a button that its user moved to another bar.
STDAPI DllCanUnloadNow() {
  return S_FALSE;
}
