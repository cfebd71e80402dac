#include "server/main_object.h"

#include "automation/coercion.h"

namespace talvix {

namespace {

constexpr unsigned kMethod = access::kMethod;
constexpr unsigned kGetPut = access::kGet | access::kPut;

using Call = MemberCall;

/// An argument as a procedure of ours wants it; what has no meaning there gives the kind's empty
/// value.
class ArgumentReader {
public:
    ArgumentReader(MainObject& object, const Call& call)
        : locale_(object.main->Ports().locale), call_(call) {}

    std::u16string Text(std::size_t place) const {
        return Read(std::u16string(), place,
                    [&](const Value& value) { return ToText(value, locale_); });
    }
    std::int32_t Long(std::size_t place) const {
        return Read(std::int32_t{0}, place,
                    [&](const Value& value) { return ToLong(value, locale_); });
    }
    bool Truth(std::size_t place) const {
        return Read(false, place, [&](const Value& value) { return ToBoolean(value, locale_); });
    }
    Date When(std::size_t place) const {
        return Read(Date(), place, [&](const Value& value) { return ToDateValue(value, locale_); });
    }

private:
    template <typename Kind, typename Reader>
    Kind Read(Kind otherwise, std::size_t place, Reader&& reader) const {
        if (call_.At(place).IsAbsent()) {
            return otherwise;
        }
        try {
            return reader(call_.At(place));
        } catch (const Failure&) {
            return otherwise;
        }
    }
    const Culture& locale_;
    const Call& call_;
};

Value ReferenceLibraries(MainObject& object, const Call& call) {
    object.main->ReferenceLibraries(call.At(0), call.At(1), call.At(2), call.At(3), call.At(4),
                                    call.At(5));
    return {};
}

Value AddDMSItem(MainObject& object, const Call& call) {
    const ArgumentReader read(object, call);
    DocumentRecord record;
    record.objectType = read.Long(0);
    record.subject = read.Text(1);
    record.creator = read.Text(2);
    record.creationDate = read.When(3);
    record.lastModificationBy = read.Text(4);
    record.modificationDate = read.When(5);
    record.status = read.Text(6);
    record.longDescription = read.Text(7);
    record.physicalStore1 = read.Text(8);
    record.physicalStore2 = read.Text(9);
    record.physicalStore3 = read.Text(10);
    ItemFiling filing;
    filing.item = call.At(11);
    filing.operation = read.Long(12);
    filing.writeToBody = read.Truth(13);
    filing.subfolder = read.Text(14);
    object.main->AddDMSItem(record, filing);
    return {};
}

Value AddFile(MainObject& object, const Call& call) {
    const ArgumentReader read(object, call);
    const std::u16string store = read.Text(0);
    const std::u16string subject = read.Text(1);
    const std::u16string status = read.Text(2);
    const std::u16string longDescription = read.Text(3);
    const Date creation = read.When(4);
    const Date modification = read.When(5);
    object.main->AddFile(store, subject, status, longDescription, creation, modification);
    return {};
}

Value FillActionCombo(MainObject& object, const Call& call) {
    object.main->FillActionCombo(ArgumentReader(object, call).Text(0));
    return {};
}

Value OpenDocument(MainObject& object, const Call& call) {
    object.main->OpenDocument(ArgumentReader(object, call).Long(0));
    return {};
}

Value AddFilesFromProjectFolder(MainObject& object, const Call& call) {
    object.main->AddFilesFromProjectFolder(ArgumentReader(object, call).Truth(0));
    return {};
}

Value MkDirs(MainObject& object, const Call& call) {
    return object.main->MkDirs(ArgumentReader(object, call).Text(0));
}

Value StopImport(MainObject& object, const Call& call) {
    if (!call.IsPut()) {
        return object.main->StopImport();
    }
    object.main->SetStopImport(ToBoolean(*call.put, object.main->Ports().locale));
    return {};
}

Value AddingFile(MainObject& object, const Call& call) {
    if (!call.IsPut()) {
        return object.main->strAddingFile();
    }
    object.main->SetStrAddingFile(ToText(*call.put, object.main->Ports().locale));
    return {};
}

template <void (Main::*procedure)()>
Value Run(MainObject& object, const Call&) {
    (object.main.get()->*procedure)();
    return {};
}

/// All parameters are optional here: a missing one is no reason to raise an error in the host.
std::vector<Member<MainObject>> Table() {
    return {
        {{u"ReferenceLibraries", kMethod,
          u"[TalvixCommon] [TalvixManaging] [TalvixPlanning] [TalvixBudgets] [TalvixControlling] "
          u"[TalvixExport]"},
         ReferenceLibraries},
        {{u"DereferenceLibraries", kMethod, u""}, Run<&Main::DereferenceLibraries>},
        {{u"InitSGDMS", kMethod, u""}, Run<&Main::InitSGDMS>},
        {{u"Init", kMethod, u""}, Run<&Main::Init>},
        {{u"btnOpenFolder_Click", kMethod, u""}, Run<&Main::btnOpenFolder_Click>},
        {{u"AddDMSItem", kMethod,
          u"[ObjectType] [Subject] [Creator] [CreationDateTime] [LastModificationBy] "
          u"[ModificationDateTime] "
          u"[Status] [LongDescription] [PhysicalStore1] [PhysicalStore2] [PhysicalStore3] [olItem] "
          u"[ItemOperation] [WriteToBody] [Subfolder]"},
         AddDMSItem},
        {{u"AddFile", kMethod,
          u"[PhysicalStore1] [Subject] [Status] [LongDescription] [CreationDate] "
          u"[ModificationDate]"},
         AddFile},
        {{u"FillActionCombo", kMethod, u"[SelectedID]"}, FillActionCombo},
        {{u"NewDMSItem", kMethod, u""}, Run<&Main::NewDMSItem>},
        {{u"DeleteDMSItem", kMethod, u""}, Run<&Main::DeleteDMSItem>},
        {{u"OpenDocument", kMethod, u"[id]"}, OpenDocument},
        {{u"AddFilesFromProjectFolder", kMethod, u"[Silent]"}, AddFilesFromProjectFolder},
        {{u"AddFilesFromProjectFolderEvent", kMethod, u""},
         Run<&Main::AddFilesFromProjectFolderEvent>},
        {{u"btnOpenDocument_Click", kMethod, u""}, Run<&Main::btnOpenDocument_Click>},
        {{u"btnNewDocument_Click", kMethod, u""}, Run<&Main::btnNewDocument_Click>},
        {{u"btnChangeDocument_Click", kMethod, u""}, Run<&Main::btnChangeDocument_Click>},
        {{u"btnDeleteDocument_Click", kMethod, u""}, Run<&Main::btnDeleteDocument_Click>},
        {{u"btnExportDocuments_Click", kMethod, u""}, Run<&Main::btnExportDocuments_Click>},
        {{u"MkDirs", kMethod, u"[PathIn]"}, MkDirs},
        {{u"btnDMSSetStore_Click", kMethod, u""}, Run<&Main::btnDMSSetStore_Click>},
        {{u"btnDMSDeletetStore_Click", kMethod, u""}, Run<&Main::btnDMSDeletetStore_Click>},
        {{u"StopImport", kGetPut, u""}, StopImport},
        {{u"strAddingFile", kGetPut, u""}, AddingFile},
    };
}

} // namespace

const MemberTable<MainObject>& MainObject::Members() {
    static const MemberTable<MainObject> members(Table());
    return members;
}

Value MainObject::Invoke(MemberId member, unsigned access, const Arguments& arguments) {
    const auto alive = main; // a host may let go of it during the call
    const MemberIndex& index = Members().Index();
    const bool isPut = (access & access::kAnyPut) != 0;
    const std::size_t place = index.PlaceOf(member);
    const std::size_t known = index.ParameterCount(place) + (isPut ? 1 : 0);
    Arguments taken = arguments;
    if (!isPut && taken.values.size() > known) {
        taken.values = taken.values.first(known);
    }
    try {
        return Members().Invoke(*this, member, access, taken);
    } catch (const std::exception&) { // the host hears of nothing
        return {};
    }
}

} // namespace talvix
