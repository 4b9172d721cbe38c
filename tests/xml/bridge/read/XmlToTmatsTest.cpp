#include "xml/bridge/read/XmlImport.h"

#include <algorithm>

namespace kavu::test {
namespace {

using XmlToTmatsTest = XmlImport;

// --- The general group ----------------------------------------------------------------------

TEST_F(XmlToTmatsTest, ADocumentWithoutSourcesIsAGeneralGroupOnly) {
    EXPECT_EQ(imported("<ProgramName>X</ProgramName><RevisionLevel>9</RevisionLevel>"),
              "G\\PN:X;\nG\\106:9;\n");
    EXPECT_EQ(statusTexts(), (Texts{"Creating TMATS 'G' group...", "IRIG 106 version: 2009"}));
    EXPECT_TRUE(messages_.empty());
}

TEST_F(XmlToTmatsTest, RevisionLevelsFromOneOnAreYears) {
    EXPECT_EQ(imported("<RevisionLevel>9</RevisionLevel>"), "G\\106:9;\n");
    EXPECT_EQ(version_, 2009);
    (void)imported("<RevisionLevel>99</RevisionLevel>");
    EXPECT_EQ(version_, 2099);
    (void)imported("<RevisionLevel>0</RevisionLevel>");
    EXPECT_EQ(version_, 0);
    EXPECT_EQ(status_.back().second, "IRIG 106 version: 0");
    (void)imported("<ProgramName>X</ProgramName>");
    EXPECT_EQ(version_, 0);
    EXPECT_EQ(status_.size(), 1u);
    (void)imported("<RevisionLevel>99999999999999999999</RevisionLevel>");
    EXPECT_LE(version_, 20'000);
}

TEST_F(XmlToTmatsTest, DatesAreTurnedAndOtherTextsDropTheCommand) {
    EXPECT_EQ(imported("<OriginationDate>2009-01-02</OriginationDate>"), "G\\OD:01-02-2009;\n");
    EXPECT_EQ(imported("<OriginationDate>01-02-2009</OriginationDate>"), "");
    EXPECT_EQ(imported("<Revision><Number>1</Number><Date>2009-01-02</Date></Revision>"
                       "<Update><Number>2</Number><Date>2009-03-04</Date></Update>"),
              "G\\RN:1;\nG\\RD:01-02-2009;\nG\\UN:2;\nG\\UD:03-04-2009;\n");
}

TEST_F(XmlToTmatsTest, ContactsKeepTheirRowsWhateverTheyLack) {
    EXPECT_EQ(imported("<PointOfContact><Agency>B1</Agency></PointOfContact>"
                       "<PointOfContact><Name>A2</Name><Telephone>4</Telephone></PointOfContact>"),
              "G\\POC\\N:1;\nG\\POC2-1:B1;\nG\\POC1-2:A2;\nG\\POC4-2:4;\n");
}

TEST_F(XmlToTmatsTest, BySchemaAllContactsCount) {
    EXPECT_EQ(imported("<PointOfContact><Agency>B1</Agency></PointOfContact>"
                       "<PointOfContact><Name>A2</Name></PointOfContact>",
                       XmlDialect::Schema),
              "G\\POC\\N:2;\nG\\POC2-1:B1;\nG\\POC1-2:A2;\n");
}

TEST_F(XmlToTmatsTest, SourcesHaveTheirTypesByName) {
    const auto commands = imported(
        "<DataSource Name=\"A\" Type=\"RF\"/><DataSource Name=\"B\" Type=\"tape\"/>"
        "<DataSource Name=\"C\" Type=\"Storage\"/><DataSource Name=\"D\" Type=\"Other\"/>"
        "<DataSource Name=\"E\"/>");
    EXPECT_EQ(linesWith(commands, "G\\DS"),
              "G\\DSI\\N:5;\nG\\DSI-1:A;\nG\\DST-1:RF;\nG\\DSI-2:B;\nG\\DST-2:TAP;\n"
              "G\\DSI-3:C;\nG\\DST-3:STO;\nG\\DSI-4:D;\nG\\DST-4:OTH;\nG\\DSI-5:E;\n"
              "G\\DST-5:OTH;\n");
    EXPECT_TRUE(has(commands, "T-1\\ID:A;"));
    EXPECT_TRUE(has(commands, "R-1\\ID:B;"));
    EXPECT_TRUE(has(commands, "R-2\\ID:C;"));
    EXPECT_TRUE(has(commands, "M-5\\ID:E;"));
    EXPECT_EQ(statusTexts(), (Texts{"Creating TMATS 'G' group...",
                                    "Creating TMATS 'T' group for data source 'A'...",
                                    "Creating TMATS 'R' group for data source 'B'...",
                                    "Creating TMATS 'R' group for data source 'C'...",
                                    "Creating TMATS 'M' group for data source 'A'...",
                                    "Creating TMATS 'M' group for data source 'B'...",
                                    "Creating TMATS 'M' group for data source 'C'...",
                                    "Creating TMATS 'M' group for data source 'D'...",
                                    "Creating TMATS 'M' group for data source 'E'..."}));
}

TEST_F(XmlToTmatsTest, AReproducerKeepsItsTypeAsItStandsAndGetsNoRecorderGroup) {
    const auto commands = imported(
        "<DataSource Name=\"A\" Type=\"Reproducer\"><RecorderReproducerAttributes><ID>I</ID>"
        "</RecorderReproducerAttributes></DataSource>");
    EXPECT_TRUE(has(commands, "G\\DST-1:Reproducer;"));
    EXPECT_EQ(linesWith(commands, "R-"), "");
    ASSERT_EQ(leftOut_.size(), 1u);
    EXPECT_EQ(leftOut_[0].path, "/Tmats/DataSource/RecorderReproducerAttributes/ID");
}

TEST_F(XmlToTmatsTest, SourcesAndLinksOfAnyNameAndOfNoneAreRead) {
    const auto commands = imported(
        "<DataSource Name=\"a'&quot;///\" Type=\"RF\"><DataLink Name=\"x\"><PCMFormatAttributes/>"
        "</DataLink><DataLink Name=\"x\"><PCMFormatAttributes/></DataLink></DataSource>"
        "<DataSource Type=\"RF\"><TransmissionAttributes><SourceRFAttributes><Frequency>1"
        "</Frequency></SourceRFAttributes></TransmissionAttributes><DataLink>"
        "<PCMFormatAttributes><Comments>c</Comments></PCMFormatAttributes></DataLink>"
        "</DataSource>");
    EXPECT_TRUE(has(commands, "T-1\\ID:a'\"///;"));
    EXPECT_TRUE(has(commands, "T-2\\RF1:1;"));
    EXPECT_TRUE(has(commands, "P-1\\DLN:x;"));
    EXPECT_TRUE(has(commands, "P-2\\DLN:x;"));
    EXPECT_TRUE(has(commands, "P-3\\COM:c;"));
}

TEST_F(XmlToTmatsTest, AnyNamespaceIsRead) {
    EXPECT_EQ(importedFile("<a:Tmats xmlns:a=\"urn:b\"><a:ProgramName>X</a:ProgramName>"
                           "<TestItem xmlns=\"urn:c\">Y</TestItem></a:Tmats>"),
              "G\\PN:X;\nG\\TA:Y;\n");
    EXPECT_FALSE(isInNamespace_);
    EXPECT_EQ(importedFile("<Tmats xmlns=\"" + std::string(kSchemaNamespace) +
                           "\"><ProgramName>X</ProgramName></Tmats>"),
              "G\\PN:X;\n");
    EXPECT_TRUE(isInNamespace_);
}

TEST_F(XmlToTmatsTest, TheTextOfAnElementIsAllTextInItAsItStands) {
    EXPECT_EQ(imported("<ProgramName> a <b>c</b><![CDATA[<d>]]> </ProgramName>"),
              "G\\PN: a c<d> ;\n");
    EXPECT_EQ(imported("<Comments>one\ntwo</Comments>"), "G\\COM:one\ntwo;\n");
    EXPECT_EQ(imported("<ProgramName/><TestItem></TestItem>"), "");
    EXPECT_EQ(imported("<ProgramName>a</ProgramName><ProgramName>b</ProgramName>"), "G\\PN:a;\n");
}

TEST_F(XmlToTmatsTest, ValueTextsAreFoundWithOuterBlanksAndOthersStandAsTheyAre) {
    EXPECT_EQ(imported("<SecurityClassification>\n Top secret </SecurityClassification>"),
              "G\\SC:T;\n");
    EXPECT_EQ(imported("<SecurityClassification>Confidental</SecurityClassification>"),
              "G\\SC:C;\n");
    EXPECT_EQ(imported("<SecurityClassification>Confidential</SecurityClassification>"),
              "G\\SC:Confidential;\n");
    EXPECT_TRUE(messages_.empty());
}

// --- Semicolons -----------------------------------------------------------------------------

TEST_F(XmlToTmatsTest, ASemicolonStandsAsItIsAndOneMessageNamesTheCode) {
    EXPECT_EQ(imported("<ProgramName>a;b</ProgramName><TestItem>;</TestItem>"),
              "G\\PN:a;b;\nG\\TA:;;\n");
    ASSERT_EQ(messages_.size(), 1u);
    EXPECT_NE(messages_[0].find("G\\PN"), std::string::npos);
    EXPECT_NE(messages_[0].find("1 more"), std::string::npos);
}

TEST_F(XmlToTmatsTest, InTheSchemasDialectASemicolonBecomesACommaWithOneMessage) {
    EXPECT_EQ(imported("<ProgramName>a;b;</ProgramName>", XmlDialect::Schema), "G\\PN:a,b,;\n");
    ASSERT_EQ(messages_.size(), 1u);
    EXPECT_NE(messages_[0].find("G\\PN"), std::string::npos);
}

// --- Inputs that cannot be read ---------------------------------------------------------------

TEST_F(XmlToTmatsTest, AnInputThatCannotBeReadIsADocumentWithoutContent) {
    EXPECT_EQ(importedFile("<Tmats>\n<ProgramName>X</Tmats>"), "");
    ASSERT_EQ(messages_.size(), 1u);
    EXPECT_TRUE(messages_[0].ends_with("in.xml:2: mismatched tag")) << messages_[0];
    EXPECT_EQ(importedFile(""), "");
    EXPECT_EQ(messages_.size(), 1u);
    EXPECT_EQ(importedFile("<Other><ProgramName>X</ProgramName></Other>"), "");
    ASSERT_EQ(messages_.size(), 1u);
    EXPECT_NE(messages_[0].find("'Other'"), std::string::npos);
    EXPECT_EQ(statusTexts(), (Texts{"Creating TMATS 'G' group..."}));
}

TEST_F(XmlToTmatsTest, AMissingInputIsADocumentWithoutContent) {
    XmlToTmats import({}, folder_ / "none.xml", folder_ / "out.tma");
    EXPECT_TRUE(import.convert(nullptr));
    EXPECT_EQ(import.commands(), "");
    ASSERT_EQ(import.messages().size(), 1u);
    EXPECT_NE(import.messages()[0].find("none.xml"), std::string::npos);
}

// --- Groups of the makers ---------------------------------------------------------------------

TEST_F(XmlToTmatsTest, TheGroupsOfMakersAreRefusedWithTwoWarningsEach) {
    (void)imported(
        "<DataSource Name=\"S\" Type=\"Other\"><VendorSpecificAttributes "
        "Vendor=\"V\"><!--V-1\\X:1;--></VendorSpecificAttributes></DataSource>"
        "<AirborneHardwareAttributes><!--H\\X:1;--></AirborneHardwareAttributes>");
    ASSERT_GE(status_.size(), 4u);
    const auto texts = statusTexts();
    EXPECT_EQ(Texts(texts.end() - 4, texts.end()),
              (Texts{"WARNING: <VendorSpecificAttributes> element (TMATS V Group) detected for "
                     "data source 'S'.",
                     "WARNING: This is not suported by this software. No TMATS V-Group definition "
                     "will be created.",
                     "WARNING: <AirborneHardwareAttribues> element (TMATS H Group) detected.",
                     "WARNING: This is not suported by this software. No TMATS H-Group definition "
                     "will be created."}));
    EXPECT_EQ(status_.back().first, XmlStatusLevel::Warning);
    EXPECT_TRUE(messages_.empty());
    EXPECT_EQ(leftOut_.size(), 3u);
}

// --- The schema's dialect -----------------------------------------------------------------------

TEST_F(XmlToTmatsTest, BySchemaGroupsAreReadInASourceOfAnyType) {
    const auto commands = imported(
        "<TmatsFileName>F</TmatsFileName><DataSource Name=\"A\" Type=\"Direct Source\">"
        "<RecorderReproducerAttributes><ID>I</ID></RecorderReproducerAttributes></DataSource>"
        "<DataSource Name=\"B\" Type=\"Reproducer\"/>",
        XmlDialect::Schema);
    EXPECT_EQ(commands,
              "G\\DSI\\N:2;\nG\\DSI-1:A;\nG\\DST-1:DRS;\nG\\DSI-2:B;\nG\\DST-2:REP;\nG\\FN:F;\n"
              "R-1\\ID:A;\nR-1\\RID:I;\n");
}

TEST_F(XmlToTmatsTest, BySchemaWhatHasNoCommandIsOneMessageThatNamesIt) {
    EXPECT_EQ(imported("<ProgramName>X</ProgramName><Strange a=\"1\">2</Strange><Strange>3"
                       "</Strange>",
                       XmlDialect::Schema),
              "G\\PN:X;\n");
    ASSERT_EQ(messages_.size(), 1u);
    EXPECT_TRUE(messages_[0].ends_with(
        "3 texts of the document are in no command: /Tmats/Strange/@a, /Tmats/Strange (2 times)"))
        << messages_[0];
}

TEST_F(XmlToTmatsTest, BySchemaATextThatIsNoDateIsKept) {
    EXPECT_EQ(imported("<OriginationDate>yesterday</OriginationDate>", XmlDialect::Schema),
              "G\\OD:yesterday;\n");
    EXPECT_TRUE(messages_.empty());
}

TEST_F(XmlToTmatsTest, InTheDefaultFormWhatIsLeftOutIsNoMessage) {
    EXPECT_EQ(imported("<Strange>2</Strange>"), "");
    EXPECT_TRUE(messages_.empty());
    EXPECT_EQ(leftOutText(leftOut_), "1 text of the document is in no command: /Tmats/Strange");
}

}  // namespace
}  // namespace kavu::test
