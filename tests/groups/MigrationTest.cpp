#include "conversion/ConversionStore.h"
#include "groups/Migration.h"
#include "support/TestContext.h"

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::Contains;
using testing::ElementsAre;

struct Migration : testing::Test {
    bool migrate(int input, int target, const ConvertStreamStep& step = {}) {
        return migrateDocument(t.context, conversions, &t.ui, input, target, step, &failure);
    }
    void setting(const char* key, const char* value) { t.settings.write(key, value); }

    test::TestContext t{2011};
    ConversionStore conversions{t.context};
    IoStatus failure;
};

// --- Finding the edition -----------------------------------------------------------------

struct Detected {
    const char* general;  ///< null: no G file
    int input;
    int logged;  ///< message number, or 0
    const char* defaultInput = "2009";
};

class DetectVersions : public testing::TestWithParam<Detected> {};

TEST_P(DetectVersions, TakesTheEditionOfTheFileElseOfTheSettings) {
    const auto& c = GetParam();
    test::TestContext t;
    t.settings.write("IRIGInputVersion", c.defaultInput);
    if (c.general != nullptr) {
        t.write(working::kGeneral, c.general);
    }
    int input = 0;
    EXPECT_EQ(detectVersions(t.context, &t.ui, input), c.input);
    EXPECT_EQ(input, c.input);
    EXPECT_EQ(t.ui.logs.size(), c.logged == 0 ? 0U : 1U);
    if (c.logged != 0) {
        EXPECT_EQ(t.ui.countLogs(c.logged), 1);
        EXPECT_EQ(t.ui.logs[0].titleId, title::kErrorReading);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Files, DetectVersions,
    testing::Values(Detected{nullptr, 2009, 0}, Detected{"G\\PN:x;\r\n", 2009, 0},
                    Detected{"G\\106:05;\r\n", 2005, 0}, Detected{"G\\106:99;\r\n", 1999, 0},
                    Detected{"G\\106:00;\r\n", 2000, 0}, Detected{"G\\106:97;\r\n", 2009, 442},
                    Detected{"G\\106:;\r\n", 2009, 0}, Detected{"G\\PN:x;\r\n", 2004, 0, "4"},
                    Detected{"G\\PN:x;\r\n", 1996, 0, "96"},
                    Detected{"G\\PN:x;\r\n", 2011, 0, "2012"},
                    Detected{"G\\PN:x;\r\n", 2011, 0, "nothing"}));

TEST(DetectVersionsTest, EditionNumber96CountsAsInvalidAndTheDefaultHolds) {
    test::TestContext t;
    t.settings.write("IRIGInputVersion", "2007");
    t.write(working::kGeneral, "G\\106:96;\r\n");
    int input = 0;
    EXPECT_EQ(detectVersions(t.context, &t.ui, input), 2007);
    ASSERT_EQ(t.ui.countLogs(442), 1);
    EXPECT_NE(t.ui.logs[0].text.find("(G\\106:96;)"), std::string::npos);
    EXPECT_NE(t.ui.logs[0].text.find("(106-07)"), std::string::npos);
}

TEST(DetectVersionsTest, EditionNumber12IsTreatedAs2011) {
    test::TestContext t;
    t.write(working::kGeneral, "G\\106:12;\r\n");
    int input = 0;
    EXPECT_EQ(detectVersions(t.context, &t.ui, input), 2011);
    ASSERT_EQ(t.ui.countLogs(443), 1);
    EXPECT_NE(t.ui.logs[0].text.find("a 106-12 file"), std::string::npos);
    EXPECT_NE(t.ui.logs[0].text.find("as a 106-11 file"), std::string::npos);
}

TEST(DetectVersionsTest, AValueThatIsNoEditionKeepsItsYearAndIsRemarked) {
    struct Row {
        const char* value;
        int year;
        bool remarked;
    };
    for (const auto& row : {Row{"AB", 2000, true}, Row{"03", 2003, true}, Row{"1A", 2001, true},
                            Row{" \t09\t", 2009, false}, Row{"9", 2009, false},
                            Row{"\t", 2011, false}, Row{" 1996", 2011, false}}) {
        test::TestContext t;
        t.write(working::kGeneral, std::string("G\\106:") + row.value + ";\r\n");
        int input = 0;
        EXPECT_EQ(detectVersions(t.context, &t.ui, input), row.year) << row.value;
        EXPECT_EQ(t.ui.notes.size(), row.remarked ? 1U : 0U) << row.value;
    }
}

TEST(DetectVersionsTest, MethodTwoGivesTheOutputVersionAsTarget) {
    test::TestContext t;
    t.settings.write("IRIGOutputMethod", "2");
    t.settings.write("IRIGOutputVersion", "2004");
    t.write(working::kGeneral, "G\\106:09;\r\n");
    int input = 0;
    EXPECT_EQ(detectVersions(t.context, &t.ui, input), 2004);
    EXPECT_EQ(input, 2009);
}

TEST(DetectVersionsTest, WithoutAParentAllIsTheSame) {
    test::TestContext t;
    t.write(working::kGeneral, "G\\106:12;\r\n");
    int input = 0;
    EXPECT_EQ(detectVersions(t.context, nullptr, input), 2011);
    EXPECT_EQ(input, 2011);
}

// --- The version field ---------------------------------------------------------------------

struct VersionField {
    const char* before;  ///< null: no G file
    int target;
    const char* after;  ///< null: still none
    bool changed;
};

class SetVersionField : public testing::TestWithParam<VersionField> {};

TEST_P(SetVersionField, WritesTheNumberOfTheTarget) {
    const auto& c = GetParam();
    test::TestContext t;
    if (c.before != nullptr) {
        t.write(working::kGeneral, c.before);
    }
    EXPECT_EQ(setVersionField(t.context, &t.ui, c.target), c.changed);
    EXPECT_EQ(t.has(working::kGeneral), c.after != nullptr);
    if (c.after != nullptr) {
        EXPECT_EQ(t.read(working::kGeneral), c.after);
    }
    EXPECT_TRUE(t.ui.boxes.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Targets, SetVersionField,
    testing::Values(
        VersionField{"G\\106:05;\r\nG\\PN:a;\r\n", 2009, "G\\106:09;\r\nG\\PN:a;\r\n", true},
        VersionField{"G\\PN:a;\r\n", 2000, "G\\PN:a;\r\nG\\106:00;\r\n", true},
        VersionField{"G\\106:;\r\n", 2000, "G\\106:;\r\nG\\106:00;\r\n", true},
        VersionField{"G\\106:05;\r\nG\\106:07;\r\n", 2011, "G\\106:11;\r\nG\\106:11;\r\n", true},
        VersionField{"G\\106:05;\r\nG\\PN:a;\r\n", 1996, "G\\PN:a;\r\n", true},
        VersionField{"G\\PN:a;\r\n", 1996, "G\\PN:a;\r\n", false},
        VersionField{nullptr, 1996, nullptr, false},
        VersionField{nullptr, 2009, "G\\106:09;\r\n", true}));

// --- The move --------------------------------------------------------------------------------

TEST_F(Migration, OfEqualEditionsOnlySetsTheVersion) {
    t.write(working::kGeneral, "G\\PN:a;\r\n");
    EXPECT_FALSE(migrate(2005, 2005));
    EXPECT_EQ(t.document.version, 2005);
    EXPECT_EQ(t.read(working::kGeneral), "G\\PN:a;\r\n");
    EXPECT_TRUE(t.ui.statusTexts.empty());
}

TEST_F(Migration, From2005To2009ChangesOneFieldOnly) {
    t.write(working::kGeneral, "G\\PN:a;\r\nG\\106:05;\r\n");
    t.write("[kavu]DSRCE.T01", "T-1\\RF4:OTHER;\r\n");
    EXPECT_TRUE(migrate(2005, 2009));
    EXPECT_EQ(t.read(working::kGeneral), "G\\PN:a;\r\nG\\106:09;\r\n");
    EXPECT_EQ(t.read("[kavu]DSRCE.T01"), "T-1\\RF4:OTHER;\r\n");
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, -444);
    EXPECT_EQ(t.ui.boxes[0].titleId, title::kNote);
    EXPECT_EQ(t.ui.boxes[0].icon, Icon::Information);
    EXPECT_NE(t.ui.boxes[0].text.find("from 106-05 to 106-09"), std::string::npos);
    EXPECT_THAT(t.ui.statusTexts, Contains("Converting TMATS file from 106-05 to 106-09"));
}

TEST_F(Migration, WithMethodTwoAndTarget1996TheVersionFieldGoes) {
    setting("IRIGOutputMethod", "2");
    setting("IRIGOutputVersion", "1996");
    t.write(working::kGeneral, "G\\106:99;\r\nG\\PN:a;\r\n");
    int input = 0;
    const int target = detectVersions(t.context, &t.ui, input);
    EXPECT_TRUE(migrate(input, target));
    EXPECT_EQ(t.read(working::kGeneral), "G\\PN:a;\r\n");
}

TEST_F(Migration, TheNumberOf2000IsShownAsTwoZeros) {
    t.write(working::kGeneral, "G\\106:05;\r\n");
    EXPECT_TRUE(migrate(2005, 2000));
    EXPECT_THAT(t.ui.statusTexts, Contains("Converting TMATS file from 106-05 to 106-00"));
    EXPECT_EQ(t.read(working::kGeneral), "G\\106:00;\r\n");
}

TEST_F(Migration, WithNothingToChangeSaysNothing) {
    t.write(working::kGeneral, "G\\PN:a;\r\n");
    EXPECT_FALSE(migrate(1999, 1996));
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_EQ(t.document.version, 1996);
}

TEST_F(Migration, ReportsEachDateItWroteWithABrokenTime) {
    t.write("[kavu]DSRCE.R01",
            "R-1\\RI4:07-04-09-10-59-33;\r\nR-1\\RI5:07-04-09;\r\nR-1\\RI5:08-04-09;\r\n");
    t.write("[kavu]00000000.C_O", "[Speed]\r\nTRD5=07-04-09-10-59-33\r\n");
    EXPECT_TRUE(migrate(1996, 1999));
    EXPECT_EQ(t.read("[kavu]DSRCE.R01"),
              "R-1\\RI4:04-07-2009-%2,2d-10-59;\r\nR-1\\RI5:04-07-2009;\r\n"
              "R-1\\RI5:04-08-2009;\r\n");
    ASSERT_EQ(t.ui.logs.size(), 2U);
    EXPECT_NE(t.ui.logs[0].text.find("R-1\\RI4"), std::string::npos);
    EXPECT_NE(t.ui.logs[0].text.find("07-04-09-10-59-33"), std::string::npos);
    EXPECT_NE(t.ui.logs[0].text.find("04-07-2009-%2,2d-10-59"), std::string::npos);
    EXPECT_NE(t.ui.logs[1].text.find("TRD5 of measurement Speed"), std::string::npos);
}

TEST_F(Migration, TheLimitsOfTheTargetHoldAfterIt) {
    t.write("[kavu]00000000.C_O",
            "[A]\r\nTRD4=OTH\r\n[B]\r\nTRD4=WXYZ\r\nVOI\\E=CVSD and more\r\n");
    EXPECT_TRUE(migrate(1996, 1999));
    EXPECT_EQ(t.read("[kavu]00000000.C_O"),
              "[A]\r\nTRD4=O\r\n[B]\r\nTRD4=WX\r\nVOI\\E=CVSD\r\nDCT=VOI\r\n");
    ASSERT_EQ(t.ui.countLogs(315), 1);
    EXPECT_NE(t.ui.logs[0].text.find("(Measurement name: B)"), std::string::npos);
    EXPECT_NE(t.ui.logs[0].text.find("'C-2\\TRD4:WXYZ' is too long"), std::string::npos);
}

TEST_F(Migration, ARecordThatLosesItsLastValueStaysARecord) {
    t.write("[kavu]00000000.C_O", "[A]\r\nMOT5=x\r\n[B]\r\nDCT=PTM\r\n[C]\r\nTRD1=x\r\n");
    EXPECT_TRUE(migrate(1999, 1996));
    EXPECT_EQ(t.read("[kavu]00000000.C_O"), "[A]\r\nDCN=A\r\n[B]\r\nDCN=B\r\n[C]\r\nTRD1=x\r\n");
}

TEST_F(Migration, ARecordWithoutTheFieldsOf2000StaysARecord) {
    t.write("[kavu]00000000.C_O", "[A]\r\nFPF=IEEE\r\n");
    EXPECT_TRUE(migrate(2000, 1999));
    EXPECT_EQ(t.read("[kavu]00000000.C_O"), "[A]\r\nDCN=A\r\n");
}

TEST_F(Migration, RecordsWhoseNamesDifferOnlyInCaseAreBothChanged) {
    t.write("[kavu]00000000.C_O", "[speed]\r\nBFM=BCD\r\n[SPEED]\r\nBFM=SIM\r\n");
    EXPECT_TRUE(migrate(2005, 1999));
    EXPECT_EQ(t.read("[kavu]00000000.C_O"), "[speed]\r\nBFM=OTH\r\n[SPEED]\r\nBFM=SIG\r\n");
}

TEST_F(Migration, ShowsItsStepsAndTheBar) {
    t.write(working::kGeneral, "G\\PN:a;\r\n");
    migrate(1996, 1999);
    EXPECT_THAT(t.ui.statusTexts, Contains("Removing IRIG 106-00 changes"));
    EXPECT_THAT(t.ui.statusTexts, Contains("Updating file to IRIG 106-99"));
    EXPECT_THAT(t.ui.bars, ElementsAre(20, 40, 60, 80, -1));
    EXPECT_EQ(t.ui.progressOpened, t.ui.progressClosed);
}

TEST_F(Migration, TheMessageLogIsStillThereAfterTheBusGroupsWereChanged) {
    t.messages.logText(&t.ui, title::kWarning, "said before");
    t.write("[kavu]PCM1553.B01", "B-1\\RTRN-1-1-1:x;\r\n");
    EXPECT_TRUE(migrate(2009, 2011));
    EXPECT_NE(t.read(working::kMessageLog).find("said before"), std::string::npos);
}

TEST_F(Migration, WorksWithoutAParent) {
    t.write(working::kGeneral, "G\\106:05;\r\n");
    EXPECT_TRUE(migrateDocument(t.context, conversions, nullptr, 2005, 2009, {}));
    EXPECT_EQ(t.read(working::kGeneral), "G\\106:09;\r\n");
}

TEST_F(Migration, EndsAtACancelWithoutSayingThatItWasSuccessful) {
    t.write(working::kGeneral, "G\\106:05;\r\n");
    t.ui.cancelAtPoll = 1;
    EXPECT_FALSE(migrate(2005, 2009));
    EXPECT_EQ(t.ui.countBoxes(444), 0);
    EXPECT_EQ(t.read(working::kGeneral), "G\\106:05;\r\n");
}

TEST_F(Migration, AFileThatCanNotBeReadEndsItWithPathAndReason) {
    ASSERT_TRUE(makeFolder(t.store.pathOf("[kavu]DSRCE.T01")).ok());
    t.write(working::kGeneral, "G\\PN:a;\r\n");
    migrate(1996, 1999);
    EXPECT_FALSE(failure.ok());
    EXPECT_TRUE(t.ui.hasText("[kavu]DSRCE.T01"));
    EXPECT_TRUE(t.ui.hasText("Reason: "));
    EXPECT_EQ(t.ui.countBoxes(444), 0);
    EXPECT_EQ(t.ui.boxes.size(), 1U);
}

// --- Streams that have to be described by words and frames ------------------------------------

struct WordFrames {
    const char* name;
    const char* pcm;
    const char* measurements;
    bool converted;
};

class NeedsWordFrames : public testing::TestWithParam<WordFrames> {};

TEST_P(NeedsWordFrames, ConvertsStreamsOfTheTwoClassesOnly) {
    const auto& c = GetParam();
    test::TestContext t;
    ConversionStore conversions(t.context);
    t.write("[kavu]PCMFMT.P01", c.pcm);
    t.write("[kavu]PCMFMT.P02", "P-2\\TF:PKTM;\r\n");
    t.write("[kavu]PCMFMT.P04", "P-4\\TF:TWO;\r\n");
    t.write("[kavu]PCMMEAS.D02", c.measurements);
    std::vector<int> streams;
    migrateDocument(t.context, conversions, &t.ui, 2007, 2011, [&](UserInterface*, int index) {
        streams.push_back(index);
        return StreamConversion{.changed = true, .converted = true};
    });
    EXPECT_EQ(streams, c.converted ? std::vector<int>({1, 4}) : std::vector<int>());
}

INSTANTIATE_TEST_SUITE_P(
    Files, NeedsWordFrames,
    testing::Values(WordFrames{"Subframes", "P-1\\TF:ONE;\r\nP-1\\SF\\N-1:2;\r\n", "", true},
                    WordFrames{"NoSubframes", "P-1\\TF:ONE;\r\nP-1\\SF\\N-1:0;\r\n", "", false},
                    WordFrames{"MinorFrame", "P-1\\TF:ONE;\r\n", "D-2\\LT-1-1:MF;\r\n", true},
                    WordFrames{"WordFrame", "P-1\\TF:ONE;\r\n",
                               "D-2\\LT-1-1:WDFR;\r\nD-2\\LT-1-2:TD;\r\n", false}),
    [](const auto& row) { return row.param.name; });

// A stream of type OTHR kept its measurements without a word, and 106-11 found none of them.
TEST_F(Migration, StreamsAndMeasurementsThatStayAsTheyAreAreListedInPlaceOfTheNote) {
    t.write(working::kGeneral, "G\\106:09;\r\n");
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:ONE;\r\nP-1\\TF:ONE;\r\n");
    t.write("[kavu]PCMFMT.P02", "P-2\\DLN:OTHER;\r\nP-2\\TF:OTHR;\r\n");
    t.write("[kavu]PCMFMT.P03", "P-3\\DLN:EMPTY;\r\nP-3\\TF:OTHR;\r\n");
    t.write("[kavu]PCMMEAS.D01", "D-1\\DLN:ONE;\r\nD-1\\LT-1-1:MF;\r\n");
    t.write("[kavu]PCMMEAS.D02",
            "D-2\\DLN:OTHER;\r\nD-2\\LT-1-1:MF;\r\nD-2\\LT-1-2:WDFR;\r\n"
            "D-2\\LT-1-3:SF;\r\n");
    migrateDocument(t.context, conversions, &t.ui, 2009, 2011, [&](UserInterface*, int index) {
        EXPECT_EQ(index, 1);
        return StreamConversion{.changed = true, .converted = true, .unconverted = {"FRAGMENTS"}};
    });
    EXPECT_EQ(t.ui.countBoxes(444), 0);
    ASSERT_EQ(t.ui.logs.size(), 2U);
    EXPECT_EQ(t.ui.logs[0].text,
              "Stream 'ONE', measurement 'FRAGMENTS': it has no word/frame form and was not "
              "converted.");
    EXPECT_EQ(t.ui.logs[1].text,
              "Stream 'OTHER' (P-2, type 'OTHR') was not converted: 2 of its measurements have no "
              "word/frame locations.");
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].icon, Icon::Warning);
    EXPECT_NE(t.ui.boxes[0].text.find("from 106-09 to 106-11, but not all"), std::string::npos);
    EXPECT_NE(t.ui.boxes[0].text.find("'FRAGMENTS'"), std::string::npos);
    EXPECT_NE(t.ui.boxes[0].text.find("'OTHER' (P-2, type 'OTHR')"), std::string::npos);
    EXPECT_EQ(t.ui.boxes[0].text.find("EMPTY"), std::string::npos);
}

/// A stream of 32 words and 16 frames with ranges that end before them, or with them.
class MigratedRanges : public Migration {
  protected:
    MigratedRanges() {
        t.write(working::kGeneral, "G\\106:09;\r\n");
        t.write("[kavu]PCMFMT.P01",
                "P-1\\DLN:ONE;\r\nP-1\\TF:ONE;\r\nP-1\\MF1:32;\r\nP-1\\MF\\N:16;\r\n");
        std::string text = "D-1\\DLN:ONE;\r\n";
        const auto add = [&](int m, const std::string& name, const std::string& words,
                             const std::string& frames) {
            const auto number = "-1-" + std::to_string(m);
            text += "D-1\\MN" + number + ":" + name + ";\r\nD-1\\LT" + number + ":WDFR;\r\n";
            for (const auto& command : {words, frames}) {
                text += replaceAll(command, "@", number + "-1-1");
            }
        };
        const auto line = [](const char* code, int value) {
            return std::string("D-1\\") + code + "@:" + std::to_string(value) + ";\r\n";
        };
        const auto words = [&](int start, int step, int end) {
            return line("WP", start) + line("WI", step) + line("EWP", end);
        };
        const auto frames = [&](int start, int step, int end) {
            return line("FP", start) + line("FI", step) + line("EFP", end);
        };
        add(1, "WHOLE", words(5, 0, 5), frames(1, 1, 16));
        add(2, "SHORT", words(5, 5, 15), frames(1, 1, 16));
        add(3, "EARLY", words(6, 0, 6), frames(2, 4, 10));
        add(4, "TOEND", words(7, 10, 29), frames(3, 0, 3));
        t.write("[kavu]PCMMEAS.D01", text);
    }
    std::vector<std::string> logTexts() const {
        std::vector<std::string> texts;
        for (const auto& log : t.ui.logs) {
            texts.push_back(log.text);
        }
        return texts;
    }
};

TEST_F(MigratedRanges, Before106_09TheRangesThatWouldRunOnAreListedWithWhatTheyBecome) {
    EXPECT_TRUE(migrate(2009, 2007));
    EXPECT_EQ(logTexts(),
              (std::vector<std::string>{
                  "Stream 'ONE', measurement 'SHORT': words 5 to 15 by 5 become words 5 to 30 by "
                  "5.",
                  "Stream 'ONE', measurement 'EARLY': frames 2 to 10 by 4 become frames 2 to 14 by "
                  "4."}));
    EXPECT_EQ(t.ui.countBoxes(444), 0);
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_NE(t.ui.boxes[0].text.find("'SHORT': words 5 to 15"), std::string::npos);
}

TEST_F(MigratedRanges, Before106_04AllWordFrameMeasurementsAreListed) {
    EXPECT_TRUE(migrate(2009, 2001));
    const auto texts = logTexts();
    ASSERT_EQ(texts.size(), 4U);
    EXPECT_EQ(texts[0],
              "Stream 'ONE', measurement 'WHOLE': its word/frame locations are not understood.");
    EXPECT_EQ(t.ui.countBoxes(444), 0);
}

TEST_F(MigratedRanges, WhereTheTargetUnderstandsThemNothingIsListed) {
    EXPECT_TRUE(migrate(2007, 2004));
    EXPECT_TRUE(t.ui.logs.empty());
    EXPECT_EQ(t.ui.countBoxes(444), 1);
}

TEST_F(Migration, AStreamStepThatIsNotThereCountsAsDone) {
    t.write(working::kGeneral, "G\\106:09;\r\n");
    t.write("[kavu]PCMFMT.P01", "P-1\\TF:ONE;\r\nP-1\\SF\\N-1:2;\r\n");
    EXPECT_TRUE(migrate(2009, 2011));
    EXPECT_EQ(t.ui.countBoxes(444), 1);
}

// --- The options ----------------------------------------------------------------------------

TEST_F(Migration, OptionsAreWrittenAndAChangeIsTold) {
    const VersionOptions options{2005, 2, 2009};
    EXPECT_TRUE(editVersionOptions(t.context, conversions, &t.ui, options, {}));
    EXPECT_EQ(t.settings.text("IRIGInputVersion"), "2005");
    EXPECT_EQ(t.settings.text("IRIGOutputMethod"), "2");
    EXPECT_EQ(t.settings.text("IRIGOutputVersion"), "2009");
    EXPECT_FALSE(editVersionOptions(t.context, conversions, &t.ui, options, {}));
}

TEST_F(Migration, OptionsMoveAnOpenDocument) {
    t.document.open = true;
    t.document.version = 2009;
    t.write(working::kGeneral, "G\\106:09;\r\n");
    EXPECT_TRUE(editVersionOptions(t.context, conversions, &t.ui, {2011, 2, 2004}, {}));
    EXPECT_EQ(t.document.version, 2004);
    EXPECT_TRUE(t.document.changed);
    EXPECT_EQ(t.read(working::kGeneral), "G\\106:04;\r\n");
}

TEST_F(Migration, OptionsAreRefusedForAChangedDocument) {
    t.document.open = true;
    t.document.changed = true;
    t.document.version = 2004;
    EXPECT_FALSE(editVersionOptions(t.context, conversions, &t.ui, {2005, 2, 2009}, {}));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, -441);
    EXPECT_NE(t.ui.boxes[0].text.find("106-04"), std::string::npos);
    EXPECT_EQ(t.settings.text("IRIGOutputMethod"), "");
}

}  // namespace
}  // namespace kavu
