#include "platform/win32/shell_browser.h"

#include "platform/win32/ole_scope.h"
#include "platform/win32/wide.h"

#include <objbase.h>
#include <shlobj.h>

#include <algorithm>
#include <memory>

namespace talvix {

namespace {

struct TaskMemory {
    void operator()(void* memory) const { CoTaskMemFree(memory); }
};
struct HeapMemory {
    void operator()(void* memory) const { HeapFree(GetProcessHeap(), 0, memory); }
};
using OwnedItemList = std::unique_ptr<ITEMIDLIST_ABSOLUTE, TaskMemory>;
using OwnedBlock = std::unique_ptr<wchar_t, HeapMemory>;

OwnedBlock ZeroEnded(std::u16string_view text) {
    const std::size_t bytes = (text.size() + 1) * sizeof(char16_t);
    OwnedBlock block(static_cast<wchar_t*>(HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, bytes)));
    if (block != nullptr) {
        std::copy_n(WideUnits(text), text.size(), block.get());
    }
    return block;
}

/// SHSimpleIDListFromPath has no exported name, but the ordinal 162; the NT line takes wide text.
OwnedItemList ItemListOf(const std::u16string& path) {
    constexpr WORD kOrdinal = 162;
    using FromPath = PIDLIST_ABSOLUTE(WINAPI*)(const wchar_t*);
    HMODULE shell = GetModuleHandleW(L"shell32.dll");
    const auto fromPath = reinterpret_cast<FromPath>(
        reinterpret_cast<void*>(GetProcAddress(shell, MAKEINTRESOURCEA(kOrdinal))));
    return OwnedItemList(fromPath == nullptr ? nullptr : fromPath(Wide(path)));
}

/// Opens the browser on the folder that `data` points to.
int CALLBACK modCBSHBrowseForFolder(HWND dialog, UINT message, LPARAM, LPARAM data) {
    const auto* folder = reinterpret_cast<const wchar_t*>(data);
    if (message == BFFM_INITIALIZED && folder != nullptr && *folder != 0) {
        SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, data);
    }
    return 0;
}

} // namespace

std::u16string CShellBrowser::Browse(HWND owner, UINT flags, const std::u16string& title,
                                     const std::u16string& root,
                                     std::u16string_view startFolder) const {
    const OleScope ole; // for the newer style of the dialog
    std::u16string shownName(MAX_PATH, u'\0');
    BROWSEINFOW browse{};
    browse.hwndOwner = owner;
    browse.pszDisplayName = WideBuffer(shownName);
    browse.lpszTitle = Wide(title);
    browse.ulFlags = flags;
    OwnedBlock start;
    if (!startFolder.empty()) {
        start = ZeroEnded(startFolder);
        browse.lpfn = modCBSHBrowseForFolder;
        browse.lParam = reinterpret_cast<LPARAM>(start.get());
    }
    OwnedItemList rootItem;
    if (!root.empty()) {
        rootItem = ItemListOf(root);
        browse.pidlRoot = rootItem.get();
    }
    const OwnedItemList chosen(SHBrowseForFolderW(&browse));
    std::u16string path(MAX_PATH, u'\0');
    if (chosen == nullptr || SHGetPathFromIDListW(chosen.get(), WideBuffer(path)) == FALSE) {
        return {};
    }
    return path.substr(0, path.find(u'\0'));
}

} // namespace talvix
