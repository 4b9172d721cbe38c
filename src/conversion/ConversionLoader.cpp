#include "conversion/ConversionLoader.h"

#include "conversion/ChunkConverter.h"
#include "conversion/ChunkSplitter.h"
#include "conversion/ConversionCompaction.h"
#include "conversion/ConversionFiles.h"
#include "conversion/ConversionStore.h"
#include "conversion/LoadReports.h"
#include "conversion/RawGroup.h"
#include "conversion/StagedChunks.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/KeyValueStore.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"

#include <optional>
#include <set>
#include <string>

namespace kavu {

namespace {

bool convertChunks(DocumentContext& context, KeyValueStore& names, UserInterface* parent,
                   int edition, RawGroup& group, const std::set<std::int64_t>& single,
                   StagedChunks& chunks) {
    ChunkConverter converter(context, names, chunks, parent, edition);
    if (!converter.open()) {
        return false;
    }
    double done = 0;
    for (const auto& [number, chunk] : group.chunks()) {
        const double percent = 100.0 * done / static_cast<double>(group.chunks().size());
        auto* const bytes = cancelRequested(parent) ? nullptr : group.bytes(number);
        if (bytes == nullptr ||
            !converter.convert(number, *bytes, percent, single.contains(number))) {
            return false;
        }
        ++done;
    }
    return converter.close();
}

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

bool load(DocumentContext& context, KeyValueStore& names, UserInterface* parent, int edition,
          const std::string& rawPath, std::int64_t base, StagedChunks& chunks) {
    RawGroup group(context, parent, rawPath);
    std::set<std::int64_t> single;
    return group.sort(base) && splitOversizeChunks(group, single) &&
           convertChunks(context, names, parent, edition, group, single, chunks);
}

}  // namespace

bool loadConversionGroup(DocumentContext& context, KeyValueStore& names, ConversionStore& store,
                         UserInterface* parent, int edition) {
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
    // The commands stay in one file until all of them are records. Its name states the
    // first chunk made from it: what a killed run has made of them so far can be
    // discarded.
    const auto raw = rawGroupName(*base);
    if (const auto status = context.files.adopt(data1, raw); !status.ok()) {
        reportUnwritable(context, parent, status, "Move");
        return false;
    }
    // Records of two loads never wait together: the raw commands would not show which
    // load they belong to.
    StagedChunks chunks(*base == 0 ? store.stagingLimit : 0);
    chunks.standFor(raw);
    bool good = load(context, names, parent, edition, context.files.path(raw), *base, chunks);
    for (const auto& path : {data1, context.store.pathOf(working::kData2)}) {
        (void)deleteFile(path);
    }
    names.closeStore(parent);
    if (good) {
        if (const auto status = compactChunks(context, chunks); !status.ok()) {
            reportUnwritable(context, parent, status, "Move");
            good = false;
        }
    }
    if (!good || chunks.all().empty()) {
        (void)chunks.writeOut(context.files);
    }
    store.forget();
    store.stage(std::move(chunks));
    return good;
}

}  // namespace kavu
