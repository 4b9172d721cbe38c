#include "bus/StreamData.h"

#include "bus/message/MessageGroup.h"
#include "bus/packet/PacketGroup.h"
#include "core/TmatsDocument.h"
#include "groups/DataSources.h"
#include "groups/GroupScan.h"

#include <algorithm>

namespace kavu {

namespace {

/// True if the stream of a link has a format, and that is not one of packets.
bool hasOtherFormat(DocumentContext& context, UserInterface* parent, std::string_view link) {
    std::vector<PcmLinks> formats;
    (void)readPcmLinks(context, parent, formats);
    const auto format = std::find_if(formats.begin(), formats.end(),
                                     [link](const PcmLinks& each) { return each.link == link; });
    return format != formats.end() && format->format != stream_type::kPacket.stored;
}

/// The result of a load.
template <class Group>
int resultOf(bool loaded, const Group& group) {
    return !loaded ? -1 : group.corrected ? 1 : 0;
}

}  // namespace

StreamData streamDataOf(DocumentContext& context, UserInterface* parent, std::string_view link) {
    if (findGroupIndex(context, parent, 'S', link) <= 0) {
        return StreamData::None;
    }
    if (context.document.version >= kMessageDataEdition) {
        return StreamData::Messages;
    }
    return hasOtherFormat(context, parent, link) ? StreamData::None : StreamData::Packets;
}

int checkStreamData(DocumentContext& context, UserInterface* parent, std::string_view link) {
    if (context.document.version >= kMessageDataEdition) {
        MessageGroup group;
        return resultOf(loadMessages(context, parent, link, group), group);
    }
    PacketGroup group;
    return resultOf(loadPackets(context, parent, link, group), group);
}

int rewriteStreamData(DocumentContext& context, UserInterface* parent, std::string_view link) {
    if (context.document.version >= kMessageDataEdition) {
        MessageGroup group;
        const int result = resultOf(loadMessages(context, parent, link, group), group);
        return result < 0 || !storeMessages(context, parent, group) ? -1 : result;
    }
    PacketGroup group;
    const int result = resultOf(loadPackets(context, parent, link, group), group);
    return result < 0 || !storePackets(context, parent, group) ? -1 : result;
}

}  // namespace kavu
