// The attributes of a PAM stream.
#pragma once

#include "groups/GroupRecord.h"
#include "vocabulary/AGroupFields.h"

#include <string>
#include <vector>

namespace kavu {

struct PamGroup {
    std::string link{};  ///< name of the data link
    int index = 0;       ///< 1 to 99
    GroupRow record{};
    GroupFile kept{};
};

/// A PAM stream of the document; `index` is 0 for a link of an M group that has no A group yet.
struct PamStream {
    std::string link;
    int index = 0;
};
/// The streams with an A group, in the order of the files, followed by the PAM links that
/// have none.
[[nodiscard]] std::vector<PamStream> pamStreams(DocumentContext& context, UserInterface* parent);

/// Reads the group of a stream. One without a group is reported by message 145 ("not found"),
/// and gets the first free index. False if the file cannot be read or no index is free, which
/// has been reported.
[[nodiscard]] bool loadPam(DocumentContext& context, UserInterface* parent, const PamStream& stream,
                           PamGroup& group);
/// False if the file could not be written, which has been reported.
[[nodiscard]] bool storePam(DocumentContext& context, UserInterface* parent, const PamGroup& group);

}  // namespace kavu
