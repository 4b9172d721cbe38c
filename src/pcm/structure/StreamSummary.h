// What a list of streams shows of each: of a stream in memory, or of one in its group
// files that is not loaded.
#pragma once

#include <cstddef>
#include <string>

namespace kavu {

struct DocumentContext;
class PcmFormat;
class UserInterface;

struct StreamSummary {
    std::string kind;  ///< display text, as in the tree
    int words = 0;     ///< of a minor frame, the sync word included
    int frames = 0;    ///< minor frames of a major frame
    std::string bitRate;
    int counters = 0;   ///< ID counters
    int subframes = 0;  ///< those in the file, not the hidden ones
    std::size_t measurements = 0;
    [[nodiscard]] bool operator==(const StreamSummary&) const = default;
};

[[nodiscard]] StreamSummary summariseStream(const PcmFormat& format);
/// Of the stream in a P file, which is read but not loaded: a value that a load would correct
/// counts as it is, within the limits of a format. `measurements` is their number, counted by
/// the caller. A file that cannot be read is reported, and gives an empty summary.
[[nodiscard]] StreamSummary readStreamSummary(DocumentContext& context, UserInterface* parent,
                                              int pGroup, std::size_t measurements);

/// "128 words, 8 frames, 1000000 bit/s, 1 ID counter, 4 subframes, 20 measurements"; counts of
/// 0 are left out, except for words, frames and measurements.
[[nodiscard]] std::string summaryText(const StreamSummary& summary);

}  // namespace kavu
