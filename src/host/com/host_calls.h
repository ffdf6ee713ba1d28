// Calls to the host through IDispatch, with patience for a host that is busy.
#pragma once

#include <initializer_list>
#include <windows.h>
#include <oleauto.h>

#include "host/busy_host.h"
#include "host/com/automation.h"
#include "host/host_object_model.h"

namespace declarium::com {

// A member of the host's object model. The name is tried when the host does not know the id.
struct HostMember {
  DISPID id;
  const wchar_t* name;
};

// A reference to an object of the host; may be empty (Nothing). Calling on an empty one fails as a
// host's failure does.
class HostObject {
 public:
  HostObject() = default;
  explicit HostObject(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  [[nodiscard]] HostResult<Variant> Get(HostMember member,
                                        std::initializer_list<Variant> arguments = {},
                                        BusyHost policy = BusyHost::kWaitFor) const;
  [[nodiscard]] HostResult<HostObject> Object(HostMember member,
                                              std::initializer_list<Variant> arguments = {}) const;
  [[nodiscard]] HostResult<int> Number(HostMember member,
                                       BusyHost policy = BusyHost::kWaitFor) const;
  [[nodiscard]] HostResult<std::u16string> Text(
      HostMember member, std::initializer_list<Variant> arguments = {}) const;
  [[nodiscard]] HostResult<> Put(HostMember member, Variant value) const;
  [[nodiscard]] HostResult<Variant> Call(HostMember member,
                                         std::initializer_list<Variant> arguments = {}) const;
  // As Call, for what returns nothing.
  [[nodiscard]] HostResult<> Do(HostMember member,
                                std::initializer_list<Variant> arguments = {}) const;
  [[nodiscard]] HostResult<HostObject> CallObject(HostMember member,
                                                  std::initializer_list<Variant> arguments) const;

  // As Call, for arguments that the host writes to.
  [[nodiscard]] HostResult<> CallWith(HostMember member, DISPPARAMS& parameters) const;

  [[nodiscard]] IDispatch* Get() const noexcept { return object_.Get(); }
  explicit operator bool() const noexcept { return static_cast<bool>(object_); }

 private:
  [[nodiscard]] HostResult<Variant> Invoke(HostMember member, WORD flags,
                                           std::initializer_list<Variant> arguments,
                                           BusyHost policy) const;
  [[nodiscard]] HRESULT InvokeWithPatience(HostMember member, WORD flags, DISPPARAMS& parameters,
                                           Variant& result, BusyHost policy) const;
  [[nodiscard]] HRESULT InvokeOnce(HostMember member, WORD flags, DISPPARAMS& parameters,
                                   Variant& result) const;

  ComPtr<IDispatch> object_;
};

// Whether the failure says that the host's process is no longer there to answer.
[[nodiscard]] bool IsHostGone(const HostError& error) noexcept;

// Goes on with the object that a call returned, or with its failure.
template <class Next>
[[nodiscard]] auto Then(const HostResult<HostObject>& object, Next next)
    -> decltype(next(*object)) {
  if (!object) return std::unexpected(object.error());
  return next(*object);
}

// Registers the message filter that applies the policy of the call in progress on systems whose COM
// asks it; needs the apartment to be entered. The filter in force before comes back at the end.
class BusyHostFilter {
 public:
  BusyHostFilter();
  BusyHostFilter(const BusyHostFilter&) = delete;
  BusyHostFilter& operator=(const BusyHostFilter&) = delete;
  ~BusyHostFilter();

 private:
  ComPtr<IMessageFilter> previous_;
};

}  // namespace declarium::com
