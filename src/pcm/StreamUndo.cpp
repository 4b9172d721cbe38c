#include "pcm/StreamUndo.h"

#include "core/FileIo.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "pcm/PcmLoad.h"

#include <algorithm>

namespace kavu {

namespace {

std::string commentPath(const PcmFormat& format) {
    return format.context().store.pathOf(kMeasurementComment);
}
std::string filterPath(const PcmFormat& format) {
    return format.context().store.path(kSmfFormat, format.dGroup);
}

/// A file that is not there counts as empty.
std::string contentsOf(const std::string& path) {
    std::string bytes;
    return fileExists(path) && readWholeFile(path, bytes).ok() ? bytes : std::string();
}

bool putContents(const std::string& path, const std::string& bytes) {
    return contentsOf(path) == bytes || replaceWorkingFile(path, bytes).ok();
}

}  // namespace

StreamUndo::StreamUndo(PcmFormat& format) : format_(format), now_(take()) {}

StreamUndo::State StreamUndo::take() const {
    State state;
    state.records = {static_cast<const PcmAttributes&>(format_),
                     format_.idCounters,
                     format_.asyncFormats,
                     format_.wordFrameDefinitions,
                     contentsOf(commentPath(format_)),
                     contentsOf(filterPath(format_))};
    for (int fwp = 0; fwp < format_.wordsPerMinorFrame; ++fwp) {
        state.words.push_back(takeWord(format_, fwp));
    }
    return state;
}

/// The attributes of the operations that are edits of the frame.
bool StreamUndo::same(const Records& a, const Records& b) {
    const auto& x = a.attributes;
    const auto& y = b.attributes;
    return a.counters == b.counters && a.asyncFormats == b.asyncFormats &&
           a.definitions == b.definitions && x.wordsPerMinorFrame == y.wordsPerMinorFrame &&
           x.numberOfFrames == y.numberOfFrames && x.commonWordLength == y.commonWordLength &&
           x.bitsPerMinorFrame == y.bitsPerMinorFrame &&
           x.implicitSubframes == y.implicitSubframes && x.syncPattern == y.syncPattern &&
           x.bitRate == y.bitRate && x.comment == y.comment &&
           a.sectionComment == b.sectionComment && a.filterList == b.filterList;
}

bool StreamUndo::commit() {
    auto next = take();
    Level level;
    level.before = {now_.records, {}, static_cast<int>(now_.words.size())};
    level.after = {next.records, {}, static_cast<int>(next.words.size())};
    const auto most = std::max(now_.words.size(), next.words.size());
    for (std::size_t i = 0; i < most; ++i) {
        const bool wasThere = i < now_.words.size();
        const bool isThere = i < next.words.size();
        if (wasThere && isThere && now_.words[i] == next.words[i]) {
            continue;
        }
        if (wasThere) {
            level.before.words.emplace(static_cast<int>(i), std::move(now_.words[i]));
        }
        if (isThere) {
            level.after.words.emplace(static_cast<int>(i), next.words[i]);
        }
    }
    const bool changed = !level.before.words.empty() || !level.after.words.empty() ||
                         !same(now_.records, next.records);
    if (changed) {
        now_ = std::move(next);
        undo_.push_back(std::move(level));
        redo_.clear();
    }
    return changed;
}

bool StreamUndo::restore(const Part& part) {
    bool done = format_.allocateWords({}, part.wordCount);
    static_cast<PcmAttributes&>(format_) = part.records.attributes;
    format_.idCounters = part.records.counters;
    format_.asyncFormats = part.records.asyncFormats;
    format_.wordFrameDefinitions = part.records.definitions;
    format_.subframesChanged();
    for (const auto& [fwp, contents] : part.words) {
        done = putWord(format_, fwp, contents) && done;
    }
    done = putContents(commentPath(format_), part.records.sectionComment) && done;
    done = putContents(filterPath(format_), part.records.filterList) && done;
    now_ = take();
    return done;
}

bool StreamUndo::undo() {
    if (undo_.empty()) {
        return false;
    }
    redo_.push_back(std::move(undo_.back()));
    undo_.pop_back();
    return restore(redo_.back().before);
}

bool StreamUndo::redo() {
    if (redo_.empty()) {
        return false;
    }
    undo_.push_back(std::move(redo_.back()));
    redo_.pop_back();
    return restore(undo_.back().after);
}

}  // namespace kavu
