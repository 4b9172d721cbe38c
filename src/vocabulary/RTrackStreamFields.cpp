// The details of tracks that record time, video, serial lines, images and IEEE-1394.
#include "vocabulary/RTrackTables.h"

namespace kavu {

namespace {

constexpr auto kTimeDataFormats = std::to_array<Choice>({
    {"0", "Format 0 (Reserved)", "Format 0 (Reserved)"},
    {"1", "Format 1 (Time Data)", "Format 1 (Time Data)"},
});
constexpr auto kTimeFormats = std::to_array<Choice>({
    {"A", "IRIG-A", "IRIG A"},
    {"B", "IRIG-B", "IRIG B"},
    {"G", "IRIG-G", "IRIG G"},
    {"I", "Internal", "Internal"},
    {"N", "Native GPS Time", "Native GPS Time"},
    {"U", "UTC Time From GPS", "UTC Time From GPS"},
    {"X", "None", "None"},
});
constexpr auto kTimeSources = std::to_array<Choice>({
    {"I", "Internal", "Internal"},
    {"E", "External", "External"},
    {"R", "Internal From RMM", "Internal From RMM"},
    {"X", "None", "None"},
});
constexpr auto kVideoFormats = std::to_array<Choice>({
    {"0", "Format 0 (MPEG-2/H.264)", "Format 0 (MPEG-2/H.264)"},
    {"1", "Format 1 (MPEG-2 ISO 13818)", "Format 1 (MPEG-2 ISO 13818)"},
    {"2", "Format 2 (MPEG-4 ISO 14496)", "Format 2 (MPEG-4 ISO 14496)"},
});
constexpr auto kXon2Formats = std::to_array<Choice>({
    {"0", "2ON2 (MPEG-2)", "2ON2 (MPEG-2)"},
    {"1", "264ON2 (H.264)", "264ON2 (H.264)"},
});
constexpr auto kVideoSignals = std::to_array<Choice>({
    {"0", "Auto Detect", "Auto Detect"},
    {"1", "Composite", "Composite"},
    {"2", "YUV", "YUV"},
    {"3", "S-Video", "S-Video"},
    {"4", "DVI", "DVI"},
    {"5", "RGB", "RGB"},
    {"6", "SDI", "SDI"},
    {"7", "VGA", "VGA"},
});
constexpr auto kVideoStandards = std::to_array<Choice>({
    {"0", "Auto Detect", "Auto Detect"},
    {"1", "NTSC", "NTSC"},
    {"2", "PAL", "PAL"},
    {"3", "ATSC", "ATSC"},
    {"4", "DVB", "DVB"},
    {"5", "ISDB", "ISDB"},
    {"6", "SECAM", "SECAM"},
});
constexpr auto kOverlayFormats = std::to_array<Choice>({
    {"DT", "Day And Time", "Day And Time"},
    {"TO", "Time Only", "Time Only"},
    {"TM", "Time And Milliseconds", "Time And Milliseconds"},
    {"DTM", "Day, Time And Milliseconds", "Day, Time And Milliseconds"},
});
constexpr auto kOverlayBackgrounds = std::to_array<Choice>({
    {"BOT", "Black On Transparent", "Black On Transparent"},
    {"WOT", "White On Transparent", "White On Transparent"},
    {"BOW", "Black On White", "Black On White"},
    {"WOB", "White On Black", "White On Black"},
});
constexpr auto kAlignments = std::to_array<Choice>({
    {"L", "Little Endian", "Little Endian"},
    {"B", "Big Endian", "Big Endian"},
});
constexpr auto kUartFormats = std::to_array<Choice>({
    {.value = "0",
     .text = "Format 0 (UART Data)",
     .xml = "Format 0 (UART Data)",
     .schema = "Format 0"},
    {.value = "1", .schema = "Format 1"},
});
constexpr auto kParities = std::to_array<Choice>({
    {"O", "Odd", "Odd"},
    {"E", "Even", "Even"},
    {"N", "None", "None"},
});
constexpr auto kStopBits = std::to_array<Choice>({
    {"0", "1.0", "1.0"},
    {"1", "1.5", "1.5"},
    {"2", "2.0", "2.0"},
});
constexpr auto kSerialInterfaces = std::to_array<Choice>({
    {"0", "Other", "Other"},
    {"1", "RS-232", "RS-232"},
    {"2", "RS-422", "RS-422"},
    {"3", "RS-485", "RS-485"},
    {"4", "TTL", "TTL"},
});
constexpr auto kImageFormats = std::to_array<Choice>({
    {"0", "Format 0 (Image)", "Format 0 (Image)"},
    {"1", "Format 1 (Still Imagery)", "Format 1 (Still Imagery)"},
});
constexpr auto kStillImageTypes = std::to_array<Choice>({
    {"0", "NITF", "NITF"},
    {"1", "JPEG", "JPEG"},
    {"2", "JPEG2", "JPEG2"},
    {"3", "PNG", "PNG"},
});
constexpr auto kIeee1394Formats = std::to_array<Choice>({
    {"0", "Format 0 (IEEE-1394 Trans)", "Format 0 (IEEE-1394 Trans)"},
    {"1", "Format 1 (IEEE-1394 Phy)", "Format 1 (IEEE-1394 Phy)"},
});

constexpr auto kTime = track::detailsOf(
    "IRIG Time Input", std::to_array<Field>({
                           {.code = "TTF-n",
                            .label = "Data Type Format",
                            .firstEdition = 2007,
                            .element = "Data/TimeDataTypeAttributes/DataTypeFormat",
                            .choices = kTimeDataFormats,
                            .prompt = "Enter Data Type Format"},
                           {.code = "TFMT-n",
                            .label = "Time Format",
                            .element = "Data/TimeDataTypeAttributes/TimeFormat",
                            .choices = kTimeFormats,
                            .prompt = "Enter Time Format"},
                           {.code = "TSRC-n",
                            .label = "Time Source",
                            .firstEdition = 2005,
                            .element = "Data/TimeDataTypeAttributes/TimeSource",
                            .choices = kTimeSources,
                            .prompt = "Enter Time Source"},
                       }));
constexpr auto kVideo = track::detailsOf(
    "Video Input", std::to_array<Field>({
                       {.code = "VTF-n",
                        .label = "Video Data Type Format",
                        .firstEdition = 2007,
                        .element = "Data/VideoDataTypeAttributes/DataTypeFormat",
                        .choices = kVideoFormats,
                        .prompt = "Enter Data Type Format"},
                       {.code = "VXF-n",
                        .label = "MPEG-2 Channel XON2 Format",
                        .firstEdition = 2007,
                        .element = "Data/VideoDataTypeAttributes/MPEG2ChannelXON2Format",
                        .choices = kXon2Formats,
                        .prompt = "Enter MPEG-2 Format"},
                       {.code = "VST-n",
                        .label = "Video Signal Type",
                        .firstEdition = 2007,
                        .element = "Data/VideoDataTypeAttributes/SignalType",
                        .choices = kVideoSignals,
                        .prompt = "Enter Video Signal Type"},
                       {.code = "VSF-n",
                        .label = "Video Signal Format Type",
                        .firstEdition = 2007,
                        .element = "Data/VideoDataTypeAttributes/SignalFormatType",
                        .choices = kVideoStandards,
                        .prompt = "Enter Video Signal Format"},
                       {.code = "CBR-n",
                        .label = "Video Constant Bit Rate",
                        .limit = 10,
                        .firstEdition = 2007,
                        .element = "Data/VideoDataTypeAttributes/ConstantBitRate",
                        .prompt = "Enter Constant Bit Rate"},
                       {.code = "VBR-n",
                        .label = "Video Variable Peak Bit Rate",
                        .limit = 10,
                        .firstEdition = 2007,
                        .element = "Data/VideoDataTypeAttributes/VariablePeakBitRate",
                        .prompt = "Enter Variable Peak Bit Rate"},
                       {.code = "VED-n",
                        .label = "Video Encoding Delay",
                        .element = "Data/VideoDataTypeAttributes/EncodingDelay",
                        .prompt = "Enter Video Encoding Delay"},
                       {.code = "VCO\\OE-n",
                        .label = "Overlay Enabled",
                        .firstEdition = 2009,
                        .element = "Data/VideoDataTypeAttributes/Overlay/Enabled",
                        .choices = track::kTrueFalse,
                        .prompt = "Enter Enabled Value"},
                       {.code = "VCO\\X-n",
                        .label = "Overlay X Position",
                        .firstEdition = 2009,
                        .element = "Data/VideoDataTypeAttributes/Overlay/XPosition",
                        .prompt = "Enter Overlay Position"},
                       {.code = "VCO\\Y-n",
                        .label = "Overlay Y Position",
                        .firstEdition = 2009,
                        .element = "Data/VideoDataTypeAttributes/Overlay/YPosition",
                        .prompt = "Enter Overlay Position"},
                       {.code = "VCO\\OET-n",
                        .label = "Overlay Event Toggle Enabled",
                        .firstEdition = 2009,
                        .element = "Data/VideoDataTypeAttributes/Overlay/EventToggleEnabled",
                        .choices = track::kTrueFalse,
                        .prompt = "Enter Enabled Value"},
                       {.code = "VCO\\OLF-n",
                        .label = "Overlay Format",
                        .firstEdition = 2009,
                        .element = "Data/VideoDataTypeAttributes/Overlay/Format",
                        .choices = kOverlayFormats,
                        .prompt = "Enter Format"},
                       {.code = "VCO\\OBG-n",
                        .label = "Overlay Background",
                        .firstEdition = 2009,
                        .element = "Data/VideoDataTypeAttributes/Overlay/Background",
                        .choices = kOverlayBackgrounds,
                        .prompt = "Enter Background"},
                       {.code = "ASI\\ASL-n",
                        .label = "Analog Audio Channel Input Left",
                        .firstEdition = 2009,
                        .element = "Data/VideoDataTypeAttributes/AudioChannelInput/Left",
                        .prompt = "Enter Channel Input"},
                       {.code = "ASI\\ASR-n",
                        .label = "Analog Audio Channel Input Right",
                        .firstEdition = 2009,
                        .element = "Data/VideoDataTypeAttributes/AudioChannelInput/Right",
                        .prompt = "Enter Channel Input"},
                       {.code = "VDA-n",
                        .label = "Video Data Alignment",
                        .firstEdition = 2009,
                        .element = "Data/VideoDataTypeAttributes/VideoDataAlignment",
                        .choices = kAlignments,
                        .prompt = "Enter Alignment"},
                   }));
constexpr auto kUart = track::detailsOf(
    "UART Input", std::to_array<Field>({
                      {.code = "UTF-n",
                       .label = "UART Data Type Format",
                       .firstEdition = 2007,
                       .element = "Data/UARTDataTypeAttributes/DataTypeFormat",
                       .choices = kUartFormats,
                       .prompt = "Enter Data Type Format"},
                      {.code = "NUS\\N-n",
                       .kind = FieldKind::Count,
                       .firstEdition = 2007,
                       .element = "Data/UARTDataTypeAttributes/SubChannel"},
                      {.code = "USCN-n-m",
                       .label = "Number",
                       .firstEdition = 2007,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/Number",
                       .prompt = "Subchannel Number"},
                      {.code = "UCNM-n-m",
                       .label = "Name",
                       .firstEdition = 2007,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/Name",
                       .prompt = "Subchannel Name",
                       .refersTo = Refers::Link},
                      {.code = "UCR-n-m",
                       .label = "Baud Rate",
                       .firstEdition = 2009,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/BaudRate"},
                      {.code = "UCB-n-m",
                       .label = "Bits Per Word",
                       .firstEdition = 2009,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/BitsPerWord"},
                      {.code = "UCP-n-m",
                       .label = "Parity",
                       .firstEdition = 2009,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/Parity",
                       .choices = kParities},
                      {.code = "UCS-n-m",
                       .label = "Stop Bit",
                       .firstEdition = 2009,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/StopBits",
                       .choices = kStopBits},
                      {.code = "UCIN-n-m",
                       .label = "Interface",
                       .firstEdition = 2009,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/Interface",
                       .choices = kSerialInterfaces},
                      {.code = "UCBS-n-m",
                       .label = "Block Size",
                       .firstEdition = 2009,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/BlockSize"},
                      {.code = "UCSL-n-m",
                       .label = "Sync Word Length",
                       .firstEdition = 2009,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/SyncWordLength"},
                      {.code = "UCSV-n-m",
                       .label = "Sync Value",
                       .firstEdition = 2009,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/BlockSyncValue"},
                      {.code = "UCBR-n-m",
                       .label = "Block Rate",
                       .firstEdition = 2009,
                       .element = "Data/UARTDataTypeAttributes/SubChannel/BlockRate"},
                  }));
constexpr auto kImage = track::detailsOf(
    "Image Data Input", std::to_array<Field>({
                            {.code = "ITF-n",
                             .label = "Data Type Format",
                             .firstEdition = 2007,
                             .element = "Data/ImageDataTypeAttributes/DataTypeFormat",
                             .choices = kImageFormats,
                             .prompt = "Enter Data Type Format"},
                            {.code = "SIT-n",
                             .label = "Still Image Type",
                             .firstEdition = 2007,
                             .element = "Data/ImageDataTypeAttributes/StillImageType",
                             .choices = kStillImageTypes,
                             .prompt = "Enter Still Imagery Type"},
                        }));
constexpr auto kIeee1394 = track::detailsOf(
    "IEEE-1394 Input", std::to_array<Field>({
                           {.code = "IETF-n",
                            .label = "Data Type Format",
                            .firstEdition = 2007,
                            .element = "Data/IEEE1394DataTypeAttributes/DataTypeFormat",
                            .choices = kIeee1394Formats,
                            .prompt = "Enter Data Type Format"},
                       }));

}  // namespace

std::span<const Field> track::timeDetails() {
    return kTime;
}
std::span<const Field> track::videoDetails() {
    return kVideo;
}
std::span<const Field> track::uartDetails() {
    return kUart;
}
std::span<const Field> track::imageDetails() {
    return kImage;
}
std::span<const Field> track::ieee1394Details() {
    return kIeee1394;
}

}  // namespace kavu
