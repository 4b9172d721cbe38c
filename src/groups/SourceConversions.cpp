#include "groups/SourceConversions.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionFiles.h"
#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/files/ProfileFile.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"

#include <algorithm>
#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kavu {

namespace {

constexpr const char* kTextWithPercent = "Adding EU Conversion Information (%.0f%%)";

/// Gathers copies of records in one chunk, which is written when it is full, not once for
/// each.
class RecordCopier {
  public:
    RecordCopier(SourceParts& parts, UserInterface* parent) : parts_(parts), parent_(parent) {}

    bool copy(const std::string& oldName, const std::string& newName) {
        auto& store = parts_.conversions;
        const auto from = store.locateDefinition(oldName);
        if (!from.found || oldName == newName) {
            return true;
        }
        const auto to = store.locateDefinition(newName);
        if (to.found || pending_.contains(lowerAscii(newName))) {
            parts_.context.messages.log(parent_, 459, title::kWarning, newName);
            return true;
        }
        IoStatus status;
        auto comment = store.readEuComment(oldName, false, &status);
        const auto source = store.chunk(from.chunk);
        status = status.ok() ? source->load() : status;
        if (!status.ok()) {
            return report(status, "Read");
        }
        if ((target_ != nullptr && number_ != to.chunk) && !flush()) {
            return false;
        }
        number_ = to.chunk;
        target_ = target_ == nullptr ? store.chunk(number_) : target_;
        if (status = target_->load(); !status.ok()) {
            return report(status, "Read");
        }
        copySection(*source, from.section, newName);
        pending_.insert(lowerAscii(newName));
        copyComment(newName, std::move(comment));
        return target_->serialisedSize() < kFullChunk || flush();
    }

    /// Writes what is left.
    bool finish() { return flush(); }

  private:
    void copySection(const ProfileFile& source, const std::string& section,
                     const std::string& newName) {
        const auto& sections = source.sections();
        const auto found = std::find_if(sections.begin(), sections.end(), [&](const auto& s) {
            return s.name() == section && s.hasKeys();
        });
        if (found == sections.end()) {
            return;
        }
        const auto lines = found->lines();  // the target may be the same profile
        for (const auto& line : lines) {
            if (!line.key.empty() && !equalsIgnoreCase(line.key, kCommentCode)) {
                target_->setValue(newName, line.key, trim(line.text));
            }
        }
    }
    /// A comment is stored in its record as long as there is room, so that it costs no write
    /// of its own. One that needs a file waits until its record is in the store.
    void copyComment(const std::string& newName, std::string comment) {
        toStoredForm(comment);
        if (comment.size() + target_->serialisedSize() > kFullChunk ||
            (!comment.empty() && !target_->setValue(newName, kCommentCode, comment))) {
            comments_.emplace_back(newName, std::move(comment));
        }
    }
    bool flush() {
        if (target_ == nullptr) {
            return true;
        }
        const auto status = parts_.conversions.store(number_, *target_);
        target_ = nullptr;
        pending_.clear();
        return report(status, "Write/Create") && writeComments();
    }
    bool writeComments() {
        const auto comments = std::exchange(comments_, {});
        return std::all_of(comments.begin(), comments.end(), [this](const auto& comment) {
            return parts_.conversions.writeEuComment(parent_, comment.first, comment.second, false);
        });
    }
    bool report(const IoStatus& status, std::string_view action) {
        if (!status.ok()) {
            reportFailedAction(parts_.context.messages, parent_, status,
                               title::kErrorReadingConversion, action);
        }
        return status.ok();
    }

    SourceParts& parts_;
    UserInterface* parent_;
    std::int64_t number_ = 0;
    std::shared_ptr<ProfileFile> target_;
    std::unordered_set<std::string> pending_;  ///< names in the chunk that is not written yet
    std::vector<std::pair<std::string, std::string>> comments_;  ///< of records in that chunk
};

}  // namespace

bool recordsAreKnown(SourceParts& parts, UserInterface* parent) {
    IoStatus status;
    (void)parts.conversions.chunkNumbers(&status);
    if (!status.ok()) {
        reportUnableToRead(parent, status);
    }
    return status.ok();
}

bool copyConversions(SourceParts& parts, UserInterface* parent,
                     std::span<const MeasurementPair> names) {
    if (!recordsAreKnown(parts, parent)) {
        return false;
    }
    RecordCopier copier(parts, parent);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i % kTellEvery == 0) {
            const auto percent = 100.0 * static_cast<double>(i) / static_cast<double>(names.size());
            setStatusText(parent, formatPrintf(kTextWithPercent, percent));
            setProgressBar(parent, percent);
            yieldToInterface(parent);
            if (cancelRequested(parent)) {
                return false;
            }
        }
        if (!copier.copy(names[i].first, names[i].second)) {
            return false;
        }
    }
    return copier.finish();
}

}  // namespace kavu
