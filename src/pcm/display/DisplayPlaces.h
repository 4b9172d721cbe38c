// Where the display of each stream was left: the selected cell and the scroll position.
#pragma once

#include "pcm/display/FrameDisplay.h"

#include <string>
#include <string_view>

namespace kavu {

struct DisplayPlace {
    FramePlace selected;
    int firstWord = 0;
    int scrolledRows = 0;
    [[nodiscard]] bool operator==(const DisplayPlace&) const = default;
};

/// The text of a setting keeps the streams that were shown last, the latest one first.
inline constexpr int kMostDisplayPlaces = 20;

/// The place of a stream; a default one if the text has none, or nothing that can be read.
[[nodiscard]] DisplayPlace displayPlace(std::string_view setting, std::string_view stream);
/// The text with this place of the stream, and without the oldest ones beyond the limit. A name
/// with a ';' or a line break cannot be kept.
[[nodiscard]] std::string withDisplayPlace(std::string_view setting, std::string_view stream,
                                           const DisplayPlace& place);

}  // namespace kavu
