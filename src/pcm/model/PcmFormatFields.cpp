#include "pcm/model/PcmFormatFields.h"

#include "pcm/PcmFormat.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr auto kCodes = std::to_array<Choice>({
    {"NRZ-L", "NRZ-L", "NRZ-L"},
    {"NRZ-M", "NRZ-M", "NRZ-M"},
    {"NRZ-S", "NRZ-S", "NRZ-S"},
    {"BIO-L", "BIO-L", "BIO-L"},
    {"BIO-M", "BIO-M", "BIO-M"},
    {"BIO-S", "BIO-S", "BIO-S"},
    {"DBIO-L", "DBIO-L", "DBIO-L"},
    {"DBIO-S", "DBIO-S", "DBIO-S"},
    {"RNRZ-L", "RNRZ-L", "RNRZ-L"},
    {"OTHER", "OTHER", "Other"},
});
constexpr auto kEncryption = std::to_array<Choice>({
    {"E", "Encrypted", "Encrypted"},
    {"U", "Unencrypted", "Unencrypted"},
});
constexpr auto kDirection = std::to_array<Choice>({
    {"N", "Normal", "Normal"},
    {"R", "Reversed", "Reversed"},
});
constexpr auto kPolarity = std::to_array<Choice>({
    {"N", "Normal", "Normal"},
    {"I", "Inverted", "Inverted"},
});
constexpr auto kYesNo = std::to_array<Choice>({
    {"Y", "Yes", "Yes"},
    {"N", "No", "No"},
});
constexpr auto kRandomizer = std::to_array<Choice>({
    {"STD", "STD - Standard", "Standard"},
    {"OTH", "OTHER", "Other"},
    {"N/A", "N/A", "N/A"},
});
// A list was always filled up to the first entry that an edition does not have. So the newest
// editions end where the older ones do, and do not offer what has come in between.
constexpr auto kTypes = std::to_array<Choice>({
    {"ONE", "ONE - Class I", "Class 1"},
    {"TWO", "TWO - Class II", "Class 2", 2004},
    {"1553", "1553 Bus", "1553 Bus", 2004},
    {"BUS", "BUS - BUS", "Bus", 2004},
    {"ALTD", "ALTD - Alternate Tag & Data", "Alternate Tag And Data", 2004},
    {"PKTM", "PKTM - Packet Telemetry", "Packet Telemetry", 2005, 2007},
    {"OTHR", "OTHR - Other", "Other", 2005, 2007},
});
constexpr auto kParity = std::to_array<Choice>({
    {"EV", "EVEN", "Even"},
    {"OD", "ODD", "Odd"},
    {"NO", "NONE", "None"},
});
constexpr auto kWordOrder = std::to_array<Choice>({
    {"M", "MSB", "MSB First"},
    {"L", "LSB", "LSB First"},
});
constexpr auto kParityOrder = std::to_array<Choice>({
    {"L", "Leads Word", "Leads Word"},
    {"T", "Trails Word", "Trails Word"},
});
constexpr auto kSyncTypes = std::to_array<Choice>({
    {"FPT", "FPT - Fixed Pattern", "Fixed Pattern"},
    {"OTH", "OTHER", "Other"},
});
constexpr auto kFilterTypes = std::to_array<Choice>({
    {"IN", "INclusive Filtering", "Inclusive Filtering"},
    {"EX", "EXclusive Filtering", "Exclusive Filtering"},
});
constexpr std::size_t kMostDisagrees = 99;
/// "0" to "99"; two digits are one text.
constexpr std::string_view kNumbers =
    "0123456789101112131415161718192021222324252627282930313233343536373839404142434445464748495051"
    "5253545556575859606162636465666768697071727374757677787980818283848586878889909192939495969798"
    "99";
constexpr std::string_view numberText(std::size_t n) {
    return n < 10 ? kNumbers.substr(n, 1) : kNumbers.substr(10 + 2 * (n - 10), 2);
}
constexpr auto kCriteria = [] {
    std::array<Choice, kMostDisagrees + 2> all{};
    all[0] = {"NS", "NS", "NS"};
    for (std::size_t n = 0; n <= kMostDisagrees; ++n) {
        all[n + 1] = {numberText(n), numberText(n), numberText(n)};
    }
    return all;
}();
constexpr auto kLengths = [] {
    std::array<Choice, kMostSyncBits + 1> all{};
    for (std::size_t n = 0; n < all.size(); ++n) {
        all[n] = {numberText(n), numberText(n), numberText(n)};
    }
    return all;
}();

/// A list with free entry; what it offers depends on the form in which the pattern is shown.
constexpr auto kPatterns = std::to_array<Choice>({{"", "", ""}});

/// The limit of a text is that of its place in the model.
template <auto Member>
constexpr PcmAttribute textOf(Field field, std::string_view setting,
                              std::string_view fallback = {}) {
    using Text = std::remove_cvref_t<decltype(std::declval<PcmAttributes&>().*Member)>;
    field.limit = Text::kWidth;
    return {field,
            setting,
            fallback,
            [](const PcmAttributes& attributes) { return (attributes.*Member).view(); },
            [](PcmAttributes& attributes, std::string_view text) { attributes.*Member = text; },
            nullptr};
}
template <auto Member>
constexpr PcmAttribute numberOf(Field field, std::string_view setting,
                                std::string_view fallback = {}) {
    return {field, setting, fallback, nullptr, nullptr, Member};
}

using P = PcmAttributes;
using pcm_page::kInputData;
using pcm_page::kStream;
using pcm_page::kSyncCriteria;
using pcm_page::kSyncPattern;
constexpr auto kChoice = FieldKind::Choice;
constexpr std::string_view kInSync = "In Sync";
constexpr std::string_view kOutOfSync = "Out Of Sync";

constexpr auto kAttributes = std::to_array<PcmAttribute>({
    textOf<&P::streamName>({.code = "DLN"}, ""),
    textOf<&P::pcmCode>({.code = "D1",
                         .label = "PCM Code:",
                         .page = kInputData,
                         .kind = kChoice,
                         .choices = kCodes},
                        "PD1"),
    textOf<&P::bitRate>(
        {.code = "D2", .label = "Bit Rate:", .page = kInputData, .prompt = "Enter Bit Rate"},
        "PD2"),
    textOf<&P::encryption>({.code = "D3",
                            .label = "Encryption:",
                            .page = kInputData,
                            .kind = kChoice,
                            .choices = kEncryption},
                           "PD3"),
    textOf<&P::polarity>({.code = "D4",
                          .label = "Polarity:",
                          .page = kInputData,
                          .kind = kChoice,
                          .choices = kPolarity},
                         "PD4"),
    textOf<&P::autoPolarityCorrection>({.code = "D5",
                                        .label = "Auto Polarity Correction:",
                                        .page = kInputData,
                                        .kind = kChoice,
                                        .choices = kYesNo},
                                       "PD5"),
    textOf<&P::dataDirection>({.code = "D6",
                               .label = "Data Direction:",
                               .page = kInputData,
                               .kind = kChoice,
                               .choices = kDirection},
                              "PD6"),
    textOf<&P::dataRandomized>({.code = "D7",
                                .label = "Data Randomized:",
                                .page = kInputData,
                                .kind = kChoice,
                                .choices = kYesNo},
                               "PD7"),
    textOf<&P::randomizerLength>({.code = "D8",
                                  .label = "Randomizer Length:",
                                  .page = kInputData,
                                  .kind = kChoice,
                                  .choices = kRandomizer},
                                 "PD8"),
    textOf<&P::typeFormat>({.code = "TF",
                            .label = "Type Format:",
                            .page = kStream,
                            .kind = kChoice,
                            .choices = kTypes},
                           "PTF", "ONE"),
    numberOf<&P::commonWordLength>({.code = "F1",
                                    .label = "Common Word Length:",
                                    .page = kStream,
                                    .limit = 2,
                                    .kind = FieldKind::Digits,
                                    .unit = "bits",
                                    .prompt = "Enter Common Word Length"},
                                   "PF1", "16"),
    textOf<&P::wordTransferOrder>({.code = "F2",
                                   .label = "Word Transfer Order:",
                                   .page = kStream,
                                   .kind = kChoice,
                                   .choices = kWordOrder},
                                  "PF2"),
    textOf<&P::parity>(
        {.code = "F3", .label = "Parity:", .page = kStream, .kind = kChoice, .choices = kParity},
        "PF3"),
    textOf<&P::parityTransferOrder>({.code = "F4",
                                     .label = "Parity Transfer Order:",
                                     .page = kStream,
                                     .kind = kChoice,
                                     .choices = kParityOrder},
                                    "PF4"),
    numberOf<&P::numberOfFrames>({.code = "MF\\N",
                                  .label = "Number Of Minor Frames:",
                                  .page = kStream,
                                  .limit = 3,
                                  .kind = FieldKind::Digits,
                                  .prompt = "Enter Number Of Minor Frames"},
                                 "PMFN", "1"),
    numberOf<&P::wordsPerMinorFrame>({.code = "MF1",
                                      .label = "Words Per Minor Frame:",
                                      .page = kStream,
                                      .limit = 4,
                                      .kind = FieldKind::Digits,
                                      .prompt = "Enter Words Per Minor Frame"},
                                     "PMF1", "1"),
    numberOf<&P::bitsPerMinorFrame>({.code = "MF2",
                                     .label = "Bits Per Minor Frame:",
                                     .page = kStream,
                                     .limit = 5,
                                     .unit = "bits"},
                                    ""),
    textOf<&P::syncType>({.code = "MF3",
                          .label = "Sync Type:",
                          .page = kSyncPattern,
                          .kind = kChoice,
                          .choices = kSyncTypes},
                         "PMF3"),
    numberOf<&P::syncLength>({.code = "MF4",
                              .label = "Length:",
                              .page = kSyncPattern,
                              .limit = 2,
                              .kind = kChoice,
                              .choices = kLengths,
                              .unit = "bits"},
                             ""),
    textOf<&P::syncPattern>(
        {.code = "MF5", .label = "Pattern:", .page = kSyncPattern, .choices = kPatterns}, "PMF5",
        "111 010 111 001 000 0"),
    textOf<&P::inSyncCriteria>({.code = "SYNC1",
                                .label = "In Sync Criteria:",
                                .box = kInSync,
                                .page = kSyncCriteria,
                                .choices = kCriteria},
                               "PSYNC1"),
    textOf<&P::inSyncPatternCriteria>(
        {.code = "SYNC2", .label = "Sync Pattern Criteria:", .box = kInSync, .page = kSyncCriteria},
        "PSYNC2"),
    textOf<&P::outOfSyncDisagrees>({.code = "SYNC3",
                                    .label = "Number Of Disagrees:",
                                    .box = kOutOfSync,
                                    .page = kSyncCriteria,
                                    .choices = kCriteria},
                                   "PSYNC3"),
    textOf<&P::outOfSyncPatternCriteria>({.code = "SYNC4",
                                          .label = "Sync Pattern Criteria:",
                                          .box = kOutOfSync,
                                          .page = kSyncCriteria},
                                         "PSYNC4"),
});

constexpr Field kNonStandard = {
    .code = kNonStandardCode, .label = "Non-standard Code:", .page = kInputData, .limit = 64};
constexpr Field kComment = {
    .code = "COM", .label = "Comment:", .page = pcm_page::kComments, .kind = FieldKind::Comment};

struct PageOrder {
    std::string_view page;
    std::array<std::string_view, 9> codes;
};
/// Where a page shows its fields in another order than the file has them.
constexpr auto kPageOrders = std::to_array<PageOrder>({
    {kInputData, {"D1", kNonStandardCode, "D3", "D2", "D6", "D4", "D7", "D5", "D8"}},
    {kStream, {"TF", "F1", "F3", "F2", "F4", "MF\\N", "MF1", "MF2", ""}},
    {kSyncPattern, {"MF4", "MF5", "MF3", "", "", "", "", "", ""}},
});

constexpr auto kWordLengths = std::to_array<Field>({
    {.code = "MFW1-n", .label = "Frame Word Position", .kind = FieldKind::Digits},
    {.code = "MFW2-n", .label = "Word Length", .kind = FieldKind::Digits, .unit = "bits"},
});

constexpr std::size_t kMostSwitchRows = 9999;
constexpr std::string_view kPatternTitle = "FFI Pattern";
constexpr auto kFormatSwitch = std::to_array<Field>({
    {.code = "FFI1",
     .label = "Location:",
     .box = "Frame Format Identifier",
     .page = pcm_page::kFormatSwitch,
     .limit = 4,
     .kind = FieldKind::Digits,
     .prompt = "Enter FFI Location"},
    {.code = "FFI2",
     .label = "Mask:",
     .box = "Frame Format Identifier",
     .page = pcm_page::kFormatSwitch,
     .limit = 64},
    {.code = "MLC\\N",
     .label = "Measurement List Change",
     .kind = FieldKind::Count,
     .rows = kMostSwitchRows},
    {.code = "MLC1-n", .label = kPatternTitle, .limit = 16, .list = "MLC\\N"},
    {.code = "MLC2-n", .label = "Measurement List Name", .limit = 32, .list = "MLC\\N"},
    {.code = "FSC\\N", .label = "Format Change", .kind = FieldKind::Count, .rows = kMostSwitchRows},
    {.code = "FSC1-n", .label = kPatternTitle, .limit = 16, .list = "FSC\\N"},
    {.code = "FSC2-n", .label = "Data Link Name", .limit = 32, .list = "FSC\\N"},
});

constexpr std::string_view kAltTag = pcm_page::kAltTag;
constexpr auto kAltTags = std::to_array<Field>({
    {.code = "ALT\\N",
     .label = "Number Of Tags:",
     .page = kAltTag,
     .limit = 3,
     .kind = FieldKind::Digits},
    {.code = "ALT1",
     .label = "Number Of Bits In Tag:",
     .page = kAltTag,
     .limit = 2,
     .kind = FieldKind::Digits,
     .unit = "bits"},
    {.code = "ALT2",
     .label = "Number Of Bits In Data Word:",
     .page = kAltTag,
     .limit = 2,
     .kind = FieldKind::Digits,
     .unit = "bits"},
    {.code = "ALT3",
     .label = "First Tag Location:",
     .page = kAltTag,
     .limit = 2,
     .kind = FieldKind::Digits},
    {.code = "ALT4",
     .label = "Sequence:",
     .page = kAltTag,
     .limit = 1,
     .kind = FieldKind::Choice,
     .choices = kDirection},
});

constexpr auto kFrameFilters = std::to_array<Field>({
    {.code = "MFF\\FDT",
     .label = "Minor Frame Filtering Type:",
     .page = pcm_page::kFrameFilter,
     .limit = 2,
     .kind = FieldKind::Choice,
     .firstEdition = 2009,
     .choices = kFilterTypes},
    {.code = "MFF\\N",
     .kind = FieldKind::Count,
     .firstEdition = 2009,
     .rows = static_cast<std::size_t>(kMostFrames)},
    {.code = "MFF\\MFN-n",
     .label = "Minor Frame Number",
     .limit = 3,
     .firstEdition = 2009,
     .list = "MFF\\N"},
});

}  // namespace

std::span<const PcmAttribute> pcmAttributes() {
    return kAttributes;
}

const PcmAttribute* findPcmAttribute(std::string_view code) {
    const auto* const it =
        std::find_if(kAttributes.begin(), kAttributes.end(),
                     [code](const PcmAttribute& row) { return row.field.code == code; });
    return it == kAttributes.end() ? nullptr : it;
}

std::vector<Field> pcmPageFields(std::string_view page) {
    std::vector<Field> fields;
    if (page == pcm_page::kComments) {
        return {kComment};
    }
    const auto* const order =
        std::find_if(kPageOrders.begin(), kPageOrders.end(),
                     [page](const PageOrder& row) { return row.page == page; });
    if (order == kPageOrders.end()) {
        for (const auto& row : kAttributes) {
            if (row.field.page == page) {
                fields.push_back(row.field);
            }
        }
        return fields;
    }
    for (const auto code : order->codes) {
        if (code == kNonStandardCode) {
            fields.push_back(kNonStandard);
        } else if (const auto* const row = findPcmAttribute(code)) {
            fields.push_back(row->field);
        }
    }
    return fields;
}

std::span<const Field> wordLengthFields() {
    return kWordLengths;
}
std::span<const Field> formatSwitchFields() {
    return kFormatSwitch;
}
std::span<const Field> altTagFields() {
    return kAltTags;
}
std::span<const Field> frameFilterFields() {
    return kFrameFilters;
}

}  // namespace kavu
