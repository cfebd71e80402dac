#include "automation/text.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/variant.h"
#include "platform/win32/wide.h"
#include "tests/com/component_rig.h"
#include "tests/proof/proof.h"

#include <gtest/gtest.h>

namespace talvix {

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
    const DialogAnswers answers;
    SetCurrentDirectoryW(Wide(rig.folder.Path())); // junk is a relative path to MkDirs
    std::size_t place = 0;
    for (DISPID member = 1; member <= 23; ++member) {
        for (const Value& value : junk) {
            for (const std::size_t count : {0U, 1U, 4U, 15U, 20U}) {
                if (place++ % ProofStep(6) != 0) { // each member and each value is among them
                    continue;
                }
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
    SetCurrentDirectoryW(L"C:\\"); // so that the folder can go
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
    const auto& dispatch = dynamic_cast<const DispatchObject&>(*rig.main.AsObject());
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
