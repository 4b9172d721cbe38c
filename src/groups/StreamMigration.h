// What another edition cannot say of the measurements of a document's streams.
#pragma once

#include "core/files/IoStatus.h"

#include <map>
#include <string>
#include <vector>

namespace kavu {

struct DocumentContext;

/// What a conversion of a stream to word/frame locations has come to.
struct StreamConversion {
    bool changed = false;    ///< files of the stream have changed
    bool converted = false;  ///< false if the stream has stayed as it is
    /// Names of measurements that have no word/frame form and have stayed as they are.
    std::vector<std::string> unconverted{};
};

/// What a stream has that 106-11 cannot say, by its P group.
struct OlderStream {
    std::string link;
    std::string type;      ///< `TF`
    int measurements = 0;  ///< of older location types
    bool hasSubframes = false;
    [[nodiscard]] bool isOlder() const { return hasSubframes || measurements > 0; }
};
/// The streams of all P groups by their index, from one pass over the P and D groups.
[[nodiscard]] std::map<int, OlderStream> readOlderStreams(DocumentContext& context,
                                                          IoStatus& status);
/// Why a stream of a 106-11 document has stayed as it was, in a line.
[[nodiscard]] std::string unconvertedLine(const OlderStream& stream, int pIndex);

/// For a target before 106-04: every measurement with word/frame locations, which that edition does
/// not have. For one before 106-09: every measurement with a range whose end it cannot state, with
/// what the range becomes. A line for each; none for other targets.
[[nodiscard]] std::vector<std::string> rangesLeftOut(DocumentContext& context, int input,
                                                     int target, IoStatus& status);

}  // namespace kavu
