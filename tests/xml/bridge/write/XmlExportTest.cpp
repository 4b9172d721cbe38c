#include "core/files/FileIo.h"
#include "xml/XmlSyntax.h"
#include "xml/bridge/write/ExportStage.h"
#include "xml/bridge/write/XmlExport.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ExportStage;
using test::holds;
using Said = std::vector<std::string>;

constexpr std::string_view kRadio =
    "G\\PN:P;G\\106:09;G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:RF;T-1\\ID:S;T-1\\TID:x;M-1\\ID:S;"
    "M-1\\BSG1:PCM;M-1\\BB\\DLN:L;";

TEST(XmlExport, WritesTheHeadOfTheDocument) {
    ExportStage stage;
    stage.convert("G\\PN:P;G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:OTH;");
    EXPECT_EQ(
        stage.whole,
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
        "<Tmats xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
        "xsi:noNamespaceSchemaLocation=\"https://wsmrc2vger.wsmr.army.mil/rcc/manuals/106-11/"
        "Tmats_01-2011.xsd\">\n"
        "\n\t<!-- This XML file created on 01-02-2026 at 03:04:05 by the KAVU Bridge Software "
        "-->\n"
        "\t<!-- KAVU: an editor for TMATS files (IRIG 106 Chapter 9) -->\n"
        "\n\n\t<!-- G Group -->\n"
        "\t<ProgramName>P</ProgramName>\n"
        "</Tmats>\n");
}

TEST(XmlExport, WritesNoElementOfAnEmptyRevisionGroup) {
    ExportStage stage;
    EXPECT_EQ(stage.convert("G\\PN:P;G\\RN:;G\\RD:12-31-99;").find("Revision"), std::string::npos);
}

TEST(XmlExport, WritesAnUnknownClassificationAsItIsAndListsIt) {
    ExportStage stage;
    EXPECT_TRUE(
        holds(stage.convert("G\\SC:Q;"), "<SecurityClassification>Q</SecurityClassification>\n"));
    ASSERT_EQ(stage.report.badValues.size(), 1U);
    EXPECT_EQ(stage.report.badValues[0].description, "TMATS command 'G\\SC'");
    EXPECT_EQ(stage.report.badValues[0].value, "Q");
    EXPECT_EQ(stage.report.warnings,
              (Said{"Warning. No data sources were defined in this file.",
                    "Warning: The following errors were encountered. These errors are TMATS values "
                    "found, that did not match",
                    "any of the enumerated values as defined in the TMATS/XML schema. The value "
                    "from the TMATS file has",
                    "been written as-is, but the XML file generated will no longer validate "
                    "against the schema.\n",
                    "\tTMATS command 'G\\SC'. Value found: 'Q'", ""}));
}

TEST(XmlExport, KeepsTheSpellingOfConfidental) {
    ExportStage stage;
    EXPECT_TRUE(holds(stage.convert("G\\SC:c;"), ">Confidental<"));
    EXPECT_TRUE(stage.report.badValues.empty());
}

TEST(XmlExport, WritesASourceOfAnotherTypeWithoutTransmissionOrRecorderGroup) {
    ExportStage stage;
    const auto xml = stage.convert(
        "G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:DRS;R-1\\ID:S;R-1\\RID:x;M-1\\ID:S;M-1\\BSG1:PCM;");
    EXPECT_TRUE(holds(xml, "<DataSource Name=\"S\" Type=\"DRS\">\n"));
    EXPECT_EQ(xml.find("RecorderReproducerAttributes"), std::string::npos);
    ASSERT_EQ(stage.report.badValues.size(), 1U);
    EXPECT_EQ(stage.report.badValues[0].description, "Data Source Type for Data Source 'S'");
}

TEST(XmlExport, WritesTheLineBreakOfACommentAsAReference) {
    ExportStage stage;
    // The reader makes both characters of either of them.
    EXPECT_TRUE(holds(stage.convert("G\\COM:one\ntwo;"), "<Comments>one &#10;two</Comments>\n"));
    EXPECT_TRUE(holds(stage.convert("G\\COM:one\r\ntwo;"), "<Comments>one &#10;two</Comments>\n"));
}

TEST(XmlExport, EscapesMarkupTwice) {
    ExportStage stage;
    EXPECT_TRUE(holds(stage.convert("G\\PN:a&b<c>d;G\\TA:\xF6;"),
                      "<ProgramName>a&amp;amp;b&amp;lt;c&gt;d</ProgramName>\n"
                      "<TestItem>&amp;ouml;</TestItem>\n"));
}

TEST(XmlExport, FindsTheTextOfAChoiceWithAnAmpersand) {
    ExportStage stage;
    EXPECT_TRUE(holds(stage.convert(std::string(kRadio) + "T-1\\GST7:B&DPR;"),
                      "<PolarizationReception>Both And Pre-Detection</PolarizationReception>\n"));
    EXPECT_TRUE(stage.report.badValues.empty());
}

TEST(XmlExport, LeavesNoSubstitutionInTheSession) {
    ExportStage stage;
    ASSERT_TRUE(stage.open("G\\PN:a&b;"));
    (void)tmatsToXml(
        stage.sdk, nullptr, {}, [](std::string_view) {}, stage.report);
    EXPECT_EQ(stage.sdk.substituted("&"), "&");
    EXPECT_EQ(stage.sdk.openGroup('G')->value("PN"), "a&b");
}

TEST(XmlExport, TellsTheSteps) {
    ExportStage stage;
    stage.convert(std::string(kRadio) +
                  "P-1\\DLN:L;P-1\\D2:5;P-1\\MF1:4;D-1\\DLN:L;D-1\\MN\\N-1:1;"
                  "D-1\\MN-1-1:A;C-1\\DCN:A;C-1\\MN1:x;");
    EXPECT_EQ(stage.report.status,
              (Said{"Converting TMATS file to XML...", "Converting TMATS 'G' group to XML...",
                    "Converting TMATS Data Source 'S'...", "Converting TMATS 'T' group to XML...",
                    "Converting TMATS 'M' group to XML...", "Creating DataLink 'L'...",
                    "Converting TMATS 'P' group to XML...", "Converting TMATS 'D' group to XML...",
                    "Converting TMATS 'C' group to XML..."}));
}

TEST(XmlExport, WarnsOfWhatASourceLacks) {
    ExportStage stage;
    stage.convert(
        "G\\DSI\\N:2;G\\DSI-1:A;G\\DST-1:RF;G\\DSI-2:B;G\\DST-2:TAP;M-1\\ID:B;M-1\\BSG1:x;");
    EXPECT_EQ(stage.report.warnings[0],
              "Warning: Unable to locate 'RF Attributes' information for Data Source 'A'.\nNo RF "
              "Attributes information will be converted.\n");
    EXPECT_EQ(stage.report.errors,
              (Said{"Unable to locate 'Mux/Mod' information for Data Source 'A'"}));
    EXPECT_EQ(stage.report.warnings[1],
              "Warning: Unable to locate 'Tape/Storage Attributes' information for Data Source "
              "'B'.\nNo Tape/Storage Attributes information will be converted.\n");
    EXPECT_EQ(stage.report.warnings[2],
              "Warning: No DataLink commands were found in the Multiplex/Modulation section, for "
              "Data Source 'B'.");
}

TEST(XmlExport, FailsWithoutAGeneralGroup) {
    ExportStage stage;
    EXPECT_EQ(stage.convert("T-1\\ID:S;"), "");
    EXPECT_EQ(stage.report.errors, (Said{"Unable to open 'General Information' file"}));
}

TEST(XmlExport, WritesOnlyTheLinksThatAreWanted) {
    ExportStage stage;
    stage.options.links = {"K"};
    const auto xml = stage.convert(std::string(kRadio) +
                                   "M-1\\SI\\N:1;M-1\\SI\\DLN-1:K;P-1\\DLN:L;P-1\\D2:5;P-2\\DLN:K;"
                                   "P-2\\D2:6;");
    EXPECT_EQ(xml.find("<DataLink Name=\"L\""), std::string::npos);
    EXPECT_TRUE(holds(xml, "<DataLink Name=\"K\">\n"));
}

TEST(XmlExport, WritesALinkThatNoGroupNamesUnderTheLastSource) {
    ExportStage stage;
    const auto xml = stage.convert(
        "G\\DSI\\N:2;G\\DSI-1:A;G\\DST-1:OTH;G\\DSI-2:B;G\\DST-2:OTH;M-1\\ID:A;M-1\\BSG1:x;"
        "P-1\\DLN:lost;P-1\\D2:5;");
    EXPECT_GT(xml.find("<DataLink Name=\"lost\">"), xml.find("Name=\"B\""));
}

TEST(XmlExport, PutsTheTextsOfTheTestAfterTheSources) {
    ExportStage stage;
    const auto xml = stage.convert(std::string(kRadio) + "G\\TI1:5;G\\SC:U;G\\COM:c;");
    EXPECT_LT(xml.find("</DataSource>"), xml.find("<TestInformation>"));
    EXPECT_LT(xml.find("<TestInformation>"), xml.find("<SecurityClassification>"));
    EXPECT_LT(xml.find("<SecurityClassification>"), xml.find("<Comments>"));
}

TEST(XmlExport, WritesOneElementForEachTrack) {
    ExportStage stage;
    const auto xml = stage.convert(
        "G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:STO;R-1\\ID:S;R-1\\N:2;R-1\\TK1-1:1;R-1\\TK2-1:FMWBII;"
        "R-1\\TK1-2:2;R-1\\TK2-2:RO-K;R-1\\TK1-3:beyond;R-1\\RI9:00-12-AB;R-1\\RI3:Y;"
        "R-1\\RMM\\N:1;R-1\\RIMMID-1:a;R-1\\RMMID-1:b;R-1\\TC5:15.0;");
    EXPECT_TRUE(holds(xml,
                      "<Data>\n<TrackNumberOrChannelID>1</TrackNumberOrChannelID>\n"
                      "<RecordingTechnique>FM Wide band Group 2</RecordingTechnique>\n</Data>\n"
                      "<Data>\n<TrackNumberOrChannelID>2</TrackNumberOrChannelID>\n"
                      "<RecordingTechnique>Rotary Single Track</RecordingTechnique>\n</Data>\n"));
    EXPECT_TRUE(holds(xml, "<SerialNumber>00-12-AB</SerialNumber>"));
    EXPECT_TRUE(holds(xml, "<OriginalRecording>Y</OriginalRecording>"));
    EXPECT_TRUE(holds(xml, "<Housing>`5.0</Housing>"));
    EXPECT_TRUE(holds(xml, "<RMM>\n<Identifier>a</Identifier>\n</RMM>"));
    EXPECT_EQ(xml.find("beyond"), std::string::npos);
    EXPECT_EQ(stage.report.losses.total(), 2U);
}

TEST(XmlExport, WritesTheMessageFiltersOfABusSideBySide) {
    ExportStage stage;
    const auto xml = stage.convert(
        "G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:STO;R-1\\ID:S;R-1\\N:1;R-1\\TK1-1:1;R-1\\MFD\\N-1:2;"
        "R-1\\MFD\\MT-1-1:RTBC;R-1\\MFD\\TRA-1-1:1;R-1\\MFD\\MT-1-2:MC;R-1\\PDTF-1:1;");
    EXPECT_TRUE(holds(xml,
                      "<MIL-STD-1553BusDataTypeAttributes>\n<Type>RT/BC</Type>\n<Address>\n"
                      "<RemoteTerminalAddress>1</RemoteTerminalAddress>\n</Address>\n"
                      "<Type>Mode Code</Type>\n</MIL-STD-1553BusDataTypeAttributes>\n"));
    EXPECT_TRUE(holds(xml, "<PcmDataTypeAttributes>\n"));
}

TEST(XmlExport, CountsOfACountWithoutRowsCostNothing) {
    ExportStage stage;
    EXPECT_TRUE(holds(stage.convert("G\\POC\\N:999999999;G\\POC1-999999999:A;G\\POC4-2:1;"),
                      "<PointOfContact>\n<Telephone>1</Telephone>\n</PointOfContact>\n"
                      "<PointOfContact>\n<Name>A</Name>\n</PointOfContact>\n"));
}

TEST(XmlExport, CopiesAVendorGroupAsComments) {
    ExportStage stage;
    const auto xml =
        stage.convert(std::string(kRadio) + "V-1\\ID:S;V-1\\VN:\"Acme\";V-1\\X:a--b&;V-1\\Y:2;");
    EXPECT_TRUE(holds(xml,
                      "<!-- V Group -->\n<VendorSpecificAttributes Vendor=\"&quot;Acme&quot;\">\n"
                      "<!-- V-1\\X:a- -b&; -->\n<!-- V-1\\Y:2; -->\n"
                      "</VendorSpecificAttributes>\n"));
    EXPECT_EQ(checkXml(stage.whole.substr(stage.whole.find('\n') + 1)).fault, std::nullopt);
}

TEST(XmlExport, WritesNoVendorGroupWithoutAVendor) {
    ExportStage stage;
    EXPECT_EQ(stage.convert(std::string(kRadio) + "V-1\\ID:S;V-1\\X:1;").find("Vendor"),
              std::string::npos);
    EXPECT_EQ(stage.report.losses.total(), 1U);
}

TEST(XmlExport, CopiesTheHardwareGroupAsABlock) {
    ExportStage stage;
    const auto xml = stage.convert(std::string(kRadio) + "H\\A:1;H\\B:<2>;");
    EXPECT_TRUE(holds(xml,
                      "<!-- H Group -->\n<AirborneHardwareAttributes>\nH\\A:1;\nH\\B:&amp;lt;2&gt;;"
                      "\n</AirborneHardwareAttributes>\n</Tmats>\n"));
}

TEST(XmlExport, DropsTheRecordsOfALinkThatCannotBeParsed) {
    ExportStage stage;
    const auto xml = stage.convert(std::string(kRadio) +
                                   "M-1\\SI\\N:1;M-1\\SI\\DLN-1:K;P-1\\DLN:L;P-1\\D2:5;D-1\\DLN:L;"
                                   "D-1\\MN\\N-1:1;D-1\\MN-1-1:A;P-2\\DLN:K;P-2\\MF1:4;D-2\\DLN:K;"
                                   "D-2\\MN\\N-1:1;D-2\\MN-1-1:B;C-1\\DCN:A;C-1\\MN1:a;C-2\\DCN:B;"
                                   "C-2\\MN1:b;");
    EXPECT_FALSE(holds(xml, "<Description>a</Description>"));
    EXPECT_TRUE(holds(xml, "<Description>b</Description>"));
    EXPECT_FALSE(stage.report.errors.empty());
}

TEST(XmlExport, CountsWhatTheDocumentDoesNotHold) {
    ExportStage stage;
    ASSERT_TRUE(stage.open(std::string(kRadio) + "T-1\\RF99:x;T-1\\RF98:y;R-1\\ID:T;R-1\\RID:x;"));
    const auto losses = countXmlLosses(stage.sdk, nullptr, {});
    EXPECT_TRUE(stage.sdk.errors().empty());
    ASSERT_EQ(losses.list().size(), 4U);
    EXPECT_EQ(losses.list()[0].code, "T-1\\RF99");
    EXPECT_EQ(losses.list()[3].code, "R-1\\RID");
}

TEST(XmlExport, CountsTheNamesOfWhatLeavesNoTrace) {
    ExportStage stage;
    stage.convert(
        "G\\DSI\\N:2;G\\DSI-1:S;G\\DST-1:OTH;G\\DSI-2:R;G\\DST-2:OTH;M-1\\ID:S;"
        "M-1\\BB\\DLN:L;P-1\\DLN:L;D-1\\DLN:L;D-1\\MLN-1:X;D-1\\MN\\N-1:1;"
        "D-1\\MN-1-1:A;C-1\\DCN:A;");
    std::vector<std::string> codes;
    for (const auto& loss : stage.report.losses.list()) {
        codes.push_back(loss.code);
    }
    EXPECT_EQ(codes, (std::vector<std::string>{"D-1\\MN-1-1", "D-1\\MLN-1", "D-1\\DLN", "P-1\\DLN",
                                               "G\\DSI-2", "C-1\\DCN"}));
}

TEST(XmlExport, AnnouncesWhatIsLostBeforeTheFileIsThere) {
    ExportStage stage;
    ASSERT_TRUE(stage.open("G\\PN:P;G\\NEW:1;"));
    const auto path = stage.folder / "out.xml";
    std::size_t lost = 0;
    bool wasThere = true;
    stage.options.announce = [&](const XmlExportReport& report) {
        lost = report.losses.total();
        wasThere = fileExists(path);
    };
    EXPECT_TRUE(tmatsToXmlFile(stage.sdk, nullptr, stage.options, path, stage.report));
    EXPECT_EQ(lost, 1U);
    EXPECT_FALSE(wasThere);
    EXPECT_TRUE(fileExists(path));
}

TEST(XmlExport, ShowsTheProgressOfMeasurementsAndRecords) {
    ExportStage stage;
    ASSERT_TRUE(
        stage.open(std::string(kRadio) +
                   "P-1\\DLN:L;P-1\\MF\\N:1;P-1\\MF1:4;D-1\\DLN:L;D-1\\MN\\N-1:1;D-1\\MN-1-1:A;"
                   "D-1\\LT-1-1:WDFR;C-1\\DCN:A;C-1\\MN1:x;"));
    stage.ui.statusTexts.clear();
    EXPECT_TRUE(tmatsToXml(
        stage.sdk, &stage.ui, stage.options, [](std::string_view) {}, stage.report));
    const auto isShown = [&](std::string_view text) {
        return std::find(stage.ui.statusTexts.begin(), stage.ui.statusTexts.end(), text) !=
               stage.ui.statusTexts.end();
    };
    EXPECT_TRUE(isShown("Creating Major Frame (Measurement #1 of 1)"));
    EXPECT_TRUE(isShown("Converting Data Conversion definitions #1 of 1"));
    for (const auto& text : stage.report.status) {
        EXPECT_EQ(text.find('#'), std::string::npos) << text;
    }
}

TEST(XmlExport, TakesASourceWithoutATypeForAnother) {
    ExportStage stage;
    EXPECT_TRUE(holds(stage.convert("G\\DSI\\N:1;G\\DSI-1:S;M-1\\ID:S;M-1\\BSG1:PCM;"),
                      "<DataSource Name=\"S\" Type=\"Other\">\n"));
    EXPECT_TRUE(stage.report.badValues.empty());
}

TEST(XmlExport, PutsRecordsOfNoLinkIntoTheFirstSourceUnlessAnotherNamesThem) {
    ExportStage stage;
    const auto xml = stage.convert(
        "G\\DSI\\N:2;G\\DSI-1:S;G\\DST-1:OTH;G\\DSI-2:R;G\\DST-2:OTH;M-2\\ID:R;M-2\\BB\\MN:Mic;"
        "C-1\\DCN:Mic;C-1\\MN1:of R;C-2\\DCN:nobody;C-2\\MN1:of S;");
    const auto second = xml.find("<DataSource Name=\"R\"");
    ASSERT_NE(second, std::string::npos);
    EXPECT_LT(xml.find("of S"), second);
    EXPECT_GT(xml.find("of R"), second);
    EXPECT_EQ(stage.report.losses.total(), 0U);
}

TEST(XmlExport, PutsAllLinksIntoOneSourceOfAFileWithoutSources) {
    ExportStage stage;
    EXPECT_TRUE(holds(stage.convert("G\\PN:P;P-1\\DLN:L;P-1\\D2:5;B-1\\DLN:K;B-1\\TA:x;"),
                      "<DataSource Type=\"Other\">\n<DataLink Name=\"L\">\n"));
    EXPECT_EQ(stage.report.warnings[0], "Warning. No data sources were defined in this file.");
    EXPECT_EQ(stage.report.losses.total(), 0U);
}

}  // namespace
}  // namespace kavu
