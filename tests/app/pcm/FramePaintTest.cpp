// What is painted, pixel by pixel: colours, marks that do not depend on them, and readable
// texts, in both palettes.
#include "app/framework/Look.h"
#include "app/pcm/DisplayStage.h"
#include "app/pcm/FrameGridAreas.h"
#include "app/pcm/FrameKey.h"
#include "pcm/structure/AsyncEdit.h"

#include <QApplication>
#include <QImage>

namespace kavu {
namespace {

using test::DisplayStage;

constexpr int kWidth = 120;

Rgb rgbOf(QRgb pixel) {
    return pixel & 0xFFFFFFU;
}

/// Words: 3 and 4 hold one measurement, 6 two in different bits, 8 two in the same bits, 9 an
/// async stream, 10 nothing, 11 a measurement with a conversion.
class FramePaint : public testing::TestWithParam<look::Scheme> {
  protected:
    FramePaint() {
        look::apply(*qApp, GetParam());
        Measurement half;
        half.name = "HIGH";
        half.mask = "1111111100000000";
        s_.place(6, 1, half);
        half.name = "LOW";
        half.mask = "11111111";
        s_.place(6, 1, half);
        s_.place(8, 1, "ONE");
        s_.place(8, 1, "TWO");
        s_.place(11, 1, "CAL");
        s_.format.asyncFormats.resize(1);
        s_.format.asyncFormats[0].dataLinkName = "INNER";
        EXPECT_TRUE(placeAsyncSlots(s_.format, nullptr, 1, {9, {{1, 1, 16}}}, "FW"));
        areas_ = std::make_unique<FrameGridAreas>(s_.format, nullptr);
        areas_->display().highlightEu = true;
        areas_->display().hasConversion = [](std::string_view name) { return name == "CAL"; };
        areas_->resize(1800, 700);
        areas_->setCellWidth(kWidth);
        areas_->show();
        QApplication::processEvents();
    }
    ~FramePaint() override { look::apply(*qApp, look::Scheme::Light); }

    [[nodiscard]] QImage picture() { return areas_->grid().grab().toImage(); }
    [[nodiscard]] QImage cell(int word, int frame) {
        return picture().copy(areas_->grid().cellRect({word, frame}));
    }
    /// The ground of a cell, where no text and no mark stands.
    static Rgb ground(const QImage& cell) { return rgbOf(cell.pixel(kWidth / 2, 5)); }
    static double contrastAt(const QImage& cell, int x, int y) {
        return contrast(rgbOf(cell.pixel(x, y)), ground(cell));
    }
    /// The pixel of the text that can be told best from the ground.
    static double textContrast(const QImage& cell) {
        double best = 1;
        for (int y = cell.height() / 4; y < cell.height() * 3 / 4; ++y) {
            for (int x = 14; x < kWidth - 14; ++x) {
                best = std::max(best, contrastAt(cell, x, y));
            }
        }
        return best;
    }
    [[nodiscard]] Rgb face() const {
        return rgbOf(areas_->palette().color(QPalette::Button).rgb());
    }

    DisplayStage s_;
    std::unique_ptr<FrameGridAreas> areas_;
};

TEST_P(FramePaint, EachKindOfPlaceHasItsColour) {
    EXPECT_EQ(ground(cell(0, 1)), 0x00FFFFU);
    EXPECT_EQ(ground(cell(3, 1)), face());
    EXPECT_EQ(ground(cell(9, 1)), 0xFF0000U);
    EXPECT_EQ(ground(cell(10, 1)), face());
    EXPECT_NE(ground(cell(5, 6)), face()) << "below the depth is no cell";
    areas_->display().showAllCells = true;
    areas_->refresh();
    EXPECT_EQ(ground(cell(5, 6)), cellColour(PlaceKind::Plain, false, false, face()));
    areas_->goToCell(30, 1);
    EXPECT_EQ(ground(cell(30, 2)), 0xC0C000U);
}

TEST_P(FramePaint, ASelectedCellIsPressed) {
    for (const auto& [word, colour] :
         {std::pair{0, 0x00C0C0U}, std::pair{3, 0x808080U}, std::pair{9, 0xC00000U}}) {
        const auto before = cell(word, 2);
        ASSERT_TRUE(areas_->goToCell(word, 2));
        const auto after = cell(word, 2);
        EXPECT_EQ(ground(after), colour);
        EXPECT_NE(after.pixel(0, 5), before.pixel(0, 5)) << "the shade goes to the other side";
        EXPECT_GE(textContrast(after), 4.5);
    }
}

TEST_P(FramePaint, EveryTextCanBeRead) {
    areas_->display().showAllCells = true;
    areas_->refresh();
    for (const auto at :
         {FramePlace{0, 1}, FramePlace{3, 1}, FramePlace{6, 1}, FramePlace{8, 3}, FramePlace{9, 1},
          FramePlace{11, 1}, FramePlace{5, 2}, FramePlace{5, 6}}) {
        EXPECT_GE(textContrast(cell(at.word, at.frame)), 4.5) << at.word << " " << at.frame;
    }
    EXPECT_LT(textContrast(cell(10, 1)), 1.1) << "nothing stands there";
}

TEST_P(FramePaint, InksOfSeveralMeasurementsAndOfConversionsHaveTheirHue) {
    const auto hasHue = [&](const QImage& cell, auto isOfHue) {
        for (int y = cell.height() / 4; y < cell.height() * 3 / 4; ++y) {
            for (int x = 14; x < kWidth - 14; ++x) {
                if (isOfHue(QColor(cell.pixel(x, y)))) {
                    return true;
                }
            }
        }
        return false;
    };
    const auto isBlue = [](const QColor& c) {
        return c.hue() > 210 && c.hue() < 270 && c.saturation() > 100;
    };
    const auto isOrange = [](const QColor& c) {
        return c.hue() > 20 && c.hue() < 50 && c.saturation() > 100;
    };
    EXPECT_TRUE(hasHue(cell(6, 1), isBlue));
    EXPECT_FALSE(hasHue(cell(3, 1), isBlue));
    EXPECT_TRUE(hasHue(cell(11, 1), isOrange));
    EXPECT_FALSE(hasHue(cell(3, 1), isOrange));
}

TEST_P(FramePaint, SeveralMeasurementsAreToldByACorner) {
    const auto plain = cell(3, 1);
    for (const int word : {6, 8}) {
        const auto several = cell(word, 1);
        const int x = several.width() - 6;
        EXPECT_GE(contrastAt(several, x, 2), 4.5) << word;
        EXPECT_LT(contrastAt(plain, x, 2), 1.1);
    }
}

TEST_P(FramePaint, TheSameBitsAreToldByACross) {
    // The middle of the cross.
    const int size = std::clamp(kWidth / 2 / 4, 4, 10);
    const auto crossed = [&](const QImage& cell) {
        int hits = 0;
        for (int step = 0; step < size; ++step) {
            hits += contrastAt(cell, 7 + step, 2 + step) >= 4.5 ? 1 : 0;
            hits += contrastAt(cell, 7 + size - 1 - step, 2 + step) >= 4.5 ? 1 : 0;
        }
        return hits;
    };
    EXPECT_GE(crossed(cell(8, 1)), 2 * size - 2);
    EXPECT_EQ(crossed(cell(6, 1)), 0) << "two measurements in bits of their own";
    EXPECT_EQ(crossed(cell(3, 1)), 0);
}

TEST_P(FramePaint, AnAsyncStreamIsToldByTwoBars) {
    const auto async = cell(9, 1);
    const auto plain = cell(3, 1);
    const int middle = async.height() / 2;
    for (const int x : {2, 4}) {
        EXPECT_GE(contrastAt(async, x, middle), 4.5);
        EXPECT_LT(contrastAt(plain, x, middle), 1.1);
    }
    EXPECT_LT(contrastAt(async, 3, middle), 1.1) << "two, not one";
}

TEST_P(FramePaint, TheKeyTellsWhatIsShown) {
    FrameKey key(areas_->display(), nullptr);
    areas_->display().highlightEu = false;
    key.refresh();
    EXPECT_EQ(toBytes(key.accessibleName()),
              "Key: Sync word, ID counter, Async stream, Several measurements, Same bits taken "
              "twice, Marked in the list");
    key.resize(key.sizeHint());
    const auto picture = key.grab().toImage();
    const int middle = picture.height() - key.fontMetrics().height() / 2;
    EXPECT_EQ(rgbOf(picture.pixel(3, middle)), 0x00FFFFU) << "the sync word is the first";
    areas_->display().highlightEu = true;
    areas_->display().showAllCells = true;
    key.refresh();
    EXPECT_TRUE(key.accessibleName().endsWith(QStringLiteral(", EU definition, Repetition")));
}

TEST_P(FramePaint, ANumberIsInTheMiddleOfItsCellAndThatOfTheSelectionStandsOut) {
    areas_->setCellWidth(14);
    ASSERT_TRUE(areas_->goToCell(5, 1));
    const auto* const legend = test::find<QWidget>(*areas_, "minor_frame_legend");
    const auto highlight = legend->palette().color(QPalette::Highlight).rgb();
    const auto picture = const_cast<QWidget*>(legend)->grab().toImage();
    EXPECT_EQ(picture.pixel(5 * 14 + 7, 0), highlight);
    EXPECT_NE(picture.pixel(9 * 14 + 7, 0), highlight);
    double best = 1;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 5 * 14; x < 6 * 14; ++x) {
            best = std::max(best, contrast(rgbOf(picture.pixel(x, y)), rgbOf(highlight)));
        }
    }
    EXPECT_GE(best, 3) << "its number is shown, also where only every second one has room";
}

// The classic red of a selected async place is so close to that of its neighbours.
TEST_P(FramePaint, ASelectedCellHasAFrameThatNoOtherHas) {
    for (const auto colours : {FrameColours::Classic, FrameColours::Calm}) {
        areas_->display().colours = colours;
        areas_->refresh();
        for (const int word : {0, 3, 9, 10}) {
            ASSERT_TRUE(areas_->goToCell(word, 2));
            const auto selected = cell(word, 2);
            const auto other = cell(word, 3);
            for (const int at : {0, 1}) {
                EXPECT_GE(contrastAt(selected, kWidth / 2, at), 4.5) << word;
                EXPECT_GE(contrastAt(selected, at, selected.height() / 2), 4.5) << word;
                EXPECT_GE(contrastAt(selected, kWidth / 2, selected.height() - 1 - at), 4.5);
                EXPECT_LT(contrastAt(other, kWidth / 2, at), 1.1) << word;
            }
        }
    }
}

TEST_P(FramePaint, CalmColoursAreShownAndTheirTextsCanBeRead) {
    areas_->display().colours = FrameColours::Calm;
    areas_->display().showAllCells = true;
    areas_->refresh();
    EXPECT_EQ(ground(cell(0, 1)),
              cellColour(PlaceKind::Sync, true, false, face(), FrameColours::Calm));
    EXPECT_EQ(ground(cell(9, 1)),
              cellColour(PlaceKind::Async, true, false, face(), FrameColours::Calm));
    EXPECT_EQ(ground(cell(3, 1)), face());
    for (const auto at :
         {FramePlace{0, 1}, FramePlace{3, 1}, FramePlace{6, 1}, FramePlace{8, 3}, FramePlace{9, 1},
          FramePlace{11, 1}, FramePlace{5, 2}, FramePlace{5, 6}}) {
        EXPECT_GE(textContrast(cell(at.word, at.frame)), 4.5) << at.word << " " << at.frame;
    }
    ASSERT_TRUE(areas_->goToCell(3, 2));
    EXPECT_GE(textContrast(cell(3, 2)), 4.5) << "selected";
}

TEST_P(FramePaint, AllCellsOfABlockAreShownAsSelected) {
    ASSERT_TRUE(areas_->goToCell(3, 2));
    ASSERT_TRUE(areas_->goToCell(5, 3, true));
    EXPECT_EQ(ground(cell(3, 3)), 0x808080U);
    EXPECT_EQ(ground(cell(4, 2)), 0x808080U);
    EXPECT_EQ(ground(cell(5, 2)), 0x808080U);
    EXPECT_EQ(ground(cell(4, 4)), face());
    EXPECT_EQ(ground(cell(6, 2)), face());
}

TEST_P(FramePaint, PlacesOfTheMarkedMeasurementHaveCorners) {
    s_.place(10, 1, "SPEED", "MFSC");
    areas_->streamChanged();
    areas_->mark("SPEED");
    const auto isMarked = [&](int word, int frame) {
        const auto picture = cell(word, frame);
        return contrastAt(picture, 4, 0) >= 4.5 && contrastAt(picture, 0, 4) >= 4.5;
    };
    EXPECT_TRUE(isMarked(3, 1));
    EXPECT_TRUE(isMarked(10, 5));
    EXPECT_FALSE(isMarked(4, 1));
    areas_->mark("");
    EXPECT_FALSE(isMarked(3, 1));
}

INSTANTIATE_TEST_SUITE_P(Palettes, FramePaint,
                         testing::Values(look::Scheme::Light, look::Scheme::Dark));

}  // namespace
}  // namespace kavu
