#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/talk/QuestionNames.h"
#include "support/SourceStage.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::string kLong33 = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234567";

class SourceRenameTest : public ::testing::Test {
  protected:
    SourceRenameTest() { t.open(test::threeSources()); }
    bool link(const std::string& from, const std::string& to) {
        return renameDataLink(t.parts, &t.ui, from, to);
    }
    bool source(const std::string& from, const std::string& to) {
        return renameDataSource(t.parts, &t.ui, from, to);
    }
    test::SourceStage t;
};

TEST_F(SourceRenameTest, ALinkIsRenamedInEveryGroupThatNamesIt) {
    EXPECT_TRUE(link("Link A", "Flutter"));
    EXPECT_THAT(t.read(groupFile('M', 1)), HasSubstr("M-1\\BB\\DLN:Flutter;"));
    EXPECT_THAT(t.read(groupFile('P', 1)), HasSubstr("P-1\\DLN:Flutter;"));
    EXPECT_THAT(t.read(groupFile('P', 2)), HasSubstr("P-2\\AEF\\DLN-1:Flutter;"));
    EXPECT_THAT(t.read(groupFile('D', 1)), HasSubstr("D-1\\DLN:Flutter;"));
    EXPECT_EQ(t.read(groupFile('R', 1)),
              "R-1\\ID:Recorder;\r\nR-1\\N:2;\r\nR-1\\CDLN-1:Flutter;\r\nR-1\\CDLN-2:Bus;\r\n"
              "R-1\\EV\\N:1;\r\nR-1\\EV\\MS-1:Flutter;\r\nR-1\\BDLN-1:Bus;\r\n"
              "R-1\\PDLN-2:Flutter;\r\nR-1\\UCNM-1-1:Flutter;\r\nR-1\\MCNM-1-2:Flutter;\r\n"
              "R-1\\ENAM-2-1:Flutter;\r\n");
    EXPECT_TRUE(t.document.changed);
    EXPECT_THAT(t.told, ElementsAre("Rename of Data Link"));
}

TEST_F(SourceRenameTest, SubcarriersBusesMessagesAndPamAreRenamedToo) {
    t.write(groupFile('M', 1), "M-1\\ID:First;\r\nM-1\\SI\\N:2;\r\nM-1\\SI\\DLN-2:Link A;\r\n");
    for (const char letter : std::string("BSA")) {
        t.write(groupFile(letter, 7), formatPrintf("%c-7\\DLN:Link A;\r\n", letter));
    }
    t.write(groupFile('P', 2), "P-2\\DLN:Link B;\r\nP-2\\ADM\\DMN-1:Link A;\r\n");
    EXPECT_TRUE(link("Link A", "New"));
    EXPECT_THAT(t.read(groupFile('M', 1)), HasSubstr("M-1\\SI\\DLN-2:New;"));
    for (const char letter : std::string("BSA")) {
        EXPECT_EQ(t.read(groupFile(letter, 7)), formatPrintf("%c-7\\DLN:New;\r\n", letter));
    }
    EXPECT_THAT(t.read(groupFile('P', 2)), HasSubstr("P-2\\ADM\\DMN-1:New;"));
}

constexpr const char* kEventOfA =
    "R-1\\ID:Recorder;\r\nR-1\\EV\\N:2;\r\nR-1\\EV\\DLN-1:Link A;\r\n"
    "R-1\\EV\\DLN-2:Link B;\r\n";

TEST_F(SourceRenameTest, OtherReferencesToALinkAreShownAndStayWithoutAYes) {
    t.write(groupFile('R', 1), kEventOfA);
    EXPECT_TRUE(link("Link A", "New"));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].name, question::kAllReferences);
    EXPECT_EQ(t.ui.boxes[0].defaultButton, Button::No);
    EXPECT_THAT(t.ui.boxes[0].text, HasSubstr("'Link A'"));
    EXPECT_THAT(t.ui.boxes[0].text, HasSubstr("\n\nR-1\\EV\\DLN-1\n\n"));
    EXPECT_EQ(t.read(groupFile('R', 1)), kEventOfA);
    EXPECT_THAT(t.read(groupFile('D', 1)), HasSubstr("D-1\\DLN:New;"));
}

TEST_F(SourceRenameTest, OtherReferencesFollowIfTheUserAgrees) {
    t.write(groupFile('R', 1), kEventOfA);
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(link("Link A", "New"));
    EXPECT_THAT(t.read(groupFile('R', 1)), HasSubstr("R-1\\EV\\DLN-1:New;\r\n"
                                                     "R-1\\EV\\DLN-2:Link B;"));
    t.write(groupFile('R', 1), "R-1\\ID:Recorder;\r\nR-1\\DSI-1:First;\r\nR-1\\DSI-2:Second;\r\n");
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(source("First", "Aircraft"));
    EXPECT_THAT(t.ui.boxes.back().text, HasSubstr("R-1\\DSI-1\n\n"));
    EXPECT_EQ(t.read(groupFile('R', 1)),
              "R-1\\ID:Recorder;\r\nR-1\\DSI-1:Aircraft;\r\nR-1\\DSI-2:Second;\r\n");
}

TEST_F(SourceRenameTest, CancelAtOtherReferencesRenamesNothing) {
    t.write(groupFile('R', 1), kEventOfA);
    const auto before = t.files();
    t.ui.queued = {Button::Cancel};
    EXPECT_FALSE(link("Link A", "New"));
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
}

TEST_F(SourceRenameTest, OtherReferencesStayWithoutAParent) {
    t.write(groupFile('R', 1), kEventOfA);
    EXPECT_TRUE(renameDataLink(t.parts, nullptr, "Link A", "New"));
    EXPECT_EQ(t.read(groupFile('R', 1)), kEventOfA);
}

TEST_F(SourceRenameTest, OnlyWholeValuesAreReplaced) {
    t.write(groupFile('D', 2), "D-2\\DLN:Link A 2;\r\nD-2\\COM:D-1\\DLN:Link A;\r\n");
    EXPECT_TRUE(link("Link A", "New"));
    EXPECT_EQ(t.read(groupFile('D', 2)), "D-2\\DLN:Link A 2;\r\nD-2\\COM:D-1\\DLN:Link A;\r\n");
}

TEST_F(SourceRenameTest, AGapInAListEndsNothing) {
    t.write(groupFile('R', 1), "R-1\\ID:Recorder;\r\nR-1\\N:9;\r\nR-1\\CDLN-9:Link A;\r\n");
    EXPECT_TRUE(link("Link A", "New"));
    EXPECT_THAT(t.read(groupFile('R', 1)), HasSubstr("R-1\\CDLN-9:New;"));
}

TEST_F(SourceRenameTest, FilesThatDoNotNameTheLinkAreNotTouched) {
    const auto path = t.store.pathOf(groupFile('M', 2));
    const auto stamp = fileStamp(path);
    EXPECT_TRUE(link("Link A", "New"));
    EXPECT_EQ(fileStamp(path), stamp);
}

TEST_F(SourceRenameTest, ANameThatDiffersInCaseIsAnotherLink) {
    t.write(groupFile('D', 1), "D-1\\DLN:Link A;\r\n");
    t.write(groupFile('D', 2), "D-2\\DLN:LINK A;\r\n");
    EXPECT_TRUE(link("Link A", "New"));
    EXPECT_EQ(t.read(groupFile('D', 1)), "D-1\\DLN:New;\r\n");
    EXPECT_EQ(t.read(groupFile('D', 2)), "D-2\\DLN:LINK A;\r\n");
}

TEST_F(SourceRenameTest, TheStatusTextsTellWhereItIs) {
    EXPECT_TRUE(link("Link A", "New"));
    for (const char* text :
         {"Updating Multiplex Data link Names (M-1)", "Updating Data link Names (P-1)",
          "Updating Data link Names (A-99)", "Updating Async Data link Names (P-2)",
          "Updating Tape Data Link Names (R-1)"}) {
        EXPECT_TRUE(t.saw(text)) << text;
    }
}

TEST_F(SourceRenameTest, ALinkNameThatExistsIsRefused) {
    const auto before = t.files();
    for (const char* taken : {"Link B", "Bus", "Link A"}) {
        t.ui.boxes.clear();
        EXPECT_FALSE(link("Link A", taken)) << taken;
        EXPECT_EQ(t.ui.countBoxes(374), 1) << taken;
    }
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
}

TEST_F(SourceRenameTest, AnotherCaseOfTheSameNameIsANewName) {
    EXPECT_TRUE(link("Link A", "LINK A"));
    EXPECT_THAT(t.read(groupFile('M', 1)), HasSubstr("M-1\\BB\\DLN:LINK A;"));
    EXPECT_TRUE(source("First", "FIRST"));
    EXPECT_THAT(t.read(groupFile('T', 1)), HasSubstr("T-1\\ID:FIRST;"));
}

TEST_F(SourceRenameTest, NamesThatCanNotBeNamesAreRefused) {
    const auto before = t.files();
    EXPECT_FALSE(link("Link A", "a;b"));
    EXPECT_TRUE(t.ui.hasBox(402));
    EXPECT_FALSE(link("Link A", " "));
    EXPECT_FALSE(link("Link A", "two\nlines"));
    EXPECT_TRUE(t.ui.hasText("Please enter a name."));
    EXPECT_FALSE(source("First", kLong33));
    EXPECT_TRUE(t.ui.hasText("This string must be no more than 32 characters long."));
    EXPECT_FALSE(link("No link", "X"));
    EXPECT_FALSE(source("No source", "X"));
    EXPECT_TRUE(t.ui.hasText("There is no data source 'No source' in this document."));
    EXPECT_EQ(t.files(), before);
    EXPECT_TRUE(link("Link A", kLong33.substr(0, 32)));
}

TEST_F(SourceRenameTest, ANameOf33CharactersIsCutTo32OnReading) {
    t.write(groupFile('G'), "G\\DSI\\N:1;\r\nG\\DSI-1:" + kLong33 + ";\r\nG\\DST-1:RF;\r\n");
    t.write(groupFile('T', 1), "T-1\\ID:" + kLong33 + ";\r\n");
    EXPECT_TRUE(source(kLong33.substr(0, 32), "Short"));
    EXPECT_TRUE(t.ui.hasText("The TMATS command 'G\\DSI-1:" + kLong33 +
                             ";'\nwas too long. This field can only be 32 characters long."));
    EXPECT_EQ(t.read(groupFile('G')), "G\\DSI\\N:1;\r\nG\\DSI-1:Short;\r\nG\\DST-1:RF;\r\n");
    EXPECT_EQ(t.read(groupFile('T', 1)), "T-1\\ID:Short;\r\n");
}

TEST_F(SourceRenameTest, ASourceIsRenamedInItsGroupsAndItsVendorGroup) {
    EXPECT_TRUE(source("First", "Renamed"));
    EXPECT_THAT(t.read(groupFile('G')), HasSubstr("G\\DSI-1:Renamed;\r\nG\\DST-1:RF;"));
    EXPECT_THAT(t.read(groupFile('T', 1)), HasSubstr("T-1\\ID:Renamed;"));
    EXPECT_THAT(t.read(groupFile('M', 1)), HasSubstr("M-1\\ID:Renamed;"));
    EXPECT_THAT(t.read(groupFile('V', 1)), HasSubstr("V-1\\ID:Renamed;"));
    EXPECT_TRUE(source("Recorder", "Box"));
    EXPECT_THAT(t.read(groupFile('R', 1)), HasSubstr("R-1\\ID:Box;"));
    EXPECT_TRUE(t.saw("Validating Data Source Names"));
    EXPECT_TRUE(t.saw("Changing Data Source Names"));
    EXPECT_TRUE(t.document.changed);
}

TEST_F(SourceRenameTest, ASourceNameThatExistsIsRefused) {
    EXPECT_FALSE(source("First", "Second"));
    EXPECT_EQ(t.ui.countBoxes(141), 1);
    EXPECT_FALSE(t.document.changed);
}

TEST_F(SourceRenameTest, TheNewNameIsAskedForUntilItIsGood) {
    t.ui.texts = {"Second", " Third "};
    EXPECT_TRUE(askRenameDataSource(t.parts, &t.ui, "First"));
    EXPECT_EQ(t.ui.textPrompts.at(0).prompt, "Enter New Data Source Name");
    EXPECT_EQ(t.ui.textPrompts.at(0).initial, "First");
    EXPECT_EQ(t.ui.countBoxes(141), 1);
    EXPECT_THAT(t.read(groupFile('T', 1)), HasSubstr("T-1\\ID:Third;"));

    t.ui.texts = {"Link B", "Link C"};
    EXPECT_TRUE(askRenameDataLink(t.parts, &t.ui, "Link A"));
    EXPECT_EQ(t.ui.textPrompts.back().prompt, "Enter New Data Link Name");
    EXPECT_EQ(t.ui.countBoxes(374), 1);
    EXPECT_THAT(t.read(groupFile('D', 1)), HasSubstr("D-1\\DLN:Link C;"));
}

TEST_F(SourceRenameTest, WhoGivesTheSameRefusedNameTwiceIsAskedNoMore) {
    t.ui.texts = {"Second", "Second", "Never"};
    EXPECT_FALSE(askRenameDataSource(t.parts, &t.ui, "First"));
    EXPECT_EQ(t.ui.texts.size(), 1U);
    EXPECT_FALSE(askRenameDataSource(t.parts, nullptr, "First"));
    EXPECT_FALSE(askRenameDataLink(t.parts, nullptr, "Link A"));
}

TEST_F(SourceRenameTest, AFailureInTheMiddleBringsBackTheFilesInFront) {
    // The D file cannot be written; the M and the P files are changed by then.
    const auto before = t.files();
    ASSERT_TRUE(makeFolder(t.store.pathOf(groupFile('D', 1) + ".new")).ok());
    EXPECT_FALSE(link("Link A", "New"));
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
    ASSERT_TRUE(makeFolder(t.store.pathOf(groupFile('M', 1) + ".new")).ok());
    EXPECT_FALSE(source("First", "New"));
    EXPECT_EQ(t.files(), before);
}

TEST_F(SourceRenameTest, ACancelBringsBackTheFilesInFront) {
    const auto before = t.files();
    for (const int poll : {1, 20, 100, 300, 500, 700}) {
        t.ui.polls = 0;
        t.ui.cancelAtPoll = poll;
        EXPECT_FALSE(link("Link A", "New")) << poll;
        EXPECT_EQ(t.files(), before) << poll;
    }
}

TEST_F(SourceRenameTest, AsAPartOfAnotherOperationItIsToldWithThat) {
    EXPECT_TRUE(inTransaction(t.context, nullptr, "Whole", [&] {
        EXPECT_TRUE(renameDataLink(t.parts, nullptr, "Link A", "New"));
        EXPECT_THAT(t.told, IsEmpty());
        return true;
    }));
    EXPECT_THAT(t.told, ElementsAre("Whole"));
    EXPECT_TRUE(t.document.changed);
}

}  // namespace
}  // namespace kavu
