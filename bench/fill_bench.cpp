// 100,000 rows of 15 cells: the grid through IDispatch with names looked up every time, a vector of
// texts, and the system's list view. All three hold the same texts afterwards.
#include "automation/text.h"
#include "bench/bench.h"
#include "core/main.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/variant.h"
#include "platform/win32/trace.h"
#include "platform/win32/wide.h"
#include "platform/win32/win32_platform.h"

#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <vector>

namespace talvix::bench {

namespace {

constexpr int kRows = 100000;
constexpr int kColumns = 15;
constexpr const char16_t* kKeys[kColumns] = {u"ID",
                                             u"ObjectType",
                                             u"Icon",
                                             u"Subject",
                                             u"ItemSize",
                                             u"ObjectDescription",
                                             u"Creator",
                                             u"CreationDate",
                                             u"LastModificationBy",
                                             u"ModificationDate",
                                             u"Status",
                                             u"LongDescription",
                                             u"PhysicalStore1",
                                             u"PhysicalStore2",
                                             u"PhysicalStore3"};

/// What a cell of a document list typically holds.
std::u16string CellText(int row, int column) {
    switch (column) {
    case 0:
        return DecimalText(row);
    case 3:
        return u"Bericht über Bauabschnitt " + DecimalText(row) + u".doc";
    case 4:
        return DecimalText(row % 900) + u" KB";
    case 5:
    case 11:
        return u"Microsoft Word-Dokument";
    case 6:
    case 8:
        return u"Erika Mustermann";
    case 7:
    case 9:
        return u"31.12.2003 14:05:00";
    case 10:
        return u"offen";
    case 12:
        return u"\\\\server\\daten\\Projekte\\4711\\Berichte\\Bericht über Bauabschnitt " +
               DecimalText(row) + u".doc";
    case 13:
        return u"\\Berichte";
    default:
        return u"-1";
    }
}

DISPID IdOf(IDispatch* object, const wchar_t* name) {
    auto* text = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

ComPtr<IDispatch> Child(IDispatch* object, const wchar_t* name, WORD flags) {
    DISPPARAMS none{};
    VARIANT result{};
    object->Invoke(IdOf(object, name), IID_NULL, LOCALE_USER_DEFAULT, flags, &none, &result,
                   nullptr, nullptr);
    return ComPtr<IDispatch>::Adopt(result.pdispVal);
}

void PutCell(IDispatch* row, BSTR key, BSTR text) {
    DISPID put = DISPID_PROPERTYPUT;
    VARIANT arguments[2]{};
    arguments[1].vt = VT_BSTR;
    arguments[1].bstrVal = key;
    arguments[0].vt = VT_BSTR;
    arguments[0].bstrVal = text;
    DISPPARAMS parameters{arguments, &put, 2, 1};
    row->Invoke(IdOf(row, L"Value"), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                &parameters, nullptr, nullptr, nullptr);
}

/// The texts as the caller has them, made once: they are no part of what is measured.
struct Texts {
    Texts() {
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column) {
                const std::u16string text = CellText(row, column);
                cells.push_back(SysAllocStringLen(WideUnits(text), static_cast<UINT>(text.size())));
            }
        }
        for (const auto* key : kKeys) {
            keys.push_back(SysAllocString(reinterpret_cast<const wchar_t*>(key)));
        }
    }
    std::vector<BSTR> cells;
    std::vector<BSTR> keys;
};

ComPtr<IDispatch> FillGrid(const Texts& texts) {
    const ComPtr<IDispatch> grid = Create(u"TalvixGrid.Grid");
    const ComPtr<IDispatch> columns = Child(grid.Get(), L"Columns", DISPATCH_PROPERTYGET);
    for (const BSTR key : texts.keys) {
        VARIANT argument{};
        argument.vt = VT_BSTR;
        argument.bstrVal = key;
        DISPPARAMS parameters{&argument, nullptr, 1, 0};
        columns->Invoke(IdOf(columns.Get(), L"Add"), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                        &parameters, nullptr, nullptr, nullptr);
    }
    const ComPtr<IDispatch> rows = Child(grid.Get(), L"Rows", DISPATCH_PROPERTYGET);
    for (int row = 0; row < kRows; ++row) {
        const ComPtr<IDispatch> added = Child(rows.Get(), L"Add", DISPATCH_METHOD);
        for (int column = 0; column < kColumns; ++column) {
            PutCell(added.Get(), texts.keys[static_cast<std::size_t>(column)],
                    texts.cells[static_cast<std::size_t>(row * kColumns + column)]);
        }
    }
    return grid;
}

using Vector = std::vector<std::vector<std::u16string>>;

Vector FillVector(const Texts& texts) {
    Vector rows;
    for (int row = 0; row < kRows; ++row) {
        std::vector<std::u16string>& added = rows.emplace_back(kColumns);
        for (int column = 0; column < kColumns; ++column) {
            added[static_cast<std::size_t>(column)] =
                Bstr::View(texts.cells[static_cast<std::size_t>(row * kColumns + column)]);
        }
    }
    return rows;
}

HWND FillListView(const Texts& texts) {
    const HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | LVS_REPORT, 0, 0, 600, 400,
                                      nullptr, nullptr, nullptr, nullptr);
    for (int column = 0; column < kColumns; ++column) {
        LVCOLUMNW design{};
        design.mask = LVCF_WIDTH;
        design.cx = 80;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&design));
    }
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LVM_SETITEMCOUNT, kRows, 0);
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            LVITEMW item{};
            item.mask = LVIF_TEXT;
            item.iItem = row;
            item.iSubItem = column;
            item.pszText = texts.cells[static_cast<std::size_t>(row * kColumns + column)];
            SendMessageW(list, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                         reinterpret_cast<LPARAM>(&item));
        }
    }
    return list;
}

std::u16string TextOf(HWND list, int row, int column) {
    wchar_t text[300];
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 300;
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return talvix::TextOf(text);
}

/// Every hundredth row holds the same texts in all three.
void RequireSameTexts(const Texts& texts) {
    const Late grid(WrapDispatch(FillGrid(texts).Get()));
    const Vector rows = FillVector(texts);
    HWND list = FillListView(texts);
    for (int row = 0; row < kRows; row += 100) {
        const Late cells = grid(u"Rows", row + 1);
        for (int column = 0; column < kColumns; ++column) {
            const std::u16string text =
                rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
            Require(cells.Call(u"Value", kKeys[column]) == Value(text) &&
                        TextOf(list, row, column) == text,
                    "fill");
        }
    }
    DestroyWindow(list);
}

/// Everything is confirmed.
class YesMessages : public Messages {
public:
    std::int32_t Show(std::u16string_view, std::int32_t, std::u16string_view) override {
        return kAnswerYes;
    }
};

/// A tenth of the rows, every tenth one, removed by the component's own command.
double RemoveByComponent(const Texts& texts) {
    const ComPtr<IDispatch> grid = FillGrid(texts);
    const Late late(WrapDispatch(grid.Get()));
    for (int row = 1; row <= kRows; row += 10) {
        late[u"Selection"].Call(u"Add", row, row);
    }
    late.Set(u"CurrentRow", 1);
    Win32Platform platform;
    YesMessages messages;
    Platform& own = platform.ports;
    Platform ports{own.files,   own.shell,   own.registry, own.system,  own.clock,
                   own.locale,  own.timers,  own.pictures, own.network, messages,
                   own.dialogs, own.objects, own.menus};
    Win32Trace trace(platform.registry);
    Forms forms(ports, trace);
    Main main(ports, trace, forms);
    main.Attached().dmsGrid = Grid(late);
    const double time = Timed([&] {
        main.DeleteDMSItem();
        return 0;
    });
    Require(late[u"Rows"].Call(u"Count") == Value(kRows - kRows / 10) &&
                late(u"Rows", 1).Call(u"Value", u"ID") == Value(std::u16string(u"1")) &&
                late(u"Rows", 10).Call(u"Value", u"ID") == Value(std::u16string(u"11")),
            "remove");
    return time;
}

double RemoveFromListView(const Texts& texts) {
    HWND list = FillListView(texts);
    const double time = Timed([&] {
        for (int row = kRows - 10; row >= 0; row -= 10) {
            SendMessageW(list, LVM_DELETEITEM, static_cast<WPARAM>(row), 0);
        }
        return 0;
    });
    Require(TextOf(list, 0, 0) == u"1" && TextOf(list, 9, 0) == u"11", "remove");
    DestroyWindow(list);
    return time;
}

} // namespace

int MemoryBench(const std::string& kind) {
    const Texts texts;
    InitCommonControls();
    const std::size_t before = ResidentBytes();
    ComPtr<IDispatch> grid;
    Vector rows;
    if (kind == "grid") {
        grid = FillGrid(texts);
    } else if (kind == "vector") {
        rows = FillVector(texts);
    } else {
        FillListView(texts);
    }
    std::printf("%zu\n", (ResidentBytes() - before) / kRows);
    return 0;
}

int FillBench() {
    const Texts texts;
    InitCommonControls();
    RequireSameTexts(texts);
    const auto grid = [&] { return Timed([&] { return FillGrid(texts); }); };
    const auto vector = [&] { return Timed([&] { return FillVector(texts); }); };
    const auto listView = [&] {
        HWND list = nullptr;
        const double time = Timed([&] { return list = FillListView(texts); });
        DestroyWindow(list);
        return time;
    };
    Compare({"fill-vector",
             "fill 100,000 x 15 cells through `IDispatch`, names every time / vector", 3},
            grid, vector);
    Compare({"fill-list",
             "fill 100,000 x 15 cells through `IDispatch`, names every time / list view", 0.2},
            grid, listView);
    Compare(
        {"remove", "remove 10,000 of 100,000 documents by the component / list view", 0.1},
        [&] { return RemoveByComponent(texts); }, [&] { return RemoveFromListView(texts); });
    return 0;
}

} // namespace talvix::bench
