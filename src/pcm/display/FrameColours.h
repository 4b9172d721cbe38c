// The colours of the display of a stream. There are two sets: the classic one, and a calm one whose
// colours can be told apart without colour vision.
#pragma once

#include "pcm/PcmFormat.h"

#include <cstdint>

namespace kavu {

enum class PlaceKind { Plain, IdCounter, Sync, Async };
/// The colour of a cell's text: plain, of several measurements, of one with a conversion.
enum class FrameInk { Plain, Several, Conversion };
/// The set of colours. The numbers are those of the setting.
enum class FrameColours { Classic = 0, Calm = 1 };

using Rgb = std::uint32_t;  ///< 0xRRGGBB

/// `face` is the colour of the interface's surfaces: of a cell that holds nothing of its own, and
/// whether calm colours are those for light or for dark surfaces.
[[nodiscard]] Rgb cellColour(PlaceKind kind, bool isWithin, bool isSelected, Rgb face,
                             FrameColours colours = FrameColours::Classic);
[[nodiscard]] Rgb labelColour(WordType type, bool hasText, bool isSelected, Rgb face = 0,
                              FrameColours colours = FrameColours::Classic);
[[nodiscard]] Rgb inkColour(FrameInk ink);
/// The colour in its own hue, made lighter or darker until it is readable on the ground.
/// Black may become white.
[[nodiscard]] Rgb readableInk(Rgb wanted, Rgb ground);
/// The contrast ratio of text on screens, 1 to 21; 4.5 is easy to read.
[[nodiscard]] double contrast(Rgb a, Rgb b);

}  // namespace kavu
