// The locations of a measurement as ranges of words and frames.
#pragma once

#include "pcm/model/FixedText.h"

#include <string>
#include <vector>

namespace kavu {

struct WordFrameFragment {
    int startWord = 0;         ///< WP
    int wordInterval = 0;      ///< WI; 0 for a single word
    int endWord = 0;           ///< EWP
    int startFrame = 0;        ///< FP
    int frameInterval = 0;     ///< FI; 0 for a single frame
    int endFrame = 0;          ///< EFP
    FixedText<64> mask;        ///< WFM
    char transferOrder = 'D';  ///< WFT: 'M', 'L', or 'D' for default
    int fragmentPosition = 0;  ///< WFP
    [[nodiscard]] bool operator==(const WordFrameFragment&) const = default;
};

struct WordFrameLocation {
    int wordLength = 0;  ///< MWL, bits
    std::vector<WordFrameFragment> fragments;

    [[nodiscard]] int fragmentCount() const { return static_cast<int>(fragments.size()); }
    [[nodiscard]] bool operator==(const WordFrameLocation&) const = default;
};

struct WordFrameDefinition {
    std::string idCounterName;  ///< IDCN
    std::vector<WordFrameLocation> locations;

    [[nodiscard]] int locationCount() const { return static_cast<int>(locations.size()); }
    /// The largest number of fragments of a location.
    [[nodiscard]] int mostFragments() const;
    [[nodiscard]] bool operator==(const WordFrameDefinition&) const = default;
};

}  // namespace kavu
