#include "conversion/ChunkSplitter.h"

#include "conversion/ConversionFiles.h"
#include "conversion/LoadReports.h"
#include "conversion/RawChunk.h"
#include "core/FileIo.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"

#include <algorithm>
#include <map>
#include <string>
#include <unordered_map>
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
        // All that was passed on the way leads to the end of the run at once.
        for (std::int64_t at = number + 1; at != free;) {
            auto& next = next_[at];
            at = next;
            next = free + 1;
        }
        use(free);
        return free;
    }

  private:
    std::unordered_map<std::int64_t, std::int64_t> next_;
};

/// How the commands of a chunk go into pieces. An index that is named is a piece of its
/// own as long as what follows is too large; the last piece takes all that is left.
struct Pieces {
    std::unordered_map<std::int64_t, std::size_t> pieceOf;  ///< group index to piece
    std::size_t count = 1;
    bool lastIsSingle = false;
};

Pieces planPieces(std::string_view bytes) {
    constexpr std::uint64_t kLineEnd = 2;
    std::unordered_map<std::int64_t, std::uint64_t> sizes;
    std::vector<std::int64_t> named;
    std::unordered_map<std::int64_t, bool> isNamed;
    std::uint64_t left = 0;
    forEachRawCommand(bytes, [&](const RawCommand& command) {
        sizes[command.index] += command.line.size() + kLineEnd;
        left += command.line.size() + kLineEnd;
        if (!measurementNameIn(command).empty() && !isNamed[command.index]) {
            isNamed[command.index] = true;
            named.push_back(command.index);
        }
    });
    Pieces pieces;
    for (std::size_t i = 0; i < named.size() && left > kFullChunk; ++i) {
        pieces.pieceOf[named[i]] = i;
        left -= sizes[named[i]];
        pieces.lastIsSingle = left == 0;
        pieces.count = pieces.lastIsSingle ? i + 1 : i + 2;
    }
    return pieces;
}

struct Plan {
    std::int64_t origin = 0;
    std::size_t pieces = 1;
    bool lastIsSingle = false;
    std::vector<std::int64_t> numbers;  ///< of the pieces, the origin's own first
};

/// Reads the oversize chunks and plans their pieces; false if one could not be read.
bool planChunks(DocumentContext& context, UserInterface* parent, const std::set<std::int64_t>& raw,
                std::vector<Plan>& plans) {
    std::string bytes;
    for (const auto number : raw) {
        const auto path = chunkPath(context.store, number);
        if (fileSize(path) <= kFullChunk) {
            continue;
        }
        if (const auto status = readWholeFile(path, bytes); !status.ok()) {
            reportUnreadable(context, parent, status);
            return false;
        }
        const auto pieces = planPieces(bytes);
        if (pieces.count > 1 || pieces.lastIsSingle) {
            plans.push_back({number, pieces.count, pieces.lastIsSingle, {number}});
        }
    }
    return true;
}

/// Gives each piece its number: going up through the chunks, what a chunk has too much
/// goes to the next free number above it, and is met again there.
void numberPieces(const DocumentContext& context, std::set<std::int64_t>& raw,
                  std::vector<Plan>& plans) {
    UsedNumbers used;
    ConversionFiles files;
    (void)listConversionFiles(context.store, files);
    for (const auto& chunk : files.chunks) {
        used.use(chunk.number);
    }
    for (const auto number : raw) {
        used.use(number);
    }
    std::map<std::int64_t, Plan*> waiting;
    for (auto& plan : plans) {
        waiting[plan.origin] = &plan;
    }
    for (auto it = waiting.begin(); it != waiting.end(); ++it) {
        auto& plan = *it->second;
        if (plan.numbers.size() < plan.pieces) {
            const auto number = used.takeAbove(it->first);
            plan.numbers.push_back(number);
            raw.insert(number);
            waiting[number] = &plan;
        }
    }
}

/// Writes the pieces, the origin last: a run that is killed leaves no command out.
bool writePieces(const DocumentContext& context, UserInterface* parent, const Plan& plan) {
    if (plan.pieces == 1) {
        return true;
    }
    const auto origin = chunkPath(context.store, plan.origin);
    std::string bytes;
    if (const auto status = readWholeFile(origin, bytes); !status.ok()) {
        reportUnreadable(context, parent, status);
        return false;
    }
    const auto pieces = planPieces(bytes);
    std::vector<std::string> texts(plan.pieces);
    forEachRawCommand(bytes, [&](const RawCommand& command) {
        const auto found = pieces.pieceOf.find(command.index);
        const auto piece = found == pieces.pieceOf.end() ? plan.pieces - 1 : found->second;
        texts[std::min(piece, plan.pieces - 1)].append(command.line).append("\r\n");
    });
    for (auto piece = texts.size(); piece-- > 0;) {
        const auto path = chunkPath(context.store, plan.numbers[piece]);
        if (const auto status = replaceFile(path, texts[piece]); !status.ok()) {
            reportUnwritable(context, parent, status, "Write/Create");
            return false;
        }
    }
    return true;
}

}  // namespace

bool splitOversizeChunks(DocumentContext& context, UserInterface* parent,
                         std::set<std::int64_t>& raw, std::set<std::int64_t>& single) {
    std::vector<Plan> plans;
    if (!planChunks(context, parent, raw, plans)) {
        return false;
    }
    numberPieces(context, raw, plans);
    for (const auto& plan : plans) {
        if (!writePieces(context, parent, plan)) {
            return false;
        }
        single.insert(plan.numbers.begin(), plan.numbers.end() - (plan.lastIsSingle ? 0 : 1));
    }
    return true;
}

}  // namespace kavu
