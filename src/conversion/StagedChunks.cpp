#include "conversion/StagedChunks.h"

#include "conversion/ConversionFiles.h"
#include "core/document/DocumentFiles.h"

#include <utility>

namespace kavu {

IoStatus StagedChunks::put(DocumentFiles& files, std::int64_t number, std::string&& bytes) {
    if (total_ + bytes.size() > limit_) {
        return files.put(chunkName(number), bytes);
    }
    total_ += bytes.size();
    chunks_.insert_or_assign(number, std::move(bytes));
    return {};
}

const std::string* StagedChunks::find(std::int64_t number) const {
    const auto found = chunks_.find(number);
    return found == chunks_.end() ? nullptr : &found->second;
}

void StagedChunks::renumber(std::int64_t from, std::int64_t to) {
    auto node = chunks_.extract(from);
    if (!node.empty()) {
        node.key() = to;
        chunks_.insert(std::move(node));
    }
}

void StagedChunks::erase(std::int64_t number) {
    if (const auto found = chunks_.find(number); found != chunks_.end()) {
        total_ -= found->second.size();
        chunks_.erase(found);
    }
}

IoStatus StagedChunks::writeOut(DocumentFiles& files) {
    for (const auto& [number, bytes] : chunks_) {
        if (auto status = files.put(chunkName(number), bytes); !status.ok()) {
            return status;
        }
    }
    // Recovery would prefer remaining raw commands to the records.
    if (!rawName_.empty()) {
        if (auto status = files.remove(rawName_); !status.ok()) {
            return status;
        }
    }
    clear();
    return {};
}

void StagedChunks::clear() {
    chunks_.clear();
    total_ = 0;
    rawName_.clear();
}

}  // namespace kavu
