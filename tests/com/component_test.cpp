#include "automation/coercion.h"
#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/variant.h"
#include "platform/win32/locale.h"
#include "tests/com/com_host.h"
#include "tests/fakes/expando.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

Expando::Handler ByName(std::u16string_view key, Value element) {
    return [key = std::u16string(key), element](std::span<const Value> arguments) {
        if (arguments.size() != 1 || arguments[0] != Value(key)) {
            throw Failure(failure_number::kBadIndex, u"No such element");
        }
        return element;
    };
}

/// A host of ours around the registered component and the registered grid.
struct ComponentRig {
    ComponentRig() {
        property->With(u"Value", folder.Path());
        const auto properties = std::make_shared<Expando>(u"UserProperties");
        properties->On(u"Item", ByName(u"Speicherort Dokumente", property));
        const auto page = std::make_shared<Expando>(u"Page");
        page->On(u"Controls", ByName(u"DMSGrid", grid.Get()));
        const auto inspector = std::make_shared<Expando>(u"Inspector");
        inspector->On(u"ModifiedFormPages", ByName(u"Dokumente", page));
        const auto application = std::make_shared<Expando>(u"Application");
        application->With(u"Version", u"10.0.0.2627");
        item->With(u"GetInspector", inspector)
            .With(u"Application", application)
            .With(u"UserProperties", properties);
        common->With(u"strCurrentUser", u"Erika Muster").With(u"AddMessageDescription", Empty());
        managing->With(u"Item", item).With(u"WriteGridDataToItemBody", Empty());
        managing->On(u"GetNextID", [this](std::span<const Value>) -> Value { return nextId++; });
    }
    void Attach() {
        const Object other = std::make_shared<Expando>(u"Other");
        main.Call(u"ReferenceLibraries", common, managing, other, other, other, other);
        main.Call(u"InitSGDMS");
        main.Call(u"Init");
    }
    int Rows() const { return ToLong(grid[u"Rows"].Call(u"Count"), locale); }
    std::u16string Cell(int row, std::u16string_view key) const {
        return ToText(grid(u"Rows", row).Call(u"Text", key), locale);
    }
    Win32Locale locale;
    TemporaryFolder folder;
    Journal journal;
    Late grid = CreateByName(u"TalvixGrid.Grid");
    Late main = CreateByName(u"TalvixDMS.Main");
    std::shared_ptr<Expando> property = std::make_shared<Expando>(u"UserProperty");
    std::shared_ptr<Expando> item = std::make_shared<Expando>(u"Item");
    std::shared_ptr<Expando> common = std::make_shared<Expando>(u"Common", &journal);
    std::shared_ptr<Expando> managing = std::make_shared<Expando>(u"Managing", &journal);
    int nextId = 1;
};

} // namespace

TEST(Component, ReadsARealFolderIntoTheRealGrid) {
    ComponentRig rig;
    rig.folder.Make(u"Größe.txt", 3000);
    rig.folder.MakeFolder(u"Pläne");
    rig.folder.Make(u"Pläne\\Grundriß.doc", 10);
    rig.Attach();
    rig.journal.Clear();
    rig.main.Call(u"AddFilesFromProjectFolderEvent");
    ASSERT_EQ(rig.Rows(), 2);
    EXPECT_EQ(rig.Cell(1, u"Subject"), u"Größe.txt");
    EXPECT_EQ(rig.Cell(1, u"ItemSize"), u"3 KB");
    EXPECT_NE(rig.Cell(1, u"ObjectDescription"), u"");
    EXPECT_EQ(rig.Cell(1, u"Creator"), u"Erika Muster");
    EXPECT_EQ(rig.Cell(2, u"PhysicalStore1"), rig.folder.Path() + u"\\Pläne\\Grundriß.doc");
    EXPECT_EQ(rig.Cell(2, u"PhysicalStore2"), u"\\Pläne");
    EXPECT_EQ(rig.Cell(2, u"PhysicalStore3"), u"-1");
    EXPECT_EQ(rig.journal.Count(u"Managing.WriteGridDataToItemBody"), 1U);
    EXPECT_TRUE(rig.grid(u"Rows", 1).Call(u"Value", u"CreationDate").Is<Date>());
    rig.main.Call(u"AddFilesFromProjectFolderEvent");
    EXPECT_EQ(rig.Rows(), 2);
    EXPECT_EQ(rig.journal.Count(u"Managing.WriteGridDataToItemBody"), 1U);
    EXPECT_EQ(rig.main.Call(u"strAddingFile"), Value(u"Grundriß.doc"));
    rig.main.Call(u"DereferenceLibraries");
}

TEST(Component, ShowsItsPicturesForMissingFilesAndLinks) {
    ComponentRig rig;
    rig.Attach();
    const std::u16string missing = rig.folder.Path() + u"\\fort.doc";
    rig.main.Call(u"AddFile", missing, u"fort", u"", u"");
    rig.main.Call(u"AddDMSItem", 2, u"Verweis", u"ich", Date{38000}, u"ich", Date{38000}, u"", u"",
                  u"http://example.org", u"", u"-1", Nothing(), -1, true, u"");
    ASSERT_EQ(rig.Rows(), 2);
    for (int row = 1; row <= 2; ++row) {
        EXPECT_TRUE(Late(rig.grid(u"Rows", row).Call(u"Picture", u"Icon")).operator bool());
        EXPECT_EQ(rig.grid(u"Rows", row).Call(u"Value", u"Icon"), Value(-1));
    }
    EXPECT_EQ(rig.Cell(2, u"ObjectDescription"), u"Internetverknüpfung");
    rig.folder.Make(u"fort.doc", 2000);
    rig.main.Call(u"Init");
    EXPECT_EQ(rig.grid(u"Rows", 1).Call(u"Picture", u"Icon"), Nothing());
    EXPECT_EQ(rig.Cell(1, u"ItemSize"), u"2 KB");
}

TEST(Component, EveryMemberAnswersWhateverItIsGiven) {
    ComponentRig rig;
    rig.Attach();
    ComPtr<IDispatch> main;
    ASSERT_EQ(CreateByName(u"TalvixDMS.Main", main), S_OK);
    const List list = std::make_shared<const std::vector<Value>>(std::vector<Value>{1, Null()});
    const Value junk[] = {Empty(),
                          Null(),
                          Missing(),
                          true,
                          1e300,
                          -1,
                          u"",
                          u"x",
                          std::u16string(100000, u'ß'),
                          Date{-1e9},
                          ErrorCode{5},
                          Nothing(),
                          list,
                          std::make_shared<Expando>(u"Leer")};
    for (DISPID member = 1; member <= 23; ++member) {
        if (member == 12) {
            continue; // shows a window
        }
        for (const Value& value : junk) {
            for (const std::size_t count : {0U, 1U, 4U, 15U, 20U}) {
                std::vector<VARIANT> arguments(count);
                for (VARIANT& argument : arguments) {
                    ToVariant(value, argument);
                }
                DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(count), 0};
                Variant result;
                EXCEPINFO exception{};
                EXPECT_EQ(main->Invoke(member, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                       &parameters, result.Get(), &exception, nullptr),
                          S_OK)
                    << member;
                for (VARIANT& argument : arguments) {
                    VariantClear(&argument);
                }
            }
        }
    }
}

TEST(Component, NoVariableOfTheCallerIsChanged) {
    ComponentRig rig;
    rig.Attach();
    BSTR path = SysAllocString(L"C:\\x\\a.doc");
    VARIANT arguments[4];
    for (VARIANT& argument : arguments) {
        argument.vt = VT_BYREF | VT_BSTR;
        argument.pbstrVal = &path;
    }
    DISPPARAMS parameters{arguments, nullptr, 4, 0};
    const auto& dispatch = dynamic_cast<const DispatchObject&>(rig.main.Target());
    EXPECT_EQ(dispatch.Dispatch()->Invoke(7, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr,
                                          nullptr, nullptr),
              S_OK);
    EXPECT_EQ(Bstr::View(path), u"C:\\x\\a.doc");
    EXPECT_EQ(rig.Rows(), 1);
    SysFreeString(path);
}

TEST(Component, PublicMembersAreReadAndWritten) {
    const Late main = CreateByName(u"TalvixDMS.Main");
    EXPECT_EQ(main.Call(u"StopImport"), Value(false));
    main.Set(u"StopImport", true);
    EXPECT_EQ(main.Call(u"StopImport"), Value(true));
    EXPECT_EQ(main.Call(u"strAddingFile"), Value(u""));
    main.Set(u"strAddingFile", u"Datei");
    EXPECT_EQ(main.Call(u"strAddingFile"), Value(u"Datei"));
    EXPECT_EQ(main.Call(u"MkDirs", u"x"), Value(false));
}

TEST(Component, GivesBackTheHostsObjects) {
    ComponentRig rig;
    const long before = rig.common.use_count();
    rig.Attach();
    EXPECT_GT(rig.common.use_count(), before);
    rig.main.Call(u"DereferenceLibraries");
    EXPECT_EQ(rig.common.use_count(), before);
}

} // namespace talvix
