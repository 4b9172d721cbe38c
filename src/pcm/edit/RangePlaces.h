// The places of word/frame locations: as a definition gives them in a frame of some shape, as they
// have moved with their words, and as the next load finds them.
#pragma once

#include "pcm/PcmFormat.h"

#include <compare>
#include <string>
#include <vector>

namespace kavu {

/// What locations refer to, and an edit of the frame changes.
struct FrameShape {
    struct Word {
        WordType type = WordType::Minor;
        bool hidden = false;  ///< of a hidden subframe
        int depth = 1;        ///< cells
    };
    int edition = 0;
    int words = 0;
    int frames = 0;
    /// A plain word becomes a hidden subframe if a fragment is in some frames only, as in a load;
    /// otherwise it has what it has in every frame. With `implicit` frame 1 alone is one of some.
    bool makesSubframes = false;
    /// There is no ID counter that the hidden subframes could follow: what is in some frames only
    /// is refused.
    bool refusesSubframes = false;
    bool implicit = false;
    std::vector<Word> at;  ///< by position

    [[nodiscard]] bool isDataWord(int fwp) const { return fwp >= 1 && fwp < words; }
    [[nodiscard]] const Word& word(int fwp) const { return at[static_cast<std::size_t>(fwp)]; }
    /// The cells of the word are frames; otherwise its one cell is in every frame.
    [[nodiscard]] bool hasFrames(int fwp) const { return word(fwp).type == WordType::Subframe; }
    /// After so many frames the cells of a word come again.
    [[nodiscard]] int period(int fwp) const {
        return hasFrames(fwp) ? std::max(1, word(fwp).depth) : std::max(1, frames);
    }
};
[[nodiscard]] FrameShape shapeOf(const PcmFormat& format);
/// True if a load finds the counter. It takes as many as have a name, by their numbers, so that
/// those after the gap of a deleted one are lost.
[[nodiscard]] bool isCounterLoaded(const PcmFormat& format, int counter);
/// The depth that a load gives to hidden subframes: that of the first ID counter from 106-11 on,
/// of the major frame before.
[[nodiscard]] int loadedHiddenDepth(const PcmFormat& format);
/// The shape that a load makes of what is written, with hidden subframes of that depth. From 106-11
/// on every plain word gets one, if there is an ID counter.
[[nodiscard]] FrameShape loadedShape(const PcmFormat& format, int hiddenDepth);

/// The new position of each word, by the old one; -1 for a word that is gone.
using WordMoves = std::vector<int>;

/// The frames of a word; one entry of 0 is every minor frame. No word is -1.
struct WordFrames {
    int fwp = -1;
    std::vector<int> frames;
    [[nodiscard]] auto operator<=>(const WordFrames&) const = default;
};
/// A location by its steps: each has the word of every fragment, in their order. Fragments that do
/// not go along with each other, step by step, have one step each instead.
struct LocationPlaces {
    bool isPaired = true;
    std::vector<std::vector<WordFrames>> steps;
    std::vector<WordFrameFragment> fragments;  ///< for mask and order
};

/// The places of a location, as cells of the words. Ends are those that are written; before 106-09
/// they are the last word and frame.
[[nodiscard]] LocationPlaces placesOf(const WordFrameLocation& location, const FrameShape& shape);
/// The same after an edit: words have moved, cells beyond the depth are gone, and a word that is
/// deeper now repeats its cells.
[[nodiscard]] LocationPlaces movedPlaces(LocationPlaces places, const WordMoves& moves,
                                         const FrameShape& before, const FrameShape& now);
/// The locations that a load makes of a definition, in the shape that it makes; fragments that it
/// refuses are left out.
[[nodiscard]] std::vector<LocationPlaces> loadedPlaces(PcmFormat& format,
                                                       const WordFrameDefinition& definition,
                                                       const FrameShape& loaded);

}  // namespace kavu
