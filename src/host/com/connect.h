// The add-in class that the host starts, and the factory through which it does.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <oleauto.h>

#include "host/com/com_ptr.h"
#include "host/com/posted_calls.h"
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
  std::function<void()> last_gone;  // nothing keeps the server process any more
};

// A new add-in object, for one host.
[[nodiscard]] ComPtr<AddInEntries> MakeConnect(ConnectContext& context);

// The registration of the class with the system for as long as the object lives: hosts get their
// add-in objects from this process. Failing means that no host can reach it.
class ConnectClass {
 public:
  ConnectClass(const CLSID& class_id, ConnectContext& context);
  ConnectClass(const ConnectClass&) = delete;
  ConnectClass& operator=(const ConnectClass&) = delete;
  ~ConnectClass();
  [[nodiscard]] HRESULT result() const noexcept { return result_; }

 private:
  DWORD cookie_ = 0;
  HRESULT result_;
};

}  // namespace declarium::com
