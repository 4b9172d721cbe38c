// The packet telemetry of a data link, from its S group and back: the transfer frame, the
// measurements of its secondary header, and the source packets with theirs.
#pragma once

#include "core/document/GroupFile.h"
#include "groups/GroupRecord.h"
#include "vocabulary/SGroupFields.h"

#include <string>
#include <string_view>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// The copy of the group that the pages work on.
inline constexpr std::string_view kPacketCopy = "SGROUP.TMP";

struct PacketGroup {
    std::string link{};
    int index = 0;           ///< 0 for a link that has no S group yet
    GroupRow record{};       ///< as stored, by the codes of `packetFields`
    GroupFile kept{};        ///< the file as it was read, with marks
    bool corrected = false;  ///< a value was longer than its field may be; it is as it was

    /// Whether it is what it was: what a form asks before it writes.
    [[nodiscard]] bool holdsTheSame(const PacketGroup& other) const {
        return record == other.record;
    }
};

/// Copies the group of a link to `kPacketCopy`; without a group there is no copy. False if it could
/// not be written, which is reported.
[[nodiscard]] bool bringInPackets(DocumentContext& context, UserInterface* parent,
                                  std::string_view link);
/// Reads the group of a link from its copy, which is made first; a link without a group has an
/// empty one. Values that are too long are reported in the message log and stay. A row of the
/// transfer frame's measurements without a name is none. False if it could not be read, which is
/// reported, or the user has cancelled.
[[nodiscard]] bool loadPackets(DocumentContext& context, UserInterface* parent,
                               std::string_view link, PacketGroup& group);
/// Writes the group, under the first free index if there was none. False if it could not be
/// written, or no index is free, which is reported.
[[nodiscard]] bool storePackets(DocumentContext& context, UserInterface* parent,
                                PacketGroup& group);

/// "Edit Packet Attributes - Data Link: %s"
[[nodiscard]] std::string packetSheetTitle(std::string_view link);

/// The root of the tree of packets.
inline constexpr std::string_view kPacketRoot = "Source Packets";
// The lines of the tree; a row of measurements or locations is of this family.
[[nodiscard]] std::string packetLabel(const GroupRow& packet);
[[nodiscard]] std::string measurementLabel(const PacketFamily& family, const GroupRow& row);
[[nodiscard]] std::string locationLabel(const PacketFamily& family, const GroupRow& row);

/// What a list shows for a value: the first entry that begins with it, any case; the first of all
/// for an absent value; the value itself if no entry begins with it. A field without a list shows
/// its value.
[[nodiscard]] std::string_view shownEntry(const Field& field, std::string_view stored);

}  // namespace kavu
