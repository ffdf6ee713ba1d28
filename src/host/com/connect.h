// The add-in class that the host starts, and the factory through which it does.
#pragma once

#include <memory>
#include <windows.h>
#include <oleauto.h>

#include "host/com/automation.h"
#include "host/com/posted_calls.h"
#include "host/com/server_process.h"
#include "host/host_sessions.h"

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
