#include "application/DocumentCheck.h"
#include "application/DocumentService.h"
#include "conversion/ConversionStore.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/files/FileIo.h"
#include "support/TestApplication.h"

#include <algorithm>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

struct DocumentCheckTest : testing::Test {
    void open(const std::string& name) {
        path = t.folder / "flight.tma";
        std::filesystem::copy_file(std::string(KAVU_SOURCE_DIR) + "/samples/" + name, path);
        ASSERT_TRUE(t.application.documents().openNamed(&t.ui, path));
        // The records that wait in memory are no change either.
        ASSERT_TRUE(t.application.conversions().writeOut().ok());
    }
    /// Names and contents of all that there is below the temporary folder.
    std::map<std::string, std::string> everything() {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(t.folder.path())) {
            if (entry.is_regular_file()) {
                files[entry.path()] = test::readFile(entry.path());
            }
        }
        return files;
    }

    test::TestApplication t;
    std::string path;
};

TEST_F(DocumentCheckTest, WithoutADocumentThereIsNothingToCheck) {
    EXPECT_FALSE(checkDocument(t.application, &t.ui));
}

TEST_F(DocumentCheckTest, AGoodDocumentHasNoFindings) {
    open("flight-test.tma");
    const auto findings = checkDocument(t.application, &t.ui);
    ASSERT_TRUE(findings);
    for (const auto& finding : *findings) {
        ADD_FAILURE() << finding.id << " " << finding.text;
    }
}

TEST_F(DocumentCheckTest, FindsWhatIsWrongWithTheStreamsAndChangesNothing) {
    open("mistakes.tma");
    const auto before = everything();
    const auto changed = t.application.context().document.changed;
    const auto boxes = t.ui.boxes.size();
    const auto findings = checkDocument(t.application, &t.ui);
    ASSERT_TRUE(findings);
    EXPECT_THAT(*findings, SizeIs(testing::Gt(10U)));
    EXPECT_TRUE(std::ranges::any_of(*findings, [](const Finding& finding) {
        return finding.source == "Stream 'PCM Stream 1'" &&
               finding.place.stream == "PCM Stream 1" && finding.id > 0;
    }));
    for (const auto& finding : *findings) {
        EXPECT_THAT(finding.text, Not(HasSubstr("CHECKED.TMA")));
        EXPECT_FALSE(finding.source.empty());
    }
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(t.application.context().document.changed, changed);
    EXPECT_EQ(t.ui.boxes.size(), boxes) << "no question of the reading is asked";
}

TEST_F(DocumentCheckTest, LooksAtTheDocumentAsItIsNowAndNotAtItsFile) {
    open("flight-test.tma");
    const auto group = t.application.context().store.pathOf(groupFile('P', 1));
    auto text = test::readFile(group);
    const auto at = text.find("P-1\\MF1:");
    ASSERT_NE(at, std::string::npos);
    text.replace(at, text.find(';', at) - at, "P-1\\MF1:9999");
    std::filesystem::remove(group);
    test::writeFile(group, text);
    const auto findings = checkDocument(t.application, &t.ui);
    ASSERT_TRUE(findings);
    EXPECT_THAT(*findings, Not(IsEmpty()));
    EXPECT_THAT(test::readFile(path), Not(HasSubstr("P-1\\MF1:9999")));
}

TEST_F(DocumentCheckTest, ACancelGivesNothingAndLeavesNothingBehind) {
    open("mistakes.tma");
    const auto before = everything();
    t.ui.polls = 0;
    t.ui.cancelAtPoll = 1;
    EXPECT_FALSE(checkDocument(t.application, &t.ui));
    EXPECT_EQ(everything(), before);
}

}  // namespace
}  // namespace kavu
