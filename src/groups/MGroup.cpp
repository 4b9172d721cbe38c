#include "groups/MGroup.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "groups/DataSources.h"
#include "groups/GroupLists.h"
#include "groups/GroupScan.h"
#include "groups/KeptCommands.h"

#include <algorithm>

namespace kavu {

namespace {

/// A filter type of a row keeps this many characters, in 106-96 as well, where the page
/// offers three.
constexpr std::size_t kFilterCharacters = 2;
constexpr std::string_view kDefaultSignal = "PCM";
constexpr char kEditing[] = "Edit Multiplex/Modulation Information";

bool isName(std::string_view code) {
    return code == kBasebandLink || code == kBasebandMeasurement || code == kSubcarrierLink ||
           code == kSubcarrierMeasurement;
}

const Field& fieldOf(std::string_view code) {
    const auto fields = multiplexFields();
    return *std::find_if(fields.begin(), fields.end(),
                         [&](const Field& field) { return field.code == code; });
}

std::string_view codeOf(SignalName name, std::string_view link, std::string_view measurement) {
    switch (name) {
        case SignalName::DataLink:
            return link;
        case SignalName::Measurement:
            return measurement;
        case SignalName::None:
            break;
    }
    return {};
}
std::string_view basebandCode(const GroupRow& record) {
    return codeOf(signalNameOf(record.value(kSignalType)), kBasebandLink, kBasebandMeasurement);
}
std::string_view rowCode(const GroupRow& row) {
    return codeOf(signalNameOf(row.value(kSubcarrierType)), kSubcarrierLink,
                  kSubcarrierMeasurement);
}

void readRows(GroupSource& source, GroupRow& record) {
    const auto count = source.count(fieldOf(kSubcarrierCount));
    auto& rows = record.lists[std::string(kSubcarrierCount)];
    auto& read = record.fileRows[std::string(kSubcarrierCount)];
    for (std::size_t n = 1; n <= count; ++n) {
        auto& row = rows.emplace_back();
        row.fileRow = n;
        read.insert(read.end(), n);
        for (const auto& field : subcarrierFields()) {
            if (!isName(field.code)) {
                row.set(field.code, source.value(field, {n}));
            }
        }
        if (const auto code = rowCode(row); !code.empty()) {
            row.set(code, source.value(fieldOf(code), {n}));
        }
    }
}

void setName(GroupRow& row, std::string_view code, std::string_view link,
             std::string_view measurement, std::string_view name) {
    row.set(link, {});
    row.set(measurement, {});
    if (!code.empty()) {
        row.set(code, name);
    }
}

void readGroup(DocumentContext& context, UserInterface* parent, GroupSource& file,
               GroupRow& record) {
    const auto fields = multiplexFields();
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const auto& field = fields[i];
        if (field.list.empty() && !isName(field.code) && field.code != kSubcarrierCount) {
            // A single field has no rows before which the user could cancel.
            static_cast<void>(file.readTable(fields.subspan(i, 1), record));
        }
    }
    if (record.value(kSignalType).empty()) {
        record.set(kSignalType, kDefaultSignal);
        context.messages.show(parent, 300, title::kWarning, kWarningBox);
    }
    if (const auto code = basebandCode(record); !code.empty()) {
        record.set(code, file.value(fieldOf(code)));
    }
    readRows(file, record);
}

bool hasFile(const MultiplexGroup& group) {
    return group.index >= kLeastGroupIndex && group.index <= kMostGroupIndex;
}

/// The record as it is written: only the names of the type, and filter types of rows cut.
GroupRow writtenRecord(const MultiplexGroup& group, GroupRow record) {
    record.set(ownNameOf('M'), group.source);
    setName(record, basebandCode(record), kBasebandLink, kBasebandMeasurement, basebandName(group));
    for (auto& row : record.lists[std::string(kSubcarrierCount)]) {
        setName(row, rowCode(row), kSubcarrierLink, kSubcarrierMeasurement,
                std::string(subcarrierName(row)));
        row.set(kSubcarrierFilter,
                std::string(row.value(kSubcarrierFilter).substr(0, kFilterCharacters)));
    }
    return record;
}

}  // namespace

int multiplexIndex(DocumentContext& context, UserInterface* parent, const std::string& source) {
    const int found = findGroupIndex(context, parent, 'M', source);
    return found > 0 ? found : firstFreeIndex(context, 'M');
}

void loadMultiplex(DocumentContext& context, UserInterface* parent, const std::string& source,
                   int index, MultiplexGroup& group) {
    setStatusText(parent, "Initializing Multiplex/Modulation Information...");
    group = MultiplexGroup{.source = source, .index = index};
    IoStatus missing;
    if (hasFile(group)) {
        GroupSource file(context, parent, 'M', index);
        if (file.status().ok()) {
            readGroup(context, parent, file, group.record);
            group.kept = std::move(file.kept());
            setStatusText(parent, kEditing);
            return;
        }
        group.isNew = isMissing(file.status());
        missing = group.isNew ? IoStatus() : file.status();
    }
    context.messages.showFailure(parent, missing, -145, title::kNote, kNoteBox,
                                 "Multiplex/Modulation (M)");
    group.record.set(kSignalType, kDefaultSignal);
    setStatusText(parent, kEditing);
}

bool storeMultiplex(DocumentContext& context, UserInterface* parent, const MultiplexGroup& group) {
    setStatusText(parent, "Saving Multiplex/Modulation Information...");
    const auto edition = context.document.version;
    auto settled =
        settleRows(group.kept, 'M', group.index, multiplexFields(), group.record, edition);
    GroupWriter writer('M', group.index);
    writer.writeTable(multiplexFields(), writtenRecord(group, std::move(settled.record)), edition);
    if (group.record.value(kSignalType).empty()) {
        context.messages.show(parent, 301, title::kWarning, kWarningBox);
    }
    IoStatus status;
    if (hasFile(group)) {
        const auto text = keptText(parent, settled.kept, writer.text());
        Transaction transaction(context, editOf('M'));
        status = context.files.put(groupFile('M', group.index), text);
        status = status.ok() ? transaction.commit() : status;
    }
    if (!hasFile(group) || !status.ok()) {
        context.messages.showFailure(parent, status, 307, title::kError, kErrorBox);
        return false;
    }
    return true;
}

std::string_view basebandName(const MultiplexGroup& group) {
    return group.record.value(basebandCode(group.record));
}

std::string_view subcarrierName(const GroupRow& row) {
    return row.value(rowCode(row));
}

void setBasebandName(MultiplexGroup& group, std::string_view name) {
    setName(group.record, basebandCode(group.record), kBasebandLink, kBasebandMeasurement,
            std::string(name));
}

void setSubcarrierName(GroupRow& row, std::string_view name) {
    setName(row, rowCode(row), kSubcarrierLink, kSubcarrierMeasurement, std::string(name));
}

void replaceLinkName(MultiplexGroup& group, std::string_view oldName, std::string_view newName) {
    const auto replace = [&](GroupRow& row, std::string_view code) {
        if (row.value(code) == oldName) {
            row.set(code, newName);
        }
    };
    replace(group.record, kBasebandLink);
    for (auto& row : group.record.lists[std::string(kSubcarrierCount)]) {
        replace(row, kSubcarrierLink);
    }
}

bool mayNameLink(DocumentContext& context, UserInterface* parent, std::string_view name) {
    if (name.empty() || findGroupIndex(context, parent, 'P', name) <= 0) {
        return true;
    }
    context.messages.show(parent, 306, title::kError, kErrorBox, "Data Link");
    return false;
}

}  // namespace kavu
