#pragma once

#include "grid/control/part.h"
#include "grid/model/grid_objects.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/unknown.h"

#include <ocidl.h>

#include <map>

namespace talvix::grid {

/// The one source of events that the control has.
class EventPoint : public Part<IConnectionPoint> {
public:
    EventPoint(IUnknown& identity, IConnectionPointContainer& container, SharedGrid model)
        : Part(identity), container_(container), model_(std::move(model)) {}

    STDMETHODIMP QueryInterface(REFIID id, void** object) override;
    STDMETHODIMP GetConnectionInterface(IID* id) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

private:
    struct Connection {
        ComPtr<IDispatch> sink;
        Subscription subscription;
    };
    IConnectionPointContainer& container_;
    SharedGrid model_;
    std::map<DWORD, Connection> connections_;
    DWORD nextCookie_ = 1;
};

class ConnectionPointsPart : public Part<IConnectionPointContainer> {
public:
    ConnectionPointsPart(IUnknown& identity, SharedGrid model)
        : Part(identity), point_(identity, *this, std::move(model)) {}

    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

private:
    EventPoint point_;
};

} // namespace talvix::grid
