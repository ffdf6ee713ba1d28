// Calls to the host through IDispatch, with patience for a host that is busy.
#pragma once

#include <functional>
#include <initializer_list>
#include <string_view>
#include <windows.h>
#include <oleauto.h>

#include "host/busy_host.h"
#include "host/call_log.h"
#include "host/com/automation.h"
#include "host/host_object_model.h"

namespace declarium::com {

// A member of the host's object model. The name is tried when the host does not know the id.
struct HostMember {
  DISPID id;
  const wchar_t* name;
};

// Makes `call` again while the host rejects it, for as long as `policy` allows, and serves incoming
// calls meanwhile. What the last one returned.
[[nodiscard]] HostResult<> CallWithPatience(BusyHost policy,
                                            const std::function<HostResult<>()>& call);

// As it is, for a call that returns a status.
[[nodiscard]] HostResult<> CallWithPatience(const std::function<HRESULT()>& call);

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
  // Fails when the member is no number: a text that reads as one and nothing are none.
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
  [[nodiscard]] HostResult<> InvokeWithPatience(HostMember member, WORD flags,
                                                DISPPARAMS& parameters, Variant& result,
                                                BusyHost policy) const;
  [[nodiscard]] HostResult<> InvokeOnce(HostMember member, WORD flags, DISPPARAMS& parameters,
                                        Variant& result) const;

  ComPtr<IDispatch> object_;
};

// Goes on with the object that a call returned, or with its failure.
template <class Next>
[[nodiscard]] auto Then(const HostResult<HostObject>& object, Next next)
    -> decltype(next(*object)) {
  if (!object) return std::unexpected(object.error());
  return next(*object);
}

// The calls of this thread go to `log`, which may be null, for as long as this lives.
class CallLogUse {
 public:
  explicit CallLogUse(CallLog* log);
  CallLogUse(const CallLogUse&) = delete;
  CallLogUse& operator=(const CallLogUse&) = delete;
  ~CallLogUse();

 private:
  CallLog* previous_;
};

// A line for the thread's log, when it has one.
void WriteToCallLog(std::string_view line) noexcept;

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
