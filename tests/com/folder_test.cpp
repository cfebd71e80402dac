#include "platform/win32/files.h"
#include "platform/win32/network.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"
#include "tests/com/component_rig.h"

#include <gtest/gtest.h>

#include <shlobj.h>

namespace talvix {

using namespace std::string_literals;

namespace {

constexpr const wchar_t* kSharesKey = L"SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Shares";

/// A share of this machine for the length of a test.
class OwnShare {
public:
    OwnShare(std::u16string name, const std::u16string& folder) : name_(std::move(name)) {
        const std::u16string data = u"MaxUses=1\0Path="s + folder + u"\0Type=0\0\0"s;
        OwnedKey key;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, kSharesKey, 0, nullptr, 0, KEY_WRITE, nullptr,
                        key.Out(), nullptr);
        RegSetValueExW(key.Get(), Wide(name_), 0, REG_MULTI_SZ,
                       reinterpret_cast<const BYTE*>(data.data()),
                       static_cast<DWORD>(data.size() * sizeof(char16_t)));
    }
    OwnShare(const OwnShare&) = delete;
    OwnShare& operator=(const OwnShare&) = delete;
    ~OwnShare() {
        OwnedKey key;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kSharesKey, 0, KEY_WRITE, key.Out()) ==
            ERROR_SUCCESS) {
            RegDeleteValueW(key.Get(), Wide(name_));
        }
    }
    /// The folder's network form.
    std::u16string Network(std::u16string_view below) const {
        std::u16string computer = *Win32Network().ComputerName();
        CharLowerW(WideBuffer(computer));
        return u"\\\\" + computer + u"\\" + name_ + u"\\" + std::u16string(below);
    }

private:
    std::u16string name_;
};

bool IsThere(std::u16string_view path) {
    return Win32Files().Query(path).has_value();
}

/// The browser's tree on a folder, then its OK button.
DialogAnswers::Step Choose(const std::u16string& folder) {
    return [folder](HWND dialog) {
        for (int attempt = 0; attempt < 3; ++attempt) {
            Sleep(300); // the tree fills after the dialog is shown
            SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(Wide(folder)));
        }
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    };
}

constexpr const char16_t* kBrowser = u"Verzeichnis auswählen";

} // namespace

TEST(ComponentFolder, MkDirsCreatesRealFoldersWithAllParents) {
    const ComponentRig rig;
    const std::u16string path = rig.folder.Path() + u"\\Größe\\€ Ж\\tief";
    EXPECT_EQ(rig.main.Call(u"MkDirs", path), Value(true));
    EXPECT_TRUE(IsThere(path));
    EXPECT_EQ(rig.main.Call(u"MkDirs", path + u"\\"), Value(true));
    const std::u16string file = rig.folder.Make(u"datei.txt", 1);
    EXPECT_EQ(rig.main.Call(u"MkDirs", file + u"\\x"), Value(false));
}

TEST(ComponentFolder, MkDirsWorksBelowAMappedDriveAndItsShare) {
    const ComponentRig rig;
    if (GetDriveTypeW(L"X:\\") != DRIVE_REMOTE) {
        GTEST_SKIP() << "there is no mapped drive";
    }
    EXPECT_EQ(rig.main.Call(u"MkDirs", u"X:\\Probe\\tief"), Value(true));
    EXPECT_EQ(rig.main.Call(u"MkDirs", u"\\\\srv\\daten\\Probe\\breit"), Value(true));
    EXPECT_TRUE(IsThere(u"X:\\Probe\\breit"));
    for (const auto* path : {L"X:\\Probe\\breit", L"X:\\Probe\\tief", L"X:\\Probe"}) {
        EXPECT_TRUE(RemoveDirectoryW(path));
    }
}

TEST(ComponentFolder, AFolderOnAMappedDriveIsStoredInNetworkForm) {
    ComponentRig rig;
    if (GetDriveTypeW(L"X:\\") != DRIVE_REMOTE) {
        GTEST_SKIP() << "there is no mapped drive";
    }
    rig.Attach();
    rig.property->With(u"Value", u"");
    rig.SetProperty(u"Projektnummer", u" 47/11 ");
    rig.settings = {{u"DOCUMENTS/RULES", u"Nr <Project Number>"}, {u"DOCUMENTS/PATH", u"X:\\P"}};
    DialogAnswers answers;
    answers.Answer(u"Dokumentenablage", IDYES);
    rig.main.Call(u"AddFile", u"C:\\x.txt", u"x", u"", u"");
    EXPECT_EQ(rig.StoredFolder(), u"\\\\srv\\daten\\P\\Nr 47_11");
    EXPECT_EQ(rig.Rows(), 1);
    EXPECT_EQ(answers.Seen(),
              std::vector<std::u16string>{
                  u"Dokumentenablage|Als automatischer Ordnerpfad wurde ermittelt: \r\n"
                  u"\\\\srv\\daten\\P\\Nr 47_11\r\n\r\nSind sie damit zufrieden?"});
}

TEST(ComponentFolder, TheRealBrowserSetsTheFolderAndItsSubFolders) {
    ComponentRig rig;
    rig.Attach();
    const std::u16string chosen = rig.folder.MakeFolder(u"Projekt Ä");
    const OwnShare share(u"Freigabe", rig.folder.Path());
    rig.settings = {{u"DOCUMENTS/SUB_ACTIVE", u"True"},
                    {u"DOCUMENTS/SUB_LIST", u"Pläne,Verträge\\2024"}};
    DialogAnswers answers;
    answers.Answer(kBrowser, IDCANCEL);
    rig.main.Call(u"btnDMSSetStore_Click");
    EXPECT_EQ(rig.StoredFolder(), rig.folder.Path());
    answers.Answer(kBrowser, Choose(chosen));
    rig.main.Call(u"btnDMSSetStore_Click");
    EXPECT_EQ(rig.StoredFolder(), share.Network(u"Projekt Ä"))
        << testing::PrintToString(answers.Seen());
}

TEST(ComponentFolder, RemovingThePathIsAskedForInARealMessageBox) {
    ComponentRig rig;
    rig.Attach();
    DialogAnswers answers;
    answers.Answer(u"Ordnerpfadangabe entfernen", IDNO);
    rig.main.Call(u"btnDMSDeletetStore_Click");
    EXPECT_EQ(rig.StoredFolder(), rig.folder.Path());
    answers.Answer(u"Ordnerpfadangabe entfernen", IDYES);
    rig.main.Call(u"btnDMSDeletetStore_Click");
    EXPECT_EQ(rig.StoredFolder(), u"");
    EXPECT_TRUE(IsThere(rig.folder.Path()));
}

TEST(ComponentFolder, MissingDataIsLoggedWithItsDetail) {
    ComponentRig rig;
    rig.Attach();
    rig.property->With(u"Value", u" ");
    rig.settings = {{u"DOCUMENTS/RULES", u"<Company Name><Project Number>"}};
    rig.main.Call(u"AddFilesFromProjectFolderEvent");
    EXPECT_EQ(rig.journal.Count(u"Common.Log 3500, (Fehlende Angaben: Projektnummer, Firmenname)"),
              1U);
}

TEST(ComponentFolder, TheRealFormShowsTheImportAndEndsByItself) {
    ComponentRig rig;
    for (int at = 0; at < 30; ++at) {
        const std::u16string name = u"Ordner " + ToText(Value(at), rig.locale);
        rig.folder.MakeFolder(name);
        rig.folder.Make(name + u"\\Datei " + ToText(Value(at), rig.locale) + u".txt", 1);
    }
    rig.Attach();
    DialogAnswers answers;
    std::u16string label;
    std::u16string button;
    answers.Answer(u"Aktulisierung läuft...", [&](HWND dialog) {
        label = DialogAnswers::TextOfWindow(GetDlgItem(dialog, 100));
        button = DialogAnswers::TextOfWindow(GetDlgItem(dialog, IDCANCEL));
    });
    rig.main.Call(u"AddFilesFromProjectFolder", true);
    EXPECT_EQ(rig.Rows(), 30);
    EXPECT_TRUE(label.starts_with(u"Dateiliste wird aktualisiert"));
    EXPECT_EQ(button, u"Abbrechen");
    EXPECT_EQ(rig.main.Call(u"strAddingFile"), Value(u""));
    EXPECT_EQ(rig.main.Call(u"StopImport"), Value(false));
}

TEST(ComponentFolder, AbbrechenInTheRealFormStopsTheImport) {
    ComponentRig rig;
    for (int at = 0; at < 400; ++at) {
        rig.folder.MakeFolder(u"Ordner " + ToText(Value(at), rig.locale));
    }
    rig.Attach();
    DialogAnswers answers;
    answers.Answer(u"Aktulisierung läuft...", IDCANCEL); // before the import begins
    rig.main.Call(u"AddFilesFromProjectFolder", true);
    EXPECT_EQ(rig.main.Call(u"StopImport"), Value(true));
    EXPECT_EQ(rig.Rows(), 0);
}

} // namespace talvix
