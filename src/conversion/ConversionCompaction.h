// Makes the numbers of the conversion chunks dense again after a load.
#pragma once

#include "conversion/ConversionFiles.h"
#include "core/files/IoStatus.h"

#include <cstdint>
#include <vector>

namespace kavu {

class StagedChunks;
struct DocumentContext;

/// A chunk that moves to another number, or goes if it is empty.
struct ChunkMove {
    ConversionChunk chunk;
    std::int64_t to = 0;
};
/// How the numbers of chunks become dense: the last chunk moves to the first number that is
/// missing or whose chunk is empty, until there is no such number in front of a chunk. The chunks
/// are in rising order; the moves are to be made one after the other.
[[nodiscard]] std::vector<ChunkMove> planCompaction(std::vector<ConversionChunk> chunks);

/// Makes the moves, be the chunks staged or in files. The status names
/// the file that could not be moved; what was moved before it stays.
[[nodiscard]] IoStatus compactChunks(DocumentContext& context, StagedChunks& staged);

}  // namespace kavu
