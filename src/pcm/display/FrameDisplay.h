// What the display of a stream shows at each of its places: contents, text, colours and marks.
// Nothing is kept: everything is read from the stream on demand, so it is always up to date.
//
// Words count from 0, the sync word; frames from 1.
#pragma once

#include "pcm/PcmFormat.h"
#include "pcm/display/FrameColours.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// A cell of the display. A default one is none.
struct FramePlace {
    int word = -1;
    int frame = -1;
    explicit operator bool() const { return word >= 0 && frame >= 1; }
    [[nodiscard]] bool operator==(const FramePlace&) const = default;
};

/// The drawing areas of the display.
enum class FrameArea { Grid, Labels, WordLegend, FrameLegend };

struct FrameText {
    std::string text;
    FrameInk ink = FrameInk::Plain;
    [[nodiscard]] bool operator==(const FrameText&) const = default;
};

/// What identifies a cell without its colour.
struct FrameMarks {
    bool several = false;  ///< more than one measurement
    bool overlap = false;  ///< two of them take the same bits
    bool async = false;
    [[nodiscard]] bool operator==(const FrameMarks&) const = default;
};

class FrameDisplay {
  public:
    /// The format must outlive it.
    explicit FrameDisplay(const PcmFormat& format) : format_(format) {}

    bool showAllCells = false;  ///< repetitions below the depth of a word are shown, too
    bool highlightEu = false;   ///< names with a conversion record have a colour of their own
    FrameColours colours = FrameColours::Classic;
    std::string marked;  ///< the measurement whose places are marked; empty for none
    /// True if a measurement has a conversion record; if not installed none has.
    std::function<bool(std::string_view name)> hasConversion;
    /// What the tip of a cell says of the conversion; if not installed nothing.
    std::function<std::string(std::string_view name)> conversionText;

    [[nodiscard]] const PcmFormat& format() const { return format_; }
    [[nodiscard]] int words() const { return format_.wordsPerMinorFrame; }
    [[nodiscard]] int frames() const { return format_.numberOfFrames; }

    /// Cells that a word has of its own: the depth of its subframe, else one for each frame.
    [[nodiscard]] int depth(int word) const;
    /// Not below the depth of its word; only such a place can be selected.
    [[nodiscard]] bool isWithin(FramePlace at) const;
    [[nodiscard]] bool isShown(FramePlace at) const;
    [[nodiscard]] PlaceKind kindAt(FramePlace at) const;
    /// True for a cell that has a text: a measurement, an async format, a counter, the sync word.
    [[nodiscard]] bool isUsed(FramePlace at) const;
    /// In each area only the word, only the frame, or both count.
    [[nodiscard]] FrameText cellText(FrameArea area, int word, int frame) const;
    /// The colour of a word's box among the labels; see `labelColour`.
    [[nodiscard]] Rgb labelColourOf(int word, bool isSelected, Rgb face = 0) const;
    /// True for a cell that holds the marked measurement.
    [[nodiscard]] bool isMarked(FramePlace at) const;
    [[nodiscard]] FrameMarks marksAt(FramePlace at) const;
    /// The names of the measurements at a place.
    [[nodiscard]] std::vector<std::string> measurementsAt(FramePlace at) const;
    /// The first async format at a place, from 1; 0 if there is none.
    [[nodiscard]] int asyncAt(FramePlace at) const;
    /// All that is known of a place, in lines.
    [[nodiscard]] std::string tipText(FramePlace at) const;

  private:
    [[nodiscard]] CellRef headOf(FramePlace at) const;
    [[nodiscard]] FrameText gridText(FramePlace at) const;
    [[nodiscard]] std::string labelText(int word) const;
    [[nodiscard]] std::string asyncName(int record) const;
    void addMeasurementTip(std::string& text, CellRef cell, int word) const;

    const PcmFormat& format_;
};

/// The label of a hidden subframe.
inline constexpr std::string_view kHiddenLabel = "\xC2\xB7";

}  // namespace kavu
