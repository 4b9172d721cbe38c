#include "pcm/model/PcmFormatFields.h"

#include "pcm/PcmFormat.h"
#include "pcm/model/RecordField.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

template <auto Member>
consteval PcmAttribute textOf(const Field& field, std::string_view setting,
                              std::string_view fallback = {}) {
    requireWidth<PcmAttributes, Member>(field);
    return {field,
            setting,
            fallback,
            [](const PcmAttributes& attributes) { return (attributes.*Member).view(); },
            [](PcmAttributes& attributes, std::string_view text) { attributes.*Member = text; },
            nullptr};
}
template <auto Member>
consteval PcmAttribute numberOf(const Field& field, std::string_view setting,
                                std::string_view fallback = {}) {
    return {field, setting, fallback, nullptr, nullptr, Member};
}

using P = PcmAttributes;

constexpr auto kAttributes = std::to_array<PcmAttribute>({
    textOf<&P::streamName>(p::kDln, ""),
    textOf<&P::pcmCode>(p::kD1, "PD1"),
    textOf<&P::bitRate>(p::kD2, "PD2"),
    textOf<&P::encryption>(p::kD3, "PD3"),
    textOf<&P::polarity>(p::kD4, "PD4"),
    textOf<&P::autoPolarityCorrection>(p::kD5, "PD5"),
    textOf<&P::dataDirection>(p::kD6, "PD6"),
    textOf<&P::dataRandomized>(p::kD7, "PD7"),
    textOf<&P::randomizerLength>(p::kD8, "PD8"),
    textOf<&P::typeFormat>(p::kTf, "PTF", "ONE"),
    numberOf<&P::commonWordLength>(p::kF1, "PF1", "16"),
    textOf<&P::wordTransferOrder>(p::kF2, "PF2"),
    textOf<&P::parity>(p::kF3, "PF3"),
    textOf<&P::parityTransferOrder>(p::kF4, "PF4"),
    numberOf<&P::numberOfFrames>(p::kMfN, "PMFN", "1"),
    numberOf<&P::wordsPerMinorFrame>(p::kMf1, "PMF1", "1"),
    numberOf<&P::bitsPerMinorFrame>(p::kMf2, ""),
    textOf<&P::syncType>(p::kMf3, "PMF3"),
    numberOf<&P::syncLength>(p::kMf4, ""),
    textOf<&P::syncPattern>(p::kMf5, "PMF5", "111 010 111 001 000 0"),
    textOf<&P::inSyncCriteria>(p::kSync1, "PSYNC1"),
    textOf<&P::inSyncPatternCriteria>(p::kSync2, "PSYNC2"),
    textOf<&P::outOfSyncDisagrees>(p::kSync3, "PSYNC3"),
    textOf<&P::outOfSyncPatternCriteria>(p::kSync4, "PSYNC4"),
});

struct PageOrder {
    std::string_view page;
    std::array<std::string_view, 9> codes;
};
/// Pages that show their fields in another order than the file.
constexpr auto kPageOrders = std::to_array<PageOrder>({
    {pcm_page::kInputData,
     {p::kD1.code, kNonStandardCode, p::kD3.code, p::kD2.code, p::kD6.code, p::kD4.code,
      p::kD7.code, p::kD5.code, p::kD8.code}},
    {pcm_page::kStream,
     {p::kTf.code, p::kF1.code, p::kF3.code, p::kF2.code, p::kF4.code, p::kMfN.code, p::kMf1.code,
      p::kMf2.code, ""}},
    {pcm_page::kSyncPattern, {p::kMf4.code, p::kMf5.code, p::kMf3.code, "", "", "", "", "", ""}},
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
        return {p::kCom};
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
            fields.push_back(p::kNonStandard);
        } else if (const auto* const row = findPcmAttribute(code)) {
            fields.push_back(row->field);
        }
    }
    return fields;
}

std::span<const Field> wordLengthFields() {
    return p::kWordLengths;
}
std::span<const Field> formatSwitchFields() {
    return p::kFormatSwitch;
}
std::span<const Field> altTagFields() {
    return p::kAltTags;
}
std::span<const Field> frameFilterFields() {
    return p::kFrameFilters;
}

}  // namespace kavu
