// Long sequences of what users do, followed by a small model that does it all the plain way.
#include "automation/text.h"
#include "tests/proof/operations.h"
#include "tests/proof/proof.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace talvix {

namespace {

constexpr int kStepsOfOne = 50;
constexpr int kStepsToCompare = 10;

struct ModelRow {
    std::int32_t type = 0;
    std::u16string store;
    std::u16string subject;
    std::u16string status;
    std::u16string notes;
    auto operator<=>(const ModelRow&) const = default;
};

/// Rows by number, files by path, and how often the list was saved.
struct ListModel {
    bool HasPath(const std::u16string& path) const { return files.contains(path); }
    bool IsListed(const FakeCulture& culture, const std::u16string& path) const {
        return std::any_of(rows.begin(), rows.end(), [&](const auto& each) {
            return culture.SameText(each.second.store, path);
        });
    }
    std::u16string FreeName(const std::u16string& base, const std::u16string& extension) const {
        std::u16string name = base + u"." + extension;
        for (int number = 1; HasPath(u"P:\\Proj\\" + name); ++number) {
            name = base + u" (" + DecimalText(number) + u")." + extension;
        }
        return name;
    }
    void Copy(const std::u16string& base, const std::u16string& extension,
              const std::u16string& subject, const std::u16string& status,
              const std::u16string& notes) {
        const std::u16string wanted = base + u"." + extension;
        const std::u16string name = FreeName(base, extension);
        files.insert(u"P:\\Proj\\" + name);
        rows[nextId++] = {0, u"P:\\Proj\\" + name,
                          name != wanted || subject.empty() ? name : subject, status, notes};
    }
    std::map<std::int32_t, ModelRow> rows;
    std::set<std::u16string> files{u"P:\\Proj\\a.doc", u"P:\\Proj\\b.exe", u"P:\\Proj\\Sub\\c.txt"};
    std::int32_t nextId = 100;
    std::size_t saves = 0;
};

class Sequence50 {
public:
    explicit Sequence50(unsigned seed) : random_(seed) { rig_.Attach(); }

    void Run() {
        for (int step = 0; step < kStepsOfOne; ++step) {
            const int kind = random_.Below(static_cast<int>(std::size(kSteps)));
            trace_ += std::string(kSteps[kind].name) + "; ";
            SCOPED_TRACE(trace_);
            (this->*kSteps[kind].run)();
            if ((step + 1) % kStepsToCompare == 0) {
                ASSERT_NO_FATAL_FAILURE(Compare());
            }
        }
    }

private:
    struct Step {
        const char* name;
        void (Sequence50::*run)();
    };
    static const Step kSteps[13];

    std::u16string SomeText() {
        return random_.Of<const char16_t*>({u"", u"neu", u"Entwurf", u"ÄÖÜ", u"x y"});
    }
    std::u16string SomeNumber() { return DecimalText(random_.Below(4)); }

    void AddFile() {
        const std::u16string path = u"F:\\Datei " + SomeNumber() + u".txt";
        const std::u16string subject = SomeText();
        const std::u16string status = SomeText();
        rig_.main->AddFile(path, subject, status, u"Notiz", Date{}, Date{});
        model_.rows[model_.nextId++] = {0, path, subject, status, u"Notiz"};
    }
    void AddRecord() {
        DocumentRecord record;
        record.objectType = 1 + random_.Below(2);
        record.subject = SomeText();
        record.physicalStore1 = u"http://example.org/" + SomeNumber();
        rig_.main->AddDMSItem(record, ItemFiling{});
        model_.rows[model_.nextId++] = {record.objectType, record.physicalStore1, record.subject,
                                        u"", u""};
    }
    void Import() {
        rig_.main->AddFilesFromProjectFolderEvent();
        bool any = false;
        // files of a folder come before those of its folders
        std::vector<std::u16string> paths(model_.files.begin(), model_.files.end());
        const auto isBelow = [](const std::u16string& path) {
            return path.find(u'\\', std::u16string_view(u"P:\\Proj\\").size()) !=
                   std::u16string::npos;
        };
        std::sort(paths.begin(), paths.end(), [&](const auto& left, const auto& right) {
            const FakeCulture& culture = rig_.fakes.locale;
            return std::pair(isBelow(left), culture.UpperCase(left)) <
                   std::pair(isBelow(right), culture.UpperCase(right));
        });
        for (const std::u16string& path : paths) {
            if (!model_.IsListed(rig_.fakes.locale, path)) {
                const std::u16string extension = path.substr(path.rfind(u'.') + 1);
                model_.rows[model_.nextId++] = {0, path, path.substr(path.rfind(u'\\') + 1), u"",
                                                extension + u"-Datei"};
                any = true;
            }
        }
        model_.saves += any ? 1 : 0;
    }
    void CopyByDialog() {
        const std::u16string status = SomeText();
        rig_.Confirms([&](ItemForm& form) {
            form.Change(ItemControl::TextPhysicalStore1, u"C:\\Quelle\\a.doc");
            form.Change(ItemControl::TextStatus, status);
            if (form.State(ItemControl::chkCopyItem).value == 0) {
                form.Click(ItemControl::chkCopyItem);
            }
        });
        rig_.main->btnNewDocument_Click();
        model_.Copy(u"a", u"doc", u"", status, u"doc-Datei");
        ++model_.saves;
    }
    void LinkByDialog() {
        const std::u16string url = u"http://example.org/" + SomeNumber();
        rig_.Confirms([&](ItemForm& form) {
            form.Click(ItemControl::optLink);
            form.Change(ItemControl::TextPhysicalStore1, url);
        });
        rig_.main->NewDMSItem();
        model_.rows[model_.nextId++] = {2, url, url, u"", u""};
        ++model_.saves;
    }
    void CancelDialog() {
        rig_.fakes.dialogs.onItemForm = [](ItemForm& form) {
            form.Change(ItemControl::TextStatus, u"verworfen");
        };
        rig_.main->NewDMSItem();
    }
    void FileMail() {
        rig_.mail.names = {u"a.doc", u"Anlage " + SomeNumber() + u".pdf"};
        const std::u16string second = rig_.mail.names[1].substr(0, 8);
        DocumentRecord record;
        record.subject = u"Betreff";
        record.status = SomeText();
        const bool saves = random_.OneIn(2);
        rig_.main->AddDMSItem(record, ItemFiling{rig_.mail.Item(), 2, saves, u""});
        model_.Copy(second, u"pdf", second + u".pdf", record.status, u"");
        model_.Copy(u"a", u"doc", u"a.doc", record.status, u"");
        model_.saves += saves ? 1 : 0;
    }
    void Delete() {
        std::vector<std::int32_t> chosen;
        rig_.model->rows.ClearSelection();
        for (const std::int32_t id : Ids()) {
            if (random_.OneIn(5)) {
                rig_.model->rows.Select(RowOf(id), true);
                chosen.push_back(id);
            }
        }
        if (chosen.empty()) {
            return;
        }
        rig_.model->rows.SetCurrent(RowOf(chosen.back()));
        const bool agrees = !random_.OneIn(3);
        rig_.fakes.messages.answers = {agrees ? kAnswerYes : std::int32_t{7}};
        rig_.main->btnDeleteDocument_Click();
        if (agrees) {
            for (const std::int32_t id : chosen) {
                model_.rows.erase(id);
            }
            ++model_.saves;
        }
    }
    void Change() {
        const std::vector<std::int32_t> ids = Ids();
        if (ids.empty()) {
            return;
        }
        const std::int32_t id = random_.Of(ids);
        rig_.model->rows.ClearSelection();
        rig_.model->rows.SetCurrent(RowOf(id));
        const std::u16string status = SomeText();
        const bool confirms = !random_.OneIn(4);
        rig_.fakes.dialogs.onItemForm = [&](ItemForm& form) {
            form.Change(ItemControl::TextStatus, status);
            if (confirms) {
                form.Click(ItemControl::btnOK);
            }
        };
        rig_.main->btnChangeDocument_Click();
        ModelRow& row = model_.rows[id];
        if (confirms) {
            row.status = status;
            row.subject = row.type == 2 ? row.store : row.subject;
        }
        ++model_.saves;
    }
    void PresentAnew() { rig_.main->Init(); }
    void SortAndGroup() {
        const auto column = [&](std::u16string_view key) {
            return rig_.model->columns.IndexOf(Value(key));
        };
        rig_.model->rows.SortBy(column(u"Subject"), random_.OneIn(2));
        rig_.model->rows.SetGroups(random_.OneIn(2)
                                       ? std::vector<grid::Grouping>{}
                                       : std::vector<grid::Grouping>{{column(u"Status"), false}});
    }
    void DiskChanges() {
        const std::u16string path = u"P:\\Proj\\Fremd " + SomeNumber() + u".doc";
        if (model_.HasPath(path)) {
            rig_.fakes.files.Remove(path);
            model_.files.erase(path);
        } else {
            rig_.fakes.files.MakeFile(path, 10);
            model_.files.insert(path);
        }
    }
    void WithoutFolder() {
        rig_.SetFolder(u"");
        rig_.settings.erase(u"DOCUMENTS/RULES");
        rig_.settings.erase(u"DOCUMENTS/PATH");
        rig_.main->AddFile(u"F:\\x.txt", u"x", u"", u"", Date{}, Date{});
        rig_.SetFolder(u"P:\\Proj");
    }

    std::vector<std::int32_t> Ids() const {
        std::vector<std::int32_t> ids;
        for (const auto& [id, row] : model_.rows) {
            ids.push_back(id);
        }
        return ids;
    }
    grid::RowRef RowOf(std::int32_t id) {
        const std::int32_t number = rig_.model->rows.Find(0, Value(id), 1);
        EXPECT_GT(number, 0);
        return rig_.model->rows.At(number);
    }

    void Compare() {
        std::map<std::int32_t, ModelRow> rows;
        for (const grid::Slot slot : rig_.model->rows.DataRows()) {
            const auto cell = [&](std::u16string_view key) {
                return rig_.model->rows.GetAt(slot, rig_.model->columns.IndexOf(Value(key)));
            };
            const auto text = [&](std::u16string_view key) {
                return *cell(key).If<std::u16string>();
            };
            rows[*cell(u"ID").If<std::int32_t>()] = {*cell(u"ObjectType").If<std::int16_t>(),
                                                     text(u"PhysicalStore1"), text(u"Subject"),
                                                     text(u"Status"), text(u"LongDescription")};
        }
        ASSERT_EQ(rows.size(), model_.rows.size());
        for (const auto& [id, row] : rows) {
            ASSERT_TRUE(row == model_.rows[id])
                << id << ": " << ToUtf8(row.store) << " | " << ToUtf8(row.subject) << " | "
                << ToUtf8(row.status) << " | " << ToUtf8(row.notes) << " instead of "
                << ToUtf8(model_.rows[id].store) << " | " << ToUtf8(model_.rows[id].subject)
                << " | " << ToUtf8(model_.rows[id].status) << " | "
                << ToUtf8(model_.rows[id].notes);
        }
        ASSERT_EQ(rig_.fakes.journal.Count(u"Managing.WriteGridDataToItemBody"), model_.saves);
        for (const std::u16string& file : model_.files) {
            ASSERT_TRUE(rig_.fakes.files.Query(file)) << ToUtf8(file);
        }
        ASSERT_TRUE(rig_.model->Redraw());
    }

    ProofRandom random_;
    SweepRig rig_;
    ListModel model_;
    std::string trace_;
};

const Sequence50::Step Sequence50::kSteps[13] = {
    {"add a file", &Sequence50::AddFile},
    {"add a record", &Sequence50::AddRecord},
    {"import", &Sequence50::Import},
    {"copy by dialog", &Sequence50::CopyByDialog},
    {"link by dialog", &Sequence50::LinkByDialog},
    {"cancel the dialog", &Sequence50::CancelDialog},
    {"file a mail", &Sequence50::FileMail},
    {"delete", &Sequence50::Delete},
    {"change", &Sequence50::Change},
    {"present anew", &Sequence50::PresentAnew},
    {"sort and group", &Sequence50::SortAndGroup},
    {"the disk changes", &Sequence50::DiskChanges},
    {"without folder", &Sequence50::WithoutFolder},
};

} // namespace

TEST(Sequences, FiftyOperationsLeaveWhatThePlainModelHas) {
    const std::size_t sequences = ProofCount(2000, 100000);
    const unsigned first = ProofSeed();
    for (unsigned at = 0; at < sequences; ++at) {
        SCOPED_TRACE("seed " + std::to_string(first + at));
        ASSERT_NO_FATAL_FAILURE(Sequence50(first + at).Run());
    }
    StateProof("sequences", sequences, "of 50 operations, from seed " + std::to_string(first));
}

} // namespace talvix
