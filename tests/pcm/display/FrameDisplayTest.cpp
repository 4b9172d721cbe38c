#include "pcm/StreamFixture.h"
#include "pcm/display/FrameDisplay.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::plainCounter;
using test::StreamFixture;

/// 16 frames; a counter in word 30, the subframe ENGINE of depth 4 in word 5.
struct DisplayFixture : StreamFixture {
    explicit DisplayFixture(int edition = 2009) : StreamFixture(edition, 32, 16) {
        auto commands = plainCounter(1, 30, 16, "FRAMES");
        for (const auto* command : {"ISF\\N:1", "SF\\N-1:1", "SF1-1-1:ENGINE", "SF2-1-1:NO",
                                    "SF4-1-1-1:5", "SF6-1-1:4"}) {
            commands.emplace_back(command);
        }
        EXPECT_TRUE(read(commands));
        EXPECT_EQ(format.wordType(5), WordType::Subframe);
        EXPECT_EQ(format.wordType(30), WordType::IdCounter);
    }
    void placeAsync(int fwp, const std::string& mask = "FW") {
        format.asyncFormats.resize(1);
        format.asyncFormats[0].dataLinkName = "INNER";
        const AsyncLocation location{fwp, {{1, 1, 16}}};
        format.asyncFormats[0].locations = {location};
        ASSERT_TRUE(placeAsyncSlots(format, nullptr, 1, location, mask));
    }
    [[nodiscard]] std::string text(int word, int frame) const {
        return display.cellText(FrameArea::Grid, word, frame).text;
    }
    [[nodiscard]] std::string label(int word) const {
        return display.cellText(FrameArea::Labels, word, 0).text;
    }
    FrameDisplay display{format};
};

TEST(FrameDisplay, EachKindOfPlaceHasItsText) {
    DisplayFixture f;
    f.place(3, 1, "SPEED");
    f.place(5, 2, "OIL", "SF");
    f.placeAsync(7);
    f.place(7, 1, "COVERED");
    EXPECT_EQ(f.text(0, 4), "FSP");
    EXPECT_EQ(f.text(3, 1), "SPEED");
    EXPECT_EQ(f.text(3, 16), "SPEED");
    EXPECT_EQ(f.text(4, 1), "");
    EXPECT_EQ(f.text(5, 1), "");
    EXPECT_EQ(f.text(5, 2), "OIL");
    EXPECT_EQ(f.text(7, 9), "Async: INNER");
    EXPECT_EQ(f.text(32, 1), "");
    EXPECT_EQ(f.text(3, 17), "");
    EXPECT_EQ(f.text(-1, -1), "");
    EXPECT_EQ(f.display.cellText(FrameArea::WordLegend, 12, 0).text, "12");
    EXPECT_EQ(f.display.cellText(FrameArea::FrameLegend, 0, 16).text, "16");
}

TEST(FrameDisplay, TheValueOfACounterRunsOnInEveryFrameAndIsNotFolded) {
    DisplayFixture f;
    f.place(30, 1, "COUNT");
    f.format.idCounters[0].initialValue = "5";
    f.format.idCounters[0].endFrame = "4";
    f.format.idCounters[0].endValue = "8";
    EXPECT_EQ(f.text(30, 1), "COUNT (5)");
    EXPECT_EQ(f.text(30, 4), "COUNT (8)");
    EXPECT_EQ(f.text(30, 5), "COUNT (9)");
    EXPECT_EQ(f.text(30, 16), "COUNT (20)");
    EXPECT_EQ(f.display.depth(30), 16) << "the counter's own depth is 4";
}

TEST(FrameDisplay, ASubframeOfDepthFourInSixteenFramesShowsFourCellsOrSixteen) {
    DisplayFixture f;
    f.place(5, 2, "OIL", "SF");
    const auto shown = [&] {
        int count = 0;
        for (int frame = 1; frame <= 20; ++frame) {
            count += f.display.isShown({5, frame}) ? 1 : 0;
        }
        return count;
    };
    const auto dark = [&] {
        int count = 0;
        for (int frame = 1; frame <= 20; ++frame) {
            count += f.display.isShown({5, frame}) && !f.display.isWithin({5, frame}) ? 1 : 0;
        }
        return count;
    };
    EXPECT_EQ(shown(), 4);
    EXPECT_EQ(dark(), 0);
    f.display.showAllCells = true;
    EXPECT_EQ(shown(), 16);
    EXPECT_EQ(dark(), 12);
    EXPECT_EQ(f.text(5, 6), "OIL");
    EXPECT_EQ(f.text(5, 14), "OIL");
}

TEST(FrameDisplay, ADepthThatTheStreamDoesNotHaveIsCutToItsFrames) {
    DisplayFixture f;
    f.format.idCounters[0].subframes[0].depth = "999";
    EXPECT_EQ(f.display.depth(5), 16);
    EXPECT_EQ(f.display.depth(3), 16);
    EXPECT_EQ(f.display.depth(0), 16);
    EXPECT_EQ(f.display.depth(-1), 0);
    EXPECT_EQ(f.display.depth(32), 0);
}

TEST(FrameDisplay, InkTellsOfSeveralMeasurementsAndOfConversions) {
    DisplayFixture f;
    f.display.hasConversion = [](std::string_view name) { return name == "CAL"; };
    f.place(3, 1, "A");
    f.place(3, 1, "B");
    f.place(3, 1, "C");
    f.place(4, 1, "CAL");
    f.place(6, 1, "CAL");
    f.place(6, 1, "D");
    const auto ink = [&](int word) { return f.display.cellText(FrameArea::Grid, word, 1).ink; };
    EXPECT_EQ(ink(3), FrameInk::Several) << "however many";
    EXPECT_EQ(ink(4), FrameInk::Plain);
    f.display.highlightEu = true;
    EXPECT_EQ(ink(4), FrameInk::Conversion);
    EXPECT_EQ(ink(6), FrameInk::Several);
    EXPECT_EQ(ink(8), FrameInk::Plain);
    f.placeAsync(9);
    EXPECT_EQ(ink(9), FrameInk::Plain);
    f.place(9, 1, "CAL");
    EXPECT_EQ(ink(9), FrameInk::Conversion) << "under an async stream as well";
    f.place(9, 1, "E");
    EXPECT_EQ(ink(9), FrameInk::Several);
    EXPECT_EQ(f.text(9, 1), "Async: INNER");
    EXPECT_EQ(inkColour(FrameInk::Several), 0x0000FFU);
    EXPECT_EQ(inkColour(FrameInk::Conversion), 0xFFA500U);
    EXPECT_EQ(inkColour(FrameInk::Plain), 0x000000U);
}

TEST(FrameDisplay, LabelsNameCountersAndSubframes) {
    DisplayFixture f;
    EXPECT_EQ(f.label(0), "FSP");
    EXPECT_EQ(f.label(30), "FRAMES");
    EXPECT_EQ(f.label(5), "ENGINE");
    EXPECT_EQ(f.label(3), "");
    f.format.idCounters[0].subframes[0].hidden = true;
    EXPECT_EQ(f.label(5), "\xC2\xB7");
    f.format.idCounters[0].name = "";
    EXPECT_EQ(f.label(30), "??");
    f.format.setWord(5, WordType::Subframe, -1, -1);
    EXPECT_EQ(f.label(5), "??");
}

TEST(FrameDisplay, ColoursTellWhatAWordIs) {
    constexpr Rgb kFace = 0xF0E010;
    struct Row {
        PlaceKind kind;
        Rgb within, below, selected;
    };
    for (const auto& row : {Row{PlaceKind::IdCounter, 0xC0C000, 0xC0C000, 0x808000},
                            Row{PlaceKind::Sync, 0x00FFFF, 0x00FFFF, 0x00C0C0},
                            Row{PlaceKind::Async, 0xFF0000, 0xDF0000, 0xC00000},
                            Row{PlaceKind::Plain, kFace, 0xD0C000, 0x808080}}) {
        EXPECT_EQ(cellColour(row.kind, true, false, kFace), row.within);
        EXPECT_EQ(cellColour(row.kind, false, false, kFace), row.below);
        EXPECT_EQ(cellColour(row.kind, true, true, kFace), row.selected);
    }
}

TEST(FrameDisplay, LabelColoursTellIfAWordHasAName) {
    DisplayFixture f;
    EXPECT_EQ(f.display.labelColourOf(5, false), 0x00FF00U);
    EXPECT_EQ(f.display.labelColourOf(3, false), 0x00C000U);
    EXPECT_EQ(f.display.labelColourOf(30, false), 0xFFFF00U);
    EXPECT_EQ(f.display.labelColourOf(0, false), 0x00FFFFU);
    EXPECT_EQ(f.display.labelColourOf(30, true), 0x008000U);
    EXPECT_EQ(labelColour(WordType::Sync, false, false), 0x00C0C0U);
    f.format.idCounters[0].name = "";
    EXPECT_EQ(f.display.labelColourOf(30, false), 0xC0C000U);
}

TEST(FrameDisplay, EveryInkCanBeReadOnEveryGround) {
    for (const Rgb face : {0xFAFBFCU, 0xF3F5F8U, 0x2E343DU, 0x24282FU}) {
        for (const auto kind :
             {PlaceKind::Plain, PlaceKind::IdCounter, PlaceKind::Sync, PlaceKind::Async}) {
            for (const bool within : {true, false}) {
                for (const bool selected : {true, false}) {
                    const auto ground = cellColour(kind, within, selected, face);
                    for (const auto ink :
                         {FrameInk::Plain, FrameInk::Several, FrameInk::Conversion}) {
                        EXPECT_GE(contrast(readableInk(inkColour(ink), ground), ground), 4.5)
                            << std::hex << ground;
                    }
                }
            }
        }
    }
    EXPECT_EQ(readableInk(0x0000FF, 0xFAFBFC), 0x0000FFU) << "what can be read stays";
    EXPECT_EQ(readableInk(0x000000, 0x2E343D), 0xFFFFFFU);
    EXPECT_NEAR(contrast(0x000000, 0xFFFFFF), 21, 0.001);
}

TEST(FrameDisplay, EveryLabelCanBeReadOnItsBox) {
    for (const auto type :
         {WordType::Minor, WordType::IdCounter, WordType::Subframe, WordType::Sync}) {
        for (const bool hasText : {true, false}) {
            for (const bool selected : {true, false}) {
                const auto ground = labelColour(type, hasText, selected);
                EXPECT_GE(contrast(readableInk(inkColour(FrameInk::Plain), ground), ground), 4.5)
                    << std::hex << ground;
            }
        }
    }
}

TEST(FrameDisplay, MarksTellOfOverlapWithoutColour) {
    DisplayFixture f;
    Measurement high;
    high.name = "HIGH";
    high.mask = "1111111100000000";
    Measurement low;
    low.name = "LOW";
    low.mask = "11111111";
    f.place(3, 1, high);
    EXPECT_EQ(f.display.marksAt({3, 1}), FrameMarks{});
    f.place(3, 1, low);
    EXPECT_EQ(f.display.marksAt({3, 1}), (FrameMarks{.several = true}));
    f.place(3, 1, "WHOLE");
    EXPECT_EQ(f.display.marksAt({3, 7}), (FrameMarks{.several = true, .overlap = true}));
    f.placeAsync(7, "11111111");
    EXPECT_EQ(f.display.marksAt({7, 1}), (FrameMarks{.async = true}));
    f.place(7, 1, high);
    EXPECT_EQ(f.display.marksAt({7, 1}), (FrameMarks{.async = true}));
    f.place(7, 1, low);
    EXPECT_EQ(f.display.marksAt({7, 1}),
              (FrameMarks{.several = true, .overlap = true, .async = true}));
    EXPECT_EQ(f.display.marksAt({0, 1}), FrameMarks{});
}

TEST(FrameDisplay, RangesTakeTheBitsOfTheirFragments) {
    DisplayFixture f;
    f.placeFragments("PARTS", {{8, 0, 8, 1, 1, 16, "1111000000000000", 'D', 1},
                               {9, 2, 13, 1, 1, 16, "1111", 'D', 2},
                               {8, 0, 8, 1, 1, 16, "11", 'D', 3}});
    EXPECT_EQ(f.display.marksAt({8, 3}), (FrameMarks{.several = true})) << "two parts of the word";
    EXPECT_EQ(f.display.tipText({8, 1}),
              "FWP 8, FN 1, word of 16 bits\n"
              "PARTS: WDFR, mask 1111000000000000, 4 bits\n"
              "PARTS: WDFR, mask 11, 2 bits");
    Measurement low;
    low.name = "LOW";
    low.mask = "11111111";
    f.place(8, 1, low);
    f.place(11, 1, low);
    EXPECT_TRUE(f.display.marksAt({8, 1}).overlap);
    EXPECT_EQ(f.display.marksAt({11, 1}), (FrameMarks{.several = true, .overlap = true}));
    low.name = "HIGH";
    low.mask = "1111111100000000";
    f.place(13, 1, low);
    EXPECT_EQ(f.display.marksAt({13, 1}), (FrameMarks{.several = true}));
}

TEST(FrameDisplay, TheTipTellsAllOfAPlace) {
    DisplayFixture f;
    f.display.conversionText = [](std::string_view name) {
        return name == "OIL" ? std::string("conversion COE") : std::string();
    };
    Measurement oil;
    oil.name = "OIL";
    oil.locationType = "SF";
    oil.mask = "1111";
    f.place(5, 2, oil);
    f.place(5, 2, "TEMP", "SF");
    f.placeAsync(7);
    EXPECT_EQ(f.display.tipText({5, 2}),
              "FWP 5, FN 2, word of 16 bits, subframe ENGINE\n"
              "OIL: SF, mask 1111, 4 bits, conversion COE\n"
              "TEMP: SF, mask FW, 16 bits\n"
              "Some of them take the same bits");
    EXPECT_EQ(f.display.tipText({0, 1}), "FWP 0, FN 1, word of 16 bits\nFrame sync pattern");
    EXPECT_THAT(f.display.tipText({7, 3}), testing::HasSubstr("Async: INNER: mask FW"));
    EXPECT_THAT(f.display.tipText({30, 3}), testing::HasSubstr("ID counter FRAMES"));
    EXPECT_EQ(f.display.tipText({5, 6}), "") << "nothing is shown there";
    f.display.showAllCells = true;
    EXPECT_THAT(f.display.tipText({5, 6}), testing::HasSubstr("OIL"));
}

TEST(FrameDisplay, ALongListOfAPlaceIsCutInTheTip) {
    DisplayFixture f;
    for (int i = 0; i < 50; ++i) {
        f.place(3, 1, "M" + std::to_string(i));
    }
    const auto text = f.display.tipText({3, 1});
    EXPECT_THAT(text, testing::HasSubstr("M19:"));
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("M20:")));
    EXPECT_THAT(text, testing::HasSubstr("\n..."));
    EXPECT_EQ(f.display.measurementsAt({3, 1}).size(), 50U);
}

TEST(FrameDisplay, WithoutAStreamThereIsNothing) {
    StreamFixture f;
    f.format.clear();
    const FrameDisplay display(f.format);
    EXPECT_EQ(display.cellText(FrameArea::Grid, 1, 1), FrameText{});
    EXPECT_EQ(display.depth(1), 0);
    EXPECT_FALSE(display.isShown({1, 1}));
    EXPECT_EQ(display.tipText({1, 1}), "");
    EXPECT_EQ(display.asyncAt({1, 1}), 0);
}

}  // namespace
}  // namespace kavu
