// The calm colours are told apart by people who see no red, no green or no blue. Colours are
// compared as CIEDE2000 differences, in which 1 is just visible and 10 is seen at a glance.
#include "pcm/display/FrameColours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

/// How colours are seen, in linear light: usual vision, and the three kinds of missing cones
/// (Machado, Oliveira and Fernandes, 2009, severity 1).
constexpr std::array<std::pair<const char*, Matrix>, 4> kVisions = {{
    {"usual", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
    {"protanopia",
     {{{0.152286, 1.052583, -0.204868},
       {0.114503, 0.786281, 0.099216},
       {-0.003882, -0.048116, 1.051998}}}},
    {"deuteranopia",
     {{{0.367322, 0.860646, -0.227968},
       {0.280085, 0.672501, 0.047413},
       {-0.011820, 0.042940, 0.968881}}}},
    {"tritanopia",
     {{{1.255528, -0.076749, -0.178779},
       {-0.078411, 0.930809, 0.147602},
       {0.004733, 0.691367, 0.303900}}}},
}};

Triple times(const Matrix& matrix, const Triple& v) {
    Triple out{};
    for (std::size_t i = 0; i < 3; ++i) {
        out[i] = matrix[i][0] * v[0] + matrix[i][1] * v[1] + matrix[i][2] * v[2];
    }
    return out;
}

Triple linear(Rgb colour) {
    Triple out{};
    for (unsigned i = 0; i < 3; ++i) {
        const double share = (colour >> (16U - 8U * i) & 0xFFU) / 255.0;
        out[i] = share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    }
    return out;
}

Triple lab(Rgb colour, const Matrix& vision) {
    auto seen = times(vision, linear(colour));
    for (auto& part : seen) {
        part = std::clamp(part, 0.0, 1.0);
    }
    constexpr Matrix kToXyz = {{{0.4124564, 0.3575761, 0.1804375},
                                {0.2126729, 0.7151522, 0.0721750},
                                {0.0193339, 0.1191920, 0.9503041}}};
    const auto xyz = times(kToXyz, seen);
    const auto f = [](double t) {
        return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116;
    };
    const double x = f(xyz[0] / 0.95047);
    const double y = f(xyz[1]);
    const double z = f(xyz[2] / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

constexpr double kDegree = 3.14159265358979323846 / 180;

double hue(double a, double b) {
    const double angle = std::atan2(b, a) / kDegree;
    return angle < 0 ? angle + 360 : angle;
}

double chromaWeight(double chroma) {
    const double seventh = std::pow(chroma, 7);
    return std::sqrt(seventh / (seventh + std::pow(25.0, 7)));
}

double meanHue(double h1, double h2, bool isGrey) {
    if (isGrey) {
        return h1 + h2;
    }
    const double mean = (h1 + h2) / 2;
    return std::abs(h1 - h2) <= 180 ? mean : h1 + h2 < 360 ? mean + 180 : mean - 180;
}

/// CIEDE2000.
double difference(const Triple& one, const Triple& two) {
    const double mean = (std::hypot(one[1], one[2]) + std::hypot(two[1], two[2])) / 2;
    const double stretch = 1 + 0.5 * (1 - chromaWeight(mean));
    const double a1 = one[1] * stretch;
    const double a2 = two[1] * stretch;
    const double c1 = std::hypot(a1, one[2]);
    const double c2 = std::hypot(a2, two[2]);
    const double h1 = hue(a1, one[2]);
    const double h2 = hue(a2, two[2]);
    const bool isGrey = c1 * c2 == 0;
    const double step = isGrey ? 0 : std::remainder(h2 - h1, 360);
    const double dH = 2 * std::sqrt(c1 * c2) * std::sin(step / 2 * kDegree);
    const double light = (one[0] + two[0]) / 2;
    const double chroma = (c1 + c2) / 2;
    const double h = meanHue(h1, h2, isGrey);
    const double t = 1 - 0.17 * std::cos((h - 30) * kDegree) + 0.24 * std::cos(2 * h * kDegree) +
                     0.32 * std::cos((3 * h + 6) * kDegree) -
                     0.20 * std::cos((4 * h - 63) * kDegree);
    const double offset = (light - 50) * (light - 50);
    const double dL = (two[0] - one[0]) / (1 + 0.015 * offset / std::sqrt(20 + offset));
    const double dC = (c2 - c1) / (1 + 0.045 * chroma);
    const double dHs = dH / (1 + 0.015 * chroma * t);
    const double turn =
        -2 * chromaWeight(chroma) * std::sin(60 * std::exp(-std::pow((h - 275) / 25, 2)) * kDegree);
    return std::sqrt(dL * dL + dC * dC + dHs * dHs + turn * dC * dHs);
}

struct Named {
    std::string name;
    Rgb colour;
};

constexpr Rgb kFaces[] = {0xFAFBFC, 0xEFEFEF, 0x2E343D, 0x353535};

std::vector<Named> calmCells(Rgb face) {
    const auto colour = [&](PlaceKind kind, bool within) {
        return cellColour(kind, within, false, face, FrameColours::Calm);
    };
    return {{"plain", colour(PlaceKind::Plain, true)},
            {"below", colour(PlaceKind::Plain, false)},
            {"counter", colour(PlaceKind::IdCounter, true)},
            {"sync", colour(PlaceKind::Sync, true)},
            {"async", colour(PlaceKind::Async, true)}};
}

// A pair of the published test data of the formula.
TEST(FrameColours, TheDifferenceIsThatOfThePublishedData) {
    EXPECT_NEAR(difference({50.0, 2.6772, -79.7751}, {50.0, 0.0, -82.7485}), 2.0425, 1e-4);
    EXPECT_NEAR(difference({50.0, 2.5, 0.0}, {61.0, -5.0, 29.0}), 22.8977, 1e-4);
    EXPECT_NEAR(difference({2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}), 0.9082, 1e-4);
    EXPECT_NEAR(difference({50.0, -1.3802, -84.2814}, {50.0, 0.0, -82.7485}), 1.0000, 1e-4);
}

TEST(FrameColours, CalmKindsAreToldApartWithoutColourVision) {
    for (const Rgb face : kFaces) {
        const auto cells = calmCells(face);
        for (const auto& [vision, matrix] : kVisions) {
            for (std::size_t i = 0; i < cells.size(); ++i) {
                for (std::size_t j = i + 1; j < cells.size(); ++j) {
                    // A repetition is the same place again: it may be closer to it.
                    const bool isRepetition = cells[i].name == "plain" && cells[j].name == "below";
                    EXPECT_GE(
                        difference(lab(cells[i].colour, matrix), lab(cells[j].colour, matrix)),
                        isRepetition ? 5 : 10)
                        << vision << ": " << cells[i].name << " and " << cells[j].name << " on "
                        << std::hex << face;
                }
            }
        }
    }
}

TEST(FrameColours, ASelectedCalmCellIsUnmistakable) {
    for (const Rgb face : kFaces) {
        for (const auto kind :
             {PlaceKind::Plain, PlaceKind::IdCounter, PlaceKind::Sync, PlaceKind::Async}) {
            const auto selected = cellColour(kind, true, true, face, FrameColours::Calm);
            for (const auto& [vision, matrix] : kVisions) {
                for (const auto& cell : calmCells(face)) {
                    EXPECT_GE(difference(lab(selected, matrix), lab(cell.colour, matrix)), 25)
                        << vision << ": " << cell.name << " on " << std::hex << face;
                }
                for (const auto type :
                     {WordType::Minor, WordType::IdCounter, WordType::Subframe, WordType::Sync}) {
                    for (const bool hasText : {false, true}) {
                        const auto label =
                            labelColour(type, hasText, false, face, FrameColours::Calm);
                        EXPECT_GE(difference(lab(selected, matrix), lab(label, matrix)), 25)
                            << vision << ": label on " << std::hex << face;
                    }
                }
            }
        }
    }
}

TEST(FrameColours, CalmIsCalm) {
    for (const Rgb face : kFaces) {
        for (const auto& cell : calmCells(face)) {
            const auto colour = lab(cell.colour, kVisions[0].second);
            EXPECT_LE(std::hypot(colour[1], colour[2]), 40) << cell.name;
            // Classic red has a chroma of 105.
        }
    }
}

TEST(FrameColours, EveryTextCanBeReadInBothSets) {
    for (const auto colours : {FrameColours::Classic, FrameColours::Calm}) {
        for (const Rgb face : kFaces) {
            std::vector<Rgb> grounds;
            for (const bool selected : {false, true}) {
                for (const bool within : {false, true}) {
                    for (const auto kind : {PlaceKind::Plain, PlaceKind::IdCounter, PlaceKind::Sync,
                                            PlaceKind::Async}) {
                        grounds.push_back(cellColour(kind, within, selected, face, colours));
                    }
                    for (const auto type : {WordType::Minor, WordType::IdCounter,
                                            WordType::Subframe, WordType::Sync}) {
                        grounds.push_back(labelColour(type, within, selected, face, colours));
                    }
                }
            }
            for (const Rgb ground : grounds) {
                for (const auto ink : {FrameInk::Plain, FrameInk::Several, FrameInk::Conversion}) {
                    EXPECT_GE(contrast(readableInk(inkColour(ink), ground), ground), 4.5)
                        << std::hex << ground;
                }
            }
        }
    }
}

TEST(FrameColours, TheClassicSetIsTheUsualOne) {
    EXPECT_EQ(cellColour(PlaceKind::Async, true, false, 0xEFEFEF), 0xFF0000U);
    EXPECT_EQ(cellColour(PlaceKind::Plain, true, false, 0xEFEFEF, FrameColours::Calm), 0xEFEFEFU);
    EXPECT_EQ(labelColour(WordType::Subframe, true, true), 0x008000U);
}

}  // namespace
}  // namespace kavu
