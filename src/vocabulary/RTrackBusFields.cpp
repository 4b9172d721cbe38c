// The details of tracks that record buses, messages, networks and positions.
#include "vocabulary/RTrackTables.h"

namespace kavu {

namespace {

constexpr auto kBusFormats = std::to_array<Choice>({
    {"0", "Format 0 (Reserved)", "Format 0 (Reserved)"},
    {"1", "Format 1 (MIL-STD-1553B Data)", "Format 1 (MIL-STD-1553B Data)"},
    {"2", "Format 2 (16PP194 Bus)", "Format 2 (16PP194 Bus)"},
});
constexpr auto kFilterTypes = std::to_array<Choice>({
    {"IN", "Inclusive", "Inclusive Filtering"},
    {"EX", "Exclusive", "Exclusive Filtering"},
});
constexpr auto kMessageTypes = std::to_array<Choice>({
    {"RTRT", "RT/RT", "RT/RT"},
    {"RTBC", "RT/BC", "RT/BC"},
    {"BCRT", "BC/RT", "BC/RT"},
    {"MC", "Mode Code", "Mode Code"},
});
constexpr auto kCommandWordEntries = std::to_array<Choice>({
    {"W", "Use Command Word value", "Command Word"},
    {"F", "Derive from other fields", "Address Fields"},
});
constexpr auto kTransferModes = std::to_array<Choice>({
    {"1", "Transmit", "Transmit"},
    {"0", "Receive", "Receive"},
});
constexpr auto kArincFormats = std::to_array<Choice>({
    {"0", "Format 0 (ARINC 429 Data)", "Format 0 (ARINC 429 Data)"},
    {"1", "Format 1 (Reserved)", "Format 1 (Reserved)"},
});
constexpr auto kMessageFormats = std::to_array<Choice>({
    {"0", "Format 0 (Message Data)", "Format 0 (Message Data)"},
});
constexpr auto kParallelFormats = std::to_array<Choice>({
    {"0", "Format 0 (Parallel)", "Format 0 (Parallel)"},
});
constexpr auto kEthernetFormats = std::to_array<Choice>({
    {"0", "Format 0 (Ethernet Data)", "Format 0 (Ethernet Data)"},
});
constexpr auto kTspiFormats = std::to_array<Choice>({
    {"0", "Format 0 (NMEA-RTCM)", "Format 0 (NMEA-RTCM)"},
    {"1", "Format 1 (EAG ACMI)", "Format 1 (EAG ACMI)"},
    {"2", "Format 2 (ACTTS)", "Format 2 (ACTTS)"},
});

constexpr auto kBus1553 = track::detailsOf(
    "1553 Input",
    std::to_array<Field>({
        track::kDataLink,
        {.code = "BTF-n",
         .label = "Bus Data Type Format",
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/BusDataTypeFormat",
         .choices = kBusFormats,
         .prompt = "Enter Bus Data Type Format"},
        {.code = "MRF\\E-n",
         .label = "Filtering Enabled",
         .firstEdition = 2009,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/FilteringEnabled",
         .choices = track::kTrueFalse,
         .prompt = "Enter Filtering Enabled"},
        {.code = "MOF\\T-n",
         .label = "Post Process Overwrite/Filtering Enabled",
         .firstEdition = 2009,
         .element =
             "Data/MIL-STD-1553BusDataTypeAttributes/PostProcessOverwriteAndFilteringEnabled",
         .choices = track::kTrueFalse,
         .prompt = "Enter Filtering Enabled"},
        {.code = "MFD\\FDT-n",
         .label = "Message Filtering Type",
         .firstEdition = 2009,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringType",
         .choices = kFilterTypes,
         .prompt = "Enter Filtering Type"},
        // The written form has the items side by side, without an element for each.
        {.code = "MFD\\N-n",
         .kind = FieldKind::Count,
         .firstEdition = 2009,
         .elementRead = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions",
         .elementSchema = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions",
         .readsExactly = true},
        {.code = "MFD\\MT-n-m",
         .label = "Message Type",
         .firstEdition = 2009,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/Type",
         .elementRead = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/Type",
         .choices = kMessageTypes,
         .elementSchema = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/Type",
         .readsExactly = true},
        {.code = "CWE-n-m",
         .label = "Command Word Entry",
         .firstEdition = 2011,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/CommandWordEntry",
         .elementRead =
             "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/CommandWordEntry",
         .choices = kCommandWordEntries,
         .elementSchema =
             "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/CommandWordEntry",
         .readsExactly = true},
        {.code = "CMD-n-m",
         .label = "Command Word",
         .firstEdition = 2011,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/CommandWord",
         .elementRead =
             "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/CommandWord",
         .elementSchema =
             "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/CommandWord",
         .readsExactly = true},
        {.code = "MFD\\TRA-n-m",
         .label = "RT Address",
         .firstEdition = 2009,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/Address/RemoteTerminalAddress",
         .elementRead = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/"
                        "Address/RemoteTerminalAddress",
         .elementSchema = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/"
                          "Address/RemoteTerminalAddress",
         .readsExactly = true},
        {.code = "MFD\\TRM-n-m",
         .label = "T/R Mode",
         .firstEdition = 2009,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/Address/TransmitReceiveMode",
         .elementRead = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/"
                        "Address/TransmitReceiveMode",
         .choices = kTransferModes,
         .elementSchema = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/"
                          "Address/TransmitReceiveMode",
         .readsExactly = true},
        {.code = "MFD\\STA-n-m",
         .label = "ST Address",
         .firstEdition = 2009,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/Address/SubTerminalAddress",
         .elementRead = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/"
                        "Address/SubTerminalAddress",
         .elementSchema = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/"
                          "Address/SubTerminalAddress",
         .readsExactly = true},
        {.code = "MFD\\DWC-n-m",
         .label = "Data Word/Mode Code",
         .firstEdition = 2009,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/Address/DataWordCountOrModeCode",
         .elementRead = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/"
                        "Address/DataWordCountOrModeCode",
         .elementSchema = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/"
                          "Address/DataWordCountOrModeCode",
         .readsExactly = true},
        {.code = "RCWE-n-m",
         .label = "Receive Command Word Entry",
         .firstEdition = 2011,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/RTRT/CommandWordEntry",
         .choices = kCommandWordEntries,
         .elementSchema = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/RTRT/"
                          "CommandWordEntry",
         .readsExactly = true,
         .isRead = false},
        {.code = "RCMD-n-m",
         .label = "Receive Command Word",
         .firstEdition = 2011,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/RTRT/CommandWord",
         .elementSchema =
             "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/RTRT/CommandWord",
         .readsExactly = true,
         .isRead = false},
        {.code = "MFD\\RTRA-n-m",
         .label = "RT/RT Remote Terminal Address",
         .firstEdition = 2009,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/RTRT/Address/RemoteTerminalAddress",
         .elementSchema = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/RTRT/"
                          "Address/RemoteTerminalAddress",
         .readsExactly = true,
         .isRead = false},
        {.code = "MFD\\RSTA-n-m",
         .label = "RT/RT Sub Terminal Address",
         .firstEdition = 2009,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/RTRT/Address/SubTerminalAddress",
         .elementSchema = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/RTRT/"
                          "Address/SubTerminalAddress",
         .readsExactly = true,
         .isRead = false},
        {.code = "MFD\\RDWC-n-m",
         .label = "RT/RT Data Word Count",
         .firstEdition = 2009,
         .element = "Data/MIL-STD-1553BusDataTypeAttributes/RTRT/Address/DataWordCount",
         .elementSchema = "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/RTRT/"
                          "Address/DataWordCount",
         .readsExactly = true,
         .isRead = false},
    }));
constexpr auto kArinc429 = track::detailsOf(
    "ARINC 429 Input", std::to_array<Field>({
                           track::kDataLink,
                           {.code = "ABTF-n",
                            .label = "Data Type Format",
                            .element = "Data/ARINC429BusDataTypeAttributes/DataTypeFormat",
                            .choices = kArincFormats,
                            .prompt = "Enter Data Type Format"},
                           {.code = "NAS\\N-n",
                            .kind = FieldKind::Count,
                            .element = "Data/ARINC429BusDataTypeAttributes/SubChannel"},
                           {.code = "ASN-n-m",
                            .label = "Number",
                            .limit = 5,
                            .element = "Data/ARINC429BusDataTypeAttributes/SubChannel/Number",
                            .prompt = "Enter SubChannel Number"},
                           {.code = "ANM-n-m",
                            .label = "Sub Channel Name",
                            .limit = 32,
                            .element = "Data/ARINC429BusDataTypeAttributes/SubChannel/Name",
                            .prompt = "Enter SubChannel Name"},
                       }));
constexpr auto kMessage = track::detailsOf(
    "Message Data Input", std::to_array<Field>({
                              {.code = "MTF-n",
                               .label = "Data Type Format",
                               .firstEdition = 2007,
                               .element = "Data/MessageDataTypeAttributes/DataTypeFormat",
                               .choices = kMessageFormats,
                               .prompt = "Enter Data Type Format"},
                              {.code = "NMS\\N-n",
                               .kind = FieldKind::Count,
                               .firstEdition = 2007,
                               .element = "Data/MessageDataTypeAttributes/SubChannel"},
                              {.code = "MSCN-n-m",
                               .label = "Number",
                               .limit = 5,
                               .firstEdition = 2007,
                               .element = "Data/MessageDataTypeAttributes/SubChannel/Number",
                               .prompt = "Enter SubChannel Number"},
                              {.code = "MCNM-n-m",
                               .label = "Sub Channel Name",
                               .limit = 32,
                               .firstEdition = 2007,
                               .element = "Data/MessageDataTypeAttributes/SubChannel/Name",
                               .prompt = "Enter SubChannel Name",
                               .refersTo = Refers::Link},
                          }));
constexpr auto kParallel = track::detailsOf(
    "Parallel Input", std::to_array<Field>({
                          {.code = "PLTF-n",
                           .label = "Data Type Format",
                           .firstEdition = 2007,
                           .element = "Data/ParallelDataTypeAttributes/DataTypeFormat",
                           .choices = kParallelFormats,
                           .prompt = "Enter Data Type Format"},
                      }));
constexpr auto kEthernet = track::detailsOf(
    "Ethernet Input", std::to_array<Field>({
                          {.code = "ENTF-n",
                           .label = "Ethernet Data Type Format",
                           .firstEdition = 2007,
                           .element = "Data/EthernetDataTypeAttributes/DataTypeFormat",
                           .choices = kEthernetFormats,
                           .prompt = "Enter Data Type Format"},
                          {.code = "NNET\\N-n",
                           .kind = FieldKind::Count,
                           .firstEdition = 2009,
                           .element = "Data/EthernetDataTypeAttributes/Network",
                           .elementRead = "Data/MessageDataTypeAttributes/Network",
                           .readsExactly = true},
                          {.code = "ENBR-n-m",
                           .label = "Number",
                           .firstEdition = 2009,
                           .element = "Data/EthernetDataTypeAttributes/Network/Number",
                           .elementRead = "Data/MessageDataTypeAttributes/Network/Number",
                           .prompt = "Network Number",
                           .readsExactly = true},
                          {.code = "ENAM-n-m",
                           .label = "Network Name",
                           .firstEdition = 2009,
                           .element = "Data/EthernetDataTypeAttributes/Network/Name",
                           .elementRead = "Data/MessageDataTypeAttributes/Network/Name",
                           .prompt = "Network Name",
                           .refersTo = Refers::Link,
                           .readsExactly = true},
                      }));
constexpr auto kTspi = track::detailsOf(
    "TSPI/CTS Input", std::to_array<Field>({
                          {.code = "TDTF-n",
                           .label = "Data Type Format",
                           .firstEdition = 2011,
                           .element = "Data/TSPICTSDataTypeAttributes/DataTypeFormat",
                           .elementRead = "Data/TSPICTSDataTypeAttributes/Format",
                           .choices = kTspiFormats,
                           .prompt = "Enter Data Type Format",
                           .elementSchema = "Data/TSPICTSDataTypeAttributes/Format",
                           .readsExactly = true},
                      }));

}  // namespace

std::span<const Field> track::bus1553Details() {
    return kBus1553;
}
std::span<const Field> track::arinc429Details() {
    return kArinc429;
}
std::span<const Field> track::messageDetails() {
    return kMessage;
}
std::span<const Field> track::parallelDetails() {
    return kParallel;
}
std::span<const Field> track::ethernetDetails() {
    return kEthernet;
}
std::span<const Field> track::tspiDetails() {
    return kTspi;
}

}  // namespace kavu
