#include "conversion/UntouchedRecords.h"

#include "conversion/ChunkSections.h"
#include "conversion/StagedChunks.h"
#include "core/text/TwoThreads.h"

#include <algorithm>
#include <iterator>
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

IoStatus UntouchedRecords::readSome(RawGroup::Chunks::iterator& next, RecordBatch& batch) {
    batch.count = 0;
    if (next == group_.chunks().end()) {
        return {};
    }
    const auto read = group_.batch(next);
    if (read.empty()) {
        return group_.status();
    }
    batch.parts.resize(std::max(batch.parts.size(), read.size()));
    batch.count = read.size();
    forEachOnTwoThreads(read.size(), [&](std::size_t place, std::size_t) {
        auto& part = batch.parts[place];
        part.chunk = read[place].chunk;
        part.records.gather(*read[place].bytes, *part.chunk, edition_);
    });
    std::advance(next, static_cast<std::ptrdiff_t>(read.size()));
    return {};
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
