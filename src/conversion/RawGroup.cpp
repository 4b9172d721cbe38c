#include "conversion/RawGroup.h"

#include "conversion/RawChunk.h"
#include "core/TmatsReader.h"
#include "core/talk/UserInterface.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

constexpr std::int64_t kIndicesOfChunk = 25;
constexpr std::uint64_t kBatch = 4 * 1024 * 1024;  // bytes

}  // namespace

void RawGroup::Chunk::add(const Extent& extent) {
    if (!extents.empty() && extents.back().at + extents.back().length == extent.at) {
        extents.back().length += extent.length;
    } else {
        extents.push_back(extent);
    }
}

bool RawGroup::sort(TmatsReader& reader, UserInterface* parent, std::int64_t base) {
    status_ = source_.open(path_);
    if (!status_.ok()) {
        return false;
    }
    size_ = source_.size();
    std::string room;
    Chunk* current = nullptr;
    std::int64_t currentNumber = 0;
    std::uint64_t start = 0;
    for (unsigned count = 1;; ++count) {
        const auto command = reader.viewNextRaw(source_, room);
        if (!command) {
            break;
        }
        if (count % kPollEvery == 0) {
            yieldToInterface(parent);
            if (cancelRequested(parent)) {
                return false;
            }
        }
        const auto end = source_.position();
        if (!isComment(*command)) {
            const auto number =
                base + std::max<std::int64_t>(0, rawHeadOf(*command).index / kIndicesOfChunk);
            if (current == nullptr || number != currentNumber) {
                current = &chunks_[number];
                currentNumber = number;
            }
            current->add({start, end - start});
            current->size += command->size() + kLineEndBytes;
            // One that is viewed where it is in the file is on one line.
            current->severalLines = current->severalLines || command->data() == room.data();
        }
        start = end;
    }
    status_ = source_.status();
    if (status_.ok() && source_.position() != size_) {
        status_ = {path_, ESTALE};
    }
    return status_.ok();
}

void RawGroup::setChunks(Chunks chunks) {
    chunks_ = std::move(chunks);
    batch_.clear();
}

void RawGroup::release() {
    source_.close();
    batch_ = {};
}

std::string* RawGroup::bytes(std::int64_t number) {
    auto found = batch_.find(number);
    if (found == batch_.end()) {
        const auto chunk = chunks_.find(number);
        if (chunk == chunks_.end() || !fetch(chunk)) {
            return nullptr;
        }
        found = batch_.find(number);
    }
    return &found->second;
}

std::vector<RawGroup::Read> RawGroup::batch(Chunks::iterator first) {
    std::vector<Read> read;
    if (!fetch(first)) {
        return read;
    }
    for (auto it = first; it != chunks_.end(); ++it) {
        const auto found = batch_.find(it->first);
        if (found == batch_.end()) {
            break;
        }
        read.push_back({it->first, &it->second, &found->second});
    }
    return read;
}

bool RawGroup::open() {
    if (!source_.isOpen()) {
        status_ = source_.open(path_);
        if (status_.ok() && source_.size() != size_) {
            status_ = {path_, ESTALE};
        }
    }
    return status_.ok();
}

bool RawGroup::fetch(Chunks::const_iterator first) {
    struct Part {
        Extent extent;
        std::string* to;
    };
    batch_.clear();
    if (!open()) {
        return false;
    }
    std::vector<Part> parts;
    std::uint64_t total = 0;
    for (auto it = first; it != chunks_.end(); ++it) {
        const auto& [number, chunk] = *it;
        std::uint64_t size = 0;
        for (const auto& extent : chunk.extents) {
            size += extent.length;
        }
        if (it != first && total + size > kBatch) {
            break;
        }
        total += size;
        auto& to = batch_[number];
        to.reserve(size);
        for (const auto& extent : chunk.extents) {
            parts.push_back({extent, &to});
        }
    }
    // The runs of one chunk keep their order: it is that of the file.
    std::sort(parts.begin(), parts.end(),
              [](const Part& a, const Part& b) { return a.extent.at < b.extent.at; });
    return std::all_of(parts.begin(), parts.end(),
                       [this](const Part& part) { return copy(part.extent, *part.to); });
}

bool RawGroup::copy(const Extent& extent, std::string& to) {
    source_.seek(extent.at);
    for (auto left = extent.length; left > 0;) {
        const auto some = source_.window().substr(0, left);
        if (some.empty()) {
            status_ = source_.status().ok() ? IoStatus(path_, ESTALE) : source_.status();
            return false;
        }
        to.append(some);
        source_.take(some.size());
        left -= some.size();
    }
    return true;
}

}  // namespace kavu
