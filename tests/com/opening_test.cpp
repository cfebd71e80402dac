#include "automation/text.h"
#include "platform/win32/files.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"
#include "tests/com/component_rig.h"
#include "tests/com/dialog_answers.h"
#include "tests/com/saving_item.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

/// A program that stands for whatever opens a kind of documents, for the length of a test.
class RegisteredOpener {
public:
    RegisteredOpener() {
        const std::u16string command =
            u"\"" + ProductFolder() + u"talvix_record_opened.exe\" \"%1\"";
        Set(u".talvixtest", u"TalvixTest");
        Set(u"TalvixTest\\shell\\open\\command", command);
        before_ = Get(u"http\\shell\\open\\command");
        Set(u"http\\shell\\open\\command", command);
        SetEnvironmentVariableW(L"TALVIX_RECORD", Wide(record_));
    }
    RegisteredOpener(const RegisteredOpener&) = delete;
    RegisteredOpener& operator=(const RegisteredOpener&) = delete;
    ~RegisteredOpener() {
        Set(u"http\\shell\\open\\command", before_);
        for (const auto* key : {L"TalvixTest\\shell\\open\\command", L"TalvixTest\\shell\\open",
                                L"TalvixTest\\shell", L"TalvixTest", L".talvixtest"}) {
            RegDeleteKeyW(HKEY_CLASSES_ROOT, key);
        }
    }
    /// What was opened and its working folder, as two lines; "" when nothing was.
    std::string Opened() const {
        for (int wait = 0; wait < 200; ++wait) {
            const std::string content =
                Win32Files().Query(record_) ? ReadRealFile(record_) : std::string();
            if (content.ends_with('\n')) {
                DeleteFileW(Wide(record_));
                return content;
            }
            Sleep(25);
        }
        return {};
    }

private:
    static void Set(const std::u16string& key, const std::u16string& text) {
        RegSetValueW(HKEY_CLASSES_ROOT, Wide(key), REG_SZ, Wide(text),
                     static_cast<DWORD>(text.size() * sizeof(char16_t)));
    }
    static std::u16string Get(const std::u16string& key) {
        std::u16string text(1024, u'\0');
        LONG bytes = 2048;
        const LSTATUS status =
            RegQueryValueW(HKEY_CLASSES_ROOT, Wide(key), WideBuffer(text), &bytes);
        return status == ERROR_SUCCESS ? text.substr(0, text.find(u'\0')) : std::u16string();
    }
    TemporaryFolder folder_;
    std::u16string record_ = folder_.Path() + u"\\record.txt";
    std::u16string before_;
};

} // namespace

TEST(ComponentOpening, AFileIsOpenedByItsProgramInItsFolder) {
    const RegisteredOpener opener;
    ComponentRig rig;
    rig.Attach();
    rig.folder.MakeFolder(u"Pläne");
    const std::u16string path = rig.folder.Make(u"Pläne\\Größe 5.talvixtest", 1);
    rig.main.Call(u"AddFile", path, u"Plan", u"", u"");
    rig.main.Call(u"OpenDocument", 1);
    EXPECT_EQ(opener.Opened(), ToUtf8(path + u"\n" + rig.folder.Path() + u"\\Pläne\n"));
    rig.grid.Set(u"CurrentRow", 1);
    rig.main.Call(u"btnOpenDocument_Click");
    EXPECT_NE(opener.Opened(), "");
}

TEST(ComponentOpening, AnAdministratorsSwitchAsksFirst) {
    constexpr const wchar_t* kPolicy = L"Software\\Policies\\Talvix\\DMS";
    HKEY key = nullptr;
    RegCreateKeyW(HKEY_CURRENT_USER, kPolicy, &key);
    const OwnedKey policy(key);
    RegSetValueExW(policy.Get(), L"AskTypes", 0, REG_SZ,
                   reinterpret_cast<const BYTE*>(L".talvixtest"), 12 * sizeof(wchar_t));
    {
        const RegisteredOpener opener;
        ComponentRig rig;
        rig.Attach();
        const std::u16string path = rig.folder.Make(u"a.talvixtest", 1);
        rig.main.Call(u"AddFile", path, u"Plan", u"", u"");
        DialogAnswers answers;
        answers.Answer(u"Dokument öffnen", IDNO);
        rig.main.Call(u"OpenDocument", 1);
        answers.Answer(u"Dokument öffnen", IDYES);
        rig.main.Call(u"OpenDocument", 1);
        EXPECT_TRUE(opener.Opened().starts_with(ToUtf8(path)));
        ASSERT_EQ(answers.Seen().size(), 2U);
        EXPECT_EQ(answers.Seen()[0],
                  u"Dokument öffnen|Soll „" + path + u"“ wirklich geöffnet werden?");
    }
    RegDeleteKeyW(HKEY_CURRENT_USER, kPolicy);
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Policies\\Talvix");
}

TEST(ComponentOpening, ALinkIsHandedOverAsItStands) {
    const RegisteredOpener opener;
    ComponentRig rig;
    rig.Attach();
    rig.main.Call(u"AddDMSItem", 2, u"Verweis", u"", Date{38000}, u"", Date{38000}, u"", u"",
                  u"http://example.org/a?b=c&d", u"", u"-1", Nothing(), -1, true, u"");
    rig.main.Call(u"OpenDocument", 1);
    EXPECT_TRUE(opener.Opened().starts_with("http://example.org/a?b=c&d\n"));
}

} // namespace talvix
