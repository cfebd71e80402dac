#include "workbench/script/project_object.h"

#include "automation/coercion.h"
#include "platform/win32/locale.h"

namespace talvix::workbench {

namespace {

constexpr unsigned kGet = access::kGet;
constexpr unsigned kMethod = access::kMethod;
constexpr unsigned kBoth = access::kGet | access::kPut;

using Call = MemberCall;

std::u16string TextOf(const Value& value) {
    return ToText(value, Win32Locale());
}

template <std::u16string host::Project::*Field>
Value ProjectText(ProjectObject& object, const Call& call) {
    host::Project& project = object.session.Project();
    if (!call.IsPut()) {
        return project.*Field;
    }
    std::u16string text = TextOf(*call.put);
    project.isChanged = project.isChanged || project.*Field != text;
    project.*Field = std::move(text);
    return {};
}

Value Setting(ProjectObject& object, const Call& call) {
    host::Project& project = object.session.Project();
    const std::u16string path = TextOf(call.At(0));
    if (!call.IsPut()) {
        const auto found = project.settings.find(path);
        return found == project.settings.end() ? std::u16string() : found->second;
    }
    project.settings[path] = TextOf(*call.put);
    project.isChanged = true;
    return {};
}

Value Open(ProjectObject& object, const Call& call) {
    const bool readOnly = !call.At(1).IsAbsent() && ToBoolean(call.At(1), Win32Locale());
    object.session.Open(TextOf(call.At(0)), readOnly);
    return {};
}

std::vector<Member<ProjectObject>> FileMembers() {
    return {
        {{u"New", kMethod, u""},
         [](ProjectObject& object, const Call&) {
             object.session.New();
             return Value();
         }},
        {{u"Open", kMethod, u"Path [ReadOnly]"}, Open},
        {{u"Save", kMethod, u""},
         [](ProjectObject& object, const Call&) {
             object.session.Save();
             return Value();
         }},
        {{u"SaveAs", kMethod, u"Path"},
         [](ProjectObject& object, const Call& call) {
             object.session.SaveAs(TextOf(call.At(0)));
             return Value();
         }},
        {{u"Close", kMethod, u""},
         [](ProjectObject& object, const Call&) {
             object.session.Close();
             return Value();
         }},
        {{u"Import", kMethod, u""},
         [](ProjectObject& object, const Call&) {
             return Value(static_cast<std::int32_t>(object.session.Import().added));
         }},
        {{u"Export", kMethod, u"Path"},
         [](ProjectObject& object, const Call& call) {
             object.session.Export(TextOf(call.At(0)));
             return Value();
         }},
    };
}

/// In the order of the type library, after the members above.
std::vector<Member<ProjectObject>> DataMembers() {
    return {
        {{u"Rows", kGet, u""},
         [](ProjectObject& object, const Call&) {
             return object.session.Opened().GridLate().Call(u"Rows");
         }},
        {{u"Grid", kGet, u""},
         [](ProjectObject& object, const Call&) {
             return object.session.Opened().GridLate().Get();
         }},
        {{u"Main", kGet, u""},
         [](ProjectObject& object, const Call&) {
             return object.session.Opened().MainLate().Get();
         }},
        {{u"Path", kGet, u""},
         [](ProjectObject& object, const Call&) { return Value(object.session.Place().Path()); }},
        {{u"ReadOnly", kGet, u""},
         [](ProjectObject& object, const Call&) {
             const ProjectPlace& place = object.session.Place();
             return Value(!place.Path().empty() && !place.MayWrite());
         }},
        {{u"Changed", kGet, u""},
         [](ProjectObject& object, const Call&) {
             return Value(object.session.Project().isChanged);
         }},
        {{u"Number", kBoth, u""}, ProjectText<&host::Project::number>},
        {{u"Name", kBoth, u""}, ProjectText<&host::Project::name>},
        {{u"Company", kBoth, u""}, ProjectText<&host::Project::company>},
        {{u"Folder", kBoth, u""}, ProjectText<&host::Project::folder>},
        {{u"Setting", kBoth, u"Path"}, Setting},
        {{u"Messages", kGet, u""},
         [](ProjectObject& object, const Call&) { return Value(object.messages); }},
    };
}

std::vector<Member<ProjectObject>> AllMembers() {
    std::vector<Member<ProjectObject>> members = FileMembers();
    for (const Member<ProjectObject>& member : DataMembers()) {
        members.push_back(member);
    }
    return members;
}

} // namespace

ProjectObject::ProjectObject()
    : session([this](std::u16string_view text, std::u16string_view, std::int32_t) {
          messages.append(text).append(u"\r\n");
      }) {}

const MemberTable<ProjectObject>& ProjectObject::Members() {
    static const MemberTable<ProjectObject> table(AllMembers());
    return table;
}

} // namespace talvix::workbench
