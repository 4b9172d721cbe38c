#include "vocabulary/RTrackFields.h"

#include "core/text/Text.h"
#include "vocabulary/RTrackTables.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr auto kTechniques = std::to_array<Choice>({
    {"FM/FM", "FM/FM", "FM/FM"},
    {"HDDR", "HDDR", "HDDR"},
    {"PRE-D", "PRE-Detection", "Pre-Detection"},
    {"DIRECT", "Direct", "Direct"},
    {"FMWBI", "FM Wideband Group 1", "FM Wide Band Group 1"},
    {"FMWBII", "FM Wideband Group 2", "FM Wide band Group 2"},
    {"FM-IM", "FM Intermediate Band", "FM Intermediate Band"},
    {"FM-NB", "FM Narrow Band", "FM Narrow Band"},
    {"DOUDEN", "Double Density", "Double Density"},
    // XML has a text for RO-K and none for RO-TK.
    {"RO-TK", "Rotary (Single Track)", "", 1999},
    {"RO-MUX", "Rotary (Multiplexed)", "Rotary Multiplexed", 1999},
    {"OTHER", "Other", "Other"},
    {"RO-K", "", "Rotary Single Track"},
    {"SSR", "", "Solid State"},
});
constexpr auto kYesNo = std::to_array<Choice>({
    {"Y", "Yes", "Yes"},
    {"N", "No", "No"},
});
constexpr auto kDirections = std::to_array<Choice>({
    {"FWD", "Forward", "Forward"},
    {"REV", "Reverse", "Reverse"},
});
constexpr auto kTypeChoices = std::to_array<Choice>({
    {"PCMIN", "PCM Input", "PCM Input", 2004},
    {"ANAIN", "Analog Input", "Analog Input", 2004},
    {"DISIN", "Discrete Input", "Discrete Input", 2004},
    {"TIMEIN", "IRIG Time Input", "Time Input", 2004},
    {"VIDIN", "Video Input", "Video Input", 2004},
    {"UARTIN", "UART Input", "UART Input", 2004},
    {"1553IN", "1553 Input", "1553 Input", 2004},
    {"429IN", "ARINC 429 Input", "ARINC-429 Input", 2004},
    {"MSGIN", "Message Data Input", "Message Data Input", 2004},
    {"IMGIN", "Image Data Input", "Image Data Input", 2004},
    {"1394IN", "IEEE-1394 Input", "IEEE 1394 Input", 2007},
    {"PARIN", "Parallel Input", "Parallel Input", 2007},
    {"ETHIN", "Ethernet Input", "Ethernet Input", 2007},
    {"TSPIIN", "TSPI/CTS Input", "TSPI/CTS Input", 2011},
});

constexpr auto kTrackFields = std::to_array<Field>({
    {.code = "TK1-n",
     .label = "Track Number",
     .page = "Tape8",
     .limit = 2,
     .kind = FieldKind::Digits,
     .element = "Data/TrackNumberOrChannelID"},
    {.code = "TK2-n",
     .label = "Recording Technique",
     .page = "Tape8",
     .limit = 6,
     .kind = FieldKind::Choice,
     .element = "Data/RecordingTechnique",
     .choices = kTechniques},
    {.code = "IDDR-n",
     .label = "Input Stream Derandomization",
     .page = "Tape8",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2011,
     .element = "Data/InputStreamDerandomized",
     .choices = kYesNo,
     .missing = "N"},
    {.code = "DSI-n",
     .label = "Data Source ID",
     .page = "Tape8",
     .limit = 32,
     .element = "Data/DataSourceID",
     .refersTo = Refers::OtherSource},
    {.code = "TK3-n",
     .label = "Data Direction",
     .page = "Tape8",
     .limit = 3,
     .kind = FieldKind::Choice,
     .element = "Data/DataDirection",
     .choices = kDirections,
     .missing = "FWD"},
    {.code = "TK4-n",
     .label = "Physical Channel Number",
     .page = "Tape8",
     .limit = 2,
     .kind = FieldKind::Digits,
     .firstEdition = 2007,
     .element = "Data/RecorderPhysicalChannelNumber"},
    {.code = "CHE-n",
     .label = "Channel Enable",
     .page = "Tape8",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = kFirstEditionOfChannelTypes,
     .element = "Data/ChannelEnable",
     .choices = track::kTrueFalse,
     .missing = "F"},
    {.code = "CDT-n",
     .label = "Channel Data Type",
     .page = "Tape8",
     .limit = 6,
     .kind = FieldKind::Choice,
     .firstEdition = kFirstEditionOfChannelTypes,
     .element = "Data/ChannelDataType",
     .choices = kTypeChoices},
    {.code = "CDLN-n",
     .label = "Data Link Name",
     .page = "Tape8",
     .limit = 32,
     .firstEdition = track::kFirstEditionWithLinks,
     .element = "Data/ChannelDataLinkName",
     .refersTo = Refers::Link},
});

std::array<ChannelType, kTypeChoices.size()> makeTypes() {
    // In the order of the choices of `CDT`.
    std::array<ChannelType, kTypeChoices.size()> types = {{
        {.fields = track::pcmDetails(), .linkKey = "PDLN"},
        {.fields = track::analogDetails(),
         .itemName = "Measurement",
         .addText = "Add Measurement",
         .promptsItems = true},
        {.fields = track::discreteDetails(),
         .itemName = "Measurement",
         .addText = "Add Measurement",
         .promptsItems = true},
        {.fields = track::timeDetails()},
        {.fields = track::videoDetails()},
        {.fields = track::uartDetails(), .itemName = "Sub Channel", .addText = "Add SubChannel"},
        {.fields = track::bus1553Details(),
         .itemName = "Message Filtering Definition",
         .addText = "Add Filter",
         .linkKey = "BDLN"},
        {.fields = track::arinc429Details(),
         .itemName = "Sub Channel",
         .addText = "Add SubChannel",
         .promptsItems = true,
         .linkKey = "BDLN"},
        {.fields = track::messageDetails(),
         .itemName = "Sub Channel",
         .addText = "Add SubChannel",
         .promptsItems = true},
        {.fields = track::imageDetails()},
        {.fields = track::ieee1394Details()},
        {.fields = track::parallelDetails()},
        {.fields = track::ethernetDetails(), .itemName = "Network", .addText = "Add Network"},
        {.fields = track::tspiDetails()},
    }};
    for (std::size_t i = 0; i < types.size(); ++i) {
        types[i].value = kTypeChoices[i].value;
        types[i].text = kTypeChoices[i].text;
    }
    return types;
}

}  // namespace

std::span<const Field> trackFields() {
    return kTrackFields;
}

std::span<const ChannelType> channelTypes() {
    static const auto types = makeTypes();
    return types;
}

const ChannelType* channelType(std::string_view value, int edition) {
    for (std::size_t i = 0; i < kTypeChoices.size(); ++i) {
        if (isKnownIn(edition, kTypeChoices[i]) && equalsIgnoreCase(kTypeChoices[i].value, value)) {
            return &channelTypes()[i];
        }
    }
    return nullptr;
}

bool isHiddenDetail(const Field& field, int edition) {
    // The video format of a PCM track is kept in all editions, but cannot be edited in
    // editions that do not have it.
    return field.code == "PTF-n" && edition < track::kFirstEditionWithLinks;
}

}  // namespace kavu
