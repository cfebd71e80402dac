#include "automation/failure.h"
#include "automation/text.h"
#include "tests/fakes/expando.h"
#include "tests/fakes/fake_xml.h"
#include "workbench/host/project_text.h"

#include <gtest/gtest.h>

namespace talvix::host {

namespace {

constexpr const char16_t* kPath = u"P:\\Süd.talvix";
constexpr const char16_t* kHead =
    u"<Project number=\"1\" name=\"\" company=\"\" folder=\"\" nextId=\"2\"/>";

Project Read(std::u16string_view xml) {
    const Late document(FakeXmlDocument(xml));
    EXPECT_TRUE(document) << ToUtf8(xml);
    return ProjectIn(document, kPath);
}

std::u16string Inside(std::u16string_view parts) {
    return u"<TalvixProject version=\"1\">" + std::u16string(parts) + u"</TalvixProject>";
}

/// The words with which a text is refused.
std::u16string Refusal(std::u16string_view xml) {
    try {
        Read(xml);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number(), failure_number::kInvalidArgument);
        return failure.Text();
    }
    return u"(read)";
}

Project Sample() {
    Project project;
    project.number = u"4711";
    project.name = u"Neubau \"Süd\" <1> & 2";
    project.company = u" Meier\t& Söhne\r\n";
    project.folder = u"P:\\Projekte\\4711";
    project.nextId = 12;
    project.settings = {{u"Allgemein\\Regel", u"a=b"}, {u"DOCUMENTS/PATH", u""}};
    project.documents = {{{u"ID", 1},
                          {u"Subject", u"Bericht ]]> \U0001F600.doc"},
                          {u"CreationDate", Date{38000.5}},
                          {u"Size", 2.5},
                          {u"Filed", true}},
                         {},
                         {{u"a&b", u""}}};
    project.actions = {{-7, Date{38000}, u"Abnahme"}, {8, Date{38001.25}, u""}};
    return project;
}

} // namespace

TEST(ProjectText, EveryPartComesBack) {
    const Project whole = Sample();
    const Project read = Read(ProjectXml(whole));
    EXPECT_EQ(read.number, whole.number);
    EXPECT_EQ(read.name, whole.name);
    EXPECT_EQ(read.company, whole.company);
    EXPECT_EQ(read.folder, whole.folder);
    EXPECT_EQ(read.nextId, 12);
    EXPECT_EQ(read.settings, whole.settings);
    EXPECT_EQ(read.documents, whole.documents);
    ASSERT_EQ(read.actions.size(), 2U);
    EXPECT_EQ(read.actions[0].id, -7);
    EXPECT_EQ(read.actions[1].startDate, Date{38001.25});
    EXPECT_EQ(read.actions[0].description, u"Abnahme");
    EXPECT_FALSE(read.isChanged);
}

TEST(ProjectText, WhatAFileDoesNotKeepIsLeftOut) {
    Project project;
    project.documents = {{{u"ID", 1}, {u"Object", Nothing()}, {u"Gone", Value()}}};
    EXPECT_EQ(Read(ProjectXml(project)).documents, (std::vector<Document>{{{u"ID", 1}}}));
}

TEST(ProjectText, ForeignElementsAndAttributesArePassedOver) {
    const Project read = Read(
        Inside(u"<Other/><!-- - --><Project number='7' name=\"&apos;\" company=\"\" folder=\"\" "
               u"nextId=\"2\" new=\"\"/><Documents><Other/><Document new=\"1\"><Other>x</Other>"
               u"<Field type=\"long\" name=\"ID\">3</Field></Document></Documents>"));
    EXPECT_EQ(read.number, u"7");
    EXPECT_EQ(read.name, u"'");
    EXPECT_EQ(read.documents, (std::vector<Document>{{{u"ID", 3}}}));
}

TEST(ProjectText, WhatIsNoProjectIsRefusedWithItsPlace) {
    const std::u16string head = kHead;
    const std::pair<std::u16string, std::u16string> files[] = {
        {u"<Brief/>", u"Es ist keine Projektdatei (Wurzelelement \"Brief\")."},
        {u"<TalvixProject/>", u"/TalvixProject/@version: Die Angabe fehlt"},
        {u"<TalvixProject version=\"1.5\"/>",
         u"/TalvixProject/@version: Eine ganze Zahl wird erwartet."},
        {u"<TalvixProject version=\"2\"/>", u"(Format 2, bekannt ist 1)."},
        {u"<TalvixProject version=\"0\"/>", u"@version: Dieses Dateiformat gibt es nicht."},
        {Inside(u""), u"/TalvixProject/Project: Das Element fehlt."},
        {Inside(u"<Project number=\"\" name=\"\" company=\"\" folder=\"\"/>"),
         u"/TalvixProject/Project[1]/@nextId: Die Angabe fehlt"},
        {Inside(u"<Project number=\"\\x\" name=\"\" company=\"\" folder=\"\" nextId=\"1\"/>"),
         u"/TalvixProject/Project[1]/@number: Die Angabe fehlt oder ist unverständlich."},
        {Inside(head + u"<Settings><Setting path=\"a\" value=\"\"/><Setting path=\"b\"/>"
                       u"</Settings>"),
         u"/TalvixProject/Settings/Setting[2]/@value: "},
        {Inside(head + u"<Actions><Action id=\"1\" startdate=\"morgen\"/></Actions>"),
         u"/TalvixProject/Actions/Action[1]/@startdate: Ein Datum wird erwartet."},
        {Inside(head + u"<Actions><Action id=\"\" startdate=\"2026-09-01\"/></Actions>"),
         u"/TalvixProject/Actions/Action[1]/@id: Eine ganze Zahl wird erwartet."},
        {Inside(head + u"<Documents><Document><Field/></Document></Documents>"),
         u"/TalvixProject/Documents/Document[1]/Field/@name: "},
        {Inside(head + u"<Documents><Document/><Document><Field name=\"ID\" type=\"long\">x"
                       u"</Field></Document></Documents>"),
         u"Document[2]/Field[@name='ID']: Der Inhalt passt nicht zu seiner Art."}};
    for (const auto& [xml, place] : files) {
        const std::u16string refusal = Refusal(xml);
        EXPECT_TRUE(refusal.starts_with(u"Die Datei \"P:\\Süd.talvix\" kann nicht gelesen "
                                        u"werden.\r\n"));
        EXPECT_NE(refusal.find(place), std::u16string::npos) << ToUtf8(refusal);
    }
}

TEST(FakeXml, RefusesWhatIsNotWellFormed) {
    for (const auto* text :
         {u"", u"a", u"<a>", u"<a></b>", u"<a/><b/>", u"<a b=1/>", u"<a b=\"1\" b=\"2\"/>",
          u"<a b=\"<\"/>", u"<a>&</a>", u"<a>&x;</a>", u"<a>]]></a>", u"<a>\u0001</a>",
          u"<a>\uFFFE</a>", u"<!DOCTYPE a><a/>", u"<a><!-- -- --></a>", u"<a><!--</a>", u"<1/>",
          u"<a b=\"1\"c=\"2\"/>", u"<?xml <a/>"}) {
        EXPECT_TRUE(FakeXmlDocument(text).IsNothing()) << ToUtf8(text);
    }
    EXPECT_TRUE(FakeXmlDocument(u"<a>" + std::u16string(1, 0xD800) + u"</a>").IsNothing());
    const Late root = Late(FakeXmlDocument(u"<?xml version=\"1.0\"?>\r\n<!--x--><a b='1\r\n2\t'>"
                                           u"1&lt;<c>\r2</c><!----> \n</a > "))[u"documentElement"];
    EXPECT_EQ(root.Call(u"text"), Value(u"1<\n2 \n"));
    EXPECT_EQ(root.Call(u"getAttribute", u"b"), Value(u"1 2 "));
    EXPECT_EQ(root.Call(u"getAttribute", u"c"), Value(Null()));
}

} // namespace talvix::host
