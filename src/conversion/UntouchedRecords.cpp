#include "conversion/UntouchedRecords.h"

#include "conversion/ChunkSections.h"
#include "conversion/StagedChunks.h"

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
