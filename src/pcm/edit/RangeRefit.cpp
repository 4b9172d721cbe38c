#include "pcm/edit/RangeRefit.h"

#include "pcm/edit/SentValues.h"
#include "pcm/write/WrittenRange.h"

#include <algorithm>
#include <map>

namespace kavu {

namespace {

/// Values with a constant step; one value has no step.
struct Range {
    int start = 0;
    int interval = 0;
    int end = 0;
    [[nodiscard]] auto operator<=>(const Range&) const = default;
};

/// A step of a location in a range of frames: the word of each fragment, by its number.
struct Piece {
    std::vector<std::size_t> fragments;
    std::vector<Range> frames;
    std::vector<int> words;
};

/// Takes entries that go on by one step each, from `first` on; `at(i)` gives the values of an
/// entry, and every value has a step of its own. Returns the end.
template <typename At>
std::size_t endOfRun(std::size_t first, std::size_t count, const At& at) {
    if (first + 1 >= count) {
        return count;
    }
    const auto stepTo = [&](std::size_t i) {
        auto step = at(i);
        const auto before = at(i - 1);
        for (std::size_t k = 0; k < step.size(); ++k) {
            step[k] -= before[k];
        }
        return step;
    };
    const auto step = stepTo(first + 1);
    if (std::any_of(step.begin(), step.end(), [](int value) { return value < 1; })) {
        return first + 1;
    }
    std::size_t end = first + 2;
    while (end < count && stepTo(end) == step) {
        ++end;
    }
    return end;
}

class Refit {
  public:
    Refit(const PcmFormat& format, const FrameShape& loaded) : format_(format), loaded_(loaded) {}

    void add(const LocationPlaces& places) {
        places_ = &places;
        const auto count = locations_.size();
        if (!places.isPaired || !addPaired()) {
            locations_.resize(count);
            addApart(places);
        }
    }
    /// Every place by itself.
    bool single = false;
    /// Fragments of a location had to be divided.
    bool isApart = false;

    [[nodiscard]] WordFrameDefinition definition() {
        // Frame 1 alone is every frame to a reader while the word is a plain one: other frames of
        // the word come first, and make it a subframe.
        std::stable_partition(locations_.begin(), locations_.end(), [](const auto& location) {
            return std::none_of(location.fragments.begin(), location.fragments.end(),
                                [](const WordFrameFragment& fragment) {
                                    return fragment.startFrame == 1 && fragment.frameInterval == 0;
                                });
        });
        WordFrameDefinition result;
        result.locations = std::move(locations_);
        return result;
    }

  private:
    /// Every frame, as it is written for a word.
    [[nodiscard]] Range everyFrame(int fwp) const {
        return {1, 1, loaded_.hasFrames(fwp) ? loaded_.word(fwp).depth : loaded_.frames};
    }

    /// The ranges of frames of one step: as many as all fragments need.
    bool addPieces(const std::vector<WordFrames>& step) {
        Piece piece;
        std::vector<const WordFrames*> parts;
        for (std::size_t i = 0; i < step.size(); ++i) {
            if (step[i].fwp >= 0) {
                piece.fragments.push_back(i);
                piece.words.push_back(step[i].fwp);
                parts.push_back(&step[i]);
            }
        }
        if (parts.empty()) {
            return true;  // a step of which nothing is left
        }
        const auto isEvery = [](const WordFrames* part) { return part->frames.front() == 0; };
        if (std::all_of(parts.begin(), parts.end(), isEvery)) {
            for (const auto* part : parts) {
                piece.frames.push_back(everyFrame(part->fwp));
            }
            pieces_.push_back(piece);
            return true;
        }
        const auto count = parts.front()->frames.size();
        const bool fit = std::none_of(parts.begin(), parts.end(), [&](const WordFrames* part) {
            return isEvery(part) || part->frames.size() != count;
        });
        const auto at = [&](std::size_t t) {
            std::vector<int> frames;
            for (const auto* part : parts) {
                frames.push_back(part->frames[t]);
            }
            return frames;
        };
        for (std::size_t t = 0; fit && t < count;) {
            const auto end = single ? t + 1 : endOfRun(t, count, at);
            piece.frames.clear();
            const auto first = at(t);
            const auto last = at(end - 1);
            for (std::size_t k = 0; k < parts.size(); ++k) {
                const int interval = end - t > 1 ? at(t + 1)[k] - first[k] : 0;
                piece.frames.push_back({first[k], interval, last[k]});
            }
            pieces_.push_back(piece);
            t = end;
        }
        return fit;
    }

    bool addPaired() {
        pieces_.clear();
        for (const auto& step : places_->steps) {
            if (!addPieces(step)) {
                return false;
            }
        }
        using Key = std::pair<std::vector<std::size_t>, std::vector<Range>>;
        std::map<Key, std::size_t> groupOf;
        std::vector<std::vector<const Piece*>> groups;  // in the order in which they are met
        for (const auto& piece : pieces_) {
            const auto [it, isNew] =
                groupOf.try_emplace({piece.fragments, piece.frames}, groups.size());
            if (isNew) {
                groups.emplace_back();
            }
            groups[it->second].push_back(&piece);
        }
        for (auto& group : groups) {
            std::stable_sort(group.begin(), group.end(),
                             [](const Piece* a, const Piece* b) { return a->words < b->words; });
            addGroup(group);
        }
        return true;
    }

    /// Pieces that differ in their words only.
    void addGroup(const std::vector<const Piece*>& group) {
        const auto isAlone = [&](const Piece& piece) {
            return single || std::any_of(piece.words.begin(), piece.words.end(), [&](int fwp) {
                       return format_.wordType(fwp) == WordType::IdCounter;
                   });
        };
        for (std::size_t first = 0; first < group.size();) {
            std::size_t limit = first + 1;
            while (!isAlone(*group[first]) && limit < group.size() && !isAlone(*group[limit])) {
                ++limit;
            }
            const auto end = endOfRun(first, limit, [&](std::size_t i) { return group[i]->words; });
            addRun(std::vector(group.begin() + static_cast<std::ptrdiff_t>(first),
                               group.begin() + static_cast<std::ptrdiff_t>(end)));
            first = end;
        }
    }

    /// One location, if a reader takes its ranges as they are; else one for each word, and if need
    /// be for each frame.
    void addRun(const std::vector<const Piece*>& run) {
        const auto location = locationOf(run);
        const bool taken = std::all_of(
            location.fragments.begin(), location.fragments.end(),
            [&](const WordFrameFragment& fragment) { return comesBack(format_, fragment); });
        if (taken) {
            locations_.push_back(location);
        } else if (run.size() > 1) {
            for (const auto* piece : run) {
                addRun({piece});
            }
        } else {
            addFrames(*run.front());
        }
    }

    void addFrames(const Piece& piece) {
        auto part = piece;
        const auto& first = piece.frames.front();
        const int count = first.interval < 1 ? 1 : (first.end - first.start) / first.interval + 1;
        for (int t = 0; t < count; ++t) {
            for (std::size_t k = 0; k < part.frames.size(); ++k) {
                const int frame = piece.frames[k].start + t * piece.frames[k].interval;
                part.frames[k] = {frame, 0, frame};
            }
            locations_.push_back(locationOf({&part}));
        }
    }

    [[nodiscard]] WordFrameLocation locationOf(const std::vector<const Piece*>& run) const {
        const auto& first = *run.front();
        WordFrameLocation location;
        int bits = 0;
        for (std::size_t k = 0; k < first.fragments.size(); ++k) {
            auto fragment = places_->fragments[first.fragments[k]];
            fragment.startWord = first.words[k];
            fragment.endWord = run.back()->words[k];
            fragment.wordInterval = run.size() > 1 ? run[1]->words[k] - first.words[k] : 0;
            fragment.startFrame = first.frames[k].start;
            fragment.frameInterval = first.frames[k].interval;
            fragment.endFrame = first.frames[k].end;
            fragment.fragmentPosition = static_cast<int>(k) + 1;
            bits += format_.maskBits(fragment.startWord, fragment.mask.view(), false);
            location.fragments.push_back(fragment);
        }
        location.wordLength =
            first.fragments.size() > 1 ? bits : format_.wordLength(first.words.front());
        return location;
    }

    /// Fragments that do not go along with each other: the first range of each stays together, and
    /// further ones are locations of their own.
    void addApart(const LocationPlaces& places) {
        WordFrameLocation together;
        std::vector<WordFrameLocation> others;
        for (std::size_t f = 0; f < places.fragments.size(); ++f) {
            LocationPlaces one;
            one.fragments = {places.fragments[f]};
            for (const auto& part : partsOf(places, f)) {
                one.steps.push_back({part});
            }
            Refit alone(format_, loaded_);
            alone.single = single;
            alone.add(one);
            auto made = alone.definition().locations;
            if (made.empty()) {
                continue;
            }
            auto fragment = made.front().fragments.front();
            fragment.fragmentPosition = together.fragmentCount() + 1;
            together.wordLength +=
                format_.maskBits(fragment.startWord, fragment.mask.view(), false);
            together.fragments.push_back(fragment);
            others.insert(others.end(), made.begin() + 1, made.end());
        }
        if (together.fragmentCount() == 1) {
            together.wordLength = format_.wordLength(together.fragments.front().startWord);
        }
        isApart = isApart || !others.empty();
        if (!together.fragments.empty()) {
            locations_.push_back(std::move(together));
        }
        locations_.insert(locations_.end(), others.begin(), others.end());
    }

    /// The words of a fragment.
    static std::vector<WordFrames> partsOf(const LocationPlaces& places, std::size_t fragment) {
        std::vector<WordFrames> parts;
        if (!places.isPaired) {
            parts = places.steps[fragment];
        } else {
            for (const auto& step : places.steps) {
                parts.push_back(step[fragment]);
            }
        }
        std::erase_if(parts, [](const WordFrames& part) { return part.fwp < 0; });
        return parts;
    }

    const PcmFormat& format_;
    const FrameShape& loaded_;
    const LocationPlaces* places_ = nullptr;
    std::vector<Piece> pieces_;
    std::vector<WordFrameLocation> locations_;
};

}  // namespace

std::optional<WordFrameDefinition> refitRanges(PcmFormat& format,
                                               const std::vector<LocationPlaces>& places,
                                               const FrameShape& shape, const FrameShape& loaded) {
    MaskNumbers masks;
    const SentValues wanted(places, shape, masks);
    for (const bool single : {false, true}) {
        Refit refit(format, loaded);
        refit.single = single;
        for (const auto& each : places) {
            refit.add(each);
        }
        auto definition = refit.definition();
        const SentValues made(loadedPlaces(format, definition, loaded), loaded, masks);
        if (made == wanted || (refit.isApart && made.parts(loaded.frames, true) ==
                                                    wanted.parts(loaded.frames, true))) {
            return definition;
        }
    }
    return std::nullopt;
}

}  // namespace kavu
