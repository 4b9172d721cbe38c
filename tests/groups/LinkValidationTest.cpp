#include "groups/LinkValidation.h"
#include "support/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::Contains;
using testing::HasSubstr;

struct LinkValidation : testing::Test {
    void answer(Button button) { t.ui.byId[304] = button; }
    bool validate() { return validateDataLinks(t.context, &t.ui); }
    void writePcm(int index, const std::string& commands) {
        t.write(formatPrintf("[kavu]PCMFMT.P%2.2d", index), commands);
    }

    test::TestContext t;
};

TEST_F(LinkValidation, AnEmptyDocumentPasses) {
    EXPECT_TRUE(validate());
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_EQ(t.ui.progressOpened, 1);
    EXPECT_EQ(t.ui.progressClosed, 1);
}

TEST_F(LinkValidation, ALinkOfAMultiplexHasAHome) {
    t.write("[kavu]MULT.M01", "M-1\\SI\\N:1;\r\nM-1\\SI\\DLN-1:Pcm;\r\n");
    writePcm(1, "P-1\\DLN:Pcm;\r\n");
    t.write("[kavu]PCMMEAS.D01", "D-1\\DLN:Pcm;\r\n");
    EXPECT_TRUE(validate());
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_THAT(t.ui.statusTexts, Contains("Searching for Data Link Names in PCM Definition #1"));
    EXPECT_THAT(t.ui.statusTexts,
                Contains("Searching for Data Link Names in Measurement Definition #1"));
}

// Look-ups of streams are exact, so a name in another case would have its home and never be found.
TEST_F(LinkValidation, ANameInAnotherCaseIsNoHome) {
    t.write("[kavu]MULT.M01", "M-1\\BB\\DLN:Pcm;\r\n");
    t.write("[kavu]DSRCE.R01", "R-1\\CDLN-1:TAPE;\r\n");
    writePcm(1, "P-1\\DLN:Pcm;\r\nP-1\\AEF\\N:1;\r\nP-1\\AEF\\DLN-1:Inner;\r\n");
    writePcm(2, "P-2\\DLN:PCM;\r\n");
    writePcm(3, "P-3\\DLN:inner;\r\n");
    writePcm(4, "P-4\\DLN:Tape;\r\n");
    t.write("[kavu]PCMMEAS.D01", "D-1\\DLN:pcm;\r\n");
    answer(Button::No);
    EXPECT_TRUE(validate());
    ASSERT_EQ(t.ui.countBoxes(304), 4);
    EXPECT_THAT(t.ui.boxes[0].text, HasSubstr("PCM"));
    EXPECT_THAT(t.ui.boxes[1].text, HasSubstr("inner"));
    EXPECT_THAT(t.ui.boxes[2].text, HasSubstr("Tape"));
    EXPECT_THAT(t.ui.boxes[3].text, HasSubstr("pcm"));
}

TEST_F(LinkValidation, AnEmbeddedFormatNeedsNoMultiplexEntry) {
    t.write("[kavu]MULT.M01", "M-1\\BB\\DLN:Outer;\r\n");
    writePcm(1,
             "P-1\\DLN:Outer;\r\nP-1\\AEF\\N:1;\r\nP-1\\AEF\\DLN-1:Inner;\r\nP-1\\ADM\\N:1;\r\n"
             "P-1\\ADM\\DMN-1:Merged;\r\n");
    writePcm(2, "P-2\\DLN:Inner;\r\n");
    writePcm(3, "P-3\\DLN:Merged;\r\n");
    t.write("[kavu]PCMMEAS.D01", "D-1\\DLN:Inner;\r\n");
    EXPECT_TRUE(validate());
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(LinkValidation, ABusOfTheNameOfAnEmbeddedFormatStillNeedsAHome) {
    writePcm(1, "P-1\\AEF\\N:1;\r\nP-1\\AEF\\DLN-1:Inner;\r\n");
    t.write("[kavu]PCM1553.B01", "B-1\\DLN:Inner;\r\n");
    EXPECT_TRUE(validate());
    ASSERT_EQ(t.ui.countBoxes(304), 1);
    EXPECT_THAT(t.ui.boxes[0].text, HasSubstr("A 1553 definition"));
}

TEST_F(LinkValidation, FilesBehindAGapAreSeenInEveryStep) {
    writePcm(1, "P-1\\TF:ONE;\r\n");
    writePcm(50, "P-50\\AEF\\N:1;\r\nP-50\\AEF\\DLN-1:Inner;\r\n");
    writePcm(60, "P-60\\DLN:Inner;\r\n");
    writePcm(99, "P-99\\DLN:Lost P;\r\n");
    t.write("[kavu]PCMMEAS.D98", "D-98\\DLN:Lost D;\r\n");
    t.write("[kavu]PCM1553.B97", "B-97\\DLN:Lost B;\r\n");
    t.write("[kavu]PCMPAM.A96", "A-96\\DLN:Lost A;\r\n");
    EXPECT_TRUE(validate());
    ASSERT_EQ(t.ui.countBoxes(304), 4);
    EXPECT_THAT(t.ui.boxes[0].text, HasSubstr("A PCM Format definition"));
    EXPECT_THAT(t.ui.boxes[0].text, HasSubstr("(Lost P)"));
    EXPECT_THAT(t.ui.boxes[1].text, HasSubstr("A PCM Measurement definition"));
    EXPECT_THAT(t.ui.boxes[2].text, HasSubstr("(Lost B)"));
    EXPECT_THAT(t.ui.boxes[3].text, HasSubstr("A PAM definition"));
}

TEST_F(LinkValidation, ALinkIsAskedForOnce) {
    writePcm(1, "P-1\\DLN:Lost;\r\n");
    t.write("[kavu]PCMMEAS.D01", "D-1\\DLN:Lost;\r\n");
    EXPECT_TRUE(validate());
    EXPECT_EQ(t.ui.countBoxes(304), 1);
    EXPECT_EQ(t.ui.boxes[0].id, -304);
    EXPECT_EQ(t.ui.boxes[0].titleId, title::kWarning);
    EXPECT_EQ(t.ui.boxes[0].buttons, Buttons::YesNo);
}

TEST_F(LinkValidation, NoLeavesTheLinkUnresolved) {
    writePcm(1, "P-1\\DLN:Lost;\r\n");
    answer(Button::No);
    EXPECT_TRUE(validate());
    EXPECT_FALSE(t.document.changed);
    EXPECT_FALSE(t.has(working::kGeneral));
    EXPECT_FALSE(t.has("[kavu]MULT.M01"));
}

TEST_F(LinkValidation, WithoutAParentTheAnswerIsNo) {
    writePcm(1, "P-1\\DLN:Lost;\r\n");
    EXPECT_TRUE(validateDataLinks(t.context, nullptr));
    EXPECT_FALSE(t.document.changed);
    EXPECT_FALSE(t.has("[kavu]MULT.M01"));
}

TEST_F(LinkValidation, ALonePcmGroupGetsAHomeOfTypeRf) {
    writePcm(1, "P-1\\DLN:Lost;\r\n");
    answer(Button::Yes);
    EXPECT_TRUE(validate());
    EXPECT_TRUE(t.document.changed);
    EXPECT_EQ(t.read(working::kGeneral),
              "G\\DSI\\N:1;\r\nG\\DSI-1:Data Source #1;\r\nG\\DST-1:RF;\r\n");
    EXPECT_EQ(t.read("[kavu]DSRCE.T01"), "T-1\\ID:Data Source #1;\r\nT-1\\SCO\\N:0;\r\n");
    EXPECT_EQ(t.read("[kavu]MULT.M01"),
              "M-1\\ID:Data Source #1;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\DLN:Lost;\r\n"
              "M-1\\SI\\N:0;\r\n");
    EXPECT_FALSE(t.has(working::kMultiplexScratch));
}

TEST_F(LinkValidation, AStreamGetsAHomeLaterAndLosesItByUndo) {
    t.write(working::kGeneral, "G\\106:09;\r\nG\\DSI\\N:0;\r\n");
    writePcm(1, "P-1\\DLN:Lone;\r\n");
    const auto before = t.read(working::kGeneral);
    answer(Button::No);
    EXPECT_FALSE(createStreamHome(t.context, &t.ui, "Lone"));
    EXPECT_FALSE(createStreamHome(t.context, nullptr, "Lone"));
    EXPECT_EQ(t.read(working::kGeneral), before);
    EXPECT_FALSE(t.has("[kavu]MULT.M01"));
    EXPECT_TRUE(t.ui.hasText("Lone"));
    answer(Button::Yes);
    EXPECT_TRUE(createStreamHome(t.context, &t.ui, "Lone"));
    EXPECT_THAT(t.read("[kavu]MULT.M01"), HasSubstr("M-1\\BB\\DLN:Lone;"));
    EXPECT_THAT(t.read(working::kGeneral), HasSubstr("G\\DST-1:RF;"));
    EXPECT_EQ(t.context.history.undoName(), "Home of Stream");
    EXPECT_TRUE(t.context.history.undo(&t.ui));
    EXPECT_FALSE(t.has("[kavu]MULT.M01"));
    EXPECT_EQ(t.read(working::kGeneral), before);
}

TEST_F(LinkValidation, AHomeJoinsTheDataSourcesThatAreThere) {
    t.write(working::kGeneral,
            "G\\PN:Alpha;\r\nG\\DSI\\N:1;\r\nG\\DSI-1:One;\r\nG\\DST-1:TAP;\r\n");
    t.write("[kavu]DSRCE.T02", "T-2\\ID:x;\r\n");
    t.write("[kavu]MULT.M01", "M-1\\ID:One;\r\n");
    writePcm(4, "P-4\\DLN:Lost;\r\n");
    answer(Button::Yes);
    EXPECT_TRUE(validate());
    EXPECT_EQ(t.read(working::kGeneral),
              "G\\PN:Alpha;\r\nG\\DSI-1:One;\r\nG\\DST-1:TAP;\r\nG\\DSI\\N:2;\r\n"
              "G\\DSI-2:Data Source #2;\r\nG\\DST-2:RF;\r\n");
    EXPECT_TRUE(t.has("[kavu]DSRCE.T01"));
    EXPECT_TRUE(t.has("[kavu]MULT.M02"));
}

TEST_F(LinkValidation, ACountBeyondAllNumbersDoesNotWrapAround) {
    t.write(working::kGeneral, "G\\DSI\\N:99999999999;\r\n");
    writePcm(1, "P-1\\DLN:Lost;\r\n");
    answer(Button::Yes);
    EXPECT_TRUE(validate());
    EXPECT_THAT(t.read(working::kGeneral), HasSubstr("G\\DSI\\N:2147483647;"));
}

TEST_F(LinkValidation, NinetyNineLinksAreTooMany) {
    for (int index = 1; index <= 99; ++index) {
        t.write(formatPrintf("[kavu]MULT.M%2.2d", index),
                formatPrintf("M-%d\\BB\\DLN:Link %d;\r\n", index, index));
    }
    EXPECT_FALSE(validate());
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, 302);
    EXPECT_EQ(t.ui.boxes[0].titleId, title::kError);
}

TEST_F(LinkValidation, TheLinkBeyondNinetyNineStopsTheLoad) {
    for (int index = 1; index <= 98; ++index) {
        t.write(formatPrintf("[kavu]MULT.M%2.2d", index),
                formatPrintf("M-%d\\BB\\DLN:Link %d;\r\n", index, index));
    }
    writePcm(1, "P-1\\DLN:Lost 1;\r\n");
    writePcm(2, "P-2\\DLN:Lost 2;\r\n");
    EXPECT_FALSE(validate());
    EXPECT_EQ(t.ui.countBoxes(304), 1);
    EXPECT_EQ(t.ui.countBoxes(303), 1);
    EXPECT_THAT(t.ui.boxes.back().text, HasSubstr("Unable to create new PCM Format link"));
}

TEST_F(LinkValidation, TheLastTransmissionIndexIsNeverTaken) {
    for (int index = 1; index <= 98; ++index) {
        t.write(formatPrintf("[kavu]DSRCE.T%2.2d", index), "");
    }
    writePcm(1, "P-1\\DLN:Lost;\r\n");
    answer(Button::Yes);
    EXPECT_FALSE(validate());
    EXPECT_THAT(t.ui.boxes.back().text, HasSubstr("Unable to create new RF link"));
    EXPECT_FALSE(t.has("[kavu]DSRCE.T99"));
}

TEST_F(LinkValidation, TheLastMultiplexIndexIsNeverTaken) {
    for (int index = 1; index <= 98; ++index) {
        t.write(formatPrintf("[kavu]MULT.M%2.2d", index), "");
    }
    writePcm(1, "P-1\\DLN:Lost;\r\n");
    answer(Button::Yes);
    EXPECT_FALSE(validate());
    EXPECT_THAT(t.ui.boxes.back().text, HasSubstr("Unable to create new Multiplex link"));
}

struct Recorded {
    const char* name;
    const char* command;
};
class RecordedLinks : public testing::TestWithParam<Recorded> {};

TEST_P(RecordedLinks, NeedNoHome) {
    test::TestContext t;
    t.write("[kavu]DSRCE.R07", GetParam().command);
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:Track;\r\n");
    EXPECT_TRUE(validateDataLinks(t.context, &t.ui));
    EXPECT_TRUE(t.ui.boxes.empty());
}

INSTANTIATE_TEST_SUITE_P(Codes, RecordedLinks,
                         testing::Values(Recorded{"Channel", "R-7\\CDLN-1:Track;\r\n"},
                                         Recorded{"Bus", "R-7\\BDLN-3:Track;\r\n"},
                                         Recorded{"Pcm", "R-7\\PDLN-2:Track;\r\n"},
                                         Recorded{"Uart", "R-7\\UCNM-1-2:Track;\r\n"},
                                         Recorded{"Message", "R-7\\MCNM-1-2:Track;\r\n"},
                                         Recorded{"Ethernet", "R-7\\ENAM-4-1:Track;\r\n"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(LinkValidation, TheTapeListHoldsTheValuesOfAllCommandsOfItsCodes) {
    t.write("[kavu]DSRCE.R01",
            "R-1\\N:1;\r\nR-1\\CDLN-1:A;\r\nR-1\\CDLN-1:B;\r\nR-1\\CDLN-9:C;\r\n");
    LinkNames links;
    EXPECT_TRUE(gatherRecordedLinks(t.context, &t.ui, links));
    EXPECT_THAT(links.names(), testing::ElementsAre("A", "B", "C"));
}

TEST_F(LinkValidation, ACancelEndsItWithoutADocument) {
    writePcm(1, "P-1\\DLN:Lost;\r\n");
    for (int poll = 1; poll <= 3; ++poll) {
        t.ui.polls = 0;
        t.ui.cancelAtPoll = poll;
        EXPECT_FALSE(validate()) << poll;
    }
    EXPECT_EQ(t.ui.progressOpened, t.ui.progressClosed);
}

TEST_F(LinkValidation, ALinkNameOverItsLimitIsReportedAndCut) {
    const std::string longName(40, 'n');
    writePcm(1, "P-1\\DLN:" + longName + ";\r\n");
    t.reader.setLogFile(t.messages.logPath());
    EXPECT_TRUE(validate());
    EXPECT_THAT(t.read(working::kMessageLog), HasSubstr("P-1\\DLN"));
    EXPECT_THAT(t.ui.boxes[0].text, HasSubstr("(" + std::string(32, 'n') + ")"));
}

TEST_F(LinkValidation, ALinkNameThatIsCutBehindABlankGetsItsHomeOnce) {
    answer(Button::Yes);
    writePcm(1, "P-1\\DLN:a name of thirty-one characters and more;\r\n");
    EXPECT_TRUE(validate());
    EXPECT_EQ(t.ui.countBoxes(304), 1);
    EXPECT_TRUE(validate());
    EXPECT_EQ(t.ui.countBoxes(304), 1);
    EXPECT_FALSE(t.store.exists("[kavu]MULT.M02"));
}

TEST_F(LinkValidation, AFileThatCanNotBeReadEndsTheLoadWithItsPath) {
    ASSERT_TRUE(makeFolder(t.store.pathOf("[kavu]PCMMEAS.D05")).ok());
    EXPECT_FALSE(validate());
    EXPECT_TRUE(t.ui.hasText(t.store.pathOf("[kavu]PCMMEAS.D05")));
}

TEST_F(LinkValidation, AScratchFileThatCanNotBeMadeEndsTheLoadAndLeavesTheGroupWhole) {
    // A folder has the name under which the new file is written.
    ASSERT_TRUE(makeFolder(t.store.pathOf("[kavu]GTMP.G.new")).ok());
    t.write(working::kGeneral, "G\\PN:Alpha;\r\n");
    writePcm(1, "P-1\\DLN:Lost;\r\n");
    answer(Button::Yes);
    EXPECT_FALSE(validate());
    EXPECT_TRUE(t.ui.hasText("Unable to write"));
    EXPECT_EQ(t.read(working::kGeneral), "G\\PN:Alpha;\r\n");
}

}  // namespace
}  // namespace kavu
