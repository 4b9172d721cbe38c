#include "conversion/ConversionLoader.h"

#include "conversion/ChunkConverter.h"
#include "conversion/ChunkSplitter.h"
#include "conversion/ConversionCompaction.h"
#include "conversion/ConversionFiles.h"
#include "conversion/ConversionStore.h"
#include "conversion/LoadReports.h"
#include "conversion/RawChunk.h"
#include "core/FileIo.h"
#include "core/KeyValueStore.h"
#include "core/Text.h"
#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/UserInterface.h"
#include "core/WorkingStore.h"

#include <algorithm>
#include <set>
#include <string>
#include <unordered_map>

namespace kavu {

namespace {

constexpr std::int64_t kIndicesOfChunk = 25;
constexpr unsigned kPollEvery = 64;                   // commands
constexpr std::size_t kAllBuffers = 4 * 1024 * 1024;  // bytes

/// Sorts the commands of the group into raw chunks. They gather in a buffer for each
/// chunk, so that indices that alternate in the file cost no open and close each.
class ChunkRouter {
  public:
    ChunkRouter(DocumentContext& context, UserInterface* parent)
        : context_(context), parent_(parent) {}

    /// False if it was cancelled or has failed; a failure has been reported.
    bool run(const std::string& path) {
        if (!findBase()) {
            return false;
        }
        ByteSource source;
        if (const auto status = source.open(path); !status.ok()) {
            reportUnreadable(context_, parent_, status);
            return false;
        }
        std::string command;
        for (unsigned count = 1; context_.reader.nextCommand(source, command); ++count) {
            if (count % kPollEvery == 0) {
                yieldToInterface(parent_);
                if (cancelRequested(parent_)) {
                    return false;
                }
            }
            if (!route(command)) {
                return false;
            }
        }
        if (!source.status().ok()) {
            reportUnreadable(context_, parent_, source.status());
            return false;
        }
        return flush();
    }

    /// The chunks that were written.
    [[nodiscard]] std::set<std::int64_t> chunks() const { return chunks_; }

  private:
    /// The first free number behind all chunks: a group that is loaded on top of another
    /// must not mix its commands with records.
    bool findBase() {
        ConversionFiles files;
        if (const auto status = listConversionFiles(context_.store, files); !status.ok()) {
            reportUnreadable(context_, parent_, status);
            return false;
        }
        base_ = files.chunks.empty() ? 0 : files.chunks.back().number + 1;
        return true;
    }

    bool route(std::string& command) {
        const auto number =
            base_ + std::max<std::int64_t>(0, groupIndexOf(command) / kIndicesOfChunk);
        if (current_ == nullptr || number != currentNumber_) {
            current_ = &buffers_[number];
            currentNumber_ = number;
        }
        toStoredForm(command);
        current_->append(command).append("\r\n");
        buffered_ += command.size() + 2;
        return buffered_ < kAllBuffers || flush();
    }

    bool flush() {
        for (const auto& [number, lines] : buffers_) {
            FileWriter writer;
            auto status = writer.open(chunkPath(context_.store, number), WriteMode::Append);
            if (status.ok()) {
                writer.write(lines);
                status = writer.close();
            }
            if (!status.ok()) {
                reportUnwritable(context_, parent_, status, "Create");
                return false;
            }
            chunks_.insert(number);
        }
        buffers_.clear();
        buffered_ = 0;
        current_ = nullptr;
        return true;
    }

    DocumentContext& context_;
    UserInterface* parent_;
    std::int64_t base_ = 0;
    std::unordered_map<std::int64_t, std::string> buffers_;
    std::size_t buffered_ = 0;
    std::string* current_ = nullptr;
    std::int64_t currentNumber_ = 0;
    std::set<std::int64_t> chunks_;
};

bool convertChunks(DocumentContext& context, KeyValueStore& names, UserInterface* parent,
                   int edition, const std::set<std::int64_t>& raw,
                   const std::set<std::int64_t>& single) {
    ChunkConverter converter(context, names, parent, edition);
    double done = 0;
    for (const auto number : raw) {
        const double percent = 100.0 * done / static_cast<double>(raw.size());
        if (cancelRequested(parent) ||
            !converter.convert(number, percent, single.contains(number))) {
            return false;
        }
        ++done;
    }
    return true;
}

bool load(DocumentContext& context, KeyValueStore& names, UserInterface* parent, int edition) {
    const auto data1 = context.store.pathOf(working::kData1);
    if (!fileExists(data1)) {
        return true;
    }
    ChunkRouter router(context, parent);
    if (!router.run(data1)) {
        return false;
    }
    if (const auto status = deleteFile(data1); !status.ok()) {
        reportUnwritable(context, parent, status, "Delete");
        return false;
    }
    auto raw = router.chunks();
    std::set<std::int64_t> single;
    return splitOversizeChunks(context, parent, raw, single) &&
           convertChunks(context, names, parent, edition, raw, single);
}

}  // namespace

bool loadConversionGroup(DocumentContext& context, KeyValueStore& names, ConversionStore& store,
                         UserInterface* parent, int edition) {
    store.forget();
    bool good = load(context, names, parent, edition);
    for (const auto name : {working::kData1, working::kData2}) {
        // A folder in the place of one of them is not the load's.
        if (const auto path = context.store.pathOf(name); isPlainFile(path)) {
            (void)deleteFile(path);
        }
    }
    names.closeStore(parent);
    if (good) {
        if (const auto status = compactChunks(context.store); !status.ok()) {
            reportUnwritable(context, parent, status, "Move");
            good = false;
        }
    }
    store.forget();
    return good;
}

}  // namespace kavu
