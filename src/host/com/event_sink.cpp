#include "host/com/event_sink.h"

#include <utility>
#include <ocidl.h>

#include "host/com/com_object.h"

namespace declarium::com {
namespace {

class EventSink final : public DispatchObject<IDispatch> {
 public:
  EventSink(const IID& events, Boundary& boundary, EventHandler handler)
      : events_(events),
        boundary_(boundary),
        handler_(std::make_shared<EventHandler>(std::move(handler))) {}

  void Detach() { handler_.reset(); }

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept override {
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                      EXCEPINFO*, UINT*) noexcept override {
    // The subscription may end while its handler runs.
    const auto handler = handler_;
    if (!handler || !parameters) return S_OK;
    const bool handled =
        boundary_.Run([&] { (*handler)(event, {parameters->rgvarg, parameters->cArgs}); });
    return handled ? S_OK : E_FAIL;
  }

 private:
  [[nodiscard]] void* Find(REFIID iid) noexcept override {
    const bool has = iid == IID_IUnknown || iid == IID_IDispatch || iid == events_;
    return has ? static_cast<IDispatch*>(this) : nullptr;
  }

  const IID events_;
  Boundary& boundary_;
  std::shared_ptr<EventHandler> handler_;
};

class AdvisedSink final : public Subscription {
 public:
  AdvisedSink(HostObject source, ComPtr<IConnectionPoint> point, ComPtr<EventSink> sink,
              DWORD cookie)
      : source_(std::move(source)),
        point_(std::move(point)),
        sink_(std::move(sink)),
        cookie_(cookie) {}
  AdvisedSink(const AdvisedSink&) = delete;
  AdvisedSink& operator=(const AdvisedSink&) = delete;
  ~AdvisedSink() override {
    sink_->Detach();
    [[maybe_unused]] const auto ended =
        CallWithPatience([this] { return point_->Unadvise(cookie_); });
    // A host that died or forgot the cookie must not keep the sink.
    CoDisconnectObject(sink_.Get(), 0);
  }

 private:
  HostObject source_;
  ComPtr<IConnectionPoint> point_;
  ComPtr<EventSink> sink_;
  DWORD cookie_;
};

}  // namespace

HostResult<std::unique_ptr<Subscription>> Advise(const HostObject& source, const IID& events,
                                                 Boundary& boundary, EventHandler handler) {
  if (!source) return std::unexpected(HostError{static_cast<std::int32_t>(E_POINTER)});
  ComPtr<IConnectionPointContainer> container;
  if (const auto found = CallWithPatience([&] {
        return source.Get()->QueryInterface(IID_IConnectionPointContainer,
                                            reinterpret_cast<void**>(container.Receive()));
      });
      !found) {
    return std::unexpected(found.error());
  }
  ComPtr<IConnectionPoint> point;
  if (const auto found =
          CallWithPatience([&] { return container->FindConnectionPoint(events, point.Receive()); });
      !found) {
    return std::unexpected(found.error());
  }
  auto sink = ComPtr<EventSink>::Attach(new EventSink(events, boundary, std::move(handler)));
  DWORD cookie = 0;
  if (const auto advised = CallWithPatience([&] { return point->Advise(sink.Get(), &cookie); });
      !advised) {
    return std::unexpected(advised.error());
  }
  return std::make_unique<AdvisedSink>(source, std::move(point), std::move(sink), cookie);
}

}  // namespace declarium::com
