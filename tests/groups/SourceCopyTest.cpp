#include "core/document/GroupFiles.h"
#include "groups/DataSources.h"
#include "support/SourceStage.h"

#include <unistd.h>

#include <gmock/gmock.h>

namespace kavu {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class SourceCopyTest : public ::testing::Test {
  protected:
    SourceCopyTest() { t.open(test::threeSources()); }
    /// Answers: make a copy, this name, and these for prefix and suffix (none if empty).
    bool copy(const std::string& name, const std::string& newName, const std::string& prefix = {},
              const std::string& suffix = {}) {
        const bool affixes = !prefix.empty() || !suffix.empty();
        t.ui.queued = {Button::Yes, affixes ? Button::Yes : Button::No};
        t.ui.texts = {newName};
        if (affixes) {
            t.ui.texts.push_back(prefix);
            t.ui.texts.push_back(suffix);
        }
        return copyDataSource(t.parts, &t.ui, name);
    }
    test::SourceStage t;
};

TEST_F(SourceCopyTest, AllGroupsOfTheSourceAreCopiedUnderNewNames) {
    t.measurements.setChecking(false, false);
    EXPECT_TRUE(copy("Second", "Third"));
    EXPECT_EQ(t.ui.boxes.at(0).title, "Duplicate Data Source");
    EXPECT_EQ(t.ui.boxes.at(0).text, "Do you wish to make a copy of this Data Source?");
    EXPECT_EQ(t.ui.textPrompts.at(0).prompt, "Enter New Name");
    EXPECT_THAT(t.read(groupFile('G')), HasSubstr("G\\DSI\\N:4;"));
    EXPECT_THAT(t.read(groupFile('G')), HasSubstr("G\\DSI-4:Third;\r\nG\\DST-4:RF;\r\n"));
    EXPECT_EQ(t.read(groupFile('T', 3)), "T-3\\ID:Third;\r\nT-3\\RF1:1450.5;\r\n");
    EXPECT_EQ(t.read(groupFile('M', 4)),
              "M-4\\ID:Third;\r\nM-4\\BSG1:PCM;\r\nM-4\\BB\\DLN:Link B 2;\r\nM-4\\SI\\N:0;\r\n");
    // The stream that is embedded is not copied, and stays embedded in the copy.
    EXPECT_EQ(
        t.read(groupFile('P', 3)),
        "P-3\\DLN:Link B 2;\r\nP-3\\TF:ONE;\r\nP-3\\AEF\\N:1;\r\nP-3\\AEF\\DLN-1:Link A;\r\n");
    EXPECT_EQ(t.read(groupFile('D', 3)),
              "D-3\\DLN:Link B 2;\r\nD-3\\ML\\N:1;\r\nD-3\\MN\\N-1:1;\r\nD-3\\MN-1-1:GAMMA;\r\n");
    for (const char* text :
         {"Copying Data Source Files", "Copying Stream Files", "Copying Measurement Files",
          "Updating Data Source Names", "Updating Data Link Names", "Updating Measurement Names",
          "Adding EU Conversion Information"}) {
        EXPECT_TRUE(t.saw(text)) << text;
    }
    EXPECT_TRUE(t.document.changed);
    EXPECT_THAT(t.told, ElementsAre("Copy of Data Source"));
}

TEST_F(SourceCopyTest, TheOriginalStaysAsItIs) {
    const auto before = t.files();
    EXPECT_TRUE(copy("Second", "Third", "X_"));
    const auto after = t.files();
    for (const auto& [name, bytes] : before) {
        if (name != groupFile('G') && name != working::kStoreRecord && !name.ends_with(".C_O")) {
            EXPECT_EQ(after.at(name), bytes) << name;
        }
    }
}

TEST_F(SourceCopyTest, ABusStreamTakesItsBusGroup) {
    EXPECT_TRUE(copy("Recorder", "Recorder 2", {}, "_B"));
    EXPECT_EQ(t.read(groupFile('B', 2)), "B-2\\DLN:Bus 2;\r\nB-2\\MN-1-1-1:HEADING_B;\r\n");
    EXPECT_THAT(t.read(groupFile('G')), HasSubstr("G\\DST-4:STO;"));
    // Its own link under the new name, the links of others as they were.
    EXPECT_THAT(t.read(groupFile('R', 2)), HasSubstr("R-2\\CDLN-1:Link A;\r\nR-2\\CDLN-2:Bus 2;"));
}

TEST_F(SourceCopyTest, MeasurementsGetPrefixAndSuffixAndTheirConversions) {
    EXPECT_TRUE(copy("First", "Copy", "L_", "_2"));
    EXPECT_THAT(t.read(groupFile('D', 3)),
                HasSubstr("D-3\\MN-1-1:L_ALPHA_2;\r\nD-3\\MN-1-2:L_BETA_2;"));
    const auto place = t.conversions.locateDefinition("L_ALPHA_2");
    ASSERT_TRUE(place.found);
    EXPECT_EQ(t.conversions.chunk(place.chunk)->value("L_ALPHA_2", "CO-1", ""), "2.0");
    EXPECT_FALSE(t.conversions.locateDefinition("L_BETA_2").found);
    EXPECT_TRUE(t.conversions.locateDefinition("ALPHA").found);
    EXPECT_EQ(t.settings.profileText("StreamImport", "Prefix"), "L_");
    EXPECT_EQ(t.settings.profileText("StreamImport", "Suffix"), "_2");
    EXPECT_TRUE(t.measurements.otherStream("L_BETA_2", 0).has_value());
}

TEST_F(SourceCopyTest, TheLastPrefixAndSuffixAreOffered) {
    t.settings.writeProfile("StreamImport", "Prefix", "OLD_");
    EXPECT_TRUE(copy("First", "Copy", "NEW_"));
    const auto box = t.ui.boxes.at(1);
    EXPECT_EQ(box.title, "Import Data Source");
    EXPECT_EQ(box.text,
              "Would you like to change the names of measurements that are copied, by adding a "
              "prefix and/or suffix to each measurement name?");
    EXPECT_EQ(t.ui.textPrompts.at(1).title, "Measurement Prefix And Suffix");
    EXPECT_EQ(t.ui.textPrompts.at(1).initial, "OLD_");
    EXPECT_EQ(t.ui.textPrompts.at(2).prompt, "Suffix:");
}

TEST_F(SourceCopyTest, ALongCommentComesAlong) {
    const std::string comment(40000, 'x');
    {
        const ChangeScope edit(t.context.files);
        ASSERT_TRUE(t.conversions.writeEuComment(&t.ui, "ALPHA", comment, false));
    }
    EXPECT_TRUE(copy("First", "Copy", "L_"));
    EXPECT_EQ(t.conversions.readEuComment("L_ALPHA", false), comment);
    EXPECT_EQ(t.conversions.readEuComment("ALPHA", false), comment);
}

TEST_F(SourceCopyTest, ARecordThatIsThereIsKeptAndLogged) {
    {
        const ChangeScope edit(t.context.files);
        ASSERT_TRUE(t.conversions.createDefaultDefinition(nullptr, "L_ALPHA", false));
    }
    EXPECT_TRUE(copy("First", "Copy", "L_"));
    ASSERT_EQ(t.ui.countLogs(459), 1);
    EXPECT_THAT(t.ui.logs.back().text, HasSubstr("'L_ALPHA'"));
    EXPECT_EQ(t.ui.shown.size(), 1U);
    const auto place = t.conversions.locateDefinition("L_ALPHA");
    EXPECT_EQ(t.conversions.chunk(place.chunk)->value("L_ALPHA", "CO-1", ""), "");
}

TEST_F(SourceCopyTest, ManyRecordsFillChunkAfterChunk) {
    std::string text =
        "G\\106:09;\r\nG\\DSI\\N:1;\r\nG\\DSI-1:S;\r\nG\\DST-1:RF;\r\nT-1\\ID:S;\r\n"
        "M-1\\ID:S;\r\nM-1\\BB\\DLN:L;\r\nP-1\\DLN:L;\r\nP-1\\TF:ONE;\r\n"
        "D-1\\DLN:L;\r\n";
    for (int i = 1; i <= 900; ++i) {
        text += formatPrintf("D-1\\MN-1-%d:M%d;\r\nC-%d\\DCN:M%d;\r\nC-%d\\MN1:%s;\r\n", i, i, i, i,
                             i, std::string(30, 'a'));
    }
    test::SourceStage many;
    many.open(text);
    many.ui.queued = {Button::Yes, Button::Yes};
    many.ui.texts = {"Copy", "P_", ""};
    EXPECT_TRUE(copyDataSource(many.parts, &many.ui, "S"));
    const auto names = many.conversions.definitionNames(-1);
    ASSERT_TRUE(names);
    EXPECT_EQ(names->size(), 1800U);
    for (const int i : {1, 450, 900}) {
        const auto name = "P_M" + std::to_string(i);
        const auto place = many.conversions.locateDefinition(name);
        ASSERT_TRUE(place.found) << name;
        EXPECT_EQ(many.conversions.chunk(place.chunk)->value(name, "MN1", ""),
                  std::string(30, 'a'));
    }
    EXPECT_EQ(many.ui.countLogs(459), 0);
}

TEST_F(SourceCopyTest, CommentsShareTheChunksOfTheirRecordsAndNeedNoFilesOfTheirOwn) {
    std::string text =
        "G\\106:09;\r\nG\\DSI\\N:1;\r\nG\\DSI-1:S;\r\nG\\DST-1:RF;\r\nT-1\\ID:S;\r\n"
        "M-1\\ID:S;\r\nM-1\\BB\\DLN:L;\r\nP-1\\DLN:L;\r\nP-1\\TF:ONE;\r\n"
        "D-1\\DLN:L;\r\n";
    for (int i = 1; i <= 600; ++i) {
        text += formatPrintf(
            "D-1\\MN-1-%d:M%d;\r\nC-%d\\DCN:M%d;\r\nC-%d\\MN1:%s;\r\n"
            "C-%d\\COM:first %d\r\nlast;\r\n",
            i, i, i, i, i, std::string(60, 'a'), i, i);
    }
    test::SourceStage many;
    many.open(text);
    many.ui.queued = {Button::Yes, Button::Yes};
    many.ui.texts = {"Copy", "P_", ""};
    EXPECT_TRUE(copyDataSource(many.parts, &many.ui, "S"));
    for (int i = 1; i <= 600; ++i) {
        EXPECT_EQ(many.conversions.readEuComment("P_M" + std::to_string(i), false),
                  "first " + std::to_string(i) + "\r\nlast");
    }
    // At most one comment in each chunk finds no room any more.
    std::size_t chunks = 0;
    std::size_t comments = 0;
    for (const auto& [name, bytes] : many.files()) {
        chunks += name.ends_with(".C_O") ? 1 : 0;
        comments += name.ends_with(".C_COM") ? 1 : 0;
    }
    EXPECT_LE(comments, chunks);
}

TEST_F(SourceCopyTest, NamesThatDifferOnlyInCaseAreSourcesAndLinksOfTheirOwn) {
    test::SourceStage both;
    both.open(
        "G\\106:09;\r\nG\\DSI\\N:2;\r\nG\\DSI-1:Pod;\r\nG\\DST-1:RF;\r\nG\\DSI-2:POD;\r\n"
        "G\\DST-2:RF;\r\nT-1\\ID:Pod;\r\nT-2\\ID:POD;\r\n"
        "M-1\\ID:Pod;\r\nM-1\\SI\\N:2;\r\nM-1\\SI\\DLN-1:Link;\r\nM-1\\SI\\DLN-2:LINK;\r\n"
        "M-2\\ID:POD;\r\nM-2\\BB\\DLN:Other;\r\n"
        "P-1\\DLN:Link;\r\nP-1\\TF:ONE;\r\nP-2\\DLN:LINK;\r\nP-2\\TF:TWO;\r\n"
        "P-3\\DLN:Other;\r\nP-3\\TF:ONE;\r\n");
    both.ui.queued = {Button::Yes, Button::No};
    both.ui.texts = {"Copy"};
    EXPECT_TRUE(copyDataSource(both.parts, &both.ui, "Pod"));
    EXPECT_EQ(both.read(groupFile('T', 3)), "T-3\\ID:Copy;\r\n");
    EXPECT_EQ(both.read(groupFile('M', 3)),
              "M-3\\ID:Copy;\r\nM-3\\SI\\N:2;\r\nM-3\\SI\\DLN-1:Link 2;\r\n"
              "M-3\\SI\\DLN-2:LINK 2;\r\n");
    EXPECT_FALSE(both.has(groupFile('M', 4)));
    EXPECT_EQ(both.read(groupFile('P', 4)), "P-4\\DLN:Link 2;\r\nP-4\\TF:ONE;\r\n");
    EXPECT_EQ(both.read(groupFile('P', 5)), "P-5\\DLN:LINK 2;\r\nP-5\\TF:TWO;\r\n");
    EXPECT_FALSE(both.has(groupFile('P', 6)));
}

TEST_F(SourceCopyTest, AGroupFileThatCanNotBeProbedIsNeverOverwritten) {
    // A link that leads to itself: what is there can not be told.
    const auto path = t.store.pathOf(groupFile('P', 1));
    std::string bytes;
    ASSERT_TRUE(readWholeFile(path, bytes).ok());
    ASSERT_TRUE(deleteFile(path).ok());
    ASSERT_EQ(symlink(path.c_str(), path.c_str()), 0);
    const auto general = t.read(groupFile('G'));
    EXPECT_FALSE(copy("Second", "Third", "X_"));
    EXPECT_TRUE(t.ui.hasText(groupFile('P', 1)));
    EXPECT_EQ(t.read(groupFile('G')), general);
    EXPECT_FALSE(t.document.changed);
    ASSERT_TRUE(deleteFile(path).ok());
}

TEST_F(SourceCopyTest, ANameThatExistsIsRefused) {
    t.ui.queued = {Button::Yes, Button::No};
    t.ui.texts = {"First", "Other"};
    EXPECT_TRUE(copyDataSource(t.parts, &t.ui, "Second"));
    EXPECT_TRUE(t.ui.hasText("This name already exists. Please select another name"));
    EXPECT_THAT(t.read(groupFile('T', 3)), HasSubstr("T-3\\ID:Other;"));
}

TEST_F(SourceCopyTest, ANameThatExistsInAnotherCaseIsAnotherName) {
    t.ui.queued = {Button::Yes, Button::No};
    t.ui.texts = {"first"};
    EXPECT_TRUE(copyDataSource(t.parts, &t.ui, "Second"));
    EXPECT_FALSE(t.ui.hasText("This name already exists. Please select another name"));
    EXPECT_THAT(t.read(groupFile('T', 3)), HasSubstr("T-3\\ID:first;"));
    EXPECT_THAT(t.read(groupFile('T', 1)), HasSubstr("T-1\\ID:First;"));
}

TEST_F(SourceCopyTest, EqualMeasurementNamesAreReportedAndTheirCheckEnds) {
    EXPECT_TRUE(t.measurements.checking());
    EXPECT_TRUE(copy("Second", "Third"));
    EXPECT_EQ(t.ui.countBoxes(456), 1);
    EXPECT_FALSE(t.measurements.checking());
}

TEST_F(SourceCopyTest, UniqueLinkNamesCountUpAndKeepToTheLimit) {
    const std::string name(32, 'N');
    t.write(groupFile('M', 2), "M-2\\ID:Second;\r\nM-2\\BB\\DLN:" + name + ";\r\n");
    t.write(groupFile('P', 2), "P-2\\DLN:" + name + ";\r\nP-2\\TF:ONE;\r\n");
    EXPECT_TRUE(copy("Second", "Third", "A_"));
    EXPECT_THAT(t.read(groupFile('P', 3)), HasSubstr("P-3\\DLN:" + std::string(30, 'N') + " 2;"));
    EXPECT_TRUE(copy("Second", "Fourth", "B_"));
    EXPECT_THAT(t.read(groupFile('P', 4)), HasSubstr("P-4\\DLN:" + std::string(30, 'N') + " 3;"));
}

TEST_F(SourceCopyTest, MeasurementNamesThatGetTooLongStopTheCopy) {
    const auto before = t.files();
    EXPECT_FALSE(copy("First", "Copy", std::string(30, 'p')));
    EXPECT_TRUE(t.ui.hasText("the name of measurement 'ALPHA' would be longer than 32"));
    EXPECT_EQ(t.files(), before);
}

TEST_F(SourceCopyTest, ASemicolonInAPrefixIsRefused) {
    const auto before = t.files();
    EXPECT_FALSE(copy("First", "Copy", "a;"));
    EXPECT_TRUE(t.ui.hasBox(402));
    EXPECT_EQ(t.files(), before);
}

TEST_F(SourceCopyTest, EveryQuestionCanBeCancelled) {
    const auto before = t.files();
    t.ui.queued = {Button::No};
    EXPECT_FALSE(copyDataSource(t.parts, &t.ui, "First"));
    t.ui.queued = {Button::Yes};
    EXPECT_FALSE(copyDataSource(t.parts, &t.ui, "First"));  // no name
    t.ui.queued = {Button::Yes, Button::Cancel};
    t.ui.texts = {"Copy"};
    EXPECT_FALSE(copyDataSource(t.parts, &t.ui, "First"));
    t.ui.queued = {Button::Yes, Button::Yes};
    t.ui.texts = {"Copy", "prefix"};
    EXPECT_FALSE(copyDataSource(t.parts, &t.ui, "First"));  // no suffix
    EXPECT_FALSE(copyDataSource(t.parts, nullptr, "First"));
    EXPECT_FALSE(copy("Nobody", "Copy"));
    EXPECT_TRUE(t.ui.hasText("There is no data source 'Nobody' in this document."));
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
}

TEST_F(SourceCopyTest, ACancelOrAFailureLeavesTheDocumentAsItWas) {
    const auto before = t.files();
    for (int poll = 1; poll <= 12; ++poll) {
        t.ui.polls = 0;
        t.ui.cancelAtPoll = poll;
        if (copy("First", "Copy", "X_")) {
            EXPECT_GT(poll, 6);
            return;
        }
        EXPECT_EQ(t.files(), before) << poll;
        EXPECT_FALSE(t.conversions.locateDefinition("X_ALPHA").found);
    }
}

TEST_F(SourceCopyTest, WhereAFileCanNotBeWrittenNothingIsLeftBehind) {
    for (const auto& name : {groupFile('G'), std::string("[kavu]00000000.C_O")}) {
        const auto before = t.files();
        const auto obstacle = t.store.pathOf(name + ".new");
        ASSERT_TRUE(makeFolder(obstacle).ok());
        EXPECT_FALSE(copy("First", "Copy", "X_")) << name;
        ASSERT_TRUE(deleteFolder(obstacle).ok());
        EXPECT_EQ(t.files(), before) << name;
    }
}

}  // namespace
}  // namespace kavu
