// What the grid control does beyond showing rows, in a real container.
#include "grid/control/row_data.h"
#include "platform/win32/com/unknown.h"
#include "platform/win32/device_context.h"
#include "tests/com/container_rig.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>
#include <ocidl.h>
#include <olectl.h>
#include <shellapi.h>

namespace talvix {

namespace {

/// A key held down for the length of a block, for this thread alone.
class HeldKey {
public:
    explicit HeldKey(int key) : key_(key) { Set(0x80); }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;
    ~HeldKey() { Set(0); }

private:
    void Set(BYTE state) const {
        BYTE keys[256]{};
        GetKeyboardState(keys);
        keys[key_] = state;
        SetKeyboardState(keys);
    }
    int key_;
};

HWND TipOf(HWND owner) {
    HWND tip = nullptr;
    while ((tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr) {
        if (GetWindow(tip, GW_OWNER) == GetAncestor(owner, GA_ROOT) ||
            GetWindow(tip, GW_OWNER) == owner) {
            return tip;
        }
    }
    return nullptr;
}

RECT ToolRect(HWND tip, HWND owner) {
    TOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.hwnd = owner;
    tool.uId = 1;
    SendMessageW(tip, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool));
    return tool.rect;
}

std::u16string ClipboardText() {
    if (OpenClipboard(nullptr) == FALSE) {
        return u"(taken)";
    }
    HANDLE memory = GetClipboardData(CF_UNICODETEXT);
    const std::u16string text =
        memory == nullptr ? u"(none)" : TextOf(static_cast<const wchar_t*>(GlobalLock(memory)));
    if (memory != nullptr) {
        GlobalUnlock(memory);
    }
    CloseClipboard();
    return text;
}

std::vector<std::u16string> FilesIn(HDROP drop) {
    std::vector<std::u16string> files;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT at = 0; at < count; ++at) {
        wchar_t path[MAX_PATH]{};
        DragQueryFileW(drop, at, path, MAX_PATH);
        files.push_back(TextOf(path));
    }
    return files;
}

ComPtr<IPersistStreamInit> PersistenceOf(const Late& grid) {
    return ComPtr<IPersistStreamInit>::From(
        dynamic_cast<const DispatchObject&>(*grid.AsObject()).Dispatch());
}

ComPtr<IStream> StreamOf(const std::string& bytes) {
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.Out());
    ULONG written = 0;
    stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written);
    stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr);
    return stream;
}

std::string BytesOf(const ComPtr<IStream>& stream) {
    stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr);
    std::string bytes(100000, '\0');
    ULONG read = 0;
    stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read);
    bytes.resize(read);
    return bytes;
}

/// A container in which a form is designed.
class DesignSite : public Unknown<IOleClientSite, IDispatch> {
public:
    explicit DesignSite(bool userMode) : userMode_(userMode) {}
    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        if (member != DISPID_AMBIENT_USERMODE) {
            return DISP_E_MEMBERNOTFOUND;
        }
        result->vt = VT_BOOL;
        result->boolVal = userMode_ ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }

private:
    bool userMode_;
};

UINT menuKeys[] = {VK_DOWN, VK_DOWN, VK_RETURN};

void CALLBACK PressMenuKeys(HWND window, UINT, UINT_PTR timer, DWORD) {
    KillTimer(window, timer);
    for (const UINT key : menuKeys) {
        PostMessageW(window, WM_KEYDOWN, key, 0);
        PostMessageW(window, WM_KEYUP, key, 0xC0000000);
    }
}

} // namespace

TEST(Control, AColumnIsFittedToItsLongestText) {
    ContainerRig rig;
    const Late column = rig.grid(u"Columns", u"Name");
    column.Call(u"BestFit");
    const int narrow = rig.Number(column.Call(u"Width"));
    EXPECT_LT(narrow, 100);
    rig.grid(u"Rows", 2).SetAt(u"Value", u"Name", u"Ein Betreff, der deutlich länger ist");
    column.Call(u"BestFit");
    EXPECT_GT(rig.Number(column.Call(u"Width")), narrow + 80);
}

TEST(Control, ADoubleClickOnABorderFitsTheColumnAndOpensNothing) {
    ContainerRig rig;
    rig.Send(WM_LBUTTONDOWN, MK_LBUTTON, 199, 8);
    rig.Send(WM_LBUTTONUP, 0, 199, 8);
    rig.recorder->names.clear();
    rig.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, 199, 8);
    rig.Send(WM_LBUTTONUP, 0, 199, 8);
    EXPECT_LT(rig.Number(rig.grid(u"Columns", u"Name").Call(u"Width")), 100);
    EXPECT_EQ(rig.recorder->names, u"MouseUp ");
}

TEST(Control, TheMenuKeyIsARightClickOnTheCurrentRow) {
    ContainerRig rig;
    rig.grid.Set(u"CurrentRow", 2);
    rig.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(rig.window), -1, -1);
    EXPECT_EQ(rig.recorder->names, u"MouseDown MouseUp ");
    const auto [x, y] = rig.recorder->place;
    EXPECT_EQ(rig.grid(u"HitTest", x * 0.75, y * 0.75).Call(u"Row"), Value(2));
}

TEST(Control, AHeadingHasAMenuUnlessTheHostShowsOne) {
    ContainerRig rig;
    SetTimer(rig.window, 77, 200, PressMenuKeys);
    rig.Send(WM_RBUTTONDOWN, MK_RBUTTON, 30, 8);
    rig.Send(WM_RBUTTONUP, 0, 30, 8);
    EXPECT_EQ(rig.grid(u"Columns", u"Name").Call(u"SortOrder"), Value(1));
    EXPECT_EQ(rig.recorder->names, u"MouseDown MouseUp BeforeClickSort ");
}

TEST(Control, ACutTextGetsATip) {
    ContainerRig rig;
    rig.grid(u"Columns", u"Name").Set(u"Width", 60);
    rig.grid(u"Rows", 1).SetAt(u"Value", u"Name", u"Ein Betreff, der nicht in die Spalte passt");
    rig.Pump();
    const HWND tip = TipOf(rig.window);
    ASSERT_NE(tip, nullptr);
    rig.Send(WM_MOUSEMOVE, 0, 20, rig.MiddleOf(1));
    const RECT cell = ToolRect(tip, rig.window);
    EXPECT_EQ(cell.left, 0);
    EXPECT_EQ(cell.right, 60);
    NMTTDISPINFOW wanted{};
    wanted.hdr = {tip, 1, static_cast<UINT>(TTN_GETDISPINFOW)};
    SendMessageW(rig.window, WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&wanted));
    EXPECT_EQ(TextOf(wanted.lpszText), u"Ein Betreff, der nicht in die Spalte passt");
    rig.Send(WM_MOUSEMOVE, 0, 20, rig.MiddleOf(2));
    EXPECT_EQ(ToolRect(tip, rig.window).right, 0) << "a text that is not cut has no tip";
}

TEST(Control, CtrlCCopiesTheSelectedRowsAsTextAndFiles) {
    const TemporaryFolder folder;
    const std::u16string file = folder.Make(u"Größe.txt", 1);
    ContainerRig rig;
    rig.grid(u"Rows", 1).SetAt(u"Value", u"Name", file);
    rig.grid(u"Columns", u"Name").Set(u"Caption", u"Pfad");
    rig.grid.Set(u"FileColumn", u"Name");
    rig.grid[u"Selection"].Call(u"Add", 1, 2);
    {
        const HeldKey control(VK_CONTROL);
        rig.Send(WM_KEYDOWN, 'C', 0, 0);
    }
    EXPECT_EQ(ClipboardText(), u"Pfad\r\n" + file + u"\r\na\r\n");
    ASSERT_NE(OpenClipboard(nullptr), FALSE);
    HANDLE files = GetClipboardData(CF_HDROP);
    EXPECT_EQ(files == nullptr ? std::vector<std::u16string>() : FilesIn(static_cast<HDROP>(files)),
              std::vector<std::u16string>{file})
        << "files that are not there do not go along";
    EmptyClipboard();
    CloseClipboard();
}

TEST(Control, RowsGoOutAsDataWithTheirFiles) {
    const grid::RowData rows{u"a\tb", {u"C:\\a b\\ü.txt", u"C:\\c.txt"}};
    const ComPtr<IDataObject> data = grid::MakeDataObject(rows);
    FORMATETC wanted{CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM medium{};
    ASSERT_EQ(data->GetData(&wanted, &medium), S_OK);
    EXPECT_EQ(FilesIn(static_cast<HDROP>(medium.hGlobal)), rows.files);
    ReleaseStgMedium(&medium);
    wanted.cfFormat = CF_UNICODETEXT;
    ASSERT_EQ(data->GetData(&wanted, &medium), S_OK);
    EXPECT_EQ(TextOf(static_cast<const wchar_t*>(GlobalLock(medium.hGlobal))), rows.text);
    GlobalUnlock(medium.hGlobal);
    ReleaseStgMedium(&medium);
    wanted.cfFormat = CF_BITMAP;
    EXPECT_EQ(data->GetData(&wanted, &medium), DV_E_FORMATETC);
    ComPtr<IEnumFORMATETC> formats;
    ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, formats.Out()), S_OK);
    FORMATETC each[3]{};
    ULONG count = 0;
    EXPECT_EQ(formats->Next(3, each, &count), S_FALSE);
    EXPECT_EQ(count, 2U);
}

TEST(Control, APressedSelectedRowKeepsTheSelectionUntilItIsAClick) {
    ContainerRig rig;
    rig.grid.Set(u"FileColumn", u"Name");
    rig.grid[u"Selection"].Call(u"Add", 1, 3);
    rig.Send(WM_LBUTTONDOWN, MK_LBUTTON, 30, rig.MiddleOf(2));
    EXPECT_EQ(rig.grid(u"Selection", 1).Call(u"Last"), Value(3));
    rig.Send(WM_LBUTTONUP, 0, 30, rig.MiddleOf(2));
    EXPECT_EQ(rig.grid(u"Selection", 1).Call(u"First"), Value(2));
    EXPECT_EQ(rig.grid(u"Selection", 1).Call(u"Last"), Value(2));
}

TEST(Control, ADragWhoseButtonWasReleasedElsewhereIsOver) {
    ContainerRig rig;
    rig.Send(WM_LBUTTONDOWN, MK_LBUTTON, 199, 8);
    rig.Send(WM_MOUSEMOVE, 0, 260, 8);
    rig.Send(WM_MOUSEMOVE, MK_LBUTTON, 260, 8);
    EXPECT_EQ(rig.grid(u"Columns", u"Name").Call(u"Width"), Value(200));
}

TEST(Control, ALayoutComesBackFromAContainersStream) {
    ContainerRig rig;
    rig.grid(u"Columns", u"Name").Set(u"Caption", u"Betreff; mit Zeichen");
    rig.grid.Set(u"GroupByBox", true);
    rig.grid.Call(u"Sort", u"Name", 1);
    const auto saving = PersistenceOf(rig.grid);
    ASSERT_TRUE(saving);
    EXPECT_EQ(saving->IsDirty(), S_OK);
    const ComPtr<IStream> stream = StreamOf("");
    ASSERT_EQ(saving->Save(stream.Get(), TRUE), S_OK);
    EXPECT_EQ(saving->IsDirty(), S_FALSE);
    ULARGE_INTEGER size{};
    saving->GetSizeMax(&size);
    const std::string bytes = BytesOf(stream);
    EXPECT_EQ(size.QuadPart, bytes.size());
    const Late other = CreateByName(u"TalvixGrid.Grid");
    ASSERT_EQ(PersistenceOf(other)->Load(StreamOf(bytes).Get()), S_OK);
    EXPECT_EQ(other(u"Columns", u"Name").Call(u"Caption"), Value(u"Betreff; mit Zeichen"));
    EXPECT_EQ(other(u"Columns", u"Name").Call(u"SortOrder"), Value(1));
    EXPECT_EQ(other.Call(u"GroupByBox"), Value(true));
    EXPECT_EQ(other[u"Rows"].Call(u"Count"), Value(0));
}

TEST(Control, AStreamThatIsCutOrForeignIsRefusedAndChangesNothing) {
    ContainerRig rig;
    const ComPtr<IStream> stream = StreamOf("");
    ASSERT_EQ(PersistenceOf(rig.grid)->Save(stream.Get(), TRUE), S_OK);
    const std::string bytes = BytesOf(stream);
    const Late other = CreateByName(u"TalvixGrid.Grid");
    const auto loading = PersistenceOf(other);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_LT(loading->Load(StreamOf(bytes.substr(0, length)).Get()), 0) << length;
    }
    for (std::size_t at = 0; at < 8; ++at) {
        std::string wrong = bytes;
        wrong[at] = static_cast<char>(wrong[at] ^ 0x7F);
        EXPECT_LT(loading->Load(StreamOf(wrong).Get()), 0) << at;
    }
    EXPECT_EQ(other[u"Columns"].Call(u"Count"), Value(0));
    EXPECT_EQ(loading->Load(nullptr), E_POINTER);
}

TEST(Control, FrozenEventsAreNotTold) {
    ContainerRig rig;
    const auto control = ComPtr<IOleControl>::From(
        dynamic_cast<const DispatchObject&>(*rig.grid.AsObject()).Dispatch());
    ASSERT_TRUE(control);
    control->FreezeEvents(TRUE);
    rig.Click(30, rig.MiddleOf(2));
    EXPECT_EQ(rig.recorder->names, u"");
    EXPECT_EQ(rig.Current(), u"a");
    control->FreezeEvents(FALSE);
    rig.Click(30, rig.MiddleOf(3));
    EXPECT_EQ(rig.recorder->names, u"MouseDown MouseUp Click ");
}

TEST(Control, WhileAFormIsDesignedHandsReachTheContainerOnly) {
    ContainerRig rig;
    const auto object = ComPtr<IOleObject>::From(
        dynamic_cast<const DispatchObject&>(*rig.grid.AsObject()).Dispatch());
    const auto design = MakeCom<DesignSite>(false);
    object->SetClientSite(design.Get());
    rig.Click(30, rig.MiddleOf(2));
    rig.Send(WM_KEYDOWN, VK_DOWN, 0, 0);
    EXPECT_EQ(rig.recorder->names, u"");
    EXPECT_EQ(rig.Current(), u"");
    const auto use = MakeCom<DesignSite>(true);
    object->SetClientSite(use.Get());
    rig.Click(30, rig.MiddleOf(2));
    EXPECT_EQ(rig.Current(), u"a");
}

TEST(Control, TheControlsDataAreItsSelectedRows) {
    ContainerRig rig;
    const auto data = ComPtr<IDataObject>::From(
        dynamic_cast<const DispatchObject&>(*rig.grid.AsObject()).Dispatch());
    ASSERT_TRUE(data);
    FORMATETC wanted{CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    EXPECT_EQ(data->QueryGetData(&wanted), DV_E_FORMATETC) << "nothing is selected";
    rig.grid[u"Selection"].Call(u"Add", 3, 3);
    STGMEDIUM medium{};
    ASSERT_EQ(data->GetData(&wanted, &medium), S_OK);
    EXPECT_EQ(TextOf(static_cast<const wchar_t*>(GlobalLock(medium.hGlobal))), u"Name\r\nb\r\n");
    GlobalUnlock(medium.hGlobal);
    ReleaseStgMedium(&medium);
}

TEST(Control, ADraggedHeadingShowsWhereItWouldGo) {
    ContainerRig rig;
    rig.grid[u"Columns"](u"Add", u"Zweite").Set(u"Width", 200);
    rig.Pump();
    rig.Send(WM_LBUTTONDOWN, MK_LBUTTON, 30, 8);
    rig.Send(WM_MOUSEMOVE, MK_LBUTTON, 300, 8);
    UpdateWindow(rig.window);
    const ScreenDc dc(rig.window);
    EXPECT_EQ(GetPixel(dc.Get(), 400, 10), GetSysColor(COLOR_HIGHLIGHT));
    rig.Send(WM_LBUTTONUP, 0, 300, 8);
    UpdateWindow(rig.window);
    EXPECT_NE(GetPixel(dc.Get(), 400, 10), GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_EQ(rig.grid(u"Columns", u"Name").Call(u"Position"), Value(1));
}

} // namespace talvix
