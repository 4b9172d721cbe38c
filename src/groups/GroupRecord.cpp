#include "groups/GroupRecord.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/KeptCommands.h"

#include <algorithm>
#include <limits>

namespace kavu {

std::string_view GroupRow::value(std::string_view code) const {
    const auto it = values.find(code);
    return it == values.end() ? std::string_view() : std::string_view(it->second);
}

void GroupRow::set(std::string_view code, std::string_view value) {
    if (value.empty()) {
        values.erase(std::string(code));
    } else {
        values.insert_or_assign(std::string(code), std::string(value));
    }
}

std::span<const GroupRow> GroupRow::rows(std::string_view count) const {
    const auto it = lists.find(count);
    return it == lists.end() ? std::span<const GroupRow>() : std::span(it->second);
}

// --- Reading ----------------------------------------------------------------------------------

/// The fields of an edition by the list that they belong to.
struct GroupSource::Plan {
    Plan(std::span<const Field> table, int edition, std::span<const LoadStep> loadSteps)
        : fields(knownFields(table, edition)), steps(loadSteps) {
        for (const auto& field : fields) {
            byList[field.list].push_back(&field);
        }
    }
    std::vector<Field> fields;
    std::unordered_map<std::string_view, std::vector<const Field*>> byList;
    std::span<const LoadStep> steps;
};

GroupSource::GroupSource(DocumentContext& context, UserInterface* parent, char letter, int index)
    : context_(context), parent_(parent), prefix_(groupHead(letter, index)) {
    status_ = GroupFile::open(context.files, context.reader, letter, index, kept_);
}

std::string GroupSource::codeOf(const Field& field, RowNumbers at) const {
    return prefix_ + fieldCode(field.codeRead.empty() ? field.code : field.codeRead, at.at);
}

std::string GroupSource::taken(const Field& field, RowNumbers at, const Found& found) {
    kept_.commands().markRead(found.place);
    const auto limit = static_cast<int>(limitIn(context_.document.version, field));
    // A message names the code as the table spells it.
    return std::string(context_.reader.applyLimit(parent_, codeOf(field, at), found.value, limit));
}

std::string GroupSource::valueIfThere(const Field& field, RowNumbers at) {
    const auto found = kept_.commands().find(codeOf(field, at));
    return found ? taken(field, at, *found) : std::string();
}

std::string GroupSource::value(const Field& field, RowNumbers at) {
    auto text = valueIfThere(field, at);
    if (!text.empty() || field.missing.empty()) {
        return text;
    }
    return replaceAll(field.missing, "%d", std::to_string(at.last()));
}

std::string GroupSource::peek(const Field& field, RowNumbers at) {
    const auto found = kept_.commands().peek(codeOf(field, at));
    return !found ? std::string() : std::string(found->value);
}

std::size_t GroupSource::count(const Field& field, RowNumbers at) {
    const auto found = kept_.commands().find(codeOf(field, at));
    if (!found) {
        return 0;
    }
    kept_.commands().markRead(found->place);
    const auto most = field.rows > 0 ? field.rows : std::numeric_limits<int>::max();
    return clampedCount(found->value, static_cast<std::size_t>(most));
}

void GroupSource::readRow(std::span<const Field> fields, GroupRow& row, RowNumbers at) {
    for (const auto& field : knownFields(fields, context_.document.version)) {
        row.set(field.code, value(field, at));
    }
}

bool GroupSource::step(const Plan& plan, std::string_view after) {
    const auto it = std::find_if(plan.steps.begin(), plan.steps.end(),
                                 [&](const LoadStep& each) { return each.after == after; });
    if (it == plan.steps.end()) {
        return true;
    }
    setProgressBar(parent_, it->percent);
    yieldToInterface(parent_);
    return !cancelRequested(parent_);
}

bool GroupSource::readRows(const Plan& plan, const Field& field, GroupRow& row, RowNumbers at) {
    const auto rows = count(field, at);
    if (rows == 0 && !peek(field, at).empty()) {
        // A count of 0 in the file is kept.
        row.lists[std::string(field.code)];
    }
    auto& read = row.fileRows[std::string(field.code)];
    for (std::size_t i = 1; i <= rows; ++i) {
        if (cancelRequested(parent_)) {
            return false;
        }
        auto& added = row.lists[std::string(field.code)].emplace_back();
        added.fileRow = i;
        read.insert(read.end(), i);
        if (!readLevel(plan, field.code, added, at.row(i))) {
            return false;
        }
    }
    return true;
}

void GroupSource::readChoice(const Field& field, GroupRow& row) {
    const auto found = kept_.commands().find(codeOf(field, {}));
    if (!found) {
        row.set(field.code, field.missing);
        return;
    }
    const auto cut = field.limit == 0 ? found->value : found->value.substr(0, field.limit);
    if (choiceIndex(choicesOf(field, context_.document.version), cut) >= 0) {
        row.set(field.code, taken(field, {}, *found));
    }
}

bool GroupSource::readLevel(const Plan& plan, std::string_view list, GroupRow& row, RowNumbers at) {
    const auto it = plan.byList.find(list);
    if (it == plan.byList.end()) {
        return true;
    }
    for (const auto* const field : it->second) {
        if (governsRows(*field)) {
            if (!readRows(plan, *field, row, at)) {
                return false;
            }
        } else if (field->kind == FieldKind::Choice && list.empty()) {
            readChoice(*field, row);
        } else {
            row.set(field->code, value(*field, at));
        }
        if (list.empty() && !step(plan, field->code)) {
            return false;
        }
    }
    return true;
}

bool GroupSource::readTable(std::span<const Field> table, GroupRow& record,
                            std::span<const LoadStep> steps) {
    const Plan plan(table, context_.document.version, steps);
    return step(plan, {}) && readLevel(plan, {}, record, {});
}

// --- Writing ----------------------------------------------------------------------------------

void GroupWriter::write(const Field& field, std::string_view value, RowNumbers at) {
    std::string stored(trimTrailingBlanks(value));
    if (stored.empty()) {
        return;
    }
    toStoredForm(stored);
    text_ += prefix_;
    text_ += fieldCode(field.code, at.at);
    text_ += ':';
    text_ += stored;
    text_ += ";\r\n";
}

void GroupWriter::writeCount(const Field& field, std::size_t rows, RowNumbers at) {
    if (rows > 0 || field.writesZero) {
        write(field, std::to_string(rows), at);
    }
}

void GroupWriter::writeLevel(std::span<const Field> known, std::string_view list,
                             const GroupRow& row, RowNumbers at) {
    for (const auto& field : known) {
        if (field.list != list) {
            continue;
        }
        if (!governsRows(field)) {
            write(field, row.value(field.code), at);
            continue;
        }
        const auto& all = row.rows(field.code);
        const auto rows = std::min(all.size(), field.rows);
        if (rows > 0 || field.writesZero || row.lists.contains(field.code)) {
            write(field, std::to_string(rows), at);
        }
        for (std::size_t i = 1; i <= rows; ++i) {
            writeLevel(known, field.code, all[i - 1], at.row(i));
        }
    }
}

void GroupWriter::writeTable(std::span<const Field> table, const GroupRow& record, int edition) {
    const auto known = knownFields(table, edition);
    writeLevel(known, {}, record, {});
}

bool storeGroup(DocumentContext& context, UserInterface* parent, char letter, int index,
                std::string_view text, const GroupFile& kept) {
    const auto bytes = keptText(parent, kept, text);
    return inTransaction(context, parent, editOf(letter), [&] {
        const auto status = context.files.put(groupFile(letter, index), bytes);
        if (!status.ok()) {
            reportUnableToWrite(parent, status);
        }
        return status.ok();
    });
}

}  // namespace kavu
