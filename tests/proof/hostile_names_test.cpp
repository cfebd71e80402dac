// Names of files, folders and attachments that want out of the project's folder, or that no disk
// can hold.
#include "automation/text.h"
#include "folder/file_name.h"
#include "tests/proof/hostile_names.h"
#include "tests/proof/operations.h"
#include "tests/proof/proof.h"

#include <gtest/gtest.h>

namespace talvix {

namespace {

/// Every path that was written lies directly in the folder, and what lay elsewhere is untouched.
void ExpectInside(SweepRig& rig, std::u16string_view folder) {
    for (const std::u16string& line : rig.JournalLines()) {
        for (const auto* word : {u"copy ", u"rename ", u"create folder "}) {
            if (!line.starts_with(word)) {
                continue;
            }
            const std::size_t arrow = line.find(u" -> ");
            const std::u16string target = arrow == std::u16string::npos
                                              ? line.substr(std::u16string_view(word).size())
                                              : line.substr(arrow + 4);
            ASSERT_TRUE(target.starts_with(folder)) << ToUtf8(line);
            const std::u16string name = target.substr(std::min(target.size(), folder.size() + 1));
            ASSERT_TRUE(IsPlainFileName(name)) << ToUtf8(line);
        }
    }
    ASSERT_EQ(rig.fakes.files.Query(u"C:\\Quelle\\a.doc")->length, 77);
    ASSERT_EQ(rig.fakes.files.Query(u"P:\\Proj\\a.doc")->length, 2000);
}

void FileAttachments(unsigned seed, std::size_t names) {
    SweepRig rig;
    rig.settings[u"DOCUMENTS/SUB_ACTIVE"] = u"False";
    rig.Attach();
    ProofRandom random(seed);
    rig.mail.names.clear();
    for (std::size_t at = 0; at < names; ++at) {
        rig.mail.names.push_back(HostileName(random));
    }
    rig.File(2);
    ASSERT_NO_FATAL_FAILURE(ExpectInside(rig, u"P:\\Proj"));
    rig.ExpectNothingHarmed();
}

/// A disk whose folders hold such names: each file is listed once, and only below the folder.
void ImportNames(unsigned seed, std::size_t names) {
    SweepRig rig;
    rig.Attach();
    ProofRandom random(seed);
    for (std::size_t at = 0; at < names; ++at) {
        std::u16string name = HostileName(random);
        std::erase_if(name,
                      [](char16_t each) { return each == u'\\' || each == u'/' || each == u'\0'; });
        if (!name.empty() && name != u"." && name != u"..") {
            rig.fakes.files.MakeFile(
                random.OneIn(3) ? u"P:\\Proj\\" + name + u"\\x.txt" : u"P:\\Proj\\" + name, 1);
        }
    }
    rig.fakes.journal.Clear();
    rig.main->AddFilesFromProjectFolderEvent();
    const int rows = rig.RowCount();
    ASSERT_GT(rows, 0);
    rig.main->AddFilesFromProjectFolderEvent();
    ASSERT_EQ(rig.RowCount(), rows) << "a second import finds everything listed";
    for (const std::u16string& line : rig.LinesOf({u"list "})) {
        ASSERT_TRUE(line.starts_with(u"list P:\\Proj\\")) << ToUtf8(line);
    }
    ASSERT_EQ(rig.LinesOf({u"copy", u"rename", u"remove", u"open", u"create"}), Lines());
}

} // namespace

TEST(HostileNames, NothingIsWrittenOutsideTheProjectsFolder) {
    constexpr std::size_t kTogether = 20;
    const std::size_t wanted = ProofCount(20000, 1000000);
    std::size_t tried = 0;
    for (unsigned seed = ProofSeed(); tried < wanted; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        ASSERT_NO_FATAL_FAILURE(FileAttachments(seed, kTogether));
        ASSERT_NO_FATAL_FAILURE(ImportNames(seed, kTogether));
        tried += 2 * kTogether;
    }
    StateProof("hostile names", tried,
               "attachments, files and folders, from seed " + std::to_string(ProofSeed()));
}

} // namespace talvix
