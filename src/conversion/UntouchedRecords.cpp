#include "conversion/UntouchedRecords.h"

#include "conversion/ChunkSections.h"
#include "conversion/StagedChunks.h"
#include "core/text/TwoThreads.h"

#include <algorithm>
#include <utility>

namespace kavu {

IoStatus UntouchedRecords::read(std::int64_t number, RawRecords& records) {
    auto* const bytes = group_.bytes(number);
    if (bytes == nullptr) {
        return group_.status();
    }
    records.gather(*bytes, group_.chunks().at(number), edition_);
    return {};
}

IoStatus UntouchedRecords::readSome(RawGroup::Chunks::iterator& next, RawGroup::Batch& read) {
    read = group_.readSome(next);
    return read.empty() && next != group_.chunks().end() ? group_.status() : IoStatus();
}

void UntouchedRecords::gather(RawGroup::Batch read, RecordBatch& batch,
                              const std::function<void()>& meanwhile) const {
    batch.read = std::move(read);
    batch.count = batch.read.size();
    batch.parts.resize(std::max(batch.parts.size(), batch.count));
    forEachOnTwoThreads(
        batch.count,
        [&](std::size_t place, std::size_t) {
            auto& from = batch.read[place];
            auto& part = batch.parts[place];
            part.chunk = from.chunk;
            part.records.gather(from.bytes, *from.chunk, edition_);
        },
        meanwhile);
}

IoStatus UntouchedRecords::makeSections(DocumentFiles& files, StagedChunks& staged) {
    staged.standFor(name_);
    RawRecords records;
    for (const auto& [number, chunk] : chunks()) {
        auto status = read(number, records);
        std::string text;
        if (status.ok()) {
            status = appendSections(files, records, chunk.commentsOutside, text);
        }
        if (status.ok()) {
            status = staged.put(files, number, std::move(text));
        }
        if (!status.ok()) {
            return status;
        }
    }
    group_.release();
    return {};
}

}  // namespace kavu
