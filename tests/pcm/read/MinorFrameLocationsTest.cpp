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

/// A 106-09 stream of 32 words and 4 frames with a counter in word 31 and a subframe in 20.
struct FrameStream : LoadFixture {
    explicit FrameStream(const std::vector<Commands>& measurements) : LoadFixture(2009) {
        loaded = load(plainFormat(32, 4) +
                          counterAt(31, 4, Commands{"SF\\N-1:1"} + subframeAt(1, "S", 20, 4)),
                      listOf(measurements));
    }
    bool loaded = false;
};

TEST(MinorFrameLocations, AMinorWordNeedsItsWord) {
    FrameStream f({Commands{"MN@:A", "LT@:MF"}});
    EXPECT_TRUE(f.loaded);
    EXPECT_EQ(f.logged(), (Logged{{242, 78}}));
    EXPECT_EQ(f.logText(242),
              "Unable to locate minor frame definition (D-1\\MF-1-1) in Measurement Section for "
              "measurement 'A'.\n\nThis measurement definition will be ignored.");
    EXPECT_EQ(f.result(), 0);
}

TEST(MinorFrameLocations, AMissingMaskOfAFragmentIsTheWholeWordAndOfAnyOtherOneEmpty) {
    FrameStream f({{"MN@:A", "LT@:MF", "MF@:5"},
                   {"MN@:B", "LT@:MFFR", "FMF\\N@:1", "FMF2@:E", "FMF6@-1:6", "FMF9@-1:1"}});
    EXPECT_EQ(f.first("A").mask, "");
    EXPECT_EQ(f.first("B").mask, "FW");
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(MinorFrameLocations, AWordOutOfTheFrameIsRefused) {
    for (const auto* const word : {"0", "32", "-4", "99999999999"}) {
        FrameStream f({{"MN@:A", "LT@:MF", std::string("MF@:") + word}});
        EXPECT_TRUE(f.loaded);
        EXPECT_EQ(f.logged(), (Logged{{276, 78}})) << word;
        EXPECT_EQ(f.result(), 1);
    }
    FrameStream f({{"MN@:A", "LT@:MF", "MF@:32"}});
    EXPECT_EQ(f.logText(276),
              "Illegal Frame Word Position definition for measurement 'A' at Frame Word "
              "Position:32 Frame Number:1.\n\nThis PCM format is defined with 32 maximum words per "
              "minor frame.");
}

TEST(MinorFrameLocations, ASubframeWordIsNoMinorWord) {
    FrameStream f({{"MN@:A", "LT@:MF", "MF@:20"}, {"MN@:B", "LT@:MF", "MF@:31"}});
    EXPECT_EQ(f.logged(), (Logged{{277, 78}}));
    EXPECT_EQ(f.logText(277),
              "Illegal measurement definition. Measurement 'A' is defined as a Minor Word "
              "measurement, but Frame Word Position 20 is defined as a Subframe ('S'). This "
              "definition will be ignored.");
    EXPECT_EQ(f.places("B"), (Places{{31, 1}})) << "a counter's word is accepted";
}

TEST(MinorFrameLocations, SupercomIntervalStopsAtTheFirstLocationOutOfRange) {
    FrameStream f(
        {{"MN@:A", "LT@:MFSC", "MFS\\N@:4", "MFS1@:I", "MFS2@:3", "MFS3@:FW", "MFS4@:14"}});
    // 3 and 17 are words, 31 is the counter's, 45 is out of range.
    EXPECT_EQ(f.places("A"), (Places{{3, 1}, {17, 1}, {31, 1}}));
    FrameStream g(
        {{"MN@:A", "LT@:MFSC", "MFS\\N@:4", "MFS1@:I", "MFS2@:12", "MFS3@:FW", "MFS4@:10"}});
    EXPECT_EQ(g.places("A"), (Places{{12, 1}, {22, 1}}));
    const auto a = g.first("A");
    EXPECT_EQ(a.locationCount, 2);
    EXPECT_EQ(a.interval, 10);
    EXPECT_EQ(a.locationMode, "I");
    EXPECT_EQ(a.mask, "FW");
    EXPECT_EQ(g.logged(), (Logged{{276, 78}}));
    EXPECT_EQ(g.format.cells().measurement(g.format.cellAt(22, 1)).locationCount, 2);
}

TEST(MinorFrameLocations, SupercomWithoutCountFirstWordOrIntervalFailsTheLoad) {
    struct Row {
        Commands commands;
        int message;
        int title;
        const char* text;
    };
    for (const auto& row :
         {Row{{}, 246, 89, "Unable to determine number of locations for Minor Frame Supercom 'A'"},
          Row{{"MFS\\N@:2", "MFS1@:I"},
              247,
              78,
              "Unable to locate Minor Frame Supercom Interval Definition (D-1\\MFS2-1-1) for "
              "measurement: A"},
          Row{{"MFS\\N@:2", "MFS1@:I", "MFS2@:3"},
              248,
              89,
              "Unable to determine interval for Minor Frame Supercom 'A'"}}) {
        FrameStream f({Commands{"MN@:A", "LT@:MFSC"} + row.commands});
        EXPECT_FALSE(f.loaded);
        EXPECT_EQ(f.logged(), (Logged{{row.message, row.title}}));
        EXPECT_EQ(f.logText(row.message), row.text);
        EXPECT_TRUE(f.ui.hasBox(266));
    }
}

TEST(MinorFrameLocations, SupercomEveryLocationHasAMaskForEachAndPassesOverMissingOnes) {
    FrameStream f({{"MN@:A", "LT@:MFSC", "MFS\\N@:4", "MFS1@:E", "MFSW@-1:9", "MFSM@-1:0011",
                    "MFSW@-3:5", "MFSM@-3:1100", "MFSW@-4:9"}});
    EXPECT_EQ(f.places("A"), (Places{{5, 1}, {9, 1}}));
    EXPECT_EQ(f.logged(), (Logged{{249, 78}, {275, 89}}));
    EXPECT_EQ(f.logText(275),
              "Unable to initialize measurement information for measurement A in TMATS file. "
              "Measurement A at Frame Word Position:9 Frame Number:1 is already defined. The "
              "definition for A will be ignored.");
    const auto& cells = f.format.cells();
    EXPECT_EQ(cells.measurement(f.format.cellAt(5, 1)).mask, "1100");
    EXPECT_EQ(cells.measurement(f.format.cellAt(9, 1)).mask, "0011");
    EXPECT_EQ(cells.measurement(f.format.cellAt(9, 1)).locationCount, 2);
    EXPECT_EQ(cells.measurement(f.format.cellAt(5, 1)).locationCount, 2);
    EXPECT_EQ(f.result(), 1);
}

TEST(MinorFrameLocations, SupercomWithIntervalZeroHasOneLocation) {
    FrameStream f({{"MN@:A", "LT@:MFSC", "MFS\\N@:1000000000", "MFS1@:I", "MFS2@:3", "MFS4@:0"}});
    EXPECT_EQ(f.places("A"), (Places{{3, 1}}));
    EXPECT_EQ(f.first("A").locationCount, 1);
    EXPECT_EQ(f.logged(), (Logged{{275, 89}}));
}

TEST(MinorFrameLocations, ANegativeIntervalCountsAsZero) {
    FrameStream f({{"MN@:A", "LT@:MFSC", "MFS\\N@:5", "MFS1@:I", "MFS2@:9", "MFS4@:-2"}});
    EXPECT_EQ(f.places("A"), (Places{{9, 1}}));
}

TEST(MinorFrameLocations, AListOfEveryLocationEndsAfter99MissingOnes) {
    FrameStream f({{"MN@:A", "LT@:MFSC", "MFS\\N@:1000000000", "MFS1@:E", "MFSW@-1:3", "MFSW@-90:4",
                    "MFSW@-500:5"}});
    EXPECT_EQ(f.places("A"), (Places{{3, 1}, {4, 1}}));
    EXPECT_EQ(f.ui.countLogs(249), 88 + 99);
    EXPECT_EQ(f.first("A").locationCount, 2);
}

TEST(MinorFrameLocations, FragmentsByIntervalAreNumberedFrom1) {
    FrameStream f(
        {{"MN@:A", "LT@:MFFR", "FMF\\N@:3", "FMF1@:48", "FMF2@:I", "FMF3@:4", "FMF5@:2"}});
    EXPECT_EQ(f.places("A"), (Places{{4, 1}, {6, 1}, {8, 1}}));
    for (int n = 1; n <= 3; ++n) {
        const auto& copy = f.format.cells().measurement(f.format.cellAt(2 + 2 * n, 1));
        EXPECT_EQ(copy.fragmentNumber, n);
        EXPECT_EQ(copy.mask, "FW") << "the default of fragments";
        EXPECT_EQ(copy.locationCount, 3);
        EXPECT_EQ(copy.reconstructedLength, 48);
        EXPECT_EQ(copy.interval, 2);
    }
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(MinorFrameLocations, FragmentsOfOneMeasurementMayShareAWord) {
    FrameStream f({{"MN@:A", "LT@:MFFR", "FMF\\N@:2", "FMF1@:8", "FMF2@:E", "FMF6@-1:4",
                    "FMF7@-1:1111000000000000", "FMF8@-1:M", "FMF9@-1:1", "FMF6@-2:4",
                    "FMF7@-2:0000000000001111", "FMF8@-2:L", "FMF9@-2:2"}});
    EXPECT_EQ(f.places("A"), (Places{{4, 1}, {4, 1}}));
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 4);
    const auto second = f.format.measurementAt(4, 1, 2, true);
    EXPECT_EQ(f.format.cells().measurement(second).fragmentNumber, 2);
    EXPECT_EQ(f.format.cells().measurement(second).fragmentTransferOrder, "L");
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(MinorFrameLocations, AReconstructedLengthThatTheMasksDoNotGiveIsToldOf) {
    FrameStream f(
        {{"MN@:A", "LT@:MFFR", "FMF\\N@:2", "FMF1@:40", "FMF2@:I", "FMF3@:4", "FMF5@:1"}});
    EXPECT_EQ(f.logged(), (Logged{{280, 79}}));
    EXPECT_EQ(f.logText(280),
              "Minor Word Fragmented measurement 'A' was defined with a reconstructed word length "
              "of 40, but 32 bits were defined in the bit masks of each fragment of this "
              "measurement. It is possible that this measurement was not completely or properly "
              "defined.");
    EXPECT_EQ(f.result(), 0);
}

TEST(MinorFrameLocations, FragmentsThatNobodyDefinedAreListed) {
    FrameStream f({{"MN@:A", "LT@:MFFR", "FMF\\N@:4", "FMF1@:64", "FMF2@:E", "FMF6@-1:4",
                    "FMF9@-1:3", "FMF6@-3:5", "FMF9@-3:9", "FMF6@-4:6", "FMF9@-4:1"}});
    EXPECT_EQ(f.logged(), (Logged{{257, 78}, {274, 79}}));
    EXPECT_EQ(f.logText(274),
              "Measurement 'A' is defined as a fragmented measurement, but not every fragment was "
              "defined. The following fragments were not defined: 2 4. This measurement may not be "
              "described properly.");
    EXPECT_EQ(f.first("A").locationCount, 3);
}

TEST(MinorFrameLocations, FragmentsWithoutCountAreLeftOutAndWithoutFirstWordOrIntervalFail) {
    FrameStream f({Commands{"MN@:A", "LT@:MFFR"}});
    EXPECT_TRUE(f.loaded);
    EXPECT_EQ(f.logged(), (Logged{{254, 91}}));
    FrameStream g({{"MN@:A", "LT@:MFFR", "FMF\\N@:2", "FMF2@:I"}});
    EXPECT_FALSE(g.loaded);
    EXPECT_EQ(g.logged(), (Logged{{255, 78}}));
    FrameStream h({{"MN@:A", "LT@:MFFR", "FMF\\N@:2", "FMF2@:I", "FMF3@:4"}});
    EXPECT_FALSE(h.loaded);
    EXPECT_EQ(h.logged(), (Logged{{256, 89}}));
}

TEST(MinorFrameLocations, FragmentsWithoutMeasureEnd) {
    FrameStream f({{"MN@:A", "LT@:MFFR", "FMF\\N@:1000000000", "FMF2@:I", "FMF3@:4", "FMF5@:0"}});
    EXPECT_TRUE(f.loaded);
    EXPECT_EQ(f.first("A").locationCount, kMostWords);
    EXPECT_EQ(f.logged(), (Logged{{274, 79}}));
    FrameStream g(
        {{"MN@:A", "LT@:MFFR", "FMF\\N@:1000000000", "FMF2@:E", "FMF6@-1:4", "FMF9@-1:1"}});
    EXPECT_TRUE(g.loaded);
    EXPECT_EQ(g.places("A"), (Places{{4, 1}}));
}

}  // namespace
}  // namespace kavu
