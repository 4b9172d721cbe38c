#include "pcm/display/FrameColours.h"

#include <algorithm>
#include <cmath>

namespace kavu {

namespace {

constexpr Rgb kBlack = 0x000000;
constexpr Rgb kWhite = 0xFFFFFF;
constexpr int kDarker = 0x20;
constexpr double kReadable = 4.5;

int part(Rgb colour, unsigned shift) {
    return static_cast<int>(colour >> shift & 0xFFU);
}

Rgb fromParts(int red, int green, int blue) {
    const auto byte = [](int value) { return static_cast<Rgb>(std::clamp(value, 0, 255)); };
    return byte(red) << 16U | byte(green) << 8U | byte(blue);
}

double luminance(Rgb colour) {
    const auto linear = [](int value) {
        const double share = value / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(part(colour, 16)) + 0.7152 * linear(part(colour, 8)) +
           0.0722 * linear(part(colour, 0));
}

/// The colour at a number of hundredths of the way from one colour to the other.
Rgb mixed(Rgb from, Rgb to, int hundredths) {
    const auto mix = [&](unsigned shift) {
        return part(from, shift) + (part(to, shift) - part(from, shift)) * hundredths / 100;
    };
    return fromParts(mix(16), mix(8), mix(0));
}

Rgb darker(Rgb face) {
    return fromParts(part(face, 16) - kDarker, part(face, 8) - kDarker, part(face, 0) - kDarker);
}

// Little colour, and steps of lightness that are seen without any.

struct CalmColours {
    Rgb counter;
    Rgb sync;
    Rgb async;
    Rgb selected;
    Rgb label;          ///< of a subframe
    Rgb noLabel;        ///< of a word without one
    Rgb counterNoName;  ///< of a counter without one
};
constexpr CalmColours kCalmLight = {.counter = 0xE6D49A,
                                    .sync = 0xA9C7DE,
                                    .async = 0xB98C96,
                                    .selected = 0x1F3A5F,
                                    .label = 0xB4D0AC,
                                    .noLabel = 0xE3EBDF,
                                    .counterNoName = 0xF2E9CC};
constexpr CalmColours kCalmDark = {.counter = 0x6B5A22,
                                   .sync = 0x3F6E8C,
                                   .async = 0x9C6470,
                                   .selected = 0xF0D9A0,
                                   .label = 0x46683F,
                                   .noLabel = 0x2A3529,
                                   .counterNoName = 0x463C1C};

const CalmColours& calmColours(Rgb face) {
    return contrast(face, kBlack) >= contrast(face, kWhite) ? kCalmLight : kCalmDark;
}

Rgb calmCell(PlaceKind kind, bool isWithin, bool isSelected, Rgb face) {
    const auto& calm = calmColours(face);
    if (isSelected) {
        return calm.selected;
    }
    switch (kind) {
        case PlaceKind::IdCounter:
            return calm.counter;
        case PlaceKind::Sync:
            return calm.sync;
        case PlaceKind::Async:
            return isWithin ? calm.async : darker(calm.async);
        default:
            return isWithin ? face : darker(face);
    }
}

Rgb calmLabel(WordType type, bool hasText, bool isSelected, Rgb face) {
    const auto& calm = calmColours(face);
    if (isSelected) {
        return calm.selected;
    }
    switch (type) {
        case WordType::IdCounter:
            return hasText ? calm.counter : calm.counterNoName;
        case WordType::Sync:
            return calm.sync;
        default:
            return hasText ? calm.label : calm.noLabel;
    }
}

}  // namespace

Rgb cellColour(PlaceKind kind, bool isWithin, bool isSelected, Rgb face, FrameColours colours) {
    if (colours == FrameColours::Calm) {
        return calmCell(kind, isWithin, isSelected, face);
    }
    switch (kind) {
        case PlaceKind::IdCounter:
            return isSelected ? 0x808000 : 0xC0C000;
        case PlaceKind::Sync:
            return isSelected ? 0x00C0C0 : 0x00FFFF;
        case PlaceKind::Async:
            return isSelected ? 0xC00000 : isWithin ? 0xFF0000 : 0xDF0000;
        default:
            break;
    }
    if (isSelected) {
        return 0x808080;
    }
    return isWithin ? face : darker(face);
}

Rgb labelColour(WordType type, bool hasText, bool isSelected, Rgb face, FrameColours colours) {
    if (colours == FrameColours::Calm) {
        return calmLabel(type, hasText, isSelected, face);
    }
    if (isSelected) {
        return 0x008000;
    }
    switch (type) {
        case WordType::IdCounter:
            return hasText ? 0xFFFF00 : 0xC0C000;
        case WordType::Sync:
            return hasText ? 0x00FFFF : 0x00C0C0;
        default:
            return hasText ? 0x00FF00 : 0x00C000;
    }
}

Rgb inkColour(FrameInk ink) {
    switch (ink) {
        case FrameInk::Several:
            return 0x0000FF;
        case FrameInk::Conversion:
            return 0xFFA500;
        default:
            return kBlack;
    }
}

double contrast(Rgb a, Rgb b) {
    const double x = luminance(a) + 0.05;
    const double y = luminance(b) + 0.05;
    return std::max(x, y) / std::min(x, y);
}

Rgb readableInk(Rgb wanted, Rgb ground) {
    if (contrast(wanted, ground) >= kReadable) {
        return wanted;
    }
    const Rgb end = contrast(kWhite, ground) > contrast(kBlack, ground) ? kWhite : kBlack;
    if (wanted == kBlack) {
        return end;
    }
    for (int step = 10; step < 100; step += 10) {
        if (const auto colour = mixed(wanted, end, step); contrast(colour, ground) >= kReadable) {
            return colour;
        }
    }
    return end;
}

}  // namespace kavu
