#include "conversion/RawRecords.h"

#include "conversion/ConversionFields.h"
#include "conversion/RawChunk.h"
#include "core/command/CommandPath.h"

#include <algorithm>

namespace kavu {

bool canBeRecordKey(std::string_view code) {
    return !code.empty() && code.front() != '[' && code.front() != ';' &&
           code.find('=') == std::string_view::npos;
}

RawRecords::Record& RawRecords::of(std::int64_t index) {
    auto& place = places_[index];
    if (place == 0) {
        if (count_ == records_.size()) {
            records_.emplace_back();
        }
        auto& record = records_[count_];
        record.index = index;
        record.name = {};
        record.fields.clear();
        record.at = 0;
        place = ++count_;
    }
    return records_[place - 1];
}

void RawRecords::gather(std::string& bytes, const RawGroup::Chunk& chunk, int edition) {
    count_ = 0;
    places_.clear();
    std::size_t at = 0;
    auto nextRefused = chunk.refused.begin();
    forEachRawCommand(bytes, chunk.severalLines, [&](const RawCommand& command) {
        ++at;
        const bool isRefused = nextRefused != chunk.refused.end() && *nextRefused == at;
        nextRefused += isRefused ? 1 : 0;
        if (command.value.empty()) {
            return;
        }
        if (!isNaming(command)) {
            takeField(command, edition, at);
        } else if (!isRefused) {
            takeName(command, at);
        }
    });
    named_.clear();
    for (std::size_t i = 0; i < count_; ++i) {
        if (!records_[i].name.empty()) {
            named_.push_back(&records_[i]);
        }
    }
    std::sort(named_.begin(), named_.end(),
              [](const Record* a, const Record* b) { return a->at < b->at; });
}

void RawRecords::takeName(const RawCommand& command, std::size_t at) {
    const auto name = recordNameIn(command);
    if (name.empty()) {
        return;
    }
    // A second name of one index is never used.
    if (auto& record = of(command.index); record.name.empty()) {
        record.name = name;
        record.at = record.fields.empty() ? at : record.at;
    }
}

void RawRecords::takeField(const RawCommand& command, int edition, std::size_t at) {
    const auto code = trim(command.code);
    if (!canBeRecordKey(code)) {
        return;
    }
    auto& record = of(command.index);
    if (record.fields.empty()) {
        record.at = at;
    }
    const auto* const known = findConversionCode(codeHead(code));
    const auto limit = static_cast<std::size_t>(conversionLimit(command.code, known, edition));
    record.fields.push_back(
        {code, limit > 0 ? cutToBytes(command.value, limit) : command.value, known});
}

}  // namespace kavu
