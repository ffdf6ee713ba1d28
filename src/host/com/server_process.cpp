#include "host/com/server_process.h"

namespace declarium::com {

HRESULT ServerProcess::Offer(const CLSID& class_id, IClassFactory& factory) {
  const HRESULT result = CoRegisterClassObject(class_id, &factory, CLSCTX_LOCAL_SERVER,
                                               REGCLS_MULTIPLEUSE | REGCLS_SUSPENDED, &cookie_);
  return SUCCEEDED(result) ? CoResumeClassObjects() : result;
}

void ServerProcess::ReleaseHold() {
  if (CoReleaseServerProcess() != 0) return;
  // A host that comes now is to start a process of its own, not to meet one that is ending.
  Withdraw();
  ended_();
}

void ServerProcess::Withdraw() {
  if (const DWORD cookie = std::exchange(cookie_, 0)) CoRevokeClassObject(cookie);
}

}  // namespace declarium::com
