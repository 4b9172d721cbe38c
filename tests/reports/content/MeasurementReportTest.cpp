#include "bus/BusStage.h"
#include "reports/ReportStage.h"
#include "reports/content/MeasurementReport.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::inEveryFrame;
using test::listOf;
using test::plainFormat;
using test::ReportStage;
using test::wordFrame;
using test::operator+;

constexpr auto kList = ReportKind::Measurements;

TEST(MeasurementReport, WithNoColumnsSelectedHoldsTheNameOnly) {
    ReportStage t;
    ASSERT_TRUE(
        t.load(plainFormat(4, 1), listOf({inEveryFrame("LONGER", 2, 1), inEveryFrame("A", 1, 1)})));
    EXPECT_EQ(t.body(kList), "Name  \n      \n------\nA     \nLONGER\n");
    EXPECT_EQ(t.delimited(kList), "Name\nA\nLONGER\n");
}

TEST(MeasurementReport, ColumnsAreDividedByOneBlankAndAllArePadded) {
    ReportStage t;
    ASSERT_TRUE(t.load(plainFormat(4, 1), listOf({inEveryFrame("A", 1, 1)})));
    t.choose({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    EXPECT_EQ(
        t.body(kList),
        "Name Loc  Frag   Meas Bitmask Parity Parity Meas Start Start End  End   Description\n"
        "     Type Number Len                 Xfer   Xfer Word  Frame Word Frame            \n"
        "---- ---- ------ ---- ------- ------ ------ ---- ----- ----- ---- ----- -----------\n"
        "A    WDFR 0      16   FW      DE     D      D    1     1     1    1                \n");
}

TEST(MeasurementReport, TwoMeasurementsOfOneNameAreSortedByWord) {
    ReportStage t(2009);
    ASSERT_TRUE(
        t.load(plainFormat(6, 1), listOf({{"MN@:B", "LT@:MFSC", "MFS1@:E", "MFS\\N@:2", "MFSW@-1:4",
                                           "MFSM@-1:FW", "MFSW@-2:2", "MFSM@-2:FW"}})));
    t.set("MesRptSort", "1");
    t.choose({8});
    EXPECT_EQ(t.delimited(kList), "Name;Start Word\nB;2\nB;4\n");
}

TEST(MeasurementReport, ASupercommutatedMeasurementHasOneRowPerLocation) {
    ReportStage t(2009);
    ASSERT_TRUE(
        t.load(plainFormat(6, 1), listOf({{"MN@:S", "LT@:MFSC", "MFS1@:E", "MFS\\N@:2", "MFSW@-1:2",
                                           "MFSM@-1:FW", "MFSW@-2:4", "MFSM@-2:FW"}})));
    t.choose({1, 8});
    EXPECT_EQ(t.delimited(kList),
              "Name;Measurement Location Type;Start Word\n"
              "S;MFSC;2\nS;MFSC;4\n");
    t.set("MFReptSC", "1");
    EXPECT_EQ(t.delimited(kList), "Name;Measurement Location Type;Start Word\nS;MFSC;2\n");
}

TEST(MeasurementReport, FirstLocationOnlyLeavesOutOtherWordsOfAWordFrameMeasurement) {
    ReportStage t;
    auto measurement = wordFrame("A", 1, 1, 0, 1);
    measurement[5] = "WI@-1-1:2";
    measurement[6] = "EWP@-1-1:3";
    ASSERT_TRUE(t.load(plainFormat(5, 1), listOf({measurement})));
    t.choose({8});
    EXPECT_EQ(t.delimited(kList), "Name;Start Word\nA;1\nA;3\n");
    t.set("MFReptSC", "1");
    EXPECT_EQ(t.delimited(kList), "Name;Start Word\nA;1\n");
}

TEST(MeasurementReport, NeighboursOfTheNextFrameAreOneRow) {
    ReportStage t;
    ASSERT_TRUE(t.load(plainFormat(4, 4) + counterAt(1, 4),
                       listOf({wordFrame("A", 2, 1, 1, 3), wordFrame("B", 3, 1, 2, 3)})));
    t.choose({1, 8, 9, 10, 11});
    EXPECT_EQ(t.delimited(kList),
              "Name;Measurement Location Type;Start Word;Start Frame;End Word;End Frame\n"
              "SFID;SFID;1;1;1;1\nA;WDFR;2;1;2;3\nB;WDFR;3;1;3;1\nB;WDFR;3;3;3;3\n");
}

TEST(MeasurementReport, MaskAndNumberOfAFragmentAreThoseOfTheDefinition) {
    ReportStage t;
    const Commands fragments = {"MN@:A",      "LT@:WDFR",    "MML\\N@:1",
                                "MWL@-1:16",  "MNF\\N@-1:2", "WP@-1-1:1",
                                "WI@-1-1:0",  "EWP@-1-1:1",  "FP@-1-1:1",
                                "FI@-1-1:0",  "EFP@-1-1:1",  "WFM@-1-1:1111111100000000",
                                "WFT@-1-1:D", "WFP@-1-1:1",  "WP@-1-2:1",
                                "WI@-1-2:0",  "EWP@-1-2:1",  "FP@-1-2:1",
                                "FI@-1-2:0",  "EFP@-1-2:1",  "WFM@-1-2:11111111",
                                "WFT@-1-2:D", "WFP@-1-2:2"};
    ASSERT_TRUE(t.load(plainFormat(3, 1), listOf({fragments})));
    t.choose({2, 3, 4});
    const auto text = t.delimited(kList);
    EXPECT_TRUE(
        text.starts_with("Name;Fragment Number;Word Length;Bit Mask\n"
                         "A;1;8;1111111100000000\nA;2;8;"))
        << text;
}

TEST(MeasurementReport, ASubframeWhoseFrameOneIsEmptyHasNoType) {
    ReportStage t(2009);
    ASSERT_TRUE(t.load(plainFormat(4, 4) +
                       counterAt(1, 4, Commands{"SF\\N-1:1"} + test::subframeAt(1, "Sub", 2, 2))));
    t.choose({1, 3});
    EXPECT_EQ(t.delimited(kList),
              "Name;Measurement Location Type;Word Length\nSFID;SFID;16\nSub;;16\n");
}

TEST(MeasurementReport, SortsByBytesAndByNameOnRequest) {
    ReportStage t;
    ASSERT_TRUE(
        t.load(plainFormat(5, 1), listOf({inEveryFrame("b", 1, 1), inEveryFrame("C", 2, 1),
                                          inEveryFrame("A10", 3, 1), inEveryFrame("A9", 4, 1)})));
    t.set("MesRptSort", "1");
    EXPECT_EQ(t.delimited(kList), "Name\nA10\nA9\nC\nb\n");
}

TEST(MeasurementReport, TakesTheValuesOfConversionRecords) {
    ReportStage t;
    t.settings.writeProfile("EUComment", "C", "1");
    t.settings.writeProfile("EUComment", "E1", "1");
    t.settings.writeProfile("EUComment", "S1", "Owner:");
    t.settings.write("FloatPrecision", "2");
    ASSERT_TRUE(
        t.load(plainFormat(6, 1), listOf({inEveryFrame("A", 1, 1), inEveryFrame("B", 2, 1),
                                          inEveryFrame("C", 3, 1), inEveryFrame("D", 4, 1)})));
    t.records(
        "[a]\r\nMN1=First\x14\x15Second\r\nDCT=COE\r\nCO=1.0\r\nCO\\N=1\r\nCO-1=2.50\r\n"
        "COM=Owner: me \x14\x15Owner: you\r\n"
        "[B]\r\nDCT=PRS\r\nPS1=Y\r\nPS2=2\r\nPS\\N=2\r\nPS3-1=0\r\nPS4-1=1\r\nPS3-2=5\r\n"
        "PS4-2=12.5\r\n"
        "[C]\r\nDCT=DIS\r\nDIC\\N=2\r\nDICC-1=0\r\nDICP-1=OFF\r\nDICC-2=1\r\nDICP-2=ON\r\n");
    t.choose({12, 21, 22, 23});
    EXPECT_EQ(t.delimited(kList),
              "Name;Description;Owner:;EU Conversion Type;EU Conversion Arguments\n"
              "A;First Second;me;COE;1.0, 2.50\n"
              "B;;;PRS;Y, 2, 0.00E+00=1.00E+00, 5.00E+00=1.25E+01\n"
              "C;;;DIS;0=OFF, 1=ON\n"
              "D;;;;\n");
}

TEST(MeasurementReport, ACancelLeavesNothing) {
    ReportStage t;
    ASSERT_TRUE(t.load(plainFormat(3, 1), listOf({inEveryFrame("A", 1, 1)})));
    t.ui.cancelAtPoll = t.ui.polls + 1;
    EXPECT_EQ(t.text(kList), "(none)");
    EXPECT_FALSE(t.has("KAVU9TMP.TMP"));
}

struct BusReportStage : ReportStage {
    std::string csv(const Commands& commands) {
        write(kBusGroupFile, test::busCommands(commands));
        BusDefinition definition{.link = "Bus 1", .index = 1};
        EXPECT_TRUE(unpackBusGroup(context, &ui, definition));
        auto made = source();
        made.format = nullptr;
        made.bus = &definition;
        return makeDelimitedReport(made, kList).value_or("(none)");
    }
};
const Commands kBusCommands = {
    "NBS\\N:1",      "BID-1:000",     "BNA-1:Left",        "UMN1-1:USER",    "NMS\\N-1:2",
    "MID-1-1:10",    "TRA-1-1:00101", "MN\\N-1-1:2",       "MN-1-1-1:Z",     "NML\\N-1-1-1:2",
    "MWN-1-1-1-1:2", "MFP-1-1-1-1:1", "MWN-1-1-1-2:00000", "MFP-1-1-1-2:2",  "MN-1-1-2:Y",
    "MID-1-2:A1",    "MN\\N-1-2:1",   "MN-1-2-1:A",        "NML\\N-1-2-1:1", "MWN-1-2-1-1:7"};

TEST(BusReport, HasARowForEachLocationAndOneForAMeasurementWithout) {
    BusReportStage t;
    t.choose({1, 2, 3, 4, 8, 9}, "M1553");
    EXPECT_EQ(t.csv(kBusCommands),
              "Name;Bus Address;Bus Name;Message Number;Remote Terminal Address;Word Number;"
              "Fragment Number\n"
              "Z;000;Left;10;00101;2;1\nZ;000;Left;10;00101;0;2\nY;000;Left;10;00101;;\n"
              "A;000;Left;A1;;7;\n");
}

TEST(BusReport, SortsByMessageAndByName) {
    BusReportStage t;
    t.set("MesRptSort", "1");
    t.choose({8}, "M1553");
    EXPECT_EQ(t.csv(kBusCommands), "Name;Word Number\nY;\nZ;0\nZ;2\nA;7\n");
    t.set("MesRptSort", "2");
    EXPECT_EQ(t.csv(kBusCommands), "Name;Word Number\nA;7\nY;\nZ;2\nZ;0\n");
}

TEST(BusReport, HasNoOtherReports) {
    BusReportStage t;
    t.set("Fmt", "1");
    t.set("FrameRpt", "1");
    EXPECT_TRUE(checkedReports(t.layout, false, true).empty());
    EXPECT_EQ(checkedReports(t.layout, false, false).size(), 2U);
}

}  // namespace
}  // namespace kavu
