#include "conversion/RecordUse.h"

#include "conversion/RawChunk.h"
#include "conversion/RawRecords.h"

#include <algorithm>

namespace kavu {

void RecordUse::add(const RawCommand& command, const ConversionCode* row) {
    const auto code = trim(command.code);
    fields_.push_back({command.index, command.line, code, command.value,
                       row != nullptr && canBeRecordKey(code) ? row : nullptr});
}

void RecordUse::find(std::vector<Finding>& findings) {
    const auto byIndex = [](const Field& a, const Field& b) { return a.index < b.index; };
    if (!std::is_sorted(fields_.begin(), fields_.end(), byIndex)) {
        std::stable_sort(fields_.begin(), fields_.end(), byIndex);
    }
    for (auto first = fields_.begin(); first != fields_.end();) {
        const auto last = std::find_if(first, fields_.end(), [first](const Field& field) {
            return field.index != first->index;
        });
        if (auto finding = findingOf({first, last});
            finding.leftOut > 0 || !finding.counts.empty()) {
            findings.push_back(std::move(finding));
        }
        first = last;
    }
}

RecordUse::Finding RecordUse::findingOf(std::span<const Field> fields) {
    Finding finding{.index = fields.front().index};
    const auto leaveOut = [&finding](const Field& field) {
        finding.example = finding.leftOut++ == 0 ? field.line : finding.example;
    };
    record_.clear();
    taken_.clear();
    for (const auto& field : fields) {
        if (field.row != nullptr && record_.put(*field.row, field.code, trimBlanks(field.value))) {
            taken_.push_back(&field);
        } else if (field.row == nullptr || !field.row->isOfTheProgram) {
            leaveOut(field);
        }
    }
    record_.findWritten();
    for (const auto* const field : taken_) {
        if (!record_.writes(*field->row, field->code)) {
            leaveOut(*field);
        }
    }
    finding.leftOut += record_.repeatedItems();
    finding.counts = record_.countFaults();
    return finding;
}

}  // namespace kavu
