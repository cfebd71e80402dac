#include "automation/failure.h"
#include "automation/text.h"
#include "core/main.h"
#include "grid/model/grid_objects.h"
#include "tests/fakes/fake_platform.h"
#include "tests/fakes/fake_view.h"
#include "workbench/host/host.h"
#include "workbench/host/host_object.h"
#include "workbench/host/import_report.h"
#include "workbench/host/list_export.h"
#include "workbench/host/mail_item.h"
#include "workbench/host/summary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <tuple>

namespace talvix::host {

namespace {

Late NewGrid(const FakeCulture& culture) {
    return Late(
        Value(std::make_shared<grid::GridObject>(std::make_shared<grid::GridModel>(culture))));
}

struct HostRig {
    HostRig() : host(project, Services(), documents, actions) { project->folder = u"P:\\Proj"; }
    HostServices Services() {
        HostServices services;
        services.showMessage = [this](std::u16string_view text, std::u16string_view title,
                                      std::int32_t style) {
            messages.push_back(std::u16string(title) + u"|" + std::u16string(text));
            lastStyle = style;
        };
        services.listWritten = [this] { ++writes; };
        services.projectXml = [] { return std::u16string(u"<x/>"); };
        services.userName = u"Erika Muster";
        services.exportList = [this](std::u16string_view name, std::u16string_view xml) {
            exports.push_back(std::u16string(name) + u"|" + std::u16string(xml));
        };
        return services;
    }
    void Attach(Main& main) const {
        const std::vector<Value> six = host.Libraries();
        main.ReferenceLibraries(six[0], six[1], six[2], six[3], six[4], six[5]);
        main.InitSGDMS();
        LoadRows(documents, project->documents);
        main.Init();
    }
    FakePlatform fakes;
    Forms forms{fakes.ports, fakes.trace};
    Late documents = NewGrid(fakes.locale);
    Late actions = NewGrid(fakes.locale);
    std::shared_ptr<Project> project = std::make_shared<Project>();
    std::vector<std::u16string> messages;
    std::vector<std::u16string> exports;
    std::int32_t lastStyle = 0;
    int writes = 0;
    Host host;
};

} // namespace

TEST(DocumentRows, AreShownOnceAllAreThere) {
    const FakeCulture culture;
    const auto model = std::make_shared<grid::GridModel>(culture);
    const Late grid(Value(std::make_shared<grid::GridObject>(model)));
    grid[u"Columns"](u"Add", u"ID");
    grid::FakeView view;
    model->view = &view;
    LoadRows(grid, {{{u"ID", 1}}, {{u"ID", 2}, {u"Other", 3}}, {}});
    EXPECT_EQ(view.refreshes, 1);
    EXPECT_EQ(grid[u"Rows"].Call(u"Count"), Value(3));
    EXPECT_EQ(grid(u"Rows", 2).Call(u"Value", u"ID"), Value(2));
    model->view = nullptr;
}

TEST(Host, CarriesTheComponentFromAttachmentToImport) {
    HostRig rig;
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", 5000);
    rig.fakes.files.MakeFile(u"P:\\Proj\\Sub\\b.txt", 10);
    Main main(rig.fakes.ports, rig.fakes.trace, rig.forms);
    rig.Attach(main);
    main.AddFilesFromProjectFolderEvent();
    ASSERT_EQ(rig.project->documents.size(), 2U);
    EXPECT_EQ(rig.project->documents[0].at(u"Creator"), Value(u"Erika Muster"));
    EXPECT_EQ(rig.project->documents[1].at(u"ID"), Value(2));
    EXPECT_EQ(rig.project->nextId, 3);
    EXPECT_TRUE(rig.project->isChanged);
    EXPECT_EQ(rig.writes, 1);
    const std::u16string summary = Summary(*rig.project, 1.234, rig.fakes.locale);
    EXPECT_EQ(summary, u"Projektordner: P:\\Proj\r\nDokumente: 2\r\nGröße: 6 KB\r\nDauer: 1,23 "
                       u"s\r\n  1 x doc-Datei\r\n  1 x "
                       u"txt-Datei\r\n");
}

TEST(Host, AStoredListComesBackAsItWas) {
    HostRig rig;
    rig.project->documents = {{{u"ID", 7},
                               {u"ObjectType", std::int16_t{2}},
                               {u"Subject", u"Verweis"},
                               {u"CreationDate", Date{38000.5}},
                               {u"PhysicalStore1", u"http://example.org"},
                               {u"fremd", u"bleibt weg"}}};
    Main main(rig.fakes.ports, rig.fakes.trace, rig.forms);
    rig.Attach(main);
    EXPECT_EQ(rig.documents.Call(u"Redraw"), Value(true));
    const std::vector<Document> read = ReadRows(rig.documents);
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(read[0].at(u"CreationDate"), Value(Date{38000.5}));
    EXPECT_EQ(read[0].at(u"ItemSize"), Value(u"1 KB"));
    EXPECT_FALSE(read[0].contains(u"fremd"));
    EXPECT_FALSE(read[0].contains(u"Status"));
}

TEST(Host, ShowsARegisteredMessageWithItsDetail) {
    HostRig rig;
    Main main(rig.fakes.ports, rig.fakes.trace, rig.forms);
    rig.Attach(main);
    Late(rig.host.Libraries()[0]).Call(u"Log", 3500, u"(Fehlende Angaben: Projektnummer)");
    ASSERT_EQ(rig.messages.size(), 1U);
    EXPECT_TRUE(rig.messages[0].starts_with(u"Fehlende Informationen|Um automatisch"));
    EXPECT_TRUE(rig.messages[0].ends_with(u"(Fehlende Angaben: Projektnummer)"));
    EXPECT_EQ(rig.lastStyle, 64);
}

TEST(Host, RefusesWhatItDoesNotHave) {
    const HostRig rig;
    const Late managing(rig.host.Libraries()[1]);
    const Late inspector = managing[u"Item"][u"GetInspector"];
    EXPECT_THROW(inspector.Call(u"ModifiedFormPages", u"Unbekannt"), Failure);
    EXPECT_THROW(managing.Call(u"GetNextID", u"andere"), Failure);
    EXPECT_THROW(managing.Set(u"Item", 5), Failure);
    EXPECT_EQ(Late(rig.host.Libraries()[0]).Call(u"ReadGlobalSetting", u"DOCUMENTS/RULES"),
              Value(u""));
}

TEST(Host, GivesASettingOfTheProject) {
    const HostRig rig;
    rig.project->settings[u"DOCUMENTS/RULES"] = u"<Project Name>";
    const Late common(rig.host.Libraries()[0]);
    EXPECT_EQ(common.Call(u"ReadGlobalSetting", u"DOCUMENTS/RULES"), Value(u"<Project Name>"));
    EXPECT_EQ(common.Call(u"ReadGlobalSetting", u"DOCUMENTS/PATH"), Value(u""));
}

TEST(Host, FillsTheActionsGridAnew) {
    const HostRig rig;
    for (int round = 0; round < 2; ++round) {
        LoadActions(rig.actions, {{1, Date{38000}, u"Abnahme"}, {2, Date{38001}, u"Übergabe"}});
        EXPECT_EQ(rig.actions[u"Rows"].Call(u"Count"), Value(2));
    }
    EXPECT_EQ(rig.actions(u"Rows", 2).Call(u"Text", u"description"), Value(u"Übergabe"));
    EXPECT_EQ(rig.actions(u"Rows", 2).Call(u"Value", u"startdate"), Value(Date{38001}));
    EXPECT_EQ(rig.actions(u"Rows", 2).Call(u"Value", u"id"), Value(2));
    const std::tuple<const char16_t*, const char16_t*, std::int32_t, std::int32_t> columns[] = {
        {u"id", u"Nr.", 3, 40},
        {u"startdate", u"Beginn", 7, 90},
        {u"description", u"Beschreibung", 8, 300}};
    for (const auto& [key, caption, type, width] : columns) {
        const Late column = rig.actions(u"Columns", key);
        EXPECT_EQ(column.Call(u"Caption"), Value(caption));
        EXPECT_EQ(column.Call(u"DataType"), Value(type));
        EXPECT_EQ(column.Call(u"Width"), Value(width));
    }
}

TEST(ListExport, CsvQuotesAndDisarmsFields) {
    const FakeCulture culture;
    Project project;
    project.documents = {{{u"ID", 1},
                          {u"Subject", u"a;\"b\".doc"},
                          {u"LongDescription", u"=cmd|' /C calc'!A0"},
                          {u"CreationDate", Date{38000}}}};
    const std::u16string csv = ListAsCsv(project, culture);
    EXPECT_TRUE(csv.starts_with(u"Nr.;Name/Betreff;Größe;Typ;"));
    EXPECT_NE(csv.find(u"\r\n1;\"a;\"\"b\"\".doc\";;;;14.01.2004;;;;'=cmd|' /C calc'!A0;;\r\n"),
              std::u16string::npos);
}

TEST(ListExport, ThePageEscapesItsTexts) {
    const FakeCulture culture;
    Project project;
    project.name = u"Neubau <A&B>";
    project.documents = {{{u"Subject", u"<script>"}}};
    const std::u16string page = ListAsHtml(project, culture);
    EXPECT_NE(page.find(u"<h1>Neubau &lt;A&amp;B&gt; – Dokumente</h1>"), std::u16string::npos);
    EXPECT_NE(page.find(u"<td>&lt;script&gt;</td>"), std::u16string::npos);
    EXPECT_EQ(page.find(u"<script>"), std::u16string::npos);
}

TEST(Host, TheExportLibraryHandsTheListOn) {
    HostRig rig;
    Main main(rig.fakes.ports, rig.fakes.trace, rig.forms);
    rig.Attach(main);
    main.btnExportDocuments_Click();
    EXPECT_EQ(rig.exports, std::vector<std::u16string>{u"Dokumente|<x/>"});
}

TEST(ListExport, ThePrintedListHasTheColumnsThatFitOnAPage) {
    const FakeCulture culture;
    const std::vector<PrintColumn> columns = PrintColumns();
    std::vector<int> shares;
    std::transform(columns.begin(), columns.end(), std::back_inserter(shares),
                   [](const PrintColumn& column) { return column.share; });
    EXPECT_EQ(shares, (std::vector<int>{5, 22, 8, 14, 12, 12, 10, 18, 14}));
    for (const PrintColumn& column : columns) {
        EXPECT_FALSE(column.caption.empty());
        EXPECT_GT(column.share, 0);
    }
    const std::vector<std::u16string> row = PrintedRow({{u"Subject", u"Plan"}}, culture);
    ASSERT_EQ(row.size(), columns.size());
    EXPECT_NE(std::find(row.begin(), row.end(), u"Plan"), row.end());
}

TEST(ImportReport, NamesItsOutcomes) {
    EXPECT_EQ(std::u16string(OutcomeText(ImportOutcome::Added)), u"aufgenommen");
    EXPECT_EQ(std::u16string(OutcomeText(ImportOutcome::Listed)), u"schon in der Liste");
    EXPECT_EQ(std::u16string(OutcomeText(ImportOutcome::NotAdded)), u"nicht aufgenommen");
    EXPECT_EQ(std::u16string(OutcomeText(ImportOutcome::Note)), u"Hinweis");
}

TEST(HostObject, AnswersByItsMembersAndRefusesTheRest) {
    std::u16string text = u"alt";
    bool changed = false;
    const auto object = std::make_shared<HostObject>(
        u"Ding", std::vector<HostObject::Member>{{u"Text", TextMember(text, changed), true},
                                                 {u"Item", Constant(7)}});
    const Late late{Value(object)};
    EXPECT_EQ(object->TypeName(), u"Ding");
    EXPECT_EQ(late.Call(u"text"), Value(u"alt"));
    late.Set(u"Text", u"alt");
    EXPECT_FALSE(changed);
    late.Set(u"Text", u"neu");
    EXPECT_TRUE(changed);
    late.Set(u"Text", Nothing());
    EXPECT_EQ(text, u"");
    EXPECT_THROW(late.Set(u"Text", 5), Failure);
    EXPECT_THROW(late.Set(u"Item", 5), Failure);
    EXPECT_THROW(late.Call(u"Fehlt"), Failure);
    EXPECT_EQ(object->Invoke(kDefaultMember, access::kCall, {}), Value(7));
    EXPECT_THROW(object->Invoke(99, access::kCall, {}), Failure);
}

TEST(MailItem, AnswersAsFilingAsks) {
    const FakeCulture culture;
    Mail mail;
    mail.subject = u"Angebot";
    mail.from = MailAddress{u"Erika Muster", u"e@example.org"};
    mail.to = {{u"", u"a@example.org"}, {u"B", u"b@example.org"}};
    mail.sent = 1795166130;
    mail.text = u"Text";
    mail.attachments = {{u"a.pdf", u"application/pdf", "inhalt"}, {u"b.txt", u"text/plain", "x"}};
    Lines saved;
    MailFiling filing;
    filing.saveMessage = [&](const Mail& each, std::u16string_view path) {
        saved.push_back(std::u16string(path) + u" " +
                        DecimalText(static_cast<long long>(each.attachments.size())));
    };
    filing.saveFile = [&](std::u16string_view path, std::string_view content) {
        saved.push_back(std::u16string(path) + u" " + FromUtf8(content));
    };
    const Late item{Value(MakeMailItem(mail, filing, culture))};
    EXPECT_EQ(item.Call(u"Subject"), Value(u"Angebot"));
    EXPECT_EQ(item.Call(u"Body"), Value(u"Text"));
    EXPECT_NE(item.Call(u"SenderName"), Value(u""));
    EXPECT_NE(item.Call(u"To"), item.Call(u"CC"));
    EXPECT_TRUE(item.Call(u"SentOn").Is<Date>());
    const Late attachments = item[u"Attachments"];
    EXPECT_EQ(attachments.Call(u"Count"), Value(2));
    const Late second = attachments(u"Item", 2);
    EXPECT_EQ(second.Call(u"FileName"), Value(u"b.txt"));
    EXPECT_EQ(second.Call(u"DisplayName"), Value(u"b.txt"));
    EXPECT_EQ(second.Call(u"Size"), Value(1));
    second.Call(u"SaveAsFile", u"C:\\b.txt");
    EXPECT_THROW(attachments.Call(u"Item", 3), Failure);
    EXPECT_THROW(attachments.Call(u"Item", 0), Failure);
    attachments(u"Item", 1).Call(u"Delete");
    EXPECT_THROW(item.Call(u"SaveAs", u"C:\\x.txt", 1), Failure);
    item.Call(u"SaveAs", u"C:\\x.msg", 3);
    EXPECT_THROW(item.Call(u"Close", 9), Failure);
    item.Call(u"Close", 1);
    EXPECT_EQ(attachments.Call(u"Count"), Value(2)) << "discarded";
    attachments(u"Item", 1).Call(u"Delete");
    item.Call(u"Close", 0);
    item.Call(u"Close", 1);
    EXPECT_EQ(attachments.Call(u"Count"), Value(1)) << "kept";
    EXPECT_EQ(saved, (Lines{u"C:\\b.txt x", u"C:\\x.msg 1"}));
}

} // namespace talvix::host
