#include "conversion/ChunkSplitter.h"

#include "conversion/ConversionFiles.h"
#include "conversion/RawChunk.h"
#include "conversion/RawGroup.h"

#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kavu {

namespace {

/// The numbers in use, with a short way to the next free one however long their runs are.
class UsedNumbers {
  public:
    void use(std::int64_t number) { next_.try_emplace(number, number + 1); }

    /// The first free number above `number`; it is in use from now on.
    std::int64_t takeAbove(std::int64_t number) {
        std::int64_t free = number + 1;
        for (auto it = next_.find(free); it != next_.end(); it = next_.find(free)) {
            free = it->second;
        }
        // Path compression: all numbers passed lead directly to the end of the run.
        for (std::int64_t at = number + 1; at != free;) {
            at = std::exchange(next_[at], free + 1);
        }
        use(free);
        return free;
    }

  private:
    std::unordered_map<std::int64_t, std::int64_t> next_;
};

/// The pieces that a chunk is to be split into. An index that is named is a piece of its
/// own as long as what follows is too large; the last piece takes the rest.
struct Plan {
    std::int64_t origin = 0;
    std::unordered_map<std::int64_t, std::size_t> pieceOf;  ///< of the indices with their own
    std::size_t count = 1;
    bool lastIsSingle = false;
    std::vector<RawGroup::Chunk> pieces;
    std::vector<std::int64_t> numbers;  ///< of the pieces, the origin's own first
};

void countPieces(std::string& bytes, bool severalLines, Plan& plan) {
    std::unordered_map<std::int64_t, std::uint64_t> sizes;
    std::unordered_map<std::int64_t, bool> isNamed;
    std::vector<std::int64_t> named;
    std::uint64_t left = 0;
    forEachRawCommand(bytes, severalLines, [&](const RawCommand& command) {
        sizes[command.index] += command.line.size() + kLineEndBytes;
        left += command.line.size() + kLineEndBytes;
        if (!measurementNameIn(command).empty() && !isNamed[command.index]) {
            isNamed[command.index] = true;
            named.push_back(command.index);
        }
    });
    for (std::size_t i = 0; i < named.size() && left > kFullChunk; ++i) {
        plan.pieceOf[named[i]] = i;
        left -= sizes[named[i]];
        plan.lastIsSingle = left == 0;
        plan.count = plan.lastIsSingle ? i + 1 : i + 2;
    }
}

/// Divides the runs of the chunk among its pieces.
void cutPieces(std::string& bytes, const RawGroup::Chunk& chunk, Plan& plan) {
    plan.pieces.resize(plan.count);
    auto extent = chunk.extents.begin();
    std::uint64_t extentStart = 0;  // in the bytes
    std::uint64_t start = 0;
    forEachRawCommand(bytes, chunk.severalLines, [&](const RawCommand& command) {
        while (start >= extentStart + extent->length) {
            extentStart += extent->length;
            ++extent;
        }
        const auto found = plan.pieceOf.find(command.index);
        auto& piece = plan.pieces[found == plan.pieceOf.end() ? plan.count - 1 : found->second];
        piece.add({extent->at + (start - extentStart), command.end - start});
        piece.size += command.line.size() + kLineEndBytes;
        start = command.end;
    });
}

bool planChunks(RawGroup& group, std::vector<Plan>& plans) {
    for (const auto& [number, chunk] : group.chunks()) {
        if (chunk.size <= kFullChunk) {
            continue;
        }
        auto* const bytes = group.bytes(number);
        if (bytes == nullptr) {
            return false;
        }
        Plan plan;
        plan.origin = number;
        countPieces(*bytes, chunk.severalLines, plan);
        if (plan.count > 1 || plan.lastIsSingle) {
            cutPieces(*bytes, chunk, plan);
            plan.pieceOf.clear();
            plans.push_back(std::move(plan));
        }
    }
    return true;
}

/// Gives each piece its number: going up through the chunks, the surplus of a chunk goes
/// to the next free number above it, and is split again there.
void numberPieces(const RawGroup& group, std::vector<Plan>& plans) {
    UsedNumbers used;
    for (const auto& [number, chunk] : group.chunks()) {
        used.use(number);
    }
    std::map<std::int64_t, Plan*> waiting;
    for (auto& plan : plans) {
        plan.numbers.push_back(plan.origin);
        waiting[plan.origin] = &plan;
    }
    for (auto it = waiting.begin(); it != waiting.end(); ++it) {
        auto& plan = *it->second;
        if (plan.numbers.size() < plan.count) {
            const auto number = used.takeAbove(it->first);
            plan.numbers.push_back(number);
            waiting[number] = &plan;
        }
    }
}

}  // namespace

bool splitOversizeChunks(RawGroup& group) {
    std::vector<Plan> plans;
    if (!planChunks(group, plans)) {
        return false;
    }
    if (plans.empty()) {
        return true;
    }
    numberPieces(group, plans);
    auto chunks = group.chunks();
    for (auto& plan : plans) {
        for (std::size_t i = 0; i < plan.count; ++i) {
            plan.pieces[i].severalLines = chunks[plan.origin].severalLines;
            plan.pieces[i].commentsOutside = plan.lastIsSingle || i + 1 < plan.count;
            chunks[plan.numbers[i]] = std::move(plan.pieces[i]);
        }
    }
    group.setChunks(std::move(chunks));
    return true;
}

}  // namespace kavu
