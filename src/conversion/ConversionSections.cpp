#include "conversion/ConversionSections.h"

#include "conversion/ConversionStore.h"

namespace kavu {

IoStatus forEachChunk(DocumentContext&, ConversionStore& store, const ChunkVisitor& visit) {
    IoStatus listed;
    const auto numbers = store.chunkNumbers(&listed);
    if (!listed.ok()) {
        return listed;
    }
    for (const auto number : numbers) {
        const auto chunk = store.chunk(number);
        if (const auto& status = chunk->load(); !status.ok()) {
            return status;
        }
        const bool goOn = visit(*chunk);
        if (auto status = store.store(number, *chunk); !status.ok() || !goOn) {
            return status;
        }
    }
    return {};
}

IoStatus forEachRecord(DocumentContext& context, ConversionStore& store,
                       const RecordVisitor& visit) {
    bool goOn = true;
    return forEachChunk(context, store, [&](ProfileFile& chunk) {
        for (const auto& name : chunk.sectionNames()) {
            goOn = goOn && visit(chunk, name);
        }
        return goOn;
    });
}

}  // namespace kavu
