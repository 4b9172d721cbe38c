#include "conversion/RecordCheck.h"

#include "conversion/ConversionFields.h"
#include "conversion/LoadReports.h"
#include "conversion/RawChunk.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/command/CommandPath.h"
#include "core/document/DocumentHistory.h"
#include "core/document/KeyValueStore.h"
#include "core/talk/Messages.h"
#include "core/text/Clock.h"

namespace kavu {

namespace {

constexpr std::size_t kLongestShown = 80;  // characters of a value in message 315

std::string shown(std::string_view value) {
    const auto cut = cutToBytes(value, kLongestShown);
    return cut.size() < value.size() ? std::string(cut) + "..." : std::string(value);
}

}  // namespace

bool RecordCheck::open() {
    const auto names = context_.store.pathOf(working::kData2);
    if (const auto status = namesFile_.open(names, WriteMode::Truncate); !status.ok()) {
        reportUnwritable(context_, parent_, status, "Create", working::kData2);
        return false;
    }
    return true;
}

bool RecordCheck::close() {
    if (const auto status = namesFile_.close(); !status.ok()) {
        reportUnwritable(context_, parent_, status, "Create", working::kData2);
        return false;
    }
    // No numbered message reports them; but a person who looks for the lost calibration has to be
    // able to find out.
    if (unnamed_ > 0 && parent_ != nullptr) {
        parent_->loadRemark(
            formatPrintf("%d C groups without a name (DCN) are left out.", unnamed_));
    }
    return true;
}

bool RecordCheck::check(RawGroup::Chunk& chunk, std::string& bytes, double percent) {
    at_ = 0;
    groups_.clear();
    bool good = true;
    forEachRawCommand(bytes, chunk.severalLines, [&](const RawCommand& command) {
        if (!good) {
            return;
        }
        if (++polled_ % kPollEvery == 0) {
            yieldToInterface(parent_);
            good = !cancelRequested(parent_);
        }
        ++at_;
        if (command.value.empty()) {
            return;
        }
        if (isNaming(command)) {
            good = good && checkName(chunk, command, percent);
        } else {
            checkField(command);
        }
    });
    for (const auto& [index, group] : groups_.all()) {
        unnamed_ += group.name.empty() && !group.isRefused ? 1 : 0;
    }
    return good;
}

bool RecordCheck::checkName(RawGroup::Chunk& chunk, const RawCommand& command, double percent) {
    const auto whole = measurementNameIn(command);
    const auto name = recordNameIn(command);
    if (whole.empty()) {
        return true;
    }
    if (whole.size() > kLongestMeasurementName) {
        context_.messages.log(parent_, 318, title::kErrorReadingConversion, command.index,
                              command.code, command.value, name);
    }
    if (name.empty()) {
        return true;  // of nothing but blanks as far as a name goes
    }
    if (names_.sectionExists(name)) {
        context_.messages.log(parent_, 317, title::kErrorReadingConversion, name);
        context_.history.markCorrected();
        chunk.refused.push_back(at_);
        groups_[command.index].isRefused = true;
        return true;
    }
    auto& to = groups_[command.index];
    if (!to.name.empty()) {
        // A second name of one index is never used; it must not hide the record that has it.
        return true;
    }
    const auto index = std::to_string(command.index);
    const KeyValueStore::Pair pair{"N", index};
    if (!names_.writeSection(parent_, name, {&pair, 1})) {
        return false;
    }
    to.name = name;
    chunk.hasRecords = true;
    namesFile_.write("[");
    namesFile_.write(index);
    namesFile_.write("]\nN=");
    namesFile_.write(name);
    namesFile_.write("\n");
    ++measurements_;
    showProgress(name, percent);
    return true;
}

void RecordCheck::showProgress(std::string_view name, double percent) {
    if (parent_ != nullptr && context_.ticker.secondElapsed()) {
        parent_->setProgressText(formatPrintf(
            "Initializing Data Conversion Info. Measurement #%u: %s", measurements_, name));
        parent_->setProgressBar(percent);
    }
}

void RecordCheck::checkField(const RawCommand& command) {
    const auto& of = groups_[command.index];
    const auto* const row = findConversionCode(codeHead(trim(command.code)));
    foundKeysOfTheProgram_ = foundKeysOfTheProgram_ || (row != nullptr && row->isOfTheProgram);
    const auto limit = static_cast<std::size_t>(conversionLimit(command.code, row, edition_));
    if (limit > 0 && command.value.size() > limit) {
        context_.messages.log(
            parent_, 315, title::kErrorReadingConversion,
            of.name.empty() ? std::string("<name not defined>") : std::string(of.name),
            command.index, command.code, shown(command.value), limit);
        context_.history.markCorrected();
    }
}

}  // namespace kavu
