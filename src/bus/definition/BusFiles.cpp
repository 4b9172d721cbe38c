#include "bus/definition/BusFiles.h"

#include "bus/definition/BusPack.h"
#include "bus/definition/BusTitles.h"
#include "bus/definition/BusUnpack.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/DocumentTree.h"
#include "groups/GroupScan.h"
#include "vocabulary/References.h"

#include <algorithm>

namespace kavu {

namespace {

/// True if the copy is that of the link: another stream may have been edited since it was made.
bool holdsGroupOf(DocumentContext& context, std::string_view link) {
    GroupFile copy;
    const auto status = GroupFile::openNamed(context.files, context.reader,
                                             std::string(kBusGroupFile), copy, Comments::Skip);
    const auto& commands = copy.commands();
    for (std::size_t place = 0; status.ok() && place < commands.size(); ++place) {
        const auto command = commands.at(place);
        if (equalsIgnoreCase(trimBlanks(command.field), ownNameOf('B')) && !command.value.empty()) {
            return trimBlanks(command.value) == trimBlanks(link);
        }
    }
    return false;
}

/// The number of the link's group, or of the first free one; 0 if all are taken, which is reported.
int groupOf(DocumentContext& context, UserInterface* parent, std::string_view link) {
    int index = findGroupIndex(context, parent, 'B', link);
    index = index > 0 ? index : firstFreeIndex(context, 'B');
    if (index <= kMostGroupIndex) {
        return index;
    }
    showBox(parent, formatPrintf("All %d bus groups of the document are in use.", kMostGroupIndex),
            std::string(loadText(title::kUnableToSaveBus).value_or("")));
    return 0;
}

}  // namespace

bool isDataLink(DocumentContext& context, UserInterface* parent, std::string_view link) {
    const auto tree = readDocumentTree(context, parent);
    const auto isNamed = [&](const TreeLink& each) {
        return each.name == link ||
               std::find(each.embedded.begin(), each.embedded.end(), link) != each.embedded.end();
    };
    const auto holds = [&](const std::vector<TreeLink>& links) {
        return std::any_of(links.begin(), links.end(), isNamed);
    };
    return !link.empty() && (holds(tree.unlinked) ||
                             std::any_of(tree.dataSources.begin(), tree.dataSources.end(),
                                         [&](const TreeSource& source) {
                                             return holds(source.links) || holds(source.tracks);
                                         }));
}

bool loadBusGroup(DocumentContext& context, UserInterface* parent, std::string_view link) {
    const ChangeScope scope(context.files);
    const int index = link.empty() ? 0 : findGroupIndex(context, parent, 'B', link);
    const auto status =
        index > 0 ? context.files.copyIn(context.store.pathOf(groupFile('B', index)), kBusGroupFile)
                  : context.files.removeIfThere(kBusGroupFile);
    if (!status.ok()) {
        reportUnableToRead(parent, status, title::kUnableToReadBus);
    }
    return status.ok();
}

bool storeBusGroup(DocumentContext& context, UserInterface* parent, std::string_view link) {
    if (!holdsGroupOf(context, link)) {
        return true;
    }
    return inTransaction(context, parent, OperationId::EditStream, [&] {
        const int index = groupOf(context, parent, link);
        if (index == 0) {
            return false;
        }
        const auto status =
            context.files.copyIn(context.store.pathOf(kBusGroupFile), groupFile('B', index));
        if (!status.ok()) {
            reportUnableToWrite(parent, status, title::kUnableToSaveBus);
        }
        return status.ok();
    });
}

std::optional<BusDefinition> openBusDefinition(DocumentContext& context, UserInterface* parent,
                                               std::string_view link) {
    return loadBusGroup(context, parent, link) ? reopenBusDefinition(context, parent, link)
                                               : std::nullopt;
}

std::optional<BusDefinition> reopenBusDefinition(DocumentContext& context, UserInterface* parent,
                                                 std::string_view link) {
    BusDefinition definition{.link = std::string(link), .index = groupOf(context, parent, link)};
    return definition.index > 0 && unpackBusGroup(context, parent, definition)
               ? std::optional(std::move(definition))
               : std::nullopt;
}

bool storeBusDefinition(DocumentContext& context, UserInterface* parent,
                        const BusDefinition& definition) {
    return inTransaction(context, parent, OperationId::EditStream, [&] {
        return packBusGroup(context, parent, definition) &&
               storeBusGroup(context, parent, definition.link);
    });
}

}  // namespace kavu
