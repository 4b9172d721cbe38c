// Which of its two contents an S group has in an edition.
#pragma once

namespace kavu {

struct DocumentContext;
class UserInterface;

/// False, after message 73 ("not introduced until"), in a document of an edition before the first
/// with message data.
[[nodiscard]] bool knowsMessages(const DocumentContext& context, UserInterface* parent);
/// False in a document of another edition than those of packet telemetry, after message 73; from
/// 106-09 on that also says since when there are no packets.
[[nodiscard]] bool knowsPackets(const DocumentContext& context, UserInterface* parent);

}  // namespace kavu
