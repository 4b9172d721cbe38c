#include "conversion/ConversionCompaction.h"

#include "conversion/ConversionFiles.h"
#include "conversion/StagedChunks.h"
#include "core/TmatsDocument.h"
#include "core/document/DocumentFiles.h"

#include <algorithm>

namespace kavu {

namespace {

/// Deletes an empty chunk, or gives a full one the number of an empty or missing one.
IoStatus moveChunk(DocumentFiles& files, StagedChunks& staged, const ConversionChunk& chunk,
                   std::int64_t to) {
    const bool inFile = staged.find(chunk.number) == nullptr;
    if (chunk.size == 0) {
        staged.erase(chunk.number);
        return inFile ? files.remove(chunkName(chunk.number)) : IoStatus();
    }
    staged.erase(to);
    const auto target = chunkName(to);
    if (inFile) {
        return files.move(chunkName(chunk.number), target);
    }
    auto status = files.removeIfThere(target);
    if (status.ok()) {
        staged.renumber(chunk.number, to);
    }
    return status;
}

}  // namespace

std::vector<ChunkMove> planCompaction(std::vector<ConversionChunk> chunks) {
    std::vector<ChunkMove> moves;
    std::size_t next = 0;  // the first chunk at or above the place
    for (std::int64_t place = 0; next < chunks.size();) {
        const bool here = chunks[next].number == place;
        if (here && (chunks[next].size > 0 || next + 1 == chunks.size())) {
            ++next;
            ++place;
            continue;
        }
        moves.push_back({chunks.back(), place});
        chunks.pop_back();
        if (moves.back().chunk.size > 0) {
            ++place;
            next += here ? 1 : 0;
        }
    }
    return moves;
}

IoStatus compactChunks(DocumentContext& context, StagedChunks& staged) {
    ConversionFiles files;
    if (auto status = listConversionFiles(context.store, files); !status.ok()) {
        return status;
    }
    auto& chunks = files.chunks;
    for (const auto& [number, bytes] : staged.all()) {
        chunks.push_back({number, bytes.size()});
    }
    std::sort(chunks.begin(), chunks.end(),
              [](const auto& a, const auto& b) { return a.number < b.number; });
    for (const auto& [chunk, to] : planCompaction(chunks)) {
        if (auto status = moveChunk(context.files, staged, chunk, to); !status.ok()) {
            return status;
        }
    }
    return {};
}

}  // namespace kavu
