#include "pcm/write/WrittenRange.h"

#include "pcm/PcmFormat.h"

#include <algorithm>

namespace kavu {

bool writesFragmentEnds(const PcmFormat& format) {
    return format.edition() >= 2009;
}

void takeUnwrittenEnds(const PcmFormat& format, WordFrameFragment& fragment) {
    if (writesFragmentEnds(format)) {
        return;
    }
    fragment.endWord =
        fragment.wordInterval > 0 ? format.wordsPerMinorFrame - 1 : fragment.startWord;
    fragment.endFrame = fragment.frameInterval > 0 ? format.numberOfFrames : fragment.startFrame;
}

std::optional<WordFrameFragment> writtenFragment(const PcmFormat& format,
                                                 const WordFrameFragment& fragment) {
    const int lastWord = format.wordsPerMinorFrame - 1;
    if (fragment.startWord > lastWord || fragment.startFrame > format.numberOfFrames) {
        return std::nullopt;
    }
    auto written = fragment;
    takeUnwrittenEnds(format, written);
    written.endWord = std::min(written.endWord, lastWord);
    written.endFrame = std::min(written.endFrame, format.numberOfFrames);
    return written;
}

WordFrameDefinition writtenDefinition(const PcmFormat& format,
                                      const WordFrameDefinition& definition) {
    WordFrameDefinition written;
    written.idCounterName = definition.idCounterName;
    for (const auto& location : definition.locations) {
        WordFrameLocation kept;
        kept.wordLength = location.wordLength;
        for (const auto& fragment : location.fragments) {
            if (const auto taken = writtenFragment(format, fragment)) {
                kept.fragments.push_back(*taken);
            }
        }
        if (!kept.fragments.empty() || location.fragments.empty()) {
            written.locations.push_back(std::move(kept));
        }
    }
    return written;
}

bool comesBack(const PcmFormat& format, const WordFrameFragment& fragment) {
    const int interval = fragment.wordInterval;
    for (int fwp = fragment.startWord; interval > 0 && fwp <= fragment.endWord; fwp += interval) {
        if (format.wordType(fwp) == WordType::IdCounter) {
            return false;
        }
    }
    if (writesFragmentEnds(format)) {
        return true;
    }
    const int depth = format.wordType(fragment.startWord) == WordType::Subframe
                          ? format.wordDepth(fragment.startWord)
                          : format.numberOfFrames;
    const bool words = interval == 0 || fragment.endWord + interval >= format.wordsPerMinorFrame;
    const bool frames = fragment.frameInterval == 0 ||
                        (fragment.endFrame + fragment.frameInterval > format.numberOfFrames &&
                         depth >= format.numberOfFrames);
    return words && frames;
}

}  // namespace kavu
