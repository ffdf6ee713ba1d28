// One object of the stand-in IDE's object model: a table of members behind IDispatch, and a
// connection point where the object is a source of events.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>
#include <windows.h>
#include <oaidl.h>
#include <ocidl.h>

#include "host/com/automation.h"
#include "host/com/com_object.h"
#include "vbhost/call_policy.h"

namespace declarium::vbhost {

using com::Variant;
using win32::ComPtr;

// The sinks that add-ins advised on one source of events.
class SinkList {
 public:
  DWORD Add(ComPtr<IDispatch> sink);
  [[nodiscard]] bool Remove(DWORD cookie);
  [[nodiscard]] int count() const noexcept { return static_cast<int>(sinks_.size()); }
  // Calls event `id` of every sink; the arguments are in declaration order. Returns the worst
  // status.
  HRESULT Fire(DISPID id, std::vector<VARIANT> arguments) const;

 private:
  std::map<DWORD, ComPtr<IDispatch>> sinks_;
  DWORD next_cookie_ = 1;
};

struct Call {
  bool put = false;
  std::vector<Variant> arguments;   // in declaration order
  const DISPPARAMS* raw = nullptr;  // for arguments to write to
  Variant result;
};

class ModelObject final : public com::DispatchObject<IDispatch, IConnectionPointContainer> {
 public:
  using Handler = std::function<HRESULT(Call&)>;
  enum class Access { kGet, kGetPut, kMethod };

  ModelObject(std::string name, CallPolicy& policy);

  // Declares a member that takes from `least` to `most` arguments (without the value of a put).
  void Add(DISPID id, const wchar_t* name, Access access, int least, int most, Handler handler);
  // Makes the object a source of the event set `events`.
  void SetEvents(const IID& events, std::shared_ptr<SinkList> sinks);
  // Called when the object is destroyed.
  void SetGone(std::function<void()> gone) { gone_ = std::move(gone); }

  // Objects in existence.
  [[nodiscard]] static int count() noexcept { return count_; }

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO*, UINT*) override;
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

 private:
  class Point;
  struct Member {
    std::wstring name;
    Access access;
    int least;
    int most;
    Handler handler;
  };

  ~ModelObject() override;
  [[nodiscard]] void* Find(REFIID iid) noexcept override;

  std::string name_;
  CallPolicy& policy_;
  std::map<DISPID, Member> members_;
  IID events_{};
  std::shared_ptr<SinkList> sinks_;
  std::function<void()> gone_;
  static int count_;
};

}  // namespace declarium::vbhost
