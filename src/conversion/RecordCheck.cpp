#include "conversion/RecordCheck.h"

#include "conversion/ConversionFields.h"
#include "conversion/LoadReports.h"
#include "conversion/RawChunk.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentHistory.h"
#include "core/document/KeyValueStore.h"
#include "core/talk/Messages.h"
#include "core/text/Clock.h"
#include "vocabulary/CountFault.h"

namespace kavu {

namespace {

constexpr std::size_t kLongestShown = 80;  // characters of a value in message 315

std::string shown(std::string_view value) {
    const auto cut = cutToBytes(value, kLongestShown);
    return cut.size() < value.size() ? std::string(cut) + "..." : std::string(value);
}

/// True for a name in the spelling in which it is saved: "C-x" counts as a number, too, and "dcn"
/// as a name.
bool isPlainlyNamed(const RawCommand& command, std::string_view index) {
    const auto rest = command.line.substr(std::min(command.line.size(), kBeforeIndex));
    return command.line.starts_with("C-") && rest.starts_with(index) &&
           rest.substr(index.size()).starts_with("\\DCN");
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
    if (leftOut_ > 0 && parent_ != nullptr) {
        parent_->loadRemark(
            leftOut_ == 1
                ? "A command of a C group is no part of its record and will not be saved: " +
                      firstLeftOut_
                : formatPrintf("%d commands of C groups are no part of their record and will not "
                               "be saved, the first: %s",
                               static_cast<long>(leftOut_), firstLeftOut_));
    }
    if (restyled_ > 0 && parent_ != nullptr) {
        parent_->loadRemark(
            restyled_ == 1
                ? "A command of a C group is saved in another spelling: " + firstRestyled_
                : formatPrintf(
                      "%d commands of C groups are saved in another spelling, the first: %s",
                      static_cast<long>(restyled_), firstRestyled_));
    }
    return true;
}

bool RecordCheck::check(RawGroup::Chunk& chunk, const ChunkScan& scan, double percent) {
    groups_.clear();
    foundKeysOfTheProgram_ = foundKeysOfTheProgram_ || scan.holdsKeysOfTheProgram;
    polled_ += scan.commands;
    if (polled_ >= kPollEvery) {
        polled_ = 0;
        yieldToInterface(parent_);
        if (cancelRequested(parent_)) {
            return false;
        }
    }
    for (const auto index : scan.indices) {
        groups_[index];
    }
    for (const auto& notable : scan.notable) {
        if (notable.limit > 0) {
            reportTooLong(notable);
        } else if (!checkName(chunk, notable, percent)) {
            return false;
        }
    }
    for (const auto& [index, group] : groups_.all()) {
        unnamed_ += group.name.empty() && !group.isRefused ? 1 : 0;
    }
    for (const auto& finding : scan.findings) {
        // What has no name, or that of another record, is told of as a whole.
        if (!groups_[finding.index].name.empty()) {
            takeFinding(finding);
        }
    }
    return true;
}

void RecordCheck::takeFinding(const RecordUse::Finding& finding) {
    leaveOut(finding.leftOut, finding.example);
    restyle(finding.restyled, finding.restyledExample);
    for (const auto& count : finding.counts) {
        const auto code = formatPrintf("C-%ld\\%s", static_cast<long>(finding.index), count.code);
        const auto text =
            count.highest > 0
                ? hiddenRowsText(code, count.stated.empty() ? "nothing" : shown(count.stated),
                                 count.highest)
                : noNumberText(code, shown(count.stated));
        context_.messages.logText(parent_, title::kErrorReadingConversion, text);
    }
}

void RecordCheck::leaveOut(std::size_t commands, std::string_view example) {
    firstLeftOut_ = leftOut_ == 0 && commands > 0 ? shown(example) : firstLeftOut_;
    leftOut_ += commands;
}

void RecordCheck::restyle(std::size_t commands, std::string_view example) {
    firstRestyled_ = restyled_ == 0 && commands > 0 ? shown(example) : firstRestyled_;
    restyled_ += commands;
}

bool RecordCheck::checkName(RawGroup::Chunk& chunk, const ChunkScan::Notable& notable,
                            double percent) {
    const auto& command = notable.command;
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
        chunk.refused.push_back(notable.at);
        groups_[command.index].isRefused = true;
        return true;
    }
    const auto index = std::to_string(command.index);
    if (!isPlainlyNamed(command, index)) {
        restyle(1, command.line);
    }
    auto& to = groups_[command.index];
    if (!to.name.empty()) {
        // A second name of one index is never used; it must not hide the record that has it.
        leaveOut(1, command.line);
        return true;
    }
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

void RecordCheck::reportTooLong(const ChunkScan::Notable& notable) {
    const auto& command = notable.command;
    const auto& of = groups_[command.index];
    context_.messages.log(
        parent_, 315, title::kErrorReadingConversion,
        of.name.empty() ? std::string("<name not defined>") : std::string(of.name), command.index,
        command.code, shown(command.value), notable.limit);
    context_.history.markCorrected();
}

}  // namespace kavu
