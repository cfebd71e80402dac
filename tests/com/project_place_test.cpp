// The files that projects are kept in.
#include "automation/failure.h"
#include "platform/win32/device_context.h"
#include "platform/win32/files.h"
#include "platform/win32/locale.h"
#include "platform/win32/owned.h"
#include "platform/win32/wide.h"
#include "tests/com/com_host.h"
#include "tests/com/thread.h"
#include "workbench/program/print_list.h"
#include "workbench/program/project_file.h"
#include "workbench/program/project_place.h"

#include <gtest/gtest.h>

#include <functional>

namespace talvix::workbench {

namespace {

host::Project Named(const char16_t* name) {
    host::Project project;
    project.name = name;
    return project;
}

std::u16string FailureOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const Failure& failure) {
        return failure.Text();
    }
    return u"(nothing)";
}

void WriteAscii(const std::u16string& path, std::string_view text) {
    const OwnedFile file(
        CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

} // namespace

TEST(ProjectPlace, ASecondWriterIsToldWhoHasIt) {
    const TemporaryFolder folder;
    const std::u16string path = folder.Path() + u"\\a.talvix";
    ProjectPlace first = ProjectPlace::Claim(path);
    try {
        ProjectPlace::Claim(path);
        FAIL() << "claimed twice";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number(), ProjectPlace::kClaimed);
        EXPECT_NE(failure.Text().find(u"wird gerade bearbeitet von "), std::u16string::npos);
    }
    EXPECT_FALSE(ProjectPlace::ForReading(path).MayWrite());
    first = ProjectPlace();
    EXPECT_TRUE(ProjectPlace::Claim(path).MayWrite()) << "the claim goes with its holder";
    EXPECT_FALSE(Win32Files().Query(path + u".~offen"));
}

TEST(ProjectPlace, WhatStoodInTheFileIsKeptAsAnEarlierVersion) {
    const TemporaryFolder folder;
    const std::u16string path = folder.Path() + u"\\Größe.talvix";
    const ProjectPlace place = ProjectPlace::Claim(path);
    place.Save(Named(u"eins"));
    EXPECT_TRUE(VersionsOf(path).empty());
    place.Save(Named(u"zwei"));
    place.Save(Named(u"drei"));
    EXPECT_EQ(ReadProject(path).name, u"drei");
    const std::vector<ProjectVersion> versions = VersionsOf(path);
    ASSERT_EQ(versions.size(), 2U);
    EXPECT_EQ(ReadProject(versions[0].path).name, u"zwei") << "the newest first";
    EXPECT_EQ(ReadProject(versions[1].path).name, u"eins");
    EXPECT_EQ(versions[0].savedAt.size(), 19U);
}

TEST(ProjectPlace, OnlyTheNewestVersionsAreKeptAndNothingElseIsTouched) {
    const TemporaryFolder folder;
    const std::u16string path = folder.Path() + u"\\a.talvix";
    const ProjectPlace place = ProjectPlace::Claim(path);
    place.Save(Named(u"0"));
    place.Save(Named(u"1"));
    const std::u16string others = path + u".Fassungen\\";
    for (const auto* name : {u"Notiz.txt", u"b 2026-11-21 09-30-05.talvix", u"a 2026.talvix"}) {
        WriteAscii(others + name, "x");
    }
    for (std::size_t step = 0; step < ProjectPlace::kMostVersions + 5; ++step) {
        place.Save(Named(u"n"));
    }
    EXPECT_EQ(VersionsOf(path).size(), ProjectPlace::kMostVersions);
    EXPECT_EQ(Win32Files().List(others).files.size(), ProjectPlace::kMostVersions + 3);
}

TEST(ProjectPlace, SavingWaitsForSomebodyWhoReads) {
    const TemporaryFolder folder;
    const std::u16string path = folder.Path() + u"\\a.talvix";
    const ProjectPlace place = ProjectPlace::Claim(path);
    place.Save(Named(u"eins"));
    const HANDLE reader =
        CreateFileW(Wide(path), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    Thread reading([&] {
        Sleep(300);
        CloseHandle(reader);
    });
    EXPECT_EQ(FailureOf([&] { place.Save(Named(u"zwei")); }), u"(nothing)");
    reading.Join();
    EXPECT_EQ(ReadProject(path).name, u"zwei");
}

TEST(ProjectPlace, AFailedSaveLeavesTheFileAndNoRest) {
    const TemporaryFolder folder;
    const std::u16string path = folder.Path() + u"\\a.talvix";
    const ProjectPlace place = ProjectPlace::Claim(path);
    place.Save(Named(u"eins"));
    WriteAscii(path + u".Fassungen", "x"); // there can be no folder of this name
    EXPECT_NE(FailureOf([&] { place.Save(Named(u"zwei")); }).find(u"kann nicht gespeichert werden"),
              std::u16string::npos);
    EXPECT_EQ(ReadProject(path).name, u"eins");
    EXPECT_FALSE(Win32Files().Query(path + u".~neu"));
    EXPECT_NE(FailureOf([&] {
                  ProjectPlace::ForReading(path).Save(Named(u"drei"));
              }).find(u"nur zum Lesen"),
              std::u16string::npos);
    EXPECT_NE(FailureOf([&] {
                  ProjectPlace::Claim(folder.Path() + u"\\gibt\\es\\nicht.talvix");
              }).find(u"kann nicht zum Bearbeiten geöffnet werden"),
              std::u16string::npos);
}

TEST(ProjectFile, AMissingOrNewerFileIsRefusedInClearWords) {
    const TemporaryFolder folder;
    const std::u16string path = folder.Path() + u"\\a.talvix";
    EXPECT_NE(FailureOf([&] { ReadProject(path); }).find(path), std::u16string::npos);
    WriteAscii(path, "<TalvixProject version=\"2\"/>");
    EXPECT_NE(FailureOf([&] {
                  ReadProject(path);
              }).find(u"neueren Programm gespeichert (Format 2, bekannt ist 1)"),
              std::u16string::npos);
    WriteAscii(path, "<TalvixProject version=\"0\"/>");
    EXPECT_NE(FailureOf([&] { ReadProject(path); }).find(u"/TalvixProject/@version"),
              std::u16string::npos);
}

TEST(PrintedList, SheetsTakeRowsInOrderAndEnd) {
    host::Project project = Named(u"Neubau");
    for (std::int32_t id = 1; id <= 200; ++id) {
        project.documents.push_back({{u"ID", id}, {u"Subject", u"Datei.doc"}});
    }
    project.documents[1][u"LongDescription"] = std::u16string(5000, u'w');
    const Win32Locale locale;
    const ListPrinter printer(project, locale);
    const ScreenDc screen;
    const OwnedMemoryDc dc(CreateCompatibleDC(screen.Get()));
    const OwnedBitmap paper(CreateCompatibleBitmap(screen.Get(), 800, 1100));
    const Chosen chosen(dc.Get(), paper.Get());
    std::size_t row = 0;
    int sheets = 0;
    while (row < printer.Rows() && sheets < 50) {
        const std::size_t next = printer.DrawSheet(dc.Get(), {{800, 1100}, 96}, row, ++sheets);
        ASSERT_GT(next, row) << "every sheet takes a row, however tall";
        row = next;
    }
    EXPECT_EQ(row, 200U);
    EXPECT_GT(sheets, 3);
    EXPECT_EQ(ListPrinter(Named(u"leer"), locale).DrawSheet(dc.Get(), {{800, 1100}, 96}, 0, 1), 0U);
}

} // namespace talvix::workbench
