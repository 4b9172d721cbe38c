// The P group: the rows of a stream's attributes, without its counters, subframes and
// embedded streams. What a row is bound to in the model is defined in `pcm`.
#pragma once

#include "vocabulary/Field.h"
#include "vocabulary/StreamLimits.h"
#include "vocabulary/StreamType.h"

#include <array>
#include <span>
#include <string_view>

namespace kavu {

// Of `Field::page`, and the names of the pages of the sheet.
namespace pcm_page {
inline constexpr char kInputData[] = "PcmInputData";
inline constexpr char kStream[] = "PcmStreamAttributes";
inline constexpr char kSyncPattern[] = "PcmFrameSyncPattern";
inline constexpr char kSyncCriteria[] = "PcmSyncCriteria";
inline constexpr char kFormatSwitch[] = "PcmFormatSwitch";
inline constexpr char kAltTag[] = "PcmAltTagData";
inline constexpr char kComments[] = "PcmComments";
inline constexpr char kFrameFilter[] = "PcmMinorFrameFiltering";
}  // namespace pcm_page

/// Replaces a code where a text is kept in the private record of the comment.
inline constexpr std::string_view kNonStandardCode = "nonStandardCode";

namespace p {

namespace choice {

inline constexpr auto kCodes = std::to_array<Choice>({
    {"NRZ-L", "NRZ-L", "NRZ-L"},
    {"NRZ-M", "NRZ-M", "NRZ-M"},
    {"NRZ-S", "NRZ-S", "NRZ-S"},
    {"BIO-L", "BIO-L", "BIO-L"},
    {"BIO-M", "BIO-M", "BIO-M"},
    {"BIO-S", "BIO-S", "BIO-S"},
    {.value = "DBIO-L", .text = "DBIO-L", .xml = "DBIO-L", .schema = kNotInSchema},
    {.value = "DBIO-S", .text = "DBIO-S", .xml = "DBIO-S", .schema = kNotInSchema},
    {"RNRZ-L", "RNRZ-L", "RNRZ-L"},
    {"OTHER", "OTHER", "Other"},
});
inline constexpr auto kEncryption = std::to_array<Choice>({
    {"E", "Encrypted", "Encrypted"},
    {.value = "U", .text = "Unencrypted", .xml = "Unencrypted", .isRead = false},
});
inline constexpr auto kDirection = std::to_array<Choice>({
    {"N", "Normal", "Normal"},
    {"R", "Reversed", "Reversed"},
});
inline constexpr auto kPolarity = std::to_array<Choice>({
    {"N", "Normal", "Normal"},
    {"I", "Inverted", "Inverted"},
});
inline constexpr auto kYesNo = std::to_array<Choice>({
    {"Y", "Yes", "Yes"},
    {"N", "No", "No"},
});
inline constexpr auto kRandomizer = std::to_array<Choice>({
    {"STD", "STD - Standard", "Standard"},
    {"OTH", "OTHER", "Other"},
    {"N/A", "N/A", "Not Applicable"},
});
// A list was always filled up to the first entry that an edition does not have. So the lists
// of the newest editions end where the older ones do, without what has come in between.
inline constexpr auto kTypes = std::to_array<Choice>({
    {stream_type::kClassOne.stored, "ONE - Class I", "Class 1",
     stream_type::kClassOne.firstEdition},
    {stream_type::kClassTwo.stored, "TWO - Class II", "Class 2",
     stream_type::kClassTwo.firstEdition},
    {stream_type::kBus1553.stored, "1553 Bus", "1553 Bus", stream_type::kBus1553.firstEdition},
    {stream_type::kBus.stored, "BUS - BUS", "Bus", stream_type::kBus.firstEdition},
    {stream_type::kAlternateTag.stored, "ALTD - Alternate Tag & Data", "Alternate Tag And Data",
     stream_type::kAlternateTag.firstEdition},
    {stream_type::kPacket.stored,
     "PKTM - Packet Telemetry",
     {},
     stream_type::kPacket.firstEdition,
     2007},
    {stream_type::kOther.stored, "OTHR - Other", "Other", stream_type::kOther.firstEdition, 2007},
});
inline constexpr auto kParity = std::to_array<Choice>({
    {"EV", "EVEN", "Even"},
    {"OD", "ODD", "Odd"},
    {"NO", "NONE", "None"},
});
inline constexpr auto kWordOrder = std::to_array<Choice>({
    {"M", "MSB", "MSB First"},
    {"L", "LSB", "LSB First"},
});
inline constexpr auto kParityOrder = std::to_array<Choice>({
    {"L", "Leads Word", "Leads Word"},
    {"T", "Trails Word", "Trails Word"},
});
inline constexpr auto kSyncTypes = std::to_array<Choice>({
    {"FPT", "FPT - Fixed Pattern", "Fixed Pattern"},
    {"OTH", "OTHER", "Other"},
});
inline constexpr auto kFilterTypes = std::to_array<Choice>({
    {"IN", "INclusive Filtering", "Inclusive Filtering"},
    {.value = "EX", .text = "EXclusive Filtering", .xml = "Exclusive Filtering", .isRead = false},
});
inline constexpr std::size_t kMostDisagrees = 99;
/// "0" to "99"; two digits are one text.
inline constexpr std::string_view kNumbers =
    "0123456789101112131415161718192021222324252627282930313233343536373839404142434445464748495051"
    "5253545556575859606162636465666768697071727374757677787980818283848586878889909192939495969798"
    "99";
constexpr std::string_view numberText(std::size_t n) {
    return n < 10 ? kNumbers.substr(n, 1) : kNumbers.substr(10 + 2 * (n - 10), 2);
}
inline constexpr auto kCriteria = [] {
    std::array<Choice, kMostDisagrees + 2> all{};
    all[0] = {"NS", "NS", "Not Specified"};
    for (std::size_t n = 0; n <= kMostDisagrees; ++n) {
        all[n + 1] = {numberText(n), numberText(n), numberText(n)};
    }
    return all;
}();
inline constexpr auto kLengths = [] {
    std::array<Choice, kMostSyncBits + 1> all{};
    for (std::size_t n = 0; n < all.size(); ++n) {
        all[n] = {numberText(n), numberText(n), numberText(n)};
    }
    return all;
}();

/// A list with free entry; what it offers depends on the notation in which the pattern is
/// shown.
inline constexpr auto kPatterns = std::to_array<Choice>({{"", "", ""}});

}  // namespace choice

/// What the stream of a bus always has.
namespace bus {
inline constexpr int kFrames = 1;
inline constexpr int kWordLength = 24;
inline constexpr std::string_view kWordOrder = "M";
inline constexpr std::string_view kParity = "OD";
inline constexpr std::string_view kParityOrder = "L";
inline constexpr std::string_view kSyncType = "FPT";
inline constexpr std::string_view kSyncPattern = "111110101111001100100000";
}  // namespace bus

inline constexpr std::string_view kInSync = "In Sync";
inline constexpr std::string_view kOutOfSync = "Out Of Sync";

// The attributes, named by their codes, in the order in which they are written.
inline constexpr Field kDln{
    .code = "DLN", .limit = 32, .element = "@Name", .refersTo = Refers::LinkName};
inline constexpr Field kD1{.code = "D1",
                           .label = "PCM Code:",
                           .page = pcm_page::kInputData,
                           .limit = 6,
                           .kind = FieldKind::Choice,
                           .element = "InputData/PCMCode",
                           .choices = choice::kCodes};
inline constexpr Field kD2{.code = "D2",
                           .label = "Bit Rate:",
                           .page = pcm_page::kInputData,
                           .limit = 9,
                           .element = "InputData/BitRate",
                           .prompt = "Enter Bit Rate"};
inline constexpr Field kD3{.code = "D3",
                           .label = "Encryption:",
                           .page = pcm_page::kInputData,
                           .limit = 1,
                           .kind = FieldKind::Choice,
                           .element = "InputData/Encrypted",
                           .choices = choice::kEncryption};
inline constexpr Field kD4{.code = "D4",
                           .label = "Polarity:",
                           .page = pcm_page::kInputData,
                           .limit = 1,
                           .kind = FieldKind::Choice,
                           .element = "InputData/Polarity",
                           .choices = choice::kPolarity};
inline constexpr Field kD5{.code = "D5",
                           .label = "Auto Polarity Correction:",
                           .page = pcm_page::kInputData,
                           .limit = 1,
                           .kind = FieldKind::Choice,
                           .element = "InputData/AutoPolarityCorrection",
                           .choices = choice::kYesNo};
inline constexpr Field kD6{.code = "D6",
                           .label = "Data Direction:",
                           .page = pcm_page::kInputData,
                           .limit = 1,
                           .kind = FieldKind::Choice,
                           .element = "InputData/DataDirection",
                           .choices = choice::kDirection};
inline constexpr Field kD7{.code = "D7",
                           .label = "Data Randomized:",
                           .page = pcm_page::kInputData,
                           .limit = 1,
                           .kind = FieldKind::Choice,
                           .element = "InputData/DataRandomized",
                           .choices = choice::kYesNo};
inline constexpr Field kD8{.code = "D8",
                           .label = "Randomizer Length:",
                           .page = pcm_page::kInputData,
                           .limit = 3,
                           .kind = FieldKind::Choice,
                           .element = "InputData/RandomizerLength",
                           .choices = choice::kRandomizer};
inline constexpr Field kTf{.code = "TF",
                           .label = "Type Format:",
                           .page = pcm_page::kStream,
                           .limit = 4,
                           .kind = FieldKind::Choice,
                           .element = "Format/TypeFormat",
                           .choices = choice::kTypes};
inline constexpr Field kF1{.code = "F1",
                           .label = "Common Word Length:",
                           .page = pcm_page::kStream,
                           .limit = 2,
                           .kind = FieldKind::Digits,
                           .element = "Format/CommonWordLength",
                           .unit = "bits",
                           .prompt = "Enter Common Word Length"};
inline constexpr Field kF2{.code = "F2",
                           .label = "Word Transfer Order:",
                           .page = pcm_page::kStream,
                           .limit = 1,
                           .kind = FieldKind::Choice,
                           .element = "Format/WordTransferOrder",
                           .choices = choice::kWordOrder};
inline constexpr Field kF3{.code = "F3",
                           .label = "Parity:",
                           .page = pcm_page::kStream,
                           .limit = 2,
                           .kind = FieldKind::Choice,
                           .element = "Format/Parity",
                           .choices = choice::kParity};
inline constexpr Field kF4{.code = "F4",
                           .label = "Parity Transfer Order:",
                           .page = pcm_page::kStream,
                           .limit = 1,
                           .kind = FieldKind::Choice,
                           .element = "Format/ParityTransferOrder",
                           .choices = choice::kParityOrder};
inline constexpr Field kMfN{.code = "MF\\N",
                            .label = "Number Of Minor Frames:",
                            .page = pcm_page::kStream,
                            .limit = 3,
                            .kind = FieldKind::Digits,
                            .element = "Format/MinorFrame/NumberOfMinorFrames",
                            .elementRead = "MinorFrame/NumberOfMinorFrames",
                            .prompt = "Enter Number Of Minor Frames"};
inline constexpr Field kMf1{.code = "MF1",
                            .label = "Words Per Minor Frame:",
                            .page = pcm_page::kStream,
                            .limit = 4,
                            .kind = FieldKind::Digits,
                            .element = "Format/MinorFrame/WordsPerMinorFrame",
                            .elementRead = "MinorFrame/WordsPerMinorFrame",
                            .prompt = "Enter Words Per Minor Frame"};
inline constexpr Field kMf2{.code = "MF2",
                            .label = "Bits Per Minor Frame:",
                            .page = pcm_page::kStream,
                            .limit = 5,
                            .element = "Format/MinorFrame/BitsPerMinorFrame",
                            .elementRead = "MinorFrame/BitsPerMinorFrame",
                            .unit = "bits"};
inline constexpr Field kMf3{.code = "MF3",
                            .label = "Sync Type:",
                            .page = pcm_page::kSyncPattern,
                            .limit = 3,
                            .kind = FieldKind::Choice,
                            .element = "Format/MinorFrame/SyncType",
                            .elementRead = "MinorFrame/SyncType",
                            .choices = choice::kSyncTypes};
inline constexpr Field kMf4{.code = "MF4",
                            .label = "Length:",
                            .page = pcm_page::kSyncPattern,
                            .limit = 2,
                            .kind = FieldKind::Choice,
                            .choices = choice::kLengths,
                            .unit = "bits"};
inline constexpr Field kMf5{.code = "MF5",
                            .label = "Pattern:",
                            .page = pcm_page::kSyncPattern,
                            .limit = 65,
                            .element = "Format/MinorFrame/SyncPattern",
                            .elementRead = "MinorFrame/SyncPattern",
                            .choices = choice::kPatterns};
inline constexpr Field kSync1{.code = "SYNC1",
                              .label = "In Sync Criteria:",
                              .box = kInSync,
                              .page = pcm_page::kSyncCriteria,
                              .limit = 2,
                              .element = "SyncCriteria/InSync/Criteria",
                              .choices = choice::kCriteria};
inline constexpr Field kSync2{.code = "SYNC2",
                              .label = "Sync Pattern Criteria:",
                              .box = kInSync,
                              .page = pcm_page::kSyncCriteria,
                              .limit = 2,
                              .element = "SyncCriteria/InSync/NumberOfFSPBits"};
inline constexpr Field kSync3{.code = "SYNC3",
                              .label = "Number Of Disagrees:",
                              .box = kOutOfSync,
                              .page = pcm_page::kSyncCriteria,
                              .limit = 2,
                              .element = "SyncCriteria/OutOfSync/NumberOfDisagrees",
                              .choices = choice::kCriteria};
inline constexpr Field kSync4{.code = "SYNC4",
                              .label = "Sync Pattern Criteria:",
                              .box = kOutOfSync,
                              .page = pcm_page::kSyncCriteria,
                              .limit = 2,
                              .element = "SyncCriteria/OutOfSync/NumberOfFSPBits"};

inline constexpr Field kNonStandard{.code = kNonStandardCode,
                                    .label = "Non-standard Code:",
                                    .page = pcm_page::kInputData,
                                    .limit = 64};
inline constexpr Field kCom{.code = "COM",
                            .label = "Comment:",
                            .page = pcm_page::kComments,
                            .kind = FieldKind::Comment,
                            .element = "Comments"};

inline constexpr auto kWordLengths = std::to_array<Field>({
    {.code = "MFW1-n",
     .label = "Frame Word Position",
     .kind = FieldKind::Digits,
     .element = "VariableWordLength/Word"},
    {.code = "MFW2-n",
     .label = "Word Length",
     .kind = FieldKind::Digits,
     .element = "VariableWordLength/Length",
     .unit = "bits"},
});

inline constexpr std::size_t kMostSwitchRows = 9999;
inline constexpr std::string_view kPatternTitle = "FFI Pattern";
inline constexpr auto kFormatSwitch = std::to_array<Field>({
    {.code = "FFI1",
     .label = "Location:",
     .box = "Frame Format Identifier",
     .page = pcm_page::kFormatSwitch,
     .limit = 4,
     .kind = FieldKind::Digits,
     .element = "FormatChange/FrameFormatIdentifier/Location",
     .prompt = "Enter FFI Location"},
    {.code = "FFI2",
     .label = "Mask:",
     .box = "Frame Format Identifier",
     .page = pcm_page::kFormatSwitch,
     .limit = 64,
     .element = "FormatChange/FrameFormatIdentifier/Mask"},
    {.code = "MLC\\N",
     .label = "Measurement List Change",
     .kind = FieldKind::Count,
     .element = "FormatChange/MeasurementListChange",
     .rows = kMostSwitchRows},
    {.code = "MLC1-n",
     .label = kPatternTitle,
     .limit = 16,
     .element = "FormatChange/MeasurementListChange/FFIPattern",
     .list = "MLC\\N"},
    {.code = "MLC2-n",
     .label = "Measurement List Name",
     .limit = 32,
     .element = "FormatChange/MeasurementListChange/MeasurementListName",
     .list = "MLC\\N"},
    {.code = "FSC\\N",
     .label = "Format Change",
     .kind = FieldKind::Count,
     .element = "FormatChange/FormatStructureChange",
     .rows = kMostSwitchRows},
    {.code = "FSC1-n",
     .label = kPatternTitle,
     .limit = 16,
     .element = "FormatChange/FormatStructureChange/FFIPattern",
     .list = "FSC\\N"},
    {.code = "FSC2-n",
     .label = "Data Link Name",
     .limit = 32,
     .element = "FormatChange/FormatStructureChange/DataLinkName",
     .list = "FSC\\N"},
});

inline constexpr auto kAltTags = std::to_array<Field>({
    {.code = "ALT\\N",
     .label = "Number Of Tags:",
     .page = pcm_page::kAltTag,
     .limit = 3,
     .kind = FieldKind::Digits,
     .element = "AlternateTagData/NumberOfTags"},
    {.code = "ALT1",
     .label = "Number Of Bits In Tag:",
     .page = pcm_page::kAltTag,
     .limit = 2,
     .kind = FieldKind::Digits,
     .element = "AlternateTagData/BitsInTag",
     .unit = "bits"},
    {.code = "ALT2",
     .label = "Number Of Bits In Data Word:",
     .page = pcm_page::kAltTag,
     .limit = 2,
     .kind = FieldKind::Digits,
     .element = "AlternateTagData/BitsInDataWord",
     .unit = "bits"},
    {.code = "ALT3",
     .label = "First Tag Location:",
     .page = pcm_page::kAltTag,
     .limit = 2,
     .kind = FieldKind::Digits,
     .element = "AlternateTagData/FirstTagLocation"},
    {.code = "ALT4",
     .label = "Sequence:",
     .page = pcm_page::kAltTag,
     .limit = 1,
     .kind = FieldKind::Choice,
     .element = "AlternateTagData/Sequence",
     .choices = choice::kDirection},
});

inline constexpr auto kFrameFilters = std::to_array<Field>({
    {.code = "MFF\\FDT",
     .label = "Minor Frame Filtering Type:",
     .page = pcm_page::kFrameFilter,
     .limit = 2,
     .kind = FieldKind::Choice,
     .firstEdition = 2009,
     .element = "Filtering/DefinitionType",
     .choices = choice::kFilterTypes},
    {.code = "MFF\\N",
     .kind = FieldKind::Count,
     .firstEdition = 2009,
     .element = "Filtering/FrameNumber",
     .rows = static_cast<std::size_t>(kMostFrames)},
    {.code = "MFF\\MFN-n",
     .label = "Minor Frame Number",
     .limit = 3,
     .firstEdition = 2009,
     .element = "Filtering/FrameNumber",
     .list = "MFF\\N"},
});

}  // namespace p

/// All commands of the group in the order in which they are written.
[[nodiscard]] std::span<const Field> pcmVocabulary();

}  // namespace kavu
