// The working files in which the conversion records of an open document lie: numbered
// chunks of sections, and one file for each comment that is too long for its chunk.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kavu {

class WorkingStore;

/// Above this many bytes a chunk takes no new record, and holds one measurement only once
/// the group is loaded.
inline constexpr std::uint64_t kFullChunk = 30000;

struct ConversionChunk {
    std::int64_t number = 0;
    std::uint64_t size = 0;
};

[[nodiscard]] std::string chunkName(std::int64_t number);
[[nodiscard]] std::string chunkPath(const WorkingStore& store, std::int64_t number);
/// The file of raw commands while they are made into chunks from number `base` on.
[[nodiscard]] std::string rawGroupName(std::int64_t base);
[[nodiscard]] std::string rawGroupPath(const WorkingStore& store, std::int64_t base);
/// The file of a measurement's long comment, and its copy while the record is edited. The copy
/// is scratch of the editor and no file of the document.
[[nodiscard]] std::string commentName(std::string_view measurement);
[[nodiscard]] std::string commentPath(const WorkingStore& store, std::string_view measurement);
[[nodiscard]] std::string commentCopyPath(const WorkingStore& store, std::string_view measurement);

struct ConversionFiles {
    std::vector<ConversionChunk> chunks;           ///< by rising number
    std::unordered_set<std::string> commentFiles;  ///< names
};
/// Lists the working store. What it can not list is as if it were not there; the status
/// tells.
[[nodiscard]] IoStatus listConversionFiles(const WorkingStore& store, ConversionFiles& files);

}  // namespace kavu
