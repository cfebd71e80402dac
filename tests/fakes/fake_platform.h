#pragma once

#include "automation/trace.h"
#include "platform/platform.h"
#include "tests/fakes/fake_culture.h"
#include "tests/fakes/journal.h"

#include <deque>
#include <functional>
#include <map>
#include <set>

namespace talvix {

/// Files and folders by path, without case; folders exist by their files or by MakeFolder.
class FakeFiles : public Files {
public:
    explicit FakeFiles(Journal& journal) : journal_(journal) {}
    void MakeFile(std::u16string_view path, std::int64_t length);
    void MakeFolder(std::u16string_view path);
    void Remove(std::u16string_view path) { entries_.erase(Key(path)); }
    std::optional<FileFacts> Query(std::u16string_view path) override;
    FolderListing List(std::u16string_view folder) override;
    std::set<std::u16string> silentRoots; ///< upper-case network roots that do not answer

private:
    struct Entry {
        std::u16string path;
        FileFacts facts;
    };
    std::u16string Key(std::u16string_view path) const;
    Journal& journal_;
    FakeCulture culture_;
    std::map<std::u16string, Entry> entries_;
};

class FakeShell : public Shell {
public:
    explicit FakeShell(Journal& journal) : journal_(journal) {}
    std::int32_t SmallIconIndex(std::u16string_view path) override;
    std::u16string TypeName(std::u16string_view path) override;
    bool HasOwnIcon(std::u16string_view path) override;
    std::int64_t SmallIconList() override;

private:
    Journal& journal_;
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
    std::optional<SystemVersion> version = SystemVersion{2, 6, 1};
    std::int32_t pixelsPerInch = 96;

private:
    Journal& journal_;
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
    FakeShell shell{journal};
    FakeRegistry registry{journal};
    FakeSystemInfo system{journal};
    FakeClock clock{journal};
    FakeCulture locale;
    FakeTimers timers{journal};
    FakePictures pictures{journal};
    FakeTrace trace;
    Platform ports{files, shell, registry, system, clock, locale, timers, pictures};
};

} // namespace talvix
