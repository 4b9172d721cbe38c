#include "conversion/RawGroup.h"

#include "conversion/LoadReports.h"
#include "conversion/RawChunk.h"
#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/talk/UserInterface.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::int64_t kIndicesOfChunk = 25;
constexpr std::uint64_t kBatch = 16 * 1024 * 1024;  // bytes

}  // namespace

void RawGroup::Chunk::add(const Extent& extent) {
    if (!extents.empty() && extents.back().at + extents.back().length == extent.at) {
        extents.back().length += extent.length;
    } else {
        extents.push_back(extent);
    }
}

bool RawGroup::report() {
    if (!source_.status().ok()) {
        reportUnreadable(context_, parent_, source_.status());
    }
    return source_.status().ok();
}

bool RawGroup::sort(std::int64_t base) {
    if (const auto status = source_.open(path_); !status.ok()) {
        reportUnreadable(context_, parent_, status);
        return false;
    }
    std::string command;
    Chunk* current = nullptr;
    std::int64_t currentNumber = 0;
    std::uint64_t start = 0;
    for (unsigned count = 1; context_.reader.nextRawCommand(source_, command); ++count) {
        if (count % kPollEvery == 0) {
            yieldToInterface(parent_);
            if (cancelRequested(parent_)) {
                return false;
            }
        }
        const auto end = source_.position();
        if (!startsWithIgnoreCase(command, "COMMENT:")) {
            const auto number =
                base + std::max<std::int64_t>(0, groupIndexOf(command) / kIndicesOfChunk);
            if (current == nullptr || number != currentNumber) {
                current = &chunks_[number];
                currentNumber = number;
            }
            current->add({start, end - start});
            current->size += command.size() + kLineEndBytes;
        }
        start = end;
    }
    return report();
}

void RawGroup::setChunks(Chunks chunks) {
    chunks_ = std::move(chunks);
    batch_.clear();
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

bool RawGroup::fetch(Chunks::const_iterator first) {
    struct Part {
        Extent extent;
        std::string* to;
    };
    batch_.clear();
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
    for (const auto& part : parts) {
        source_.seek(part.extent.at);
        for (auto left = part.extent.length; left > 0;) {
            const auto window = source_.window();
            const auto some = window.substr(0, left);
            if (some.empty()) {
                break;
            }
            part.to->append(some);
            source_.take(some.size());
            left -= some.size();
        }
    }
    return report();
}

}  // namespace kavu
