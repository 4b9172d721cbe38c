// What the display of a stream shows at each of its places: contents, text, colours and marks.
// Nothing is kept: everything is read from the stream on demand, so it is always up to date.
//
// Words count from 0, the sync word; frames from 1.
#pragma once

#include "pcm/PcmFormat.h"

#include <cstdint>
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
enum class PlaceKind { Plain, IdCounter, Sync, Async };
/// The colour of a cell's text: plain, of several measurements, of one with a conversion.
enum class FrameInk { Plain, Several, Conversion };

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
    /// In each area only the word, only the frame, or both count.
    [[nodiscard]] FrameText cellText(FrameArea area, int word, int frame) const;
    /// The colour of a word's box among the labels.
    [[nodiscard]] std::uint32_t labelColourOf(int word, bool isSelected) const;
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

// --- colours ----------------------------------------------------------------------------------

using Rgb = std::uint32_t;  ///< 0xRRGGBB

/// `face` is the colour of the interface's surfaces.
[[nodiscard]] Rgb cellColour(PlaceKind kind, bool isWithin, bool isSelected, Rgb face);
[[nodiscard]] Rgb labelColour(WordType type, bool hasText, bool isSelected);
[[nodiscard]] Rgb inkColour(FrameInk ink);
/// The colour in its own hue, made lighter or darker until it is readable on the ground.
/// Black may become white.
[[nodiscard]] Rgb readableInk(Rgb wanted, Rgb ground);
/// The contrast ratio of text on screens, 1 to 21; 4.5 is easy to read.
[[nodiscard]] double contrast(Rgb a, Rgb b);

/// The label of a hidden subframe.
inline constexpr std::string_view kHiddenLabel = "\xC2\xB7";

}  // namespace kavu
