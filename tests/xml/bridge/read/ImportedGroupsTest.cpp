#include "xml/bridge/read/XmlImport.h"

#include <algorithm>

namespace kavu::test {
namespace {

using ImportedGroups = XmlImport;

// --- Groups of sources ------------------------------------------------------------------------

TEST_F(ImportedGroups, TheThreeDemodulatorCommandsAreNeverRead) {
    const std::string text =
        "<DataSource Name=\"A\" Type=\"RF\"><TransmissionAttributes><GroundStationAttributes>"
        "<FMSystems><DiscriminatorBandwidth>1</DiscriminatorBandwidth><DiscriminatorLinearity>2"
        "</DiscriminatorLinearity></FMSystems><PMSystems><PhaseLockLoopBandwidth>3"
        "</PhaseLockLoopBandwidth></PMSystems></GroundStationAttributes><Comments>c</Comments>"
        "</TransmissionAttributes></DataSource>";
    EXPECT_EQ(linesWith(imported(text), "T-1"), "T-1\\ID:A;\nT-1\\COM:c;\n");
    EXPECT_EQ(leftOut_.size(), 3u);
    EXPECT_EQ(linesWith(imported(text, XmlDialect::Schema), "T-1"),
              "T-1\\ID:A;\nT-1\\FM1:1;\nT-1\\FM2:2;\nT-1\\PLL:3;\nT-1\\COM:c;\n");
    EXPECT_TRUE(leftOut_.empty());
}

TEST_F(ImportedGroups, TheCompositeSignalIsReadFromTheLongerNameOnly) {
    const auto path = "DataSource/MultiplexModulationGroup";
    EXPECT_FALSE(has(group(path,
                           "<CompositeSignalStructure><SignalStructureType>PCM"
                           "</SignalStructureType></CompositeSignalStructure>"),
                     "M-1\\BB1:PCM;"));
    EXPECT_TRUE(has(group(path,
                          "<CompositeSignalStructures><SignalStructureType>PCM"
                          "</SignalStructureType></CompositeSignalStructures>"),
                    "M-1\\BB1:PCM;"));
    EXPECT_TRUE(has(group(path,
                          "<CompositeSignalStructure><SignalStructureType>PCM"
                          "</SignalStructureType></CompositeSignalStructure>",
                          XmlDialect::Schema),
                    "M-1\\BB1:PCM;"));
}

TEST_F(ImportedGroups, EachOtherSubcarrierHasANumber) {
    const auto commands =
        group("DataSource/MultiplexModulationGroup",
              "<Subcarriers><IRIGSubcarrier><Number>1</Number></IRIGSubcarrier><Other>Yes</Other>"
              "<Other>No</Other></Subcarriers>");
    EXPECT_EQ(linesWith(commands, "M-1\\S"),
              "M-1\\SI\\N:1;\nM-1\\SI1-1:1;\nM-1\\SO-1:Y;\nM-1\\SO-2:N;\n");
    EXPECT_TRUE(has(group("DataSource/MultiplexModulationGroup",
                          "<Subcarriers><Other>Yes</Other></Subcarriers>", XmlDialect::Schema),
                    "M-1\\SO:Y;"));
}

TEST_F(ImportedGroups, TheSetupSourceIsReadFromContinuousRecording) {
    const std::string info =
        "<RecorderReproducerInfo><ContinuousRecordingEnabled>True</ContinuousRecordingEnabled>"
        "<SetupSource>Command Setup File Only</SetupSource></RecorderReproducerInfo>";
    const auto commands = recorder(info);
    EXPECT_TRUE(has(commands, "R-1\\CRE:T;"));
    EXPECT_TRUE(has(commands, "R-1\\RSS:True;"));
    EXPECT_TRUE(has(recorder(info, XmlDialect::Schema), "R-1\\RSS:C;"));
}

TEST_F(ImportedGroups, SerialNumberFirmwareAndTwoDatesOfTheRecorderAreReadAsPlainDates) {
    const std::string info =
        "<RecorderReproducerInfo><OriginalRecordingDateAndTime>2009-01-02T03:04:05"
        "</OriginalRecordingDateAndTime><DateAndTimeOfCopy>2009-01-02T03:04:05</DateAndTimeOfCopy>"
        "<DateAndTimeOfModification>2009-01-02</DateAndTimeOfModification>"
        "<SerialNumber>12</SerialNumber><FirmwareRevision>2009-01-02</FirmwareRevision>"
        "<RMM><Identifier>7</Identifier></RMM></RecorderReproducerInfo>";
    const auto commands = recorder(info);
    EXPECT_EQ(linesWith(commands, "R-1\\RI"),
              "R-1\\RI4:01-02-2009-03-04-05;\nR-1\\RI8:01-02-2009;\nR-1\\RI10:01-02-2009;\n");
    EXPECT_EQ(linesWith(commands, "R-1\\RMM"), "R-1\\RMM\\N:1;\nR-1\\RMMID-1:7;\n");
    const auto schema = recorder(info, XmlDialect::Schema);
    EXPECT_TRUE(has(schema, "R-1\\RI5:01-02-2009-03-04-05;"));
    EXPECT_TRUE(has(schema, "R-1\\RI9:12;"));
    EXPECT_TRUE(has(schema, "R-1\\RI10:2009-01-02;"));
    EXPECT_TRUE(has(schema, "R-1\\RMMID-1:7;"));
}

TEST_F(ImportedGroups, TheOriginalTapeIsPlainInTheDefaultForm) {
    const std::string info =
        "<RecorderReproducerInfo><OriginalRecording>Yes</OriginalRecording>"
        "</RecorderReproducerInfo>";
    EXPECT_TRUE(has(recorder(info), "R-1\\RI3:Yes;"));
    EXPECT_TRUE(has(recorder(info, XmlDialect::Schema), "R-1\\RI3:Y;"));
}

TEST_F(ImportedGroups, TracksAreReadFromTheNamesThatTheReaderHas) {
    const auto commands = recorder(
        "<Characteristics><NumberOfTracksOrChannels>9</NumberOfTracksOrChannels>"
        "<TypeOfTracks>Rotary</TypeOfTracks></Characteristics>"
        "<Data><TrackNumberOrChannelID>1</TrackNumberOrChannelID>"
        "<ChannelDataType>PCM Input</ChannelDataType>"
        "<PcmDataTypeAttributes><DataPackingOption>Unpacked</DataPackingOption>"
        "</PcmDataTypeAttributes></Data>"
        "<Data><TrackNumberOrChannelID>2</TrackNumberOrChannelID>"
        "<PCMDataTypeAttributes><DataPackingOption>Unpacked</DataPackingOption>"
        "</PCMDataTypeAttributes><MessageDataTypeAttributes><Network><Number>5</Number></Network>"
        "</MessageDataTypeAttributes><EthernetDataTypeAttributes><Network><Number>6</Number>"
        "</Network></EthernetDataTypeAttributes><TSPICTSDataTypeAttributes><Format>"
        "Format 1 (EAG ACMI)</Format></TSPICTSDataTypeAttributes>"
        "<AnalogDataTypeAttributes><Channel><MeasurementName>M</MeasurementName><BitMask>"
        "Full Word</BitMask></Channel></AnalogDataTypeAttributes></Data>");
    EXPECT_TRUE(has(commands, "R-1\\N:9;"));
    EXPECT_TRUE(has(commands, "R-1\\TT:Rotary;"));
    EXPECT_TRUE(has(commands, "R-1\\CDT-1:PCMIN;"));
    EXPECT_EQ(linesWith(commands, "R-1\\PDP"), "R-1\\PDP-2:UN;\n");
    EXPECT_EQ(linesWith(commands, "R-1\\ENBR"), "R-1\\ENBR-2-1:5;\n");
    EXPECT_TRUE(has(commands, "R-1\\NNET\\N-2:1;"));
    EXPECT_TRUE(has(commands, "R-1\\TDTF-2:1;"));
    EXPECT_TRUE(has(commands, "R-1\\ACH\\N-2:1;"));
    EXPECT_TRUE(has(commands, "R-1\\AMN-2-1:M;"));
    EXPECT_EQ(linesWith(commands, "R-1\\AMSK"), "");
}

TEST_F(ImportedGroups, FiltersOf1553TracksAreReadFromTheirDefinitions) {
    const std::string one =
        "<Type>RT/RT</Type><CommandWordEntry>Command Word</CommandWordEntry><RTRT>"
        "<CommandWordEntry>Command Word</CommandWordEntry><CommandWord>0F</CommandWord></RTRT>";
    const std::string begin = "<Data><MIL-STD-1553BusDataTypeAttributes>";
    const std::string end = "</MIL-STD-1553BusDataTypeAttributes></Data>";
    const std::string data =
        begin + "<MessageFilteringDefinitions>" + one + "</MessageFilteringDefinitions>" + end;
    EXPECT_EQ(linesWith(recorder(data), "R-1\\"),
              "R-1\\ID:S;\nR-1\\MFD\\N-1:1;\nR-1\\MFD\\MT-1-1:RTRT;\nR-1\\CWE-1-1:W;\n");
    EXPECT_TRUE(has(recorder(data, XmlDialect::Schema), "R-1\\RCMD-1-1:0F;"));
    EXPECT_EQ(linesWith(recorder(begin + one + end), "R-1\\"), "R-1\\ID:S;\n");
}

// --- Groups of links --------------------------------------------------------------------------

TEST_F(ImportedGroups, ASyncPatternStatesItsLength) {
    const auto commands = pcm(
        "<InputData><PCMCode>Other</PCMCode><Encrypted>Unencrypted</Encrypted>"
        "<RandomizerLength>Not Applicable</RandomizerLength></InputData>"
        "<Format><TypeFormat>Class 1</TypeFormat><MinorFrame><SyncPattern>0101</SyncPattern>"
        "</MinorFrame></Format><SyncCriteria><InSync><Criteria>Not Specified</Criteria></InSync>"
        "<OutOfSync><NumberOfDisagrees>3</NumberOfDisagrees></OutOfSync></SyncCriteria>");
    EXPECT_EQ(linesWith(commands, "P-1"),
              "P-1\\DLN:L;\nP-1\\D1:OTHER;\nP-1\\D3:Unencrypted;\nP-1\\D8:N/A;\nP-1\\TF:ONE;\n"
              "P-1\\MF4:4;\nP-1\\MF5:0101;\nP-1\\SYNC1:NS;\nP-1\\SYNC3:3;\n");
    EXPECT_TRUE(has(pcm("<MinorFrame><SyncPattern>1</SyncPattern></MinorFrame>"), "P-1\\MF5:1;"));
}

TEST_F(ImportedGroups, TheRowsOfAPcmFormatHaveTheirCounts) {
    const auto commands = pcm(
        "<VariableWordLength><Word>1</Word><Length>8</Length></VariableWordLength>"
        "<VariableWordLength><Word>2</Word><Length>9</Length></VariableWordLength>"
        "<SubframeSynchronization><IDCounter><Name>I</Name><InitialValue>0</InitialValue>"
        "<InitialMinorFrameNumber>1</InitialMinorFrameNumber><EndValue>3</EndValue>"
        "<EndMinorFrameNumber>4</EndMinorFrameNumber><CountDirection>Decreasing</CountDirection>"
        "</IDCounter></SubframeSynchronization>"
        "<Filtering><DefinitionType>Exclusive Filtering</DefinitionType><FrameNumber>2"
        "</FrameNumber><FrameNumber>5</FrameNumber></Filtering>"
        "<FormatChange><FrameFormatIdentifier><Location>7</Location></FrameFormatIdentifier>"
        "<MeasurementListChange><FFIPattern>1</FFIPattern></MeasurementListChange></FormatChange>");
    EXPECT_EQ(linesWith(commands, "P-1"),
              "P-1\\DLN:L;\nP-1\\MFW1-1:1;\nP-1\\MFW2-1:8;\nP-1\\MFW1-2:2;\nP-1\\MFW2-2:9;\n"
              "P-1\\ISF\\N:1;\nP-1\\ISF1-1:I;\nP-1\\IDC6-1:0;\nP-1\\IDC7-1:1;\nP-1\\IDC8-1:3;\n"
              "P-1\\IDC9-1:4;\nP-1\\IDC10-1:Decreasing;\nP-1\\MFF\\FDT:Exclusive Filtering;\n"
              "P-1\\MFF\\N:2;\nP-1\\MFF\\MFN-1:2;\nP-1\\MFF\\MFN-2:5;\nP-1\\FFI1:7;\n"
              "P-1\\MLC\\N:1;\nP-1\\MLC1-1:1;\n");
}

TEST_F(ImportedGroups, RangesOfFramesHoldForEachLocationOfAnEmbeddedStream) {
    const auto commands = pcm(
        "<AsyncEmbeddedFormat><DataLinkName>E</DataLinkName><Supercom>2</Supercom>"
        "<Location>5</Location><Location>6</Location><Mask>01</Mask>"
        "<Subcommutation><StartFrame>1</StartFrame><EndFrame>9</EndFrame></Subcommutation>"
        "</AsyncEmbeddedFormat><AsynchronousDataMergeFormat><Name>D</Name><MaskAndPattern>"
        "<OverheadMask>1</OverheadMask></MaskAndPattern><Location>8</Location><Parity>Even</Parity>"
        "</AsynchronousDataMergeFormat>");
    EXPECT_EQ(linesWith(commands, "P-1\\A"),
              "P-1\\AEF\\N:1;\nP-1\\AEF\\DLN-1:E;\nP-1\\AEF1-1:2;\nP-1\\AEF3-1-1:5;\n"
              "P-1\\AEF3-1-2:6;\nP-1\\AEF6-1-1:01;\nP-1\\AEF7-1-1:1;\nP-1\\AEF8-1-1-1:1;\n"
              "P-1\\AEF10-1-1-1:9;\nP-1\\AEF7-1-2:1;\nP-1\\AEF8-1-2-1:1;\nP-1\\AEF10-1-2-1:9;\n"
              "P-1\\ADM\\N:1;\nP-1\\ADM\\DMN-1:D;\nP-1\\ADM\\MP-1:Y;\nP-1\\ADM\\OHM-1:1;\n"
              "P-1\\ADM3-1-1:8;\nP-1\\ADM7-1:EV;\n");
}

TEST_F(ImportedGroups, AMeasurementHasItsLengthAtEachLocationAndNumbersItsFragments) {
    const std::string content =
        "<Length>12</Length><Parity>None</Parity><LocationType>Word and Frame</LocationType>"
        "<WordAndFrame><IDCounterName>I</IDCounterName>"
        "<MeasurementLocation><MeasurementFragments FragmentTransferOrder=\"MSB First\">"
        "<StartWord>5</StartWord><BitMask>full word</BitMask></MeasurementFragments>"
        "<MeasurementFragments><StartWord>6</StartWord><BitMask>0011</BitMask>"
        "</MeasurementFragments></MeasurementLocation>"
        "<MeasurementLocation><MeasurementFragments><StartWord>7</StartWord>"
        "</MeasurementFragments></MeasurementLocation></WordAndFrame>";
    EXPECT_EQ(linesWith(measurement(content), "D-1"),
              "D-1\\DLN:L;\nD-1\\ML\\N:1;\nD-1\\MLN-1:ML;\nD-1\\MN\\N-1:1;\nD-1\\MN-1-1:A;\n"
              "D-1\\MN1-1-1:NO;\nD-1\\LT-1-1:WDFR;\nD-1\\IDCN-1-1:I;\nD-1\\MML\\N-1-1:2;\n"
              "D-1\\MWL-1-1-1:12;\nD-1\\MNF\\N-1-1-1:2;\nD-1\\MFP-1-1-1-1:1;\nD-1\\WP-1-1-1-1:5;\n"
              "D-1\\WFT-1-1-1-1:MSB First;\nD-1\\MFP-1-1-1-2:2;\nD-1\\WP-1-1-1-2:6;\n"
              "D-1\\WFM-1-1-1-2:0011;\nD-1\\MWL-1-1-2:12;\nD-1\\MNF\\N-1-1-2:1;\n"
              "D-1\\MFP-1-1-2-1:1;\nD-1\\WP-1-1-2-1:7;\n");
    const auto schema = measurement(content, XmlDialect::Schema);
    EXPECT_TRUE(has(schema, "D-1\\WFP-1-1-1-2:2;"));
    EXPECT_TRUE(has(schema, "D-1\\WFT-1-1-1-1:M;"));
    EXPECT_TRUE(has(schema, "D-1\\WFM-1-1-1-1:FW;"));
    EXPECT_TRUE(leftOut_.empty());
}

/// The default form names places that the schema has within an element of their own.
TEST_F(ImportedGroups, LocationsAreAlsoReadDirectlyUnderTheMeasurement) {
    const auto commands = measurement(
        "<IDCounterName>I</IDCounterName><MeasurementLocation><MeasurementFragments><StartWord>7"
        "</StartWord></MeasurementFragments></MeasurementLocation>");
    EXPECT_TRUE(has(commands, "D-1\\IDCN-1-1:I;"));
    EXPECT_TRUE(has(commands, "D-1\\WP-1-1-1-1:7;"));
}

TEST_F(ImportedGroups, TaggedDataNumbersItsFragments) {
    const auto commands = measurement(
        "<LocationType>Tagged Data</LocationType><TaggedData><WordLength>16</WordLength><Fragment>"
        "<TagNumber>3</TagNumber><FragmentTransferOrder>LSB First</FragmentTransferOrder>"
        "</Fragment></TaggedData>");
    EXPECT_EQ(linesWith(commands, "D-1\\TD"),
              "D-1\\TD\\N-1-1:1;\nD-1\\TD5-1-1-1:1;\nD-1\\TD2-1-1-1:3;\nD-1\\TD4-1-1-1:L;\n"
              "D-1\\TD1-1-1:16;\n");
}

TEST_F(ImportedGroups, MessagesOfABusAreReadFromBothPlaces) {
    const std::string bus1 =
        "<Bus><Number>000</Number><Message><Number>1</Number><Name>N<CommandWordValue>AB"
        "</CommandWordValue></Name><CommandWordType>W</CommandWordType>"
        "<CommandWordValue>CD</CommandWordValue>"
        "<RemoteTerminal><Name>R1</Name></RemoteTerminal>"
        "<Address><RemoteTerminal><Name>R2</Name><Address>1</Address></RemoteTerminal>"
        "<TransmitReceiveMode>Receive</TransmitReceiveMode></Address>"
        "<RTRTReceiveCommandList><CommandWordType>Command Word</CommandWordType><Address>"
        "<DataWordCount>4</DataWordCount></Address></RTRTReceiveCommandList></Message></Bus>";
    const auto commands = bus(bus1);
    EXPECT_TRUE(has(commands, "B-1\\CMD-1-1:AB;"));
    EXPECT_TRUE(has(commands, "B-1\\CWE-1-1:W;"));
    EXPECT_TRUE(has(commands, "B-1\\TRN-1-1:R1;"));
    EXPECT_TRUE(has(commands, "B-1\\TRA-1-1:1;"));
    EXPECT_TRUE(has(commands, "B-1\\TRM-1-1:0;"));
    EXPECT_TRUE(has(commands, "B-1\\RCWE-1-1:W;"));
    EXPECT_TRUE(has(commands, "B-1\\RDWC-1-1:4;"));
    EXPECT_EQ(linesWith(commands, "B-1\\RNRT"), "");
    const auto schema = bus(bus1, XmlDialect::Schema);
    EXPECT_TRUE(has(schema, "B-1\\CMD-1-1:CD;"));
    EXPECT_TRUE(has(schema, "B-1\\TRN-1-1:R2;"));
}

TEST_F(ImportedGroups, TheBusOfAPcmStreamIsReadWhereTheLinkHasNone) {
    const auto commands =
        pcm("<BusAttributes><BusParity>Odd</BusParity><Bus><Name>B</Name><UserDefined><Word2>"
            "<MeasurementName>M</MeasurementName><BitMask>Full Word</BitMask></Word2></UserDefined>"
            "</Bus></BusAttributes>");
    EXPECT_EQ(linesWith(commands, "B-1"),
              "B-1\\DLN:L;\nB-1\\BP:OD;\nB-1\\NBS\\N:1;\nB-1\\BNA-1:B;\nB-1\\UMN2-1:M;\n");
}

TEST_F(ImportedGroups, MessageFieldsAreCountedByTheShorterCode) {
    const std::string stream =
        "<Stream><Message><Field><Number>1</Number></Field></Message></Stream>";
    const auto path = "DataSource/DataLink/MessageDataAttributes";
    EXPECT_EQ(linesWith(group(path, stream), "S-1"),
              "S-1\\DLN:L;\nS-1\\NS\\N:1;\nS-1\\NMS\\N-1:1;\nS-1\\FLDS\\N-1-1:1;\n"
              "S-1\\FNUM-1-1-1:1;\n");
    EXPECT_TRUE(has(group(path, stream, XmlDialect::Schema), "S-1\\NFLDS\\N-1-1:1;"));
}

TEST_F(ImportedGroups, SubframesOfAPamStreamAreWrittenByXmlAndNeverRead) {
    const auto path = "DataSource/DataLink/PAMAttributes";
    const std::string text =
        "<InputCode>50% Duty Cycle</InputCode><Subframe><Location>3</Location></Subframe>"
        "<ChannelAssignment><Measurement>M</Measurement><ChannelNumber>4</ChannelNumber>"
        "<ChannelNumber>5</ChannelNumber></ChannelAssignment>";
    EXPECT_EQ(linesWith(group(path, text), "A-1"), "A-1\\DLN:L;\nA-1\\A1:RZ;\n");
    EXPECT_EQ(linesWith(group(path, text, XmlDialect::Schema), "A-1"),
              "A-1\\DLN:L;\nA-1\\A1:RZ;\nA-1\\SF\\N:1;\nA-1\\SF1-1:3;\nA-1\\MN1-1:M;\n"
              "A-1\\LCW-1-1:4;\nA-1\\LCW-1-2:5;\n");
}

TEST_F(ImportedGroups, EachGroupOfALinkHasARunningNumberOfItsOwn) {
    const auto commands = imported(
        "<DataSource Name=\"A\" Type=\"Other\"><DataLink Name=\"1\"><PCMFormatAttributes/>"
        "</DataLink><DataLink Name=\"2\"><PAMAttributes/></DataLink></DataSource>"
        "<DataSource Name=\"B\" Type=\"Other\"><DataLink Name=\"3\"><PCMFormatAttributes>"
        "<PCMMeasurements/></PCMFormatAttributes></DataLink></DataSource>");
    EXPECT_TRUE(has(commands, "P-2\\DLN:3;"));
    EXPECT_TRUE(has(commands, "D-1\\DLN:3;"));
    EXPECT_TRUE(has(commands, "A-1\\DLN:2;"));
    const auto texts = statusTexts();
    EXPECT_TRUE(std::find(texts.begin(), texts.end(),
                          "Creating TMATS 'P' group for data link '3'...") != texts.end());
}

// --- Conversion records -----------------------------------------------------------------------

TEST_F(ImportedGroups, ARecordIsWrittenInItsOrder) {
    EXPECT_EQ(
        linesWith(conversion("<TransducerInformation><Type>T</Type><SecurityClassification>"
                             "Counts Secret</SecurityClassification><PointOfContact><Name>N</Name>"
                             "</PointOfContact></TransducerInformation>"
                             "<Measurand><Alias>AL</Alias><LinkType>Analog</LinkType></Measurand>"
                             "<TelemetryValueDefinition><BinaryFormat>Sign and Magnitude Binary "
                             "(+ 0)</BinaryFormat><BitWeight><BitNumber>1</BitNumber>"
                             "<BitWeightValue>S</BitWeightValue></BitWeight>"
                             "</TelemetryValueDefinition>"
                             "<InflightCalibration><Stimulus>1</Stimulus></InflightCalibration>"
                             "<InflightCalibration><Stimulus>2</Stimulus></InflightCalibration>"
                             "<OtherInformation><MeasurementValue><Low>3</Low><High>4</High>"
                             "</MeasurementValue><SampleRate>5</SampleRate></OtherInformation>"
                             "<DataConversion Type=\"Pair Sets\" "
                             "DateAndTimeReleased=\"2009-01-02T03:04:05\"><PairSets>"
                             "<Application>Table Lookup</Application><OrderOfFit>1</OrderOfFit>"
                             "<Pair><TmValue>0</TmValue><EuValue>1</EuValue></Pair></PairSets>"
                             "</DataConversion><Comments>c</Comments>"),
                  "C-1"),
        "C-1\\DCN:A;\nC-1\\TRD1:T;\nC-1\\TRD4:SR;\nC-1\\POC1:N;\nC-1\\MNA:AL;\n"
        "C-1\\MN4:ANA;\nC-1\\BFM:SIG;\nC-1\\BWT\\N:1;\nC-1\\BWTB-1:1;\nC-1\\BWTV-1:S;\n"
        "C-1\\MC1:1;\nC-1\\MOT2:3;\nC-1\\MOT1:4;\nC-1\\SR:5;\n"
        "C-1\\CRT:01-02-2009-03-04-05;\nC-1\\DCT:PRS;\nC-1\\PS1:N;\nC-1\\PS2:1;\n"
        "C-1\\PS\\N:1;\nC-1\\PS3-1:0;\nC-1\\PS4-1:1;\nC-1\\COM:c;\n");
}

TEST_F(ImportedGroups, TermsHaveTheirOwnNumbersAndTheCountIsTheHighest) {
    const auto commands = conversion(
        "<DataConversion Type=\"Coefficients\"><Coefficients>"
        "<DerivedFromPairSet>No</DerivedFromPairSet><Coefficient N=\"0\">7</Coefficient>"
        "<Coefficient N=\"3\">8</Coefficient><Coefficient>9</Coefficient></Coefficients>"
        "</DataConversion>");
    EXPECT_EQ(linesWith(commands, "C-1\\CO"),
              "C-1\\CO1:N;\nC-1\\CO\\N:4;\nC-1\\CO:7;\nC-1\\CO-3:8;\nC-1\\CO-4:9;\n");
    // A link of records alone has no group that names it.
    ASSERT_EQ(leftOut_.size(), 1u);
    EXPECT_EQ(leftOut_[0].path, "/Tmats/DataSource/DataLink/@Name");
}

TEST_F(ImportedGroups, BySchemaTheRowsOfACalibrationStandSideBySide) {
    const std::string rows =
        "<InflightCalibration><Stimulus>1</Stimulus><TelemetryValue>2</TelemetryValue>"
        "<Stimulus>3</Stimulus><DataValue>4</DataValue><TelemetryValue>5</TelemetryValue>"
        "</InflightCalibration>";
    EXPECT_EQ(linesWith(conversion(rows, XmlDialect::Schema), "C-1\\MC"),
              "C-1\\MC\\N:3;\nC-1\\MC1-1:1;\nC-1\\MC2-1:2;\nC-1\\MC1-2:3;\nC-1\\MC3-2:4;\n"
              "C-1\\MC2-3:5;\n");
    EXPECT_EQ(linesWith(conversion(rows), "C-1\\MC"), "C-1\\MC1:1;\nC-1\\MC2:2;\nC-1\\MC3:4;\n");
}

TEST_F(ImportedGroups, DerivedValuesHaveTheirAttributes) {
    EXPECT_EQ(linesWith(conversion("<DataConversion Type=\"Derived\"><Derived>"
                                   "<Algorithm Type=\"Algorithm\">x+y</Algorithm>"
                                   "<TriggerMeasurand NumberOfOccurrences=\"2\">T"
                                   "</TriggerMeasurand><Measurand>x</Measurand>"
                                   "<Measurand>y</Measurand><Constant>1</Constant></Derived>"
                                   "</DataConversion>"),
                        "C-1\\D"),
              "C-1\\DCN:A;\nC-1\\DCT:DER;\nC-1\\DPA:x+y;\nC-1\\DPAT:Algorithm;\nC-1\\DPTM:T;\n"
              "C-1\\DPNO:2;\nC-1\\DP\\N:2;\nC-1\\DP-1:x;\nC-1\\DP-2:y;\nC-1\\DPC\\N:1;\n"
              "C-1\\DPC-1:1;\n");
}

TEST_F(ImportedGroups, RecordsOfTheMultiplexGroupComeFirst) {
    const auto record = [](const std::string& name) {
        return "<DataConversionAttributes><Measurement Name=\"" + name +
               "\"/></DataConversionAttributes>";
    };
    EXPECT_EQ(linesWith(imported("<DataSource Name=\"S\" Type=\"Other\"><DataLink Name=\"L\">" +
                                 record("B") + "</DataLink><MultiplexModulationGroup>" +
                                 record("A") + "</MultiplexModulationGroup></DataSource>"),
                        "C-"),
              "C-1\\DCN:A;\nC-2\\DCN:B;\n");
}

}  // namespace
}  // namespace kavu::test
