// The types of streams, as the `TF` of a P group stores them.
#pragma once

#include <array>
#include <string_view>

namespace kavu {

/// S groups are message data from this edition on, and packet telemetry before.
inline constexpr int kMessageDataEdition = 2009;

struct StreamType {
    std::string_view stored{};
    std::string_view text{};  ///< as the tree of the document shows it
    char dataLetter = 'D';    ///< the group that holds its measurements
    int firstEdition = 0;     ///< that offers it for a stream; 0 is the first
};

namespace stream_type {

inline constexpr StreamType kClassOne{"ONE", "PCM (Class 1)"};
inline constexpr StreamType kClassTwo{"TWO", "PCM (Class 2)", 'D', 2004};
inline constexpr StreamType kBus1553{"1553", "1553", 'B', 2004};
inline constexpr StreamType kAlternateTag{"ALTD", "ALTD", 'D', 2004};
inline constexpr StreamType kPacket{"PKTM", "Packet", 'S', 2005};
inline constexpr StreamType kOther{"OTHR", "OTHR", 'D', 2005};
inline constexpr StreamType kBus{"BUS", "BUS", 'D', 2004};

}  // namespace stream_type

inline constexpr auto kStreamTypes = std::to_array<StreamType>(
    {stream_type::kClassOne, stream_type::kClassTwo, stream_type::kBus1553,
     stream_type::kAlternateTag, stream_type::kPacket, stream_type::kOther, stream_type::kBus});

/// The type of this stored text, in exactly this spelling; null for any other text.
[[nodiscard]] constexpr const StreamType* findStreamType(std::string_view stored) {
    for (const auto& type : kStreamTypes) {
        if (type.stored == stored) {
            return &type;
        }
    }
    return nullptr;
}
/// The group that holds the measurements of a stream: 'D' unless its type names another.
[[nodiscard]] constexpr char dataLetterOf(std::string_view stored) {
    const auto* const type = findStreamType(stored);
    return type == nullptr ? 'D' : type->dataLetter;
}

}  // namespace kavu
