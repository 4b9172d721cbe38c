#include "groups/LinkValidation.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/CarriedCommands.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/SourceList.h"
#include "vocabulary/References.h"
#include "vocabulary/StreamType.h"

#include <algorithm>
#include <array>

#include <climits>

namespace kavu {

namespace {

/// The groups whose links need a home, in the order in which they are checked.
struct LinkedGroup {
    char letter;
    std::string_view kind;
    std::string_view searched;  ///< its name in the status text; empty for no text
    bool mayBeEmbedded;
};
constexpr auto kLinkedGroups = std::to_array<LinkedGroup>({
    {'P', "PCM Format", "PCM", true},
    {'D', "PCM Measurement", "Measurement", true},
    {'B', stream_type::kBus1553.text, {}, false},
    {'A', "PAM", {}, false},
});

/// Adds a data source to the G group.
bool addDataSource(DocumentContext& context, UserInterface* parent, std::string& name) {
    const SourceCodes codes;
    int count = 0;
    int index = 1;
    auto writer = context.files.writer(working::kGeneral);
    ByteSource source;
    auto status =
        writer.status().ok() ? source.open(context.files.path(working::kGeneral)) : writer.status();
    if (status.ok()) {
        context.reader.findIntField(parent, source, {}, codes.count, count);
        // A huge count must not overflow.
        index = std::min(count, INT_MAX - 1) + 1;
        RoomForSource room;
        status = room.find(context, index);
        source.seek(0);
        std::string command;
        while (status.ok() && context.reader.nextRawCommand(source, command)) {
            const auto view = viewCommand(command);
            if (!startsWithIgnoreCase(command, codes.count) && !CarriedCommands::isCarried(view)) {
                writer.write(room.isInTheWay(view.code) ? room.moved(command) : command);
                writer.write("\r\n");
            }
        }
        status = status.ok() ? source.status() : status;
    } else if (isMissing(status) && writer.status().ok()) {
        status = {};  // a document without a G group gets one
    }
    name = formatPrintf("Data Source #%d", index);
    writer.write(formatPrintf("%s:%d;\r\n", codes.count, index) + codes.rowText(index, name, "RF"));
    status = status.ok() ? closeCarrying(context.files, context.reader, working::kGeneral, writer)
                         : status;
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

/// The index for a new file of a group, or 0 after a report. The last index is never used:
/// it is reserved for a group that is read from a file.
int indexBelowLast(DocumentContext& context, UserInterface* parent, char letter,
                   std::string_view called) {
    const int index = firstFreeIndex(context, letter);
    if (index < kMostGroupIndex) {
        return index;
    }
    context.messages.show(parent, 303, title::kError, kErrorBox, called);
    return 0;
}

bool writeGroup(DocumentContext& context, UserInterface* parent, char letter, int index,
                const std::string& text) {
    const auto status = context.files.put(groupFile(letter, index), text);
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

/// A data source, a transmission definition and a multiplex definition for one link.
bool makeHome(DocumentContext& context, UserInterface* parent, const std::string& link) {
    std::string name;
    if (!addDataSource(context, parent, name)) {
        return false;
    }
    const int radio = indexBelowLast(context, parent, 'T', "RF");
    if (radio == 0 ||
        !writeGroup(context, parent, 'T', radio,
                    formatPrintf("T-%d\\ID:%s;\r\nT-%d\\SCO\\N:0;\r\n", radio, name, radio))) {
        return false;
    }
    const int multiplex = indexBelowLast(context, parent, 'M', "Multiplex");
    return multiplex != 0 &&
           writeGroup(context, parent, 'M', multiplex,
                      formatPrintf("M-%d\\ID:%s;\r\nM-%d\\BSG1:PCM;\r\n"
                                   "M-%d\\BB\\DLN:%s;\r\nM-%d\\SI\\N:0;\r\n",
                                   multiplex, name, multiplex, multiplex, link, multiplex));
}

/// The links of the files of one group, in the order of the indices.
bool resolveGroup(DocumentContext& context, UserInterface* parent, const LinkedGroup& group,
                  const std::vector<GroupNames::Entry>& files, const LinkNames& embedded,
                  LinkNames& multiplexed, const LinkNames& recorded) {
    for (const auto& file : files) {
        if (cancelRequested(parent)) {
            return false;
        }
        if (!group.searched.empty()) {
            setStatusText(parent, formatPrintf("Searching for Data Link Names in %s Definition #%d",
                                               group.searched, file.index));
            setProgressBar(parent, 100.0 * file.index / kMostGroupIndex);
        }
        if (file.name.empty() || (group.mayBeEmbedded && embedded.has(file.name))) {
            continue;
        }
        if (!resolveDataLink(context, parent, multiplexed, recorded, group.kind, file.name)) {
            return false;
        }
    }
    return true;
}

bool validate(DocumentContext& context, UserInterface* parent) {
    std::vector<Multiplex> multiplexes;
    if (!readMultiplexes(context, parent, multiplexes)) {
        return false;
    }
    LinkNames multiplexed;
    for (const auto& multiplex : multiplexes) {
        for (const auto& link : multiplex.links) {
            multiplexed.add(link);
        }
    }
    if (multiplexed.size() >= kMostDataLinks) {
        context.messages.show(parent, 302, title::kError, kErrorBox);
        return false;
    }
    LinkNames recorded;
    std::vector<PcmLinks> formats;
    if (!gatherRecordedLinks(context, parent, recorded) ||
        !readPcmLinks(context, parent, formats)) {
        return false;
    }
    LinkNames embedded;
    std::vector<GroupNames::Entry> pcmFiles;
    for (const auto& format : formats) {
        pcmFiles.push_back({format.index, format.link});
        for (const auto& link : format.embedded) {
            embedded.add(link);
        }
    }
    for (const auto& group : kLinkedGroups) {
        if (group.letter != 'P') {
            const GroupNames names(context, parent, group.letter);
            if (!names.complete() || !resolveGroup(context, parent, group, names.entries(),
                                                   embedded, multiplexed, recorded)) {
                return false;
            }
        } else if (!resolveGroup(context, parent, group, pcmFiles, embedded, multiplexed,
                                 recorded)) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool validateDataLinks(DocumentContext& context, UserInterface* parent) {
    const ProgressScope progress(parent, ProgressMode::WithoutCancel);
    const bool valid = validate(context, parent);
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    return valid;
}

bool resolveDataLink(DocumentContext& context, UserInterface* parent, LinkNames& multiplexed,
                     const LinkNames& recorded, std::string_view kind, const std::string& link) {
    if (multiplexed.has(link)) {
        return true;
    }
    if (multiplexed.size() >= kMostDataLinks) {
        context.messages.show(parent, 303, title::kError, kErrorBox, kind);
        return false;
    }
    multiplexed.add(link);
    if (recorded.has(link)) {
        return true;
    }
    if (context.messages.show(parent, -304, title::kWarning, kYesNoBox, kind, link) !=
        Button::Yes) {
        return true;
    }
    if (!makeHome(context, parent, link)) {
        return false;
    }
    context.history.markCorrected();
    return true;
}

bool createStreamHome(DocumentContext& context, UserInterface* parent, const std::string& link) {
    std::string_view kind = "Message Data";
    for (const auto& group : kLinkedGroups) {
        if (GroupNames(context, parent, group.letter).find(link) > 0) {
            kind = group.kind;
            break;
        }
    }
    if (context.messages.show(parent, -304, title::kWarning, kYesNoBox, kind, link) !=
        Button::Yes) {
        return false;
    }
    return inTransaction(context, parent, OperationId::CreateHome,
                         [&] { return makeHome(context, parent, link); });
}

bool gatherRecordedLinks(DocumentContext& context, UserInterface* parent, LinkNames& links) {
    for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
        const auto status = forEachCommand(
            context.reader, context.store.pathOf(groupFile('R', index)),
            [&](const std::string& command) {
                const auto view = viewCommand(command);
                if (refersTo('R', view.field) == Refers::Link && !view.value.empty()) {
                    // A subchannel's name has no limit, so a longer one is no fault: it
                    // is compared as a link name would be read.
                    links.add(view.value.substr(0, kNameLimit));
                }
                return true;
            });
        if (!status.ok() && !isMissing(status)) {
            reportUnableToRead(parent, status);
            return false;
        }
        if (cancelRequested(parent)) {
            return false;
        }
    }
    return true;
}

}  // namespace kavu
