// Clients that are compiled with the type libraries and ask for the interfaces named there.
#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/system.h"
#include "platform/win32/wide.h"
#include "tests/com/com_host.h"
#include "tests/com/thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <talvix_dms.h>
#include <talvix_grid.h>

namespace talvix {

namespace {

/// What a member yields, called by the number that the client was compiled with.
Value Invoke(IDispatch* object, DISPID member, unsigned way, std::vector<Value> arguments = {}) {
    return DispatchObject(object).Invoke(member, way, {arguments, {}});
}

Value Get(IDispatch* object, DISPID member, std::vector<Value> arguments = {}) {
    return Invoke(object, member, access::kGet, std::move(arguments));
}

Value Do(IDispatch* object, DISPID member, std::vector<Value> arguments = {}) {
    return Invoke(object, member, access::kMethod, std::move(arguments));
}

/// The object in a value as the interface that the type library names for it.
template <typename Interface>
ComPtr<Interface> As(const Value& value) {
    const auto* object = value.If<Object>();
    const ComPtr<IUnknown> unknown = object == nullptr ? nullptr : UnknownOf(*object);
    auto typed = ComPtr<Interface>::From(unknown.Get());
    if (!typed) {
        throw Failure(E_NOINTERFACE, u"The object has not the interface that it is said to have");
    }
    return typed;
}

template <typename Interface>
ComPtr<Interface> Create(REFCLSID classId) {
    ComPtr<Interface> object;
    EXPECT_EQ(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                               object.OutAny()),
              S_OK);
    return object;
}

void UseGrid(_Grid* grid) {
    const auto columns = As<_Columns>(Get(grid, 1));
    const auto column = As<_Column>(Do(columns.Get(), 2, {u"Name"}));
    EXPECT_EQ(Get(column.Get(), 1), Value(u"Name"));
    EXPECT_EQ(Get(column.Get(), 5), Value(static_cast<int>(gridText)));
    EXPECT_EQ(Get(As<_Column>(Get(columns.Get(), 0, {0})).Get(), 1), Value(u"Name"));
    const auto rows = As<_Rows>(Get(grid, 2));
    for (const auto* name : {u"Bad", u"Balkon"}) {
        const auto row = As<_Row>(Do(rows.Get(), 2));
        Invoke(row.Get(), 0, access::kPut, {u"Name", name});
    }
    EXPECT_EQ(Get(rows.Get(), 1), Value(2));
    EXPECT_EQ(Get(As<_Row>(Get(rows.Get(), 0, {2})).Get(), 1, {u"Name"}), Value(u"Balkon"));
    Do(grid, 18, {u"Name", static_cast<int>(gridDescending)});
    EXPECT_EQ(Get(As<_Row>(Get(rows.Get(), 0, {1})).Get(), 0, {u"Name"}), Value(u"Balkon"));
    EXPECT_EQ(Get(column.Get(), 10), Value(static_cast<int>(gridDescending)));
    const auto selection = As<_Selection>(Get(grid, 4));
    Do(selection.Get(), 2, {1, 2});
    EXPECT_EQ(Get(As<_Range>(Get(selection.Get(), 0, {1})).Get(), 2), Value(2));
    const auto groups = As<_Groups>(Get(grid, 3));
    EXPECT_EQ(Get(As<_Column>(Do(groups.Get(), 2, {u"Name"})).Get(), 1), Value(u"Name"));
    Do(groups.Get(), 4);
    const auto hit = As<_HitTest>(Do(grid, 17, {5.0, 5.0}));
    EXPECT_EQ(Get(hit.Get(), 3), Value(static_cast<int>(gridHeading)));
}

void UseMain(_Main* main) {
    Invoke(main, 23, access::kPut, {u"C:\\a.txt"});
    EXPECT_EQ(Get(main, 23), Value(u"C:\\a.txt"));
    Invoke(main, 22, access::kPut, {true});
    EXPECT_EQ(Get(main, 22), Value(true));
    const TemporaryFolder folder;
    EXPECT_EQ(Do(main, 19, {folder.Path() + u"\\a\\b"}), Value(true));
    Do(main, 11);
    Do(main, 11, {static_cast<int>(selectedDocuments)});
}

/// Uses an object of this apartment from another one, through the interface alone.
template <typename Interface>
void UseFromElsewhere(Interface* object, DWORD apartment, void (*use)(Interface*)) {
    ComPtr<IStream> stream;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(__uuidof(Interface), object, stream.Out()),
              S_OK);
    std::atomic<bool> isDone = false;
    std::string failed = "not reached";
    Thread client([&] {
        CoInitializeEx(nullptr, apartment);
        try {
            ComPtr<Interface> proxy;
            EXPECT_EQ(CoGetInterfaceAndReleaseStream(stream.Detach(), __uuidof(Interface),
                                                     proxy.OutAny()),
                      S_OK);
            EXPECT_NE(proxy.Get(), object) << "nothing was marshalled";
            use(proxy.Get());
            failed.clear();
        } catch (const Failure& failure) {
            failed = ToUtf8(failure.Text());
        }
        CoUninitialize();
        isDone = true;
    });
    while (!isDone) {
        Win32Timers().RunPending();
        Sleep(1);
    }
    EXPECT_EQ(failed, "");
}

} // namespace

TEST(TypedClients, UseTheGridAndWhatItHandsOut) {
    const auto grid = Create<_Grid>(__uuidof(::Grid));
    ASSERT_TRUE(grid);
    UseGrid(grid.Get());
}

TEST(TypedClients, UseTheComponent) {
    const auto main = Create<_Main>(__uuidof(::Main));
    ASSERT_TRUE(main);
    UseMain(main.Get());
}

TEST(TypedClients, UseTheGridFromOtherApartments) {
    for (const DWORD apartment : {COINIT_MULTITHREADED, COINIT_APARTMENTTHREADED}) {
        const auto grid = Create<_Grid>(__uuidof(::Grid));
        ASSERT_TRUE(grid);
        UseFromElsewhere(grid.Get(), apartment, UseGrid);
    }
}

TEST(TypedClients, UseTheComponentFromOtherApartments) {
    for (const DWORD apartment : {COINIT_MULTITHREADED, COINIT_APARTMENTTHREADED}) {
        const auto main = Create<_Main>(__uuidof(::Main));
        ASSERT_TRUE(main);
        UseFromElsewhere(main.Get(), apartment, UseMain);
    }
}

TEST(TypedClients, NoObjectAnswersForAnother) {
    const auto grid = Create<_Grid>(__uuidof(::Grid));
    ASSERT_TRUE(grid);
    EXPECT_FALSE(ComPtr<_Rows>::From(grid.Get()));
    EXPECT_FALSE(ComPtr<_Main>::From(grid.Get()));
    EXPECT_FALSE(ComPtr<_Column>::From(As<_Columns>(Get(grid.Get(), 1)).Get()));
}

} // namespace talvix
