// The deletion of a data source with its streams.
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/talk/BoxLines.h"
#include "core/talk/Messages.h"
#include "core/talk/QuestionNames.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/MeasurementNames.h"
#include "groups/Reindex.h"
#include "groups/SourceEdit.h"
#include "groups/SourceList.h"
#include "groups/SourceNames.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace kavu {

namespace {

/// The names of the measurements that are deleted with the data source: those of its one
/// link. With several links the names stay known.
bool gatherLostNames(SourceParts& parts, UserInterface* parent, const std::string& name,
                     const std::vector<Multiplex>& multiplexes, std::vector<std::string>& lost) {
    const auto own =
        std::find_if(multiplexes.begin(), multiplexes.end(),
                     [&](const Multiplex& multiplex) { return multiplex.source == name; });
    return own == multiplexes.end() || own->links.size() != 1 ||
           parts.measurements.streamMeasurementNames(parent, own->links.front(), lost);
}

/// Asks whether the groups go that belonged to no data source before; those that stay are
/// `spared`. False for Cancel, and after a failure, which is reported.
bool askAboutUnreferenced(DocumentContext& context, UserInterface* parent, const std::string& name,
                          std::vector<UnreferencedGroup>& spared) {
    std::vector<UnreferencedGroup> found;
    if (parent == nullptr) {
        return true;
    }
    if (!findUnreferencedGroups(context, parent, name, found)) {
        return false;
    }
    if (found.empty()) {
        return true;
    }
    std::vector<std::string> lines;
    std::transform(found.begin(), found.end(), std::back_inserter(lines),
                   [](const UnreferencedGroup& group) { return group.title; });
    const auto reply = askAboutLines(
        *parent,
        {.name = question::kUnreferenced,
         .title = loadText(title::kDeleteEntry).value_or(""),
         .before = "These groups belong to no data source, and would be removed as well:",
         .after = "Do you want to remove them, too?",
         .defaultButton = Button::Yes,
         .yes = "&Remove Them, Too",
         .no = "&Leave Them"},
        lines);
    if (reply == Button::No) {
        spared = std::move(found);
    }
    return reply == Button::Yes || reply == Button::No;
}

/// Removes a row of the name; false if there is none.
bool eraseRow(std::vector<DataSource>& rows, const std::string& name) {
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const DataSource& source) { return source.name == name; });
    if (row == rows.end()) {
        return false;
    }
    rows.erase(row);
    return true;
}

/// Removes the row from the list. False after a failure, which is reported.
bool removeRow(DocumentContext& context, UserInterface* parent, const std::string& name) {
    std::vector<DataSource> rows;
    std::vector<DataSource> uncounted;
    if (!readDataSources(context, parent, rows)) {
        return false;
    }
    auto status = readUncountedSources(context, static_cast<int>(rows.size()), uncounted);
    (void)(eraseRow(rows, name) || eraseRow(uncounted, name));
    status = status.ok() ? rewriteSources(context, rows, uncounted) : status;
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

bool remove(SourceParts& parts, UserInterface* parent, const std::string& name,
            const std::string& sourceFile, std::span<const UnreferencedGroup> spared) {
    auto& context = parts.context;
    if (!sourceFile.empty()) {
        if (const auto status = context.files.remove(sourceFile); !status.ok()) {
            reportUnableToWrite(parent, status);
            return false;
        }
    }
    std::vector<Multiplex> multiplexes;
    std::vector<std::string> lost;
    if (!removeRow(context, parent, name) || !readMultiplexes(context, parent, multiplexes) ||
        !gatherLostNames(parts, parent, name, multiplexes, lost) ||
        !reindexAllSections(context, parent, spared)) {
        return false;
    }
    for (const auto& measurement : lost) {
        parts.measurements.forget(measurement);
    }
    return true;
}

}  // namespace

bool deleteDataSource(SourceParts& parts, UserInterface* parent, const std::string& name) {
    auto& context = parts.context;
    int index = 0;
    char letter = 'T';
    for (const char group : {'T', 'R'}) {
        const GroupNames groups(context, parent, group);
        if (!groups.complete()) {
            return false;
        }
        if (index == 0) {
            letter = group;
            index = groups.find(name);
        }
    }
    LinkNames names;
    if (!gatherSourceNames(context, parent, names)) {
        return false;
    }
    const bool listed = names.has(name);
    if (name.empty() || (index == 0 && !listed)) {
        showBox(parent, formatPrintf("There is no data source '%s' in this document.", name),
                std::string(loadText(title::kDeleteEntry).value_or("")));
        return false;
    }
    if (parent != nullptr &&
        context.messages.show(parent, -140, title::kDeleteEntry, kYesNoBox, name) != Button::Yes) {
        return false;
    }
    std::vector<UnreferencedGroup> spared;
    if (!askAboutUnreferenced(context, parent, name, spared)) {
        return false;
    }
    const auto sourceFile = index == 0 ? std::string() : groupFile(letter, index);
    if (!inTransaction(context, parent, OperationId::DeleteSource,
                       [&] { return remove(parts, parent, name, sourceFile, spared); })) {
        return false;
    }
    // Streams are numbered by their place among the links, which has changed.
    parts.measurements.checkForDuplicates(parent);
    releaseStream(context);
    return true;
}

}  // namespace kavu
