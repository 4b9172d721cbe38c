#include "pcm/LoadFixture.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::Logged;
using test::Places;
using test::plainFormat;
using test::subframeAt;
using test::operator+;

/// A 106-09 stream of 32 words and 8 frames: the counter in word 31, subframes "S" of depth 8
/// in word 20, "T" of depth 4 in word 21, and "SC" in words 5, 15, 25 of depth 2.
struct SubframeStream : LoadFixture {
    explicit SubframeStream(const std::vector<Commands>& measurements, Button answer = Button::No)
        : LoadFixture(2009) {
        ui.otherwise = answer;
        loaded = load(
            plainFormat(32, 8) + counterAt(31, 8,
                                           Commands{"SF\\N-1:3"} + subframeAt(1, "S", 20, 8) +
                                               subframeAt(2, "T", 21, 4) +
                                               Commands{"SF1-1-3:SC", "SF2-1-3:3", "SF3-1-3:FI",
                                                        "SF4-1-3-1:5", "SF5-1-3:10", "SF6-1-3:2"}),
            listOf(measurements));
    }
    bool loaded = false;
};

TEST(SubframeLocations, ASubframeWordIsPlacedByItsPosition) {
    SubframeStream f({{"MN@:A", "LT@:SF", "SF1@:S", "SF2@:3", "SFM@:FW"},
                      {"MN@:B", "LT@:SF", "SF1@:SC", "SF2@:5"}});
    EXPECT_EQ(f.places("A"), (Places{{20, 3}}));
    EXPECT_EQ(f.places("B"), (Places{{15, 2}}));
    EXPECT_EQ(f.first("A").mask, "FW");
    EXPECT_TRUE(f.ui.logs.empty());
    EXPECT_EQ(f.result(), 0);
}

TEST(SubframeLocations, AnUnknownSubframeIsToldOf) {
    SubframeStream f({{"MN@:A", "LT@:SF", "SF1@:X", "SF2@:3"}, {"MN@:B", "LT@:SF", "SF2@:3"}});
    EXPECT_EQ(f.logged(), (Logged{{243, 103}, {243, 103}}));
    EXPECT_EQ(f.ui.logs[0].text,
              "Unable to locate subframe definition for measurement A.\nSubframe name (X) not "
              "defined in PCM Format Section of TMATS file.\n\nLast line read: D-1\\SF1-1-1 "
              "\n\nMeasurement definition ignored.");
    EXPECT_NE(f.ui.logs[1].text.find(std::string("(") + std::string(8, '?') + ")"),
              std::string::npos);
}

TEST(SubframeLocations, APositionBelow1MayBecome1) {
    SubframeStream f({{"MN@:A", "LT@:SF", "SF1@:S", "SF2@:0"}}, Button::Yes);
    EXPECT_EQ(f.boxText(244),
              "Illegal value found in TMATS file (D-1\\SF2-1-1) for subframe measurement "
              "definition 'A'. Location in subframe found was 0. Starting subframe number cannot "
              "be lower than 1.\n\nSet this value to 1?");
    EXPECT_EQ(f.places("A"), (Places{{20, 1}}));
    EXPECT_EQ(f.result(), 1);
    SubframeStream g({{"MN@:A", "LT@:SF", "SF1@:S"}}, Button::No);
    EXPECT_FALSE(g.loaded);
    EXPECT_TRUE(g.ui.hasBox(266));
}

TEST(SubframeLocations, APositionBeyondTheSubframeMayBecomeTheLast) {
    SubframeStream f({{"MN@:A", "LT@:SF", "SF1@:T", "SF2@:9"}}, Button::Yes);
    EXPECT_EQ(f.boxText(245),
              "Illegal value found in TMATS file (D-1\\SF2-1-1) for subframe measurement "
              "definition 'A'. Location in subframe found was 9. Subframe is only 4 words deep. "
              "Set this value to 4?");
    EXPECT_EQ(f.places("A"), (Places{{21, 4}}));
    EXPECT_EQ(f.result(), 1);
    SubframeStream g({{"MN@:A", "LT@:SF", "SF1@:T", "SF2@:9"}}, Button::No);
    EXPECT_FALSE(g.loaded);
}

TEST(SubframeLocations, SupercomIntervalIsPlacedAtEachPositionThatExists) {
    SubframeStream f({{"MN@:A", "LT@:SFSC", "SFS1@:S", "SFS\\N@:5", "SFS2@:I", "SFS3@:2",
                       "SFS4@:FW", "SFS5@:3"}});
    EXPECT_EQ(f.places("A"), (Places{{20, 2}, {20, 5}, {20, 8}}));
    EXPECT_EQ(f.logged(), (Logged{{270, 97}}));
    EXPECT_EQ(f.logText(270),
              "Subframe S contains only 8 word positions. Unable to initialize requested number of "
              "measurements locations. Measurement 'A' at location #4 will not be processed.");
    EXPECT_EQ(f.first("A").locationCount, 5) << "the file's number stays";
    EXPECT_EQ(f.first("A").interval, 3);
    EXPECT_EQ(f.result(), 0);
}

TEST(SubframeLocations, SupercomIntervalFromAPositionThatIsNoneIsPlacedFromTheNext) {
    SubframeStream f(
        {{"MN@:A", "LT@:SFSC", "SFS1@:S", "SFS\\N@:3", "SFS2@:I", "SFS3@:0", "SFS5@:4"}});
    EXPECT_EQ(f.logged(), (Logged{{269, 96}}));
    EXPECT_EQ(f.logText(269),
              "Unable to locate subframe S position #0. Subframe Supercom Interval "
              "measurement A not initialized.");
    EXPECT_EQ(f.places("A"), (Places{{20, 4}, {20, 8}}));
}

TEST(SubframeLocations, SupercomIntervalOfZeroAndCountsWithoutMeasureStayBounded) {
    SubframeStream f(
        {{"MN@:A", "LT@:SFSC", "SFS1@:S", "SFS\\N@:1000000000", "SFS2@:I", "SFS3@:2", "SFS5@:0"},
         {"MN@:B", "LT@:SFSC", "SFS1@:S", "SFS\\N@:1000000000", "SFS2@:I", "SFS3@:2",
          "SFS5@:1000000000"}});
    EXPECT_TRUE(f.loaded);
    EXPECT_EQ(f.places("A").size(), 8U);
    EXPECT_EQ(f.places("B"), (Places{{20, 2}}));
}

TEST(SubframeLocations, SupercomWithoutCountPositionOrIntervalFailsTheLoad) {
    struct Row {
        Commands commands;
        int message;
        int title;
    };
    for (const auto& row : {Row{{}, 250, 89}, Row{{"SFS\\N@:2", "SFS2@:I"}, 251, 78},
                            Row{{"SFS\\N@:2", "SFS2@:I", "SFS3@:1"}, 252, 89}}) {
        SubframeStream f({Commands{"MN@:A", "LT@:SFSC", "SFS1@:S"} + row.commands});
        EXPECT_FALSE(f.loaded);
        EXPECT_EQ(f.logged(), (Logged{{row.message, row.title}}));
    }
}

TEST(SubframeLocations, SupercomEveryLocationSetsTheNumberOfThoseStored) {
    SubframeStream f({{"MN@:A", "LT@:SFSC", "SFS1@:S", "SFS\\N@:4", "SFS2@:E", "SFS6@-1:7",
                       "SFS7@-1:0011", "SFS6@-3:9", "SFS6@-4:2", "SFS7@-4:1100"}});
    EXPECT_EQ(f.places("A"), (Places{{20, 2}, {20, 7}}));
    EXPECT_EQ(f.logged(), (Logged{{253, 78}, {272, 96}}));
    EXPECT_EQ(f.logText(272),
              "Unable to locate position #9 of subframe S. This subframe has 8 positions (numbered "
              "1 to 8). Subframe Supercom Every Location measurement A can not be defined at this "
              "position.");
    EXPECT_EQ(f.first("A").locationCount, 2);
    EXPECT_EQ(f.format.cells().measurement(f.format.cellAt(20, 7)).mask, "0011");
    EXPECT_EQ(f.format.cells().measurement(f.format.cellAt(20, 2)).mask, "1100");
}

TEST(SubframeLocations, SupercomEveryLocationHasNoTestForAPlaceThatIsTaken) {
    SubframeStream f(
        {{"MN@:A", "LT@:SFSC", "SFS1@:S", "SFS\\N@:2", "SFS2@:E", "SFS6@-1:7", "SFS6@-2:7"}});
    EXPECT_EQ(f.places("A"), (Places{{20, 7}, {20, 7}}));
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(SubframeLocations, ASubframeDeeperThanTheFramesHasNoPlaceBeyondThem) {
    LoadFixture f(2009);
    ASSERT_TRUE(f.load(
        plainFormat(16, 4) + counterAt(15, 4, Commands{"SF\\N-1:1"} + subframeAt(1, "S", 5, 9)),
        listOf({{"MN@:A", "LT@:SF", "SF1@:S", "SF2@:8"},
                {"MN@:B", "LT@:SFSC", "SFS1@:S", "SFS\\N@:1", "SFS2@:E", "SFS6@-1:8"},
                {"MN@:C", "LT@:SFSC", "SFS1@:S", "SFS\\N@:3", "SFS2@:I", "SFS3@:2", "SFS5@:3"}})));
    EXPECT_EQ(f.ui.countLogs(276), 1);
    EXPECT_EQ(f.ui.countLogs(271), 1);
    EXPECT_EQ(f.logText(271),
              "Error initalizing measurement 'B' assigned to subframe 'S'. No measurement defined "
              "at Frame Word Position: 5 Frame Number: 8");
    EXPECT_EQ(f.places("C"), (Places{{5, 2}}));
}

// --- SFFR -----------------------------------------------------------------------------------

TEST(SubframeLocations, FragmentsByIntervalRunDownTheFramesAndAcrossSubframes) {
    SubframeStream f(
        {{"MN@:A", "LT@:SFFR", "FSF\\N@:4", "FSF1@:64", "FSF2\\N@:2", "FSF3@-1:T", "FSF4@-1:I",
          "FSF5@-1:1", "FSF7@-1:2", "FSF3@-2:S", "FSF4@-2:I", "FSF5@-2:3", "FSF7@-2:4"}});
    EXPECT_EQ(f.places("A"), (Places{{20, 3}, {20, 7}, {21, 1}, {21, 3}}));
    const auto fragment = [&f](int fwp, int index) {
        return f.format.cells().measurement(f.format.cellAt(fwp, index)).fragmentNumber;
    };
    EXPECT_EQ(fragment(21, 1), 1);
    EXPECT_EQ(fragment(21, 3), 2);
    EXPECT_EQ(fragment(20, 3), 3);
    EXPECT_EQ(fragment(20, 7), 4);
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(SubframeLocations, FragmentsByAnIntervalOfZeroHaveOneLocation) {
    SubframeStream f({{"MN@:A", "LT@:SFFR", "FSF\\N@:4", "FSF2\\N@:1", "FSF3@-1:S", "FSF4@-1:I",
                       "FSF5@-1:2", "FSF7@-1:0"}});
    EXPECT_EQ(f.places("A"), (Places{{20, 2}}));
}

TEST(SubframeLocations, FragmentsOfASupercommutatedSubframeStandInTheFrameOfTheirInterval) {
    SubframeStream f({{"MN@:A", "LT@:SFFR", "FSF\\N@:3", "FSF2\\N@:1", "FSF3@-1:SC", "FSF4@-1:I",
                       "FSF5@-1:1", "FSF7@-1:2"}});
    EXPECT_EQ(f.places("A"), (Places{{5, 2}, {15, 2}, {25, 2}}));
    SubframeStream g({{"MN@:A", "LT@:SFFR", "FSF\\N@:3", "FSF2\\N@:1", "FSF3@-1:SC", "FSF4@-1:I",
                       "FSF5@-1:1", "FSF7@-1:10"}});
    // From word 5 the next one is sought eleven positions on; frame 10 is none.
    EXPECT_FALSE(g.format.hasMeasurement("A"));
    EXPECT_EQ(g.ui.countLogs(276), 1);
}

TEST(SubframeLocations, FragmentsInAListStandWhereTheySay) {
    SubframeStream f({{"MN@:A", "LT@:SFFR", "FSF\\N@:2", "FSF1@:12", "FSF2\\N@:2", "FSF3@-1:S",
                       "FSF4@-1:E", "FSF8@-1-1:2", "FSF9@-1-1:0000000000001111", "FSF10@-1-1:M",
                       "FSF11@-1-1:1", "FSF8@-1-2:6", "FSF9@-1-2:0000000000001111", "FSF11@-1-2:1",
                       "FSF3@-2:T", "FSF4@-2:E", "FSF8@-2-1:4", "FSF11@-2-1:2"}});
    EXPECT_EQ(f.places("A"), (Places{{20, 2}, {20, 6}, {21, 4}}));
    EXPECT_EQ(f.first("A").fragmentTransferOrder, "M");
    EXPECT_EQ(f.first("A").locationCount, 2);
    EXPECT_TRUE(f.ui.logs.empty()) << "the bits of a list are not compared with the length";
}

TEST(SubframeLocations, AMissingMaskOfAFragmentIsTheWholeWordAndOfAnyOtherOneEmpty) {
    SubframeStream f({{"MN@:A", "LT@:SFFR", "FSF\\N@:1", "FSF2\\N@:1", "FSF3@-1:S", "FSF4@-1:E",
                       "FSF8@-1-1:2", "FSF11@-1-1:1"},
                      {"MN@:B", "LT@:SF", "SF1@:S", "SF2@:3"}});
    EXPECT_EQ(f.first("A").mask, "FW");
    EXPECT_EQ(f.first("B").mask, "");
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(SubframeLocations, AFragmentNumberOfZeroIsRefused) {
    SubframeStream f({{"MN@:A", "LT@:SFFR", "FSF\\N@:2", "FSF2\\N@:1", "FSF3@-1:S", "FSF4@-1:E",
                       "FSF8@-1-1:2", "FSF11@-1-1:0", "FSF8@-1-2:3", "FSF11@-1-2:1"}});
    EXPECT_EQ(f.logged(), (Logged{{290, 89}}));
    EXPECT_EQ(f.logText(290),
              "Error defining measurement 'A'. This measurement is defined as having 2 fragments, "
              "yet a fragment definition for 'fragment #0' was found. This invalid definition will "
              "be ignored.");
    EXPECT_FALSE(f.format.hasMeasurement("A")) << "the list ends there";
    EXPECT_EQ(f.result(), 1);
}

TEST(SubframeLocations, FragmentsInAListAreCheckedOneByOne) {
    const Commands head = {"MN@:A",     "LT@:SFFR",    "FSF\\N@:3",      "FSF2\\N@:1",  "FSF3@-1:T",
                           "FSF4@-1:E", "FSF8@-1-1:2", "FSF9@-1-1:1100", "FSF11@-1-1:1"};
    struct Row {
        Commands commands;
        Logged logged;
        Places places;
        int result;
    };
    for (const auto& row : {
             Row{{"FSF8@-1-2:9", "FSF11@-1-2:1"}, {{279, 89}}, {{21, 2}}, 0},
             Row{{"FSF8@-1-2:0", "FSF11@-1-2:1"}, {{279, 89}}, {{21, 2}}, 0},
             Row{{"FSF8@-1-2:3"}, {{263, 89}}, {{21, 2}}, 1},
             Row{{"FSF8@-1-2:3", "FSF11@-1-2:4"}, {{290, 89}}, {{21, 2}}, 1},
             Row{{"FSF8@-1-2:3", "FSF11@-1-2:2"}, {{282, 89}}, {{21, 2}}, 1},
             Row{{"FSF8@-1-2:2", "FSF11@-1-2:2"}, {}, {{21, 2}, {21, 2}}, 0},
             Row{{"FSF8@-1-2:3", "FSF9@-1-2:0011", "FSF11@-1-2:1"},
                 {{291, 89}},
                 {{21, 2}, {21, 3}},
                 1},
         }) {
        SubframeStream f({head + row.commands});
        EXPECT_EQ(f.logged(), row.logged) << row.commands.back();
        EXPECT_EQ(f.places("A"), row.places) << row.commands.back();
        EXPECT_EQ(f.result(), row.result) << row.commands.back();
    }
    SubframeStream f({head + Commands{"FSF8@-1-2:9", "FSF11@-1-2:1"}});
    EXPECT_EQ(f.logText(279),
              "ERROR reading TMATS command (D-1\\FSF8-1-1-1-2:9). Unable to place SFFR measurement "
              "'A' in location #9 of subframe 'T'.\nThis subframe only has 4 positions.");
    SubframeStream g({head + Commands{"FSF8@-1-2:3", "FSF9@-1-2:0011", "FSF11@-1-2:1"}});
    EXPECT_EQ(g.format.cells().measurement(g.format.cellAt(21, 3)).mask, "1100")
        << "the first mask of a fragment stands";
}

TEST(SubframeLocations, TheMaskOfAFragmentIsComparedWithinOneSubframe) {
    const Commands head = {"MN@:A",          "LT@:SFFR",    "FSF\\N@:2",   "FSF2\\N@:2",
                           "FSF3@-1:S",      "FSF4@-1:E",   "FSF8@-1-1:2", "FSF9@-1-1:1100",
                           "FSF11@-1-1:1",   "FSF3@-2:T",   "FSF4@-2:E",   "FSF8@-2-1:3",
                           "FSF9@-2-1:0011", "FSF11@-2-1:1"};
    SubframeStream f({head});
    EXPECT_TRUE(f.ui.logs.empty());
    EXPECT_EQ(f.result(), 0);
    EXPECT_EQ(f.format.cells().measurement(f.format.cellAt(21, 3)).mask, "0011");
}

TEST(SubframeLocations, AListInASupercommutatedSubframeMayHoldOtherFragmentsInOtherFrames) {
    SubframeStream f({{"MN@:A", "LT@:SFFR", "FSF\\N@:2", "FSF2\\N@:1", "FSF3@-1:SC", "FSF4@-1:E",
                       "FSF8@-1-1:1", "FSF11@-1-1:1", "FSF8@-1-2:4", "FSF11@-1-2:2"}});
    EXPECT_EQ(f.places("A"), (Places{{5, 1}, {5, 2}}));
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(SubframeLocations, FragmentsNeedTheirCountsAndSubframes) {
    SubframeStream f({Commands{"MN@:A", "LT@:SFFR"}});
    EXPECT_EQ(f.logged(), (Logged{{258, 104}}));
    SubframeStream g({{"MN@:A", "LT@:SFFR", "FSF\\N@:2"}});
    EXPECT_EQ(g.logged(), (Logged{{259, 104}}));
    SubframeStream h({{"MN@:A", "LT@:SFFR", "FSF\\N@:2", "FSF2\\N@:2", "FSF3@-2:X"}});
    EXPECT_EQ(h.logged(), (Logged{{260, 92}, {260, 92}}));
    EXPECT_EQ(h.ui.logs[0].text,
              "Unable to locate subframe definition for Unknown. This "
              "definition will be ignored.");
    SubframeStream i({{"MN@:A", "LT@:SFFR", "FSF\\N@:2", "FSF2\\N@:2", "FSF3@-1:S", "FSF4@-1:I",
                       "FSF3@-2:T", "FSF4@-2:I", "FSF5@-2:1", "FSF7@-2:1"}});
    EXPECT_EQ(i.logged(), (Logged{{261, 78}}));
    EXPECT_FALSE(i.format.hasMeasurement("A")) << "no further subframe is read";
    EXPECT_EQ(i.result(), 1);
    SubframeStream j(
        {{"MN@:A", "LT@:SFFR", "FSF\\N@:2", "FSF2\\N@:2", "FSF3@-1:S", "FSF4@-1:I", "FSF5@-1:1"}});
    EXPECT_EQ(j.logged(), (Logged{{262, 89}}));
    EXPECT_FALSE(j.loaded);
}

TEST(SubframeLocations, BothFormsInOneMeasurementAreToldOf) {
    SubframeStream f(
        {{"MN@:A", "LT@:SFFR", "FSF\\N@:2", "FSF1@:16", "FSF2\\N@:2", "FSF3@-1:S", "FSF4@-1:I",
          "FSF5@-1:8", "FSF7@-1:1", "FSF3@-2:T", "FSF4@-2:E", "FSF8@-2-1:1", "FSF11@-2-1:2"}});
    EXPECT_EQ(f.logged(), (Logged{{289, 79}}));
    EXPECT_EQ(f.places("A"), (Places{{20, 8}, {21, 1}}));
}

TEST(SubframeLocations, TheBitsOfTheIntervalFormAreComparedWithTheLength) {
    SubframeStream f({{"MN@:A", "LT@:SFFR", "FSF\\N@:2", "FSF1@:24", "FSF2\\N@:1", "FSF3@-1:T",
                       "FSF4@-1:I", "FSF5@-1:1", "FSF7@-1:2"}});
    EXPECT_EQ(f.logged(), (Logged{{280, 79}}));
    EXPECT_NE(f.logText(280).find("Subframe Fragmented measurement 'A' was defined with a "
                                  "reconstructed word length of 24, but 32 bits"),
              std::string::npos);
}

TEST(SubframeLocations, SubframesWithoutMeasureEndAfter99MissingOnes) {
    SubframeStream f({{"MN@:A", "LT@:SFFR", "FSF\\N@:2", "FSF2\\N@:1000000000"}});
    EXPECT_TRUE(f.loaded);
    EXPECT_EQ(f.ui.countLogs(260), 99);
}

}  // namespace
}  // namespace kavu
