#include "app/shell/HelpTopics.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

struct HelpTopic {
    std::string_view name;  ///< without the number of a page
    HelpPlace place;
};

constexpr auto kTopics = std::to_array<HelpTopic>({
    {"GeneralInfo", {"groups", "General information"}},
    {"RF", {"groups", "Transmission"}},
    {"multiplex_info", {"groups", "Multiplex/Modulation"}},
    {"pam_info", {"groups", "PAM"}},
    {"GENERIC_EDIT", {"groups", "Airborne hardware and vendor information"}},
    {"Tape", {"recorder"}},
    {"PcmInputData", {"pcm-format", "The pages"}},
    {"PcmStreamAttributes", {"pcm-format", "The pages"}},
    {"PcmFrameSyncPattern", {"pcm-format", "The pages"}},
    {"PcmSyncCriteria", {"pcm-format", "The pages"}},
    {"PcmFormatSwitch", {"pcm-format", "The pages"}},
    {"PcmAltTagData", {"pcm-format", "The pages"}},
    {"PcmComments", {"pcm-format", "The pages"}},
    {"PcmMinorFrameFiltering", {"pcm-format", "The pages"}},
    {"IDCounterDialog", {"pcm-format", "ID counters and subframes"}},
    {"Pre_106_11_IDCounterDialog", {"pcm-format", "ID counters and subframes"}},
    {"SubframeDialog", {"pcm-format", "ID counters and subframes"}},
    {"SupercomSubframeDialog", {"pcm-format", "ID counters and subframes"}},
    {"EDIT_ASYNC_FORMAT", {"pcm-format", "Async embedded formats and data merge"}},
    {"TaggedDataDefinitions", {"pcm-format", "Tagged data"}},
    {"TaggedMeasurement", {"pcm-format", "Tagged data"}},
    {"EditDataWord", {"measurements"}},
    {"Pre_106_11_EditDataWord", {"measurements"}},
    {"EditFragmentDefinition", {"measurements", "Location types"}},
    {"EditWordFrameEntry", {"measurements", "Location types"}},
    {"EditMeasurementSectionComment", {"measurements", "Comment and filter list"}},
    {"EditMeasurementFilterList", {"measurements", "Comment and filter list"}},
    {"MajorFrameDisplay", {"display"}},
    {"SMessageStreams", {"stream-data", "The editor of message data"}},
    {"Misc", {"stream-data", "The editor of message data"}},
    {"EditMessageStream", {"stream-data", "The editor of message data"}},
    {"EditMessage", {"stream-data", "The editor of message data"}},
    {"EditMessageField", {"stream-data", "The editor of message data"}},
    {"EditMessageMeasurement", {"stream-data", "The editor of message data"}},
    {"EditMessageLocation", {"stream-data", "The editor of message data"}},
    {"Packet", {"stream-data", "The editor of packets"}},
    {"EditSourcePacket", {"stream-data", "The editor of packets"}},
    {"EditPacketComment", {"stream-data", "The editor of packets"}},
    {"EditPacketMeasurement", {"stream-data", "The editor of packets"}},
    {"EditPacketLocation", {"stream-data", "The editor of packets"}},
    {"1553_select_bus", {"buses", "The window"}},
    {"1553_EDIT_BUS", {"buses", "A bus"}},
    {"1553_EDIT_USER_WORD", {"buses", "A bus"}},
    {"1553_EDIT_TERMINAL", {"buses", "Terminals"}},
    {"1553_COMMENTS", {"buses", "The window"}},
    {"1553_EDIT_MESSAGE", {"buses", "A message"}},
    {"1553_EDIT_MESSAGE3_PRE_", {"buses", "A message"}},
    {"1553_edit_measurement_info", {"buses", "Measurements"}},
    {"1553_edit_measurement_location", {"buses", "Measurements"}},
    {"DataConversion", {"conversions", "The sheet"}},
    {"ConversionDetail", {"conversions", "The details of a conversion"}},
    {"PairSets", {"curve-fitting", "Pair sets in the editor"}},
    {"PCMReports", {"reports", "The window"}},
    {"ReportOptions", {"reports", "Report options"}},
    {"PagePreview", {"reports", "Preview and printing"}},
    {"TextViewer", {"reports", "Reports on the screen"}},
    {"PrintCalibrationReports", {"reports", "Calibration sheets"}},
    {"ViewMultipleMeasurementPlots", {"reports", "Plots of several measurements"}},
    {"TranslatorConfigurationDialog", {"translators"}},
    {"ImportTmatsXml", {"xml", "Import"}},
    {"ExportTmatsXml", {"xml", "Export"}},
    {"Messages", {"editor", "Messages"}},
    {"Options", {"editor", "Options"}},
    {"EDITMEASUREMENTDATABASE", {"database", "Working in it"}},
    {"MDB_PASTE", {"database", "Working in it"}},
    {"MDB_LOCATION", {"database", "Switching it on"}},
    {"MDB_UPDATE", {"database", "Filling a stream"}},
    {"MDB_UPDATE_PREVIEW", {"database", "Filling a stream"}},
    {"IMPORTDATABASE", {"database", "Importing tables"}},
    {"LOAD_IMPORT_PROFILE", {"database", "Importing tables"}},
    {"SAVE_IMPORT_PROFILE", {"database", "Importing tables"}},
});

constexpr std::string_view kDigits = "0123456789";

}  // namespace

HelpPlace helpPlace(std::string_view topic) {
    const auto name = topic.substr(0, topic.find_last_not_of(kDigits) + 1);
    const auto found = std::ranges::find(kTopics, name, &HelpTopic::name);
    return found == kTopics.end() ? HelpPlace{topic} : found->place;
}

}  // namespace kavu
