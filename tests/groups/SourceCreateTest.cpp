#include "core/document/GroupFiles.h"
#include "core/document/OpenDocument.h"
#include "groups/DataSources.h"
#include "support/SourceStage.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

const std::string kPattern = "11111110011010110010100001000000";

/// The P group of a new PCM stream with all defaults.
std::string pcmGroup(const std::string& link) {
    return "P-1\\DLN:" + link +
           ";\r\nP-1\\D1:NRZ-L;\r\nP-1\\D2:0;\r\nP-1\\D3:U;\r\nP-1\\D4:N;\r\nP-1\\D5:Y;\r\n"
           "P-1\\D6:N;\r\nP-1\\D7:N;\r\nP-1\\D8:N/A;\r\nP-1\\TF:PCM;\r\nP-1\\F1:16;\r\n"
           "P-1\\F2:M;\r\nP-1\\F3:NO;\r\nP-1\\F4:T;\r\nP-1\\MF\\N:1;\r\nP-1\\MF1:1;\r\n"
           "P-1\\MF2:32;\r\nP-1\\MF3:FPT;\r\nP-1\\MF4:32;\r\nP-1\\MF5:" +
           kPattern +
           ";\r\nP-1\\SYNC1:NS;\r\nP-1\\SYNC2:0;\r\nP-1\\SYNC3:NS;\r\nP-1\\SYNC4:0;\r\n"
           "P-1\\ISF\\N:0;\r\nP-1\\AEF\\N:0;\r\n";
}

class SourceCreateTest : public ::testing::Test {
  protected:
    /// An empty document; all questions are answered with Yes.
    explicit SourceCreateTest(int edition = 2009) : t(edition) {
        t.write(groupFile('G'), "G\\DSI\\N:0;\r\n");
        t.document.open = true;
        t.ui.otherwise = Button::Yes;
    }
    void open() { t.open(test::threeSources()); }
    test::SourceStage t;
};

TEST_F(SourceCreateTest, APcmStreamGetsItsThreeFiles) {
    t.ui.choices = {0};
    EXPECT_TRUE(createStream(t.context, &t.ui, "RF Data Source"));
    EXPECT_EQ(t.ui.boxes.at(0).text, "Do you want to create a new stream, too?");
    EXPECT_EQ(t.ui.listPrompts.at(0).first, "What Type Of Stream?");
    EXPECT_EQ(t.ui.listPrompts.at(0).second, (std::vector<std::string>{"PCM", "1553"}));
    EXPECT_EQ(t.read(groupFile('M', 1)),
              "M-1\\ID:RF Data Source;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\DLN:PCM Stream 1;\r\n"
              "M-1\\SI\\N:0;\r\n");
    EXPECT_EQ(t.read(groupFile('P', 1)), pcmGroup("PCM Stream 1"));
    EXPECT_EQ(t.read(groupFile('D', 1)),
              "D-1\\DLN:PCM Stream 1;\r\nD-1\\ML\\N:1;\r\nD-1\\MLN-1:Measurement List;\r\n"
              "D-1\\MN\\N-1:0;\r\n");
    EXPECT_TRUE(t.document.changed);
}

TEST_F(SourceCreateTest, ABusStreamHasItsFixedValuesWhateverTheSettingsSay) {
    for (const char* key : {"PF1", "PF2", "PF3", "PF4", "PMFN", "PMF3", "PMF5"}) {
        t.settings.write(key, "9");
    }
    t.ui.choices = {1};
    EXPECT_TRUE(createStream(t.context, &t.ui, "Source"));
    const auto group = t.read(groupFile('P', 1));
    for (const char* command :
         {"DLN:1553 Stream 1", "TF:1553", "F1:24", "F2:M", "F3:OD", "F4:L", "MF\\N:1", "MF3:FPT",
          "MF4:24", "MF5:111110101111001100100000", "MF2:24"}) {
        EXPECT_THAT(group, HasSubstr("P-1\\" + std::string(command) + ";\r\n"));
    }
    EXPECT_EQ(t.read(groupFile('B', 1)), "B-1\\DLN:1553 Stream 1;\r\n");
    EXPECT_FALSE(t.has(groupFile('D', 1)));
}

TEST_F(SourceCreateTest, SettingsRuleANewPcmStream) {
    t.settings.write("PD1", "BIO-L");
    t.settings.write("PF1", "12");
    t.settings.write("PMF1", "10");
    t.settings.write("PMF5", "1010");
    t.settings.write("PSYNC4", "7");
    t.settings.write("PMFN", "4");
    t.ui.choices = {0};
    EXPECT_TRUE(createStream(t.context, &t.ui, "Source"));
    const auto group = t.read(groupFile('P', 1));
    // Nine words of 12 bits and the sync word of four.
    for (const char* command :
         {"D1:BIO-L", "F1:12", "MF1:10", "MF2:112", "MF4:4", "MF5:1010", "SYNC4:7", "MF\\N:4"}) {
        EXPECT_THAT(group, HasSubstr("P-1\\" + std::string(command) + ";\r\n"));
    }
}

TEST_F(SourceCreateTest, WithoutAStreamTheMultiplexDefinitionStillNamesItsLink) {
    t.ui.otherwise = Button::No;
    EXPECT_TRUE(createStream(t.context, &t.ui, "Source"));
    EXPECT_THAT(t.read(groupFile('M', 1)), HasSubstr("M-1\\BB\\DLN:PCM Stream 1;"));
    EXPECT_FALSE(t.has(groupFile('P', 1)));
    EXPECT_FALSE(t.has(groupFile('D', 1)));
}

TEST_F(SourceCreateTest, WithoutAParentNoStreamIsMade) {
    EXPECT_TRUE(createStream(t.context, nullptr, "Source"));
    EXPECT_TRUE(t.has(groupFile('M', 1)));
    EXPECT_FALSE(t.has(groupFile('P', 1)));
}

TEST_F(SourceCreateTest, PacketTelemetryIsOfferedInTheEditionsThatHaveIt) {
    for (const int edition : {2001, 2004, 2005, 2007, 2009, 2011}) {
        test::SourceStage stage(edition);
        stage.ui.otherwise = Button::Yes;
        stage.ui.choices = {0};
        EXPECT_TRUE(createStream(stage.context, &stage.ui, "Source"));
        const bool offered = stage.ui.listPrompts.at(0).second.size() == 3;
        EXPECT_EQ(offered, edition == 2005 || edition == 2007) << edition;
    }
    test::SourceStage packets(2005);
    packets.ui.otherwise = Button::Yes;
    packets.ui.choices = {2};
    EXPECT_TRUE(createStream(packets.context, &packets.ui, "Source"));
    EXPECT_THAT(packets.read(groupFile('P', 1)), HasSubstr("P-1\\TF:PKTM;"));
    EXPECT_THAT(packets.read(groupFile('P', 1)), HasSubstr("P-1\\DLN:PCM Stream 1;"));
}

TEST_F(SourceCreateTest, TheLinkIsNamedByTheFirstFreeIndexAndUnique) {
    open();
    t.write(groupFile('M', 2), "M-2\\ID:Second;\r\nM-2\\BB\\DLN:PCM Stream 3;\r\n");
    t.ui.choices = {0};
    EXPECT_TRUE(createStream(t.context, &t.ui, "First"));
    EXPECT_THAT(t.read(groupFile('P', 3)), HasSubstr("P-3\\DLN:PCM Stream 3 2;"));
}

TEST_F(SourceCreateTest, WhereNoIndexIsFreeNothingIsWritten) {
    for (int index = 1; index <= 99; ++index) {
        t.write(groupFile('M', index), "");
    }
    t.ui.choices = {0};
    EXPECT_FALSE(createStream(t.context, &t.ui, "Source"));
    EXPECT_TRUE(t.ui.hasBox(303));
    EXPECT_FALSE(t.has(groupFile('P', 1)));
    EXPECT_FALSE(t.document.changed);
}

// --- data sources -----------------------------------------------------------------------

TEST_F(SourceCreateTest, ARadioSourceGetsItsRowItsGroupAndItsStream) {
    open();
    t.ui.texts = {"New"};
    t.ui.choices = {0, 0};
    EXPECT_TRUE(createDataSource(t.parts, &t.ui));
    EXPECT_EQ(t.ui.boxes.at(0).text, "Add a new data source/stream?");
    EXPECT_EQ(t.ui.textPrompts.at(0).prompt, "Enter New Data Source Name");
    EXPECT_EQ(t.ui.textPrompts.at(0).listed,
              (std::vector<std::string>{"First", "Second", "Recorder"}));
    EXPECT_THAT(t.ui.listPrompts.at(0).first, HasSubstr("Which kind of TMATS Data Source"));
    EXPECT_EQ(t.ui.listPrompts.at(0).second, (std::vector<std::string>{"RF", "Tape"}));
    EXPECT_EQ(t.read(groupFile('G')),
              "G\\106:09;\r\nG\\DSI\\N:4;\r\nG\\DSI-1:First;\r\nG\\DST-1:RF;\r\n"
              "G\\DSI-2:Second;\r\nG\\DST-2:RF;\r\nG\\DSI-3:Recorder;\r\nG\\DST-3:STO;\r\n"
              "G\\COM:kept;\r\nG\\DSI-4:New;\r\nG\\DST-4:RF;\r\n");
    EXPECT_EQ(t.read(groupFile('T', 3)), "T-3\\ID:New;\r\nT-3\\SCO\\N:0;\r\n");
    EXPECT_THAT(t.read(groupFile('M', 4)), HasSubstr("M-4\\BB\\DLN:PCM Stream 3;"));
    EXPECT_TRUE(t.has(groupFile('P', 3)));
    EXPECT_THAT(t.told, ElementsAre("Creation of Data Source"));
}

TEST_F(SourceCreateTest, ATapeSourceHasTheTypeTap) {
    t.ui.texts = {"Tape 1"};
    t.ui.choices = {1, 1};
    EXPECT_TRUE(createDataSource(t.parts, &t.ui));
    EXPECT_EQ(t.read(groupFile('G')), "G\\DSI\\N:1;\r\nG\\DSI-1:Tape 1;\r\nG\\DST-1:TAP;\r\n");
    EXPECT_EQ(t.read(groupFile('R', 1)), "R-1\\ID:Tape 1;\r\n");
    EXPECT_THAT(t.read(groupFile('M', 1)), HasSubstr("M-1\\BB\\DLN:1553 Stream 1;"));
}

TEST_F(SourceCreateTest, ANameThatExistsIsRefusedWith141) {
    open();
    t.ui.texts = {"First", "NEW"};
    t.ui.choices = {0, 0};
    EXPECT_TRUE(createDataSource(t.parts, &t.ui));
    EXPECT_EQ(t.ui.countBoxes(141), 1);
    EXPECT_THAT(t.read(groupFile('T', 3)), HasSubstr("T-3\\ID:NEW;"));
}

TEST_F(SourceCreateTest, EveryQuestionCanBeCancelled) {
    open();
    const auto before = t.files();
    t.ui.otherwise = Button::No;
    EXPECT_FALSE(createDataSource(t.parts, &t.ui));
    t.ui.otherwise = Button::Yes;
    EXPECT_FALSE(createDataSource(t.parts, &t.ui));  // no name
    t.ui.texts = {"New"};
    EXPECT_FALSE(createDataSource(t.parts, &t.ui));  // no kind
    EXPECT_FALSE(createDataSource(t.parts, nullptr));
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
}

TEST_F(SourceCreateTest, AFailureInTheStreamTakesTheSourceBack) {
    open();
    const auto before = t.files();
    int multiplex = 1;
    while (t.has(groupFile('M', multiplex))) {
        ++multiplex;
    }
    // Nothing can be kept; and the first file of the stream cannot be written.
    t.write("TEMP0", "a file in the way");
    t.ui.texts = {"New"};
    t.ui.choices = {0, 0};
    EXPECT_FALSE(createDataSource(t.parts, &t.ui));
    ASSERT_TRUE(deleteFile(t.store.pathOf("TEMP0")).ok());
    EXPECT_EQ(t.files(), before);
    ASSERT_TRUE(makeFolder(t.store.pathOf(groupFile('M', multiplex) + ".new")).ok());
    t.ui.texts = {"New"};
    t.ui.choices = {0, 0};
    EXPECT_FALSE(createDataSource(t.parts, &t.ui));
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
}

TEST_F(SourceCreateTest, NinetyNineDataSourcesAreTheMost) {
    std::string general = "G\\DSI\\N:120;\r\n";
    for (int row = 1; row <= 120; ++row) {
        general += formatPrintf("G\\DSI-%d:S%d;\r\nG\\DST-%d:RF;\r\n", row, row, row);
    }
    t.write(groupFile('G'), general);
    EXPECT_EQ(listDataSources(t.context, &t.ui), 99);
    EXPECT_FALSE(createDataSource(t.parts, &t.ui));
    EXPECT_TRUE(t.ui.hasBox(303));
    EXPECT_EQ(t.read(groupFile('G')), general);
}

TEST_F(SourceCreateTest, ARowBehindTheOldCountDoesNotAnswerForTheNewOne) {
    t.write(groupFile('G'), "G\\DSI\\N:0;\r\nG\\DSI-1:Stale;\r\nG\\DST-1:OTH;\r\n");
    t.ui.texts = {"New"};
    t.ui.choices = {0, 0};
    EXPECT_TRUE(createDataSource(t.parts, &t.ui));
    EXPECT_EQ(t.read(groupFile('G')),
              "G\\DSI\\N:1;\r\nG\\DSI-2:Stale;\r\nG\\DST-2:OTH;\r\n"
              "G\\DSI-1:New;\r\nG\\DST-1:RF;\r\n");
}

TEST_F(SourceCreateTest, ADocumentWithoutAGeneralGroupGetsOne) {
    ASSERT_TRUE(deleteFile(t.store.pathOf(groupFile('G'))).ok());
    t.ui.texts = {"New"};
    t.ui.choices = {0, 0};
    EXPECT_TRUE(createDataSource(t.parts, &t.ui));
    EXPECT_EQ(t.read(groupFile('G')), "G\\DSI\\N:1;\r\nG\\DSI-1:New;\r\nG\\DST-1:RF;\r\n");
}

TEST_F(SourceCreateTest, ASourceIsMadeFromATemplateOrImported) {
    t.ui.choices = {0, 0, 0};
    t.ui.texts = {"New"};
    EXPECT_TRUE(createOrImportDataSource(t.parts, &t.ui, 'T'));
    EXPECT_EQ(t.ui.listPrompts.at(0).first,
              "Would you like to create a new, blank, data source template, or import an existing "
              "data source");
    EXPECT_EQ(t.ui.listPrompts.at(0).second, (std::vector<std::string>{"Template", "Import"}));
    t.ui.choices = {1};
    EXPECT_FALSE(createOrImportDataSource(t.parts, &t.ui, 'R'));
    EXPECT_EQ(t.ui.filePrompts.at(0).title, "Import Data Source/Stream From TMATS File:");
    EXPECT_FALSE(createOrImportDataSource(t.parts, &t.ui, 'R'));
    EXPECT_FALSE(createOrImportDataSource(t.parts, nullptr, 'R'));
}

TEST_F(SourceCreateTest, TheListOfOneGroupHasTheSourcesOfThatKind) {
    open();
    const auto radio = sourcesOfGroup(t.context, &t.ui, 'T');
    ASSERT_EQ(radio.size(), 2U);
    EXPECT_EQ(radio[1].name, "Second");
    EXPECT_EQ(radio[1].index, 2);
    const auto tape = sourcesOfGroup(t.context, &t.ui, 'R');
    ASSERT_EQ(tape.size(), 1U);
    EXPECT_EQ(tape[0].type, "STO");
    EXPECT_EQ(tape[0].index, 1);
}

TEST_F(SourceCreateTest, ANewDocumentGetsItsFirstStream) {
    t.steps.createStream = [this](UserInterface* parent, const std::string& source) {
        return createStream(t.context, parent, source);
    };
    t.ui.choices = {0, 0};
    const LoadScope load(t.context.files);
    EXPECT_TRUE(createNewTmatsFile(t.context, &t.ui, true));
    EXPECT_THAT(t.read(groupFile('M', 1)), HasSubstr("M-1\\ID:RF Data Source;"));
    EXPECT_EQ(t.read(groupFile('P', 1)), pcmGroup("PCM Stream 1"));
}

}  // namespace
}  // namespace kavu
