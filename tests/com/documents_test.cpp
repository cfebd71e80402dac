#include "platform/win32/drop_target.h"
#include "platform/win32/files.h"
#include "platform/win32/item_window.h"
#include "platform/win32/popup_menu.h"
#include "platform/win32/wide.h"
#include "tests/com/component_rig.h"
#include "tests/com/saving_item.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <atomic>

namespace talvix {

namespace {

constexpr const char16_t* kNew = u"Neues Dokument";
constexpr const char16_t* kChange = u"Dokument ändern";

HWND Part(HWND dialog, ItemControl control) {
    return GetDlgItem(dialog, Win32ItemWindow::IdOf(control));
}

void Enter(HWND dialog, ItemControl control, const std::u16string& text) {
    SendMessageW(Part(dialog, control), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Wide(text)));
}

struct DocumentRig : ComponentRig {
    DocumentRig() {
        RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Talvix\\FormSettings");
        RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Talvix\\DMS");
        Attach();
    }
    ~DocumentRig() {
        RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Talvix\\FormSettings");
        RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Talvix\\DMS");
    }
    DocumentRig(const DocumentRig&) = delete;
    DocumentRig& operator=(const DocumentRig&) = delete;
    void SelectOnly(int row) const {
        grid[u"Selection"].Call(u"Clear");
        grid.Set(u"CurrentRow", row);
    }
    std::size_t Writes() const { return journal.Count(u"Managing.WriteGridDataToItemBody"); }
    TemporaryFolder elsewhere;
    DialogAnswers answers;
};

} // namespace

TEST(ComponentDocuments, ANewFileIsEnteredInTheRealDialogAndCopied) {
    DocumentRig rig;
    const std::u16string source = rig.elsewhere.Make(u"Plan Größe.txt", 30);
    std::u16string notes;
    rig.answers.Answer(kNew, [&](HWND dialog) {
        Enter(dialog, ItemControl::TextPhysicalStore1, source);
        Enter(dialog, ItemControl::TextStatus, u"geprüft");
        notes = DialogAnswers::TextOfWindow(Part(dialog, ItemControl::TextLongDescription));
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    rig.main.Call(u"btnNewDocument_Click");
    ASSERT_EQ(rig.Rows(), 1);
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore1"), rig.folder.Path() + u"\\Plan Größe.txt");
    EXPECT_EQ(rig.Cell(1, u"Status"), u"geprüft");
    EXPECT_NE(notes, u"") << "filled with the file's type";
    EXPECT_EQ(rig.Cell(1, u"LongDescription"), notes);
    EXPECT_TRUE(Win32Files().Query(rig.folder.Path() + u"\\Plan Größe.txt"));
    EXPECT_EQ(rig.Writes(), 1U);
    DWORD stored = 7;
    DWORD bytes = sizeof stored;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Software\\Talvix\\FormSettings",
                           L"Document Copy Item Selected", RRF_RT_REG_DWORD, nullptr, &stored,
                           &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(stored, 1U);
}

TEST(ComponentDocuments, ABlankPathIsToldAndTheDialogStays) {
    DocumentRig rig;
    rig.answers.Answer(kNew, [&](HWND dialog) {
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        Sleep(300); // the message is answered by then
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    rig.answers.Answer(u"Eingabe erforderlich", IDOK);
    std::atomic<bool> isTold = false;
    Thread message([&] {
        for (int wait = 0; wait < 100; ++wait) {
            if (HWND box = FindWindowW(L"#32770", L"Eingabe erforderlich")) {
                isTold = true;
                PostMessageW(box, WM_COMMAND, IDOK, 0);
                return;
            }
            Sleep(5);
        }
    });
    rig.main.Call(u"btnNewDocument_Click");
    message.Join();
    EXPECT_TRUE(isTold);
    for (const std::u16string& seen : rig.answers.Seen()) {
        EXPECT_FALSE(seen.starts_with(u"Dateifehler"));
    }
    EXPECT_EQ(rig.Rows(), 0);
    EXPECT_EQ(rig.Writes(), 0U);
}

TEST(ComponentDocuments, ALinkIsEnteredByItsOption) {
    DocumentRig rig;
    rig.answers.Answer(kNew, [&](HWND dialog) {
        SendMessageW(Part(dialog, ItemControl::optLink), BM_CLICK, 0, 0);
        EXPECT_FALSE(IsWindowEnabled(Part(dialog, ItemControl::chkCopyItem)));
        EXPECT_FALSE(IsWindowEnabled(Part(dialog, ItemControl::CommandPhysicalStore1)));
        Enter(dialog, ItemControl::TextPhysicalStore1, u"http://example.org/größe");
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    rig.main.Call(u"btnNewDocument_Click");
    ASSERT_EQ(rig.Rows(), 1);
    EXPECT_EQ(rig.Cell(1, u"Subject"), u"http://example.org/größe");
    EXPECT_EQ(rig.Cell(1, u"ObjectDescription"), u"Internetverknüpfung");
}

TEST(ComponentDocuments, ChangingShowsTheRowWithItsPathLocked) {
    DocumentRig rig;
    rig.main.Call(u"AddFile", rig.folder.Make(u"a.txt", 1), u"a", u"alt", u"Notiz");
    rig.SelectOnly(1);
    rig.answers.Answer(kChange, [&](HWND dialog) {
        HWND path = Part(dialog, ItemControl::TextPhysicalStore1);
        EXPECT_EQ(DialogAnswers::TextOfWindow(path), rig.folder.Path() + u"\\a.txt");
        EXPECT_NE(GetWindowLongW(path, GWL_STYLE) & ES_READONLY, 0);
        EXPECT_FALSE(IsWindowEnabled(Part(dialog, ItemControl::optFile)));
        EXPECT_EQ(DialogAnswers::TextOfWindow(Part(dialog, ItemControl::TextStatus)), u"alt");
        EXPECT_EQ(DialogAnswers::TextOfWindow(Part(dialog, ItemControl::ActionCombo)), u"Keiner");
        for (const ItemControl control : {ItemControl::TextPhysicalStore1, ItemControl::TextStatus,
                                          ItemControl::TextLongDescription}) {
            EXPECT_NE(GetPropW(Part(dialog, control), L"OleDropTargetInterface"), nullptr);
        }
        Enter(dialog, ItemControl::TextStatus, u"neu");
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    rig.main.Call(u"btnChangeDocument_Click");
    EXPECT_EQ(rig.Cell(1, u"Status"), u"neu");
    EXPECT_EQ(rig.Writes(), 1U);
}

TEST(ComponentDocuments, RemovingAsksInARealMessageBox) {
    DocumentRig rig;
    for (const auto* name : {u"a.txt", u"b.txt", u"c.txt"}) {
        rig.main.Call(u"AddFile", rig.folder.Make(name, 1), name, u"", u"");
    }
    rig.SelectOnly(2);
    rig.grid[u"Selection"].Call(u"Add", 2, 3);
    rig.answers.Answer(u"Dokument entfernen...", IDNO);
    rig.main.Call(u"btnDeleteDocument_Click");
    EXPECT_EQ(rig.Rows(), 3);
    rig.answers.Answer(u"Dokument entfernen...", IDYES);
    rig.main.Call(u"DeleteDMSItem");
    ASSERT_EQ(rig.Rows(), 1);
    EXPECT_EQ(rig.Cell(1, u"Subject"), u"a.txt");
    EXPECT_TRUE(Win32Files().Query(rig.folder.Path() + u"\\b.txt"));
    EXPECT_EQ(rig.answers.Seen().front(),
              u"Dokument entfernen...|Sind Sie sicher, dass Sie diese Dokumente aus der Liste "
              u"entfernen wollen?");
}

TEST(ComponentDocuments, OpeningManyAsksWithTheirNumber) {
    DocumentRig rig;
    for (int number = 1; number <= 6; ++number) {
        rig.main.Call(u"AddFile", rig.folder.Path() + u"\\fehlt", u"x", u"", u"");
    }
    rig.SelectOnly(1);
    rig.grid[u"Selection"].Call(u"Add", 1, 6);
    rig.answers.Answer(u"Hohe Anzahl an Dokumenten", IDNO);
    rig.main.Call(u"btnOpenDocument_Click");
    EXPECT_EQ(rig.answers.Seen(),
              std::vector<std::u16string>{u"Hohe Anzahl an Dokumenten|Sie versuchen, 6 Dokumente "
                                          u"gleichzeitig zu öffnen. Möchten Sie fortfahren?"});
}

TEST(ComponentDocuments, ExportingLeavesTheThirdArgumentOut) {
    DocumentRig rig;
    rig.managing->With(u"SetUserFieldValues", Empty()).With(u"GetXMLDataAsString", u"<liste/>");
    std::vector<Value> given;
    const auto exporter = std::make_shared<Expando>(u"Export");
    exporter->On(u"ExportItem", [&](std::span<const Value> arguments) -> Value {
        given.assign(arguments.begin(), arguments.end());
        return {};
    });
    const Object other = std::make_shared<Expando>(u"Other");
    rig.main.Call(u"ReferenceLibraries", rig.common, rig.managing, other, other, other, exporter);
    rig.main.Call(u"btnExportDocuments_Click");
    ASSERT_EQ(given.size(), 4U);
    EXPECT_EQ(given[1], Value(u"Dokumente"));
    EXPECT_EQ(given[2], Value(Missing()));
    EXPECT_EQ(given[3], Value(u"<liste/>"));
}

TEST(ComponentDocuments, FillingTheActionListAnswersWithoutAnything) {
    DocumentRig rig;
    rig.main.Call(u"FillActionCombo", u"7");
    rig.main.Call(u"FillActionCombo");
}

namespace {

/// A data object with what a test puts into it.
class TestData : public Unknown<IDataObject> {
public:
    void Put(CLIPFORMAT format, std::string bytes) {
        forms_.emplace_back(format, std::move(bytes));
    }
    STDMETHODIMP GetData(FORMATETC* wanted, STGMEDIUM* medium) override {
        for (const auto& [format, bytes] : forms_) {
            if (format == wanted->cfFormat) {
                medium->tymed = TYMED_HGLOBAL;
                medium->hGlobal = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
                medium->pUnkForRelease = nullptr;
                std::copy(bytes.begin(), bytes.end(),
                          static_cast<char*>(GlobalLock(medium->hGlobal)));
                GlobalUnlock(medium->hGlobal);
                return S_OK;
            }
        }
        return DV_E_FORMATETC;
    }
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    STDMETHODIMP QueryGetData(FORMATETC*) override { return S_OK; }
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP DUnadvise(DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

private:
    std::vector<std::pair<CLIPFORMAT, std::string>> forms_;
};

std::string Bytes(std::u16string_view text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

std::string FileList(std::string_view names, bool wide, DWORD start = sizeof(DROPFILES)) {
    DROPFILES header{};
    header.pFiles = start;
    header.fWide = wide ? TRUE : FALSE;
    return std::string(reinterpret_cast<const char*>(&header), sizeof header) + std::string(names);
}

DroppedData Drop(const std::function<void(TestData&)>& fill) {
    auto* data = new TestData();
    fill(*data);
    DroppedData dropped;
    auto* target = new DropTarget([&](const DroppedData& taken) { dropped = taken; });
    DWORD effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    EXPECT_EQ(target->DragEnter(data, 0, {}, &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    EXPECT_EQ(target->Drop(data, 0, {}, &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    target->Release();
    data->Release();
    return dropped;
}

} // namespace

TEST(DropTarget, TakesTextAndFileLists) {
    using namespace std::string_literals;
    using namespace std::string_view_literals;
    const DroppedData text =
        Drop([](TestData& data) { data.Put(CF_UNICODETEXT, Bytes(u"Größe €\0rest"sv)); });
    EXPECT_EQ(text.text, u"Größe €");
    EXPECT_FALSE(text.files);
    EXPECT_EQ(Drop([](TestData& data) {
                  data.Put(CF_TEXT, "Gr\xF6\xDF"
                                    "e");
              }).text,
              u"Größe");
    const DroppedData files = Drop([](TestData& data) {
        data.Put(CF_HDROP, FileList(Bytes(u"C:\\ä.txt\0C:\\b.txt\0\0"sv), true));
    });
    EXPECT_EQ(files.files, (std::vector<std::u16string>{u"C:\\ä.txt", u"C:\\b.txt"}));
    EXPECT_EQ(
        Drop([](TestData& data) { data.Put(CF_HDROP, FileList("C:\\a.txt\0\0"sv, false)); }).files,
        (std::vector<std::u16string>{u"C:\\a.txt"}));
}

TEST(DropTarget, DataThatLiesAboutItsSizeIsReadUpToItsEnd) {
    using namespace std::string_view_literals;
    EXPECT_EQ(Drop([](TestData& data) { data.Put(CF_UNICODETEXT, "A"); }).text, u"");
    EXPECT_EQ(Drop([](TestData& data) {
                  data.Put(CF_UNICODETEXT, Bytes(u"ohne Ende"));
              }).text->substr(0, 9),
              u"ohne Ende");
    EXPECT_FALSE(
        Drop([](TestData& data) { data.Put(CF_HDROP, FileList("x", false, 100000)); }).files);
    EXPECT_FALSE(Drop([](TestData& data) { data.Put(CF_HDROP, "kurz"); }).files);
    const auto endless =
        Drop([](TestData& data) { data.Put(CF_HDROP, FileList(Bytes(u"C:\\a"), true)); });
    ASSERT_TRUE(endless.files);
    EXPECT_EQ(endless.files->size(), 1U);
    const std::u16string huge(1000000, u'ß');
    EXPECT_EQ(Drop([&](TestData& data) { data.Put(CF_UNICODETEXT, Bytes(huge)); }).text, huge);
    EXPECT_FALSE(Drop([](TestData&) {}).text);
}

TEST(CPopupMenu, KeepsEntriesByTheirCommands) {
    CPopupMenu menu;
    menu.AddEntry(1, u"Öffnen", true);
    menu.AddSeparator(100);
    PopupMenu& view = menu.AddSubMenu(6, u"Ansicht");
    view.AddEntry(7, u"Größe", true);
    menu.SetDefault(1);
    menu.SetChecked(7, true);
    menu.SetEnabled(7, false);
    EXPECT_EQ(menu.Text(1), u"Öffnen");
    EXPECT_EQ(menu.Text(6), u"Ansicht");
    EXPECT_EQ(menu.Text(7), u"Größe");
    EXPECT_EQ(menu.Text(99), u"");
    menu.SetChecked(99, true);
}

namespace {

/// Drops onto a window of an open dialog, through the target that it has registered.
void DropOn(HWND window, const std::function<void(TestData&)>& fill) {
    auto* target = static_cast<IDropTarget*>(GetPropW(window, L"OleDropTargetInterface"));
    ASSERT_NE(target, nullptr);
    auto* data = new TestData();
    fill(*data);
    DWORD effect = DROPEFFECT_COPY;
    EXPECT_EQ(target->Drop(data, 0, {}, &effect), S_OK);
    data->Release();
}

} // namespace

TEST(ComponentDocuments, WhatIsDroppedOnTheDialogGoesWhereItBelongs) {
    using namespace std::string_view_literals;
    DocumentRig rig;
    const std::u16string file = rig.elsewhere.Make(u"Größe.txt", 5);
    rig.answers.Answer(kNew, [&](HWND dialog) {
        HWND path = Part(dialog, ItemControl::TextPhysicalStore1);
        HWND status = Part(dialog, ItemControl::TextStatus);
        HWND notes = Part(dialog, ItemControl::TextLongDescription);
        DropOn(dialog,
               [](TestData& data) { data.Put(CF_UNICODETEXT, Bytes(u"https://example.org\0"sv)); });
        EXPECT_EQ(DialogAnswers::TextOfWindow(path), u"https://example.org");
        EXPECT_EQ(SendMessageW(Part(dialog, ItemControl::optLink), BM_GETCHECK, 0, 0), BST_CHECKED);
        DropOn(notes, [](TestData& data) { data.Put(CF_UNICODETEXT, Bytes(u"Notiz\0"sv)); });
        EXPECT_EQ(DialogAnswers::TextOfWindow(notes), u"Notiz");
        DropOn(status, [&](TestData& data) {
            data.Put(CF_HDROP, FileList(Bytes(file + u'\0' + u'\0'), true));
        });
        EXPECT_EQ(DialogAnswers::TextOfWindow(status), u"");
        EXPECT_EQ(DialogAnswers::TextOfWindow(path), file);
        EXPECT_EQ(SendMessageW(Part(dialog, ItemControl::optFile), BM_GETCHECK, 0, 0), BST_CHECKED);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    rig.main.Call(u"btnNewDocument_Click");
    ASSERT_EQ(rig.Rows(), 1);
    EXPECT_EQ(rig.Cell(1, u"Subject"), u"Größe.txt");
    EXPECT_EQ(rig.Cell(1, u"LongDescription"), u"Notiz");
}

TEST(ComponentDocuments, TheBrowseButtonOpensTheRealFileDialog) {
    DocumentRig rig;
    const std::u16string file = rig.elsewhere.Make(u"Größe.txt", 5);
    rig.answers.Answer(kNew, [&](HWND dialog) {
        PostMessageW(Part(dialog, ItemControl::CommandPhysicalStore1), BM_CLICK, 0, 0);
        HWND chooser = nullptr;
        for (int wait = 0; wait < 400 && chooser == nullptr; ++wait) {
            Sleep(10);
            chooser = FindWindowW(L"#32770", L"Wählen Sie ein Dokument aus...");
        }
        ASSERT_NE(chooser, nullptr);
        Sleep(500); // it fills itself
        constexpr int kNameField = 1148;
        SendMessageW(GetDlgItem(chooser, kNameField), WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(Wide(file)));
        PostMessageW(chooser, WM_COMMAND, IDOK, 0);
        HWND path = Part(dialog, ItemControl::TextPhysicalStore1);
        for (int wait = 0; wait < 400 && DialogAnswers::TextOfWindow(path).empty(); ++wait) {
            Sleep(10);
        }
        EXPECT_EQ(DialogAnswers::TextOfWindow(path), file);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    rig.main.Call(u"btnNewDocument_Click");
    EXPECT_EQ(rig.Rows(), 1);
    wchar_t folder[512]{};
    DWORD bytes = sizeof folder;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Software\\Talvix\\DMS",
                           L"DMS Default File Directory", RRF_RT_REG_SZ, nullptr, folder, &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(TextOf(folder), rig.elsewhere.Path());
}

TEST(ComponentDocuments, TenThousandActionsAreOffered) {
    DocumentRig rig;
    const Late actions = CreateByName(u"TalvixGrid.Grid");
    for (const auto* key : {u"id", u"startdate", u"description"}) {
        actions[u"Columns"].Call(u"Add", key);
    }
    for (int number = 1; number <= 10000; ++number) {
        Late row = actions[u"Rows"][u"Add"];
        row.SetAt(u"Value", u"id", number);
        row.SetAt(u"Value", u"startdate", Date{38000});
        row.SetAt(u"Value", u"description", u"Begehung");
    }
    std::map<std::u16string, Value> controls{{u"sgActions", actions.Get()}};
    const auto support = std::make_shared<Expando>(u"Page");
    support->On(u"Controls", ByName(controls));
    rig.pages[u"Betreuung"] = support;
    LRESULT entries = 0;
    std::u16string last;
    rig.answers.Answer(kNew, [&](HWND dialog) {
        HWND combo = Part(dialog, ItemControl::ActionCombo);
        entries = SendMessageW(combo, CB_GETCOUNT, 0, 0);
        SendMessageW(combo, CB_SETCURSEL, 10000, 0);
        SendMessageW(dialog, WM_COMMAND,
                     MAKEWPARAM(Win32ItemWindow::IdOf(ItemControl::ActionCombo), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
        last = DialogAnswers::TextOfWindow(combo);
        Enter(dialog, ItemControl::TextPhysicalStore1, rig.elsewhere.Make(u"a.txt", 1));
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    const DWORD start = GetTickCount();
    rig.main.Call(u"NewDMSItem");
    RecordProperty("milliseconds", static_cast<int>(GetTickCount() - start));
    std::printf("%lu ms from the call to the row\n", GetTickCount() - start);
    EXPECT_EQ(entries, 10001);
    EXPECT_TRUE(last.starts_with(u"Nr. 10000 ("));
    EXPECT_EQ(rig.Cell(1, u"PhysicalStore3"), u"10000");
}

} // namespace talvix
