// Objects that come and go thousands of times leave nothing behind.
#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/files.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"
#include "tests/com/component_rig.h"
#include "tests/com/container_rig.h"
#include "tests/com/holdings.h"
#include "tests/proof/proof.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace talvix {

namespace {

int Cycles() {
    return static_cast<int>(ProofCount(5000, 100000));
}

/// What the system may keep: a leak of ours would come to more, as it comes with every cycle.
struct Kept {
    std::size_t bytes = 20000; ///< less than four for each attached component in the short form
    std::size_t gdi = 0;
    std::size_t handles = 0;
};

/// Runs the work so often and tells what is more afterwards, and whether windows came or went;
/// empty where nothing is.
template <typename Work>
std::string LeftBy(int cycles, const Work& work, const Kept& kept) {
    const Holdings before = Holdings::Now();
    const std::size_t bytes = Holdings::BytesInUse();
    for (int cycle = 0; cycle < cycles; ++cycle) {
        work();
    }
    const std::size_t bytesAfter = Holdings::BytesInUse();
    const Holdings after = Holdings::Now();
    std::string more;
    const auto tell = [&](const char* what, std::size_t now, std::size_t former, bool isWrong) {
        if (isWrong) {
            more += what + (": " + std::to_string(now)) + " after " + std::to_string(former) + "; ";
        }
    };
    tell("bytes", bytesAfter, bytes, bytesAfter > bytes + kept.bytes);
    tell("gdi", after.gdi, before.gdi, after.gdi > before.gdi + kept.gdi);
    tell("handles", after.handles, before.handles, after.handles > before.handles + kept.handles);
    tell("windows", after.windows, before.windows, after.windows != before.windows);
    return more;
}

/// Runs the work until it is warm, then often, and compares. What the system makes once may come
/// late; what is lost by the work is lost the second time as well.
template <typename Work>
void ExpectNothingIsLeft(int cycles, Work&& work, const Kept& kept = {}) {
    for (int cycle = 0; cycle < 20; ++cycle) {
        work();
    }
    if (!LeftBy(cycles, work, kept).empty()) {
        EXPECT_EQ(LeftBy(cycles, work, kept), "");
    }
}

/// A copy of a product, which nobody else has loaded. It stays loaded until the process ends, and
/// so it lies in a folder that every run takes again.
std::u16string OwnCopy(const std::u16string& file) {
    const std::u16string folder = Win32Files().TemporaryFolder() + u"\\talvix-life-test";
    CreateDirectoryW(Wide(folder), nullptr);
    const std::u16string copy = folder + u"\\" + file;
    EXPECT_NE(CopyFileW(Wide(ProductFolder() + file), Wide(copy), FALSE), FALSE);
    return copy;
}

CLSID ClassOf(const wchar_t* programId) {
    CLSID id{};
    EXPECT_EQ(CLSIDFromProgID(programId, &id), S_OK);
    return id;
}

/// Loads a server, makes an object, lets go of both; the server can be unloaded exactly when
/// nothing is left of it.
void LoadAndUnload(const std::u16string& file, const CLSID& classId) {
    using GetClass = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    using CanUnload = HRESULT(WINAPI*)();
    const OwnedLibrary library(LoadLibraryW(Wide(file)));
    ASSERT_TRUE(library);
    const auto getClass = reinterpret_cast<GetClass>(
        reinterpret_cast<void*>(GetProcAddress(library.Get(), "DllGetClassObject")));
    const auto canUnload = reinterpret_cast<CanUnload>(
        reinterpret_cast<void*>(GetProcAddress(library.Get(), "DllCanUnloadNow")));
    ASSERT_EQ(canUnload(), S_OK);
    {
        ComPtr<IClassFactory> factory;
        ASSERT_EQ(getClass(classId, IID_IClassFactory, factory.OutAny()), S_OK);
        ComPtr<IDispatch> object;
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, object.OutAny()), S_OK);
        ASSERT_EQ(canUnload(), S_FALSE) << "something of it lives";
        EXPECT_TRUE(FAILED(
            object->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr)));
    }
    ASSERT_EQ(canUnload(), S_OK) << "nothing of it lives";
}

} // namespace

TEST(Life, TheCountsTell) {
    const Holdings before = Holdings::Now();
    const OwnedEvent event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const OwnedBrush brush(CreateSolidBrush(RGB(1, 2, 3)));
    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                        nullptr, nullptr);
    const std::size_t bytes = Holdings::BytesInUse();
    const std::vector<char> memory(100000);
    EXPECT_GE(Holdings::BytesInUse(), bytes + memory.size());
    const Holdings after = Holdings::Now();
    DestroyWindow(window);
    EXPECT_GT(after.handles, before.handles);
    EXPECT_GT(after.gdi, before.gdi);
    EXPECT_GT(after.windows, before.windows);
}

TEST(Life, AttachedComponentsLeaveNothing) {
    const Object other = std::make_shared<Expando>(u"Other");
    const std::weak_ptr<LateObject> watched = other;
    ExpectNothingIsLeft(Cycles(), [&] {
        ComponentRig rig;
        for (int row = 0; row < 10; ++row) {
            rig.grid[u"Rows"].Call(u"Count");
        }
        rig.main.Call(u"ReferenceLibraries", rig.common, rig.managing, other, other, other, other);
        rig.main.Call(u"InitSGDMS");
        for (int row = 0; row < 10; ++row) {
            rig.grid[u"Rows"][u"Add"].SetAt(u"Value", u"PhysicalStore1", u"C:\\windows\\win.ini");
        }
        rig.main.Call(u"Init");
        rig.main.Call(u"DereferenceLibraries");
    });
    EXPECT_EQ(other.use_count(), 1) << "every reference on a host's object comes back";
    StateProof("life", static_cast<std::size_t>(Cycles()),
               "components attached, and a tenth as many controls and imports, a fiftieth menus "
               "and dialogs");
}

TEST(Life, ControlsInWindowsLeaveNothing) {
    ExpectNothingIsLeft(Cycles() / 10, [] {
        ContainerRig rig;
        rig.grid[u"Groups"](u"Add", u"Name");
        rig.Click(30, 60);
        rig.Pump();
        UpdateWindow(rig.window);
    });
}

namespace {

int menusSeen = 0;

void CALLBACK EndTheMenu(HWND window, UINT, UINT_PTR timer, DWORD) {
    KillTimer(window, timer);
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    GetGUIThreadInfo(GetCurrentThreadId(), &state);
    menusSeen += (state.flags & GUI_INMENUMODE) != 0 ? 1 : 0;
    EndMenu();
}

/// An attached component whose grid is seen.
struct SeenRig : ContainerRig {
    SeenRig() {
        component.controls[u"DMSGrid"] = grid.Get();
        component.Attach();
        Pump();
    }
    ComponentRig component;
};

} // namespace

TEST(Life, MenusLeaveNothing) {
    SeenRig rig;
    const int place = rig.MiddleOf(1);
    menusSeen = 0;
    const int menus = Cycles() / 50;
    ExpectNothingIsLeft(menus, [&] {
        SetTimer(rig.window, 78, 10, EndTheMenu);
        rig.Send(WM_RBUTTONDOWN, MK_RBUTTON, 30, place);
        rig.Send(WM_RBUTTONUP, 0, 30, place);
    });
    EXPECT_GE(menusSeen, menus);
}

TEST(Life, DialogsLeaveNothing) {
    ComponentRig rig;
    rig.Attach();
    DialogAnswers answers; // each is left by its cancel button
    const int dialogs = Cycles() / 50;
    // Wine's styled controls keep 24 bytes each (none are kept without styles), its devices that
    // are lent to windows stay for the next.
    const auto count = static_cast<std::size_t>(dialogs);
    const Kept kept{20000 + 200 * count, 20 + count / 5, 4};
    ExpectNothingIsLeft(
        dialogs,
        [&] {
            rig.main.Call(u"btnNewDocument_Click");
            rig.journal.Clear();
        },
        kept);
    EXPECT_GE(static_cast<int>(answers.Seen().size()), dialogs);
}

TEST(Life, ImportsLeaveNothing) {
    ComponentRig rig;
    for (int file = 0; file < 10; ++file) {
        rig.folder.Make(u"Datei " + ToText(Value(file), rig.locale) + u".txt", 5);
    }
    rig.Attach();
    ExpectNothingIsLeft(Cycles() / 10, [&] {
        rig.main.Call(u"AddFilesFromProjectFolderEvent");
        ASSERT_EQ(rig.Rows(), 10);
        rig.grid[u"Rows"].Call(u"Clear");
        rig.journal.Clear();
    });
}

TEST(Life, ServersLoadAndUnloadForEver) {
    const int loads = static_cast<int>(ProofCount(500, 10000));
    const std::pair<std::u16string, CLSID> servers[] = {
        {OwnCopy(u"TalvixDMS.dll"), ClassOf(L"TalvixDMS.Main")},
        {OwnCopy(u"TalvixGrid.ocx"), ClassOf(L"TalvixGrid.Grid")}};
    for (const auto& [file, classId] : servers) {
        const auto& id = classId;
        const auto& path = file;
        ExpectNothingIsLeft(loads, [&] { LoadAndUnload(path, id); });
    }
    StateProof("loading and unloading", static_cast<std::size_t>(loads), "times each server");
}

} // namespace talvix
