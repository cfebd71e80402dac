#include "platform/win32/files.h"
#include "platform/win32/key_watch.h"
#include "platform/win32/locale.h"
#include "platform/win32/network.h"
#include "platform/win32/objects.h"
#include "platform/win32/owned.h"
#include "platform/win32/pictures.h"
#include "platform/win32/registry.h"
#include "platform/win32/shell.h"
#include "platform/win32/system.h"
#include "platform/win32/wide.h"
#include "tests/com/com_host.h"
#include "tests/com/holdings.h"
#include "tests/contracts/culture_contract.h"
#include "tests/contracts/files_contract.h"
#include "tests/contracts/registry_contract.h"
#include "tests/contracts/shell_contract.h"
#include "tests/contracts/system_contract.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace talvix {

namespace {

struct Win32FilesRig {
    Files& Port() { return files; }
    std::u16string Folder() const { return folder.Path(); }
    void Make(std::u16string_view name, std::size_t bytes) const { folder.Make(name, bytes); }
    void MakeFolder(std::u16string_view name) const { folder.MakeFolder(name); }
    TemporaryFolder folder;
    Win32Files files;
};

struct Win32ShellRig {
    Shell& Port() { return shell; }
    std::u16string File(std::u16string_view name) const { return folder.Make(name, 1); }
    std::int64_t Length(std::u16string_view path) {
        const auto facts = files.Query(path);
        return facts ? facts->length : -1;
    }
    Win32Files files;
    TemporaryFolder folder;
    Win32Shell shell;
};

struct Win32RegistryRig {
    ~Win32RegistryRig() { RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\TalvixTest"); }
    Registry& Port() { return registry; }
    std::u16string Key() const { return u"Software\\TalvixTest"; }
    Win32Registry registry;
};

/// A message-only window that runs what is posted to it.
struct Win32SystemRig {
    Win32SystemRig() {
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&RunPosted));
    }
    ~Win32SystemRig() { DestroyWindow(window); }
    void Post(std::function<void()> event) const {
        PostMessageW(window, WM_APP, 0,
                     reinterpret_cast<LPARAM>(new std::function<void()>(std::move(event))));
    }
    static LRESULT CALLBACK RunPosted(HWND window, UINT message, WPARAM wide, LPARAM along) {
        if (message != WM_APP) {
            return DefWindowProcW(window, message, wide, along);
        }
        const std::unique_ptr<std::function<void()>> event(
            reinterpret_cast<std::function<void()>*>(along));
        (*event)();
        return 0;
    }
    HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    Win32Clock clock;
    Win32SystemInfo system;
    Win32Timers timers;
    Win32Pictures pictures;
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Win32, FilesContract, Win32FilesRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Win32, RegistryContract, Win32RegistryRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Win32, ShellContract, Win32ShellRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Win32, SystemContract, Win32SystemRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Win32, GermanContract, Win32Locale);

TEST(Win32Files, LongPathsTakeTheExtendedForm) {
    const std::u16string name(250, u'x');
    EXPECT_EQ(ExtendedPath(u"C:\\kurz"), u"C:\\kurz");
    EXPECT_EQ(ExtendedPath(u"C:\\" + name), u"\\\\?\\C:\\" + name);
    EXPECT_EQ(ExtendedPath(u"\\\\srv\\daten\\" + name), u"\\\\?\\UNC\\srv\\daten\\" + name);
    EXPECT_EQ(ExtendedPath(name), name);
}

TEST(Win32Shell, NamesTypesAndNumbersIconsWithoutLosingHandles) {
    Win32Shell shell;
    const TemporaryFolder folder;
    const std::u16string path = folder.Make(u"a.txt", 1);
    EXPECT_NE(shell.TypeName(path), u"");
    EXPECT_NE(shell.SmallIconList(), 0);
    const Holdings before = Holdings::Now(); // an icon holds two bitmaps
    for (int at = 0; at < 50; ++at) {
        EXPECT_GE(shell.Classes().IconIndex(path), 0);
    }
    EXPECT_LE(Holdings::Now().gdi, before.gdi + 5);
    EXPECT_EQ(shell.TypeName(folder.Path() + u"\\fehlt.talvixneu"), u"");
}

TEST(Win32Timers, RunWhatWaitsAndKeepTheRequestToEnd) {
    MSG message{};
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    PostThreadMessageW(GetCurrentThreadId(), WM_APP, 0, 0);
    PostQuitMessage(7);
    Win32Timers().RunPending();
    bool quit = false;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        quit = quit || (message.message == WM_QUIT && message.wParam == 7);
    }
    EXPECT_TRUE(quit);
}

TEST(Win32Shell, AClassThatIsRegisteredAnewIsAskedAnew) {
    Win32Shell shell;
    const TemporaryFolder folder;
    const std::u16string path = folder.Make(u"probe.talvixprobe", 1);
    const std::u16string before = shell.TypeName(path);
    EXPECT_EQ(shell.TypeName(path), before);
    const wchar_t* keys[] = {L"Software\\Classes\\.talvixprobe", L"Software\\Classes\\TalvixProbe"};
    const wchar_t* texts[] = {L"TalvixProbe", L"Probe-Dokument"};
    for (int at = 0; at < 2; ++at) {
        RegSetValueW(HKEY_LOCAL_MACHINE, keys[at], REG_SZ, texts[at], 0);
    }
    Sleep(100);
    const std::u16string after = shell.TypeName(path);
    for (const wchar_t* key : keys) {
        RegDeleteKeyW(HKEY_LOCAL_MACHINE, key);
    }
    EXPECT_NE(before, u"Probe-Dokument");
    EXPECT_EQ(after, u"Probe-Dokument");
    Sleep(100);
    EXPECT_EQ(shell.TypeName(path), before);
}

TEST(Win32Shell, TheUsersOwnChoiceOfAProgramIsSeen) {
    Win32Shell shell;
    const TemporaryFolder folder;
    const std::u16string path = folder.Make(u"probe.talvixchoice", 1);
    const std::wstring choices =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts";
    const std::wstring extension = choices + L"\\.talvixchoice";
    const std::wstring icon = L"Software\\Classes\\TalvixOwnIcon";
    RegSetValueW(HKEY_LOCAL_MACHINE, (icon + L"\\DefaultIcon").c_str(), REG_SZ, L"%1", 0);
    const auto putText = [](const std::wstring& key, const wchar_t* name, const wchar_t* text) {
        OwnedKey opened;
        RegCreateKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                        opened.Out(), nullptr);
        RegSetValueExW(opened.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                       static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t)));
        Sleep(100); // longer than an answer holds
    };
    EXPECT_FALSE(shell.Classes().HasOwnIcon(path));
    putText(extension + L"\\UserChoice", L"ProgId", L"TalvixOwnIcon");
    EXPECT_TRUE(shell.Classes().HasOwnIcon(path)) << "always open with";
    RegDeleteKeyW(HKEY_CURRENT_USER, (extension + L"\\UserChoice").c_str());
    Sleep(100);
    EXPECT_FALSE(shell.Classes().HasOwnIcon(path)) << "no longer";
    putText(extension + L"\\OpenWithProgids", L"TalvixOwnIcon", L"");
    EXPECT_TRUE(shell.Classes().HasOwnIcon(path)) << "one of those it may be opened with";
    for (const std::wstring& key : {extension + L"\\OpenWithProgids", extension}) {
        RegDeleteKeyW(HKEY_CURRENT_USER, key.c_str());
    }
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, (icon + L"\\DefaultIcon").c_str());
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, icon.c_str());
}

TEST(Win32Shell, CopiesWhatLiesAtAPathThatIsTakenAsItStands) {
    Win32Shell shell;
    const TemporaryFolder folder;
    const std::u16string source = folder.Make(u"a.txt", 5);
    const std::u16string target = folder.Path() + u"\\b.txt";
    EXPECT_EQ(shell.Copy(u"\\\\?\\" + source, target).result, 0);
    EXPECT_EQ(Win32Files().Query(target), (FileFacts{false, 5}));
}

TEST(Win32Network, ASharedFolderIsSeenAsSoonAsItIsShared) {
    Win32Network network;
    ASSERT_TRUE(network.ComputerName());
    const wchar_t* key = L"SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Shares";
    OwnedKey shares;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, key, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, shares.Out(),
                    nullptr);
    const ShareTable before = network.Shares();
    ASSERT_NE(before, nullptr);
    EXPECT_EQ(network.Shares(), before) << "an unchanged table is kept";
    const std::u16string data(499, u'x');
    const std::u16string tooLong(501, u'x');
    RegSetValueExW(shares.Get(), L"TalvixA", 0, REG_SZ, reinterpret_cast<const BYTE*>(data.data()),
                   static_cast<DWORD>(data.size() * sizeof(char16_t)));
    const ShareTable with = network.Shares();
    EXPECT_EQ(with->size(), before->size() + 1);
    RegSetValueExW(shares.Get(), L"TalvixB", 0, REG_SZ,
                   reinterpret_cast<const BYTE*>(tooLong.data()),
                   static_cast<DWORD>(tooLong.size() * sizeof(char16_t)));
    EXPECT_LE(network.Shares()->size(), with->size())
        << "the list ends at a value that is too long";
    RegDeleteValueW(shares.Get(), L"TalvixA");
    RegDeleteValueW(shares.Get(), L"TalvixB");
    EXPECT_EQ(network.Shares()->size(), before->size());
}

TEST(Win32Network, ALocalDriveHasNoRemoteNameAndAMappedOneHas) {
    Win32Network network;
    EXPECT_FALSE(network.RemoteName(u"C:"));
    EXPECT_FALSE(network.RemoteName(u"?:"));
    if (GetDriveTypeW(L"X:\\") == DRIVE_REMOTE) {
        EXPECT_EQ(network.RemoteName(u"X:"), u"\\\\srv\\daten");
        EXPECT_EQ(network.RemoteName(u"x:"), u"\\\\srv\\daten");
    }
}

TEST(Win32Objects, CreatesRegisteredClassesAndRefusesOthers) {
    Win32Objects objects;
    EXPECT_NE(objects.Create(u"TalvixGrid.Grid"), nullptr);
    EXPECT_THROW(objects.Create(u"Redemption.SafeNichts"), Failure);
    EXPECT_THROW(objects.Create(u""), Failure);
}

TEST(Win32Shell, PropertiesOfWhatIsNoPathAreAnsweredWithNothing) {
    Win32Shell shell;
    EXPECT_EQ(shell.ShowProperties(u"http://example.org", 0), 0);
    EXPECT_EQ(shell.ShowProperties(u"C:\\gibtsnicht\\a.doc", 0), 0);
}

TEST(KeyWatch, TellsOfKeysThatComeAndGoAndOfNothingElse) {
    const std::wstring upper = L"Software\\TalvixWatch";
    const std::wstring watched = upper + L"\\Inner\\Classes";
    const auto remove = [&] {
        for (const wchar_t* below : {L"\\Inner\\Classes\\.doc\\shell", L"\\Inner\\Classes\\.doc",
                                     L"\\Inner\\Classes", L"\\Inner", L""}) {
            RegDeleteKeyW(HKEY_CURRENT_USER, (upper + below).c_str());
        }
    };
    remove();
    KeyWatch watch({{HKEY_CURRENT_USER, watched.c_str()}});
    const auto hasChanged = [&] {
        Sleep(60); // longer than an answer holds
        return watch.HasChanged();
    };
    const auto make = [](const std::wstring& path) {
        OwnedKey key;
        RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                        key.Out(), nullptr);
        return key;
    };
    const auto comesToChange = [&] { // told by another thread of the system, which may be busy
        for (int tries = 0; tries < 50; ++tries) {
            if (hasChanged()) {
                return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(hasChanged()) << "at first";
    EXPECT_FALSE(hasChanged()) << "what is not there has not changed";
    make(upper);
    EXPECT_TRUE(comesToChange()) << "a key above has come";
    EXPECT_FALSE(hasChanged());
    OwnedKey key = make(watched);
    EXPECT_TRUE(comesToChange());
    EXPECT_FALSE(hasChanged());
    RegSetValueExW(key.Get(), L"a", 0, REG_SZ, nullptr, 0);
    EXPECT_TRUE(comesToChange()) << "a value in it";
    EXPECT_FALSE(hasChanged());
    make(watched + L"\\.doc\\shell");
    EXPECT_TRUE(comesToChange()) << "a key below it";
    EXPECT_FALSE(hasChanged());
    key.Reset();
    remove();
    EXPECT_TRUE(comesToChange()) << "it has gone";
    EXPECT_FALSE(hasChanged());
}

} // namespace talvix
