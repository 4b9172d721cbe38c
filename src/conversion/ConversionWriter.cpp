#include "conversion/ConversionWriter.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "conversion/RecordText.h"
#include "conversion/SampleRate.h"
#include "conversion/UntouchedRecords.h"
#include "conversion/UpdateFile.h"
#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/UserInterface.h"
#include "core/text/Clock.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "core/text/TwoThreads.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

namespace {

constexpr const char* kGroupName = "Data Conversion Attributes";

/// The value of a field without trailing blanks.
std::string_view field(const ProfileFile::Section& record, std::string_view key,
                       std::string_view otherwise = {}) {
    return trimTrailingBlanks(record.get(key, otherwise));
}

/// The fields of a record that is in its section. Of two lines with one key the first counts.
void putFields(const ProfileFile::Section& record, RecordText& text) {
    text.clear();
    const auto& lines = record.lines();
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        text.put(line->key, trimBlanks(line->text));
    }
}

/// The fields of a record that is still raw commands. Gives its comment, which has blanks at its
/// ends only if it is too long for the chunk.
std::string putFields(const RawRecords::Record& record, bool commentOutside, RecordText& text) {
    text.clear();
    std::string_view comment;
    for (const auto& field : record.fields) {
        if (field.known != nullptr) {
            text.put(*field.known, field.code, trimBlanks(field.value));
            comment =
                field.known->code == kCommentCode && equalsIgnoreCase(field.code, kCommentCode)
                    ? field.value
                    : comment;
        }
    }
    std::string decoded(commentOutside ? comment : trimBlanks(comment));
    fromStoredForm(decoded);
    return decoded;
}

/// The texts of records that are still raw commands, chunk by chunk.
class ComposedBatch {
  public:
    struct Chunk {
        std::string text;
        std::vector<std::size_t> ends;  ///< of the records in the text
    };
    ComposedBatch(int edition, const SampleRateOptions& rates)
        : records_{RecordText(edition, rates), RecordText(edition, rates)} {}

    /// Composes the records of a batch in place of those before. `index` is the group index of the
    /// last record before them, and goes on to that of their last. `meanwhile` is called while
    /// that is done.
    void compose(const RecordBatch& batch, std::int64_t& index,
                 const std::function<void()>& meanwhile) {
        count_ = batch.count;
        chunks_.resize(std::max(chunks_.size(), batch.count));
        std::vector<std::int64_t> before;
        for (std::size_t part = 0; part < batch.count; ++part) {
            before.push_back(index);
            index += static_cast<std::int64_t>(batch.parts[part].records.size());
        }
        forEachOnTwoThreads(
            batch.count,
            [&](std::size_t part, std::size_t worker) {
                compose(batch.parts[part], before[part], records_.at(worker), chunks_[part]);
            },
            meanwhile);
    }
    [[nodiscard]] std::span<const Chunk> chunks() const { return std::span(chunks_).first(count_); }

  private:
    static void compose(const RecordBatch::Part& part, std::int64_t index, RecordText& record,
                        Chunk& to) {
        to.text.clear();
        to.ends.clear();
        for (std::size_t i = 0; i < part.records.size(); ++i) {
            const auto comment = putFields(part.records[i], part.chunk->commentsOutside, record);
            to.text += record.write(++index, part.records[i].name, comment);
            to.ends.push_back(to.text.size());
        }
    }

    std::array<RecordText, kMostWorkers> records_;
    std::vector<Chunk> chunks_;  ///< those beyond the batch keep their memory
    std::size_t count_ = 0;
};

/// One save of the group.
class GroupWriter {
  public:
    GroupWriter(DocumentContext& context, ConversionStore& store, UserInterface* parent,
                FileWriter& output)
        : context_(context),
          store_(store),
          parent_(parent),
          output_(output),
          update_(context, parent),
          record_(context.document.version, sampleRateOptions(context.settings)) {}

    bool run() {
        setProgressText(parent_, "Saving PCM Data Conversion Information...");
        setProgressBar(parent_, 0);
        update_.open();
        auto* const untouched = store_.untouched();
        const bool good = untouched != nullptr ? writeUntouched(*untouched) : writeChunks();
        update_.close();
        setProgressText(parent_, {});
        return good;
    }

  private:
    bool writeChunks() {
        IoStatus status;
        const auto chunks = store_.chunkNumbers(&status);
        bool good = status.ok() || reportUnreadable(status);
        for (std::size_t i = 0; good && i < chunks.size(); ++i) {
            percent_ = 100.0 * static_cast<double>(i) / static_cast<double>(chunks.size());
            good = writeChunk(chunks[i]);
        }
        return good;
    }

    /// Nobody has asked for a record since the load, so that there is no section to look at or to
    /// change, and nothing for the update file.
    bool writeUntouched(UntouchedRecords& untouched) {
        const auto rates = sampleRateOptions(context_.settings);
        std::array<ComposedBatch, 2> composed{ComposedBatch(context_.document.version, rates),
                                              ComposedBatch(context_.document.version, rates)};
        chunkCount_ = untouched.chunks().size();
        auto next = untouched.chunks().begin();
        RawGroup::Batch read;
        RecordBatch batch;
        std::int64_t index = index_;
        auto status = untouched.readSome(next, read);
        bool good = true;
        std::size_t turn = 0;
        // While some records are composed those before them are written.
        for (; good && status.ok() && !read.empty(); turn = 1 - turn) {
            RawGroup::Batch following;
            untouched.gather(std::move(read), batch,
                             [&] { status = untouched.readSome(next, following); });
            composed[turn].compose(batch, index,
                                   [&] { good = writeComposed(composed[1 - turn].chunks()); });
            read = std::move(following);
        }
        if (!good || !writeComposed(composed[1 - turn].chunks())) {
            return false;
        }
        untouched.release();
        return status.ok() || reportUnreadable(status);
    }

    bool writeComposed(std::span<const ComposedBatch::Chunk> chunks) {
        for (const auto& chunk : chunks) {
            percent_ =
                100.0 * static_cast<double>(chunksDone_++) / static_cast<double>(chunkCount_);
            if (!writeComposed(chunk)) {
                return false;
            }
        }
        return true;
    }

    bool writeComposed(const ComposedBatch::Chunk& chunk) {
        std::size_t start = 0;
        for (const auto end : chunk.ends) {
            yieldToInterface(parent_);
            if (cancelRequested(parent_)) {
                return false;
            }
            startRecord();
            output_.write(std::string_view(chunk.text).substr(start, end - start));
            if (!output_.status().ok()) {
                return false;
            }
            start = end;
        }
        return true;
    }

    void startRecord() {
        ++index_;
        if (parent_ != nullptr && context_.ticker.secondElapsed()) {
            parent_->setProgressText(
                formatPrintf("Saving Data Conversion Information. Measurement #%d", index_));
            parent_->setProgressBar(percent_);
        }
    }

    bool writeChunk(std::int64_t number) {
        const auto chunk = store_.chunk(number);
        if (const auto& status = chunk->load(); !status.ok()) {
            return reportUnreadable(status);
        }
        changed_.clear();
        const auto& sections = chunk->sections();
        for (std::size_t i = 1; i < sections.size(); ++i) {
            yieldToInterface(parent_);
            if (cancelRequested(parent_) || !writeRecord(*chunk, sections[i]) ||
                !output_.status().ok()) {
                // No change of an abandoned save may stay in the records.
                store_.discardChanges(number, *chunk);
                return false;
            }
        }
        // A mark is removed only when its calibration is in the update file.
        if (!changed_.empty() && update_.flush()) {
            for (const auto& name : changed_) {
                chunk->removeKey(name, recordkey::kChanged);
            }
        }
        if (const auto status = store_.store(number, *chunk); !status.ok()) {
            reportFailedAction(context_.messages, parent_, status, title::kErrorSaving,
                               "Write/Create");
            return false;
        }
        return true;
    }

    bool writeRecord(ProfileFile& chunk, const ProfileFile::Section& record) {
        startRecord();
        // A default record that was never edited is written as one without a conversion.
        if (record.integer(recordkey::kTemplate) != 0 && record.get(kTypeCode) != kNoType) {
            chunk.setValue(record.name(), kTypeCode, kNoType);
        }
        const std::string type(field(record, kTypeCode, kNoType));
        IoStatus status;
        auto comment = store_.readEuComment(record, &status);
        if (!status.ok()) {
            return reportUnreadable(status);
        }
        // Private pairs are stored in the comment, where other software sees text.
        if (const auto pairs = record.get(recordkey::kCommentRecord); !pairs.empty()) {
            comment = std::string("[KAVU:").append(pairs).append("]").append(comment);
        }
        putFields(record, record_);
        output_.write(record_.write(index_, record.name(), comment));
        if (update_.offer(record, type)) {
            changed_.push_back(record.name());
        }
        return true;
    }

    bool reportUnreadable(const IoStatus& status) {
        reportUnreadableGroup(context_.messages, parent_, status, kGroupName, status.path());
        return false;
    }

    DocumentContext& context_;
    ConversionStore& store_;
    UserInterface* parent_;
    FileWriter& output_;
    UpdateFile update_;
    RecordText record_;
    std::vector<std::string> changed_;
    long index_ = 0;
    std::size_t chunkCount_ = 0;
    std::size_t chunksDone_ = 0;
    double percent_ = 0;
};

}  // namespace

bool saveConversionGroup(DocumentContext& context, ConversionStore& store, UserInterface* parent,
                         FileWriter& output) {
    return GroupWriter(context, store, parent, output).run();
}

}  // namespace kavu
