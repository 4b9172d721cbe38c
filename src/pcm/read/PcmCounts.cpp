#include "pcm/read/PcmCounts.h"

#include "core/document/CommandIndex.h"
#include "pcm/PcmLoad.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/PAsyncFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/PSubframeFields.h"

namespace kavu {

const std::vector<CountRule>& pcmCountRules() {
    static const auto kRules = [] {
        auto rules = countRules(pcmVocabulary());
        // "NO", and nothing at all, is one location, or one range of frames.
        rules.push_back({p::kSf2, {p::kSf4}, 1});
        rules.push_back({p::kAef1, {p::kAef3, p::kAef5, p::kAef6, p::kAef7}, 1});
        rules.push_back({p::kAef7, {p::kAef8, p::kAef9, p::kAef10}, 1});
        rules.push_back({p::kAdm1, {p::kAdm3, p::kAdm8}, 1});
        rules.push_back({p::kAdm8, {p::kAdm9, p::kAdm10, p::kAdm11}, 1});
        return rules;
    }();
    return kRules;
}

const std::vector<CountRule>& measurementCountRules() {
    static const auto kRules = [] {
        namespace wf = word_frame_field;
        namespace ms = minor_supercom_field;
        namespace mf = minor_fragment_field;
        namespace ss = subframe_supercom_field;
        namespace sf = subframe_fragment_field;
        const auto table = measurementVocabulary();
        std::vector<CountRule> rules = {
            {measurement_field::kListCount, countedFields(table, measurement_field::kListCount), 1},
            {measurement_field::kCount, countedFields(table, measurement_field::kCount)},
            {wf::kCount,
             {wf::kFragments, wf::kLength, wf::kWord, wf::kWordInterval, wf::kEndWord, wf::kFrame,
              wf::kFrameInterval, wf::kEndFrame, wf::kMask, wf::kTransferOrder, wf::kPosition}},
            {wf::kFragments,
             {wf::kWord, wf::kWordInterval, wf::kEndWord, wf::kFrame, wf::kFrameInterval,
              wf::kEndFrame, wf::kMask, wf::kTransferOrder, wf::kPosition},
             1},
            {ms::kCount, {ms::kWord, ms::kWordMask}},
            {mf::kCount, {mf::kWord, mf::kWordMask, mf::kTransferOrder, mf::kFragment}},
            {ss::kCount, {ss::kPosition, ss::kPositionMask}},
            {sf::kSubframes,
             {sf::kSubframe, sf::kMode, sf::kFirst, sf::kMask, sf::kInterval, sf::kPosition,
              sf::kPositionMask, sf::kTransferOrder, sf::kFragment}},
            {tagged_field::kCount,
             {tagged_field::kTagNumber, tagged_field::kMask, tagged_field::kTransferOrder,
              tagged_field::kPosition}},
            {filter_field::kCountInList, {filter_field::kNameInList}},
            {filter_field::kCount, {filter_field::kName, filter_field::kType}},
        };
        return rules;
    }();
    return kRules;
}

void checkPcmCounts(PcmLoad& load) {
    CountCheck check(pcmCountRules(), load.edition());
    for (std::size_t place = 0; place < load.fields->size(); ++place) {
        const auto command = load.fields->at(place);
        if (!command.field.empty()) {
            check.add(codeHead(command.field), parseCommandIndices(command.text), command.value);
        }
    }
    check.report(load.prefix, [&load](const std::string& text) {
        load.logLeftOut(title::kErrorReadingFormat, text);
    });
}

}  // namespace kavu
