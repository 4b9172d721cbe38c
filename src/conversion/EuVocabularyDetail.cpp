// The windows of the conversion types.
#include "conversion/EuVocabulary.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <array>

namespace kavu {

namespace {

constexpr auto kYesNo = std::to_array<Choice>({
    {.value = "Y", .text = "Yes"},
    {.value = "N", .text = "No"},
});
constexpr auto kBusTimes = std::to_array<Choice>({
    {.value = "R", .text = "Response Time"},
    {.value = "M", .text = "Microsecond Time"},
    {.value = "L", .text = "Low Order Time"},
    {.value = "H", .text = "High Order Time"},
});
constexpr auto kPcmTimes = std::to_array<Choice>({
    {.value = "M", .text = "Microsecond Time"},
    {.value = "L", .text = "Low Order Time"},
    {.value = "H", .text = "High Order Time"},
});
constexpr auto kAlgorithms = std::to_array<Choice>({
    {.value = "A", .text = "Algorithm"},
    {.value = "N", .text = "Name Of Algorithm"},
});
constexpr auto kVoiceEncodings = std::to_array<Choice>({
    {.value = "OTHR", .text = "OTHR"},
    {.value = "CVSD", .text = "CVSD"},
});

constexpr auto kCoefficients = std::to_array<Field>({
    {.code = "CO1",
     .label = "Derived From Pair Set?",
     .limit = 1,
     .kind = FieldKind::Choice,
     .choices = kYesNo},
    {.code = "CO", .label = "C(0) - (Offset):", .limit = 32},
});
constexpr auto kCoefficientColumn = std::to_array<Field>({{.code = "CO", .limit = 32}});
constexpr auto kCoefficientLists = std::to_array<EuList>(
    {{.countCode = "CO\\N", .title = "Terms", .columns = kCoefficientColumn, .mostRows = 99}});

constexpr auto kNegativePowers = std::to_array<Field>({
    {.code = "NPC1",
     .label = "Derived From Pair Set?",
     .limit = 1,
     .kind = FieldKind::Choice,
     .choices = kYesNo},
    {.code = "NPC", .label = "C(0) - (Offset):", .limit = 32},
});
constexpr auto kNegativeColumn = std::to_array<Field>({{.code = "NPC", .limit = 32}});
constexpr auto kNegativeLists = std::to_array<EuList>(
    {{.countCode = "NPC\\N", .title = "Terms", .columns = kNegativeColumn, .mostRows = 99}});

constexpr auto kOther =
    std::to_array<Field>({{.code = "OTH", .label = "Other:", .kind = FieldKind::Comment}});

constexpr auto kDerived = std::to_array<Field>({
    {.code = "DPAT",
     .label = "Algorithm Type:",
     .limit = 1,
     .kind = FieldKind::Choice,
     .firstEdition = 2009,
     .choices = kAlgorithms},
    {.code = "DPTM", .label = "Trigger Measurand:", .limit = 32, .firstEdition = 2009},
    {.code = "DPNO",
     .label = "Number Of Occurrences:",
     .limit = 2,
     .kind = FieldKind::Digits,
     .firstEdition = 2009},
    {.code = "DPA", .label = "Algorithm:", .kind = FieldKind::Comment, .firstEdition = 1997},
});
constexpr auto kMeasurandColumn =
    std::to_array<Field>({{.code = "DP", .label = "Measurand", .limit = 32}});
constexpr auto kConstantColumn =
    std::to_array<Field>({{.code = "DPC", .label = "Constant", .limit = 32}});
constexpr auto kDerivedLists = std::to_array<EuList>({
    {.countCode = "DP\\N",
     .title = "Measurands",
     .columns = kMeasurandColumn,
     .mostRows = 99,
     .mostRows1996 = 9,
     .prompt = "Enter Measurand Name"},
    {.countCode = "DPC\\N",
     .title = "Constants",
     .columns = kConstantColumn,
     .mostRows = 99,
     .firstEdition = 1997,
     .prompt = "Enter Constant Name"},
});

constexpr auto kDiscrete = std::to_array<Field>({
    {.code = "DICI\\N",
     .label = "Number Of Indicators:",
     .limit = 2,
     .kind = FieldKind::Digits,
     .prompt = "Enter Number Of Indicators"},
});
constexpr auto kDiscreteColumns = std::to_array<Field>({
    {.code = "DICC", .label = "Conversion Data", .limit = 16},
    {.code = "DICP", .label = "Event Definition", .limit = 240},
});
constexpr auto kDiscreteLists = std::to_array<EuList>(
    {{.countCode = "DIC\\N", .title = "Events", .columns = kDiscreteColumns, .mostRows = 99}});

constexpr auto kVoice = std::to_array<Field>({
    {.code = "VOI\\E",
     .label = "Encoding Method:",
     .limit = 4,
     .kind = FieldKind::Choice,
     .choices = kVoiceEncodings},
    {.code = "VOI\\D", .label = "Description:", .limit = 640, .kind = FieldKind::Comment},
});
constexpr auto kVideo = std::to_array<Field>({
    {.code = "VID\\E", .label = "Encoding Method:", .limit = 64},
    {.code = "VID\\D", .label = "Description:", .limit = 640, .kind = FieldKind::Comment},
});
constexpr auto kBusTime = std::to_array<Field>({{.code = "BTM",
                                                 .label = "1553 Time:",
                                                 .limit = 1,
                                                 .kind = FieldKind::Choice,
                                                 .choices = kBusTimes}});
constexpr auto kPcmTime = std::to_array<Field>({{.code = "PTM",
                                                 .label = "PCM Time:",
                                                 .limit = 1,
                                                 .kind = FieldKind::Choice,
                                                 .choices = kPcmTimes}});

constexpr auto kWindows = std::to_array<DetailWindow>({
    {"PRS", "PairSets", "Pair Sets", 0, {}, {}},
    {"COE", "coefficients", "Coefficients", 0, kCoefficients, kCoefficientLists},
    {"NPC", "coefficients", "Coefficients (Negative Powers Of X)", 2007, kNegativePowers,
     kNegativeLists},
    {"OTH", "other", "Other", 0, kOther, {}},
    {"DER", "derived", "Derived", 0, kDerived, kDerivedLists},
    {"DIS", "discrete", "Discrete", 0, kDiscrete, kDiscreteLists},
    {"VOI", "DigitalVoice", "Digital Voice", 0, kVoice, {}},
    {"VID", "DigitalVideo", "Digital Video", 0, kVideo, {}},
    {"BTM", "Time1553", "1553 Time", 0, kBusTime, {}},
    {"PTM", "TimePCM", "PCM Time", 0, kPcmTime, {}},
});

}  // namespace

const Field& euField(std::string_view code) {
    static constexpr Field kNone{};
    const auto in = [code](std::span<const Field> fields) {
        for (const auto& field : fields) {
            if (field.code == code) {
                return &field;
            }
        }
        return static_cast<const Field*>(nullptr);
    };
    for (const auto& page : euPages()) {
        if (const auto* const field = in(page.fields)) {
            return *field;
        }
    }
    for (const auto& window : kWindows) {
        if (const auto* const field = in(window.fields)) {
            return *field;
        }
    }
    return kNone;
}

std::optional<DetailWindow> detailWindow(std::string_view type, int edition, bool plot) {
    for (auto window : kWindows) {
        if (edition >= window.from && startsWithIgnoreCase(type, window.type)) {
            if (plot && window.type == "PRS") {
                window.resource = "PairSetsPlot";
            }
            return window;
        }
    }
    return std::nullopt;
}

std::string_view detailButtonText(bool shown) {
    return shown ? "Hide Conversion Details" : "Show Conversion Details";
}

std::string coefficientTerm(int term) {
    return formatPrintf("C(%d)", term);
}

std::string coefficientPrompt(int term) {
    return formatPrintf("Enter Coefficient 'C(%d)'", term);
}

}  // namespace kavu
