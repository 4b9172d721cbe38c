#include "vocabulary/RGroupFields.h"

#include "vocabulary/RGroupTables.h"
#include "vocabulary/RTrackFields.h"
#include "vocabulary/RTrackTables.h"

#include <array>
#include <initializer_list>
#include <vector>

namespace kavu {

namespace {

constexpr auto kPages = std::to_array<RecorderPage>({
    {"Tape1", "Recorder/Reproducer"},
    {"Tape2", "Characteristics"},
    {"Tape3", "Information"},
    {"Tape4", "Creation Information"},
    {"Tape5", "Dubbing Information"},
    {"Tape6", "Recording Events"},
    {"Tape7", "Recording Index"},
    {"Tape8", "Data Tracks"},
    {"Tape9", "Reference Track"},
    {"Tape10", "Comments"},
    {"Tape11", "Computer Generated Data Packet", 2011},
});

constexpr auto kMediaTypes = std::to_array<Choice>({
    {"ANAL", "ANALOG", "Analog"},
    {"HDDR", "HDDR", "HDDR"},
    {"PARA", "PARALLEL", "Parallel"},
    {.value = "OTH", .text = "OTH", .xml = "OTH", .lastEdition = 1996, .schema = kNotInSchema},
    {"OTHR", "OTHR", "Other", 1999},
    {"CASS", "CASS", "Cassette", 1999},
    {"SSR", "", "Solid State Recorder"},
    {"MD", "", "Magnetic Disk"},
    {"N", "", "None"},
});
constexpr auto kMediaLocations = std::to_array<Choice>({
    {"I", "Internal", "Internal"},
    {"E", "External", "External"},
    {"B", "Both Internal And External", "Both Internal And External"},
});
constexpr auto kBusSpeeds = std::to_array<Choice>({
    {"AUTO", "AUTO", "Auto"},
    {"S100", "S100", "S100"},
    {"S200", "S200", "S200"},
    {"S400", "S400", "S400"},
    {"S800", "S800", "S800"},
    {"S1600", "S1600", "S1600"},
    {"S3200", "S3200", "S3200"},
});
constexpr auto kReelDiameters = std::to_array<Choice>({
    {"10.5", "10.5", "10.5"},
    {"12.65", "12.65", "12.65", 1999},
    {"14.0", "14.0", "14.0"},
    // The text of this one is broken, and is read and written as such.
    {.value = "15.0", .text = "15.0", .xml = "`5.0", .schema = "15.0", .isRead = false},
    {"16.0", "16.0", "16.0"},
    {"19.0", "19.0", "19.0", 1999},
    {.value = "OTHER", .text = "OTHER", .xml = "Other", .isRead = false},
});
constexpr auto kTrackKinds = std::to_array<Choice>({
    {"LO", "LO - Longitudinal", "Longitudinal"},
    {.value = "RO", .text = "RO - Rotary", .xml = "Rotary", .isRead = false},
});
constexpr auto kDensities = std::to_array<Choice>({
    {"IM", "IM - Intermediate", "Intermediate Band"},
    {"WB", "WB - Wideband", "Wide Band"},
    {"DD", "DD - Double Density", "Double Density"},
    {.value = "OTH", .text = "OTHER", .xml = "Other", .lastEdition = 1996, .schema = kNotInSchema},
    {"OT", "OTHER", "Other", 1999},
});
constexpr auto kYesNo = std::to_array<Choice>({
    {"Y", "Yes", "Yes"},
    {"N", "No", "No"},
});
constexpr auto kIndexTypes = std::to_array<Choice>({
    {"T", "Time", "Time"},
    {"C", "Count", "Count"},
});

constexpr auto kHeadFields = std::to_array<Field>({
    {.code = "ID", .limit = 32, .element = "../@Name", .refersTo = Refers::Source},
    {.code = "RID", .label = "Identification:", .page = "Tape1", .limit = 32, .element = "ID"},
    {.code = "R1", .label = "Description:", .page = "Tape1", .limit = 32, .element = "Description"},
    {.code = "TC1",
     .label = "Type:",
     .page = "Tape2",
     .limit = 4,
     .kind = FieldKind::Choice,
     .element = "Characteristics/Type",
     .choices = kMediaTypes},
    {.code = "TC2",
     .label = "Manufacturer:",
     .page = "Tape2",
     .limit = 8,
     .element = "Characteristics/Manufacturer"},
    {.code = "TC3",
     .label = "Media Code:",
     .page = "Tape2",
     .limit = 8,
     .element = "Characteristics/Code"},
    {.code = "RML",
     .label = "Media Location:",
     .page = "Tape2",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2011,
     .element = "Characteristics/MediaLocation",
     .choices = kMediaLocations},
    {.code = "ERBS",
     .label = "RMM Bus Speed:",
     .page = "Tape2",
     .limit = 5,
     .kind = FieldKind::Choice,
     .firstEdition = 2011,
     .element = "Characteristics/ExternalRMMBusSpeed",
     .choices = kBusSpeeds},
    {.code = "TC4",
     .label = "Width:",
     .page = "Tape2",
     .limit = 4,
     .element = "Characteristics/Width"},
    {.code = "TC5",
     .label = "Reel Diameter:",
     .page = "Tape2",
     .limit = 5,
     .kind = FieldKind::Choice,
     .element = "Characteristics/Housing",
     .choices = kReelDiameters},
    {.code = "TT",
     .label = "Type Of Tracks:",
     .page = "Tape2",
     .limit = 2,
     .kind = FieldKind::Choice,
     .firstEdition = 1999,
     .element = "Characteristics/TypeOfTracks",
     .choices = kTrackKinds},
    {.code = "N",
     .label = "Number Of Tracks:",
     .page = "Tape2",
     .limit = 2,
     .kind = FieldKind::Count,
     .element = "Characteristics/NumberOfTracksOrChannels"},
    {.code = "TC6",
     .label = "Record Speed:",
     .page = "Tape2",
     .limit = 4,
     .element = "Characteristics/RecordSpeed"},
    {.code = "TC7",
     .label = "Density:",
     .page = "Tape2",
     .limit = 2,
     .kind = FieldKind::Choice,
     .element = "Characteristics/DataPackingDensity",
     .choices = kDensities,
     .limit1996 = 3},
    {.code = "TC8",
     .label = "Tape Rewound?",
     .page = "Tape2",
     .limit = 1,
     .kind = FieldKind::Choice,
     .element = "Characteristics/Rewound",
     .choices = kYesNo},
    {.code = "NSB",
     .label = "Number Of Source Bits:",
     .page = "Tape2",
     .limit = 2,
     .firstEdition = 2005,
     .element = "Characteristics/NumberOfSourceBits"},
    {.code = "RI1",
     .label = "Manufacturer:",
     .page = "Tape3",
     .element = "RecorderReproducerInfo/Manufacturer"},
    {.code = "RI2", .label = "Model:", .page = "Tape3", .element = "RecorderReproducerInfo/Model"},
    {.code = "RI3",
     .label = "Original Tape:",
     .page = "Tape3",
     .limit = 1,
     .element = "RecorderReproducerInfo/OriginalRecording",
     .elementSchema = kNotInSchema},
    {.code = "RI4",
     .label = "Date/Time Created:",
     .page = "Tape4",
     .limit = 19,
     .kind = FieldKind::DateTime,
     .element = "RecorderReproducerInfo/OriginalRecordingDateAndTime",
     .limit1996 = 17},
    {.code = "POC1",
     .label = "Name:",
     .box = "Point Of Contact",
     .page = "Tape4",
     .limit = 24,
     .element = "RecorderReproducerInfo/CreatingOrganizationPointOfContact/Name"},
    {.code = "POC2",
     .label = "Agency:",
     .box = "Point Of Contact",
     .page = "Tape4",
     .limit = 48,
     .element = "RecorderReproducerInfo/CreatingOrganizationPointOfContact/Agency"},
    {.code = "POC3",
     .label = "Address:",
     .box = "Point Of Contact",
     .page = "Tape4",
     .limit = 48,
     .element = "RecorderReproducerInfo/CreatingOrganizationPointOfContact/Address"},
    {.code = "POC4",
     .label = "Phone:",
     .box = "Point Of Contact",
     .page = "Tape4",
     .limit = 20,
     .element = "RecorderReproducerInfo/CreatingOrganizationPointOfContact/Telephone"},
    {.code = "RI5",
     .label = "Date Of Dub:",
     .page = "Tape5",
     .limit = 19,
     .kind = FieldKind::DateTime,
     .element = "RecorderReproducerInfo/DateAndTimeOfCopy",
     .limit1996 = 17,
     .kindRead = FieldKind::Date},
    {.code = "DPOC1",
     .label = "Name:",
     .box = "Point Of Contact",
     .page = "Tape5",
     .limit = 24,
     .element = "RecorderReproducerInfo/CopyingOrganizationPointOfContact/Name"},
    {.code = "DPOC2",
     .label = "Agency:",
     .box = "Point Of Contact",
     .page = "Tape5",
     .limit = 48,
     .element = "RecorderReproducerInfo/CopyingOrganizationPointOfContact/Agency"},
    {.code = "DPOC3",
     .label = "Address:",
     .box = "Point Of Contact",
     .page = "Tape5",
     .limit = 48,
     .element = "RecorderReproducerInfo/CopyingOrganizationPointOfContact/Address"},
    {.code = "DPOC4",
     .label = "Phone:",
     .box = "Point Of Contact",
     .page = "Tape5",
     .limit = 20,
     .element = "RecorderReproducerInfo/CopyingOrganizationPointOfContact/Telephone"},
    {.code = "RI6",
     .label = "Recorder Serial Number:",
     .page = "Tape3",
     .limit = 64,
     .firstEdition = 2009,
     .element = "RecorderReproducerInfo/SerialNumber",
     .codeToXml = "RI9",
     .codeFromXml = "RI9",
     .elementSchema = kNotInSchema},
    {.code = "RI7",
     .label = "Recorder Firmware Revision:",
     .page = "Tape3",
     .limit = 256,
     .firstEdition = 2009,
     .element = "RecorderReproducerInfo/FirmwareRevision",
     .codeToXml = "RI10",
     .codeFromXml = "RI10",
     .elementSchema = kNotInSchema},
});
constexpr auto kMiddleFields = std::to_array<Field>({
    {.code = "UD\\TK1",
     .label = "User Defined Channel ID:",
     .page = "Tape11",
     .firstEdition = 2011,
     .element = "DataPacket/UserDefinedChannelID"},
    {.code = "EV\\E",
     .label = "Recording Events Enabled:",
     .page = "Tape6",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2005,
     .element = "RecordingEventDefinitions/Enabled",
     .choices = track::kTrueFalse,
     .missing = "F"},
    {.code = "EV\\TK1",
     .label = "Recording Events Channel ID:",
     .page = "Tape6",
     .firstEdition = 2011,
     .element = "RecordingEventDefinitions/ChannelID"},
});
constexpr auto kIndexFields = std::to_array<Field>({
    {.code = "IDX\\E",
     .label = "Recording Index Enabled:",
     .page = "Tape7",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2005,
     .element = "RecordingEventDefinitions/RecordingIndex/Enabled",
     .choices = track::kTrueFalse,
     .missing = "F"},
    {.code = "IDX\\TK1",
     .label = "Recording Index Channel ID:",
     .page = "Tape7",
     .firstEdition = 2011,
     .element = "RecordingEventDefinitions/RecordingIndex/ChannelID"},
    {.code = "IDX\\IT",
     .label = "Recording Index Type:",
     .page = "Tape7",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2005,
     .element = "RecordingEventDefinitions/RecordingIndex/Type",
     .choices = kIndexTypes},
    {.code = "IDX\\ITV",
     .label = "Index Time Value:",
     .page = "Tape7",
     .limit = 8,
     .firstEdition = 2005,
     .element = "RecordingEventDefinitions/RecordingIndex/TimeValue"},
    {.code = "IDX\\ICV",
     .label = "Index Count Value:",
     .page = "Tape7",
     .limit = 4,
     .firstEdition = 2005,
     .element = "RecordingEventDefinitions/RecordingIndex/CountValue"},
});
constexpr auto kCommentFields = std::to_array<Field>({
    {.code = "COM",
     .label = "Comments:",
     .page = "Tape10",
     .kind = FieldKind::Comment,
     .element = "Comments"},
});

using Table = std::span<const Field>;

std::vector<Field> joined(std::initializer_list<Table> tables) {
    std::vector<Field> all;
    for (const auto table : tables) {
        all.insert(all.end(), table.begin(), table.end());
    }
    return all;
}

std::vector<Field> singlesOf(std::initializer_list<Table> tables) {
    auto all = joined(tables);
    std::erase_if(all, [](const Field& field) {
        return !field.list.empty() || governsRows(field) || field.bridgeOnly;
    });
    return all;
}

}  // namespace

std::span<const RecorderPage> recorderPages() {
    return kPages;
}

std::span<const Field> recorderFieldsBeforeTracks() {
    static const auto fields =
        joined({kHeadFields, recorder::moduleFields(), recorder::mediaFields(), kMiddleFields,
                recorder::eventFields(), recorder::eventMeasurementFields(), kIndexFields});
    return fields;
}

std::span<const Field> recorderFieldsBehindTracks() {
    static const auto fields = joined({recorder::referenceFields(), kCommentFields});
    return fields;
}

std::span<const Field> recorderSingleFields() {
    static const auto fields =
        singlesOf({recorderFieldsBeforeTracks(), recorderFieldsBehindTracks()});
    return fields;
}

std::span<const Field> recorderColumns(std::string_view count) {
    for (const auto table :
         {recorder::moduleFields(), recorder::mediaFields(), recorder::eventFields(),
          recorder::eventMeasurementFields(), recorder::referenceFields()}) {
        if (table.front().code == count) {
            return table.subspan(1);
        }
    }
    return {};
}

std::span<const Field> recorderVocabulary() {
    static const auto fields = [] {
        auto all = joined({recorderFieldsBeforeTracks(), trackFields()});
        for (const auto& type : channelTypes()) {
            all.insert(all.end(), type.fields.begin(), type.fields.end());
        }
        const auto rest = joined({recorderFieldsBehindTracks(), recorderBridgeFields()});
        all.insert(all.end(), rest.begin(), rest.end());
        return all;
    }();
    return fields;
}

}  // namespace kavu
