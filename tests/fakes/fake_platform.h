#pragma once

#include "automation/trace.h"
#include "platform/platform.h"
#include "tests/fakes/fake_culture.h"
#include "tests/fakes/fake_dialogs.h"
#include "tests/fakes/journal.h"

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <utility>

namespace talvix {

/// Files and folders by path, without case; folders exist by their files or by MakeFolder.
class FakeFiles : public Files {
public:
    explicit FakeFiles(Journal& journal) : journal_(journal) {}
    void MakeFile(std::u16string_view path, std::int64_t length);
    void MakeFolder(std::u16string_view path);
    void Clear() { entries_.clear(); }
    std::optional<FileFacts> Query(std::u16string_view path) override;
    std::u16string FullPath(std::u16string_view path) override;
    FolderListing List(std::u16string_view folder) override;
    void CreateFolder(std::u16string_view path) override;
    Renamed Rename(std::u16string_view from, std::u16string_view to) override;
    void Remove(std::u16string_view path) override;
    std::u16string TemporaryFolder() override;
    std::u16string CurrentFolder() override { return u"C:\\Start"; }
    /// What the shell's copy does; false when the target cannot be written.
    bool CopyFile(std::u16string_view source, std::u16string_view target);
    std::set<std::u16string> links;       ///< upper-case paths of links to files
    std::set<std::u16string> silentRoots; ///< upper-case network roots that do not answer
    std::set<std::u16string> readOnly;    ///< upper-case folders that take nothing new
    bool pathsAreFull = false; ///< all paths count as such, which spares long ones the work
    /// Lists folders in place of what was made; nothing for those that it does not know.
    std::function<std::optional<FolderListing>(std::u16string_view folder)> onList;
    /// Runs before a rename, as somebody else on the network might.
    std::function<void(std::u16string_view to)> beforeRename;

private:
    struct Entry {
        std::u16string path;
        FileFacts facts;
    };
    std::u16string Key(std::u16string_view given) const;
    bool TakesNew(std::u16string_view path) const;
    Journal& journal_;
    FakeCulture culture_;
    std::map<std::u16string, Entry> entries_;
};

class FakeFileAnswers : public FileAnswers {
public:
    explicit FakeFileAnswers(Journal& journal) : journal_(journal) {}
    std::optional<std::int32_t> AskForIcon(std::u16string_view path) override;
    std::optional<std::u16string> AskForTypeName(std::u16string_view path) override;
    bool CarriesOwnIcon(std::u16string_view path) override;
    bool HaveClassesChanged() override { return std::exchange(haveChanged, false); }
    bool haveChanged = false;
    std::set<std::u16string> unknown; ///< paths that the system knows nothing of

private:
    Journal& journal_;
};

class FakeShell : public Shell {
public:
    FakeShell(Journal& journal, FakeFiles& files)
        : answers(journal), journal_(journal), files_(files) {}
    FileClasses& Classes() override { return classes_; }
    std::u16string TypeName(std::u16string_view path) override { return classes_.TypeName(path); }
    std::int64_t SmallIconList() override;
    ShellCopy Copy(std::u16string_view source, std::u16string_view target) override;
    void Open(std::u16string_view what, std::u16string_view workingFolder) override;
    std::int32_t ShowProperties(std::u16string_view path, std::int64_t owner) override;
    /// The answer to "replace the file?"
    bool replaces = false;
    std::int32_t copyResult = 0; ///< another number makes every copy fail

    FakeFileAnswers answers;

private:
    Journal& journal_;
    FakeFiles& files_;
    FileClasses classes_{answers};
};

class FakeRegistry : public Registry {
public:
    explicit FakeRegistry(Journal& journal) : journal_(journal) {}
    std::optional<RegistryValue> Read(std::uint32_t root, std::u16string_view key,
                                      std::u16string_view name) override;
    void WriteText(std::uint32_t root, std::u16string_view key, std::u16string_view name,
                   std::u16string_view text) override;
    void WriteNumber(std::uint32_t root, std::u16string_view key, std::u16string_view name,
                     std::uint32_t number) override;

private:
    Journal& journal_;
    std::map<std::u16string, RegistryValue> values_;
};

class FakeSystemInfo : public SystemInfo {
public:
    explicit FakeSystemInfo(Journal& journal) : journal_(journal) {}
    std::optional<SystemVersion> Version() override {
        journal_.Step(u"version");
        return version;
    }
    std::int32_t PixelsPerInch() override { return pixelsPerInch; }
    std::u16string UniqueText() override;
    std::optional<SystemVersion> version = SystemVersion{2, 6, 1};
    std::int32_t pixelsPerInch = 96;

private:
    Journal& journal_;
    int unique_ = 0;
};

class FakeClock : public Clock {
public:
    explicit FakeClock(Journal& journal) : journal_(journal) {}
    Date Now() override {
        journal_.Step(u"clock");
        return now;
    }
    Date now{38000.5};

private:
    Journal& journal_;
};

class FakeTimers : public Timers {
public:
    explicit FakeTimers(Journal& journal) : journal_(journal) {}
    void RunPending() override;
    /// Queues an event that the next RunPending runs.
    void Post(std::function<void()> event) { events_.push_back(std::move(event)); }
    std::function<void()> onPending;

private:
    Journal& journal_;
    std::deque<std::function<void()>> events_;
};

class FakePictures : public Pictures {
public:
    explicit FakePictures(Journal& journal) : journal_(journal) {}
    Value Picture(std::int32_t number) override;

private:
    Journal& journal_;
    std::map<std::int32_t, Value> pictures_;
};

class FakeTrace : public Trace {
public:
    void Note(std::u16string_view procedure, std::u16string_view text) override;
    std::vector<std::u16string> notes;
};

/// All ports at once, writing one journal.
struct FakePlatform {
    Journal journal;
    FakeFiles files{journal};
    FakeShell shell{journal, files};
    FakeRegistry registry{journal};
    FakeSystemInfo system{journal};
    FakeClock clock{journal};
    FakeCulture locale;
    FakeTimers timers{journal};
    FakePictures pictures{journal};
    FakeTrace trace;
    FakeNetwork network{journal};
    FakeMessages messages{journal};
    FakeDialogs dialogs{journal};
    FakeObjects objects{journal};
    FakeMenus menus{journal};
    Platform ports{files,    shell,   registry, system,  clock,   locale, timers,
                   pictures, network, messages, dialogs, objects, menus};
};

} // namespace talvix
