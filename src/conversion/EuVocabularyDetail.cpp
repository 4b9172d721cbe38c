// The windows of the conversion types.
#include "conversion/EuVocabulary.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <array>

namespace kavu {

namespace {

constexpr auto kCoefficients = std::to_array<Field>({c::kCo1, c::kCo});
constexpr auto kCoefficientColumn = euColumns(c::kCoTerm);
constexpr auto kCoefficientLists = std::to_array<EuList>({euListOf(c::kCoN, kCoefficientColumn)});

constexpr auto kNegativePowers = std::to_array<Field>({c::kNpc1, c::kNpc});
constexpr auto kNegativeColumn = euColumns(c::kNpcTerm);
constexpr auto kNegativeLists = std::to_array<EuList>({euListOf(c::kNpcN, kNegativeColumn)});

constexpr auto kOther = std::to_array<Field>({c::kOth});

constexpr auto kDerived = std::to_array<Field>({c::kDpat, c::kDptm, c::kDpno, c::kDpa});
constexpr auto kMeasurandColumn = euColumns(c::kDp);
constexpr auto kConstantColumn = euColumns(c::kDpc);
constexpr auto kDerivedLists =
    std::to_array<EuList>({euListOf(c::kDpN, kMeasurandColumn, "Enter Measurand Name"),
                           euListOf(c::kDpcN, kConstantColumn, "Enter Constant Name")});

constexpr auto kDiscrete = std::to_array<Field>({c::kDiciN});
constexpr auto kDiscreteColumns = euColumns(c::kDicc, c::kDicp);
constexpr auto kDiscreteLists = std::to_array<EuList>({euListOf(c::kDicN, kDiscreteColumns)});

constexpr auto kVoice = std::to_array<Field>({c::kVoiE, c::kVoiD});
constexpr auto kVideo = std::to_array<Field>({c::kVidE, c::kVidD});
constexpr auto kBusTime = std::to_array<Field>({c::kBtm});
constexpr auto kPcmTime = std::to_array<Field>({c::kPtm});

constexpr auto kWindows = std::to_array<DetailWindow>({
    {"PRS", eu_page::kPairSets, "Pair Sets", 0, {}, {}},
    {"COE", eu_page::kCoefficients, "Coefficients", 0, kCoefficients, kCoefficientLists},
    {"NPC", eu_page::kCoefficients, "Coefficients (Negative Powers Of X)", c::kFirstNegativePowers,
     kNegativePowers, kNegativeLists},
    {"OTH", eu_page::kOther, "Other", 0, kOther, {}},
    {"DER", eu_page::kDerived, "Derived", 0, kDerived, kDerivedLists},
    {"DIS", eu_page::kDiscrete, "Discrete", 0, kDiscrete, kDiscreteLists},
    {"VOI", eu_page::kVoice, "Digital Voice", 0, kVoice, {}},
    {"VID", eu_page::kVideo, "Digital Video", 0, kVideo, {}},
    {"BTM", eu_page::kBusTime, "1553 Time", 0, kBusTime, {}},
    {"PTM", eu_page::kPcmTime, "PCM Time", 0, kPcmTime, {}},
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
