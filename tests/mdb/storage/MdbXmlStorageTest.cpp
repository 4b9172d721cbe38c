#include "mdb/DatabaseStage.h"
#include "mdb/storage/XmlRecord.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

using Opening = MeasurementDatabase::Opening;

struct XmlDatabase : DatabaseStage {
    XmlDatabase() : DatabaseStage(MdbVersion::Xml) {}
};

std::string documentOf(const std::string& content) {
    return "<MeasurementDatabase>" + content + "\n</MeasurementDatabase>\n";
}
std::string named(const std::string& name) {
    return "\n\t<Measurement>\n\t\t<Name>" + name + "</Name>\n\t</Measurement>";
}

MdbRecord fullRecord() {
    MdbRecord record;
    for (std::size_t i = 0; i < mdbfield::kCount; ++i) {
        record[i] = "v" + std::to_string(i);
    }
    record[4] = "M";
    record[5] = "T";
    record[6] = "NO";
    record[13] = "0";
    record[18] = "SB";
    record[32] = "SIM";
    record[34] = "PRS";
    record[35] = "0 10 1 20";
    return record;
}

TEST(MdbXmlStorage, ARecordHasItsElementsInOrder) {
    EXPECT_EQ(writeXmlRecord(fullRecord()),
              "<Measurement>\n"
              "\t\t<Name>v0</Name>\n"
              "\t\t<Root>v1</Root>\n"
              "\t\t<Length>v2</Length>\n"
              "\t\t<BitMask>v3</BitMask>\n"
              "\t\t<MeasurementTransferOrder>MSB First</MeasurementTransferOrder>\n"
              "\t\t<ParityTransferOrder>Trails Word</ParityTransferOrder>\n"
              "\t\t<Parity>None</Parity>\n"
              "\t\t<BusAttributes>\n"
              "\t\t\t<Name>v7</Name>\n"
              "\t\t\t<Number>v8</Number>\n"
              "\t\t\t<RemoteTerminal>\n"
              "\t\t\t\t<Name>v9</Name>\n"
              "\t\t\t\t<Address>v10</Address>\n"
              "\t\t\t</RemoteTerminal>\n"
              "\t\t\t<SubTerminal>\n"
              "\t\t\t\t<Name>v11</Name>\n"
              "\t\t\t\t<Address>v12</Address>\n"
              "\t\t\t</SubTerminal>\n"
              "\t\t\t<TransmitReceiveMode>Receive</TransmitReceiveMode>\n"
              "\t\t\t<WordNumber>v14</WordNumber>\n"
              "\t\t</BusAttributes>\n"
              "\t\t<DataConversionAttributes>\n"
              "\t\t\t<TransducerInformation>\n"
              "\t\t\t\t<Type>v15</Type>\n"
              "\t\t\t\t<ModelNumber>v16</ModelNumber>\n"
              "\t\t\t\t<SerialNumber>v17</SerialNumber>\n"
              "\t\t\t\t<SecurityClassification>Counts And EU Secret</SecurityClassification>\n"
              "\t\t\t\t<OriginationDate>v19</OriginationDate>\n"
              "\t\t\t\t<RevisionNumber>v20</RevisionNumber>\n"
              "\t\t\t\t<Orientation>v21</Orientation>\n"
              "\t\t\t</TransducerInformation>\n"
              "\t\t\t<PointOfContact>\n"
              "\t\t\t\t<Name>v22</Name>\n"
              "\t\t\t\t<Agency>v23</Agency>\n"
              "\t\t\t\t<Address>v24</Address>\n"
              "\t\t\t\t<Telephone>v25</Telephone>\n"
              "\t\t\t</PointOfContact>\n"
              "\t\t\t<Measurand>\n"
              "\t\t\t\t<Description>v26</Description>\n"
              "\t\t\t\t<EngineeringUnits>v27</EngineeringUnits>\n"
              "\t\t\t</Measurand>\n"
              "\t\t\t<TelemetryValueDefinition>\n"
              "\t\t\t\t<BinaryFormat>Sign and Magnitude Binary (+=1)</BinaryFormat>\n"
              "\t\t\t</TelemetryValueDefinition>\n"
              "\t\t\t<OtherInformation>\n"
              "\t\t\t\t<MeasurementValue>\n"
              "\t\t\t\t\t<Low>v28</Low>\n"
              "\t\t\t\t\t<High>v29</High>\n"
              "\t\t\t\t</MeasurementValue>\n"
              "\t\t\t\t<AlertValue>\n"
              "\t\t\t\t\t<Low>v30</Low>\n"
              "\t\t\t\t\t<High>v31</High>\n"
              "\t\t\t\t</AlertValue>\n"
              "\t\t\t\t<SampleRate>v33</SampleRate>\n"
              "\t\t\t</OtherInformation>\n"
              "\t\t\t<DataConversion Type=\"Pair Sets\">\n"
              "\t\t\t\t<PairSets>\n"
              "\t\t\t\t\t<Pair>\n"
              "\t\t\t\t\t\t<TmValue>0</TmValue>\n"
              "\t\t\t\t\t\t<EuValue>10</EuValue>\n"
              "\t\t\t\t\t</Pair>\n"
              "\t\t\t\t\t<Pair>\n"
              "\t\t\t\t\t\t<TmValue>1</TmValue>\n"
              "\t\t\t\t\t\t<EuValue>20</EuValue>\n"
              "\t\t\t\t\t</Pair>\n"
              "\t\t\t\t</PairSets>\n"
              "\t\t\t</DataConversion>\n"
              "\t\t</DataConversionAttributes>\n"
              "\t</Measurement>");
    EXPECT_EQ(readXmlRecord(writeXmlRecord(fullRecord())), fullRecord());
}

TEST(MdbXmlStorage, EmptyFieldsWriteNoElementButTheName) {
    EXPECT_EQ(writeXmlRecord(MdbRecord()), "<Measurement>\n\t\t<Name></Name>\n\t</Measurement>");
    EXPECT_EQ(readXmlRecord(writeXmlRecord(MdbRecord("A"))), MdbRecord("A"));
}

TEST(MdbXmlStorage, ConversionDataGoesBothWaysForEveryType) {
    for (const auto& [type, data] : std::vector<std::pair<std::string, std::string>>{
             {"COE", "0.0 1.0 2.0"},
             {"DIS", "0 Off_line 1 On"},
             {"PRS", "0 1 2"},
             {"OTH", "free text; with <all> \"kinds\" & more"},
             {"DER", "A + B"},
             {"SP", "line\x14\x15two"},
             {"NON", "text"},
             {"PTM", ""},
             {"XYZ", "1 2"}}) {
        MdbRecord record("A");
        record[mdbfield::kType] = type;
        record[mdbfield::kData] = data;
        EXPECT_EQ(readXmlRecord(writeXmlRecord(record)), record) << type;
    }
}

TEST(MdbXmlStorage, CoefficientsCountFromZeroAndAnOddTokenHasAnEmptyPair) {
    MdbRecord record("A");
    record[mdbfield::kType] = "COE";
    record[mdbfield::kData] = "5 6";
    const auto text = writeXmlRecord(record);
    EXPECT_NE(text.find("<Coefficient N=\"0\">5</Coefficient>"), std::string::npos) << text;
    EXPECT_NE(text.find("<Coefficient N=\"1\">6</Coefficient>"), std::string::npos) << text;
    record[mdbfield::kType] = "PRS";
    record[mdbfield::kData] = "1 2 3";
    EXPECT_NE(writeXmlRecord(record).find("<TmValue>3</TmValue>\n\t\t\t\t\t\t<EuValue></EuValue>"),
              std::string::npos);
}

TEST(MdbXmlStorage, AnEmptyTypeCountsAsNoneAndItsCodeIsReadAsWell) {
    MdbRecord record("A");
    record[mdbfield::kData] = "1";
    EXPECT_NE(writeXmlRecord(record).find("<DataConversion Type=\"None\">1<"), std::string::npos);
    const auto typeOf = [](const std::string& attribute) {
        return readXmlRecord("<Measurement><DataConversionAttributes><DataConversion" + attribute +
                             "/></DataConversionAttributes></Measurement>")[mdbfield::kType];
    };
    EXPECT_EQ(typeOf(""), "NON");
    EXPECT_EQ(typeOf(" Type=\"NON\""), "NON");
    EXPECT_EQ(typeOf(" Type=\"None\""), "NON");
    EXPECT_EQ(typeOf(" Type=\"Discrete\""), "DIS");
}

TEST(MdbXmlStorage, LineBreaksAreRealOnesAndForbiddenCharactersAreLeftOut) {
    const auto text = writeXmlRecord(DatabaseStage::record("A", "one\x14\x15two\x01"));
    EXPECT_NE(text.find("one&#13;\ntwo</Description>"), std::string::npos) << text;
    EXPECT_EQ(readXmlRecord(text)[mdbfield::kDescription], "one\x14\x15two");
}

TEST(MdbXmlStorage, ANameIsReadAsAParserReadsIt) {
    struct {
        const char* element;
        const char* name;
    } const cases[] = {
        {"<Measurement><Name>A B</Name></Measurement>", "A B"},
        {"<Measurement>\r\n\t <Name>  A  </Name></Measurement>", "A"},
        {"<Measurement><Name></Name></Measurement>", ""},
        {"<Measurement><Name>A&amp;B</Name></Measurement>", "A&B"},
        {"<Measurement><Name>A<!-- no -->B</Name></Measurement>", "AB"},
        {"<Measurement><Name><![CDATA[A<B]]></Name></Measurement>", "A<B"},
        {"<Measurement><Name>A\nB</Name></Measurement>",
         "A\x15"
         "B"},
        {"<Measurement><Name >A</Name></Measurement>", "A"},
        {"<Measurement><Name>A</Name ></Measurement>", "A"},
        {"<Measurement id=\"1\"><Name>A</Name></Measurement>", "A"},
        {"<Measurement><Root>R</Root><Name>A</Name></Measurement>", "A"},
        {"<Measurement><Names>N</Names><Name>A</Name></Measurement>", "A"},
        {"<Measurement><!-- x --><Name>A</Name><Name>B</Name></Measurement>", "A"},
        {"<Measurement/>", ""},
    };
    for (const auto& [element, name] : cases) {
        EXPECT_EQ(readXmlRecordName(element), name) << element;
        EXPECT_EQ(readXmlRecord(element).name(), name) << element;
    }
}

TEST(MdbXmlStorage, OfElementsThatAreThereTwiceTheFirstCounts) {
    const auto record = readXmlRecord(
        "<Measurement><Name>A</Name><BusAttributes><Name>B1</Name><Number>1</Number>"
        "<RemoteTerminal><Name>R</Name></RemoteTerminal></BusAttributes>"
        "<BusAttributes><Name>B2</Name><WordNumber>9</WordNumber></BusAttributes>"
        "<Root>X</Root><Root>Y</Root></Measurement>");
    EXPECT_EQ(record[mdbfield::kBusName], "B1");
    EXPECT_EQ(record[mdbfield::kBusNumber], "1");
    EXPECT_EQ(record[mdbfield::kRemoteTerminalName], "R");
    EXPECT_EQ(record[mdbfield::kWordNumber], "");
    EXPECT_EQ(record[mdbfield::kRoot], "X");
}

TEST(MdbXmlStorage, AnUnchangedDatabaseGivesTheSameBytes) {
    XmlDatabase stage;
    const auto odd =
        "<?xml version='1.0'?>\n<!-- mine -->\n<MeasurementDatabase a='1'>\n"
        "<Other/><Measurement ><Name> B </Name><Extra>1</Extra></Measurement>"
        "<!-- of A --><Measurement><Name>A</Name></Measurement>\n"
        "</MeasurementDatabase>\n<!-- end -->";
    EXPECT_EQ(stage.openWith(odd), Opening::Ready);
    EXPECT_EQ(stage.names(), (std::vector<std::string>{"B", "A"}));
    bool removed = true;
    EXPECT_TRUE(stage.database.remove(&stage.ui, "a", &removed));
    EXPECT_FALSE(removed);
    EXPECT_EQ(stage.bytes(), odd);
    EXPECT_TRUE(stage.database.add(&stage.ui, MdbRecord("C")));
    const auto grown = stage.bytes();
    EXPECT_EQ(stage.database.open(), Opening::Ready);
    EXPECT_EQ(stage.names(), (std::vector<std::string>{"B", "A", "C"}));
    EXPECT_NE(grown.find("<Extra>1</Extra>"), std::string::npos);
    EXPECT_TRUE(grown.ends_with("\n<!-- end -->"));
}

TEST(MdbXmlStorage, ARemovalThatRemovedSortsByTheBytesOfTheNames) {
    XmlDatabase stage;
    stage.openWith(documentOf(named("b") + named("B") + named("x") + named("a")));
    EXPECT_TRUE(stage.database.remove(&stage.ui, "x"));
    EXPECT_EQ(stage.bytes(), documentOf(named("B") + named("a") + named("b")));
}

TEST(MdbXmlStorage, ReplaceKeepsThePlaceAndMeetsTheFirstExactMatch) {
    XmlDatabase stage;
    stage.openWith(documentOf(named("b") + named("A") + named("A")));
    bool replaced = false;
    EXPECT_TRUE(stage.database.replace(&stage.ui, DatabaseStage::record("A", "new"), &replaced));
    EXPECT_TRUE(replaced);
    EXPECT_EQ(stage.names(), (std::vector<std::string>{"b", "A", "A"}));
    EXPECT_EQ((*stage.database.lookUp("A"))[mdbfield::kDescription], "new");
    EXPECT_TRUE(stage.database.replace(&stage.ui, MdbRecord("B"), &replaced));
    EXPECT_FALSE(replaced);
    EXPECT_EQ(stage.names(), (std::vector<std::string>{"b", "A", "A", "B"}));
}

TEST(MdbXmlStorage, AnotherRootIsNoDatabase) {
    XmlDatabase stage;
    EXPECT_EQ(stage.openWith("<Tmats/>"), Opening::Failed);
    EXPECT_EQ(stage.bytes(), "<Tmats/>");
}

TEST(MdbXmlStorage, AnUnreadableFileIsKeptBeforeItIsOverwritten) {
    XmlDatabase stage;
    EXPECT_EQ(stage.openWith("<MeasurementDatabase><Measurement>"), Opening::Ready);
    EXPECT_EQ(stage.database.recordCount(), 0U);
    EXPECT_TRUE(stage.database.add(&stage.ui, MdbRecord("A")));
    EXPECT_EQ(readFile(stage.path + ".unreadable"), "<MeasurementDatabase><Measurement>");
    EXPECT_EQ(stage.bytes(), documentOf(named("A")));
    EXPECT_EQ(stage.ui.logs.size() + stage.ui.notes.size(), 1U);
}

TEST(MdbXmlStorage, AnEmptyFileAndAClosedRootAreEmptyDatabases) {
    XmlDatabase stage;
    EXPECT_EQ(stage.openWith(""), Opening::Ready);
    EXPECT_TRUE(stage.database.add(&stage.ui, MdbRecord("A")));
    EXPECT_EQ(stage.bytes(), documentOf(named("A")));
    EXPECT_FALSE(fileExists(stage.path + ".unreadable"));
    EXPECT_EQ(stage.openWith("<MeasurementDatabase />"), Opening::Ready);
    EXPECT_TRUE(stage.database.add(&stage.ui, MdbRecord("A")));
    EXPECT_EQ(stage.bytes(), documentOf(named("A")));
    EXPECT_TRUE(stage.database.remove(&stage.ui, {}));
    EXPECT_EQ(stage.bytes(), documentOf(""));
}

TEST(MdbXmlStorage, BytesThatAreNotUtf8AreWindows1252) {
    XmlDatabase stage;
    EXPECT_EQ(stage.openWith(documentOf(named("K\xF6ln"))), Opening::Ready);
    EXPECT_EQ(stage.names(), (std::vector<std::string>{"K\xC3\xB6ln"}));
}

}  // namespace
}  // namespace kavu::test
