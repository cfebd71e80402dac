// Hostile names on a real disk, and hosts that do the worst from inside real calls.
#include "automation/text.h"
#include "platform/win32/files.h"
#include "platform/win32/wide.h"
#include "tests/com/component_rig.h"
#include "tests/com/container_rig.h"
#include "tests/com/dialog_answers.h"
#include "tests/com/saving_item.h"
#include "tests/proof/hostile_names.h"
#include "tests/proof/proof.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <utility>

namespace talvix {

namespace {

/// All that lies in a folder and below it, as paths with lengths.
std::vector<std::u16string> EverythingIn(const std::u16string& folder) {
    std::vector<std::u16string> found;
    const FolderListing listing = Win32Files().List(folder);
    for (const ListedFile& file : listing.files) {
        found.push_back(file.name + u" " + DecimalText(file.facts ? file.facts->length : -1));
    }
    for (const std::u16string& inner : listing.folders) {
        found.push_back(inner + u"\\");
        for (const std::u16string& below : EverythingIn(folder + u"\\" + inner)) {
            found.push_back(inner + u"\\" + below);
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

void FileOnDisk(unsigned seed, int names) {
    ComponentRig rig;
    const std::u16string project = rig.folder.MakeFolder(u"Projekt");
    rig.folder.Make(u"a.doc", 11);
    rig.property->With(u"Value", project);
    rig.Attach();
    ProofRandom random(seed);
    std::vector<RealAttachment> attachments;
    for (int at = 0; at < names; ++at) {
        attachments.push_back({HostileName(random), "anlage"});
    }
    rig.main.Call(u"AddDMSItem", 0, u"Betreff", u"", Date{}, u"", Date{}, u"", u"", u"", u"", u"",
                  MakeSavingItem("nachricht", attachments), 2, true, u"");
    std::vector<std::u16string> outside = EverythingIn(rig.folder.Path());
    std::erase_if(outside, [](const std::u16string& path) {
        return path.starts_with(u"Projekt\\") && path.find(u'\\', 8) == std::u16string::npos;
    });
    ASSERT_EQ(outside, std::vector<std::u16string>{u"a.doc 11"})
        << "only files directly in the project's folder";
    const std::vector<ListedFile> files = Win32Files().List(project).files;
    ASSERT_EQ(static_cast<std::size_t>(rig.Rows()), files.size());
    for (const ListedFile& file : files) {
        ASSERT_EQ(file.facts->length, 6) << ToUtf8(file.name);
    }
}

} // namespace

TEST(HostileDisk, AttachmentsBecomeFilesOfTheProjectsFolderOrNothing) {
    constexpr int kTogether = 20;
    const std::size_t rounds = ProofCount(1000, 20000) / kTogether;
    const auto isOnDrive = [] { return Win32Files().List(u"C:\\").files.size(); };
    const std::size_t before = isOnDrive();
    for (std::size_t round = 0; round < rounds; ++round) {
        const auto seed = static_cast<unsigned>(ProofSeed() + round);
        SCOPED_TRACE("seed " + std::to_string(seed));
        ASSERT_NO_FATAL_FAILURE(FileOnDisk(seed, kTogether));
    }
    EXPECT_EQ(isOnDrive(), before);
}

namespace {

/// A host that lets go of its component, or attaches it elsewhere, whenever it is asked anything.
struct WorstHost : ComponentRig {
    enum class Deed { Release, Dereference, Initialise, Import, ClearRows, CloseTheItem };

    explicit WorstHost(Deed deed) {
        for (const auto* name : {u"a.txt", u"b.txt", u"c.txt"}) {
            folder.Make(name, 5);
        }
        const auto worst = [this, deed](const Value& answer) {
            return [this, deed, answer](std::span<const Value>) {
                Do(deed);
                return answer;
            };
        };
        common->On(u"Log", worst(Empty()));
        managing->On(u"WriteGridDataToItemBody", worst(Empty()));
        managing->On(u"GetNextID", [this, deed](std::span<const Value>) -> Value {
            Do(deed);
            return nextId++;
        });
        common->On(u"ReadGlobalSetting", [this, deed](std::span<const Value> name) -> Value {
            Do(deed);
            return ByName(settings)(name);
        });
    }
    void Do(Deed deed) {
        if (!armed || depth > 0) {
            return;
        }
        ++depth;
        ++deeds;
        switch (deed) {
        case Deed::Release:
            main = Late();
            break;
        case Deed::Dereference:
            main.Call(u"DereferenceLibraries");
            break;
        case Deed::Initialise:
            main.Call(u"InitSGDMS");
            main.Call(u"Init");
            break;
        case Deed::Import:
            main.Call(u"AddFilesFromProjectFolderEvent");
            break;
        case Deed::ClearRows:
            grid[u"Rows"].Call(u"Clear");
            break;
        case Deed::CloseTheItem:
            managing->With(u"Item", Nothing());
            pages.clear();
            break;
        }
        --depth;
    }
    bool armed = false;
    int depth = 0;
    int deeds = 0;
};

using Step = void (*)(const Late& main);
constexpr Step kSteps[] = {
    [](const Late& main) {
        main.Call(u"AddFile", u"C:\\windows\\win.ini", u"x", u"", u"", Date{}, Date{});
    },
    [](const Late& main) { main.Call(u"AddFilesFromProjectFolderEvent"); },
    [](const Late& main) { main.Call(u"Init"); },
    [](const Late& main) {
        main.Call(u"AddDMSItem", 0, u"Betreff", u"", Date{}, u"", Date{}, u"", u"", u"", u"", u"",
                  MakeSavingItem("nachricht", {{u"plan.dwg", "plan"}}), 3, true, u"");
    },
};

} // namespace

TEST(WorstHosts, WhateverTheyDoFromInsideACallTheServerStandsAndServesTheNext) {
    using Deed = WorstHost::Deed;
    int deeds = 0;
    const DialogAnswers answers; // some end in a question about the folder
    for (const Deed deed : {Deed::Release, Deed::Dereference, Deed::Initialise, Deed::Import,
                            Deed::ClearRows, Deed::CloseTheItem}) {
        for (const Step step : kSteps) {
            WorstHost host(deed);
            host.Attach();
            host.armed = true;
            const Late main = host.main; // as a call holds its object while it lasts
            step(main);
            host.armed = false;
            deeds += host.deeds;
        }
    }
    EXPECT_GT(deeds, 20);
    ComponentRig next;
    next.folder.Make(u"a.txt", 5);
    next.Attach();
    next.main.Call(u"AddFilesFromProjectFolderEvent");
    EXPECT_EQ(next.Rows(), 1);
}

namespace {

/// Destroys the window, and with it the control, from inside one of the control's events.
class Destroyer : public EventSink {
public:
    explicit Destroyer(std::u16string_view at, ContainerRig& rig) : at_(at), rig_(rig) {}
    void OnEvent(std::u16string_view name, std::span<Value>) override {
        if (name == at_ && !std::exchange(isDone, true)) {
            DestroyWindow(rig_.frame);
            rig_.container = nullptr;
            rig_.grid = Late();
        }
    }
    bool isDone = false;

private:
    std::u16string at_;
    ContainerRig& rig_;
};

} // namespace

TEST(WorstHosts, AControlDestroyedFromInsideItsEventsHarmsNobody) {
    for (const auto* name :
         {u"MouseDown", u"MouseUp", u"Click", u"DblClick", u"KeyDown", u"BeforeClickSort"}) {
        SCOPED_TRACE(ToUtf8(name));
        ContainerRig rig;
        const HWND window = rig.window;
        const auto destroyer = std::make_shared<Destroyer>(name, rig);
        auto subscription = rig.grid.AsObject()->Subscribe(destroyer, {});
        const int y = rig.MiddleOf(2);
        rig.Click(20, y);
        SendMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(20, y));
        SendMessageW(window, WM_KEYDOWN, VK_DOWN, 0);
        rig.Click(20, 5);
        EXPECT_TRUE(destroyer->isDone);
        EXPECT_FALSE(IsWindow(window));
        subscription.reset();
    }
}

} // namespace talvix
