#include "conversion/ConversionFiles.h"

#include "core/WorkingStore.h"
#include "core/files/FileIo.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace kavu {

namespace {

constexpr std::string_view kHead = "[kavu]";
constexpr std::string_view kChunkTail = ".C_O";
constexpr std::string_view kCommentTail = ".C_COM";

std::optional<std::int64_t> chunkNumber(std::string_view name) {
    if (!name.starts_with(kHead) || !name.ends_with(kChunkTail) ||
        name.size() < kHead.size() + kChunkTail.size()) {
        return std::nullopt;
    }
    const auto digits = name.substr(kHead.size(), name.size() - kHead.size() - kChunkTail.size());
    std::int64_t number = 0;
    const auto end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || number < 0) {
        return std::nullopt;
    }
    return number;
}

std::string commentName(std::string_view measurement, std::string_view tail) {
    return std::string(kHead).append(safeFileName(measurement)).append(tail);
}

}  // namespace

std::string chunkPath(const WorkingStore& store, std::int64_t number) {
    return store.path(working::kChunkFormat, number);
}

std::string rawGroupPath(const WorkingStore& store, std::int64_t base) {
    return store.path(working::kRawConversionsFormat, base);
}

std::string commentPath(const WorkingStore& store, std::string_view measurement) {
    return store.pathOf(commentName(measurement, kCommentTail));
}

std::string commentCopyPath(const WorkingStore& store, std::string_view measurement) {
    return store.pathOf(commentName(measurement, ".C_COMtmp"));
}

IoStatus listConversionFiles(const WorkingStore& store, ConversionFiles& files) {
    files = {};
    std::vector<FolderEntry> entries;
    auto status = listFolder(store.folder(), entries);
    for (const auto& entry : entries) {
        if (entry.isFolder) {
            continue;
        }
        if (const auto number = chunkNumber(entry.name)) {
            files.chunks.push_back({*number, 0});
            const auto sized = probeSize(store.pathOf(entry.name), files.chunks.back().size);
            status = status.ok() ? sized : status;
        } else if (entry.name.starts_with(kHead) && entry.name.ends_with(kCommentTail)) {
            files.commentFiles.insert(store.pathOf(entry.name));
        }
    }
    std::sort(files.chunks.begin(), files.chunks.end(),
              [](const auto& a, const auto& b) { return a.number < b.number; });
    return status;
}

}  // namespace kavu
