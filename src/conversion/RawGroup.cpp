#include "conversion/RawGroup.h"

#include "conversion/RawChunk.h"
#include "core/TmatsReader.h"
#include "core/document/ConversionRuns.h"
#include "core/talk/UserInterface.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

constexpr std::uint64_t kBatch = 2 * 1024 * 1024;  // bytes; two are held at a time

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
    std::string head;  // that the commands of one index have in common
    std::uint64_t start = 0;
    for (unsigned count = 0;;) {
        unsigned lines = 0;
        if (!head.empty()) {
            const auto most = kPollEvery - count % kPollEvery;
            current->size += reader.takeLines(source_, most, lines, head).size();
        }
        auto end = source_.position();
        if (lines > 0) {
            // A run ends with a command: what is behind that is the front of the next one.
            end -= kLineEndBytes;
            current->add({start, end - start});
        } else {
            const auto command = reader.viewNextRaw(source_, room);
            if (!command) {
                break;
            }
            lines = 1;
            end = source_.position();
            if (!isComment(*command)) {
                const auto parts = rawHeadOf(*command);
                head = parts.slash == std::string_view::npos ? std::string_view()
                                                             : command->substr(0, parts.slash + 1);
                current = &chunks_[base + ConversionRuns::chunkOf(parts.index)];
                current->add({start, end - start});
                current->size += command->size() + kLineEndBytes;
                // One that is viewed where it is in the file is on one line.
                current->severalLines = current->severalLines || command->data() == room.data();
            }
        }
        start = end;
        count += lines;
        if (count % kPollEvery == 0) {
            yieldToInterface(parent);
            if (cancelRequested(parent)) {
                return false;
            }
        }
    }
    status_ = source_.status();
    if (status_.ok() && source_.position() != size_) {
        status_ = {path_, ESTALE};
    }
    return status_.ok();
}

bool RawGroup::sortAsNoted(const ConversionRuns& noted, std::int64_t base) {
    Chunks chunks;
    std::uint64_t start = 0;
    std::uint64_t end = 0;
    for (const auto& run : noted.runs) {
        auto& chunk = chunks[base + run.chunk];
        end += run.length;
        // What is behind the last command of a run is the front of the next one.
        chunk.add({start, end - kLineEndBytes - start});
        chunk.size += run.length;
        start = end - kLineEndBytes;
    }
    if (noted.stamp.empty() || end != fileSize(path_)) {
        return false;
    }
    size_ = end;
    chunks_ = std::move(chunks);
    return true;
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
    const auto find = [&]() -> std::string* {
        const auto found = std::lower_bound(
            batch_.begin(), batch_.end(), number,
            [](const Read& read, std::int64_t wanted) { return read.number < wanted; });
        return found != batch_.end() && found->number == number ? &found->bytes : nullptr;
    };
    if (auto* const bytes = find(); bytes != nullptr) {
        return bytes;
    }
    auto chunk = chunks_.find(number);
    if (chunk != chunks_.end()) {
        batch_.clear();
        batch_ = readSome(chunk);
    }
    return find();
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

RawGroup::Batch RawGroup::readSome(Chunks::iterator& next) {
    struct Part {
        Extent extent;
        std::size_t place;
    };
    Batch batch;
    if (next == chunks_.end() || !open()) {
        return batch;
    }
    std::vector<Part> parts;
    std::uint64_t total = 0;
    auto end = next;
    for (; end != chunks_.end(); ++end) {
        auto& [number, chunk] = *end;
        std::uint64_t size = 0;
        for (const auto& extent : chunk.extents) {
            size += extent.length;
        }
        if (!batch.empty() && total + size > kBatch) {
            break;
        }
        total += size;
        for (const auto& extent : chunk.extents) {
            parts.push_back({extent, batch.size()});
        }
        batch.push_back({number, &chunk, {}});
        batch.back().bytes.reserve(size);
    }
    // The runs of one chunk keep their order: it is that of the file.
    std::sort(parts.begin(), parts.end(),
              [](const Part& a, const Part& b) { return a.extent.at < b.extent.at; });
    if (!std::all_of(parts.begin(), parts.end(), [&](const Part& part) {
            return copy(part.extent, batch[part.place].bytes);
        })) {
        return {};
    }
    next = end;
    return batch;
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
