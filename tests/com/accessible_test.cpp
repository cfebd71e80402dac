// The grid as a client of its accessible object meets it, in a real container.
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/variant.h"
#include "tests/com/container_rig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <oleacc.h>

namespace talvix {

namespace {

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

} // namespace

TEST(Accessible, AScreenReaderReadsTheList) {
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

TEST(Accessible, AScreenReaderSelectsAndActs) {
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

TEST(Accessible, AScreenReaderSeesGroupsOpenAndClose) {
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

TEST(Accessible, ChangesAreTold) {
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

TEST(Accessible, AccessibleObjectsOutliveTheirRowsAndTheirWindow) {
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
