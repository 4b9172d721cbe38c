#include "pcm/undo/StreamUndo.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/talk/FileReports.h"
#include "core/text/Printf.h"
#include "groups/MeasurementNames.h"
#include "pcm/PcmLoad.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace kavu {

namespace {

bool isConversionFile(std::string_view name) {
    return describeDocumentFile(name).letter == 'C';
}

/// Replaces the attributes that are only marks of edits, or state where the stream is
/// stored.
PcmAttributes withMarksOf(PcmAttributes attributes, const PcmAttributes& marks) {
    attributes.changed = marks.changed;
    attributes.formatEdited = marks.formatEdited;
    attributes.pGroup = marks.pGroup;
    attributes.dGroup = marks.dGroup;
    return attributes;
}

std::size_t sizeOf(const WordFrameDefinition& definition) {
    std::size_t bytes = sizeof(definition) + definition.idCounterName.size();
    for (const auto& location : definition.locations) {
        bytes += sizeof(location) + location.fragments.size() * sizeof(WordFrameFragment);
    }
    return bytes;
}

}  // namespace

std::size_t StreamUndo::Level::bytes() const {
    std::size_t bytes = sizeof(*this) + words.bytes() + origins.capacity() * sizeof(int) +
                        files.bytes() + attributes.comment.size() +
                        attributes.nonStandardCode.size();
    if (counters) {
        for (const auto& counter : *counters) {
            bytes += sizeof(counter) + counter.subframes.size() * sizeof(Subframe);
        }
    }
    if (asyncFormats) {
        for (const auto& record : *asyncFormats) {
            bytes += sizeof(record) + record.locations.size() * sizeof(AsyncLocation);
        }
    }
    for (const auto& [entry, definition] : definitions) {
        bytes += sizeOf(definition);
    }
    for (const auto& name : forgotten) {
        bytes += sizeof(name) + name.size();
    }
    return bytes;
}

StreamUndo::StreamUndo(PcmFormat& format, const Beside& beside, std::size_t mostBytes)
    : format_(format),
      beside_(beside),
      mostBytes_(mostBytes),
      journal_(format.context().files, format.context().history.folderFor(working::kUndoLevels),
               [this](std::string_view name) { return isFileOfEdits(name); }) {
    format_.context().history.addJournal(journal_);
    if (beside_.names != nullptr) {
        forgottenCount_ = beside_.names->forgottenCount();
    }
    base_ = {format_, format_.saveCount, format_.idCounters, format_.asyncFormats,
             format_.wordFrameDefinitions};
    settleWords();
    outer_ = format_.cells().watch(this);
}

StreamUndo::~StreamUndo() {
    format_.cells().watch(outer_);
    format_.context().history.removeJournal(journal_);
}

void StreamUndo::beforeChange(int fwp) {
    if (outer_ != nullptr) {
        outer_->beforeChange(fwp);
    }
    // A word added since the last level is removed again with the count of words.
    const auto at = static_cast<std::size_t>(fwp);
    if (exchanging_ || fwp < 0 || at >= origins_.size() || origins_[at] < 0) {
        return;
    }
    const int position = origins_[at];
    if (!isKept_[static_cast<std::size_t>(position)]) {
        isKept_[static_cast<std::size_t>(position)] = true;
        touched_.keep(format_, fwp, position);
    }
}

void StreamUndo::beforeMove(const std::vector<int>& sources) {
    if (outer_ != nullptr) {
        outer_->beforeMove(sources);
    }
    if (exchanging_) {
        return;
    }
    origins_.resize(std::max(origins_.size(), sources.size()), -1);
    const auto before = origins_;
    for (std::size_t fwp = 0; fwp < sources.size(); ++fwp) {
        origins_[fwp] = before[static_cast<std::size_t>(sources[fwp])];
    }
}

void StreamUndo::settleWords() {
    const auto count = static_cast<std::size_t>(std::max(0, format_.wordsPerMinorFrame));
    isKept_.assign(count, false);
    origins_.resize(count);
    std::iota(origins_.begin(), origins_.end(), 0);
}

bool StreamUndo::isFileOfEdits(std::string_view name) const {
    if (isConversionFile(name)) {
        return beside_.conversions != nullptr;
    }
    return name == kMeasurementComment || name == kFormatSwitchFile || name == kAltTagFile ||
           name == formatPrintf(kSmfFormat, format_.dGroup) ||
           name == formatPrintf(kTagFormat, format_.dGroup);
}

// --- making a level -----------------------------------------------------------------------------

std::vector<int> StreamUndo::positionsNow() const {
    std::vector<int> positions(isKept_.size(), -1);
    const auto count =
        std::min(origins_.size(), static_cast<std::size_t>(format_.wordsPerMinorFrame));
    for (std::size_t fwp = 0; fwp < count; ++fwp) {
        if (origins_[fwp] >= 0) {
            positions[static_cast<std::size_t>(origins_[fwp])] = static_cast<int>(fwp);
        }
    }
    return positions;
}

/// Words that are alike may change places without a difference.
bool StreamUndo::haveWordsMoved(const std::vector<int>& positions) const {
    const int count = format_.wordsPerMinorFrame;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const int fwp = static_cast<int>(i);
        if (fwp >= count || positions[i] == fwp) {
            continue;
        }
        const bool isSame = touched_.holds(fwp)
                                ? touched_.isSame(format_, fwp, fwp)
                                : positions[i] >= 0 && isSameWord(format_, positions[i], fwp);
        if (!isSame) {
            return true;
        }
    }
    return false;
}

bool StreamUndo::takeWords(Level& level) {
    origins_.resize(static_cast<std::size_t>(format_.wordsPerMinorFrame), -1);
    const auto positions = positionsNow();
    const bool moved = haveWordsMoved(positions);
    for (const int position : touched_.words()) {
        const int fwp = moved ? positions[static_cast<std::size_t>(position)] : position;
        if (fwp >= 0 && fwp < format_.wordsPerMinorFrame &&
            touched_.isSame(format_, fwp, position)) {
            touched_.drop(position);
        }
    }
    level.words = std::exchange(touched_, {});
    level.words.close();
    if (moved) {
        level.origins = origins_;
    }
    settleWords();
    return moved || !level.words.empty();
}

bool StreamUndo::takeDefinitions(Level& level) {
    auto& old = base_.definitions;
    const auto& now = format_.wordFrameDefinitions;
    level.definitionCount = old.size();
    bool differs = old.size() != now.size();
    for (std::size_t i = 0; i < old.size(); ++i) {
        if (i >= now.size() || !(old[i] == now[i])) {
            level.definitions.emplace(i, std::move(old[i]));
            differs = true;
            if (i < now.size()) {
                old[i] = now[i];
            }
        }
    }
    const auto kept = std::min(old.size(), now.size());
    old.resize(kept);
    old.insert(old.end(), now.begin() + static_cast<std::ptrdiff_t>(kept), now.end());
    return differs;
}

bool StreamUndo::takeDifference(Level& level) {
    level.attributes = base_.attributes;
    level.saveCount = base_.saveCount;
    bool differs = takeWords(level);
    differs = takeDefinitions(level) || differs;
    if (!(base_.counters == format_.idCounters)) {
        level.counters = std::exchange(base_.counters, format_.idCounters);
    }
    if (!(base_.asyncFormats == format_.asyncFormats)) {
        level.asyncFormats = std::exchange(base_.asyncFormats, format_.asyncFormats);
    }
    if (beside_.names != nullptr) {
        level.forgotten = beside_.names->forgotten(forgottenCount_);
        forgottenCount_ = beside_.names->forgottenCount();
    }
    differs = differs || level.counters || level.asyncFormats || !level.forgotten.empty() ||
              !(base_.attributes == withMarksOf(format_, base_.attributes));
    if (differs) {
        base_.attributes = format_;
        base_.saveCount = format_.saveCount;
    }
    return differs;
}

bool StreamUndo::commit(bool accepted, std::string_view title) {
    Level level;
    level.title = title;
    bool differs = takeDifference(level);
    // A file that cannot be read is not put back; the files themselves are as they are.
    IoStatus status;
    level.files = journal_.take(status);
    const auto names = level.files.names();
    differs = differs || std::any_of(names.begin(), names.end(), [accepted](const auto& name) {
                  return accepted || !isConversionFile(name);
              });
    if (differs) {
        clear(redo_);
        add(undo_, std::move(level));
    }
    return differs;
}

void StreamUndo::add(Levels& levels, Level level) {
    bytes_ += level.bytes();
    levels.push_back(std::move(level));
    // Those farthest from the stream as it is now are dropped first, and never the new one.
    const auto dropFrom = [&](Levels& some) {
        if (some.size() <= (&some == &levels ? 1U : 0U)) {
            return false;
        }
        bytes_ -= some.front().bytes();
        some.pop_front();
        return true;
    };
    while (bytes_ > mostBytes_ && (dropFrom(undo_) || dropFrom(redo_))) {
    }
}

void StreamUndo::clear(Levels& levels) {
    for (const auto& level : levels) {
        bytes_ -= level.bytes();
    }
    levels.clear();
}

// --- going back and forth -----------------------------------------------------------------------

bool StreamUndo::exchangeWords(Level& level) {
    const int now = format_.wordsPerMinorFrame;
    const int wanted = level.attributes.wordsPerMinorFrame;
    const auto originOf = [&](int fwp) {
        return level.origins.empty() ? (fwp < wanted ? fwp : -1)
                                     : level.origins[static_cast<std::size_t>(fwp)];
    };
    WordArchive held;
    for (int fwp = 0; fwp < now; ++fwp) {
        if (const int origin = originOf(fwp); origin < 0 || level.words.holds(origin)) {
            held.keep(format_, fwp, fwp);
        }
    }
    held.close();
    bool done = format_.allocateWords({}, std::max(now, wanted));
    moveBack(level);
    done = format_.allocateWords({}, wanted) && done;
    for (const int position : level.words.words()) {
        done = level.words.put(format_, position) && done;
    }
    level.words = std::move(held);
    return done;
}

/// Puts each word where it came from, new ones last. The level then says where they were.
void StreamUndo::moveBack(Level& level) {
    if (level.origins.empty()) {
        return;
    }
    const auto wanted = static_cast<std::size_t>(level.attributes.wordsPerMinorFrame);
    std::vector<int> positions(wanted, -1);
    std::vector<int> others;
    for (int fwp = 0; fwp < format_.wordsPerMinorFrame; ++fwp) {
        const auto at = static_cast<std::size_t>(fwp);
        const int origin = at < level.origins.size() ? level.origins[at] : -1;
        if (origin >= 0) {
            positions[static_cast<std::size_t>(origin)] = fwp;
        } else {
            others.push_back(fwp);
        }
    }
    auto sources = positions;
    auto other = others.begin();
    for (auto& source : sources) {
        source = source < 0 ? *other++ : source;
    }
    sources.insert(sources.end(), other, others.end());
    format_.permuteWords(sources);
    level.origins = std::move(positions);
}

void StreamUndo::exchangeDefinitions(Level& level) {
    auto& now = format_.wordFrameDefinitions;
    std::map<std::size_t, WordFrameDefinition> held;
    const auto count = now.size();
    for (std::size_t i = level.definitionCount; i < count; ++i) {
        held.emplace(i, now[i]);
    }
    now.resize(level.definitionCount);
    for (auto& [i, definition] : level.definitions) {
        if (i < count) {
            held.emplace(i, now[i]);
        }
        now[i] = std::move(definition);
    }
    level.definitions = std::move(held);
    level.definitionCount = count;
}

bool StreamUndo::exchangeFiles(Level& level, UserInterface* parent) {
    if (level.files.empty()) {
        return true;
    }
    IoStatus status;
    std::vector<DocumentFile> changed;
    for (const auto& name : level.files.names()) {
        changed.push_back(describeDocumentFile(name));
    }
    journal_.exchange(level.files, status);
    if (beside_.conversions != nullptr) {
        beside_.conversions->follow(changed);
    }
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

void StreamUndo::exchangeNames(Level& level, bool isUndo) {
    if (beside_.names == nullptr || level.forgotten.empty()) {
        return;
    }
    if (isUndo) {
        beside_.names->recall(forgottenCount_ - level.forgotten.size());
    } else {
        for (const auto& name : level.forgotten) {
            beside_.names->forget(name);
        }
    }
    forgottenCount_ = beside_.names->forgottenCount();
}

bool StreamUndo::exchange(Level& level, UserInterface* parent) {
    const PcmAttributes held = format_;
    const int saved = std::exchange(level.saveCount, format_.saveCount);
    exchanging_ = true;
    bool done = exchangeWords(level);
    auto wanted = level.attributes;
    // Where the stream is stored is not undone; one that was saved meanwhile differs from its
    // files.
    wanted.pGroup = format_.pGroup;
    wanted.dGroup = format_.dGroup;
    wanted.changed = wanted.changed || saved != format_.saveCount;
    static_cast<PcmAttributes&>(format_) = wanted;
    level.attributes = held;
    if (level.counters) {
        std::swap(*level.counters, format_.idCounters);
    }
    if (level.asyncFormats) {
        std::swap(*level.asyncFormats, format_.asyncFormats);
    }
    exchangeDefinitions(level);
    format_.subframesChanged();
    done = exchangeFiles(level, parent) && done;
    exchanging_ = false;
    settleWords();
    Level ignored;
    (void)takeDifference(ignored);
    base_.attributes = format_;
    base_.saveCount = format_.saveCount;
    return done;
}

bool StreamUndo::go(Levels& from, Levels& to, UserInterface* parent) {
    if (from.empty()) {
        return false;
    }
    auto level = std::move(from.back());
    from.pop_back();
    bytes_ -= level.bytes();
    const bool isUndo = &from == &undo_;
    exchangeNames(level, isUndo);
    const bool done = exchange(level, parent);
    add(to, std::move(level));
    return done;
}

bool StreamUndo::undo(UserInterface* parent) {
    commit();
    return go(undo_, redo_, parent);
}

bool StreamUndo::redo(UserInterface* parent) {
    commit();
    return go(redo_, undo_, parent);
}

}  // namespace kavu
