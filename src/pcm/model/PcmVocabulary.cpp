#include "pcm/model/PcmVocabulary.h"

#include "pcm/model/AsyncCodes.h"
#include "pcm/model/MeasurementFields.h"
#include "pcm/model/PcmFormatFields.h"
#include "pcm/model/SubframeFields.h"

#include <vector>

namespace kavu {

namespace {

class Table {
  public:
    void add(const Field& field) {
        if (!field.code.empty()) {
            fields_.push_back(field);
        }
    }
    void add(std::span<const Field> fields) {
        fields_.insert(fields_.end(), fields.begin(), fields.end());
    }
    /// Rows of which the field is a part.
    template <typename Rows>
    void addFieldsOf(const Rows& rows) {
        for (const auto& row : rows) {
            add(row.field);
        }
    }
    [[nodiscard]] std::vector<Field> take() { return std::move(fields_); }

  private:
    std::vector<Field> fields_;
};

void addCounters(Table& table) {
    table.add(counter_field::kCount.field);
    table.addFieldsOf(kCounterFields);
    table.add(subframe_field::kCount.field);
    table.addFieldsOf(kSubframeFields);
}

void addRanges(Table& table, const AsyncCodes& codes) {
    for (const auto* const field : {&codes.ranges, &codes.start, &codes.frameStep, &codes.end}) {
        table.add(*field);
    }
}

void addEmbedded(Table& table) {
    const auto& codes = kAsyncEmbeddedCodes;
    for (const auto* const field : {&codes.count, &codes.name, &codes.supercom, &codes.mode,
                                    &codes.location, &codes.interval, &codes.length, &codes.mask}) {
        table.add(*field);
    }
    addRanges(table, codes);
}

void addMerges(Table& table) {
    const auto& codes = kDataMergeCodes;
    table.add(codes.count);
    table.add(codes.name);
    table.addFieldsOf(kMergeTexts);
    for (const auto* const field :
         {&codes.supercom, &codes.mode, &codes.location, &codes.interval}) {
        table.add(*field);
    }
    table.addFieldsOf(kMergeValues);
    addRanges(table, codes);
}

std::vector<Field> makeTable() {
    Table table;
    table.addFieldsOf(pcmAttributes());
    table.add(wordLengthFields());
    addCounters(table);
    table.add(frameFilterFields());
    addEmbedded(table);
    table.add(formatSwitchFields());
    table.add(altTagFields());
    addMerges(table);
    table.add(pcmPageFields(pcm_page::kComments));
    return table.take();
}

constexpr auto kMeasurementFields = std::to_array<Field>({
    measurement_field::kDataLink,
    filter_field::kCount,
    filter_field::kName,
    filter_field::kType,
    measurement_field::kListCount,
    measurement_field::kListName,
    filter_field::kCountInList,
    filter_field::kNameInList,
    measurement_field::kCount,
    measurement_field::kName,
    measurement_field::kParity,
    measurement_field::kParityOrder,
    measurement_field::kTransferOrder,
    measurement_field::kFilterOverwrite,
    measurement_field::kLocationType,
    minor_word_field::kWord,
    minor_word_field::kMask,
    subframe_word_field::kSubframe,
    subframe_word_field::kPosition,
    subframe_word_field::kMask,
    minor_supercom_field::kCount,
    minor_supercom_field::kMode,
    minor_supercom_field::kFirst,
    minor_supercom_field::kMask,
    minor_supercom_field::kInterval,
    minor_supercom_field::kWord,
    minor_supercom_field::kWordMask,
    minor_fragment_field::kCount,
    minor_fragment_field::kLength,
    minor_fragment_field::kMode,
    minor_fragment_field::kFirst,
    minor_fragment_field::kMask,
    minor_fragment_field::kInterval,
    minor_fragment_field::kWord,
    minor_fragment_field::kWordMask,
    minor_fragment_field::kTransferOrder,
    minor_fragment_field::kFragment,
    subframe_supercom_field::kSubframe,
    subframe_supercom_field::kCount,
    subframe_supercom_field::kMode,
    subframe_supercom_field::kFirst,
    subframe_supercom_field::kMask,
    subframe_supercom_field::kInterval,
    subframe_supercom_field::kPosition,
    subframe_supercom_field::kPositionMask,
    subframe_fragment_field::kCount,
    subframe_fragment_field::kLength,
    subframe_fragment_field::kSubframes,
    subframe_fragment_field::kSubframe,
    subframe_fragment_field::kMode,
    subframe_fragment_field::kFirst,
    subframe_fragment_field::kMask,
    subframe_fragment_field::kInterval,
    subframe_fragment_field::kPosition,
    subframe_fragment_field::kPositionMask,
    subframe_fragment_field::kTransferOrder,
    subframe_fragment_field::kFragment,
    word_frame_field::kCounter,
    word_frame_field::kCount,
    word_frame_field::kFragments,
    word_frame_field::kLength,
    word_frame_field::kWord,
    word_frame_field::kWordInterval,
    word_frame_field::kEndWord,
    word_frame_field::kFrame,
    word_frame_field::kFrameInterval,
    word_frame_field::kEndFrame,
    word_frame_field::kMask,
    word_frame_field::kTransferOrder,
    word_frame_field::kPosition,
    tagged_field::kCount,
    tagged_field::kWordLength,
    tagged_field::kTagNumber,
    tagged_field::kMask,
    tagged_field::kTransferOrder,
    tagged_field::kPosition,
    measurement_field::kComment,
});

}  // namespace

std::span<const Field> measurementVocabulary() {
    return kMeasurementFields;
}

std::span<const Field> pcmVocabulary() {
    static const auto kTable = makeTable();
    return kTable;
}

}  // namespace kavu
