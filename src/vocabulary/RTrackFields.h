// The tracks (or channels) of a recorder: the columns of their list, and the channel data
// types with the details of each.
#pragma once

#include "vocabulary/Field.h"

#include <span>
#include <string_view>

namespace kavu {

inline constexpr std::size_t kMostTracks = 99;
/// From this edition on a track has a channel data type.
inline constexpr int kFirstEditionOfChannelTypes = 2004;

/// A channel data type. The fields are in the order in which they are written: those of the
/// track ("-n"), the count of the items, those of each item ("-n-m").
struct ChannelType {
    std::string_view value{};  ///< as stored in `CDT`
    std::string_view text{};   ///< as shown
    std::span<const Field> fields{};
    std::string_view itemName{};  ///< what an item is called; empty for a type without items
    std::string_view addText{};   ///< of the button that adds an item
    /// True if an item is edited by one prompt after the other, for the fields that have one;
    /// else by a dialog over all fields, with `prompt` as label if it differs from that in
    /// the list.
    bool promptsItems = false;
    /// The key under which the data link is held in editions where it is a detail; empty for
    /// a type without that detail.
    std::string_view linkKey{};
};

/// In list order: PCM, analog, discrete, ...
[[nodiscard]] std::span<const ChannelType> channelTypes();
/// The type that a stored `CDT` value names and that the edition knows, or null.
[[nodiscard]] const ChannelType* channelType(std::string_view value, int edition);

/// The columns of the list of tracks, in the order in which they are written.
[[nodiscard]] std::span<const Field> trackFields();

[[nodiscard]] constexpr bool isItemField(const Field& field) {
    return field.code.ends_with("-n-m");
}
/// True for a field that is read and written but that the list of details does not show in
/// documents of this edition.
[[nodiscard]] bool isHiddenDetail(const Field& field, int edition);

}  // namespace kavu
