// The details of tracks that record PCM streams, analog and discrete measurements.
#include "vocabulary/RTrackTables.h"

namespace kavu {

namespace {

constexpr auto kPcmFormats = std::to_array<Choice>({
    {"0", "Format 0 (Reserved)", "Format 0 (Reserved)"},
    {"1", "Format 1 (IRIG 106 Ch 4/8)", "Format 1 (IRIG 106 Ch 4/8)"},
});
constexpr auto kPcmPackings = std::to_array<Choice>({
    {"UN", "Unpacked", "Unpacked"},
    {"PFS", "Packed With Frame Sync", "Packed With Frame Sync"},
    {"TM", "Throughput Mode", "Throughput Mode"},
});
constexpr auto kClockEdges = std::to_array<Choice>({
    {"0", "0 Degrees", "0 Degrees"},
    {"180", "180 Degrees", "180 Degrees"},
});
constexpr auto kSignalTypes = std::to_array<Choice>({
    {"SE", "Single Ended", "Single Ended"},
    {"DIFF", "Differential", "Differential"},
    {"RS422", "RS-422 Standard Differential", "RS-422 Standard Differential"},
    {"TTL", "Single Ended With TTL", "Single Ended With TTL"},
});
constexpr auto kTerminations = std::to_array<Choice>({
    {"LOW-Z", "Low-Z", "Low-Z"},
    {"HIGH-Z", "High-Z", "High-Z"},
});
constexpr auto kPcmVideoFormats = std::to_array<Choice>({
    {"NONE", "NONE", "None"},
    {"MPEG1", "MPEG1", "MPEG1"},
    {"MPEG2", "MPEG2", "MPEG2"},
    {"H261", "H261", "H261"},
    {"WAVE", "WAVE", "WAVE"},
    {"OTHER", "OTHER", "Other"},
});
constexpr auto kOverwriteTypes = std::to_array<Choice>({
    {"MF", "Minor Frame", "Minor Frame"},
    {"SM", "Selected Measurement", "Selected Measurement"},
    {"B", "Both", "Both"},
});
constexpr auto kAnalogFormats = std::to_array<Choice>({
    {"0", "Format 0 (Reserved)", "Format 0 (Reserved)"},
    {"1", "Format 1 (Analog Data)", "Format 1 (Analog Data)"},
});
constexpr auto kAnalogPackings = std::to_array<Choice>({
    {"YES", "Packed", "Packed"},
    {"NO", "Unpacked", "Unpacked"},
});
constexpr auto kCouplings = std::to_array<Choice>({
    {"A", "AC", "AC"},
    {"D", "DC", "DC"},
});
constexpr auto kNumberFormats = std::to_array<Choice>({
    {"1", "1's Complement", "One's Complement"},
    {"2", "2's Complement", "Two's Complement"},
    {"F", "Floating Point", "IEEE 754 Single Precision"},
    {"O", "Other", "Other"},
    {"3", "", "Sign and Magnitude Binary (+=0)"},
    {"4", "", "Sign and Magnitude Binary (+=1)"},
    {"B", "", "Offset Binary"},
    {"U", "", "Unsigned Binary"},
});
constexpr auto kInputTypes = std::to_array<Choice>({
    {"S", "Single Ended", "Single Ended"},
    {"D", "Differential", "Differential"},
});
constexpr auto kAudioPresences = std::to_array<Choice>({
    {"Y", "Audio Present", "Audio Present"},
    {"N", "Audio Not Present", "Audio Not Present"},
});
constexpr auto kAudioFormats = std::to_array<Choice>({
    {"RAW", "RAW", "Raw"},
    {"WAV", "WAV", "WAV"},
    {"LPCM", "LPCM", "LPCM"},
    {"AC3", "AC3", "AC3"},
    {"PRED", "Pre-D", "PreD"},
    {"PSTD", "Post-D", "PstD"},
    {"O", "Other", "Other"},
});
constexpr auto kDiscreteFormats = std::to_array<Choice>({
    {"0", "Format 0 (Reserved)", "Format 0 (Reserved)"},
    {"1", "Format 1 (Discrete Data)", "Format 1 (Discrete Data)"},
});
constexpr auto kDiscreteModes = std::to_array<Choice>({
    {"EV", "Event Mode", "Event Mode"},
    {"SAMP", "Sample Mode", "Sample Mode"},
});

constexpr auto kPcm = track::detailsOf(
    "PCM Input",
    std::to_array<Field>({
        track::kDataLink,
        {.code = "PDTF-n",
         .label = "Data Type Format",
         .element = "Data/PcmDataTypeAttributes/DataTypeFormat",
         .choices = kPcmFormats,
         .prompt = "Enter Data Type Format"},
        {.code = "PDP-n",
         .label = "Data Packing Option",
         .element = "Data/PcmDataTypeAttributes/DataPackingOption",
         .choices = kPcmPackings,
         .prompt = "Enter Data Packing Option"},
        {.code = "ICE-n",
         .label = "Input Clock Edge",
         .firstEdition = 2007,
         .element = "Data/PcmDataTypeAttributes/InputClockEdge",
         .choices = kClockEdges,
         .prompt = "Enter Input Clock Edge"},
        {.code = "IST-n",
         .label = "Input Signal Type",
         .firstEdition = 2007,
         .element = "Data/PcmDataTypeAttributes/InputSignalType",
         .choices = kSignalTypes,
         .prompt = "Enter Input Signal Type"},
        {.code = "ITH-n",
         .label = "Input Threshold",
         .limit = 5,
         .firstEdition = 2007,
         .element = "Data/PcmDataTypeAttributes/InputThreshold",
         .prompt = "Enter Input Threshold"},
        {.code = "ITM-n",
         .label = "Input Termination",
         .firstEdition = 2007,
         .element = "Data/PcmDataTypeAttributes/InputTermination",
         .choices = kTerminations,
         .prompt = "Enter Input Termination"},
        {.code = "PTF-n",
         .label = "Video Type Format",
         .element = "Data/PcmDataTypeAttributes/VideoTypeFormat",
         .choices = kPcmVideoFormats,
         .prompt = "Enter Type Format"},
        {.code = "MFF\\E-n",
         .label = "Minor Frame Filtering Enabled",
         .firstEdition = 2009,
         .element = "Data/PcmDataTypeAttributes/MinorFrameFilteringEnabled",
         .choices = track::kTrueFalse,
         .prompt = "Enter Enabled Status"},
        {.code = "POF\\E-n",
         .label = "Post Process Overwite/Filter Enabled",
         .firstEdition = 2009,
         .element = "Data/PcmDataTypeAttributes/PostProcessOverwriteAndFiltering/Enabled",
         .choices = track::kTrueFalse,
         .prompt = "Enter Enabled Status"},
        {.code = "POF\\T-n",
         .label = "Post Process Overwrite/Filter Type",
         .firstEdition = 2009,
         .element = "Data/PcmDataTypeAttributes/PostProcessOverwriteAndFiltering/Type",
         .choices = kOverwriteTypes,
         .prompt = "Enter Enabled Type"},
    }));
constexpr auto kAnalog = track::detailsOf(
    "Analog Input",
    std::to_array<Field>({
        {.code = "ATF-n",
         .label = "Analog Data Type Format",
         .firstEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/DataTypeFormat",
         .choices = kAnalogFormats,
         .prompt = "Enter Data Type Format"},
        {.code = "ADP-n",
         .label = "Data Packing Option",
         .element = "Data/AnalogDataTypeAttributes/DataPackingOption",
         .choices = kAnalogPackings,
         .prompt = "Enter Data Packing Option"},
        {.code = "ASR-n",
         .label = "Sample Rate",
         .element = "Data/AnalogDataTypeAttributes/SampleRate",
         .prompt = "Enter Sample Rate (samples per sec)"},
        {.code = "ACH\\N-n", .kind = FieldKind::Count},
        {.code = "AMN-n-m",
         .label = "Measurement",
         .element = "Data/AnalogDataTypeAttributes/Channel/MeasurementName",
         .prompt = "Enter Measurement Name"},
        {.code = "ADL-n-m",
         .label = "Data Length",
         .element = "Data/AnalogDataTypeAttributes/Channel/DataLength",
         .prompt = "Enter Data Length"},
        {.code = "AMSK-n-m",
         .label = "Bit Mask",
         .element = "Data/AnalogDataTypeAttributes/Channel/BitMask",
         .prompt = "Enter BitMask"},
        {.code = "AMTO-n-m",
         .label = "Measurement Transfer Order",
         .element = "Data/AnalogDataTypeAttributes/Channel/MeasurementTransferOrder",
         .choices = track::kTransferOrders,
         .prompt = "Select Measurement Transfer Order"},
        {.code = "ASF-n-m",
         .label = "Sample Factor",
         .element = "Data/AnalogDataTypeAttributes/Channel/SampleFactor",
         .prompt = "Select Sample Factor"},
        {.code = "ASBW-n-m",
         .label = "Filter Bandwidth",
         .firstEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/Channel/SampleFilter3dbBandwidth"},
        {.code = "ACP-n-m",
         .label = "AC/DC Coupling",
         .firstEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/Channel/Coupling",
         .choices = kCouplings},
        {.code = "AII-n-m",
         .label = "Recorder Input Impedance",
         .firstEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/Channel/RecorderInputImpedance"},
        {.code = "AGI-n-m",
         .label = "Input Channel Gain",
         .firstEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/Channel/InputChannelGain"},
        {.code = "AFSI-n-m",
         .label = "Input Full Scale Range",
         .firstEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/Channel/InputFullScaleRange"},
        {.code = "AOVI-n-m",
         .label = "Input Offset Voltage",
         .firstEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/Channel/InputOffsetVoltage"},
        {.code = "ALSV-n-m", .label = "LSB Value", .firstEdition = 2007, .lastEdition = 2007},
        {.code = "AECS-n-m", .label = "EUC Slope", .firstEdition = 2007, .lastEdition = 2007},
        {.code = "AECO-n-m", .label = "EUC Offset", .firstEdition = 2007, .lastEdition = 2007},
        {.code = "AECU-n-m", .label = "EUC Units", .firstEdition = 2007, .lastEdition = 2007},
        {.code = "AF-n-m",
         .label = "Format",
         .firstEdition = 2007,
         .lastEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/Channel/RecordedAnalogFormat",
         .choices = kNumberFormats},
        {.code = "AIT-n-m",
         .label = "Input Type",
         .firstEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/Channel/InputType",
         .choices = kInputTypes},
        {.code = "AV-n-m",
         .label = "Audio",
         .firstEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/Channel/Audio",
         .choices = kAudioPresences},
        {.code = "AVF-n-m",
         .label = "Audio Format",
         .firstEdition = 2007,
         .element = "Data/AnalogDataTypeAttributes/Channel/AudioFormat",
         .choices = kAudioFormats},
    }));
constexpr auto kDiscrete = track::detailsOf(
    "Discrete Input",
    std::to_array<Field>({
        {.code = "DTF-n",
         .label = "Discrete Data Type Format",
         .firstEdition = 2007,
         .element = "Data/DiscreteDataTypeAttributes/DataTypeFormat",
         .choices = kDiscreteFormats,
         .prompt = "Enter Data Type Format"},
        {.code = "DMOD-n",
         .label = "Discrete Mode",
         .element = "Data/DiscreteDataTypeAttributes/DiscreteMode",
         .choices = kDiscreteModes,
         .prompt = "Enter Discrete Mode"},
        {.code = "DSR-n",
         .label = "Sample Rate",
         .element = "Data/DiscreteDataTypeAttributes/SampleRate",
         .prompt = "Enter Sample Rate (samples per sec)"},
        {.code = "NDM\\N-n", .kind = FieldKind::Count},
        {.code = "DMN-n-m",
         .label = "Measurement",
         .element = "Data/DiscreteDataTypeAttributes/Measurement/Name",
         .prompt = "Enter Measurement Name"},
        {.code = "DMSK-n-m",
         .label = "Bit Mask",
         .element = "Data/DiscreteDataTypeAttributes/Measurement/BitMask",
         .prompt = "Enter BitMask"},
        {.code = "DMTO-n-m",
         .label = "Measurement Transfer Order",
         .element = "Data/DiscreteDataTypeAttributes/Measurement/MeasurementTransferOrder",
         .choices = track::kTransferOrders,
         .prompt = "Select Measurement Transfer Order"},
    }));

}  // namespace

std::span<const Field> track::pcmDetails() {
    return kPcm;
}
std::span<const Field> track::analogDetails() {
    return kAnalog;
}
std::span<const Field> track::discreteDetails() {
    return kDiscrete;
}

}  // namespace kavu
