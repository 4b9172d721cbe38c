#include "pcm/LoadFixture.h"
#include "pcm/read/DataChunks.h"

#include <tuple>

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::Logged;
using test::Places;
using test::plainFormat;
using test::operator+;

TEST(MeasurementReader, ReadsTheAttributesWithTheirDefaults) {
    LoadFixture f(2009);
    ASSERT_TRUE(f.load(plainFormat(16, 1), listOf({{"MN@:A", "MN1@:EV", "MN2@:L", "MN3@:M",
                                                    "MFOT@:Y", "LT@:MF", "MF@:3", "MFM@:0011"},
                                                   {"MN@:B", "LT@:MF", "MF@:4"}})));
    auto a = f.first("A");
    EXPECT_EQ(a.parity, "EV");
    EXPECT_EQ(a.parityTransferOrder, "L");
    EXPECT_EQ(a.transferOrder, "M");
    EXPECT_EQ(a.filterOverwrite, "Y");
    EXPECT_EQ(a.locationType, "MF");
    EXPECT_EQ(a.mask, "0011");
    const auto b = f.first("B");
    EXPECT_EQ(b.parity, "DE");
    EXPECT_EQ(b.parityTransferOrder, "D");
    EXPECT_EQ(b.transferOrder, "D");
    EXPECT_EQ(b.filterOverwrite, "N");
    EXPECT_EQ(b.mask, "") << "an empty mask is not an error";
    EXPECT_EQ(f.result(), 0);
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(MeasurementReader, ATypeInAnyCaseKeepsItsLocationsWhenItIsWritten) {
    for (const auto& [edition, type, place] :
         {std::tuple(2007, "Mf", "MF@:3"), std::tuple(2011, "WDfR", "WP@-1-1:3")}) {
        LoadFixture f(edition);
        ASSERT_TRUE(
            f.load(plainFormat(16, 1), listOf({{"MN@:A", std::string("LT@:") + type, "MML\\N@:1",
                                                place, "FP@-1-1:1", "EFP@-1-1:1", "FI@-1-1:1"}})));
        f.format.changed = true;
        ASSERT_TRUE(savePcmFormat(f.format, f.parent));
        EXPECT_EQ(f.ui.countBoxes(297), 0);
        const auto written = f.read("[kavu]PCMMEAS.D01");
        EXPECT_THAT(written, ::testing::HasSubstr(edition == 2011 ? "WP-1-1-1-1:3;" : "MF-1-1:3;"));
        EXPECT_THAT(written, ::testing::HasSubstr(edition == 2011 ? "LT-1-1:WDFR;" : "LT-1-1:MF;"));
    }
}

TEST(MeasurementReader, TheFilterOverwriteIsRead10609Only) {
    for (const int edition : {2007, 2011}) {
        LoadFixture f(edition);
        f.ui.otherwise = Button::No;
        ASSERT_TRUE(f.load(plainFormat(16, 1) + counterAt(15, 1),
                           listOf({{"MN@:A", "MFOT@:Y", "LT@:WDFR", "MML\\N@:1", "WP@-1-1:3",
                                    "FP@-1-1:1", "FI@-1-1:1"}})));
        ASSERT_TRUE(f.format.hasMeasurement("A"));
        EXPECT_EQ(f.first("A").filterOverwrite, "");
    }
}

TEST(MeasurementReader, AMissingDGroupIsToldOfAndLeavesNoMeasurements) {
    LoadFixture f;
    f.writeGroup('P', plainFormat(8, 1));
    ASSERT_TRUE(f.reload());
    EXPECT_EQ(f.boxText(145),
              "Previous 'Measurement Description Group (D)' TMATS definition was "
              "not found. Creating new definition");
    EXPECT_EQ(f.format.dGroup, 0);
    EXPECT_FALSE(f.format.hasAnyMeasurement());
    EXPECT_EQ(f.result(), 0);
}

TEST(MeasurementReader, MissingCountsAndNamesHaveDefaults) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1), Commands{"XX:1"}));
    EXPECT_EQ(f.logged(), (Logged{{238, 79}, {239, 89}, {240, 79}}));
    EXPECT_EQ(f.logText(239),
              "Unable to locate Measurement List Name for definition #1. Default name "
              "'Measurement List #1' will be used.");
    EXPECT_EQ(f.format.measurementListCount, 1);
    EXPECT_EQ(f.format.measurementListNames[0], "Measurement List #1");
    EXPECT_EQ(f.result(), 1);
    ASSERT_TRUE(f.load(plainFormat(8, 1), Commands{"ML\\N:0", "MLN-1:L", "MN\\N-1:0"}));
    EXPECT_EQ(f.logged(), (Logged{{237, 90}}));
    EXPECT_EQ(f.logText(237),
              "Number of measurement lists (D-1\\ML\\N) found was 0.\n\nRe-setting "
              "to default value of 1.");
    EXPECT_EQ(f.result(), 1);
    ASSERT_TRUE(f.load(plainFormat(8, 1), Commands{"ML\\N:1", "MLN-1:L"}));
    EXPECT_EQ(f.result(), 0) << "a missing number of measurands is told of, but replaces nothing";
}

TEST(MeasurementReader, MeasurementNumber100IsReadFromTheSecondChunkAnd99FromTheFirst) {
    LoadFixture f;
    Commands lines = {"ML\\N:1", "MLN-1:L", "MN\\N-1:100"};
    for (const auto* const m : {"1-99", "1-100"}) {
        const std::string n = m;
        lines.push_back("MN-" + n + ":M" + n);
        lines.push_back("LT-" + n + ":MF");
        lines.push_back("MF-" + n + ":3");
    }
    f.writeGroup('P', plainFormat(8, 1));
    f.writeGroup('D', lines);
    f.format.allocateWords({}, 8);
    {
        PcmLoad load(f.format, f.parent);
        load.prefix = "D-1\\";
        DataChunks chunks(load, 1);
        ASSERT_TRUE(chunks.split());
        const auto first = f.read("[kavu]D00000000.D01");
        const auto second = f.read("[kavu]D00000001.D01");
        EXPECT_NE(first.find("D-1\\MN-1-99:M1-99;\r\n"), std::string::npos);
        EXPECT_NE(first.find("D-1\\MN\\N-1:100;\r\n"), std::string::npos)
            << "what names no measurement is in the first chunk";
        EXPECT_EQ(second, "D-1\\MN-1-100:M1-100;\r\nD-1\\LT-1-100:MF;\r\nD-1\\MF-1-100:3;\r\n");
        EXPECT_TRUE(chunks.chunkOf(99)->find("D-1\\MN-1-99"));
        EXPECT_FALSE(chunks.chunkOf(99)->find("D-1\\MN-1-100"));
        EXPECT_TRUE(chunks.chunkOf(100)->find("d-1\\mn-1-100"));
        EXPECT_EQ(chunks.chunkOf(200), nullptr);
    }
    EXPECT_FALSE(f.has("[kavu]D00000000.D01"));
    EXPECT_FALSE(f.has("[kavu]D00000001.D01"));
    ASSERT_TRUE(f.reload());
    EXPECT_TRUE(f.format.hasMeasurement("M1-99"));
    EXPECT_TRUE(f.format.hasMeasurement("M1-100"));
    EXPECT_FALSE(f.has("[kavu]D00000001.D01"));
}

TEST(MeasurementReader, ALookUpTakesWhatStandsBehindTheOneBeforeAndGoesOnceAround) {
    TmatsReader reader;
    CommandIndex fields;
    auto source = ByteSource::fromMemory("D-1\\A:1;\r\nD-1\\B:2;\r\nD-1\\A:3;\r\nD-1\\C:;\r\n");
    ASSERT_TRUE(fields.read(reader, source).ok());
    EXPECT_EQ(fields.find("D-1\\B")->value, "2");
    EXPECT_EQ(fields.find("D-1\\A")->value, "3");
    EXPECT_EQ(fields.find("d-1\\a")->value, "1");
    EXPECT_EQ(fields.find("D-1\\A")->value, "3");
    EXPECT_FALSE(fields.find("D-1\\C")) << "an empty value is none";
    EXPECT_FALSE(fields.find("D-1\\D"));
}

TEST(MeasurementReader, ChunkFilesGoAlsoWhenTheLoadIsCancelled) {
    LoadFixture f;
    f.writeGroup('P', plainFormat(8, 1));
    Commands lines = {"ML\\N:1", "MLN-1:L", "MN\\N-1:2"};
    for (int m = 1; m <= 2; ++m) {
        lines.push_back("MN-1-" + std::to_string(m) + ":M" + std::to_string(m));
        lines.push_back("LT-1-" + std::to_string(m) + ":MF");
        lines.push_back("MF-1-" + std::to_string(m) + ":3");
    }
    f.writeGroup('D', lines);
    for (int poll = 1; poll < 60; ++poll) {
        f.ui.polls = 0;
        f.ui.cancelAtPoll = poll;
        if (f.reload()) {
            EXPECT_GT(poll, 4);
            return;
        }
        EXPECT_FALSE(f.format.loaded());
        EXPECT_FALSE(f.has("[kavu]D00000000.D01")) << poll;
    }
    FAIL() << "the load was cancelled each time";
}

TEST(MeasurementReader, TheCommentIsKeptInAWorkingFileWithoutLineEnd) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1), listOf({}) + Commands{"COM:some text"}));
    EXPECT_EQ(f.read("[kavu]TmpPCMMEASCOM"), "some text");
    f.format.closeFormat();
    EXPECT_FALSE(f.has("[kavu]TmpPCMMEASCOM"));
}

TEST(MeasurementReader, ACommentThatCanNotBeKeptIsToldOf) {
    LoadFixture f;
    ASSERT_TRUE(makeFolder(f.store.pathOf("[kavu]TmpPCMMEASCOM")).ok());
    ASSERT_TRUE(f.load(plainFormat(8, 1), listOf({}) + Commands{"COM:some text"}));
    EXPECT_EQ(f.logged(), (Logged{{265, 75}}));
}

TEST(MeasurementReader, SmfCommandsGoToTheirFileFrom10609On) {
    for (const auto& [edition, expected] : {std::pair(2007, false), std::pair(2009, true)}) {
        LoadFixture f(edition);
        ASSERT_TRUE(f.load(plainFormat(8, 1),
                           listOf({}) + Commands{"SMF\\N:1", "SMF\\SMN-1:X", "SMF1-1:Y"}));
        EXPECT_EQ(f.has("[kavu]DSMF0000.D01"), expected);
        if (expected) {
            EXPECT_EQ(f.read("[kavu]DSMF0000.D01"), "D-1\\SMF\\N:1;\r\nD-1\\SMF\\SMN-1:X;\r\n");
        }
    }
}

TEST(MeasurementReader, ANameMissingIsToldOf) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1), listOf({{"LT@:MF", "MF@:3"}})));
    EXPECT_EQ(f.logged(), (Logged{{278, 89}}));
    EXPECT_EQ(f.logText(278),
              "Could not locate measurement name field (D-1\\MN-1-1) in TMATS "
              "file. This measurement definition will be ignored.");
}

TEST(MeasurementReader, TheSecondListThatNamesTheSameMeasurementIsToldForEach) {
    LoadFixture f;
    const std::vector<Commands> both = {{"MN@:A", "LT@:MF", "MF@:3"}, {"MN@:B", "LT@:MF", "MF@:4"}};
    auto lines = listOf(both) + listOf(both, 2);
    std::erase(lines, "ML\\N:1");
    lines.insert(lines.begin(), "ML\\N:2");
    ASSERT_TRUE(f.load(plainFormat(8, 1), lines));
    EXPECT_EQ(f.logged(), (Logged{{281, 89}, {281, 89}}));
    EXPECT_EQ(f.ui.logs[0].text,
              "Error reading TMATS command (D-1\\MN-2-1). Measurement 'A' is "
              "already defined. This second definition will be ignored.");
    EXPECT_EQ(f.format.measurementListCount, 2);
    EXPECT_EQ(f.places("A"), (Places{{3, 1}}));
    EXPECT_EQ(f.result(), 1);
}

TEST(MeasurementReader, ADuplicateIsFoundWhateverItsCase) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1),
                       listOf({{"MN@:Abc", "LT@:MF", "MF@:3"}, {"MN@:aBC", "LT@:MF", "MF@:4"}})));
    EXPECT_EQ(f.logged(), (Logged{{281, 89}}));
    EXPECT_EQ(f.places("abc"), (Places{{3, 1}}));
}

TEST(MeasurementReader, AMissingLocationTypeMayBecomeAMinorWord) {
    LoadFixture f;
    f.ui.byId[241] = Button::Yes;
    ASSERT_TRUE(f.load(plainFormat(8, 1), listOf({{"MN@:A", "MF@:3"}})));
    EXPECT_EQ(f.boxText(241),
              "Could not locate 'D-1\\LT-1-1' measurement location type definition for measurement "
              "'A'.\n\nSet this measurement's location type to Minor Word?");
    EXPECT_EQ(f.first("A").locationType, "MF");
    EXPECT_EQ(f.result(), 1);
    f.ui.byId[241] = Button::No;
    EXPECT_FALSE(f.reload());
    EXPECT_TRUE(f.ui.hasBox(266));
    EXPECT_EQ(f.result(), -1);
}

TEST(MeasurementReader, AMissingLocationTypeMayBecomeWordFrameFrom10611On) {
    LoadFixture f(2011);
    f.ui.byId[241] = Button::Yes;
    ASSERT_TRUE(f.load(plainFormat(8, 1) + counterAt(7, 1),
                       listOf({{"MN@:A", "MML\\N@:1", "WP@-1-1:3", "FP@-1-1:1", "FI@-1-1:1"}})));
    EXPECT_NE(f.boxText(241).find("location type to Word/Frame?"), std::string::npos);
    EXPECT_EQ(f.first("A").locationType, "WDFR");
}

TEST(MeasurementReader, In10611OlderLocationTypesAreNotUnderstood) {
    LoadFixture f(2011);
    ASSERT_TRUE(f.load(plainFormat(8, 1) + counterAt(7, 1),
                       listOf({{"MN@:A", "LT@:MF", "MF@:3"}, {"MN@:B", "LT@:mf", "MF@:4"}})));
    EXPECT_EQ(f.logged(), (Logged{{264, 89}, {264, 89}}));
    EXPECT_EQ(f.ui.logs[0].text,
              "Unable to determine measurement location type for measurement 'A'. This measurement "
              "will not be processed. Illegal TMATS string found: <D-1\\LT-1-1:MF;>");
    EXPECT_FALSE(f.format.hasAnyMeasurement());
    EXPECT_EQ(f.result(), 0);
}

TEST(MeasurementReader, TheLocationTypeIsUnderstoodWhateverItsCase) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1), listOf({{"MN@:A", "LT@:mf", "MF@:3"}})));
    EXPECT_EQ(f.places("A"), (Places{{3, 1}}));
    EXPECT_EQ(f.first("A").locationType, "MF") << "what writes it compares the spelling, too";
}

TEST(MeasurementReader, Before10604ThereIsNoWordFrameMethod) {
    LoadFixture f(2001);
    ASSERT_TRUE(f.load(plainFormat(8, 1), listOf({{"MN@:A", "LT@:WDFR", "MML\\N@:1"}})));
    EXPECT_EQ(f.logged(), (Logged{{283, 89}}));
    EXPECT_EQ(f.logText(283),
              "Error reading TMATS command (D-1\\LT-1-1:WDFR). Measurement 'A' can not be defined. "
              "The 'Word/Frame' Method of describing measurement locations is only available on "
              "TMATS files written to 106-04 and later specifications. This TMATS file is a 106-01 "
              "file.");
}

TEST(MeasurementReader, TaggedDataIsKnownFrom10611OnAndHasNoPlaceInTheFrame) {
    LoadFixture f(2009);
    const auto lines = listOf({{"MN@:T", "LT@:TD", "TD\\N@:1"}});
    ASSERT_TRUE(f.load(plainFormat(8, 1), lines));
    EXPECT_EQ(f.logged(), (Logged{{264, 89}}));
    LoadFixture g(2011);
    ASSERT_TRUE(
        g.load(plainFormat(8, 1) + counterAt(7, 1),
               listOf({{"MN@:W", "LT@:WDFR", "MML\\N@:1", "WP@-1-1:3", "FP@-1-1:1", "FI@-1-1:1"},
                       {"MN@:T", "MN1@:EV", "LT@:TD", "TD\\N@:2", "TD1@:x", "TD2@-1:a", "TD3@-1:b",
                        "TD4@-1:c", "TD5@-1:d", "TD2@-2:e"}})));
    EXPECT_EQ(g.read("[kavu]DTAG0000.D01"),
              "D-1\\MN-1-1:T;\r\nD-1\\MN1-1-1:EV;\r\nD-1\\MN2-1-1:D;\r\nD-1\\MN3-1-1:D;\r\n"
              "D-1\\LT-1-1:TD;\r\nD-1\\TD\\N-1-1:2;\r\nD-1\\TD1-1-1:x;\r\nD-1\\TD2-1-1-1:a;\r\n"
              "D-1\\TD3-1-1-1:b;\r\nD-1\\TD4-1-1-1:c;\r\nD-1\\TD5-1-1-1:d;\r\n"
              "D-1\\TD2-1-1-2:e;\r\n");
    EXPECT_FALSE(g.format.hasMeasurement("T"));
    EXPECT_TRUE(g.format.hasMeasurement("W"));
}

TEST(MeasurementReader, TwoListsShareOneTaggedDataFile) {
    LoadFixture f(2011);
    auto lines =
        listOf({{"MN@:T1", "LT@:TD", "TD\\N@:0"}}) + listOf({{"MN@:T2", "LT@:TD", "TD\\N@:0"}}, 2);
    std::erase(lines, "ML\\N:1");
    lines.insert(lines.begin(), "ML\\N:2");
    ASSERT_TRUE(f.load(plainFormat(8, 1) + counterAt(7, 1), lines));
    const auto text = f.read("[kavu]DTAG0000.D01");
    EXPECT_NE(text.find("D-1\\MN-1-1:T1;"), std::string::npos);
    EXPECT_NE(text.find("D-1\\MN-2-1:T2;"), std::string::npos);
    ASSERT_TRUE(f.reload());
    EXPECT_EQ(f.read("[kavu]DTAG0000.D01"), text) << "it is emptied at the next load";
}

TEST(MeasurementReader, ListsAreSortedByNameAfterALoad) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1), listOf({{"MN@:gamma", "LT@:MF", "MF@:3"},
                                                  {"MN@:Beta", "LT@:MF", "MF@:3"},
                                                  {"MN@:alpha", "LT@:MF", "MF@:3"}})));
    std::string names;
    for (int n = 1; n <= 3; ++n) {
        names += f.format.cells().measurement(f.format.measurementAt(3, 1, n, true)).name.str();
        names += " ";
    }
    EXPECT_EQ(names, "alpha Beta gamma ");
}

TEST(MeasurementReader, ImplicitSubframesFollowFromTheFile) {
    const Commands wordFrame = {"MN@:A",     "LT@:WDFR",  "MML\\N@:1",
                                "WP@-1-1:3", "FP@-1-1:1", "FI@-1-1:1"};
    const Commands older = {"MN@:B", "LT@:MF", "MF@:4"};
    const Commands subframes = {"SF\\N-1:1", "SF1-1-1:S", "SF2-1-1:NO", "SF4-1-1-1:6", "SF6-1-1:4"};
    struct Row {
        int edition;
        std::vector<Commands> measurements;
        Commands counters;
        bool implicit;
    };
    for (const auto& row :
         {Row{2007, {wordFrame}, {}, true}, Row{2007, {wordFrame, older}, {}, false},
          Row{2007, {older}, {}, false}, Row{2007, {wordFrame}, counterAt(7, 4, subframes), false},
          Row{2007, {wordFrame}, counterAt(7, 4), true}, Row{2001, {wordFrame}, {}, false},
          Row{2011, {wordFrame}, counterAt(7, 4), true}}) {
        LoadFixture f(row.edition);
        ASSERT_TRUE(f.load(plainFormat(8, 4) + row.counters, listOf(row.measurements)));
        EXPECT_EQ(f.format.implicitSubframes, row.implicit)
            << row.edition << " " << row.measurements.size() << " " << row.counters.size();
    }
}

// --- counts and indices that no file should have --------------------------------------------

TEST(MeasurementReader, CountsWithoutMeasureEndWithWhatTheFileHolds) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(16, 4),
                       Commands{"ML\\N:1000000000", "MLN-1:L", "MN\\N-1:1000000000", "MN-1-1:A",
                                "MN\\N-999999999:1", "LT-1-1:MF", "MF-1-1:3", "MN-1-4000000000:B",
                                "MN-1-999950:C", "LT-1-999950:MF", "MF-1-999950:4"}));
    EXPECT_EQ(f.format.measurementListCount, 99);
    EXPECT_TRUE(f.format.hasMeasurement("A"));
    EXPECT_TRUE(f.format.hasMeasurement("C"));
    EXPECT_FALSE(f.format.hasMeasurement("B"));
    EXPECT_EQ(f.result(), 1);
}

TEST(MeasurementReader, ListsBeyond99AreReadButKeepNoName) {
    LoadFixture f;
    Commands lines = {"ML\\N:120"};
    for (int l = 1; l <= 120; ++l) {
        const auto n = std::to_string(l);
        lines = lines + Commands{"MLN-" + n + ":L" + n, "MN\\N-" + n + ":1", "MN-" + n + "-1:M" + n,
                                 "LT-" + n + "-1:MF", "MF-" + n + "-1:3"};
    }
    ASSERT_TRUE(f.load(plainFormat(8, 1), lines));
    EXPECT_EQ(f.format.measurementListCount, 99);
    EXPECT_TRUE(f.format.hasMeasurement("M120"));
    EXPECT_EQ(f.format.measurementListNames[98], "L99");
}

}  // namespace
}  // namespace kavu
