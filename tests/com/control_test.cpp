// What the grid control does beyond showing rows, in a real container.
#include "grid/control/row_data.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/variant.h"
#include "tests/com/container_rig.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>
#include <ocidl.h>
#include <shellapi.h>

#include <oleacc.h>

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
        dynamic_cast<const DispatchObject&>(grid.Target()).Dispatch());
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

VARIANT ChildId(LONG number) {
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = number;
    return child;
}

/// A client of the accessible object, as a screen reader is one.
struct Reader {
    explicit Reader(HWND window) {
        AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   object.OutAny());
    }
    explicit Reader(ComPtr<IAccessible> accessible) : object(std::move(accessible)) {}
    Reader Child(LONG number) const {
        ComPtr<IDispatch> child;
        object->get_accChild(ChildId(number), child.Out());
        return Reader(ComPtr<IAccessible>::From(child.Get()));
    }
    LONG Count() const {
        LONG count = -1;
        object->get_accChildCount(&count);
        return count;
    }
    std::u16string Name(LONG child = 0) const {
        Bstr name;
        object->get_accName(ChildId(child), name.Out());
        return name.Text();
    }
    std::u16string Content(LONG child = 0) const {
        Bstr value;
        object->get_accValue(ChildId(child), value.Out());
        return value.Text();
    }
    LONG Role(LONG child = 0) const {
        Variant role;
        object->get_accRole(ChildId(child), role.Get());
        return role.Get()->lVal;
    }
    LONG State(LONG child = 0) const {
        Variant state;
        object->get_accState(ChildId(child), state.Get());
        return state.Get()->lVal;
    }
    ComPtr<IAccessible> object;
};

std::vector<std::pair<DWORD, LONG>> told;

void CALLBACK Hear(HWINEVENTHOOK, DWORD event, HWND, LONG object, LONG child, DWORD, DWORD) {
    if (object == OBJID_CLIENT) {
        told.emplace_back(event, child);
    }
}

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

TEST(Control, AScreenReaderReadsTheList) {
    ContainerRig rig;
    rig.grid(u"Columns", u"Name").Set(u"Caption", u"Betreff");
    rig.grid.Set(u"CurrentRow", 2);
    rig.Pump();
    const Reader table(rig.window);
    ASSERT_TRUE(table.object);
    EXPECT_EQ(table.Role(), ROLE_SYSTEM_TABLE);
    ASSERT_EQ(table.Count(), 4);
    EXPECT_EQ(table.Child(1).Role(1), ROLE_SYSTEM_COLUMNHEADER);
    EXPECT_EQ(table.Child(1).Name(1), u"Betreff");
    EXPECT_EQ(table.Name(3), u"a");
    const Reader row = table.Child(3);
    EXPECT_EQ(row.Role(), ROLE_SYSTEM_ROW);
    EXPECT_NE(row.State() & STATE_SYSTEM_SELECTED, 0);
    EXPECT_EQ(table.Child(2).State() & STATE_SYSTEM_SELECTED, 0);
    ASSERT_EQ(row.Count(), 1);
    EXPECT_EQ(row.Role(1), ROLE_SYSTEM_CELL);
    EXPECT_EQ(row.Name(1), u"Betreff");
    EXPECT_EQ(row.Content(1), u"a");
    Variant selection;
    ASSERT_EQ(table.object->get_accSelection(selection.Get()), S_OK);
    ASSERT_EQ(selection.Get()->vt, VT_DISPATCH);
    EXPECT_EQ(Reader(ComPtr<IAccessible>::From(selection.Get()->pdispVal)).Name(), u"a");
    LONG left = 0;
    LONG top = 0;
    LONG width = 0;
    LONG height = 0;
    ASSERT_EQ(row.object->accLocation(&left, &top, &width, &height, ChildId(0)), S_OK);
    Variant hit;
    ASSERT_EQ(table.object->accHitTest(left + 5, top + height / 2, hit.Get()), S_OK);
    ASSERT_EQ(hit.Get()->vt, VT_DISPATCH);
    EXPECT_EQ(Reader(ComPtr<IAccessible>::From(hit.Get()->pdispVal)).Name(), u"a");
}

TEST(Control, AScreenReaderSelectsAndActs) {
    ContainerRig rig;
    const Reader table(rig.window);
    ASSERT_EQ(table.object->accSelect(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, ChildId(4)), S_OK);
    EXPECT_EQ(rig.Current(), u"b");
    ASSERT_EQ(table.object->accSelect(SELFLAG_ADDSELECTION, ChildId(2)), S_OK);
    Variant selection;
    ASSERT_EQ(table.object->get_accSelection(selection.Get()), S_OK);
    EXPECT_EQ(selection.Get()->vt, VT_UNKNOWN);
    rig.recorder->names.clear();
    ASSERT_EQ(table.object->accDoDefaultAction(ChildId(2)), S_OK);
    EXPECT_EQ(rig.recorder->names, u"DblClick MouseUp ");
    EXPECT_EQ(rig.Current(), u"c");
    ASSERT_EQ(table.Child(1).object->accDoDefaultAction(ChildId(1)), S_OK);
    EXPECT_EQ(rig.grid(u"Columns", u"Name").Call(u"SortOrder"), Value(0));
}

TEST(Control, AScreenReaderSeesGroupsOpenAndClose) {
    ContainerRig rig;
    rig.grid[u"Groups"].Call(u"Add", u"Name");
    const Reader table(rig.window);
    ASSERT_EQ(table.Count(), 7);
    EXPECT_EQ(table.Role(2), ROLE_SYSTEM_OUTLINEITEM);
    EXPECT_EQ(table.Name(2), u"Name: a (1)");
    EXPECT_NE(table.State(2) & STATE_SYSTEM_EXPANDED, 0);
    ASSERT_EQ(table.object->accDoDefaultAction(ChildId(2)), S_OK);
    EXPECT_NE(table.State(2) & STATE_SYSTEM_COLLAPSED, 0);
    EXPECT_EQ(table.Count(), 6);
}

TEST(Control, ChangesAreTold) {
    ContainerRig rig;
    SetForegroundWindow(rig.frame);
    SetFocus(rig.window);
    const HWINEVENTHOOK hook =
        SetWinEventHook(EVENT_OBJECT_REORDER, EVENT_OBJECT_SELECTIONWITHIN, nullptr, Hear,
                        GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    told.clear();
    rig.Click(30, rig.MiddleOf(2));
    rig.Pump();
    rig.grid[u"Rows"].Call(u"Remove", 3);
    rig.Pump();
    rig.Pump();
    UnhookWinEvent(hook);
    const auto heard = [](DWORD event, LONG child) {
        return std::find(told.begin(), told.end(), std::pair(event, child)) != told.end();
    };
    EXPECT_TRUE(heard(EVENT_OBJECT_FOCUS, 3));
    EXPECT_TRUE(heard(EVENT_OBJECT_SELECTION, 3));
    EXPECT_TRUE(heard(EVENT_OBJECT_REORDER, 0));
}

TEST(Control, AccessibleObjectsOutliveTheirRowsAndTheirWindow) {
    ContainerRig rig;
    const Reader table(rig.window);
    const Reader row = table.Child(2);
    rig.grid[u"Rows"].Call(u"Remove", 1);
    EXPECT_NE(row.State() & STATE_SYSTEM_UNAVAILABLE, 0);
    EXPECT_EQ(row.Name(), u"");
    EXPECT_EQ(table.object->accDoDefaultAction(ChildId(99)), E_INVALIDARG);
    DestroyWindow(rig.frame);
    LONG count = 0;
    EXPECT_EQ(table.object->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    Bstr name;
    EXPECT_EQ(row.object->get_accName(ChildId(0), name.Out()), CO_E_OBJNOTCONNECTED);
}

} // namespace talvix
