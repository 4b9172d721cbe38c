#include "core/document/GroupSplitter.h"

#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/command/CommandPath.h"
#include "core/document/CommandBlock.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/document/GroupFiles.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/talk/OpenFileChecked.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"

#include <array>
#include <utility>

namespace kavu {

namespace {

constexpr std::size_t kTargetBuffer = 256 * 1024;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kAllBuffers = 8 * 1024 * 1024;

bool isIndexedLetter(char letter) {
    return std::string_view("TRMPDBAVS").find(letter) != std::string_view::npos;
}

}  // namespace

GroupSplitter::GroupSplitter(DocumentContext& context, UserInterface* parent)
    : context_(context),
      parent_(parent),
      keepComments_(context.settings.get(setting::kKeepComments)) {}

bool GroupSplitter::run(const std::string& path) {
    ByteSource source;
    if (!openFileChecked(parent_, path, source)) {
        return false;
    }
    if (const auto status = context_.files.beginRecord(describeSource(path)); !status.ok()) {
        reportWriteFailure(status);
        return false;
    }
    conversions_.name = working::kData1;
    unsplit_.name = working::kUnsplitConversions;
    conversions_.title = "EU Information - Measurement: #%d";
    // The raw commands belong to no group: they are scratch, from which conversion chunks are made.
    if (const auto status =
            conversionsFile_.open(context_.store.pathOf(working::kData1), WriteMode::Truncate);
        !status.ok()) {
        reportWriteFailure(status);
        return false;
    }
    if (source.window().substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        source.take(kByteOrderMark.size());
        notes_.byteOrderMark();
    }
    notes_.filler(cutFiller(source));
    (void)context_.reader.takeSkippedFiller();
    if (!splitCommands(source)) {
        return false;
    }
    notes_.fillerBetween(filler_ + context_.reader.takeSkippedFiller());
    if (const auto status = conversionComments_.store(context_.files); !status.ok()) {
        reportWriteFailure(status);
        return false;
    }
    // A file that another program has changed meanwhile may be the front of one state and
    // the end of another.
    IoStatus failure;
    if (source.changedSinceOpened(&failure)) {
        showBox(parent_,
                failure.ok()
                    ? formatPrintf("The file '%s' was changed by another program while it was "
                                   "being read.\n\nPlease open it again.",
                                   path)
                    : formatPrintf("Unable to read '%s'\n\nReason: %s", failure.path(),
                                   failure.reason()),
                "Unable To Open File");
        return false;
    }
    // The source is closed after this: from then on the store is as good as the file.
    if (const auto status = context_.files.recordSplit(); !status.ok()) {
        reportWriteFailure(status);
        return false;
    }
    if (context_.steps.noteConversions) {
        context_.steps.noteConversions(
            conversionRuns_.take(context_.store.pathOf(working::kData1)));
    }
    notes_.tell(parent_, true);
    return true;
}

/// While the commands of one block are found, those of the one before are sorted, and the next one
/// is read.
bool GroupSplitter::splitCommands(ByteSource& source) {
    std::string rest;
    std::array<CommandBlock, 3> blocks;
    auto* before = &blocks[0];
    auto* now = &blocks[1];
    auto* next = &blocks[2];
    bool good = true;
    for (bool more = now->read(source, rest); good && more;) {
        now->cut(context_.reader, [&] {
            good = sortBlock(*before, source);
            more = good && next->read(source, rest);
        });
        std::swap(before, now);
        std::swap(now, next);
    }
    return good && sortBlock(*before, source) && endOfFile(source, rest) && flushAll() &&
           closeConversions();
}

bool GroupSplitter::sortBlock(CommandBlock& block, const ByteSource& source) {
    for (const auto& piece : block.pieces()) {
        filler_ += piece.filler;
        for (const auto& cut : piece.commands) {
            line_ += cut.lines;
            if (!sortCommand(cut, line_ - 1)) {
                return false;
            }
            if (++count_ % kPollEvery == 0) {
                showProgress(block.end(), source.size());
                if (cancelRequested(parent_)) {
                    return false;
                }
            }
        }
    }
    block.clear();
    return true;
}

bool GroupSplitter::endOfFile(ByteSource& source, std::string_view rest) {
    endComments();
    if (!source.status().ok()) {
        showBox(parent_,
                formatPrintf("Unable to read '%s'\n\nReason: %s", source.status().path(),
                             source.status().reason()),
                "Unable To Open File");
        return false;
    }
    auto partial = ByteSource::fromMemory(rest);
    std::string room;
    std::size_t length = 0;
    (void)context_.reader.viewNextRaw(partial, room, &line_, &length);
    if (length > 0) {
        context_.messages.show(parent_, 157, title::kErrorReading, kWarningBox, line_);
        notes_.tell(parent_, false);
        return false;
    }
    return true;
}

bool GroupSplitter::sortCommand(const CutCommand& cut, long line) {
    auto command = cut.text;
    if (isComment(command)) {
        takeComments(banner_.add({line, std::string(command)}));
        return true;
    }
    if (banner_.isWaiting()) {
        takeComments(banner_.end());
    }
    Target* to = targetOf(command, line);
    if (to == nullptr) {
        notes_.unknownCommand(line, command);
        return true;
    }
    std::string changed;
    if (!cut.shape.isSplit) {
        notes_.unsplit(line, command);
        to = to == &conversions_ ? &unsplit_ : to;
    } else if (cut.shape.mayHoldLeadingZero && dropZeros(command, line, changed)) {
        command = changed;
    }
    if (!cut.isPrintable && command.find('\0') != std::string::npos) {
        notes_.nulBytes(line);
    }
    if (!cut.isPrintable && holdsStoredBreak(command)) {
        notes_.standIn(line, command);
    }
    if (to->isSaved) {
        last_ = to;
        if (keepComments_) {
            putComments(*to, command);
        }
    }
    if (!cut.isPrintable && holdsLineBreak(command)) {
        notes_.severalLines(line, command);
        changed.assign(command);
        toStoredForm(changed);
        command = changed;
    }
    if (to == &conversions_) {
        conversionRuns_.add(command, command.size() + kLineEnd.size());
    }
    to->lines.append(command).append(kLineEnd);
    buffered_ += command.size() + kLineEnd.size();
    if (to->lines.size() >= kTargetBuffer && !flush(*to)) {
        return false;
    }
    return buffered_ < kAllBuffers || flushAll();
}

void GroupSplitter::takeComments(const std::vector<FileComment>& comments) {
    for (const auto& comment : comments) {
        notes_.comment(comment.line, comment.text, keepComments_);
        if (keepComments_) {
            auto text = comment.text;
            toStoredForm(text);
            comments_.append(text).append("\r\n");
        }
    }
}

void GroupSplitter::putComments(Target& target, std::string_view command) {
    if (keepComments_ && &target == &conversions_) {
        if (!command.empty()) {
            conversionComments_.note(command);
        }
        if (!comments_.empty()) {
            conversionComments_.add(command, comments_);
        }
    } else {
        target.lines.append(comments_);
        buffered_ += comments_.size();
    }
    comments_.clear();
}

void GroupSplitter::endComments() {
    takeComments(banner_.end());
    if (!comments_.empty()) {
        putComments(last_ != nullptr ? *last_ : target(groupKind('G'), 0), {});
    }
}

/// Look-ups compare codes as texts, and a save writes them as they are: an index that is the same
/// number has to be the same text.
bool GroupSplitter::dropZeros(std::string_view command, long line, std::string& changed) {
    changed.assign(command);
    if (!dropLeadingZeros(changed)) {
        return false;
    }
    notes_.leadingZeros(line, command);
    context_.history.markCorrected();
    return true;
}

GroupSplitter::Target* GroupSplitter::targetOf(std::string_view command, long line) {
    if (command.size() < 2) {
        return nullptr;
    }
    const char letter = command[0];
    if (command[1] == '-' && letter == 'C') {
        return &conversions_;
    }
    // Most commands belong to the group of the one before them.
    if (current_ != nullptr && command.substr(0, currentPrefix_.size()) == currentPrefix_) {
        return current_;
    }
    if (command[1] == '\\' && (letter == 'G' || letter == 'H')) {
        current_ = &target(groupKind(letter), 0);
        currentPrefix_.assign(command, 0, 2);
        return current_;
    }
    if (command[1] != '-' || !isIndexedLetter(letter)) {
        return nullptr;
    }
    const std::int64_t index = leadingInteger(command.substr(2));
    Target& found = target(groupKind(letter), index);
    if (index < kLeastGroupIndex || index > kMostGroupIndex) {
        notes_.indexOutOfRange(line, command);
        found.isSaved = false;
        return &found;
    }
    const auto rest = afterHead(command);
    current_ = rest.empty() ? nullptr : &found;
    currentPrefix_.assign(command, 0, rest.empty() ? 0 : command.size() - rest.size());
    return &found;
}

GroupSplitter::Target& GroupSplitter::target(const GroupKind& kind, std::int64_t index) {
    const auto name = groupFile(kind.letter, index);
    const auto [place, isNew] = targets_.try_emplace(name);
    if (isNew) {
        place->second.name = name;
        place->second.title = formatPrintf(runtimeFormat(kind.readTitle), index);
    }
    return place->second;
}

bool GroupSplitter::flush(Target& target) {
    if (const auto status = write(target); !status.ok()) {
        reportWriteFailure(status);
        return false;
    }
    buffered_ -= target.lines.size();
    target.lines.clear();
    return true;
}

IoStatus GroupSplitter::write(const Target& target) {
    if (&target != &conversions_) {
        return context_.files.append(target.name, target.lines);
    }
    conversionsFile_.write(target.lines);
    return conversionsFile_.status();
}

bool GroupSplitter::closeConversions() {
    const auto status = conversionsFile_.close();
    if (!status.ok()) {
        reportWriteFailure(status);
    }
    return status.ok();
}

bool GroupSplitter::flushAll() {
    for (auto& [name, target] : targets_) {
        if (!target.lines.empty() && !flush(target)) {
            return false;
        }
        target.lines.shrink_to_fit();
    }
    return (conversions_.lines.empty() || flush(conversions_)) &&
           (unsplit_.lines.empty() || flush(unsplit_));
}

void GroupSplitter::reportWriteFailure(const IoStatus& status) {
    context_.messages.showFailure(parent_, status, 158, title::kErrorReading, kWarningBox,
                                  status.path());
}

void GroupSplitter::showProgress(std::uint64_t position, std::uint64_t size) {
    if (parent_ == nullptr || !context_.ticker.secondElapsed()) {
        return;
    }
    const auto& sectionTitle = current_ == nullptr ? conversions_.title : current_->title;
    parent_->setStatusText(formatPrintf("Reading %s - Line: %ld", sectionTitle, line_));
    if (size > 0) {
        parent_->setProgressBar(100.0 * static_cast<double>(position) / static_cast<double>(size));
    }
}

}  // namespace kavu
