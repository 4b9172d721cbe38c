// ID counters, and the subframes that follow them. Numbers are kept as the text of the
// file.
#pragma once

#include "pcm/model/FixedText.h"
#include "vocabulary/StreamLimits.h"
#include "vocabulary/SubframeCodes.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace kavu {

/// From this edition on subframes are hidden: they are made for measurements, and not
/// written.
inline constexpr int kHiddenSubframesEdition = 2011;

inline constexpr int kMostSupercomLocations = 99;
inline constexpr int kMostSubframeInterval = 9999;

/// An entry without a name is a hole.
struct Subframe {
    FixedText<32> name;            ///< SF1
    bool hidden = false;           ///< made for word/frame measurements; never listed or written
    FixedText<3> supercommutated;  ///< SF2: "NO", or the number of locations
    FixedText<2> locationMode;     ///< SF3: "FI", "EL", "NA"
    FixedText<4> interval;         ///< SF5
    FixedText<3> depth;            ///< SF6: frames in one cycle
    int fileCounter = 0;           ///< the number of its counter in the file
    int fileRow = 0;               ///< its number there; 0 for a new one

    [[nodiscard]] bool isSupercommutated() const {
        return !(supercommutated == kNotSupercommutated);
    }
    [[nodiscard]] bool operator==(const Subframe&) const = default;
};

/// An entry without a name is a hole. The word is the one whose type is
/// `WordType::IdCounter` and whose `idCounterIndex` is this entry.
struct IdCounter {
    FixedText<32> name;           ///< ISF1
    FixedText<2> type;            ///< ISF2: "ID" or "OT"
    FixedText<2> wordLength;      ///< IDC2
    FixedText<2> msbStartBit;     ///< IDC3, at least 1
    FixedText<2> counterLength;   ///< IDC4
    FixedText<1> transferOrder;   ///< IDC5: "M", "L", "D"
    FixedText<3> initialValue;    ///< IDC6
    FixedText<3> startFrame;      ///< IDC7
    FixedText<3> endValue;        ///< IDC8
    FixedText<3> endFrame;        ///< IDC9
    FixedText<3> countDirection;  ///< IDC10: "INC" or "DEC"
    std::vector<Subframe> subframes;
    int fileRow = 0;  ///< its number in the file; 0 for a new one

    /// End frame minus start frame plus 1.
    [[nodiscard]] int depth() const { return endFrame.number() - startFrame.number() + 1; }
    [[nodiscard]] bool operator==(const IdCounter&) const = default;
};

/// Where a subframe is held; both indices count from 0.
struct SubframeRef {
    int counter = -1;
    int index = -1;
    [[nodiscard]] bool operator==(const SubframeRef&) const = default;
};

}  // namespace kavu
