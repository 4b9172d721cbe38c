// What is known of a measurement at one place of the frame. A measurement of several
// locations has one of these for each; equal ones are stored once.
#pragma once

#include "pcm/model/FixedText.h"

#include <cstdint>

namespace kavu {

struct Measurement {
    FixedText<32> name;                ///< MN; empty in a free cell
    FixedText<2> parity;               ///< MN1
    FixedText<1> parityTransferOrder;  ///< MN2
    FixedText<1> transferOrder;        ///< MN3
    FixedText<1> filterOverwrite;      ///< MFOT, on 106-09 only
    FixedText<4> locationType;         ///< LT: "MF", "SF", "MFSC", "SFSC", "MFFR", "SFFR", "WDFR"
    FixedText<64> mask;                ///< "FW" or a string of "0" and "1"
    FixedText<2> locationMode;         ///< "I" first word and interval, "E" every location
    int locationCount = 0;             ///< number of locations or fragments
    int interval = 0;
    int reconstructedLength = 0;  ///< bits, of a fragmented measurement
    FixedText<1> fragmentTransferOrder;
    int fragmentNumber = 0;  ///< from 1; 0 for unfragmented
    int wordFrameIndex = 0;  ///< from 1, into the word/frame definitions; 0 is none
    int kept = 0;            ///< from 1, into what its file holds besides; 0 is nothing
    [[nodiscard]] bool operator==(const Measurement&) const = default;
};

/// A cell of the frame: the word position, the place in the word's array (from 1), and the
/// cell of the list that begins there. It stays valid until cells of that word are freed or
/// its array is resized. A default one is no cell.
struct CellRef {
    std::uint16_t word = 0;
    std::uint16_t index = 0;
    std::uint32_t chained = 0;  ///< 0 is the array cell itself

    explicit operator bool() const { return index != 0; }
    [[nodiscard]] bool operator==(const CellRef&) const = default;
};

/// True if a location type is fragmented: MFFR, SFFR, WDFR, ignoring case.
[[nodiscard]] bool isFragmented(const FixedText<4>& locationType);

/// True for a measurement that is located by ranges of words and frames (WDFR), ignoring case.
[[nodiscard]] bool isWordFrame(const Measurement& measurement);

}  // namespace kavu
