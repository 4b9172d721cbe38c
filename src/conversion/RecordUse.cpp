#include "conversion/RecordUse.h"

#include "conversion/RawChunk.h"
#include "conversion/RawRecords.h"
#include "core/command/CommandPath.h"
#include "core/text/Text.h"

#include <algorithm>
#include <string>
#include <unordered_map>

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
        auto finding = findingOf({first, last});
        if (finding.leftOut + finding.restyled > 0 || !finding.counts.empty()) {
            findings.push_back(std::move(finding));
        }
        first = last;
    }
}

namespace {

void leaveOut(RecordUse::Finding& finding, std::string_view line) {
    finding.example = finding.leftOut++ == 0 ? line : finding.example;
}

}  // namespace

void RecordUse::take(const Field& field, Finding& finding) {
    if (field.row == nullptr || field.row->isOfTheProgram) {
        leaveOut(finding, field.line);
        return;
    }
    const auto value = trimBlanks(field.value);
    if (!record_.put(*field.row, field.code, value)) {
        // Of two with one code the later one counts.
        const auto before = std::find_if(
            taken_.begin(), taken_.end(),
            [&field](const Field* const each) { return equalsIgnoreCase(each->code, field.code); });
        const bool isReplaced = before != taken_.end();
        leaveOut(finding, isReplaced ? (*before)->line : field.line);
        if (!isReplaced) {
            return;
        }
        taken_.erase(before);
    }
    taken_.push_back(&field);
    if (value.size() != field.value.size() || codeHead(field.code) != field.row->code) {
        finding.restyledExample = finding.restyled++ == 0 ? field.line : finding.restyledExample;
    }
}

const RecordUse::Field* RecordUse::findRepeated() const {
    std::unordered_map<std::string, const Field*> last;
    for (const auto* const field : taken_) {
        const auto [it, isNew] = last.try_emplace(lowerAscii(field->code), field);
        if (!isNew) {
            return it->second;
        }
    }
    return nullptr;
}

RecordUse::Finding RecordUse::findingOf(std::span<const Field> fields) {
    Finding finding{.index = fields.front().index};
    record_.clear();
    taken_.clear();
    for (const auto& field : fields) {
        take(field, finding);
    }
    record_.findWritten();
    for (const auto* const field : taken_) {
        if (!record_.writes(*field->row, field->code)) {
            leaveOut(finding, field->line);
        }
    }
    if (const auto repeated = record_.repeatedItems(); repeated > 0) {
        const auto* const field = finding.leftOut == 0 ? findRepeated() : nullptr;
        finding.example = field != nullptr ? field->line : finding.example;
        finding.leftOut += repeated;
    }
    finding.counts = record_.countFaults();
    return finding;
}

}  // namespace kavu
