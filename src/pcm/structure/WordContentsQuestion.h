// What a word holds, named in a question before it is lost.
#pragma once

#include <string>
#include <vector>

namespace kavu {

class PcmFormat;
class UserInterface;

/// What a word holds in any of its frames.
struct WordHolds {
    std::vector<std::string> measurements;  ///< names in order of their places, each once
    std::vector<int> asyncRecords;          ///< ascending
    [[nodiscard]] bool empty() const { return measurements.empty() && asyncRecords.empty(); }
};
[[nodiscard]] WordHolds contentsOfWords(const PcmFormat& format, const std::vector<int>& words);

/// Asks whether what is named may be deleted, as `why` states ("..., if it becomes an ID counter").
/// Yes without a question if there is nothing, and without a parent.
[[nodiscard]] bool mayLose(const PcmFormat& format, UserInterface* parent, const WordHolds& lost,
                           const std::string& why);

/// What a word cannot hold as an ID counter, which is the same in every minor frame: async
/// formats, and measurements that are not in every frame of it.
[[nodiscard]] WordHolds lostToCounter(const PcmFormat& format, int fwp);
/// Prepares a word for an ID counter: asks for what would be lost and deletes that wherever else
/// it is; conversion records stay. What is in every frame keeps its place, in a location of its
/// own. False, without effect, after a No.
[[nodiscard]] bool clearForCounter(PcmFormat& format, UserInterface* parent, int fwp);

}  // namespace kavu
