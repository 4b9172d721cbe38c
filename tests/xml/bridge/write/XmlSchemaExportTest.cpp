#include "xml/bridge/write/ExportStage.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ExportStage;
using test::holds;

std::string schema(ExportStage& stage, std::string_view text) {
    return stage.convert(text, XmlDialect::Schema);
}

constexpr std::string_view kSource = "G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:RF;M-1\\ID:S;M-1\\BB\\DLN:L;";

TEST(XmlSchemaExport, NamesTheNamespaceOfTheSchema) {
    ExportStage stage;
    schema(stage, "G\\PN:P;");
    EXPECT_NE(stage.whole.find(" xmlns=\"https://wsmrc2vger.wsmr.army.mil/rcc/manuals/106-11\""),
              std::string::npos);
}

TEST(XmlSchemaExport, EscapesOnceAndKeepsUmlauts) {
    ExportStage stage;
    EXPECT_TRUE(
        holds(schema(stage, "G\\PN:a&b<\xC3\xB6;"), "<ProgramName>a&amp;b&lt;ö</ProgramName>\n"));
}

TEST(XmlSchemaExport, UsesTheNamesAndTextsOfTheSchema) {
    ExportStage stage;
    const auto xml = schema(
        stage,
        "G\\FN:f.tma;G\\SC:C;G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:DRS;R-1\\ID:S;R-1\\RI3:Y;R-1\\N:1;"
        "R-1\\TK1-1:1;R-1\\PDTF-1:1;R-1\\RMM\\N:1;R-1\\RMMID-1:7;R-1\\TC5:15.0;");
    EXPECT_TRUE(holds(xml, "<TmatsFileName>f.tma</TmatsFileName>\n"));
    EXPECT_TRUE(holds(xml, "<SecurityClassification>Confidential</SecurityClassification>\n"));
    EXPECT_TRUE(holds(xml, "<DataSource Name=\"S\" Type=\"Direct Source\">\n"));
    EXPECT_TRUE(holds(xml, "<OriginalRecording>Yes</OriginalRecording>\n"));
    EXPECT_TRUE(holds(xml, "<Identifier>7</Identifier>\n"));
    EXPECT_TRUE(holds(xml, "<Housing>15.0</Housing>\n"));
    EXPECT_TRUE(holds(xml, "<PCMDataTypeAttributes>\n"));
    EXPECT_EQ(stage.report.losses.total(), 0U);
}

TEST(XmlSchemaExport, WritesTheRecordOfAMeasurementThatAMultiplexNames) {
    ExportStage stage;
    const auto xml =
        schema(stage,
               "G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:RF;M-1\\ID:S;M-1\\SI\\N:1;M-1\\SI1-1:3;"
               "M-1\\SI\\MN-1:Mic;C-1\\DCN:Mic;C-1\\MN1:M-200;"
               "C-2\\DCN:nobody;");
    EXPECT_TRUE(holds(xml, "<Measurement Name=\"Mic\">\n"));
    EXPECT_TRUE(holds(xml, "<Measurement Name=\"nobody\" />\n"));
    EXPECT_EQ(stage.report.losses.total(), 0U);
}

TEST(XmlSchemaExport, WritesTheFieldsOfAMessageByEitherSpellingOfTheirCount) {
    for (const auto* const count : {"FLDS", "NFLDS"}) {
        ExportStage stage;
        const auto xml = schema(
            stage,
            std::string(kSource) +
                "S-1\\DLN:L;S-1\\NS\\N:1;S-1\\SNA-1:St;S-1\\NMS\\N-1:1;S-1\\MID-1-1:m;S-1\\" +
                count + "\\N-1-1:1;S-1\\FNUM-1-1-1:1;S-1\\FPOS-1-1-1:2;S-1\\FLEN-1-1-1:3;");
        EXPECT_TRUE(
            holds(xml, "<Field>\n<Number>1</Number>\n<Start>2</Start>\n<Length>3</Length>\n"))
            << count;
        EXPECT_EQ(stage.report.losses.total(), 0U) << count;
    }
}

TEST(XmlSchemaExport, LeavesOutAValueThatTheSchemaDoesNotAllowAndSaysSo) {
    ExportStage stage;
    const auto xml = schema(stage, "G\\SC:Q;G\\106:x;G\\OD:12-31-99;G\\TA:t;");
    EXPECT_EQ(xml.find("SecurityClassification"), std::string::npos);
    EXPECT_EQ(xml.find("RevisionLevel"), std::string::npos);
    EXPECT_TRUE(holds(xml, "<TestItem>t</TestItem>\n"));
    EXPECT_TRUE(stage.report.badValues.empty());
    EXPECT_EQ(stage.report.warnings,
              (std::vector<std::string>{
                  "Warning. No data sources were defined in this file.",
                  "Warning: The schema has no place for the TMATS command 'G\\106'.",
                  "Warning: The schema has no place for the TMATS command 'G\\SC'.",
                  "Warning: The schema has no place for the TMATS command 'G\\OD'."}));
}

TEST(XmlSchemaExport, WritesAnEmptyElementWhereTheSchemaWantsOne) {
    ExportStage stage;
    EXPECT_TRUE(
        holds(schema(stage, std::string(kSource) + "B-1\\DLN:L;B-1\\NBS\\N:1;B-1\\BID-1:000;"),
              "<Bus>\n<Number>000</Number>\n<Name />\n<Type>1553</Type>\n</Bus>\n"));
}

TEST(XmlSchemaExport, LeavesOutAnElementThatLacksWhatCannotBeEmpty) {
    ExportStage stage;
    const auto xml = schema(stage, std::string(kSource) + "P-1\\DLN:L;P-1\\D2:50;P-1\\MF2:8;");
    EXPECT_TRUE(holds(xml, "<BitRate>50</BitRate>\n"));
    EXPECT_EQ(xml.find("MinorFrame"), std::string::npos);
    ASSERT_EQ(stage.report.losses.list().size(), 1U);
    EXPECT_EQ(stage.report.losses.list()[0].code, "P-1\\MF2");
}

TEST(XmlSchemaExport, WritesTheAlternativeThatTheSelectorMeans) {
    ExportStage stage;
    const auto xml = schema(stage,
                            "G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:TAP;R-1\\ID:S;R-1\\N:1;R-1\\TK1-1:1;"
                            "R-1\\CDT-1:TIMEIN;R-1\\PDTF-1:1;R-1\\TTF-1:1;");
    EXPECT_TRUE(holds(xml, "<TimeDataTypeAttributes>\n"));
    EXPECT_EQ(xml.find("PCMDataTypeAttributes"), std::string::npos);
    EXPECT_EQ(stage.report.losses.total(), 1U);
}

TEST(XmlSchemaExport, MentionsALinkThatASourceNamesButHasNoGroup) {
    ExportStage stage;
    const auto xml = schema(stage,
                            "G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:TAP;R-1\\ID:S;R-1\\N:1;"
                            "R-1\\TK1-1:1;R-1\\CDLN-1:elsewhere;");
    EXPECT_TRUE(holds(xml, "<DataLink Name=\"elsewhere\" />\n"));
}

TEST(XmlSchemaExport, KeepsASourceThatHasNothingButItsName) {
    ExportStage stage;
    EXPECT_TRUE(holds(schema(stage, "G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:REP;"),
                      "<DataSource Name=\"S\" Type=\"Reproducer\" />\n"));
}

TEST(XmlSchemaExport, WritesTheMeasurementsOfAStream) {
    ExportStage stage;
    const auto xml = schema(
        stage, std::string(kSource) +
                   "P-1\\DLN:L;P-1\\MF\\N:1;P-1\\MF1:8;D-1\\DLN:L;D-1\\ML\\N:1;D-1\\MN\\N-1:1;"
                   "D-1\\MN-1-1:A;D-1\\LT-1-1:WDFR;D-1\\MML\\N-1-1:1;D-1\\MNF\\N-1-1-1:1;"
                   "D-1\\WP-1-1-1-1:3;D-1\\FP-1-1-1-1:1;D-1\\WFM-1-1-1-1:FW;"
                   "D-1\\WFT-1-1-1-1:M;");
    EXPECT_TRUE(holds(
        xml,
        "<MeasurementList Name=\"Measurement List #1\">\n<Measurement Name=\"A\">\n"
        "<LocationType>Word and Frame</LocationType>\n<WordAndFrame>\n<MeasurementLocation>\n"
        "<MeasurementFragments FragmentTransferOrder=\"MSB First\">\n<StartWord>3</StartWord>\n"
        "<StartFrame>1</StartFrame>\n<BitMask>Full Word</BitMask>\n</MeasurementFragments>\n"
        "</MeasurementLocation>\n</WordAndFrame>\n</Measurement>\n</MeasurementList>\n"));
    EXPECT_EQ(stage.report.losses.total(), 0U);
}

TEST(XmlSchemaExport, WritesTheChannelAssignmentOfPamOnce) {
    ExportStage stage;
    const auto xml =
        schema(stage, std::string(kSource) +
                          "A-1\\DLN:L;A-1\\MN1-1:Mic;A-1\\MN2-1:Y;A-1\\MN3-1:NO;A-1\\LCW-1-1:4;"
                          "A-1\\LCW-1-2:5;A-1\\LCN-1-1-1:7;A-1\\LCN-1-1-2:8;A-1\\LCN-1-2-1:9;"
                          "A-1\\MN1-2:Cam;");
    EXPECT_TRUE(holds(xml,
                      "<ChannelAssignment>\n<Measurement>Mic</Measurement>\n<Subcom>Yes</Subcom>\n"
                      "<Supercom>No</Supercom>\n<ChannelNumber>4</ChannelNumber>\n"
                      "<ChannelNumber>5</ChannelNumber>\n"
                      "<SubframeChannelNumber>7</SubframeChannelNumber>\n"
                      "<SubframeChannelNumber>8</SubframeChannelNumber>\n</ChannelAssignment>\n"));
    EXPECT_EQ(xml.find("Cam"), std::string::npos);
    ASSERT_EQ(stage.report.losses.list().size(), 2U);
    EXPECT_EQ(stage.report.losses.list()[0].code, "A-1\\LCN-1-2-1");
    EXPECT_EQ(stage.report.losses.list()[1].code, "A-1\\MN1-2");
}

TEST(XmlSchemaExport, WritesCalibrationsSideBySide) {
    ExportStage stage;
    const auto xml =
        schema(stage, std::string(kSource) +
                          "C-1\\DCN:A;C-1\\MC\\N:2;C-1\\MC1-1:1;C-1\\MC2-1:2;C-1\\MC1-2:3;");
    EXPECT_TRUE(holds(xml,
                      "<InflightCalibration>\n<Stimulus>1</Stimulus>\n"
                      "<TelemetryValue>2</TelemetryValue>\n<Stimulus>3</Stimulus>\n"
                      "</InflightCalibration>\n"));
    EXPECT_EQ(stage.report.losses.total(), 0U);
}

TEST(XmlSchemaExport, HasAPlaceForFiveRowsOfACalibration) {
    ExportStage stage;
    std::string rows = std::string(kSource) + "C-1\\DCN:A;C-1\\MC\\N:6;";
    for (int row = 1; row <= 6; ++row) {
        rows += "C-1\\MC1-" + std::to_string(row) + ":" + std::to_string(row) + ";";
    }
    EXPECT_TRUE(holds(schema(stage, rows), "<Stimulus>5</Stimulus>\n</InflightCalibration>\n"));
    ASSERT_EQ(stage.report.losses.list().size(), 1U);
    EXPECT_EQ(stage.report.losses.list()[0].code, "C-1\\MC1-6");
}

TEST(XmlSchemaExport, KeepsAGroupThatHasNothingButItsName) {
    ExportStage stage;
    const auto xml = schema(stage,
                            "G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:RF;T-1\\ID:S;M-1\\ID:S;P-1\\DLN:L;"
                            "D-1\\DLN:L;A-1\\DLN:K;S-1\\DLN:J;");
    EXPECT_TRUE(holds(xml, "<TransmissionAttributes />\n"));
    EXPECT_TRUE(holds(xml, "<MultiplexModulationGroup />\n"));
    EXPECT_TRUE(holds(xml, "<PCMMeasurements />\n</PCMFormatAttributes>\n"));
    EXPECT_TRUE(holds(xml, "<PAMAttributes />\n"));
    EXPECT_TRUE(holds(xml, "<MessageDataAttributes />\n"));
    EXPECT_EQ(stage.report.losses.total(), 0U);
}

TEST(XmlSchemaExport, HasNoPlaceForAGroupOfBusesWithoutABus) {
    ExportStage stage;
    const auto xml = schema(stage, std::string(kSource) + "B-1\\DLN:L;B-1\\TA:x;");
    EXPECT_EQ(xml.find("BusAttributes"), std::string::npos);
    ASSERT_EQ(stage.report.losses.list().size(), 2U);
    EXPECT_EQ(stage.report.losses.list()[0].code, "B-1\\TA");
    EXPECT_EQ(stage.report.losses.list()[1].code, "B-1\\DLN");
}

TEST(XmlSchemaExport, WritesTwoListsOfOneName) {
    ExportStage stage;
    const auto xml =
        schema(stage, std::string(kSource) +
                          "D-1\\DLN:L;D-1\\ML\\N:2;D-1\\MLN-1:X;D-1\\MN\\N-1:1;D-1\\MN-1-1:A;"
                          "D-1\\MLN-2:X;D-1\\MN\\N-2:1;D-1\\MN-2-1:B;");
    EXPECT_TRUE(holds(xml,
                      "<MeasurementList Name=\"X\">\n<Measurement Name=\"A\" />\n"
                      "</MeasurementList>\n<MeasurementList Name=\"X\">\n"
                      "<Measurement Name=\"B\" />\n</MeasurementList>\n"));
    EXPECT_EQ(stage.report.losses.total(), 0U);
}

}  // namespace
}  // namespace kavu
