#include "app/conversion/PlotView.h"
#include "app/conversion/QtSurface.h"
#include "conversion/Plot.h"

#include <chrono>
#include <cmath>
#include <limits>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTest>
#include <gtest/gtest.h>

namespace kavu {
namespace {

/// A white picture that a test draws on and looks at.
struct Picture {
    explicit Picture(int width = 100, int height = 80)
        : image(width, height, QImage::Format_RGB32) {
        image.fill(Qt::white);
    }
    template <typename Draw>
    void draw(Draw what) {
        QPainter painter(&image);
        QtSurface surface(painter, QRectF(0, 0, image.width() - 1, image.height() - 1),
                          QApplication::font());
        what(surface);
    }
    [[nodiscard]] unsigned at(int x, int y) const {
        return static_cast<unsigned>(image.pixel(x, y)) & 0xFFFFFF;
    }
    /// Pixels that are not white in a rectangle.
    [[nodiscard]] int inked(const QRect& rect) const {
        int count = 0;
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            for (int x = rect.left(); x <= rect.right(); ++x) {
                count += at(x, y) != 0xFFFFFF ? 1 : 0;
            }
        }
        return count;
    }
    [[nodiscard]] int inked() const { return inked(image.rect()); }

    QImage image;
};

TEST(QtSurface, DrawsUprightLinesOnWholePixels) {
    Picture picture;
    picture.draw([](DrawingSurface& s) {
        EXPECT_TRUE(s.setPen({0xFF0000, 1, LineStyle::Solid}));
        s.line({10, 20}, {50, 20});
        s.line({60, 5}, {60, 70});
    });
    EXPECT_EQ(picture.at(30, 20), 0xFF0000U);
    EXPECT_EQ(picture.at(60, 40), 0xFF0000U);
    EXPECT_EQ(picture.at(30, 19), 0xFFFFFFU);
    EXPECT_EQ(picture.at(30, 21), 0xFFFFFFU);
}

TEST(QtSurface, FillsWithTheBrushAndOutlinesWithThePen) {
    Picture picture;
    picture.draw([](DrawingSurface& s) {
        (void)s.setPen({0x0000FF, 1, LineStyle::Solid});
        s.setSolidBrush(0x00FF00);
        s.rectangle({10, 10, 30, 30});
        s.ellipse({40, 10, 60, 30});
        const DrawingPoint triangle[] = {{70, 30}, {80, 10}, {90, 30}};
        s.polygon(triangle);
        s.setHollowBrush();
        s.rectangle({10, 50, 30, 70});
    });
    EXPECT_EQ(picture.at(10, 20), 0x0000FFU);
    EXPECT_EQ(picture.at(20, 20), 0x00FF00U);
    EXPECT_EQ(picture.at(50, 20), 0x00FF00U);
    EXPECT_EQ(picture.at(41, 11), 0xFFFFFFU) << "a corner of the circle's box";
    EXPECT_EQ(picture.at(80, 25), 0x00FF00U);
    EXPECT_EQ(picture.at(72, 15), 0xFFFFFFU) << "beside the triangle";
    EXPECT_EQ(picture.at(20, 60), 0xFFFFFFU);
    EXPECT_EQ(picture.at(10, 60), 0x0000FFU);
}

TEST(QtSurface, ABrokenLineHasGapsOverAllItsSegments) {
    Picture picture;
    picture.draw([](DrawingSurface& s) {
        (void)s.setPen({0, 1, LineStyle::Dash});
        for (int x = 0; x < 90; ++x) {
            s.line({static_cast<double>(x), 40}, {x + 1.0, 40});
        }
    });
    const int row = picture.inked({0, 38, 100, 5});
    EXPECT_GT(row, 30);
    EXPECT_LT(picture.inked({0, 40, 90, 1}), 90) << "segments of 1 pixel are one line";
}

TEST(QtSurface, ClipsUntilItIsReleased) {
    Picture picture;
    picture.draw([](DrawingSurface& s) {
        (void)s.setPen({0, 1, LineStyle::Solid});
        s.clip({20, 0, 40, 79});
        s.line({0, 10}, {99, 10});
        s.releaseClip();
        s.line({0, 30}, {99, 30});
    });
    EXPECT_EQ(picture.at(10, 10), 0xFFFFFFU);
    EXPECT_EQ(picture.at(30, 10), 0U);
    EXPECT_EQ(picture.at(60, 10), 0xFFFFFFU);
    EXPECT_EQ(picture.at(60, 30), 0U);
}

TEST(QtSurface, TextStandsBelowItsPlaceAndTurnsToTheLeft) {
    Picture picture;
    picture.draw([](DrawingSurface& s) {
        s.text({40, 40}, "MMMM", {"", 10, true, 0});
        const auto size = s.textSize("MMMM", {"", 10, true, 0});
        EXPECT_GT(size.width, size.height);
    });
    EXPECT_GT(picture.inked({40, 40, 60, 16}), 0);
    EXPECT_EQ(picture.inked({0, 0, 100, 40}), 0);
    Picture turned;
    turned.draw([](DrawingSurface& s) { s.text({40, 70}, "MMMM", {"", 10, true, 90}); });
    EXPECT_GT(turned.inked({40, 20, 16, 50}), 0);
    EXPECT_EQ(turned.inked({0, 0, 38, 80}), 0) << "its top is on its left";
    EXPECT_EQ(turned.inked({0, 71, 100, 9}), 0) << "it begins at its lower end";
}

TEST(QtSurface, NumbersThatAreNoPlaceDoNotStopIt) {
    Picture picture;
    picture.draw([](DrawingSurface& s) {
        const double infinite = std::numeric_limits<double>::infinity();
        (void)s.setPen({0, 1, LineStyle::Dot});
        s.line({std::nan(""), 1e308}, {-infinite, infinite});
        s.rectangle({-1e300, -1e300, 1e300, 1e300});
        s.ellipse({-infinite, 0, infinite, 10});
        s.text({1e308, -1e308}, "x", {});
    });
    SUCCEED() << "drawn within the time of a test";
    EXPECT_EQ(picture.image.width(), 100);
}

TEST(QtSurface, ALongPathLooksLikeAllOfItsPoints) {
    // 200,000 points over 100 pixels: in each column the whole height is seen.
    Picture picture;
    picture.draw([](DrawingSurface& s) {
        (void)s.setPen({0, 1, LineStyle::Solid});
        DrawingPoint before{0, 40};
        for (int i = 1; i < 200000; ++i) {
            const DrawingPoint next{i / 2000.0, i % 2 == 0 ? 10.0 : 70.0};
            s.line(before, next);
            before = next;
        }
    });
    for (const int x : {10, 50, 90}) {
        EXPECT_EQ(picture.inked({x, 12, 1, 56}), 56) << x;
        EXPECT_EQ(picture.inked({x, 0, 1, 8}), 0) << x;
    }
}

TEST(QtSurface, APlotIsDrawnWithinItsFrame) {
    Picture picture(300, 200);
    picture.draw([](DrawingSurface& s) {
        Plot plot;
        plot.attributes.setRange(0, 0, 10, 0, 10);
        plot.attributes.borderColour = 0x808080;
        PlotFrame frame;
        frame.widthFraction = 0.5;
        frame.heightFraction = 0.5;
        ASSERT_TRUE(plot.drawFrame(&s, frame));
        const double x[] = {-10, 20};
        const double y[] = {-10, 20};
        ASSERT_TRUE(plot.drawSeries(2, x, y, false));
        plot.attributes.series[2].symbol = PlotSymbol::FilledSquare;
        plot.attributes.series[2].style = LineStyle::None;
        const double at[] = {7.5};
        const double up[] = {2.5};
        ASSERT_TRUE(plot.drawSeries(3, at, up, false));
    });
    const auto isRed = [&](int x, int y) {
        const auto c = picture.image.pixelColor(x, y);
        return c.red() > 150 && c.green() < 140 && c.blue() < 140;
    };
    EXPECT_EQ(picture.at(75, 60), 0x808080U) << "the frame";
    bool seen = false;
    for (int dx = -1; dx <= 1; ++dx) {
        seen = seen || isRed(112 + dx, 124 - 1 + dx) || isRed(112 + dx, 124);
    }
    EXPECT_TRUE(seen) << "the line goes through a quarter of the frame";
    EXPECT_EQ(picture.at(186, 124), 0x00FF00U) << "the filled square";
    for (int x = 0; x < 300; ++x) {
        for (const int y : {10, 30, 45, 190}) {
            EXPECT_FALSE(isRed(x, y)) << x << "," << y << ": outside of the frame";
        }
    }
}

TEST(PlotView, DrawsOnceForEachChangeAndTellsThePointer) {
    int drawn = 0;
    PlotView view("view", QStringLiteral("View"), [&](DrawingSurface& s) {
        ++drawn;
        EXPECT_EQ(s.area().right, 299);
    });
    view.resize(300, 200);
    view.show();
    (void)view.grab();
    const int first = drawn;
    EXPECT_GE(first, 1);
    (void)view.grab();
    EXPECT_EQ(drawn, first) << "the picture is kept";
    view.redraw();
    (void)view.grab();
    EXPECT_EQ(drawn, first + 1);
    QPointF moved;
    QPointF clicked;
    QObject::connect(&view, &PlotView::pointedAt, [&](QPointF p) { moved = p; });
    QObject::connect(&view, &PlotView::clickedAt, [&](QPointF p) { clicked = p; });
    QTest::mouseMove(&view, QPoint(30, 40));
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(50, 60));
    EXPECT_EQ(clicked, QPointF(50, 60));
    EXPECT_EQ(moved, QPointF(30, 40));
}

}  // namespace
}  // namespace kavu
