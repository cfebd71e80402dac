#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/files.h"
#include "tests/com/component_rig.h"
#include "tests/com/saving_item.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

struct FilingRig : ComponentRig {
    FilingRig() { Attach(); }
    void File(std::int32_t operation, const Value& filed, bool write = true) {
        main.Call(u"AddDMSItem", 0, u"Re: Größe?", u"", Date{}, u"", Date{}, u"neu", u"Notiz", u"",
                  u"", u"", filed, operation, write, u"");
    }
    std::string Content(std::u16string_view name) const {
        return ReadRealFile(folder.Path() + u"\\" + std::u16string(name));
    }
    std::vector<std::u16string> Subjects() const {
        std::vector<std::u16string> subjects;
        for (int row = 1; row <= Rows(); ++row) {
            subjects.push_back(Cell(row, u"Subject"));
        }
        return subjects;
    }
    Object mail = MakeSavingItem("nachricht", {{u"Plan.dwg", "plan"}, {u"Angebot €.doc", "text"}});
};

/// A class of wrappers under the name that the component looks for, for the length of a test.
class StandInWrapper : public IClassFactory {
public:
    StandInWrapper() {
        CLSIDFromString(L"{5B3C2C61-7A54-4F0D-9D70-2B0B8A5C7E11}", &id_);
        for (const auto& [key, value] : Keys()) {
            OwnedKey opened;
            RegCreateKeyExW(HKEY_LOCAL_MACHINE, Wide(key), 0, nullptr, 0, KEY_WRITE, nullptr,
                            opened.Out(), nullptr);
            RegSetValueExW(opened.Get(), nullptr, 0, REG_SZ,
                           reinterpret_cast<const BYTE*>(value.c_str()),
                           static_cast<DWORD>((value.size() + 1) * sizeof(char16_t)));
        }
        CoRegisterClassObject(id_, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
    }
    StandInWrapper(const StandInWrapper&) = delete;
    StandInWrapper& operator=(const StandInWrapper&) = delete;
    virtual ~StandInWrapper() {
        CoRevokeClassObject(cookie_);
        const auto keys = Keys();
        for (auto each = keys.rbegin(); each != keys.rend(); ++each) {
            RegDeleteKeyW(HKEY_LOCAL_MACHINE, Wide(each->first));
        }
    }
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IClassFactory;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override {
        auto made = std::static_pointer_cast<Expando>(
            MakeSavingItem("sicher " + std::to_string(++count), {{u"Sicher.doc", "sicher"}}));
        made->With(u"Item", Nothing());
        wrappers.push_back(made);
        return UnknownOf(made)->QueryInterface(id, object);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    int count = 0;
    std::vector<std::shared_ptr<Expando>> wrappers;

private:
    /// Objects of this program carry no type information, so their type is called "Object".
    std::vector<std::pair<std::u16string, std::u16string>> Keys() const {
        const std::u16string classes = u"Software\\Classes\\";
        const std::u16string id = u"{5B3C2C61-7A54-4F0D-9D70-2B0B8A5C7E11}";
        return {{classes + u"Redemption.SafeObject", u"Stand-in"},
                {classes + u"Redemption.SafeObject\\CLSID", id},
                {classes + u"CLSID\\" + id, u"Stand-in"},
                {classes + u"CLSID\\" + id + u"\\InprocServer32", u"missing.dll"}};
    }
    CLSID id_{};
    DWORD cookie_ = 0;
};

} // namespace

TEST(ComponentFiling, AttachmentsAndMailBecomeRealFilesLastOneFirst) {
    FilingRig rig;
    rig.File(3, rig.mail);
    EXPECT_EQ(rig.Subjects(),
              (std::vector<std::u16string>{u"Angebot €.doc", u"Plan.dwg", u"Re: Größe?"}));
    EXPECT_EQ(rig.Content(u"Angebot €.doc"), "text");
    EXPECT_EQ(rig.Content(u"Plan.dwg"), "plan");
    EXPECT_EQ(rig.Content(u"Re_ Größe_.msg"), "nachricht");
    EXPECT_EQ(rig.journal.Count(u"Managing.WriteGridDataToItemBody"), 1U);
    EXPECT_EQ(rig.Cell(3, u"Status"), u"neu");
}

TEST(ComponentFiling, NothingIsOverwrittenAndTheRowShowsTheNewName) {
    FilingRig rig;
    rig.folder.Make(u"Plan.dwg", 10);
    const std::string before = rig.Content(u"Plan.dwg");
    rig.File(2, rig.mail);
    rig.File(2, rig.mail);
    EXPECT_EQ(rig.Subjects(), (std::vector<std::u16string>{u"Angebot €.doc", u"Plan (1).dwg",
                                                           u"Angebot € (1).doc", u"Plan (2).dwg"}));
    EXPECT_EQ(rig.Content(u"Plan.dwg"), before);
    EXPECT_EQ(rig.Content(u"Plan (2).dwg"), "plan");
    Win32Files files;
    EXPECT_EQ(files.List(rig.folder.Path()).files.size(), 5U); // and no temporary copies
}

TEST(ComponentFiling, TheRegisteredWrapperSavesForTheItem) {
    const StandInWrapper wrapper;
    FilingRig rig;
    rig.File(0, rig.mail);
    EXPECT_EQ(wrapper.count, 2);
    EXPECT_EQ(rig.Content(u"Re_ Größe_.msg"), "sicher 1");
    rig.File(1, rig.mail);
    EXPECT_EQ(rig.Content(u"Re_ Größe_ (1).msg"), "sicher 4");
    rig.File(2, rig.mail);
    EXPECT_EQ(rig.Content(u"Sicher.doc"), "sicher");
    EXPECT_EQ(rig.Rows(), 3);
    for (const auto& each : wrapper.wrappers) {
        EXPECT_EQ(each.use_count(), 1) << "a wrapper lives for one call only";
    }
}

TEST(ComponentFiling, HostileNamesAndReadOnlyTargetsAddNoRow) {
    FilingRig rig;
    const Object hostile = MakeSavingItem("x", {{u"..\\..\\entwischt.txt", "x"},
                                                {u"C:\\entwischt.txt", "x"},
                                                {u"a.txt:strom", "x"},
                                                {u"NUL.txt", "x"},
                                                {u"gut.txt", "gut"}});
    rig.File(2, hostile);
    EXPECT_EQ(rig.Subjects(), std::vector<std::u16string>{u"gut.txt"});
    EXPECT_FALSE(Win32Files().Query(u"C:\\entwischt.txt"));
}

TEST(ComponentFiling, AnItemThatIsNoItemAddsNothing) {
    FilingRig rig;
    rig.mail = std::make_shared<Expando>(u"Leer");
    DeleteFileW(Wide(Win32Files().TemporaryFolder() + u"\\tmp.msg"));
    for (int operation = -1; operation <= 4; ++operation) {
        rig.File(operation, rig.mail);
        rig.File(operation, 5);
        rig.File(operation, u"Text");
    }
    EXPECT_EQ(rig.Rows(), 0);
}

} // namespace talvix
