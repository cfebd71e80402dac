#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/event_connection.h"
#include "platform/win32/com/variant.h"
#include "tests/com/com_host.h"

#include <gtest/gtest.h>

#include <ocidl.h>
#include <olectl.h>

#include <talvix_grid_guids.h>

namespace talvix {

namespace {

class EventRecorder : public EventSink {
public:
    void OnEvent(std::u16string_view name, std::span<Value> arguments) override {
        names.emplace_back(name);
        counts.push_back(arguments.size());
    }
    std::vector<std::u16string> names;
    std::vector<std::size_t> counts;
};

ComPtr<IConnectionPoint> PointOf(IDispatch* grid) {
    const auto container = ComPtr<IConnectionPointContainer>::From(grid);
    ComPtr<IConnectionPoint> point;
    container->FindConnectionPoint(DIID_DTalvixGridEvents, point.Out());
    return point;
}

} // namespace

TEST(Events, ArriveByNameAndEndWithTheSubscription) {
    const Late grid = CreateByName(u"TalvixGrid.Grid");
    grid[u"Columns"](u"Add", u"Name");
    const auto recorder = std::make_shared<EventRecorder>();
    Subscription subscription = grid.AsObject()->Subscribe(recorder, {});
    grid[u"Groups"](u"Add", u"Name");
    EXPECT_EQ(recorder->names, (std::vector<std::u16string>{u"AfterGroupChange"}));
    EXPECT_EQ(recorder->counts, (std::vector<std::size_t>{2}));
    subscription.reset();
    grid[u"Groups"].Call(u"Clear");
    EXPECT_EQ(recorder->names.size(), 1U);
}

TEST(Events, TheConnectionPointKeepsItsPromises) {
    ComPtr<IDispatch> grid;
    ASSERT_EQ(CreateByName(u"TalvixGrid.Grid", grid), S_OK);
    const ComPtr<IConnectionPoint> point = PointOf(grid.Get());
    ASSERT_TRUE(point);
    IID id{};
    EXPECT_EQ(point->GetConnectionInterface(&id), S_OK);
    EXPECT_EQ(id, DIID_DTalvixGridEvents);
    DWORD cookie = 0;
    EXPECT_EQ(point->Advise(nullptr, &cookie), E_POINTER);
    EXPECT_EQ(point->Unadvise(77), CONNECT_E_NOCONNECTION);
    const auto listener =
        MakeCom<EventListener>(DIID_DTalvixGridEvents, std::map<DISPID, std::u16string>{},
                               std::make_shared<EventRecorder>());
    EXPECT_EQ(point->Advise(listener.Get(), &cookie), S_OK);
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(point->EnumConnections(connections.Out()), S_OK);
    CONNECTDATA data{};
    ULONG fetched = 0;
    EXPECT_EQ(connections->Next(1, &data, &fetched), S_OK);
    EXPECT_EQ(data.dwCookie, cookie);
    data.pUnk->Release();
    EXPECT_EQ(connections->Next(1, &data, &fetched), S_FALSE);
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    ComPtr<IUnknown> identity;
    ComPtr<IUnknown> same;
    EXPECT_EQ(grid->QueryInterface(IID_IUnknown, identity.OutAny()), S_OK);
    const auto container = ComPtr<IConnectionPointContainer>::From(grid.Get());
    EXPECT_EQ(container->QueryInterface(IID_IUnknown, same.OutAny()), S_OK);
    EXPECT_EQ(identity.Get(), same.Get());
}

TEST(Events, WithoutTypeInformationTheyAreKnownByTheirNumbers) {
    const auto recorder = std::make_shared<EventRecorder>();
    const std::map<DISPID, std::u16string> names{{1, u"AfterGroupChange"}, {2, u"BeforeClickSort"}};
    const auto listener = MakeCom<EventListener>(DIID_DTalvixGridEvents, names, recorder);
    EXPECT_EQ(listener->Invoke(2, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              S_OK);
    EXPECT_EQ(listener->Invoke(9, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(recorder->names, (std::vector<std::u16string>{u"BeforeClickSort"}));
}

} // namespace talvix
