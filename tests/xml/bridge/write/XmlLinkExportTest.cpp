// The groups of data links in the classic dialect.

#include "xml/bridge/write/ExportStage.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ExportStage;
using test::holds;

constexpr std::string_view kHeadOfLinks =
    "G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:OTH;M-1\\ID:S;M-1\\BB\\DLN:L;";

std::string convert(ExportStage& stage, std::string_view commands) {
    return stage.convert(std::string(kHeadOfLinks) + std::string(commands));
}

TEST(XmlLinkExport, TakesTheLengthOfTheSyncPatternFromThePattern) {
    ExportStage stage;
    EXPECT_TRUE(holds(convert(stage, "P-1\\DLN:L;P-1\\MF4:3;P-1\\MF5:101;"),
                      "<Format>\n<MinorFrame>\n<SyncPattern>101</SyncPattern>\n"));
    EXPECT_EQ(stage.report.losses.total(), 0U);
    convert(stage, "P-1\\DLN:L;P-1\\MF4:4;P-1\\MF5:101;");
    EXPECT_EQ(stage.report.losses.total(), 1U);
}

TEST(XmlLinkExport, WritesACriterionOfDigitsAsItIs) {
    ExportStage stage;
    const auto xml = convert(stage, "P-1\\DLN:L;P-1\\SYNC1:2;P-1\\SYNC3:ns;P-1\\D1:RNRZ-L;");
    EXPECT_TRUE(holds(xml, "<Criteria>2</Criteria>"));
    EXPECT_TRUE(holds(xml, "<NumberOfDisagrees>Not Specified</NumberOfDisagrees>"));
    EXPECT_TRUE(holds(xml, "<PCMCode>RNRZ-L</PCMCode>"));
    EXPECT_TRUE(stage.report.badValues.empty());
}

TEST(XmlLinkExport, WritesRowsThatHaveNoCount) {
    ExportStage stage;
    EXPECT_TRUE(holds(convert(stage, "P-1\\DLN:L;P-1\\MFW1-1:3;P-1\\MFW2-1:8;P-1\\MFW1-2:4;"),
                      "<VariableWordLength>\n<Word>3</Word>\n<Length>8</Length>\n"
                      "</VariableWordLength>\n<VariableWordLength>\n<Word>4</Word>\n"));
}

TEST(XmlLinkExport, WritesTheLocationsOfAnEmbeddedFormat) {
    ExportStage stage;
    EXPECT_TRUE(
        holds(convert(stage,
                      "P-1\\DLN:L;P-1\\AEF\\N:1;P-1\\AEF\\DLN-1:E;P-1\\AEF1-1:2;P-1\\AEF2-1:EL;"
                      "P-1\\AEF3-1-1:5;P-1\\AEF5-1-1:8;P-1\\AEF6-1-1:1111;P-1\\AEF7-1-1:1;"
                      "P-1\\AEF8-1-1-1:1;P-1\\AEF9-1-1-1:2;P-1\\AEF3-1-2:9;P-1\\AEF7-1-2:1;"
                      "P-1\\AEF8-1-2-1:1;P-1\\AEF9-1-2-1:2;"),
              "<AsyncEmbeddedFormat>\n<DataLinkName>E</DataLinkName>\n<Supercom>2</Supercom>\n"
              "<LocationDefinition>Every Location</LocationDefinition>\n<Location>5</Location>\n"
              "<Location>9</Location>\n<WordLength>8</WordLength>\n<Mask>1111</Mask>\n"
              "<Subcommutation>\n<StartFrame>1</StartFrame>\n<FrameInterval>2</FrameInterval>\n"
              "</Subcommutation>\n</AsyncEmbeddedFormat>\n"));
    EXPECT_EQ(stage.report.losses.total(), 0U);
}

TEST(XmlLinkExport, EndsAnEmbeddedFormatAtAMissingLocation) {
    ExportStage stage;
    const auto xml = convert(stage,
                             "P-1\\DLN:L;P-1\\AEF\\N:1;P-1\\AEF\\DLN-1:E;P-1\\AEF4-1:3;"
                             "P-1\\FFI1:7;");
    EXPECT_EQ(stage.report.errors,
              (std::vector<std::string>{
                  "ERROR: Unable to determine location for Async Embedded definition in PCM stream "
                  "#1. \"P-1\\AEF3-1-1\" command not found."}));
    EXPECT_EQ(xml.find("<Interval>"), std::string::npos);
    EXPECT_TRUE(holds(xml, "<FrameFormatIdentifier>\n<Location>7</Location>\n"));
}

TEST(XmlLinkExport, EndsADataMergeAtAMissingLocation) {
    ExportStage stage;
    const auto xml = convert(stage,
                             "P-1\\DLN:L;P-1\\ADM\\N:1;P-1\\ADM\\DMN-1:E;P-1\\ADM\\MP-1:Y;"
                             "P-1\\ADM\\OHM-1:11;P-1\\ADM5-1:3;");
    EXPECT_EQ(stage.report.errors,
              (std::vector<std::string>{
                  "ERROR: Unable to determine location for Data Merge definition in PCM stream #1. "
                  "\"P-1\\ADM3-1-1\" command not found."}));
    EXPECT_TRUE(holds(xml,
                      "<Name>E</Name>\n<MaskAndPattern>\n<OverheadMask>11</OverheadMask>\n"
                      "</MaskAndPattern>\n</AsynchronousDataMergeFormat>\n"));
}

TEST(XmlLinkExport, SortsTheFragmentsOfALocationByTheirPosition) {
    ExportStage stage;
    EXPECT_TRUE(
        holds(convert(stage,
                      "P-1\\DLN:L;P-1\\MF1:9;P-1\\MF\\N:1;D-1\\DLN:L;D-1\\ML\\N:1;D-1\\MN\\N-1:1;"
                      "D-1\\MN-1-1:A;D-1\\LT-1-1:WDFR;D-1\\MML\\N-1-1:1;D-1\\MNF\\N-1-1-1:2;"
                      "D-1\\MWL-1-1-1:16;D-1\\WP-1-1-1-1:3;D-1\\WFP-1-1-1-1:2;D-1\\WP-1-1-1-2:4;"
                      "D-1\\WFP-1-1-1-2:1;D-1\\WFM-1-1-1-2:fw;"),
              "<Measurement Name=\"A\">\n<Length>16</Length>\n"
              "<LocationType>Word and Frame</LocationType>\n<WordAndFrame>\n<MeasurementLocation>\n"
              "<MeasurementFragments>\n<StartWord>4</StartWord>\n<BitMask>Full Word</BitMask>\n"
              "</MeasurementFragments>\n<MeasurementFragments>\n<StartWord>3</StartWord>\n"));
}

TEST(XmlLinkExport, WritesTaggedData) {
    ExportStage stage;
    EXPECT_TRUE(
        holds(convert(stage,
                      "D-1\\DLN:L;D-1\\MN\\N-1:1;D-1\\MN-1-1:A;D-1\\LT-1-1:TD;D-1\\TD\\N-1-1:1;"
                      "D-1\\TD1-1-1:8;D-1\\TD2-1-1-1:7;D-1\\TD4-1-1-1:M;"),
              "<LocationType>Tagged Data</LocationType>\n<TaggedData>\n<WordLength>8</WordLength>\n"
              "<Fragment>\n<TagNumber>7</TagNumber>\n"
              "<FragmentTransferOrder>MSB First</FragmentTransferOrder>\n"));
}

TEST(XmlLinkExport, WritesAnOlderLocationTypeAsRangesAlsoWithoutAnEdition) {
    for (const auto* const edition : {"G\\106:07;", ""}) {
        ExportStage stage;
        EXPECT_TRUE(holds(
            convert(stage,
                    std::string(edition) +
                        "P-1\\DLN:L;P-1\\D2:5;P-1\\F1:16;P-1\\MF\\N:1;P-1\\MF1:9;P-1\\MF2:144;"
                        "D-1\\DLN:L;D-1\\ML\\N:1;D-1\\MLN-1:l;D-1\\MN\\N-1:1;D-1\\MN-1-1:A;"
                        "D-1\\LT-1-1:MF;D-1\\MF-1-1:3;D-1\\MFM-1-1:FW;"),
            "<LocationType>Word and Frame</LocationType>\n<WordAndFrame>\n<MeasurementLocation>\n"
            "<MeasurementFragments>\n<StartWord>3</StartWord>\n<WordInterval>0</WordInterval>\n"
            "<EndWord>3</EndWord>\n<StartFrame>1</StartFrame>\n"))
            << edition;
        EXPECT_EQ(stage.report.losses.total(), 0U) << edition;
    }
}

TEST(XmlLinkExport, WritesALocationTypeThatCannotBeConvertedAsItIs) {
    ExportStage stage;
    EXPECT_TRUE(holds(convert(stage, "D-1\\DLN:L;D-1\\MN\\N-1:1;D-1\\MN-1-1:A;D-1\\LT-1-1:XX;"),
                      "<LocationType>XX</LocationType>\n"));
    ASSERT_EQ(stage.report.badValues.size(), 1U);
    EXPECT_EQ(stage.report.badValues[0].description, "TMATS command 'D-1\\LT-1-1'");
}

TEST(XmlLinkExport, WritesAReceiveCommandWithOrWithoutItsNumber) {
    ExportStage stage;
    const std::string bus =
        "B-1\\DLN:L;B-1\\NBS\\N:1;B-1\\BID-1:000;B-1\\NMS\\N-1:1;B-1\\MID-1-1:1;";
    constexpr std::string_view kWritten =
        "<RTRTReceiveCommandList>\n<RemoteTerminal>\n<Address>00111</Address>\n";
    EXPECT_TRUE(holds(convert(stage, bus + "B-1\\RTRA-1-1:00111;"), kWritten));
    EXPECT_TRUE(holds(convert(stage, bus + "B-1\\RTRA-1-1-1:00111;"), kWritten));
}

TEST(XmlLinkExport, WritesMessagesAndUserWordsOfABusTogether) {
    ExportStage stage;
    const auto xml = convert(stage,
                             "B-1\\DLN:L;B-1\\BP:OD;B-1\\NBS\\N:1;B-1\\BID-1:000;B-1\\UMN2-1:U;"
                             "B-1\\TK\\N-1:2;B-1\\TS-1-1:7;B-1\\TS-1-2:8;B-1\\NMS\\N-1:1;"
                             "B-1\\MID-1-1:1;");
    EXPECT_TRUE(holds(xml,
                      "<BusParity>Odd</BusParity>\n<Bus>\n<Number>000</Number>\n<UserDefined>\n"
                      "<Word2>\n<MeasurementName>U</MeasurementName>\n"));
    EXPECT_TRUE(holds(xml,
                      "<RecordingDescription>\n<TrackSequence>7</TrackSequence>\n"
                      "<TrackSequence>8</TrackSequence>\n</RecordingDescription>\n<Message>\n"));
}

TEST(XmlLinkExport, WritesAConversionWithoutContentsAsAnEmptyElement) {
    ExportStage stage;
    EXPECT_TRUE(
        holds(convert(stage, "C-1\\DCN:A;C-1\\DCT:NON;C-1\\CRT:01-02-2009-03-04-05;"),
              "<MultiplexModulationGroup>\n<BasebandSignal>\n<DataLinkName>L</DataLinkName>\n"
              "</BasebandSignal>\n\n<!-- C Group -->\n<DataConversionAttributes>\n"
              "<Measurement Name=\"A\">\n"
              "<DataConversion Type=\"None\" DateAndTimeReleased=\"2009-01-02T03:04:05\" />\n"));
}

TEST(XmlLinkExport, WritesTheTermsOfACurve) {
    ExportStage stage;
    EXPECT_TRUE(holds(
        convert(stage,
                "C-1\\DCN:A;C-1\\DCT:COE;C-1\\CO1:Y;C-1\\CO\\N:2;C-1\\CO:1;C-1\\CO-1:2;C-1\\CO-2:3;"
                "C-1\\CO-3:4;"),
        "<Coefficients>\n<DerivedFromPairSet>Yes</DerivedFromPairSet>\n"
        "<Coefficient N=\"0\">1</Coefficient>\n<Coefficient N=\"1\">2</Coefficient>\n"
        "<Coefficient N=\"2\">3</Coefficient>\n</Coefficients>\n"));
}

TEST(XmlLinkExport, WritesOneCalibrationForEachRowOrTheOneWithoutNumber) {
    ExportStage stage;
    EXPECT_TRUE(holds(
        convert(stage, "C-1\\DCN:A;C-1\\MC\\N:2;C-1\\MC1-1:1;C-1\\MC1-2:2;C-1\\MA1:3;C-1\\MA3:4;"),
        "<InflightCalibration>\n<Stimulus>1</Stimulus>\n</InflightCalibration>\n"
        "<InflightCalibration>\n<Stimulus>2</Stimulus>\n</InflightCalibration>\n"
        "<AmbientValue>\n<Stimulus>3</Stimulus>\n<DataValue>4</DataValue>\n</AmbientValue>\n"));
}

TEST(XmlLinkExport, WritesTheFirstRecordOfANameOnceInItsLink) {
    ExportStage stage;
    const auto xml =
        convert(stage,
                "D-1\\DLN:L;D-1\\MN\\N-1:1;D-1\\MN-1-1:A;D-1\\MN1-1-1:NO;C-1\\MN1:first;C-1\\DCN:A;"
                "C-2\\DCN:A;C-2\\MN1:second;");
    EXPECT_TRUE(holds(xml, "<Description>first</Description>"));
    EXPECT_EQ(xml.find("second"), std::string::npos);
    ASSERT_EQ(stage.report.losses.list().size(), 1U);
    EXPECT_EQ(stage.report.losses.list()[0].code, "C-2\\DCN");
}

}  // namespace
}  // namespace kavu
