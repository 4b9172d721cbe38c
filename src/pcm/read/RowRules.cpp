#include "pcm/read/RowRules.h"

#include "core/text/Text.h"
#include "pcm/model/PcmFormatFields.h"
#include "pcm/read/PcmCounts.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/PAsyncFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/PSubframeFields.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

const Field* countOf(std::span<const Field> table, std::string_view list) {
    const auto it = std::find_if(table.begin(), table.end(),
                                 [list](const Field& field) { return field.code == list; });
    return list.empty() || it == table.end() ? nullptr : &*it;
}

/// The fields in a list, those of its inner lists included.
std::vector<Field> fieldsWithin(std::span<const Field> table, const Field& count) {
    std::vector<Field> rows;
    for (const auto& field : table) {
        const auto* outer = countOf(table, field.list);
        while (outer != nullptr && outer->code != count.code) {
            outer = countOf(table, outer->list);
        }
        if (outer != nullptr) {
            rows.push_back(field);
        }
    }
    return rows;
}

std::vector<CountRule> allPcmRows() {
    const auto table = pcmVocabulary();
    std::vector<CountRule> rules;
    // In the order of the numbers of the lists.
    for (const auto& count : {p::kIsfN, p::kSfN, p::kAefN, p::kAdmN}) {
        rules.push_back({count, fieldsWithin(table, count)});
    }
    for (const auto& rule : pcmCountRules()) {
        const bool isThere = std::any_of(rules.begin(), rules.end(), [&](const CountRule& other) {
            return other.count.code == rule.count.code;
        });
        if (!isThere) {
            rules.push_back(rule);
        }
    }
    // What is counted by a row of a list is in that list as well.
    for (auto& outer : rules) {
        for (const auto& inner : rules) {
            const auto isInner = [&inner](const Field& row) {
                return row.code == inner.count.code;
            };
            if (std::any_of(outer.rows.begin(), outer.rows.end(), isInner) &&
                indexCountOf(outer.count.code) > 0) {
                outer.rows.insert(outer.rows.end(), inner.rows.begin(), inner.rows.end());
            }
        }
    }
    const auto lengths = wordLengthFields();
    rules.push_back({Field{}, {lengths.begin(), lengths.end()}});  // words without a count
    return rules;
}

/// Without those of the lists and of the measurements, to whose rows a save gives new numbers.
std::vector<CountRule> rowsWithinMeasurements() {
    auto rules = measurementCountRules();
    std::erase_if(rules, [](const CountRule& rule) { return indexCountOf(rule.count.code) < 2; });
    return rules;
}

}  // namespace

RowRules::RowRules(std::span<const CountRule> rules) {
    for (std::size_t i = 0; i < rules.size(); ++i) {
        const int depth = indexCountOf(rules[i].count.code);
        for (const auto& row : rules[i].rows) {
            auto& uses = uses_[lowerAscii(stemOf(row.code))];
            if (std::any_of(uses.begin(), uses.end(),
                            [i](const RowUse& use) { return use.list == static_cast<int>(i); })) {
                continue;
            }
            const auto at = std::find_if(uses.begin(), uses.end(),
                                         [depth](const RowUse& use) { return use.depth > depth; });
            uses.insert(at, {static_cast<int>(i), depth});
        }
    }
}

std::span<const RowUse> RowRules::usesOf(std::string_view stem) const {
    const auto it = uses_.find(lowerAscii(stem));
    return it == uses_.end() ? std::span<const RowUse>() : std::span(it->second);
}

std::string RowRules::key(const RowUse& use, const RowNumbers& at, int numbers) {
    std::string text = std::to_string(use.list);
    for (int i = 0; i < numbers; ++i) {
        text.append("-").append(std::to_string(at.at[static_cast<std::size_t>(i)]));
    }
    return text;
}

const RowRules& pcmRowRules() {
    static const RowRules kRules(allPcmRows());
    return kRules;
}

const RowRules& measurementRowRules() {
    static const RowRules kRules(rowsWithinMeasurements());
    return kRules;
}

}  // namespace kavu
