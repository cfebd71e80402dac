// save_again PROJECT: reads the project, if it is there, and saves it over and over, to be killed
// meanwhile. Exit code 3 when the file that an earlier one left cannot be read or is half of one, 4
// when it cannot be claimed.
#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/files.h"
#include "platform/win32/wide.h"
#include "workbench/program/project_file.h"
#include "workbench/program/project_place.h"

#include <windows.h>
#include <objbase.h>

#include <cstdio>

namespace {

constexpr std::size_t kDocuments = 300;

/// Every document of one save carries its number.
void Fill(talvix::host::Project& project, std::int32_t save) {
    project.nextId = save;
    project.documents.assign(kDocuments, {{u"ID", save}, {u"Subject", u"Größe"}});
}

bool IsWhole(const talvix::host::Project& project) {
    for (const talvix::host::Document& document : project.documents) {
        if (document.at(u"ID") != talvix::Value(project.nextId)) {
            return false;
        }
    }
    return project.documents.size() == kDocuments;
}

int SaveForEver(const std::u16string& path) {
    talvix::host::Project project;
    if (talvix::Win32Files().Query(path)) {
        project = talvix::workbench::ReadProject(path);
        if (!IsWhole(project)) {
            return 3;
        }
    }
    const auto place = talvix::workbench::ProjectPlace::Claim(path);
    std::printf("ready\n");
    std::fflush(stdout);
    for (std::int32_t save = project.nextId;;) {
        Fill(project, ++save);
        place.Save(project);
    }
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2 || FAILED(CoInitialize(nullptr))) {
        return 2;
    }
    try {
        return SaveForEver(talvix::TextOf(arguments[1]));
    } catch (const talvix::Failure& failure) {
        std::printf("%s\n", talvix::ToUtf8(failure.Text()).c_str());
        return failure.Number() == talvix::workbench::ProjectPlace::kClaimed ? 4 : 3;
    }
}
