#include "groups/CountCheck.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/command/CommandPath.h"
#include "core/document/GroupFiles.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/GroupLists.h"
#include "groups/GroupScan.h"
#include "groups/RGroup.h"
#include "vocabulary/CountFault.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>

namespace kavu {

namespace {

bool isNo(std::string_view value) {
    return startsWithIgnoreCase(value, "NO");
}

std::vector<CountRule> rulesOf(const GroupLists& lists) {
    std::vector<CountRule> rules;
    for (const auto& list : lists.all()) {
        auto rows = list.fields;
        std::erase_if(rows, [&](const Field& field) {
            return indexCountOf(field.code) != indexCountOf(list.count.code) + 1;
        });
        rules.push_back({list.count, std::move(rows)});
    }
    return rules;
}

/// Checks one file of an attribute group.
void checkFile(DocumentContext& context, UserInterface* parent, const GroupVocabulary& group,
               int index) {
    // The tracks of a recorder and their items are lists that no table states.
    const auto rules = group.letter == 'R' ? rulesOf(recorderLists()) : countRules(group.fields);
    CountCheck check(rules, context.document.version);
    const auto path = context.store.pathOf(groupFile(group.letter, index));
    const auto status = forEachCommand(context.reader, path, [&check](const std::string& command) {
        const auto view = viewCommand(command);
        if (!view.field.empty()) {
            check.add(codeHead(view.field), parseCommandIndices(command), view.value);
        }
        return true;
    });
    if (!status.ok() && !isMissing(status)) {
        reportUnableToRead(parent, status);
    }
    check.report(groupHead(group.letter, index), [&](const std::string& text) {
        context.messages.logText(parent, title::kWarning, text);
    });
}

}  // namespace

std::vector<Field> countedFields(std::span<const Field> table, const Field& count) {
    std::vector<Field> rows;
    for (const auto& field : table) {
        const bool isOne =
            field.list == count.code && indexCountOf(field.code) == indexCountOf(count.code) + 1;
        if (isOne) {
            rows.push_back(field);
        }
    }
    return rows;
}

std::vector<CountRule> countRules(std::span<const Field> table) {
    std::vector<CountRule> rules;
    for (const auto& field : table) {
        if (governsRows(field) && !field.bridgeOnly) {
            rules.push_back({field, countedFields(table, field)});
        }
    }
    return rules;
}

CountCheck::CountCheck(std::span<const CountRule> rules, int edition) : rules_(rules) {
    for (std::size_t i = 0; i < rules.size(); ++i) {
        if (!isKnownIn(edition, rules[i].count)) {
            continue;
        }
        uses_[lowerAscii(stemOf(rules[i].count.code))].push_back({i, true});
        for (const auto& row : rules[i].rows) {
            uses_[lowerAscii(stemOf(row.code))].push_back({i, false});
        }
    }
}

void CountCheck::add(std::string_view head, const CommandIndices& indices, std::string_view value) {
    head_.assign(head);
    std::transform(head_.begin(), head_.end(), head_.begin(), toLowerAscii);
    const auto found = uses_.find(head_);
    if (found == uses_.end()) {
        return;
    }
    for (const auto& use : found->second) {
        const auto depth = indexCountOf(rules_[use.rule].count.code);
        if (indices.count < depth + (use.isCount ? 0 : 1) || value.empty()) {
            continue;
        }
        std::array<int, 3> outer{};
        std::copy_n(indices.fields, depth, outer.begin());
        const int number = !use.isCount  ? indices.fields[depth]
                           : isNo(value) ? 1
                                         : std::max(0, leadingInt(value));
        if (onlyBeyondOne_ && number == 1) {
            continue;
        }
        auto& numbers = places_[{use.rule, outer}];
        if (!use.isCount) {
            numbers.highest = std::max(numbers.highest, number);
        } else if (!numbers.isStated) {
            numbers.isStated = true;
            numbers.stated = number;
        }
    }
}

void CountCheck::addBeyondOne(std::string_view head, const CommandIndices& indices,
                              std::string_view value) {
    onlyBeyondOne_ = true;
    const bool isBeyond = (indices.count > 2 && indices.fields[2] > 1) ||
                          (indices.count > 3 && indices.fields[3] > 1);
    if (isBeyond || head.ends_with('N') || head.ends_with('n')) {
        add(head, indices, value);
    }
}

std::string CountCheck::statedText(const Numbers& numbers) const {
    if (numbers.isStated) {
        return std::to_string(numbers.stated);
    }
    return onlyBeyondOne_ ? "1 or nothing" : "nothing";
}

void CountCheck::report(const std::string& prefix,
                        const std::function<void(const std::string&)>& tell) {
    for (const auto& [list, highest] : lists_) {
        auto& lists = places_[{0, {}}].highest;
        lists = std::max(lists, list);
        auto& measurements = places_[{1, {list}}].highest;
        measurements = std::max(measurements, highest);
    }
    for (const auto& [place, numbers] : places_) {
        const auto& rule = rules_[place.first];
        const int missing = onlyBeyondOne_ ? 1 : rule.otherwise;
        const int stated = numbers.isStated ? numbers.stated : missing;
        if (numbers.highest <= stated) {
            continue;
        }
        const auto depth = static_cast<std::size_t>(indexCountOf(rule.count.code));
        tell(hiddenRowsText(
            prefix + fieldCode(rule.count.code, std::span(place.second).first(depth)),
            statedText(numbers), numbers.highest));
    }
}

void checkGroupCounts(DocumentContext& context, UserInterface* parent) {
    for (const char letter : {'G', 'T', 'R', 'M', 'S', 'A'}) {
        const auto& group = *findVocabulary(letter);
        const int last = groupKind(letter).indexed ? kMostGroupIndex : kLeastGroupIndex;
        for (int index = kLeastGroupIndex; index <= last && !cancelRequested(parent); ++index) {
            checkFile(context, parent, group, index);
        }
    }
}

}  // namespace kavu
