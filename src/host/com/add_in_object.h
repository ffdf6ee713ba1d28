// What an object that a host loads as an add-in, and the factory of such objects, do wherever they
// live: in the program or in a DLL in the host's process.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include "host/com/automation.h"
#include "host/com/com_object.h"

namespace declarium::com {

// The five entries of an add-in. The older of the host's two interfaces has the first four in the
// same places, so one table serves both.
struct AddInEntries : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, int connect_mode,
                                                 IDispatch* add_in, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDisconnection(int remove_mode, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;
};

inline constexpr IID kIDTExtensibility = {0x0002E151, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID kIDTExtensibility2 = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};

// The object argument of a call by Invoke that has `position` arguments before it; null when there
// is none.
[[nodiscard]] ComPtr<IDispatch> ObjectArgument(const DISPPARAMS& parameters, UINT position);

// Answers both interfaces and calls by Invoke. Entries that are not overridden do nothing.
class AddInObject : public DispatchObject<AddInEntries> {
 public:
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                             DISPID* ids) noexcept override;
  STDMETHODIMP Invoke(DISPID entry, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO*, UINT* wrong_argument) noexcept override;

  STDMETHODIMP OnAddInsUpdate(SAFEARRAY**) noexcept override { return S_OK; }
  STDMETHODIMP OnStartupComplete(SAFEARRAY**) noexcept override { return S_OK; }
  STDMETHODIMP OnBeginShutdown(SAFEARRAY**) noexcept override { return S_OK; }

 protected:
  // A call that is none of the five.
  virtual HRESULT InvokeOther(DISPID, const DISPPARAMS&) noexcept { return DISP_E_MEMBERNOTFOUND; }

 private:
  [[nodiscard]] void* Find(REFIID iid) noexcept override;
  HRESULT InvokeOnConnection(const DISPPARAMS& parameters, UINT* wrong_argument);
};

class AddInFactory : public ComObject<IClassFactory> {
 public:
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) noexcept override;
  STDMETHODIMP LockServer(BOOL) noexcept override { return S_OK; }

 protected:
  // A new add-in object; null when it cannot be made.
  [[nodiscard]] virtual ComPtr<AddInEntries> Make() noexcept = 0;

 private:
  [[nodiscard]] void* Find(REFIID iid) noexcept override;
};

}  // namespace declarium::com
