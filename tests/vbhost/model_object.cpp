#include "vbhost/model_object.h"

#include <algorithm>
#include <charconv>
#include <olectl.h>

#include "text/text.h"
#include "win32/wide.h"

namespace declarium::vbhost {
namespace {

VARIANT AnswerOf(const std::string& lie) {
  VARIANT answer;
  VariantInit(&answer);
  if (lie == "nothing") return answer;
  int number = 0;
  const char* const end = lie.data() + lie.size();
  Variant value(FromUtf8(lie));
  if (std::from_chars(lie.data(), end, number).ptr == end) value = Variant(number);
  VariantCopy(&answer, value.Borrow());
  return answer;
}

}  // namespace

DWORD SinkList::Add(ComPtr<IDispatch> sink) {
  sinks_.emplace(next_cookie_, std::move(sink));
  return next_cookie_++;
}

bool SinkList::Remove(DWORD cookie) {
  return sinks_.erase(cookie) == 1;
}

HRESULT SinkList::Fire(DISPID id, std::vector<VARIANT> arguments) const {
  std::ranges::reverse(arguments);
  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  HRESULT worst = S_OK;
  // A sink may be removed while it is called.
  const auto sinks = sinks_;
  for (const auto& [cookie, sink] : sinks) {
    const HRESULT status = sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                        &parameters, nullptr, nullptr, nullptr);
    if (FAILED(status)) worst = status;
  }
  return worst;
}

int ModelObject::count_ = 0;

ModelObject::ModelObject(std::string name, CallPolicy& policy)
    : name_(std::move(name)), policy_(policy) {
  ++count_;
}

ModelObject::~ModelObject() {
  --count_;
  if (gone_) gone_();
}

void ModelObject::Add(DISPID id, const wchar_t* name, Access access, int least, int most,
                      Handler handler) {
  members_[id] = {name, access, least, most, std::move(handler)};
}

void ModelObject::SetEvents(const IID& events, std::shared_ptr<SinkList> sinks) {
  events_ = events;
  sinks_ = std::move(sinks);
}

void* ModelObject::Find(REFIID iid) noexcept {
  if (iid == IID_IUnknown || iid == IID_IDispatch) return static_cast<IDispatch*>(this);
  if (iid == IID_IConnectionPointContainer && sinks_) {
    return static_cast<IConnectionPointContainer*>(this);
  }
  return nullptr;
}

STDMETHODIMP ModelObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (!names || !ids || count != 1) return DISP_E_UNKNOWNNAME;
  for (const auto& [id, member] : members_) {
    if (lstrcmpiW(member.name.c_str(), names[0]) == 0) {
      ids[0] = id;
      return S_OK;
    }
  }
  return DISP_E_UNKNOWNNAME;
}

STDMETHODIMP ModelObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                 VARIANT* result, EXCEPINFO*, UINT*) {
  const ComPtr<IDispatch> self(this);
  const auto found = members_.find(id);
  const std::string member_name =
      found == members_.end() ? std::to_string(id) : ToUtf8(win32::FromWide(found->second.name));
  if (const HRESULT status = policy_.Enter(name_ + "." + member_name); status != S_OK)
    return status;
  if (const auto* lie = policy_.LieOf(name_ + "." + member_name); lie && result) {
    *result = AnswerOf(*lie);
    return S_OK;
  }
  if (found == members_.end()) return DISP_E_MEMBERNOTFOUND;
  if (!parameters) return E_POINTER;
  const auto& member = found->second;
  Call call;
  call.put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  if (call.put && (member.access != Access::kGetPut || parameters->cNamedArgs != 1 ||
                   parameters->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)) {
    return DISP_E_MEMBERNOTFOUND;
  }
  const WORD wanted = member.access == Access::kMethod ? DISPATCH_METHOD : DISPATCH_PROPERTYGET;
  if (!call.put && !(flags & wanted)) return DISP_E_MEMBERNOTFOUND;
  const int given = static_cast<int>(parameters->cArgs) - (call.put ? 1 : 0);
  if (given < member.least || given > member.most) return DISP_E_BADPARAMCOUNT;
  call.raw = parameters;
  for (UINT i = parameters->cArgs; i > 0; --i) {
    call.arguments.push_back(Variant::Dereferenced(parameters->rgvarg[i - 1]));
  }
  const auto handler = member.handler;
  const HRESULT status = handler(call);
  if (SUCCEEDED(status) && result) {
    VariantInit(result);
    Variant answer = std::move(call.result);
    VariantCopy(result, answer.Borrow());
  }
  return status;
}

// The one connection point of a source.
class ModelObject::Point final : public com::ComObject<IConnectionPoint> {
 public:
  Point(ComPtr<ModelObject> source, CallPolicy& policy)
      : source_(std::move(source)), policy_(policy) {}

  STDMETHODIMP GetConnectionInterface(IID* iid) override {
    if (!iid) return E_POINTER;
    *iid = source_->events_;
    return S_OK;
  }
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override {
    return source_->QueryInterface(IID_IConnectionPointContainer,
                                   reinterpret_cast<void**>(container));
  }
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override {
    if (!sink || !cookie) return E_POINTER;
    if (const HRESULT status = policy_.Enter(source_->name_ + ".Advise"); status != S_OK) {
      return status;
    }
    auto dispatch = ComPtr<IUnknown>(sink).Query<IDispatch>(IID_IDispatch);
    if (!dispatch) return CONNECT_E_CANNOTCONNECT;
    *cookie = source_->sinks_->Add(std::move(dispatch));
    return S_OK;
  }
  STDMETHODIMP Unadvise(DWORD cookie) override {
    static_cast<void>(policy_.Enter(source_->name_ + ".Unadvise"));
    return source_->sinks_->Remove(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
  }
  STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

 private:
  [[nodiscard]] void* Find(REFIID iid) noexcept override {
    const bool has = iid == IID_IUnknown || iid == IID_IConnectionPoint;
    return has ? static_cast<IConnectionPoint*>(this) : nullptr;
  }

  ComPtr<ModelObject> source_;
  CallPolicy& policy_;
};

STDMETHODIMP ModelObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  if (const HRESULT status = policy_.Enter(name_ + ".FindConnectionPoint"); status != S_OK) {
    return status;
  }
  if (!sinks_ || iid != events_) return CONNECT_E_NOCONNECTION;
  *point = new Point(ComPtr<ModelObject>(this), policy_);
  return S_OK;
}

}  // namespace declarium::vbhost
