#include "conversion/ConversionLoader.h"

#include "conversion/ChunkScan.h"
#include "conversion/ChunkSplitter.h"
#include "conversion/ConversionCompaction.h"
#include "conversion/ConversionFiles.h"
#include "conversion/ConversionStore.h"
#include "conversion/LoadReports.h"
#include "conversion/RawGroup.h"
#include "conversion/RecordCheck.h"
#include "conversion/StagedChunks.h"
#include "conversion/UntouchedRecords.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/KeyValueStore.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/TwoThreads.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kavu {

namespace {

/// One load of the group.
class GroupLoad {
  public:
    GroupLoad(DocumentContext& context, KeyValueStore& names, UserInterface* parent, int edition,
              const std::string& path)
        : context_(context),
          parent_(parent),
          edition_(edition),
          group_(path),
          check_(context, names, parent, edition) {}

    /// Sorts the commands into chunks from number `base` on, as noted if there are notes of this
    /// file, and checks them. After a failure
    /// the chunks are those that have been checked so far.
    bool run(std::int64_t base, const ConversionRuns& noted) {
        std::size_t checked = 0;
        const bool sorted =
            group_.sortAsNoted(noted, base) || group_.sort(context_.reader, parent_, base);
        const bool good = sorted && splitOversizeChunks(group_) && check_.open() &&
                          checkChunks(checked) && check_.close();
        if (!group_.status().ok()) {
            reportUnreadable(context_, parent_, group_.status());
        }
        if (!good) {
            auto& chunks = group_.chunks();
            chunks.erase(std::next(chunks.begin(), static_cast<std::ptrdiff_t>(checked)),
                         chunks.end());
        }
        group_.release();
        return good;
    }
    [[nodiscard]] bool isEmpty() const { return group_.chunks().empty(); }
    /// Gives the chunks the numbers that they have once the group is loaded.
    void compact() {
        std::vector<ConversionChunk> sizes;
        for (const auto& [number, chunk] : group_.chunks()) {
            sizes.push_back({number, chunk.hasRecords ? chunk.size : 0});
        }
        auto chunks = std::move(group_.chunks());
        for (const auto& [moved, to] : planCompaction(std::move(sizes))) {
            auto node = chunks.extract(moved.number);
            if (moved.size > 0) {
                chunks.erase(to);
                node.key() = to;
                chunks.insert(std::move(node));
            }
        }
        group_.setChunks(std::move(chunks));
    }
    /// What has been loaded; `name` is that of the file of raw commands.
    [[nodiscard]] UntouchedRecords take(std::string name) {
        return {std::move(group_), std::move(name), edition_, check_.foundKeysOfTheProgram()};
    }

  private:
    /// Chunks that have been read together, and what a look at each has found.
    struct Scanned {
        RawGroup::Batch read;
        std::vector<ChunkScan> scans;  ///< those beyond the batch keep their memory
    };

    /// While some chunks are scanned, those before them are checked and those after them read.
    bool checkChunks(std::size_t& checked) {
        std::array<RecordUse, kMostWorkers> uses{RecordUse(edition_), RecordUse(edition_)};
        auto next = group_.chunks().begin();
        Scanned before;
        Scanned now;
        now.read = group_.readSome(next);
        bool good = true;
        while (good && !now.read.empty()) {
            now.scans.resize(std::max(now.scans.size(), now.read.size()));
            RawGroup::Batch following;
            forEachOnTwoThreads(
                now.read.size(),
                [&](std::size_t place, std::size_t worker) {
                    auto& read = now.read[place];
                    now.scans[place].run(read.bytes, read.chunk->severalLines, edition_,
                                         uses.at(worker));
                },
                [&] {
                    good = checkSome(before, checked);
                    if (good) {
                        following = group_.readSome(next);
                    }
                });
            std::swap(before, now);
            now.read = std::move(following);
        }
        return good && checkSome(before, checked) && next == group_.chunks().end();
    }

    /// Checks chunks that have been scanned, and forgets what was read of them.
    bool checkSome(Scanned& some, std::size_t& checked) {
        const auto count = static_cast<double>(group_.chunks().size());
        for (std::size_t place = 0; place < some.read.size(); ++place, ++checked) {
            const double percent = 100.0 * static_cast<double>(checked) / count;
            if (cancelRequested(parent_) ||
                !check_.check(*some.read[place].chunk, some.scans[place], percent)) {
                return false;
            }
        }
        some.read.clear();
        return true;
    }

    DocumentContext& context_;
    UserInterface* parent_;
    int edition_;
    RawGroup group_;
    RecordCheck check_;
};

/// The first free number after all chunks: a group that is loaded in addition must not
/// mix its commands with records. Nothing if the folder cannot be listed.
std::optional<std::int64_t> findBase(DocumentContext& context, UserInterface* parent) {
    ConversionFiles files;
    if (const auto status = listConversionFiles(context.store, files); !status.ok()) {
        reportUnreadable(context, parent, status);
        return std::nullopt;
    }
    return files.chunks.empty() ? 0 : files.chunks.back().number + 1;
}

}  // namespace

bool loadConversionGroup(DocumentContext& context, KeyValueStore& names, ConversionStore& store,
                         UserInterface* parent, int edition, ConversionRuns noted) {
    if (const auto status = store.writeOut(); !status.ok()) {
        reportUnwritable(context, parent, status, "Write/Create");
        return false;
    }
    store.forget();
    const auto data1 = context.store.pathOf(working::kData1);
    PathKind kind = PathKind::Missing;
    if (const auto status = probePath(data1, kind); !status.ok()) {
        reportUnreadable(context, parent, status);
        return false;
    }
    if (kind == PathKind::Missing) {
        return true;
    }
    const auto base = findBase(context, parent);
    if (!base) {
        return false;
    }
    if (noted.stamp != fileStamp(data1)) {
        noted = {};
    }
    // The commands stay in one file until all of them are records. Its name states the
    // first chunk made from it: what a killed run has made of them so far can be
    // discarded.
    const auto raw = rawGroupName(*base);
    if (const auto status = context.files.adopt(data1, raw); !status.ok()) {
        reportUnwritable(context, parent, status, "Move");
        return false;
    }
    GroupLoad load(context, names, parent, edition, context.files.path(raw));
    bool good = load.run(*base, noted);
    (void)deleteFile(context.store.pathOf(working::kData2));
    names.closeStore(parent);
    // Records of two loads never wait together: the raw commands would not show which
    // load they belong to.
    const bool mayWait = good && !load.isEmpty() && *base == 0 && store.stagingLimit > 0;
    if (mayWait) {
        load.compact();
    }
    store.hold(load.take(raw));
    if (mayWait) {
        return true;
    }
    if (const auto status = store.writeOut(); !status.ok()) {
        reportUnwritable(context, parent, status, "Write/Create");
        good = false;
    }
    if (good) {
        StagedChunks none;
        if (const auto status = compactChunks(context, none); !status.ok()) {
            reportUnwritable(context, parent, status, "Move");
            good = false;
        }
    }
    store.forget();
    return good;
}

}  // namespace kavu
