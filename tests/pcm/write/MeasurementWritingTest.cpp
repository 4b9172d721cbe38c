#include "pcm/LoadFixture.h"
#include "pcm/write/MeasurementWriting.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::operator+;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

class Writing : public LoadFixture {
  public:
    explicit Writing(int edition = 2009) : LoadFixture(edition) {}

    /// The commands of the D group as they are written now, without prefix and end.
    Commands rewritten() {
        EXPECT_TRUE(writeMeasurements(format, parent));
        Commands commands;
        for (const auto& line : saved("[kavu]PCMMEAS.D01")) {
            if (!line.empty()) {
                EXPECT_TRUE(line.starts_with("D-1\\")) << line;
                EXPECT_TRUE(line.ends_with(";")) << line;
                commands.push_back(line.substr(4, line.size() - 5));
            }
        }
        return commands;
    }
    /// The commands of one measurement, with its numbers as `@`.
    static Commands of(const Commands& commands, int m, int l = 1) {
        const auto suffix = "-" + std::to_string(l) + "-" + std::to_string(m);
        Commands found;
        for (const auto& command : commands) {
            const auto colon = command.find(':');
            const auto at = command.find(suffix);
            const auto end = at + suffix.size();
            if (at != std::string::npos && at < colon && (end == colon || command[end] == '-')) {
                found.push_back(command.substr(0, at) + "@" + command.substr(end));
            }
        }
        return found;
    }
};

Commands named(const std::string& name, const std::string& type, const Commands& rest) {
    return Commands{"MN@:" + name, "MN1@:DE", "MN2@:D", "MN3@:D", "LT@:" + type} + rest;
}
/// The same as it is written on 106-09.
Commands written(const std::string& name, const std::string& type, const Commands& rest) {
    return Commands{"MN@:" + name, "MN1@:DE", "MN2@:D", "MN3@:D", "MFOT@:N", "LT@:" + type} + rest;
}

TEST(MeasurementWriting, AStreamWithoutMeasurementsWritesACountOf0AndTheComment) {
    Writing stream;
    ASSERT_TRUE(stream.load(plainFormat(8, 1), listOf({}) + Commands{"COM:what is in here"}));
    EXPECT_THAT(stream.rewritten(), ElementsAre("DLN:PCM 1", "ML\\N:1", "MLN-1:List", "MN\\N-1:0",
                                                "COM:what is in here"));
}

TEST(MeasurementWriting, EveryLocationOfAMinorSupercomGoesByRisingWord) {
    Writing stream;
    ASSERT_TRUE(
        stream.load(plainFormat(16, 4), listOf({named("A", "MFSC",
                                                      {"MFS\\N@:2", "MFS1@:E", "MFSW@-1:9",
                                                       "MFSM@-1:11", "MFSW@-2:5", "MFSM@-2:1"})})));
    EXPECT_EQ(
        Writing::of(stream.rewritten(), 1),
        written("A", "MFSC",
                {"MFS\\N@:2", "MFS1@:E", "MFSW@-1:5", "MFSM@-1:1", "MFSW@-2:9", "MFSM@-2:11"}));
}

TEST(MeasurementWriting, TheIntervalFormIsWrittenAsItStandsAndTheWordsAreNotConsulted) {
    Writing stream;
    const auto commands =
        named("A", "MFSC", {"MFS\\N@:3", "MFS1@:I", "MFS2@:2", "MFS3@:FW", "MFS4@:5"});
    ASSERT_TRUE(stream.load(plainFormat(16, 4), listOf({commands})));
    EXPECT_EQ(stream.places("A"), (test::Places{{2, 1}, {7, 1}, {12, 1}}));
    const auto first = stream.rewritten();
    EXPECT_EQ(Writing::of(first, 1),
              written("A", "MFSC", {"MFS\\N@:3", "MFS1@:I", "MFS2@:2", "MFS3@:FW", "MFS4@:5"}));
    ASSERT_TRUE(stream.reload());
    EXPECT_EQ(stream.places("A"), (test::Places{{2, 1}, {7, 1}, {12, 1}}));
    // A copy that has gone from the frame is still counted.
    stream.format.cells().clear(stream.format.cellAt(12, 1));
    EXPECT_EQ(stream.rewritten(), first);
}

TEST(MeasurementWriting, AModeThatIsNotIntervalCountsAsEveryLocation) {
    Writing stream;
    ASSERT_TRUE(stream.load(plainFormat(16, 4),
                            listOf({named("A", "MFSC",
                                          {"MFS\\N@:2", "MFS1@:E", "MFSW@-1:5", "MFSM@-1:FW",
                                           "MFSW@-2:9", "MFSM@-2:FW"})})));
    stream.format.cells().updateAll("A", [](Measurement& m) { m.locationMode = ""; });
    EXPECT_THAT(Writing::of(stream.rewritten(), 1), Contains("MFSW@-2:9"));
}

TEST(MeasurementWriting, TheMaskOfAMinorSupercomIsThatOfTheHeadCellOfThePlace) {
    Writing stream;
    ASSERT_TRUE(
        stream.load(plainFormat(16, 4), listOf({named("A-HEAD", "MF", {"MF@:5", "MFM@:111"}),
                                                named("B", "MFSC",
                                                      {"MFS\\N@:2", "MFS1@:E", "MFSW@-1:5",
                                                       "MFSM@-1:1", "MFSW@-2:9", "MFSM@-2:11"})})));
    EXPECT_EQ(
        Writing::of(stream.rewritten(), 2),
        written("B", "MFSC",
                {"MFS\\N@:2", "MFS1@:E", "MFSW@-1:5", "MFSM@-1:111", "MFSW@-2:9", "MFSM@-2:11"}));
}

// The mask of ranges is in their fragments; a head cell of them has none to give.
TEST(MeasurementWriting, AHeadCellOfRangesGivesAMinorSupercomNoMask) {
    Writing stream;
    ASSERT_TRUE(
        stream.load(plainFormat(16, 4), listOf({test::wordFrame("A-HEAD", 5, 1, 1, 4),
                                                named("B", "MFSC",
                                                      {"MFS\\N@:2", "MFS1@:E", "MFSW@-1:5",
                                                       "MFSM@-1:1", "MFSW@-2:9", "MFSM@-2:11"})})));
    EXPECT_EQ(
        Writing::of(stream.rewritten(), 2),
        written("B", "MFSC", {"MFS\\N@:2", "MFS1@:E", "MFSW@-1:5", "MFSW@-2:9", "MFSM@-2:11"}));
}

TEST(MeasurementWriting, LocationsBeyondThoseOfTheFirstFrameHaveNoHeadCellThere) {
    Writing stream;
    ASSERT_TRUE(
        stream.load(plainFormat(16, 4), listOf({named("A", "MFSC",
                                                      {"MFS\\N@:2", "MFS1@:E", "MFSW@-1:5",
                                                       "MFSM@-1:1", "MFSW@-2:9", "MFSM@-2:11"})})));
    stream.format.cells().updateAll("A", [](Measurement& m) { m.locationCount = 3; });
    const auto commands = Writing::of(stream.rewritten(), 1);
    EXPECT_THAT(commands, Contains("MFSW@-3:5"));
    EXPECT_EQ(stream.ui.countBoxes(295), 1);
    EXPECT_EQ(stream.ui.boxes.back().titleId, 131);
    EXPECT_THAT(commands, Not(Contains("MFSM@-3:1")));
}

TEST(MeasurementWriting, ACountBeyondAllOccurrencesIsTold) {
    Writing stream;
    ASSERT_TRUE(
        stream.load(plainFormat(16, 1),
                    listOf({named("A", "MFSC", {"MFS\\N@:1", "MFS1@:E", "MFSW@-1:5", "MFSM@-1:1"}),
                            named("B", "MF", {"MF@:7"})})));
    stream.format.cells().updateAll("A", [](Measurement& m) { m.locationCount = 1'000'000'000; });
    const auto commands = stream.rewritten();
    EXPECT_EQ(stream.ui.countBoxes(295), 1);
    EXPECT_THAT(Writing::of(commands, 2), Contains("MN@:B")) << "the write goes on";
}

TEST(MeasurementWriting, AMinorWordKeepsItsMaskAndAnEmptyOneIsNotWritten) {
    Writing stream;
    ASSERT_TRUE(stream.load(plainFormat(16, 4), listOf({named("A", "MF", {"MF@:3", "MFM@:1100"}),
                                                        named("B", "MF", {"MF@:4"})})));
    const auto commands = stream.rewritten();
    EXPECT_EQ(Writing::of(commands, 1), written("A", "MF", {"MF@:3", "MFM@:1100"}));
    EXPECT_EQ(Writing::of(commands, 2), written("B", "MF", {"MF@:4"}));
    ASSERT_TRUE(stream.reload());
    EXPECT_EQ(stream.first("B").mask, "");
}

TEST(MeasurementWriting, MinorFragmentsOfEveryLocationCarryTheirOwnValues) {
    Writing stream;
    const Commands rest = {"FMF\\N@:2",    "FMF1@:20",  "FMF2@:E",   "FMF6@-1:5",
                           "FMF7@-1:FW",   "FMF8@-1:M", "FMF9@-1:2", "FMF6@-2:9",
                           "FMF7@-2:1111", "FMF8@-2:L", "FMF9@-2:1"};
    ASSERT_TRUE(stream.load(plainFormat(16, 4), listOf({named("A", "MFFR", rest)})));
    EXPECT_EQ(Writing::of(stream.rewritten(), 1), written("A", "MFFR", rest));
    EXPECT_EQ(stream.ui.countBoxes(295), 0);
}

TEST(MeasurementWriting, AMinorFragmentWithoutAMaskIsTold) {
    Writing stream;
    ASSERT_TRUE(stream.load(
        plainFormat(16, 4),
        listOf(
            {named("A", "MFFR", {"FMF\\N@:1", "FMF1@:16", "FMF2@:E", "FMF6@-1:5", "FMF9@-1:1"})})));
    stream.format.cells().updateAll("A", [](Measurement& m) { m.mask.clear(); });
    EXPECT_THAT(Writing::of(stream.rewritten(), 1), Contains("FMF6@-1:5"));
    EXPECT_EQ(stream.ui.countBoxes(295), 1);
    EXPECT_EQ(stream.ui.boxes.back().titleId, 132);
}

TEST(MeasurementWriting, MinorFragmentsInIntervalFormAreWrittenFromTheFirstWord) {
    Writing stream;
    const Commands rest = {"FMF\\N@:3", "FMF1@:48", "FMF2@:I", "FMF3@:2", "FMF4@:FW", "FMF5@:4"};
    ASSERT_TRUE(stream.load(plainFormat(16, 4), listOf({named("A", "MFFR", rest)})));
    EXPECT_EQ(Writing::of(stream.rewritten(), 1), written("A", "MFFR", rest));
}

// --- subframes ------------------------------------------------------------------------------

Commands subframes(const Commands& rest) {
    return plainFormat(16, 8) + counterAt(1, 8, rest);
}
/// An ordinary subframe at word 3, a supercommutated one at words 5, 9 and 13.
Commands twoSubframes() {
    return subframes(Commands{"SF\\N-1:2"} + subframeAt(1, "PLAIN", 3, 8) +
                     Commands{"SF1-1-2:SUPER", "SF2-1-2:3", "SF3-1-2:FI", "SF4-1-2-1:5",
                              "SF5-1-2:4", "SF6-1-2:4"});
}

TEST(MeasurementWriting, ASubframeMeasurementNamesItsSubframeAndItsPosition) {
    Writing stream;
    ASSERT_TRUE(stream.load(twoSubframes(),
                            listOf({named("A", "SF", {"SF1@:PLAIN", "SF2@:6", "SFM@:FW"}),
                                    named("B", "SF", {"SF1@:SUPER", "SF2@:5", "SFM@:11"})})));
    const auto commands = stream.rewritten();
    EXPECT_EQ(Writing::of(commands, 1), written("A", "SF", {"SF1@:PLAIN", "SF2@:6", "SFM@:FW"}));
    // Position 5 is the second word in frame 2.
    EXPECT_EQ(stream.places("B"), (test::Places{{9, 2}}));
    EXPECT_EQ(Writing::of(commands, 2), written("B", "SF", {"SF1@:SUPER", "SF2@:5", "SFM@:11"}));
}

TEST(MeasurementWriting, ASubframeSupercomOfEveryLocationListsItsPositionsInOrder) {
    Writing stream;
    ASSERT_TRUE(
        stream.load(twoSubframes(),
                    listOf({named("A", "SFSC",
                                  {"SFS1@:SUPER", "SFS\\N@:3", "SFS2@:E", "SFS6@-1:12", "SFS7@-1:1",
                                   "SFS6@-2:4", "SFS7@-2:11", "SFS6@-3:1", "SFS7@-3:FW"})})));
    EXPECT_EQ(Writing::of(stream.rewritten(), 1),
              written("A", "SFSC",
                      {"SFS1@:SUPER", "SFS\\N@:3", "SFS2@:E", "SFS6@-1:1", "SFS7@-1:FW",
                       "SFS6@-2:4", "SFS7@-2:11", "SFS6@-3:12", "SFS7@-3:1"}));
}

TEST(MeasurementWriting, ASubframeSupercomInIntervalFormTellsItsFirstPosition) {
    Writing stream;
    const Commands rest = {"SFS1@:PLAIN", "SFS\\N@:2", "SFS2@:I", "SFS3@:3", "SFS4@:FW", "SFS5@:4"};
    ASSERT_TRUE(stream.load(twoSubframes(), listOf({named("A", "SFSC", rest)})));
    EXPECT_EQ(Writing::of(stream.rewritten(), 1), written("A", "SFSC", rest));
}

TEST(MeasurementWriting, TheFirstPositionOfASupercomIsThatOfThePlaceInTheLowestWord) {
    // Positions 2 and 4 are word 9 of frame 1 and word 5 of frame 2: the walk meets word 5 first.
    Writing stream;
    ASSERT_TRUE(stream.load(twoSubframes(), listOf({named("A", "SFSC",
                                                          {"SFS1@:SUPER", "SFS\\N@:2", "SFS2@:I",
                                                           "SFS3@:2", "SFS4@:FW", "SFS5@:2"})})));
    EXPECT_THAT(Writing::of(stream.rewritten(), 1), Contains("SFS3@:4"));
}

TEST(MeasurementWriting, ASubframeSupercomInAPlainWordIsTold) {
    Writing stream;
    ASSERT_TRUE(stream.load(twoSubframes(), listOf({named("A", "MF", {"MF@:2"})})));
    stream.format.cells().updateAll("A", [](Measurement& m) {
        m.locationType = "SFSC";
        m.locationMode = "I";
        m.locationCount = 2;
    });
    EXPECT_EQ(Writing::of(stream.rewritten(), 1),
              written("A", "SFSC", {"SFS\\N@:2", "SFS2@:I", "SFS5@:0"}));
    EXPECT_EQ(stream.ui.countBoxes(296), 1);
    EXPECT_EQ(stream.ui.boxes.back().titleId, 133);
}

Commands fragmentAt(int s, int j, int position, int number, const std::string& mask = "FW") {
    const auto at = "@-" + std::to_string(s) + "-" + std::to_string(j);
    return {"FSF8" + at + ":" + std::to_string(position), "FSF9" + at + ":" + mask,
            "FSF10" + at + ":M", "FSF11" + at + ":" + std::to_string(number)};
}

TEST(MeasurementWriting, SubframeFragmentsOfEveryLocationAreWrittenForEachSubframe) {
    Writing stream;
    const auto rest =
        Commands{"FSF\\N@:2", "FSF1@:32", "FSF2\\N@:2", "FSF3@-1:PLAIN", "FSF4@-1:E"} +
        fragmentAt(1, 1, 2, 1) + Commands{"FSF3@-2:SUPER", "FSF4@-2:E"} +
        fragmentAt(2, 1, 4, 2, "1111");
    ASSERT_TRUE(stream.load(twoSubframes(), listOf({named("A", "SFFR", rest)})));
    EXPECT_EQ(Writing::of(stream.rewritten(), 1), written("A", "SFFR", rest));
}

TEST(MeasurementWriting, SubframeFragmentsOfEveryLocationSkipFoldedRepetitions) {
    // The subframe is half as deep as the major frame: each fragment is sent twice.
    Writing stream;
    const auto rest = Commands{"FSF\\N@:2", "FSF1@:32", "FSF2\\N@:1", "FSF3@-1:HALF", "FSF4@-1:E"} +
                      fragmentAt(1, 1, 1, 1) + fragmentAt(1, 2, 2, 2);
    ASSERT_TRUE(
        stream.load(subframes(Commands{"SF\\N-1:1", "SF1-1-1:HALF", "SF2-1-1:2", "SF3-1-1:FI",
                                       "SF4-1-1-1:5", "SF5-1-1:4", "SF6-1-1:4"}),
                    listOf({named("A", "SFFR", rest)})));
    EXPECT_EQ(stream.format.countMeasurementOccurences("A"), 2);
    EXPECT_EQ(Writing::of(stream.rewritten(), 1), written("A", "SFFR", rest));
}

TEST(MeasurementWriting, SubframeFragmentsInIntervalFormLoseTheirPositions) {
    Writing stream;
    ASSERT_TRUE(stream.load(
        twoSubframes(), listOf({named("A", "SFFR",
                                      {"FSF\\N@:4", "FSF1@:64", "FSF2\\N@:1", "FSF3@-1:PLAIN",
                                       "FSF4@-1:I", "FSF5@-1:1", "FSF6@-1:FW", "FSF7@-1:2"})})));
    EXPECT_EQ(stream.places("A"), (test::Places{{3, 1}, {3, 3}, {3, 5}, {3, 7}}));
    EXPECT_EQ(Writing::of(stream.rewritten(), 1),
              written("A", "SFFR",
                      {"FSF\\N@:4", "FSF1@:64", "FSF2\\N@:1", "FSF3@-1:PLAIN", "FSF4@-1:I"}));
}

TEST(MeasurementWriting, FragmentNumbersAbove9AreNotCounted) {
    Writing stream;
    Commands rest = {"FSF\\N@:12", "FSF1@:0", "FSF2\\N@:1", "FSF3@-1:SUPER", "FSF4@-1:E"};
    for (int number = 1; number <= 12; ++number) {
        rest = rest + fragmentAt(1, number, number, number);
    }
    ASSERT_TRUE(stream.load(twoSubframes(), listOf({named("A", "SFFR", rest)})));
    const auto commands = Writing::of(stream.rewritten(), 1);
    EXPECT_THAT(commands, Contains("FSF\\N@:9"));
    EXPECT_THAT(commands, Contains("FSF11@-1-12:12")) << "the fragments themselves are written";
}

// --- word/frame -----------------------------------------------------------------------------

TEST(MeasurementWriting, WordFrameLocationsAreWrittenWithTheirEndsFrom106_09On) {
    const Commands location = {
        "MML\\N@:1",   "MNF\\N@-1:2", "MWL@-1:32",  "WP@-1-1:2",   "WI@-1-1:0",  "EWP@-1-1:2",
        "FP@-1-1:1",   "FI@-1-1:1",   "EFP@-1-1:4", "WFM@-1-1:FW", "WFT@-1-1:L", "WFP@-1-1:1",
        "WP@-1-2:7",   "WI@-1-2:0",   "EWP@-1-2:7", "FP@-1-2:1",   "FI@-1-2:1",  "EFP@-1-2:4",
        "WFM@-1-2:FW", "WFT@-1-2:D",  "WFP@-1-2:2"};
    for (const int edition : {2004, 2007, 2009, 2011}) {
        Writing stream(edition);
        ASSERT_TRUE(stream.load(plainFormat(16, 4) + counterAt(1, 4),
                                listOf({named("A", "WDFR", location)})))
            << edition;
        Commands expected;
        for (const auto& command : location) {
            if (edition >= 2009 || !command.starts_with("E")) {
                expected.push_back(command);
            }
        }
        const auto all =
            edition == 2009 ? written("A", "WDFR", expected) : named("A", "WDFR", expected);
        EXPECT_EQ(Writing::of(stream.rewritten(), 1), all) << edition;
    }
}

TEST(MeasurementWriting, AnUnknownTransferOrderOfAFragmentIsTheDefault) {
    Writing stream;
    ASSERT_TRUE(stream.load(
        plainFormat(16, 4),
        listOf({named("A", "WDFR", {"MML\\N@:1", "WP@-1-1:2", "FP@-1-1:1", "FI@-1-1:1"})})));
    stream.format.wordFrameDefinition(1)->locations[0].fragments[0].transferOrder = 'x';
    EXPECT_THAT(Writing::of(stream.rewritten(), 1), Contains("WFT@-1-1:D"));
}

TEST(MeasurementWriting, TheCounterOfALocationIsNamedWhereThereAreSeveral) {
    Writing stream(2011);
    const Commands second = {"ISF1-2:SECOND", "ISF2-2:ID", "IDC1-2:2", "IDC2-2:16",
                             "IDC3-2:1",      "IDC4-2:16", "IDC5-2:M", "IDC6-2:1",
                             "IDC7-2:1",      "IDC8-2:4",  "IDC9-2:4", "IDC10-2:INC"};
    auto format = plainFormat(16, 4) + counterAt(1, 4) + second;
    std::replace(format.begin(), format.end(), std::string("ISF\\N:1"), std::string("ISF\\N:2"));
    ASSERT_TRUE(
        stream.load(format, listOf({named("A", "WDFR",
                                          {"IDCN@:SECOND", "MML\\N@:1", "MNF\\N@-1:1", "WP@-1-1:5",
                                           "WI@-1-1:0", "EWP@-1-1:5", "FP@-1-1:2", "FI@-1-1:0",
                                           "EFP@-1-1:2", "WFM@-1-1:FW", "WFP@-1-1:1"})})));
    EXPECT_THAT(Writing::of(stream.rewritten(), 1), Contains("IDCN@:SECOND"));
}

// --- lists and files ------------------------------------------------------------------------

TEST(MeasurementWriting, EveryListHoldsEveryMeasurement) {
    Writing stream;
    const auto lists =
        Commands{"ML\\N:2",      "MLN-1:FIRST", "MN\\N-1:1", "MN-1-1:A",  "LT-1-1:MF", "MF-1-1:3",
                 "MLN-2:SECOND", "MN\\N-2:1",   "MN-2-1:B",  "LT-2-1:MF", "MF-2-1:2"};
    ASSERT_TRUE(stream.load(plainFormat(16, 4), lists));
    const auto commands = stream.rewritten();
    for (const int l : {1, 2}) {
        EXPECT_THAT(commands, Contains("MN\\N-" + std::to_string(l) + ":2"));
        EXPECT_THAT(Writing::of(commands, 1, l), Contains("MN@:B")) << l;
        EXPECT_THAT(Writing::of(commands, 2, l), Contains("MN@:A")) << l;
    }
    EXPECT_THAT(commands, Contains("MLN-2:SECOND"));
    // And so the names of the second list count as defined already when it is read again.
    ASSERT_TRUE(stream.reload());
    EXPECT_EQ(stream.ui.countLogs(281), 2);
}

TEST(MeasurementWriting, ACountOf0ListsBecomesOne) {
    Writing stream;
    ASSERT_TRUE(stream.load(plainFormat(8, 1)));
    stream.format.measurementListCount = 0;
    EXPECT_THAT(stream.rewritten(), Contains("ML\\N:1"));
}

TEST(MeasurementWriting, MeasurementsGoByWordThenFrameThenName) {
    Writing stream;
    ASSERT_TRUE(
        stream.load(twoSubframes(),
                    listOf({named("Z", "MF", {"MF@:4"}), named("C", "SF", {"SF1@:PLAIN", "SF2@:2"}),
                            named("b", "SF", {"SF1@:PLAIN", "SF2@:1"}), named("A", "MF", {"MF@:4"}),
                            named("D", "MF", {"MF@:2"})})));
    Commands names;
    for (const auto& command : stream.rewritten()) {
        if (command.starts_with("MN-")) {
            names.push_back(command.substr(command.find(':') + 1));
        }
    }
    EXPECT_THAT(names, ElementsAre("D", "b", "C", "A", "Z"));
}

TEST(MeasurementWriting, FilterCommandsAreKeptInFrontFrom106_11OnAndInEachList106_09) {
    const Commands filters = {"SMF\\N:1", "SMF\\SMN-1:A", "SMF\\MFOT-1:F"};
    const auto lists = Commands{"ML\\N:1", "MLN-1:L", "MN\\N-1:0"};
    Writing newer(2011);
    ASSERT_TRUE(newer.load(plainFormat(8, 1), filters + lists));
    EXPECT_EQ(newer.rewritten(), Commands{"DLN:PCM 1"} + filters + lists);
    Writing older(2009);
    const Commands filters09 = {"SMF\\N-1:1", "SMF\\SMN-1-1:A"};
    ASSERT_TRUE(older.load(plainFormat(8, 1), lists + filters09));
    EXPECT_EQ(older.rewritten(),
              (Commands{"DLN:PCM 1", "ML\\N:1", "MLN-1:L"} + filters09 + Commands{"MN\\N-1:0"}));
}

TEST(MeasurementWriting, FilterCommandsOfSeveralListsDoNotGrowWithEachSave) {
    Writing stream;
    ASSERT_TRUE(stream.load(
        plainFormat(8, 1),
        Commands{"ML\\N:3", "MLN-1:L", "SMF\\N-1:1", "SMF\\SMN-1-1:A", "MN\\N-1:0", "MLN-2:L",
                 "SMF\\N-2:1", "SMF\\SMN-2-1:B", "MN\\N-2:0", "MLN-3:L", "MN\\N-3:0"}));
    const auto once = stream.rewritten();
    EXPECT_EQ(std::count(once.begin(), once.end(), "SMF\\SMN-2-1:B"), 3) << "each list has all";
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(stream.reload());
        EXPECT_EQ(stream.rewritten(), once);
    }
}

TEST(MeasurementWriting, TaggedMeasurementsStandInFrontAndAreCounted) {
    Writing stream(2011);
    const auto lists =
        listOf({Commands{"MN@:T", "MN1@:DE", "MN2@:D", "MN3@:D", "LT@:TD", "TD\\N@:1", "TD1@:X",
                         "TD2@-1:1"},
                named("A", "WDFR", {"MML\\N@:1", "WP@-1-1:2", "FP@-1-1:1", "FI@-1-1:1"})});
    ASSERT_TRUE(stream.load(plainFormat(8, 1), lists));
    const auto commands = stream.rewritten();
    EXPECT_THAT(commands, Contains("MN\\N-1:2"));
    EXPECT_THAT(Writing::of(commands, 1), Contains("LT@:TD"));
    EXPECT_THAT(Writing::of(commands, 1), Contains("TD2@-1:1"));
    EXPECT_THAT(Writing::of(commands, 2), Contains("MN@:A"));
    const auto once = stream.rewritten();
    ASSERT_TRUE(stream.reload());
    EXPECT_EQ(stream.rewritten(), once);
}

TEST(MeasurementWriting, FilterOverwriteIsWrittenOn106_09Only) {
    for (const int edition : {1996, 2007, 2009}) {
        Writing stream(edition);
        ASSERT_TRUE(stream.load(plainFormat(8, 1), listOf({named("A", "MF", {"MF@:3"})})));
        stream.format.cells().updateAll("A", [](Measurement& m) { m.filterOverwrite = "F"; });
        const auto commands = Writing::of(stream.rewritten(), 1);
        EXPECT_EQ(std::count(commands.begin(), commands.end(), "MFOT@:F"), edition == 2009 ? 1 : 0)
            << edition;
    }
}

TEST(MeasurementWriting, BlanksGoFromALocationTypeAndItsCaseCounts) {
    Writing stream;
    ASSERT_TRUE(stream.load(plainFormat(8, 1),
                            listOf({named("A", "MF", {"MF@:3"}), named("B", "MF", {"MF@:4"})})));
    stream.format.cells().updateAll("A", [](Measurement& m) { m.locationType = "M F "; });
    stream.format.cells().updateAll("B", [](Measurement& m) { m.locationType = "mf"; });
    const auto commands = stream.rewritten();
    EXPECT_EQ(Writing::of(commands, 1), written("A", "MF", {"MF@:3"}));
    EXPECT_EQ(stream.first("A").locationType, "MF");
    EXPECT_EQ(Writing::of(commands, 2), written("B", "mf", {}));
    EXPECT_EQ(stream.ui.countBoxes(297), 1);
    EXPECT_EQ(stream.ui.boxes.back().titleId, 101);
}

TEST(MeasurementWriting, AStreamWithoutADGroupGetsTheFirstFreeOne) {
    Writing stream;
    stream.writeGroup('P', plainFormat(8, 1));
    stream.writeGroup('D', listOf({}), "ANOTHER");
    ASSERT_TRUE(stream.reload());
    EXPECT_EQ(stream.format.dGroup, 0);
    ASSERT_TRUE(writeMeasurements(stream.format, stream.parent));
    EXPECT_EQ(stream.format.dGroup, 2);
    EXPECT_THAT(stream.saved("[kavu]PCMMEAS.D02"), Contains("D-2\\DLN:PCM 1;"));
    EXPECT_THAT(stream.saved("[kavu]PCMMEAS.D01"), Contains("D-1\\DLN:ANOTHER;"));
}

TEST(MeasurementWriting, ANewDGroupHasNothingOfAStreamThatIsGone) {
    Writing stream(2011);
    const auto gone = Commands{"SMF\\N:1", "SMF\\SMN-1:OLD", "SMF\\MFOT-1:F"} +
                      listOf({Commands{"MN@:OLD TAG", "LT@:TD", "TD\\N@:1", "TD2@-1:1"}});
    ASSERT_TRUE(stream.load(plainFormat(8, 1), gone));
    ASSERT_TRUE(stream.has("[kavu]DSMF0000.D01") && stream.has("[kavu]DTAG0000.D01"));
    // Its group goes, and another stream is loaded that never had one.
    ASSERT_TRUE(deleteFile(stream.store.pathOf("[kavu]PCMMEAS.D01")).ok());
    ASSERT_TRUE(stream.reload());
    EXPECT_EQ(stream.rewritten(), (Commands{"DLN:PCM 1", "ML\\N:1", "MN\\N-1:0"}));
    EXPECT_EQ(stream.format.dGroup, 1);
}

TEST(MeasurementWriting, AFileThatCanNotBeWrittenIsTold) {
    Writing stream;
    ASSERT_TRUE(stream.load(plainFormat(8, 1)));
    stream.format.dGroup = 7;
    ASSERT_TRUE(makeFolder(stream.store.pathOf("[kavu]PCMMEAS.D07")).ok());
    EXPECT_FALSE(writeMeasurements(stream.format, stream.parent));
    EXPECT_TRUE(
        stream.ui.hasText("Unable to open PCM Measurement Definition File. Operation Aborted"));
    EXPECT_EQ(stream.ui.beeps, 1);
    EXPECT_FALSE(stream.has("[kavu]PCMMEAS.D07.new"));
    EXPECT_FALSE(writeMeasurements(stream.format, nullptr)) << "silent, and a failure";
}

TEST(MeasurementWriting, ABusStreamLeavesItsDGroupAlone) {
    Writing stream;
    ASSERT_TRUE(stream.load(
        {"TF:1553", "F1:24", "MF\\N:1", "MF1:128", "MF4:24", "MF5:111110101111001100100000"},
        listOf({named("A", "MF", {"MF@:3"})})));
    ASSERT_TRUE(writeMeasurements(stream.format, stream.parent));
    EXPECT_THAT(stream.saved("[kavu]PCMMEAS.D01"), Contains("D-1\\MN-1-1:A;"));
}

TEST(MeasurementWriting, ProgressAndStatusAreTold) {
    Writing stream;
    ASSERT_TRUE(stream.load(plainFormat(8, 1), listOf({named("A", "MF", {"MF@:3"})})));
    ASSERT_TRUE(writeMeasurements(stream.format, stream.parent));
    EXPECT_THAT(stream.ui.statusTexts, Contains("Saving PCM Measurement Information..."));
}

}  // namespace
}  // namespace kavu
