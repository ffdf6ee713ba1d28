#include "host/com/host_calls.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "host/com/com_object.h"
#include "host/failure_text.h"
#include "text/text.h"
#include "win32/unique_handle.h"
#include "win32/wide.h"

namespace declarium::com {
namespace {

// The policy of the call in progress: COM's message filter has no way to pass it.
thread_local BusyHost policy_in_force = BusyHost::kWaitFor;

// The same of the log: every reference to an object of the host would have to carry it.
thread_local CallLog* log_in_force = nullptr;

class PolicyScope {
 public:
  explicit PolicyScope(BusyHost policy) : previous_(std::exchange(policy_in_force, policy)) {}
  PolicyScope(const PolicyScope&) = delete;
  PolicyScope& operator=(const PolicyScope&) = delete;
  ~PolicyScope() { policy_in_force = previous_; }

 private:
  BusyHost previous_;
};

// Waits and serves incoming calls meanwhile.
void Pause(std::chrono::milliseconds time) {
  const win32::UniqueKernelObject never(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  HANDLE handles[] = {never.Get()};
  DWORD index = 0;
  CoWaitForMultipleHandles(0, static_cast<DWORD>(time.count()), 1, handles, &index);
}

class RetryFilter final : public ComObject<IMessageFilter> {
 public:
  STDMETHODIMP_(DWORD) HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) noexcept override {
    return SERVERCALL_ISHANDLED;
  }
  STDMETHODIMP_(DWORD) RetryRejectedCall(HTASK, DWORD elapsed, DWORD) noexcept override {
    const auto pause = PauseBeforeRetry(policy_in_force, std::chrono::milliseconds(elapsed));
    // COM takes values below 100 for "at once".
    return pause ? static_cast<DWORD>(std::max<long long>(pause->count(), 100))
                 : static_cast<DWORD>(-1);
  }
  STDMETHODIMP_(DWORD) MessagePending(HTASK, DWORD, DWORD) noexcept override {
    return PENDINGMSG_WAITDEFPROCESS;
  }

 private:
  [[nodiscard]] void* Find(REFIID iid) noexcept override {
    const bool has = iid == IID_IUnknown || iid == IID_IMessageFilter;
    return has ? static_cast<IMessageFilter*>(this) : nullptr;
  }
};

// What a member says of its failure beside the status.
class ExceptionInfo {
 public:
  ExceptionInfo() = default;
  ExceptionInfo(const ExceptionInfo&) = delete;
  ExceptionInfo& operator=(const ExceptionInfo&) = delete;
  ~ExceptionInfo() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }

  [[nodiscard]] EXCEPINFO* Receive() noexcept { return &info_; }
  [[nodiscard]] HostError ErrorOf(HRESULT status) {
    if (status != DISP_E_EXCEPTION) return {static_cast<std::int32_t>(status)};
    if (info_.pfnDeferredFillIn) info_.pfnDeferredFillIn(&info_);
    const HRESULT cause = FAILED(info_.scode) ? info_.scode : status;
    return {static_cast<std::int32_t>(cause), TextOf(info_.bstrDescription)};
  }

 private:
  EXCEPINFO info_{};
};

// The member, and the status when the call failed. Not what the host says: it may quote the source.
void LogCall(HostMember member, const HostResult<>& done) {
  std::string line = ToUtf8(win32::FromWide(member.name));
  if (!done) line.append(" ").append(ToUtf8(StatusText(done.error().code)));
  log_in_force->Add(line);
}

template <class T>
HostResult<T> Failure(HRESULT result) {
  return std::unexpected(HostError{static_cast<std::int32_t>(result)});
}

}  // namespace

HostResult<> CallWithPatience(BusyHost policy, const std::function<HostResult<>()>& call) {
  const PolicyScope scope(policy);
  const auto start = std::chrono::steady_clock::now();
  // Systems whose COM does not ask the message filter return the rejection here; after a filter
  // that gave up the time is over as well.
  for (;;) {
    auto done = call();
    if (done || !IsBusy(done.error())) return done;
    const auto elapsed = std::chrono::steady_clock::now() - start;
    const auto pause =
        PauseBeforeRetry(policy, std::chrono::duration_cast<std::chrono::milliseconds>(elapsed));
    if (!pause) return done;
    Pause(*pause);
  }
}

HostResult<> CallWithPatience(const std::function<HRESULT()>& call) {
  return CallWithPatience(BusyHost::kWaitFor, [&call]() -> HostResult<> {
    const HRESULT status = call();
    if (FAILED(status)) return Failure<void>(status);
    return {};
  });
}

CallLogUse::CallLogUse(CallLog* log) : previous_(std::exchange(log_in_force, log)) {}

CallLogUse::~CallLogUse() {
  log_in_force = previous_;
}

void WriteToCallLog(std::string_view line) noexcept {
  if (log_in_force) log_in_force->Add(line);
}

HostResult<> HostObject::InvokeOnce(HostMember member, WORD flags, DISPPARAMS& parameters,
                                    Variant& result) const {
  const auto invoke = [&](DISPID id) -> HostResult<> {
    ExceptionInfo exception;
    const HRESULT status = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                           result.Receive(), exception.Receive(), nullptr);
    if (FAILED(status)) return std::unexpected(exception.ErrorOf(status));
    return {};
  };
  auto done = invoke(member.id);
  if (done ||
      (done.error().code != DISP_E_MEMBERNOTFOUND && done.error().code != TYPE_E_ELEMENTNOTFOUND)) {
    return done;
  }
  DISPID id = DISPID_UNKNOWN;
  std::wstring name = member.name;
  wchar_t* names[] = {name.data()};
  if (FAILED(object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) return done;
  return invoke(id);
}

HostResult<> HostObject::InvokeWithPatience(HostMember member, WORD flags, DISPPARAMS& parameters,
                                            Variant& result, BusyHost policy) const {
  auto done =
      CallWithPatience(policy, [&] { return InvokeOnce(member, flags, parameters, result); });
  // The call that is made all the time and gives up at once says nothing when it succeeds.
  if (log_in_force && (!done || policy == BusyHost::kWaitFor)) LogCall(member, done);
  return done;
}

HostResult<Variant> HostObject::Invoke(HostMember member, WORD flags,
                                       std::initializer_list<Variant> arguments,
                                       BusyHost policy) const {
  if (!object_) return Failure<Variant>(E_POINTER);
  // Automation takes the arguments last first. The copies only borrow the values.
  std::vector<VARIANT> reversed;
  for (const auto& argument : arguments) reversed.insert(reversed.begin(), argument.Get());
  DISPID put_name = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  if (flags & DISPATCH_PROPERTYPUT) {
    parameters.rgdispidNamedArgs = &put_name;
    parameters.cNamedArgs = 1;
  }
  Variant result;
  auto done = InvokeWithPatience(member, flags, parameters, result, policy);
  if (!done) return std::unexpected(std::move(done.error()));
  return result;
}

HostResult<Variant> HostObject::Get(HostMember member, std::initializer_list<Variant> arguments,
                                    BusyHost policy) const {
  return Invoke(member, DISPATCH_PROPERTYGET | DISPATCH_METHOD, arguments, policy);
}

HostResult<HostObject> HostObject::Object(HostMember member,
                                          std::initializer_list<Variant> arguments) const {
  const auto value = Get(member, arguments);
  if (!value) return std::unexpected(value.error());
  return HostObject(value->ToObject());
}

HostResult<int> HostObject::Number(HostMember member, BusyHost policy) const {
  const auto value = Get(member, {}, policy);
  if (!value) return std::unexpected(value.error());
  std::int32_t number = 0;
  const HRESULT status = value->ToNumber(number);
  if (FAILED(status)) return Failure<int>(status);
  return number;
}

HostResult<std::u16string> HostObject::Text(HostMember member,
                                            std::initializer_list<Variant> arguments) const {
  const auto value = Get(member, arguments);
  if (!value) return std::unexpected(value.error());
  std::u16string text;
  const HRESULT status = value->ToText(text);
  if (FAILED(status)) return Failure<std::u16string>(status);
  return text;
}

HostResult<> HostObject::Put(HostMember member, Variant value) const {
  const auto done = Invoke(member, DISPATCH_PROPERTYPUT, {std::move(value)}, BusyHost::kWaitFor);
  if (!done) return std::unexpected(done.error());
  return {};
}

HostResult<Variant> HostObject::Call(HostMember member,
                                     std::initializer_list<Variant> arguments) const {
  return Invoke(member, DISPATCH_METHOD, arguments, BusyHost::kWaitFor);
}

HostResult<> HostObject::Do(HostMember member, std::initializer_list<Variant> arguments) const {
  const auto done = Call(member, arguments);
  if (!done) return std::unexpected(done.error());
  return {};
}

HostResult<HostObject> HostObject::CallObject(HostMember member,
                                              std::initializer_list<Variant> arguments) const {
  const auto value = Call(member, arguments);
  if (!value) return std::unexpected(value.error());
  return HostObject(value->ToObject());
}

HostResult<> HostObject::CallWith(HostMember member, DISPPARAMS& parameters) const {
  if (!object_) return Failure<void>(E_POINTER);
  Variant result;
  return InvokeWithPatience(member, DISPATCH_METHOD, parameters, result, BusyHost::kWaitFor);
}

BusyHostFilter::BusyHostFilter() {
  const auto filter = ComPtr<IMessageFilter>::Attach(new RetryFilter);
  CoRegisterMessageFilter(filter.Get(), previous_.Receive());
}

BusyHostFilter::~BusyHostFilter() {
  CoRegisterMessageFilter(previous_.Get(), nullptr);
}

}  // namespace declarium::com
