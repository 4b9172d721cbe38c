#include "bus/StreamDataEdition.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Edition.h"
#include "vocabulary/SGroupFields.h"

namespace kavu {

namespace {

constexpr int kNewerFeature = 73;
constexpr const char* kRemoved = ", and was removed in 106-09";

void refuse(const DocumentContext& context, UserInterface* parent, int firstEdition) {
    if (parent == nullptr) {
        return;
    }
    const int edition = context.document.version;
    MessageBox box;
    box.id = kNewerFeature;
    box.titleId = title::kError;
    box.title = loadText(title::kError).value_or("");
    box.text =
        formatMessage<int, int>(kNewerFeature, editionNumber(edition), editionNumber(firstEdition));
    if (firstEdition < kMessageDataEdition && edition >= kMessageDataEdition) {
        box.text += kRemoved;
    }
    box.icon = Icon::Error;
    parent->message(box);
}

}  // namespace

bool knowsMessages(const DocumentContext& context, UserInterface* parent) {
    if (context.document.version >= kMessageDataEdition) {
        return true;
    }
    refuse(context, parent, kMessageDataEdition);
    return false;
}

bool knowsPackets(const DocumentContext& context, UserInterface* parent) {
    const int edition = context.document.version;
    if (edition >= kPacketEdition && edition <= kLastPacketEdition) {
        return true;
    }
    refuse(context, parent, kPacketEdition);
    return false;
}

}  // namespace kavu
