#include "conversion/ConversionWriter.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "conversion/SampleRate.h"
#include "conversion/UpdateFile.h"
#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/UserInterface.h"
#include "core/text/Clock.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace kavu {

namespace {

constexpr const char* kGroupName = "Data Conversion Attributes";

/// The value of a field without trailing blanks.
std::string_view field(const ProfileFile::Section& record, std::string_view key,
                       std::string_view otherwise = {}) {
    return trimTrailingBlanks(record.get(key, otherwise));
}

/// The highest index that any of the items has in the record. A count in a file may be
/// any number, so the items in the record bound the loops.
int highestIndex(const ProfileFile::Section& record, const ConversionField& list) {
    int highest = 0;
    for (const auto& line : record.lines()) {
        for (const auto item : list.items) {
            if (item.empty() || line.key.size() <= item.size() + 1 ||
                line.key[item.size()] != '-' || !startsWithIgnoreCase(line.key, item)) {
                continue;
            }
            const auto digits = std::string_view(line.key).substr(item.size() + 1);
            int index = 0;
            const auto result =
                std::from_chars(digits.data(), digits.data() + digits.size(), index);
            if (result.ec == std::errc() && result.ptr == digits.data() + digits.size()) {
                highest = std::max(highest, index);
            }
        }
    }
    return highest;
}

/// One record as commands.
class RecordText {
  public:
    RecordText(int edition, const SampleRateOptions& rates) : edition_(edition), rates_(rates) {}

    /// Starts a record; `comment` has real line breaks.
    void write(const ProfileFile::Section& record, long index, std::string_view type,
               std::string_view comment) {
        record_ = &record;
        text_.clear();
        prefix_ = "C-";
        appendNumber(prefix_, index);
        prefix_ += '\\';
        // The only value that keeps its line breaks in stored form.
        std::string name(trimTrailingBlanks(record.name()));
        toStoredForm(name);
        text_.append(prefix_).append(kNameCode).append(":").append(name).append(";\r\n");
        writeFields(commonConversionFields());
        put(kTypeCode, type);
        writeFields(typeConversionFields(type, edition_));
        put(kCommentCode, comment);
    }
    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    void put(std::string_view code, std::string_view value) {
        if (value.empty()) {
            return;
        }
        text_.append(prefix_).append(code).append(":");
        const auto at = text_.size();
        text_.append(value).append(";\r\n");
        for (auto i = at; i < text_.size(); ++i) {
            if (text_[i] == kStoredCarriageReturn) {
                text_[i] = '\r';
            } else if (text_[i] == kStoredLineFeed) {
                text_[i] = '\n';
            }
        }
    }

    void writeFields(std::span<const ConversionField> fields) {
        for (const auto& row : fields) {
            if (edition_ >= row.from && edition_ <= row.until &&
                (row.needs.empty() || leadingInt(field(*record_, row.needs)) > 0) &&
                (!row.bitWeights || equalsIgnoreCase(field(*record_, "BFM"), "BWT"))) {
                writeField(row);
            }
        }
    }

    void writeField(const ConversionField& row) {
        const auto value = field(*record_, row.code, row.otherwise);
        switch (row.form) {
            case WrittenForm::Value:
                put(row.code, value);
                break;
            case WrittenForm::Count:
                put(row.code, leadingInt(value) < 0 ? "0" : value);
                break;
            case WrittenForm::IntegerCount:
                put(row.code, std::to_string(leadingInt(value)));
                break;
            case WrittenForm::SampleRate: {
                std::string rate(value);
                trimSampleRate(rate, rates_);
                put(row.code, rate);
                break;
            }
            case WrittenForm::List:
                writeList(row, leadingInt(value));
                break;
        }
    }

    void writeList(const ConversionField& row, int count) {
        if (count <= 0) {
            return;
        }
        count = std::min(count, highestIndex(*record_, row));
        std::string code;
        for (int i = 1; i <= count; ++i) {
            for (const auto item : row.items) {
                if (!item.empty()) {
                    code.assign(item).append("-");
                    appendNumber(code, i);
                    put(code, field(*record_, code));
                }
            }
        }
    }

    int edition_;
    SampleRateOptions rates_;
    const ProfileFile::Section* record_ = nullptr;
    std::string prefix_;
    std::string text_;
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
        IoStatus status;
        const auto chunks = store_.chunkNumbers(&status);
        bool good = status.ok() || reportUnreadable(status);
        for (std::size_t i = 0; good && i < chunks.size(); ++i) {
            percent_ = 100.0 * static_cast<double>(i) / static_cast<double>(chunks.size());
            good = writeChunk(chunks[i]);
        }
        update_.close();
        setProgressText(parent_, {});
        return good;
    }

  private:
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
        ++index_;
        if (parent_ != nullptr && context_.ticker.secondElapsed()) {
            parent_->setProgressText(
                formatPrintf("Saving Data Conversion Information. Measurement #%d", index_));
            parent_->setProgressBar(percent_);
        }
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
        record_.write(record, index_, type, comment);
        output_.write(record_.text());
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
    double percent_ = 0;
};

}  // namespace

bool saveConversionGroup(DocumentContext& context, ConversionStore& store, UserInterface* parent,
                         FileWriter& output) {
    return GroupWriter(context, store, parent, output).run();
}

}  // namespace kavu
