// The working files that hold the conversion records of an open document: numbered chunks
// of sections, and one file for each comment that is too long for its chunk.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kavu {

class WorkingStore;

/// Above this many bytes a chunk takes no new record, and after a load holds only one
/// measurement.
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
/// is scratch of the editor, not a file of the document.
[[nodiscard]] std::string commentName(std::string_view measurement);
[[nodiscard]] std::string commentPath(const WorkingStore& store, std::string_view measurement);
[[nodiscard]] std::string commentCopyPath(const WorkingStore& store, std::string_view measurement);

struct ConversionFiles {
    std::vector<ConversionChunk> chunks;           ///< by ascending number
    std::unordered_set<std::string> commentFiles;  ///< names
};
/// Lists the working store. What cannot be listed is left out, and the status says why.
[[nodiscard]] IoStatus listConversionFiles(const WorkingStore& store, ConversionFiles& files);

}  // namespace kavu
