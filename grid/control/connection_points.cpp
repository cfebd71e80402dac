#include "grid/control/connection_points.h"

#include "grid/control/class_info.h"
#include "grid/control/list_enumerator.h"
#include "grid/model/events.h"
#include "platform/win32/com/guards.h"
#include "platform/win32/com/variant.h"

#include <olectl.h>

namespace talvix::grid {

namespace {

/// An event's argument as its sinks see it: by value, or as a place that they may write to.
struct EventArgument {
    Variant value;
    VARIANT passed{};
};

VARIANT ByReference(VARIANT& value) {
    VARIANT reference{};
    reference.vt = static_cast<VARTYPE>(value.vt | VT_BYREF);
    reference.byref = &value.llVal;
    return reference;
}

/// Hands the model's events to a COM sink.
class DispatchSink : public EventSink {
public:
    explicit DispatchSink(IDispatch* sink) : sink_(sink) {}

    void OnEvent(std::u16string_view name, std::span<Value> arguments) override {
        const ComPtr<IDispatch> sink = sink_;
        std::vector<EventArgument> packed(arguments.size());
        std::vector<VARIANT> reversed(arguments.size());
        for (std::size_t at = 0; at < arguments.size(); ++at) {
            ToVariant(arguments[at], *packed[at].value.Get());
            packed[at].passed = IsByReference(name, at) ? ByReference(*packed[at].value.Get())
                                                        : *packed[at].value.Get();
            reversed[arguments.size() - 1 - at] = packed[at].passed;
        }
        DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        sink->Invoke(EventNumber(name), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                     nullptr, nullptr, nullptr);
        for (std::size_t at = 0; at < arguments.size(); ++at) {
            if (IsByReference(name, at)) {
                arguments[at] = ToValue(*packed[at].value.Get());
            }
        }
    }

private:
    ComPtr<IDispatch> sink_;
};

} // namespace

STDMETHODIMP EventPoint::QueryInterface(REFIID id, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = id == IID_IUnknown || id == IID_IConnectionPoint
                  ? static_cast<IConnectionPoint*>(this)
                  : nullptr;
    if (*object == nullptr) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP EventPoint::GetConnectionInterface(IID* id) {
    if (id == nullptr) {
        return E_POINTER;
    }
    *id = ClassInfoPart::EventsId();
    return S_OK;
}

STDMETHODIMP EventPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) {
        return E_POINTER;
    }
    *container = ComPtr<IConnectionPointContainer>(&container_).Detach();
    return S_OK;
}

STDMETHODIMP EventPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) {
        return E_POINTER;
    }
    *cookie = 0;
    ComPtr<IDispatch> dispatch;
    if (FAILED(sink->QueryInterface(ClassInfoPart::EventsId(), dispatch.OutAny())) || !dispatch) {
        dispatch = ComPtr<IDispatch>::From(sink);
    }
    if (!dispatch) {
        return CONNECT_E_CANNOTCONNECT;
    }
    return Guarded([&] {
        Subscription subscription =
            model_->events.Connect(std::make_shared<DispatchSink>(dispatch.Get()));
        connections_[nextCookie_] = {dispatch, std::move(subscription)};
        *cookie = nextCookie_++;
        return S_OK;
    });
}

STDMETHODIMP EventPoint::Unadvise(DWORD cookie) {
    const auto found = connections_.find(cookie);
    if (found == connections_.end()) {
        return CONNECT_E_NOCONNECTION;
    }
    const Connection ended = std::move(found->second);
    connections_.erase(found);
    return S_OK;
}

STDMETHODIMP EventPoint::EnumConnections(IEnumConnections** connections) {
    if (connections == nullptr) {
        return E_POINTER;
    }
    *connections = nullptr;
    return Guarded([&] {
        std::vector<ConnectionEntry> entries;
        for (const auto& [cookie, connection] : connections_) {
            entries.push_back({ComPtr<IUnknown>(connection.sink.Get()), cookie});
        }
        *connections = new ConnectionEnumerator(std::move(entries));
        return S_OK;
    });
}

STDMETHODIMP ConnectionPointsPart::EnumConnectionPoints(IEnumConnectionPoints** points) {
    if (points == nullptr) {
        return E_POINTER;
    }
    *points = nullptr;
    return Guarded([&] {
        *points = new PointEnumerator({ComPtr<IConnectionPoint>(&point_)});
        return S_OK;
    });
}

STDMETHODIMP ConnectionPointsPart::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    if (point == nullptr) {
        return E_POINTER;
    }
    *point = nullptr;
    if (id != ClassInfoPart::EventsId()) {
        return CONNECT_E_NOCONNECTION;
    }
    *point = ComPtr<IConnectionPoint>(&point_).Detach();
    return S_OK;
}

} // namespace talvix::grid
