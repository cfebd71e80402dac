// What clients that are bound to the type libraries hold: numbers that never change, and what each
// member is there.
#include "automation/text.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/registration.h"
#include "platform/win32/wide.h"
#include "tests/com/com_host.h"

#include <gtest/gtest.h>

#include <map>
#include <span>

namespace talvix {

namespace {

struct Frozen {
    const char* name;
    const char* guid;
    const char* numbers;
};

constexpr Frozen kComponent[] = {
    {"library TalvixDMS", "{282C5C28-4093-47A9-AC7B-D07D65283D24}", ""},
    {"dispinterface _Main", "{0015F9EC-18BB-43F5-97DF-2D1242834241}",
     "ReferenceLibraries=1 DereferenceLibraries=2 InitSGDMS=3 Init=4 "
     "btnOpenFolder_Click=5 AddDMSItem=6 AddFile=7 FillActionCombo=8 NewDMSItem=9 "
     "DeleteDMSItem=10 OpenDocument=11 AddFilesFromProjectFolder=12 "
     "AddFilesFromProjectFolderEvent=13 btnOpenDocument_Click=14 "
     "btnNewDocument_Click=15 btnChangeDocument_Click=16 "
     "btnDeleteDocument_Click=17 btnExportDocuments_Click=18 MkDirs=19 "
     "btnDMSSetStore_Click=20 btnDMSDeletetStore_Click=21 StopImport=22 "
     "strAddingFile=23"},
    {"coclass Main", "{E84DBBFE-52C2-4F6C-91CC-137B302D6569}", ""},
    {"enum DocumentKind", "{ED28D4A9-FA1D-4D46-BC43-3043EDFB6777}",
     "documentFile=0 documentOutlookItem=1 documentInternetLink=2"},
    {"enum ItemOperation", "{985FCF9C-B5DB-4EA9-A910-6DD81A0780F3}",
     "itemNone=-1 itemWhole=0 itemWithoutAttachments=1 itemAttachments=2 "
     "itemAndAttachments=3"},
    {"enum DocumentChoice", "{FAC139AD-E9D4-49A2-81B9-1579A042466C}", "selectedDocuments=-1"},
    {"enum DocumentPicture", "{C9F5FCDB-115C-4A9E-B173-ABF64EEB8C49}",
     "pictureMissingFile=1 pictureInternetLink=2"},
};

constexpr Frozen kGrid[] = {
    {"library TalvixGrid", "{D3001DF0-2049-41D6-91A8-42B340E0C8F2}", ""},
    {"dispinterface _Grid", "{3D3A5F0D-F554-4047-A91F-E8F43660FBF4}",
     "Columns=1 Rows=2 Groups=3 Selection=4 CurrentRow=5 Redraw=6 GroupByBox=7 "
     "GroupByBoxText=8 GroupIndent=9 ImageList=10 MultiSelect=11 FullRowSelect=12 "
     "AllowEdit=13 HeaderVisible=14 hWnd=15 Find=16 HitTest=17 Sort=18 "
     "RefreshRows=19 RefreshSort=20 Expand=21 ExpandAll=22 CollapseAll=23 "
     "SaveRowsAsText=24 LoadRowsFromText=25 Filter=26 FilterColumn=27 "
     "SaveLayout=28 LoadLayout=29 FileColumn=30 SelectionText=31 FilterCount=32"},
    {"dispinterface _Columns", "{B5EC82C2-51CE-4734-B4D4-84D278DE49C5}",
     "_NewEnum=-4 Item=0 Count=1 Add=2"},
    {"dispinterface _Column", "{81B82AE9-39F0-4055-9349-4E8C80EB25AF}",
     "Key=1 Position=2 Index=3 Caption=4 DataType=5 Width=6 Alignment=7 "
     "HeaderAlignment=8 Hidden=9 SortOrder=10 BestFit=11"},
    {"dispinterface _Rows", "{D68BD508-7A78-4EB3-BACF-840F4ABAC893}",
     "_NewEnum=-4 Item=0 Count=1 Add=2 Remove=3 Clear=4"},
    {"dispinterface _Row", "{16899853-CE6B-4F2D-8FCD-D997C575A2DD}",
     "Value=0 Text=1 Picture=2 IsGroup=3 Number=4 Level=5 Expanded=6 Selected=7 "
     "Id=8"},
    {"dispinterface _Groups", "{E5927E62-6B3E-4B46-B179-9B6FD59578C2}",
     "_NewEnum=-4 Item=0 Count=1 Add=2 Remove=3 Clear=4"},
    {"dispinterface _Selection", "{15128D28-82AC-440B-A3E2-025564C017F4}",
     "_NewEnum=-4 Item=0 Count=1 Add=2 Clear=3"},
    {"dispinterface _Range", "{C0E3D14B-D787-4AA3-864C-D3590F7E3C55}", "First=1 Last=2"},
    {"dispinterface _HitTest", "{CE48F082-4F1A-408F-8C32-A26BD118FA86}", "Row=1 Column=2 Area=3"},
    {"dispinterface _DroppedData", "{2AAF11C2-C8BB-4582-B2AA-476B65255461}",
     "GetData=1 GetFormat=2 Files=3 Text=4"},
    {"dispinterface DTalvixGridEvents", "{2E951607-4124-4755-B9BB-E6DACE73353A}",
     "AfterGroupChange=1 BeforeClickSort=2 BeforeGroupChange=3 Click=4 DblClick=5 "
     "KeyDown=6 MouseDown=7 MouseUp=8 OLEDragOver=9 OLEDragDrop=10"},
    {"coclass Grid", "{C28A2FA3-035F-4B75-84D5-879F28369D1D}", ""},
    {"enum GridSortOrder", "{88A69C05-6629-45CF-980B-2D52D957E11E}",
     "gridUnsorted=-1 gridAscending=0 gridDescending=1"},
    {"enum GridDataType", "{FB7C59F6-1D58-4B12-9E5E-BDD89F68044A}",
     "gridLong=3 gridDate=7 gridText=8 gridImage=65"},
    {"enum GridAlignment", "{A4909F4F-9C82-42FB-B537-C82C5B278F2E}",
     "gridCentred=3 gridLeft=4 gridRight=6"},
    {"enum GridArea", "{2827DAEF-C386-415C-B961-E0C4F5ED9B5D}",
     "gridNothing=0 gridGroupByBoxArea=1 gridHeading=2 gridCell=3 "
     "gridGroupHeading=4"},
    {"enum GridGroupOperation", "{6B4AC4F0-9379-4B88-9E59-91EA38D26C09}",
     "gridAddGroup=1 gridRemoveGroup=2 gridMoveGroup=3"},
    {"enum GridSortType", "{E8F3EBC4-C46C-4025-8E05-E7CCA7282AC3}", "gridSortByType=0"},
    {"enum GridMouseButton", "{D2F267B2-D679-40E7-A392-D241B787613D}",
     "gridLeftButton=1 gridRightButton=2 gridMiddleButton=4"},
    {"enum GridShiftKeys", "{1506A5BB-7559-46EA-81B3-21C3AAFEC81C}",
     "gridShift=1 gridCtrl=2 gridAlt=4"},
    {"enum GridDragState", "{15160646-3342-41E1-95C0-503BF82B0166}",
     "gridDragEntered=0 gridDragLeft=1 gridDragOver=2"},
    {"enum GridDropEffect", "{2A61B15A-D069-47C2-A5F0-539E739BB17D}",
     "gridDropNone=0 gridDropCopy=1 gridDropMove=2 gridDropLink=4"},
    {"enum GridDataFormat", "{05CC899E-3719-402A-A474-8F8BD564031F}",
     "gridFormatText=1 gridFormatUnicodeText=13 gridFormatFiles=15"},
};

constexpr Frozen kProject[] = {
    {"library TalvixProject", "{DD223568-6086-4732-8483-BB349E85047A}", ""},
    {"dispinterface _Project", "{D4D1545F-A699-4465-95A2-F21520D0C0D0}",
     "New=1 Open=2 Save=3 SaveAs=4 Close=5 Import=6 Export=7 Rows=8 Grid=9 "
     "Main=10 Path=11 ReadOnly=12 Changed=13 Number=14 Name=15 Company=16 "
     "Folder=17 Setting=18 Messages=19"},
    {"coclass Project", "{784873F0-51D6-438C-A182-8283F1B915D3}", ""},
};

struct Library {
    const char16_t* file;
    std::span<const Frozen> frozen;
};
const Library kLibraries[] = {
    {u"TalvixDMS.dll", kComponent}, {u"TalvixGrid.ocx", kGrid}, {u"TalvixProject.dll", kProject}};

/// One type of a library, and how to walk over what it has.
class Type {
public:
    explicit Type(ComPtr<ITypeInfo> info) : info_(std::move(info)) {
        info_->GetTypeAttr(&attributes_);
    }
    Type(const Type&) = delete;
    Type& operator=(const Type&) = delete;
    ~Type() { info_->ReleaseTypeAttr(attributes_); }

    const TYPEATTR& Attributes() const { return *attributes_; }
    ITypeInfo* Info() const { return info_.Get(); }
    std::string Name(MEMBERID member = MEMBERID_NIL) const {
        Bstr name;
        info_->GetDocumentation(member, name.Out(), nullptr, nullptr, nullptr);
        return ToUtf8(name.Text());
    }
    std::string Help(MEMBERID member = MEMBERID_NIL) const {
        Bstr help;
        info_->GetDocumentation(member, nullptr, help.Out(), nullptr, nullptr);
        return ToUtf8(help.Text());
    }
    template <typename Work>
    void ForEachFunction(const Work& work) const {
        for (UINT at = 0; at < attributes_->cFuncs; ++at) {
            FUNCDESC* function = nullptr;
            info_->GetFuncDesc(at, &function);
            work(*function);
            info_->ReleaseFuncDesc(function);
        }
    }
    template <typename Work>
    void ForEachVariable(const Work& work) const {
        for (UINT at = 0; at < attributes_->cVars; ++at) {
            VARDESC* variable = nullptr;
            info_->GetVarDesc(at, &variable);
            work(*variable);
            info_->ReleaseVarDesc(variable);
        }
    }
    /// "Count=1 Add=2", a dispatch interface's members by their numbers, an enumeration's in order.
    std::string Numbers() const {
        std::map<MEMBERID, std::string> members;
        ForEachFunction([&](const FUNCDESC& each) { members[each.memid] = Name(each.memid); });
        std::string text;
        for (const auto& [number, name] : members) {
            // What a dispatch interface takes over from IDispatch is no member of its own.
            if (number < 0x60000000) {
                text += " " + name + "=" + std::to_string(number);
            }
        }
        ForEachVariable([&](const VARDESC& each) {
            const LONG number = each.varkind == VAR_CONST ? each.lpvarValue->lVal : each.memid;
            text += " " + Name(each.memid) + "=" + std::to_string(number);
        });
        return text.empty() ? text : text.substr(1);
    }
    std::string KindAndName() const {
        static const std::map<TYPEKIND, const char*> kinds{
            {TKIND_DISPATCH, "dispinterface "}, {TKIND_COCLASS, "coclass "}, {TKIND_ENUM, "enum "}};
        const auto kind = kinds.find(attributes_->typekind);
        return (kind == kinds.end() ? "other " : kind->second) + Name();
    }

private:
    ComPtr<ITypeInfo> info_;
    TYPEATTR* attributes_ = nullptr;
};

ComPtr<ITypeLib> Load(const Library& library) {
    ComPtr<ITypeLib> loaded;
    EXPECT_EQ(LoadTypeLibEx(Wide(ProductFolder() + library.file), REGKIND_NONE, loaded.Out()),
              S_OK);
    return loaded;
}

template <typename Work>
void ForEachType(const Library& library, const Work& work) {
    const ComPtr<ITypeLib> loaded = Load(library);
    for (UINT at = 0; at < loaded->GetTypeInfoCount(); ++at) {
        ComPtr<ITypeInfo> info;
        ASSERT_EQ(loaded->GetTypeInfo(at, info.Out()), S_OK);
        work(Type(std::move(info)));
    }
}

/// The kind of automation value, "_Row" for a pointer to that interface, "GridArea" for an
/// enumeration.
std::string KindOf(const Type& type, const TYPEDESC& described) {
    const TYPEDESC& kind = described.vt == VT_PTR ? *described.lptdesc : described;
    if (kind.vt != VT_USERDEFINED) {
        return std::to_string(kind.vt);
    }
    ComPtr<ITypeInfo> info;
    const HRESULT found = type.Info()->GetRefTypeInfo(kind.hreftype, info.Out());
    return FAILED(found) ? "unknown" : Type(info).Name();
}

std::string Guid(REFGUID guid) {
    return ToUtf8(GuidText(guid));
}

} // namespace

TEST(TypeLibraries, GuidsAndNumbersAreFrozen) {
    for (const Library& library : kLibraries) {
        std::map<std::string, std::string> present;
        const ComPtr<ITypeLib> loaded = Load(library);
        TLIBATTR* attributes = nullptr;
        ASSERT_EQ(loaded->GetLibAttr(&attributes), S_OK);
        present[library.frozen[0].name] = Guid(attributes->guid) + " ";
        loaded->ReleaseTLibAttr(attributes);
        ForEachType(library, [&](const Type& type) {
            present[type.KindAndName()] = Guid(type.Attributes().guid) + " " + type.Numbers();
        });
        for (const Frozen& each : library.frozen) {
            EXPECT_EQ(present[each.name], std::string(each.guid) + " " + each.numbers) << each.name;
        }
        EXPECT_EQ(present.size(), library.frozen.size()) << "what is new is frozen here as well";
    }
}

TEST(TypeLibraries, EveryMemberAndEveryTypeSaysWhatItIs) {
    for (const Library& library : kLibraries) {
        ForEachType(library, [](const Type& type) {
            EXPECT_NE(type.Help(), "") << type.KindAndName();
            type.ForEachFunction([&](const FUNCDESC& each) {
                if (each.memid < 0x60000000) {
                    EXPECT_NE(type.Help(each.memid), "")
                        << type.Name() << " " << type.Name(each.memid);
                }
            });
        });
    }
}

TEST(TypeLibraries, WhatAMemberYieldsIsTyped) {
    int typed = 0;
    for (const Library& library : kLibraries) {
        ForEachType(library, [&](const Type& type) {
            type.ForEachFunction([&](const FUNCDESC& each) {
                const std::string kind = KindOf(type, each.elemdescFunc.tdesc);
                EXPECT_NE(kind, std::to_string(VT_DISPATCH))
                    << type.Name() << " " << type.Name(each.memid);
                typed += kind.starts_with("_") ? 1 : 0;
            });
        });
    }
    EXPECT_EQ(typed, 15) << "12 of the grid and what it hands out, 3 of the project";
}

TEST(TypeLibraries, TheComponentsOptionalParametersHaveTheirTypes) {
    const std::map<std::string, std::string> expected{{"AddFile", "8 8 8 8 5? 5?"},
                                                      {"FillActionCombo", "8?"},
                                                      {"OpenDocument", "3?"},
                                                      {"AddFilesFromProjectFolder", "11?"},
                                                      {"MkDirs", "8"}};
    std::map<std::string, std::string> present;
    ForEachType(kLibraries[0], [&](const Type& type) {
        type.ForEachFunction([&](const FUNCDESC& each) {
            std::string text;
            for (SHORT at = 0; at < each.cParams; ++at) {
                const ELEMDESC& parameter = each.lprgelemdescParam[at];
                const bool optional = (parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0;
                text += (at > 0 ? " " : "") + KindOf(type, parameter.tdesc) + (optional ? "?" : "");
            }
            present[type.Name(each.memid)] = text;
        });
    });
    for (const auto& [name, kinds] : expected) {
        EXPECT_EQ(present[name], kinds) << name;
    }
}

} // namespace talvix
