#include "core/document/ConversionRuns.h"

#include "core/command/GroupIndex.h"
#include "core/files/FileIo.h"

#include <utility>

namespace kavu {

void ConversionRunNotes::add(std::string_view command, std::uint64_t length) {
    auto& runs = noted_.runs;
    if (!head_.empty() && command.starts_with(head_)) {
        runs.back().length += length;
        return;
    }
    const auto head = rawHeadOf(command);
    head_ = head.slash == std::string_view::npos ? std::string_view()
                                                 : command.substr(0, head.slash + 1);
    const auto chunk = ConversionRuns::chunkOf(head.index);
    if (!runs.empty() && runs.back().chunk == chunk) {
        runs.back().length += length;
    } else if (runs.size() <= kMostRuns) {
        runs.push_back({chunk, length});
    }
}

ConversionRuns ConversionRunNotes::take(const std::string& path) {
    head_.clear();
    auto noted = std::exchange(noted_, {});
    if (noted.runs.size() > kMostRuns) {
        return {};
    }
    noted.stamp = fileStamp(path);
    return noted;
}

}  // namespace kavu
