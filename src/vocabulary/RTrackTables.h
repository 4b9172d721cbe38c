// What the tables of the tracks' details share. Only for the tables; other code includes
// `RTrackFields.h`.
#pragma once

#include "vocabulary/Field.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace kavu::track {

inline constexpr int kFirstEditionWithTypes = 2004;
/// From this edition on the data link is a column of the track itself.
inline constexpr int kFirstEditionWithLinks = 2007;

inline constexpr auto kTrueFalse = std::to_array<Choice>({
    {"T", "True", "True"},
    {"F", "False", "False"},
});
inline constexpr auto kTransferOrders = std::to_array<Choice>({
    {"M", "MSB", "MSB First"},
    {"L", "LSB", "LSB First"},
    {"D", "Default", "Default"},
});

/// The data link, while it is still a detail of PCM, 1553 and ARINC 429 tracks.
inline constexpr Field kDataLink = {.code = "CDLN-n",
                                    .label = "Data Link Name",
                                    .limit = 32,
                                    .lastEdition = kFirstEditionWithLinks - 1,
                                    .element = "Data/ChannelDataLinkName",
                                    .prompt = "Enter Data Link Name",
                                    .refersTo = Refers::Link};

/// Puts the page and the type's name into the rows of a type, none of which is older than
/// 2004.
template <std::size_t N>
[[nodiscard]] constexpr std::array<Field, N> detailsOf(std::string_view type,
                                                       std::array<Field, N> fields) {
    for (auto& field : fields) {
        field.box = type;
        field.page = "Tape8";
        field.kind = field.choices.empty() ? field.kind : FieldKind::Choice;
        field.firstEdition = std::max(field.firstEdition, kFirstEditionWithTypes);
    }
    return fields;
}

[[nodiscard]] std::span<const Field> pcmDetails();
[[nodiscard]] std::span<const Field> analogDetails();
[[nodiscard]] std::span<const Field> discreteDetails();
[[nodiscard]] std::span<const Field> timeDetails();
[[nodiscard]] std::span<const Field> videoDetails();
[[nodiscard]] std::span<const Field> uartDetails();
[[nodiscard]] std::span<const Field> bus1553Details();
[[nodiscard]] std::span<const Field> arinc429Details();
[[nodiscard]] std::span<const Field> messageDetails();
[[nodiscard]] std::span<const Field> imageDetails();
[[nodiscard]] std::span<const Field> ieee1394Details();
[[nodiscard]] std::span<const Field> parallelDetails();
[[nodiscard]] std::span<const Field> ethernetDetails();
[[nodiscard]] std::span<const Field> tspiDetails();

}  // namespace kavu::track
