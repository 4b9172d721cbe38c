#include "application/DocumentFacts.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/files/FileIo.h"
#include "groups/DocumentTree.h"

namespace kavu {

namespace {

constexpr int kFirstHardwareEdition = 1996;
constexpr int kFirstVendorEdition = 2004;
constexpr int kFirstMessageEdition = 2009;

bool hasMessageFile(const WorkingStore& store) {
    for (int index = 1; index <= kMostGroupIndex; ++index) {
        if (fileExists(store.pathOf(groupFile('S', index)))) {
            return true;
        }
    }
    return false;
}

}  // namespace

DocumentFacts factsOf(const DocumentContext& context, const DocumentTree& tree) {
    DocumentFacts facts;
    facts.open = context.document.open;
    facts.version = context.document.version;
    if (!facts.open) {
        return facts;
    }
    for (const auto& source : tree.dataSources) {
        facts.hasRadioSource = facts.hasRadioSource || source.sourceClass == 'R';
        facts.hasTapeSource = facts.hasTapeSource || source.sourceClass == 'T';
        facts.hasDataLink = facts.hasDataLink || !source.links.empty();
    }
    facts.hasMessageStream = hasMessageFile(context.store);
    return facts;
}

bool allows(OperationId id, const DocumentFacts& facts) {
    using enum OperationId;
    switch (id) {
        case Create:
        case Open:
        case ChangeEdition:
            return true;
        case Undo:
            return facts.open && facts.canUndo;
        case Redo:
            return facts.open && facts.canRedo;
        case EditHardware:
            return facts.open && facts.version >= kFirstHardwareEdition;
        case EditVendor:
            return facts.open && facts.version >= kFirstVendorEdition;
        case EditTransmission:
            return facts.open && facts.hasRadioSource;
        case EditRecorder:
            return facts.open && facts.hasTapeSource;
        case EditMultiplex:
            return facts.open && (facts.hasRadioSource || facts.hasTapeSource);
        case EditStream:
            return facts.open && (facts.hasDataLink || (facts.version >= kFirstMessageEdition &&
                                                        facts.hasMessageStream));
        default:
            return facts.open;
    }
}

}  // namespace kavu
