#include "tests/contracts/culture_contract.h"
#include "tests/contracts/files_contract.h"
#include "tests/contracts/registry_contract.h"
#include "tests/contracts/shell_contract.h"
#include "tests/contracts/system_contract.h"
#include "tests/fakes/fake_platform.h"

namespace talvix {

namespace {

struct FakeFilesRig {
    FakeFilesRig() { files.MakeFolder(Folder()); }
    Files& Port() { return files; }
    std::u16string Folder() const { return u"P:\\Proj"; }
    void Make(std::u16string_view name, std::int64_t bytes) {
        files.MakeFile(Folder() + u"\\" + std::u16string(name), bytes);
    }
    void MakeFolder(std::u16string_view name) {
        files.MakeFolder(Folder() + u"\\" + std::u16string(name));
    }
    Journal journal;
    FakeFiles files{journal};
};

struct FakeShellRig {
    Shell& Port() { return shell; }
    std::u16string File(std::u16string_view name) {
        std::u16string path = u"P:\\Proj\\" + std::u16string(name);
        files.MakeFile(path, 1);
        return path;
    }
    std::int64_t Length(std::u16string_view path) {
        const auto facts = files.Query(path);
        return facts ? facts->length : -1;
    }
    Journal journal;
    FakeFiles files{journal};
    FakeShell shell{journal, files};
};

struct FakeRegistryRig {
    Registry& Port() { return registry; }
    std::u16string Key() const { return u"Software\\Talvix\\Test"; }
    Journal journal;
    FakeRegistry registry{journal};
};

struct FakeSystemRig {
    void Post(std::function<void()> event) { timers.Post(std::move(event)); }
    Journal journal;
    FakeClock clock{journal};
    FakeSystemInfo system{journal};
    FakeTimers timers{journal};
    FakePictures pictures{journal};
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, FilesContract, FakeFilesRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, RegistryContract, FakeRegistryRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, ShellContract, FakeShellRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, SystemContract, FakeSystemRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, GermanContract, FakeCulture);

} // namespace talvix
