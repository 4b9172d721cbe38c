#include "conversion/ConversionCompaction.h"

#include "conversion/ConversionFiles.h"
#include "core/FileIo.h"

namespace kavu {

IoStatus compactChunks(const WorkingStore& store) {
    ConversionFiles files;
    if (auto status = listConversionFiles(store, files); !status.ok()) {
        return status;
    }
    auto& chunks = files.chunks;
    std::size_t next = 0;  // the first chunk at or above the place
    for (std::int64_t place = 0; next < chunks.size();) {
        const bool here = chunks[next].number == place;
        if (here && (chunks[next].size > 0 || next + 1 == chunks.size())) {
            ++next;
            ++place;
            continue;
        }
        const auto last = chunks.back();
        const auto path = chunkPath(store, last.number);
        const auto status =
            last.size > 0 ? renameFile(path, chunkPath(store, place)) : deleteFile(path);
        if (!status.ok()) {
            return status;
        }
        chunks.pop_back();
        if (last.size > 0) {
            ++place;
            next += here ? 1 : 0;
        }
    }
    return {};
}

}  // namespace kavu
