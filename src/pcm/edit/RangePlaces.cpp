#include "pcm/edit/RangePlaces.h"

#include "pcm/PcmLoad.h"
#include "pcm/read/MeasurementPlacing.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/write/WrittenRange.h"

#include <algorithm>

namespace kavu {

namespace {

const std::vector<int> kEveryFrame{0};

std::vector<int> steps(int start, int interval, int end) {
    std::vector<int> result;
    result.reserve(start > end    ? 0
                   : interval < 1 ? 1
                                  : static_cast<std::size_t>((end - start) / interval) + 1);
    for (int at = start; at <= end; at += interval) {
        result.push_back(at);
        if (interval < 1) {
            break;
        }
    }
    return result;
}

/// Which a load takes for every frame, in a plain word.
bool isFirstFrameAlone(const WordFrameFragment& fragment, const FrameShape& shape) {
    return fragment.startFrame == 1 && fragment.frameInterval == 0 && fragment.endFrame == 1 &&
           !shape.implicit;
}

std::vector<int> framesIn(const FrameShape& shape, const WordFrameFragment& fragment, int fwp) {
    const bool isPlain = !shape.hasFrames(fwp);
    const bool isFirstAlone = isFirstFrameAlone(fragment, shape);
    const bool isInSome = isSubcommutated(shape.edition, shape.frames, fragment.startFrame,
                                          fragment.frameInterval, fragment.endFrame);
    if (isPlain && (!shape.makesSubframes || isFirstAlone || !isInSome)) {
        return kEveryFrame;
    }
    return steps(fragment.startFrame, fragment.frameInterval,
                 std::min(fragment.endFrame, shape.period(fwp)));
}

/// The fragments take the same steps, and have as many frames in each.
bool goTogether(const std::vector<std::vector<WordFrames>>& byFragment) {
    return std::all_of(byFragment.begin(), byFragment.end(), [&](const auto& words) {
        return std::equal(
            words.begin(), words.end(), byFragment.front().begin(), byFragment.front().end(),
            [](const auto& a, const auto& b) { return a.frames.size() == b.frames.size(); });
    });
}

/// True if a load finds the fragment in some frames of a plain word, and has no counter for the
/// subframe that it would need.
bool isWithoutCounter(const WordFrameFragment& fragment, const FrameShape& loaded) {
    if (!loaded.refusesSubframes ||
        !isSubcommutated(loaded.edition, loaded.frames, fragment.startFrame, fragment.frameInterval,
                         fragment.endFrame)) {
        return false;
    }
    const auto words = steps(fragment.startWord, fragment.wordInterval, fragment.endWord);
    const bool isPlain = std::all_of(words.begin(), words.end(), [&](int fwp) {
        return loaded.word(fwp).type == WordType::Minor;
    });
    return !(isPlain && isFirstFrameAlone(fragment, loaded)) &&
           !std::all_of(words.begin(), words.end(), [&](int fwp) { return loaded.hasFrames(fwp); });
}

/// What a load makes of a fragment; nothing if it is refused.
std::optional<WordFrameFragment> loadedFragment(PcmLoad& check, const WordFrameFragment& fragment,
                                                const FrameShape& loaded) {
    const auto written = writtenFragment(check.format, fragment);
    if (!written || !checkWordFrameFragment(check, {}, *written)) {
        return std::nullopt;
    }
    // The check has seen the subframes as they are now.
    for (const int fwp : steps(written->startWord, written->wordInterval, written->endWord)) {
        if (written->endFrame > loaded.period(fwp)) {
            return std::nullopt;
        }
    }
    return written;
}

}  // namespace

FrameShape shapeOf(const PcmFormat& format) {
    FrameShape shape;
    shape.edition = format.edition();
    shape.words = format.wordsPerMinorFrame;
    shape.frames = format.numberOfFrames;
    shape.implicit = format.implicitSubframes;
    shape.at.resize(static_cast<std::size_t>(std::max(0, shape.words)));
    for (int fwp = 0; fwp < shape.words; ++fwp) {
        const auto* const subframe = format.subframeOfWord(fwp);
        shape.at[static_cast<std::size_t>(fwp)] = {format.wordType(fwp),
                                                   subframe != nullptr && subframe->hidden,
                                                   format.cells().cellCount(fwp)};
    }
    return shape;
}

bool isCounterLoaded(const PcmFormat& format, int counter) {
    const auto at = static_cast<std::size_t>(counter);
    return counter >= 0 && counter < countIdCounters(format) && at < format.idCounters.size() &&
           !format.idCounters[at].name.empty();
}

namespace {

/// The first counter that a load finds, or -1.
int firstLoadedCounter(const PcmFormat& format) {
    for (int counter = 0; counter < countIdCounters(format); ++counter) {
        if (isCounterLoaded(format, counter)) {
            return counter;
        }
    }
    return -1;
}

}  // namespace

int loadedHiddenDepth(const PcmFormat& format) {
    const int counter = firstLoadedCounter(format);
    return format.edition() >= kHiddenSubframesEdition && counter >= 0
               ? format.idCounters[static_cast<std::size_t>(counter)].endFrame.number()
               : format.numberOfFrames;
}

FrameShape loadedShape(const PcmFormat& format, int hiddenDepth) {
    auto shape = shapeOf(format);
    shape.makesSubframes = true;
    shape.refusesSubframes = firstLoadedCounter(format) < 0;
    const bool hidesAll = shape.edition >= kHiddenSubframesEdition && !shape.refusesSubframes;
    for (int fwp = 1; fwp < shape.words; ++fwp) {
        auto& word = shape.at[static_cast<std::size_t>(fwp)];
        const bool isLost = word.type != WordType::Minor && word.type != WordType::Sync &&
                            !isCounterLoaded(format, format.word(fwp).idCounterIndex);
        if ((word.hidden && shape.refusesSubframes) || (isLost && !word.hidden)) {
            word = {WordType::Minor, false, 1};
        }
        if (word.hidden || (hidesAll && word.type == WordType::Minor)) {
            word = {WordType::Subframe, true, hiddenDepth};
        }
    }
    return shape;
}

LocationPlaces placesOf(const WordFrameLocation& location, const FrameShape& shape) {
    LocationPlaces places;
    places.fragments = location.fragments;
    std::vector<std::vector<WordFrames>> byFragment;
    for (const auto& fragment : location.fragments) {
        auto& words = byFragment.emplace_back();
        const int last = std::min(fragment.endWord, shape.words - 1);
        for (const int fwp : steps(fragment.startWord, fragment.wordInterval, last)) {
            if (shape.isDataWord(fwp)) {
                words.push_back({fwp, framesIn(shape, fragment, fwp)});
            }
        }
    }
    places.isPaired = byFragment.empty() || goTogether(byFragment);
    if (!places.isPaired) {
        places.steps = std::move(byFragment);
        return places;
    }
    const auto count = byFragment.empty() ? 0 : byFragment.front().size();
    for (std::size_t i = 0; i < count; ++i) {
        auto& step = places.steps.emplace_back();
        for (auto& words : byFragment) {
            step.push_back(std::move(words[i]));
        }
    }
    return places;
}

LocationPlaces movedPlaces(LocationPlaces places, const WordMoves& moves, const FrameShape& before,
                           const FrameShape& now) {
    const auto move = [&](WordFrames& part) {
        const auto old = static_cast<std::size_t>(part.fwp);
        const int fwp = old < moves.size() ? moves[old] : -1;
        if (!now.isDataWord(fwp)) {
            part = {};
            return;
        }
        if (!now.hasFrames(fwp)) {
            part = {fwp, kEveryFrame};
            return;
        }
        const int depth = now.word(fwp).depth;
        const int period = before.period(part.fwp);
        auto cells = std::move(part.frames);
        if (cells == kEveryFrame) {
            cells = steps(1, 1, period);
        }
        part = {fwp, {}};
        for (int first = 0; first < depth; first += period) {
            for (const int cell : cells) {
                if (first + cell <= depth) {
                    part.frames.push_back(first + cell);
                }
            }
        }
        if (part.frames.empty()) {
            part = {};
        }
    };
    for (auto& step : places.steps) {
        std::for_each(step.begin(), step.end(), move);
        if (!places.isPaired) {
            std::erase_if(step, [](const WordFrames& part) { return part.fwp < 0; });
        }
    }
    std::erase_if(places.steps, [&](const auto& step) {
        return places.isPaired &&
               std::all_of(step.begin(), step.end(), [](const auto& part) { return part.fwp < 0; });
    });
    return places;
}

std::vector<LocationPlaces> loadedPlaces(PcmFormat& format, const WordFrameDefinition& definition,
                                         const FrameShape& loaded) {
    PcmLoad check(format, nullptr);
    check.mayMakeSubframes = false;
    std::vector<LocationPlaces> locations;
    for (const auto& location : definition.locations) {
        WordFrameLocation taken;
        for (const auto& fragment : location.fragments) {
            if (const auto written = loadedFragment(check, fragment, loaded)) {
                taken.fragments.push_back(*written);
            }
        }
        if (std::any_of(taken.fragments.begin(), taken.fragments.end(),
                        [&](const auto& fragment) { return isWithoutCounter(fragment, loaded); })) {
            taken.fragments.clear();
        }
        locations.push_back(placesOf(taken, loaded));
    }
    return locations;
}

}  // namespace kavu
