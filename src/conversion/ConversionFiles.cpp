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

std::string nameOf(std::string_view measurement, std::string_view tail) {
    return std::string(kHead).append(safeFileName(measurement)).append(tail);
}

}  // namespace

std::string chunkName(std::int64_t number) {
    return formatPrintf(working::kChunkFormat, number);
}

std::string chunkPath(const WorkingStore& store, std::int64_t number) {
    return store.pathOf(chunkName(number));
}

std::string rawGroupName(std::int64_t base) {
    return formatPrintf(working::kRawConversionsFormat, base);
}

std::string rawGroupPath(const WorkingStore& store, std::int64_t base) {
    return store.pathOf(rawGroupName(base));
}

std::string commentName(std::string_view measurement) {
    return nameOf(measurement, kCommentTail);
}

std::string commentPath(const WorkingStore& store, std::string_view measurement) {
    return store.pathOf(commentName(measurement));
}

std::string commentCopyPath(const WorkingStore& store, std::string_view measurement) {
    return store.pathOf(nameOf(measurement, ".C_COMtmp"));
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
            files.commentFiles.insert(entry.name);
        }
    }
    std::sort(files.chunks.begin(), files.chunks.end(),
              [](const auto& a, const auto& b) { return a.number < b.number; });
    return status;
}

}  // namespace kavu
