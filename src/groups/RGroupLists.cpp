// The lists of the recorder group, and what only XML knows of it.
#include "groups/RGroupFields.h"
#include "groups/RTrackTables.h"

#include <array>

namespace kavu {

namespace {

constexpr auto kYesNo = std::to_array<Choice>({
    {"Y", "Yes", "Yes"},
    {"N", "No", "No"},
});
constexpr auto kEventTypes = std::to_array<Choice>({
    {"E", "External", "External"},
    {"D", "Measurement Discrete", "Measurement Discrete"},
    {"L", "Measurement Limit", "Measurement Limit"},
    {"R", "Recorder", "Recorder"},
    {"O", "Other", "Other"},
});
constexpr auto kPriorities = std::to_array<Choice>({
    {"1", "Priority 1", "Priority 1"},
    {"2", "Priority 2", "Priority 2"},
    {"3", "Priority 3", "Priority 3"},
    {"4", "Priority 4", "Priority 4"},
    {"5", "Priority 5", "Priority 5"},
});
constexpr auto kCaptureModes = std::to_array<Choice>({
    {"1", "Mode 1", "Mode 1"},
    {"2", "Mode 2", "Mode 2"},
    {"3", "Mode 3", "Mode 3"},
    {"4", "Mode 4", "Mode 4"},
    {"5", "Mode 5", "Mode 5"},
    {"6", "Mode 6", "Mode 6"},
});
constexpr auto kModificationTypes = std::to_array<Choice>({
    {"1", "", "Time Subset"},
    {"2", "", "Channel Subset"},
    {"3", "", "Time - Channel Subset"},
    {"4", "", "Channel Superset"},
    {"5", "", "Time Subset - Channel Superset"},
    {"6", "", "Filter"},
    {"7", "", "Overwrite"},
});
constexpr auto kSetupSources = std::to_array<Choice>({
    {"R", "", "Setup File On RMM Only"},
    {"C", "", "Command Setup File Only"},
    {"RP", "", "RMM Primary - Command Secondary"},
    {"CP", "", "Command Primary - RMM Secondary"},
});
constexpr auto kControlTypes = std::to_array<Choice>({
    {"0", "", "Stop-Start"},
    {"1", "", "Pause-Resume"},
});

constexpr auto kModuleFields = std::to_array<Field>({
    {.code = "RIM\\N",
     .box = "Modules",
     .page = "Tape3",
     .kind = FieldKind::Count,
     .firstEdition = 2009,
     .rows = kMostModules},
    {.code = "RIMI-n",
     .label = "ID",
     .box = "Modules",
     .page = "Tape3",
     .limit = 64,
     .firstEdition = 2009,
     .element = "RecorderReproducerInfo/Module/ID",
     .list = "RIM\\N"},
    {.code = "RIMS-n",
     .label = "Serial Number",
     .box = "Modules",
     .page = "Tape3",
     .limit = 64,
     .firstEdition = 2009,
     .element = "RecorderReproducerInfo/Module/SerialNumber",
     .list = "RIM\\N"},
    {.code = "RIMF-n",
     .label = "Firmware Revision",
     .box = "Modules",
     .page = "Tape3",
     .limit = 256,
     .firstEdition = 2009,
     .element = "RecorderReproducerInfo/Module/FirmwareRevision",
     .list = "RIM\\N"},
});

constexpr auto kMediaFields = std::to_array<Field>({
    {.code = "RMM\\N",
     .box = "Media",
     .page = "Tape3",
     .kind = FieldKind::Count,
     .firstEdition = 2009,
     .rows = kMostMedia},
    {.code = "RMMID-n",
     .label = "ID",
     .box = "Media",
     .page = "Tape3",
     .limit = 2,
     .firstEdition = 2009,
     .element = "RecorderReproducerInfo/RMM/Identifier",
     .codeToXml = "RIMMID-n",
     .list = "RMM\\N"},
    {.code = "RMMS-n",
     .label = "Serial Number",
     .box = "Media",
     .page = "Tape3",
     .limit = 64,
     .firstEdition = 2009,
     .element = "RecorderReproducerInfo/RMM/SerialNumber",
     .list = "RMM\\N"},
    {.code = "RMMF-n",
     .label = "Firmware Revision",
     .box = "Media",
     .page = "Tape3",
     .limit = 256,
     .firstEdition = 2009,
     .element = "RecorderReproducerInfo/RMM/FirmwareRevision",
     .list = "RMM\\N"},
});

constexpr auto kEventFields = std::to_array<Field>({
    {.code = "EV\\N",
     .page = "Tape6",
     .kind = FieldKind::Count,
     .firstEdition = 2005,
     .rows = kMostEvents},
    {.code = "EV\\ID-n",
     .label = "ID",
     .page = "Tape6",
     .limit = 32,
     .firstEdition = 2005,
     .element = "RecordingEventDefinitions/RecordingEvent/ID",
     .list = "EV\\N",
     .missing = "ID%d"},
    {.code = "EV\\D-n",
     .label = "Description",
     .page = "Tape6",
     .limit = 256,
     .firstEdition = 2005,
     .element = "RecordingEventDefinitions/RecordingEvent/Description",
     .list = "EV\\N"},
    {.code = "EV\\EDP-n",
     .label = "Data Processing Enabled",
     .page = "Tape6",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2011,
     .element = "RecordingEventDefinitions/RecordingEvent/DataProcessingEnabled",
     .choices = track::kTrueFalse,
     .list = "EV\\N"},
    {.code = "EV\\T-n",
     .label = "Type",
     .page = "Tape6",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2005,
     .element = "RecordingEventDefinitions/RecordingEvent/Type",
     .choices = kEventTypes,
     .list = "EV\\N"},
    {.code = "EV\\P-n",
     .label = "Priority",
     .page = "Tape6",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2005,
     .element = "RecordingEventDefinitions/RecordingEvent/Priority",
     .choices = kPriorities,
     .list = "EV\\N"},
    {.code = "EV\\CM-n",
     .label = "Capture Mode",
     .page = "Tape6",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2007,
     .element = "RecordingEventDefinitions/RecordingEvent/EventCaptureMode",
     .choices = kCaptureModes,
     .list = "EV\\N"},
    {.code = "EV\\IC-n",
     .label = "Initial Capture",
     .page = "Tape6",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2007,
     .element = "RecordingEventDefinitions/RecordingEvent/EventInitialCapture",
     .choices = track::kTrueFalse,
     .list = "EV\\N"},
    {.code = "EV\\LC-n",
     .label = "Limit Count",
     .page = "Tape6",
     .limit = 8,
     .firstEdition = 2007,
     .element = "RecordingEventDefinitions/RecordingEvent/LimitCount",
     .list = "EV\\N"},
    {.code = "EV\\MS-n",
     .label = "Trigger Measurement Source",
     .page = "Tape6",
     .limit = 32,
     .firstEdition = 2007,
     .element = "RecordingEventDefinitions/RecordingEvent/TriggerMeasurement/Source",
     .list = "EV\\N"},
    {.code = "EV\\MN-n",
     .label = "Trigger Measurement Name",
     .page = "Tape6",
     .limit = 32,
     .firstEdition = 2007,
     .element = "RecordingEventDefinitions/RecordingEvent/TriggerMeasurement/Name",
     .list = "EV\\N"},
    {.code = "EV\\DLN-n",
     .label = "Processing Measurement Datalink Name",
     .page = "Tape6",
     .firstEdition = 2011,
     .element = "RecordingEventDefinitions/RecordingEvent/EventProcessing/DataLink",
     .list = "EV\\N"},
});

constexpr auto kEventMeasurementFields = std::to_array<Field>({
    {.code = "EV\\PM\\N-n",
     .page = "Tape6",
     .kind = FieldKind::Count,
     .firstEdition = 2011,
     .list = "EV\\N",
     .rows = kMostEventMeasurements},
    {.code = "EV\\PM\\MN-n-m",
     .label = "Measurement Name",
     .page = "Tape6",
     .firstEdition = 2011,
     .element = "RecordingEventDefinitions/RecordingEvent/EventProcessing/Measurement/Name",
     .list = "EV\\PM\\N-n"},
    {.code = "EV\\PM\\PRE-n-m",
     .label = "Pre-Event Duration",
     .page = "Tape6",
     .firstEdition = 2011,
     .element =
         "RecordingEventDefinitions/RecordingEvent/EventProcessing/Measurement/PreEventDuration",
     .list = "EV\\PM\\N-n"},
    {.code = "EV\\PM\\PST-n-m",
     .label = "Post-Event Duration",
     .page = "Tape6",
     .firstEdition = 2011,
     .element =
         "RecordingEventDefinitions/RecordingEvent/EventProcessing/Measurement/PostEventDuration",
     .list = "EV\\PM\\N-n"},
});

constexpr auto kReferenceFields = std::to_array<Field>({
    {.code = "RT\\N", .page = "Tape9", .kind = FieldKind::Count, .rows = kMostReferenceTracks},
    {.code = "RT1-n",
     .label = "Track Number",
     .page = "Tape9",
     .limit = 1,
     .element = "ReferenceTrack/TrackNumber",
     .list = "RT\\N"},
    {.code = "RT2-n",
     .label = "Reference Frequency",
     .page = "Tape9",
     .limit = 6,
     .element = "ReferenceTrack/ReferenceFrequency",
     .list = "RT\\N"},
});

constexpr auto kBridgeFields = std::to_array<Field>({
    {.code = "RI6",
     .kind = FieldKind::Choice,
     .element = "RecorderReproducerInfo/PostProcessModifiedRecording",
     .choices = kYesNo,
     .bridgeOnly = true},
    {.code = "RI7",
     .kind = FieldKind::Choice,
     .element = "RecorderReproducerInfo/PostProcessModificationType",
     .choices = kModificationTypes,
     .bridgeOnly = true},
    {.code = "RI8",
     .kind = FieldKind::DateTime,
     .element = "RecorderReproducerInfo/DateAndTimeOfModification",
     .bridgeOnly = true},
    {.code = "MPOC1",
     .element = "RecorderReproducerInfo/ModifyingOrganizationPOC/Name",
     .bridgeOnly = true},
    {.code = "MPOC2",
     .element = "RecorderReproducerInfo/ModifyingOrganizationPOC/Agency",
     .bridgeOnly = true},
    {.code = "MPOC3",
     .element = "RecorderReproducerInfo/ModifyingOrganizationPOC/Address",
     .bridgeOnly = true},
    {.code = "MPOC4",
     .element = "RecorderReproducerInfo/ModifyingOrganizationPOC/Telephone",
     .bridgeOnly = true},
    {.code = "CRE",
     .kind = FieldKind::Choice,
     .element = "RecorderReproducerInfo/ContinuousRecordingEnabled",
     .choices = track::kTrueFalse,
     .bridgeOnly = true},
    {.code = "RSS",
     .kind = FieldKind::Choice,
     .element = "RecorderReproducerInfo/SetupSource",
     .choices = kSetupSources,
     .bridgeOnly = true},
    {.code = "EV\\IEE",
     .kind = FieldKind::Choice,
     .element = "RecordingEventDefinitions/InternalEventsEnabled",
     .choices = track::kTrueFalse,
     .bridgeOnly = true},
    {.code = "MRC\\E",
     .kind = FieldKind::Choice,
     .element = "RecordingEventDefinitions/RecorderControl/MessageMonitorRecordControlEnabled",
     .choices = track::kTrueFalse,
     .bridgeOnly = true},
    {.code = "MRC\\ID",
     .element = "RecordingEventDefinitions/RecorderControl/ChannelID",
     .bridgeOnly = true},
    {.code = "MRC\\RCT",
     .kind = FieldKind::Choice,
     .element = "RecordingEventDefinitions/RecorderControl/MessageRecordControlType",
     .choices = kControlTypes,
     .bridgeOnly = true},
    {.code = "MRC\\SPM",
     .element = "RecordingEventDefinitions/RecorderControl/StopPauseCommandWord",
     .bridgeOnly = true},
    {.code = "MRC\\SRM",
     .element = "RecordingEventDefinitions/RecorderControl/StartResumeCommandWord",
     .bridgeOnly = true},
});

/// A table whose first row is the count of the others.
template <std::size_t N>
RecorderPart listOf(const std::array<Field, N>& fields) {
    return {std::span<const Field>(fields).subspan(1), fields.data()};
}

}  // namespace

const RecorderPart& moduleList() {
    static const auto list = listOf(kModuleFields);
    return list;
}
const RecorderPart& mediaList() {
    static const auto list = listOf(kMediaFields);
    return list;
}
const RecorderPart& eventList() {
    static const auto list = listOf(kEventFields);
    return list;
}
const RecorderPart& eventMeasurementList() {
    static const auto list = listOf(kEventMeasurementFields);
    return list;
}
const RecorderPart& referenceTrackList() {
    static const auto list = listOf(kReferenceFields);
    return list;
}

std::span<const Field> recorderBridgeFields() {
    return kBridgeFields;
}

}  // namespace kavu
