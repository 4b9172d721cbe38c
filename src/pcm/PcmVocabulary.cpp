#include "pcm/PcmVocabulary.h"

#include "pcm/AsyncCodes.h"
#include "pcm/PcmFormatFields.h"
#include "pcm/SubframeFields.h"

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

}  // namespace

std::span<const Field> pcmVocabulary() {
    static const auto kTable = makeTable();
    return kTable;
}

}  // namespace kavu
