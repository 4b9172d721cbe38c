#include "pcm/write/WordFrameBuild.h"

#include "core/text/Text.h"
#include "pcm/write/WordFrameConversion.h"
#include "pcm/write/WrittenRange.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <tuple>

namespace kavu {

namespace {

constexpr int kMostFragmentNumber = 9;

using Places = std::vector<HeldPlace>;

/// Builds the definition of one measurement.
class Builder {
  public:
    Builder(const PcmFormat& format, const Places& held)
        : format_(format),
          held_(held),
          measurement_(format.cells().measurement(held.front().cell)),
          fwp_(held.front().fwp) {}

    std::optional<WordFrameDefinition> build() {
        const auto& type = measurement_.locationType;
        if (equalsIgnoreCase(type, location_type::kMinorFrame)) {
            addLocation(everyFrame(fwp_, 0, fwp_), measurement_.mask);
        } else if (equalsIgnoreCase(type, location_type::kMinorFrameSupercommutated)) {
            buildMinorSupercom();
        } else if (equalsIgnoreCase(type, location_type::kMinorFrameFragments)) {
            buildMinorFragments();
        } else if (equalsIgnoreCase(type, location_type::kSubframe) ||
                   equalsIgnoreCase(type, location_type::kSubframeSupercommutated)) {
            buildSubframe();
        } else if (equalsIgnoreCase(type, location_type::kSubframeFragments)) {
            buildSubframeFragments();
        }
        return definition_.locations.empty() ? std::nullopt : std::optional(definition_);
    }

  private:
    [[nodiscard]] bool isInterval() const {
        return measurement_.locationMode.view().starts_with('I');
    }
    [[nodiscard]] const Measurement& at(const HeldPlace& place) const {
        return format_.cells().measurement(place.cell);
    }

    /// All places. A cell of a subframe that is less deep than the major frame repeats in
    /// later frames; these places count where the subframe itself is not written, as nothing
    /// else states them then.
    [[nodiscard]] Places places() const {
        if (format_.edition() < kHiddenSubframesEdition) {
            return held_;
        }
        Places all;
        for (const auto& place : held_) {
            const int depth = format_.wordDepth(place.fwp);
            const bool folds = format_.wordType(place.fwp) == WordType::Subframe && depth > 0;
            const int last = folds ? format_.numberOfFrames : place.fn;
            for (int fn = place.fn; fn <= last; fn += std::max(1, depth)) {
                all.push_back({place.cell, place.fwp, fn});
            }
        }
        std::stable_sort(all.begin(), all.end(), [](const HeldPlace& a, const HeldPlace& b) {
            return std::tie(a.fn, a.fwp) < std::tie(b.fn, b.fwp);
        });
        return all;
    }

    [[nodiscard]] WordFrameFragment everyFrame(int start, int interval, int end) const {
        WordFrameFragment fragment;
        fragment.startWord = start;
        fragment.wordInterval = interval;
        fragment.endWord = end;
        fragment.startFrame = 1;
        fragment.frameInterval = 1;
        fragment.endFrame = format_.numberOfFrames;
        fragment.fragmentPosition = 1;
        return fragment;
    }
    static WordFrameFragment singlePlace(int fwp, int fn) {
        WordFrameFragment fragment;
        fragment.startWord = fragment.endWord = fwp;
        fragment.startFrame = fragment.endFrame = fn;
        fragment.fragmentPosition = 1;
        return fragment;
    }
    static void setOrder(WordFrameFragment& fragment, const FixedText<1>& order) {
        fragment.transferOrder = order == "M" || order == "L" ? order.view().front() : 'D';
    }

    /// A location of one fragment, as long as its first word.
    void addLocation(WordFrameFragment fragment, std::string_view mask) {
        fragment.mask = mask;
        definition_.locations.push_back({format_.wordLength(fragment.startWord), {fragment}});
    }
    /// A location of several fragments, as long as their masks together.
    void addFragments(std::vector<WordFrameFragment> fragments) {
        WordFrameLocation location;
        int position = 0;
        for (auto& fragment : fragments) {
            fragment.fragmentPosition = ++position;
            location.wordLength += format_.maskBits(fragment.startWord, fragment.mask, false);
        }
        location.fragments = std::move(fragments);
        definition_.locations.push_back(std::move(location));
    }

    void buildMinorSupercom() {
        const std::int64_t end =
            fwp_ + std::int64_t{measurement_.interval} * (measurement_.locationCount - 1);
        if (isInterval() && (measurement_.locationCount < 1 || end >= format_.wordsPerMinorFrame)) {
            return;
        }
        const int interval = measurement_.locationCount == 1 ? 0 : measurement_.interval;
        const auto range = everyFrame(fwp_, interval, static_cast<int>(end));
        if (isInterval() && comesBack(format_, range)) {
            addLocation(range, measurement_.mask);
            return;
        }
        for (const auto& place : places()) {
            addLocation(everyFrame(place.fwp, 0, place.fwp), at(place).mask);
        }
    }

    void buildMinorFragments() {
        std::vector<WordFrameFragment> fragments;
        const auto add = [&](int fwp, const Measurement& part) {
            auto fragment = everyFrame(fwp, 0, fwp);
            fragment.mask = part.mask;
            setOrder(fragment, part.fragmentTransferOrder);
            fragments.push_back(fragment);
        };
        if (isInterval()) {
            std::int64_t fwp = fwp_;
            for (int i = 0; i < measurement_.locationCount && fwp < format_.wordsPerMinorFrame;
                 ++i, fwp += measurement_.interval) {
                if (i > 0 && measurement_.interval < 1) {
                    break;
                }
                add(static_cast<int>(fwp), measurement_);
            }
        } else {
            // The order is that of the fragment numbers, whatever the words.
            auto parts = places();
            std::stable_sort(parts.begin(), parts.end(),
                             [this](const HeldPlace& a, const HeldPlace& b) {
                                 return at(a).fragmentNumber < at(b).fragmentNumber;
                             });
            for (const auto& part : parts) {
                add(part.fwp, at(part));
            }
        }
        if (!fragments.empty()) {
            addFragments(std::move(fragments));
        }
    }

    void nameCounter(int fwp) {
        if (const auto* const counter = format_.idCounterOfWord(fwp)) {
            definition_.idCounterName = counter->name.str();
        }
    }

    /// One fragment for all places, if there is one with exactly these.
    [[nodiscard]] std::optional<WordFrameFragment> oneFragment(const Places& all) const {
        std::vector<int> words;
        std::vector<int> frames;
        for (const auto& place : all) {
            words.push_back(place.fwp);
            frames.push_back(place.fn);
        }
        Sequence word;
        Sequence frame;
        if (!findSequence(words, word) || !findSequence(frames, frame)) {
            return std::nullopt;
        }
        const bool sameMask = std::all_of(all.begin(), all.end(), [&](const HeldPlace& place) {
            return at(place).mask == at(all.front()).mask;
        });
        // Ranges of words and frames mean all words in all frames: the words of a
        // supercommutated subframe form a range only within one frame.
        const auto* const subframe = format_.subframeOfWord(fwp_);
        const bool supercommutated = subframe != nullptr && subframe->isSupercommutated();
        const bool oneFrame = frame.start == frame.end;
        const bool oneWord = word.start == word.end && !supercommutated;
        if (!sameMask || !(oneWord || oneFrame)) {
            return std::nullopt;
        }
        auto fragment = singlePlace(word.start, frame.start);
        fragment.wordInterval = word.interval;
        fragment.endWord = word.end;
        fragment.frameInterval = frame.interval;
        fragment.endFrame = frame.end;
        return comesBack(format_, fragment) ? std::optional(fragment) : std::nullopt;
    }

    void buildSubframe() {
        const auto all = places();
        if (all.empty()) {
            return;
        }
        nameCounter(fwp_);
        if (const auto fragment = oneFragment(all)) {
            addLocation(*fragment, at(all.front()).mask);
            return;
        }
        for (const auto& place : all) {
            addLocation(singlePlace(place.fwp, place.fn), at(place).mask);
        }
    }

    void buildSubframeFragments() {
        std::array<Places, kMostFragmentNumber + 1> byNumber;
        int most = 0;
        for (const auto& place : places()) {
            const int number = at(place).fragmentNumber;
            if (number < 1 || number > kMostFragmentNumber) {
                return;  // it would be lost silently
            }
            most = std::max(most, number);
            byNumber[static_cast<std::size_t>(number)].push_back(place);
        }
        const auto count = byNumber[1].size();
        for (int number = 1; number <= most; ++number) {
            if (byNumber[static_cast<std::size_t>(number)].size() != count) {
                return;
            }
        }
        for (std::size_t entry = 0; entry < count; ++entry) {
            std::vector<WordFrameFragment> fragments;
            for (int number = 1; number <= most; ++number) {
                const auto& place = byNumber[static_cast<std::size_t>(number)][entry];
                auto fragment = singlePlace(place.fwp, place.fn);
                fragment.mask = at(place).mask;
                setOrder(fragment, at(place).fragmentTransferOrder);
                fragments.push_back(fragment);
            }
            addFragments(std::move(fragments));
        }
        nameCounter(fwp_);
    }

    const PcmFormat& format_;
    const Places& held_;
    const Measurement& measurement_;
    const int fwp_;
    WordFrameDefinition definition_;
};

}  // namespace

bool findSequence(const std::vector<int>& list, Sequence& sequence) {
    if (list.empty()) {
        return false;
    }
    const int interval = list.size() == 1 ? 0 : list[1] - list[0];
    for (std::size_t i = 1; i < list.size(); ++i) {
        if (list[i] - list[i - 1] != interval) {
            return false;
        }
    }
    sequence = {list.front(), list.back(), interval};
    return true;
}

std::optional<WordFrameDefinition> buildWordFrame(const PcmFormat& format,
                                                  const std::vector<HeldPlace>& held) {
    return held.empty() ? std::nullopt : Builder(format, held).build();
}

}  // namespace kavu
